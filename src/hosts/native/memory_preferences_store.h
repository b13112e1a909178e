// Settings that end with the process.
// For pictures from the command line, which must not depend on the user's settings, and for tests.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/host/preferences_store.h"

class MemoryPreferencesStore : public PreferencesStore {
  public:
    explicit MemoryPreferencesStore(std::optional<std::string> text = std::nullopt)
        : _text(std::move(text)) {}

    std::optional<std::string> load() override { return _text; }
    bool save(const std::string& text) override {
        _text = text;
        return true;
    }
    std::string setAside() override {
        _damaged = std::exchange(_text, std::nullopt);
        return "left as they are";
    }
    std::string lastError() const override { return {}; }

    const std::optional<std::string>& text() const { return _text; }
    const std::optional<std::string>& damagedText() const { return _damaged; }

  private:
    std::optional<std::string> _text;
    std::optional<std::string> _damaged;
};
