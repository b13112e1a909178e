// The folders that desktops keep for their users' pictures and films, and new files in them.
// Where they lie is the user's choice, written down by xdg-user-dirs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// key: the variable in user-dirs.dirs ("XDG_PICTURES_DIR"); fallback: its name in the home folder where
/// nothing is written down. Nothing for a user without a home. The folder need not exist.
std::optional<std::string> userFolder(const std::string& key, const std::string& fallback);

/// Under the user's own folder for what can be made again ($XDG_CACHE_HOME, ~/.cache). Nothing for a user
/// without a home.
std::optional<std::string> userCacheFolder(const std::string& name);

/// Likewise for what the app keeps from one run to the next ($XDG_STATE_HOME, ~/.local/state).
std::optional<std::string> userStateFolder(const std::string& name);

/// For files that other programs read when it suits them, as mail programs do on sending. What has lain there
/// for a week goes. Nothing for a user without a home.
std::optional<std::string> folderForHandingOver();

struct NewFile {
    std::string path;   ///< empty for none
    std::string error;  ///< one line: why there is none
};

/// Writes a file that is there whole or not at all, and makes its folder if need be. A name that is taken
/// gets a number: "a.png", "a (2).png"; nothing is ever overwritten.
NewFile writeNewFile(const std::string& folder, const std::string& name, const std::string& ending,
                     std::span<const uint8_t> bytes);
