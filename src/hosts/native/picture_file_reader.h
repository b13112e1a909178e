// Picture files that the user hands over, as the event of their arrival.
// Only what names the view is read, however large the picture is.
#pragma once

#include <string>
#include <variant>

#include "platform/host/host_event.h"

/// Or one line that names the file: "cannot read 'a.png': No such file or directory". Never waits: pipes and
/// devices are refused.
std::variant<HostOpenPicture, std::string> readPictureFile(const std::string& path);
