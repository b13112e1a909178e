// The user's settings: a flat dictionary kept by the host (a file, the browser's storage, memory).
// Values are read at start and written out at each synchronize().
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/ns_date.h"
#include "platform/host/preferences_store.h"

class NSUserDefaults {
  public:
    using Value = std::variant<bool, int64_t, double, std::string>;

    explicit NSUserDefaults(std::shared_ptr<PreferencesStore> store);

    /// The settings of this run; the host says where they lie before the first use. Without a store they live
    /// in memory.
    static NSUserDefaults& standardUserDefaults();
    static void setStandardStore(std::shared_ptr<PreferencesStore> store);

    /// An absent key, and a value that cannot be read as the asked-for type, reads as 0, NO, 0.0 or "".
    int64_t integerForKey(const std::string& key) const;
    bool boolForKey(const std::string& key) const;
    double doubleForKey(const std::string& key) const;
    std::string stringForKey(const std::string& key) const;
    /// Nothing for what is no finite number.
    std::optional<NSDate> dateForKey(const std::string& key) const;
    bool hasKey(const std::string& key) const { return _values.contains(key) || _foreign.contains(key); }

    void setInteger(int64_t value, const std::string& key);
    void setBool(bool value, const std::string& key);
    void setDouble(double value, const std::string& key);
    void setString(const std::string& value, const std::string& key);
    /// Kept as its seconds.
    void setDate(NSDate value, const std::string& key);
    void removeObjectForKey(const std::string& key);

    /// Writes what changed to the store. NO, with one log line per run, if the store refused; the values
    /// stay in memory and the next call tries again.
    bool synchronize();

  private:
    void load();
    void setValue(Value value, const std::string& key);
    std::string serialized() const;

    std::shared_ptr<PreferencesStore> _store;
    std::map<std::string, Value> _values;
    /// JSON texts of values that this version has no type for; written back as they were.
    std::map<std::string, std::string> _foreign;
    bool _dirty = false;
    bool _reported = false;
};
