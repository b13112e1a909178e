// The depth is watched while the text is read.
// A value that is refused in the middle would leave a part of it, so all is discarded then.
#include "platform/foundation/json_text.h"

using nlohmann::json;

json parsedJSON(const std::string& text, int deepestNesting) {
    bool tooDeep = false;
    const auto watchDepth = [&tooDeep, deepestNesting](int depth, json::parse_event_t, json&) {
        tooDeep = tooDeep || depth > deepestNesting;
        return !tooDeep;
    };
    json value = json::parse(text, watchDepth, /*allow_exceptions=*/false);
    return tooDeep ? json(json::value_t::discarded) : value;
}
