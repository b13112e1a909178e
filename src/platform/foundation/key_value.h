// Key-value access: an object publishes a table of its properties by name, so that tweens and storyboards
// can read and write them without knowing its class.
#pragma once

#include <any>
#include <functional>
#include <map>
#include <optional>
#include <string>

struct KeyValueProperty {
    /// The platform's type code of the getter: "i", "q", "f", "d", "B", "@" (an object),
    /// "{CGRect={CGPoint=dd}{CGSize=dd}}", "{CGPoint=dd}", "{CGSize=dd}".
    std::string typeCode;
    std::function<std::any()> getter;
    /// Empty for a read-only property. Throws std::bad_any_cast for a value of another type.
    std::function<void(const std::any&)> setter;
};

using KeyValueTable = std::map<std::string, KeyValueProperty>;

class KeyValueCoding {
  public:
    virtual ~KeyValueCoding() = default;

    /// The table, or nothing, for one name. Derived classes look in their own table, then in their base's.
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
