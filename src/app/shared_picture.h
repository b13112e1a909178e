// What people hand over as a picture: any file, from the command line or dropped.
// Decided here alone is whether it is one that the app saved, and so names a view.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "app/shared_link.h"
#include "main_screen/pictured_place.h"

/// texts: nothing for a file that is no picture.
std::variant<PicturedPlace, LinkMistake> readSharedPicture(const std::string& name,
                                                           const std::optional<PictureTexts>& texts);
