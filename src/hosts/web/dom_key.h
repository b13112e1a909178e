// The browser's names of keys as the app's keys.
// Pure: a table and the reading of one character.
#pragma once

#include <optional>
#include <string_view>

#include "platform/host/host_event.h"

/// name: a KeyboardEvent's `key`, the name of a key ("ArrowLeft") or what it types. Nothing for keys that
/// the app has no use for.
std::optional<HostKeyPress> keyPressFromDOM(std::string_view name, bool repeated, bool control,
                                            HostTime time);
