// Looks properties up by name and turns a wrong type into an answer.
// Tweens and storyboards carry names that nobody checked.
#include "platform/foundation/key_value.h"

const KeyValueProperty* KeyValueCoding::propertyForKey(const std::string& key) {
    if (!_table) _table = makeKeyValueTable();
    const auto found = _table->find(key);
    return found == _table->end() ? nullptr : &found->second;
}

std::any KeyValueCoding::valueForKey(const std::string& key) {
    const KeyValueProperty* property = propertyForKey(key);
    return property && property->getter ? property->getter() : std::any();
}

bool KeyValueCoding::setValueForKey(const std::any& value, const std::string& key) {
    const KeyValueProperty* property = propertyForKey(key);
    if (!property || !property->setter) return false;
    try {
        property->setter(value);
    } catch (const std::bad_any_cast&) {
        return false;
    }
    return true;
}
