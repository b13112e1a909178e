// What the store answers about an app: one record among its results.
// Read with the JSON parser, or by a scanner of the text where there is none.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/ns_error.h"

/// A record's values as texts, or the JSON text that they are looked for in.
using StoreRecord = std::map<std::string, std::string, std::less<>>;
using StoreJSON = std::variant<StoreRecord, std::string>;

struct StoreAnswer {
    StoreJSON json;
    /// Why the answer makes no sense.
    NSErrorRef error;
};

/// The last of the answer's "results"; without any, a record without values. hasParser: NO to leave the text
/// to the scanner.
StoreAnswer storeAnswerFromData(const std::string& data, bool hasParser);

/// Numbers as texts. In a text: what stands behind the first such key and its colon, up to a comma or a
/// closing brace, without quotes and escapes.
std::optional<std::string> valueForKey(std::string_view key, const StoreJSON& json);
