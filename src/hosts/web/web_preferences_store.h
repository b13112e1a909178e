// Settings in the browser's localStorage, as one text under one key.
// Where the browser refuses (blocked cookies, some private windows) settings live as long as the page.
#pragma once

#include "platform/host/preferences_store.h"

class WebPreferencesStore : public PreferencesStore {
  public:
    std::optional<std::string> load() override;
    bool save(const std::string& text) override;
    std::string setAside() override;
    std::string lastError() const override { return _error; }

  private:
    std::string _error;
};
