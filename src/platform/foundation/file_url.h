// Files as URLs: one line of plain letters for any path, as desktops and processes hand them over.
// Pure: whether there is such a file is nobody's business here.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// "file:///home/a%20b.png" for "/home/a b.png". Needs an absolute path.
std::string fileURLOfPath(std::string_view path);

/// Nothing for what is no URL of a file on this machine, and for paths that no file can have.
std::optional<std::string> pathOfFileURL(std::string_view url);
