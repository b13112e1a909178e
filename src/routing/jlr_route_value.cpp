// Printing and hashing of the router's dictionaries.
// Texts come from URLs, so nothing in them may break the lines of the log.
#include "routing/jlr_route_value.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string_view>

#include "platform/foundation/decimal_text.h"

namespace {

constexpr std::string_view indent = "    ";

bool isLetterOrDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z');
}

std::string escaped(char character) {
    if (character == '"' || character == '\\') return {'\\', character};
    if (character == '\n') return "\\n";
    const auto code = static_cast<unsigned char>(character);
    if (code >= 0x20 && code != 0x7F) return {character};
    char octal[5];
    std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned>(code));
    return octal;
}

std::string quoted(std::string_view text) {
    if (!text.empty() && std::all_of(text.begin(), text.end(), isLetterOrDigit)) return std::string(text);
    std::string result = "\"";
    for (const char character : text)
        result += escaped(character);
    return result + '"';
}

std::string listOf(const std::vector<std::string>& strings, std::string_view margin) {
    std::string result = "(";
    for (const std::string& string : strings) {
        if (result.size() > 1) result += ',';
        result.append("\n").append(margin).append(indent).append(quoted(string));
    }
    return result.append("\n").append(margin).append(")");
}

struct Description {
    std::string operator()(NSNull /*null*/) const { return quoted("<null>"); }
    std::string operator()(bool flag) const { return flag ? "1" : "0"; }
    std::string operator()(int64_t number) const { return quoted(std::to_string(number)); }
    std::string operator()(double number) const { return quoted(decimalText(number)); }
    std::string operator()(const std::string& text) const { return quoted(text); }
    std::string operator()(const NSURL& url) const { return quoted(url.absoluteString()); }
    std::string operator()(const std::shared_ptr<const void>& object) const {
        return quoted("<" + JLRoutes_addressOf(object.get()) + ">");
    }
    std::string operator()(const std::vector<std::string>& list) const {
        return std::string(indent) + listOf(list, indent);
    }
};

struct Hash {
    std::size_t operator()(NSNull /*null*/) const { return 0; }
    std::size_t operator()(const NSURL& url) const { return url.hash(); }
    std::size_t operator()(const std::vector<std::string>& list) const { return JLRoutes_hash(list); }
    template <typename Value>
    std::size_t operator()(const Value& value) const {
        return std::hash<Value>{}(value);
    }
};

/// Depends on the order in which things are added.
std::size_t combined(std::size_t hash, std::size_t next) {
    return hash * 31 + next;
}

}  // namespace

std::optional<std::string> stringForKey(const JLRRouteParameters& parameters, const std::string& key) {
    const auto found = parameters.find(key);
    if (found == parameters.end()) return std::nullopt;
    const auto* const text = std::get_if<std::string>(&found->second);
    return text ? std::optional(*text) : std::nullopt;
}

std::size_t JLRoutes_hash(const std::vector<std::string>& strings) {
    std::size_t hash = strings.size();
    for (const std::string& string : strings)
        hash = combined(hash, std::hash<std::string>{}(string));
    return hash;
}

std::size_t JLRoutes_hash(const JLRRouteParameters& parameters) {
    std::size_t hash = parameters.size();
    for (const auto& [key, value] : parameters)
        hash = combined(combined(hash, std::hash<std::string>{}(key)), std::visit(Hash{}, value));
    return hash;
}

std::string JLRoutes_description(const std::optional<JLRRouteParameters>& parameters) {
    if (!parameters) return "(null)";
    std::string result = "{\n";
    for (const auto& [key, value] : *parameters)
        result.append(indent)
            .append(quoted(key))
            .append(" = ")
            .append(std::visit(Description{}, value))
            .append(";\n");
    return result + "}";
}

std::string JLRoutes_description(const std::vector<std::string>& strings) {
    return listOf(strings, "");
}

std::string JLRoutes_addressOf(const void* object) {
    char address[2 + 2 * sizeof object + 1];
    std::snprintf(address, sizeof address, "%p", object);
    return address;
}
