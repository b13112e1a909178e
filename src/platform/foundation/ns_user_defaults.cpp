// The settings as one JSON object, and the conversions between their types.
// A text that makes no sense is set aside and never stops the start.
#include "platform/foundation/ns_user_defaults.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "platform/foundation/decimal_text.h"
#include "platform/foundation/json_text.h"
#include "platform/foundation/ns_log.h"

namespace {

using nlohmann::json;

/// Settings are flat; what lies deeper than this was not written by us and could exhaust the stack.
constexpr int deepestNesting = 32;

template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

std::string_view withoutLeadingSpace(std::string_view text) {
    const auto start = text.find_first_not_of(" \t\n\r\v\f");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

std::string_view withoutPlus(std::string_view text) {
    return text.starts_with('+') && !text.starts_with("+-") ? text.substr(1) : text;
}

int64_t integerFromDouble(double value) {
    if (std::isnan(value)) return 0;
    // 2^63 is a double, the largest integer below it is not.
    if (value >= 9223372036854775808.0) return std::numeric_limits<int64_t>::max();
    if (value < -9223372036854775808.0) return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(value);
}

/// The leading whole number, 0 without one, the nearest limit where it does not fit.
int64_t integerFromString(std::string_view text) {
    text = withoutPlus(withoutLeadingSpace(text));
    int64_t value = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), value).ec;
    if (error != std::errc::result_out_of_range) return value;
    return text.starts_with('-') ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
}

double doubleFromString(std::string_view text) {
    text = withoutPlus(withoutLeadingSpace(text));
    return takeDecimal(text).value_or(0);
}

/// YES for a leading Y, T or digit 1 to 9, behind signs and zeros.
bool boolFromString(std::string_view text) {
    text = withoutLeadingSpace(text);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    const auto start = text.find_first_not_of('0');
    return start != std::string_view::npos &&
           std::string_view("YyTt123456789").find(text[start]) != std::string_view::npos;
}

/// JSON has no infinities and no NaN; as strings they still read back as the same doubles.
json jsonFromValue(const NSUserDefaults::Value& value) {
    return std::visit(Overloaded{[](double number) {
                                     return std::isfinite(number) ? json(number) : json(decimalText(number));
                                 },
                                 [](const auto& other) { return json(other); }},
                      value);
}

std::optional<NSUserDefaults::Value> valueFromJson(const json& item) {
    switch (item.type()) {
        case json::value_t::boolean:
            return item.get<bool>();
        case json::value_t::number_integer:
            return item.get<int64_t>();
        case json::value_t::number_unsigned:
            if (item.get<uint64_t>() > static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) {
                return std::nullopt;
            }
            return item.get<int64_t>();
        case json::value_t::number_float:
            return item.get<double>();
        case json::value_t::string:
            return item.get<std::string>();
        default:
            return std::nullopt;
    }
}

/// Bytes that are no UTF-8 are replaced rather than refused.
std::string dumped(const json& value, int indent) {
    return value.dump(indent, ' ', false, json::error_handler_t::replace);
}

NSUserDefaults& standardInstance() {
    static NSUserDefaults instance(nullptr);
    return instance;
}

}  // namespace

NSUserDefaults::NSUserDefaults(std::shared_ptr<PreferencesStore> store) : _store(std::move(store)) {
    load();
}

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    return standardInstance();
}

void NSUserDefaults::setStandardStore(std::shared_ptr<PreferencesStore> store) {
    standardInstance() = NSUserDefaults(std::move(store));
}

void NSUserDefaults::load() {
    if (!_store) return;
    const std::optional<std::string> text = _store->load();
    if (!text) {
        if (const std::string reason = _store->lastError(); !reason.empty()) {
            NSLog("Settings cannot be read: %s (%s); starting with empty settings", reason.c_str(),
                  _store->setAside().c_str());
        }
        return;
    }
    const json settings = parsedJSON(*text, deepestNesting);
    if (!settings.is_object()) {
        NSLog("Settings are damaged (%s); starting with empty settings", _store->setAside().c_str());
        return;
    }
    for (const auto& [key, item] : settings.items()) {
        if (auto value = valueFromJson(item)) {
            _values.emplace(key, std::move(*value));
        } else {
            _foreign.emplace(key, dumped(item, -1));
        }
    }
}

