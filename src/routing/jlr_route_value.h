// What the dictionaries of the router hold: texts and lists of texts from URLs, numbers and objects from
// callers. Dictionaries compare, hash and print by their contents; objects only by their identity.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/ns_null.h"
#include "platform/foundation/ns_url.h"

using JLRRouteValue = std::variant<NSNull, bool, int64_t, double, std::string, std::vector<std::string>,
                                   NSURL, std::shared_ptr<const void>>;

using JLRRouteParameters = std::map<std::string, JLRRouteValue>;

/// The text, or nothing for an absent key and for any other kind of value.
std::optional<std::string> stringForKey(const JLRRouteParameters& parameters, const std::string& key);

std::size_t JLRoutes_hash(const std::vector<std::string>& strings);
std::size_t JLRoutes_hash(const JLRRouteParameters& parameters);

/// In the platform's form of several lines, "{\n    key = value;\n}" and "(\n    value,\n    value\n)":
/// whatever is not made of letters and digits alone is quoted, control characters are escaped, "(null)" is no
/// dictionary.
std::string JLRoutes_description(const std::optional<JLRRouteParameters>& parameters);
std::string JLRoutes_description(const std::vector<std::string>& strings);

/// An address as "%p" prints it.
std::string JLRoutes_addressOf(const void* object);
