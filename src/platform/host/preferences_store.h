// Host contract: where the user's settings are kept.
// A store holds one JSON text; it never holds half of one.
#pragma once

#include <optional>
#include <string>

class PreferencesStore {
  public:
    virtual ~PreferencesStore() = default;

    /// The stored text, or nothing where none was ever written or it cannot be read.
    virtual std::optional<std::string> load() = 0;

    /// Replaces the stored text, wholly or not at all, and makes it survive a crash. Answers NO, with the
    /// reason in lastError(), if it cannot.
    virtual bool save(const std::string& text) = 0;

    /// Moves a text that made no sense out of the way, so that it is neither lost nor read again. Answers
    /// where it lies now, in words for the log.
    virtual std::string setAside() = 0;

    virtual std::string lastError() const = 0;
};