int64_t NSUserDefaults::integerForKey(const std::string& key) const {
    const auto found = _values.find(key);
    if (found == _values.end()) return 0;
    return std::visit(
        Overloaded{[](bool value) { return int64_t{value}; }, [](int64_t value) { return value; },
                   [](double value) { return integerFromDouble(value); },
                   [](const std::string& value) { return integerFromString(value); }},
        found->second);
}

bool NSUserDefaults::boolForKey(const std::string& key) const {
    const auto found = _values.find(key);
    if (found == _values.end()) return false;
    return std::visit(Overloaded{[](const std::string& value) { return boolFromString(value); },
                                 [](bool value) { return value; },
                                 [](auto number) { return number != decltype(number){}; }},
                      found->second);
}

double NSUserDefaults::doubleForKey(const std::string& key) const {
    const auto found = _values.find(key);
    if (found == _values.end()) return 0;
    return std::visit(Overloaded{[](const std::string& value) { return doubleFromString(value); },
                                 [](bool value) { return value ? 1.0 : 0.0; },
                                 [](auto number) { return static_cast<double>(number); }},
                      found->second);
}

std::string NSUserDefaults::stringForKey(const std::string& key) const {
    const auto found = _values.find(key);
    if (found == _values.end()) return {};
    return std::visit(Overloaded{[](const std::string& value) { return value; },
                                 [](bool value) { return std::string(value ? "1" : "0"); },
                                 [](int64_t number) { return std::to_string(number); },
                                 [](double number) { return decimalText(number); }},
                      found->second);
}

std::optional<NSDate> NSUserDefaults::dateForKey(const std::string& key) const {
    const auto found = _values.find(key);
    if (found == _values.end()) return std::nullopt;
    const bool isNumber = std::visit(
        Overloaded{[](int64_t) { return true; }, [](double number) { return std::isfinite(number); },
                   [](const auto&) { return false; }},
        found->second);
    return isNumber ? std::optional(NSDate(doubleForKey(key))) : std::nullopt;
}

void NSUserDefaults::setValue(Value value, const std::string& key) {
    const auto found = _values.find(key);
    if (found != _values.end() && found->second == value) return;
    _foreign.erase(key);
    _values.insert_or_assign(key, std::move(value));
    _dirty = true;
}

void NSUserDefaults::setInteger(int64_t value, const std::string& key) {
    setValue(value, key);
}

void NSUserDefaults::setBool(bool value, const std::string& key) {
    setValue(value, key);
}

void NSUserDefaults::setDouble(double value, const std::string& key) {
    setValue(value, key);
}

void NSUserDefaults::setString(const std::string& value, const std::string& key) {
    setValue(value, key);
}

void NSUserDefaults::setDate(NSDate value, const std::string& key) {
    setDouble(value.timeIntervalSinceReferenceDate(), key);
}

void NSUserDefaults::removeObjectForKey(const std::string& key) {
    if (_values.erase(key) + _foreign.erase(key) > 0) _dirty = true;
}

std::string NSUserDefaults::serialized() const {
    json settings = json::object();
    for (const auto& [key, value] : _values)
        settings[key] = jsonFromValue(value);
    for (const auto& [key, text] : _foreign)
        settings[key] = json::parse(text);
    return dumped(settings, 2) + "\n";
}

bool NSUserDefaults::synchronize() {
    if (!_dirty || !_store) return true;
    if (_store->save(serialized())) {
        _dirty = false;
        return true;
    }
    if (!_reported) {
        NSLog("Settings cannot be saved: %s", _store->lastError().c_str());
        _reported = true;
    }
    return false;
}
