// What a tween's parameters hold: numbers, texts and callbacks.
// Numbers and texts are read as each other where the reader asks for the other kind.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>

/// "onStart" and "onComplete".
using GSTweenBlock = std::function<void()>;
/// "onUpdate": progress from 0 to 1, and the curve's value for it.
using GSTweenUpdateBlock = std::function<void(double progress, double eased)>;

using GSTweenValue = std::variant<bool, int64_t, double, std::string, GSTweenBlock, GSTweenUpdateBlock>;

/// Names of the target's properties with their end values, and the reserved keys of GSTween.
using GSTweenParams = std::map<std::string, GSTweenValue>;

/// Nothing for a callback. A text counts as the number at its head, else as 0.
std::optional<float> floatValue(const GSTweenValue& value);
/// Truncated toward zero; the nearest integer there is for numbers beyond them, 0 for NaN.
std::optional<int64_t> integerValue(const GSTweenValue& value);
/// A text is true if it begins with Y, T or a digit other than 0, after white space, a sign and zeros.
std::optional<bool> boolValue(const GSTweenValue& value);
/// A number in the fewest digits that read back to it.
std::optional<std::string> stringValue(const GSTweenValue& value);

/// As integerValue.
int64_t truncatedToInteger(double number);
