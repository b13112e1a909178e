// The user's settings in one small file.
// It survives a crash or a kill at any moment of a save.
#pragma once

#include <optional>
#include <string>

#include "platform/host/preferences_store.h"

class FilePreferencesStore : public PreferencesStore {
  public:
    /// Larger files are not read: they cannot be ours.
    static constexpr std::size_t largestFile = std::size_t{1} << 20;

    explicit FilePreferencesStore(std::string path) : _path(std::move(path)) {}

    /// $XDG_CONFIG_HOME/zentaro/settings.json, or the same under ~/.config; nothing for a user without a
    /// home.
    static std::optional<std::string> defaultPath();

    std::optional<std::string> load() override;
    /// Makes missing folders, for the user alone.
    bool save(const std::string& text) override;
    /// Renames the file to FILE.damaged, or .damaged-2 and so on where older ones lie; leaves anything that
    /// is not a plain file where it is.
    std::string setAside() override;
    std::string lastError() const override { return _error; }

  private:
    std::string _path;
    std::string _error;
};
