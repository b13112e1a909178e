// Where the resource files lie on a machine with a file system, and how NSBundle reads them.
// They travel beside the executable, or in the folder that the program was installed with.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/ns_bundle.h"

/// The folder `resources` beside the executable, else the installed one; nothing where neither exists.
std::optional<std::string> findResourceFolder();

/// Reads files of a folder by their paths within it; paths that lead out of it answer nothing.
NSBundle::Reader makeFileResourceReader(std::string folder);
