// What every host on a machine with files and fonts gives the app in the same way: canvases, picture files,
// resources and settings.
#pragma once

#include <memory>
#include <string>

#include "platform/host/preferences_store.h"

/// In place from its making to its end; one at a time.
class NativeServices {
  public:
    /// Null preferences: settings that live in memory. An empty folder: where the program's resources are.
    explicit NativeServices(std::shared_ptr<PreferencesStore> preferences, std::string resourceFolder = {});
    ~NativeServices();
    NativeServices(const NativeServices&) = delete;
    NativeServices& operator=(const NativeServices&) = delete;
};
