// Key-value access: an object publishes a table of its properties by name, so that tweens and storyboards
// can read and write them without knowing its class.
#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/geometry.h"

/// A rectangle of single-precision numbers: a layout that properties may have, not one to calculate with.
struct CGRectOfFloats {
    float x = 0;
    float y = 0;
    float width = 0;
    float height = 0;
    friend bool operator==(const CGRectOfFloats&, const CGRectOfFloats&) = default;
};

/// Reads and writes one property in its own type, so that plain values travel without an allocation.
template <typename Value>
struct KeyValueAccess {
    std::function<Value()> get;
    /// Empty for a read-only property.
    std::function<void(const Value&)> set;
};

template <>
struct KeyValueAccess<std::any> {
    std::function<std::any()> get;
    /// Empty for a read-only property. Answers NO for an object of another kind, which changes nothing.
    std::function<bool(const std::any&)> set;
};

/// A setter of an object held as Object, which hands on what it is given.
template <typename Object, typename Setter>
std::function<bool(const std::any&)> setterOf(Setter set) {
    return [set](const std::any& value) {
        const auto* object = std::any_cast<Object>(&value);
        if (object) set(*object);
        return object != nullptr;
    };
}

/// A property of one of the types that have a type code; std::any stands for an object.
using KeyValueProperty = std::variant<KeyValueAccess<std::any>, KeyValueAccess<bool>, KeyValueAccess<int32_t>,
                                      KeyValueAccess<int64_t>, KeyValueAccess<float>, KeyValueAccess<double>,
                                      KeyValueAccess<CGPoint>, KeyValueAccess<CGSize>, KeyValueAccess<CGRect>,
                                      KeyValueAccess<CGRectOfFloats>>;

/// The platform's code of the getter's type: "@" (an object), "B", "i", "q", "f", "d", "{CGPoint=dd}",
/// "{CGSize=dd}", "{CGRect={CGPoint=dd}{CGSize=dd}}", "{CGRect={CGPoint=ff}{CGSize=ff}}".
std::string_view typeCodeOf(const KeyValueProperty& property);

using KeyValueTable = std::map<std::string, KeyValueProperty>;

class KeyValueCoding {
  public:
    virtual ~KeyValueCoding() = default;

    /// The property, or nothing, for one name. Derived classes look in their own table, then in their base's.
    virtual const KeyValueProperty* propertyForKey(const std::string& key);

    /// The value, empty for an unknown name.
    std::any valueForKey(const std::string& key);
    /// NO for an unknown name, a read-only property or a value of another type.
    bool setValueForKey(const std::any& value, const std::string& key);

  protected:
    /// Built on first use, so that an object which nobody asks by name pays nothing.
    virtual KeyValueTable makeKeyValueTable() { return {}; }

  private:
    std::optional<KeyValueTable> _table;
};
