// Looks properties up by name and turns a wrong type into an answer.
// Tweens and storyboards carry names that nobody checked.
#include "platform/foundation/key_value.h"

namespace {

struct ReadValue {
    template <typename Value>
    std::any operator()(const KeyValueAccess<Value>& access) const {
        return access.get ? std::any(access.get()) : std::any();
    }
};

struct WriteValue {
    const std::any& value;

    template <typename Value>
    bool operator()(const KeyValueAccess<Value>& access) const {
        const auto* typed = std::any_cast<Value>(&value);
        if (!access.set || !typed) return false;
        access.set(*typed);
        return true;
    }
    bool operator()(const KeyValueAccess<std::any>& object) const { return object.set && object.set(value); }
};

struct TypeCode {
    std::string_view operator()(const KeyValueAccess<std::any>&) const { return "@"; }
    std::string_view operator()(const KeyValueAccess<bool>&) const { return "B"; }
    std::string_view operator()(const KeyValueAccess<int32_t>&) const { return "i"; }
    std::string_view operator()(const KeyValueAccess<int64_t>&) const { return "q"; }
    std::string_view operator()(const KeyValueAccess<float>&) const { return "f"; }
    std::string_view operator()(const KeyValueAccess<double>&) const { return "d"; }
    std::string_view operator()(const KeyValueAccess<CGPoint>&) const { return "{CGPoint=dd}"; }
    std::string_view operator()(const KeyValueAccess<CGSize>&) const { return "{CGSize=dd}"; }
    std::string_view operator()(const KeyValueAccess<CGRect>&) const {
        return "{CGRect={CGPoint=dd}{CGSize=dd}}";
    }
    std::string_view operator()(const KeyValueAccess<CGRectOfFloats>&) const {
        return "{CGRect={CGPoint=ff}{CGSize=ff}}";
    }
};

}  // namespace

std::string_view typeCodeOf(const KeyValueProperty& property) {
    return std::visit(TypeCode{}, property);
}

const KeyValueProperty* KeyValueCoding::propertyForKey(const std::string& key) {
    if (!_table) _table = makeKeyValueTable();
    const auto found = _table->find(key);
    return found == _table->end() ? nullptr : &found->second;
}

std::any KeyValueCoding::valueForKey(const std::string& key) {
    const KeyValueProperty* property = propertyForKey(key);
    return property ? std::visit(ReadValue{}, *property) : std::any();
}

bool KeyValueCoding::setValueForKey(const std::any& value, const std::string& key) {
    const KeyValueProperty* property = propertyForKey(key);
    return property && std::visit(WriteValue{value}, *property);
}
