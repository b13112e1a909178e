// Any bytes as a store's answer, read by the parser and by the scanner.
// Neither may fail; what the scanner finds without escapes stands in the text as it is.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "platform/foundation/ns_percent_encoding.h"
#include "rating/store_answer.h"

namespace {

constexpr const char* keys[] = {"bundleId", "trackId", "version", "primaryGenreId", "\"", ""};

void checkScanned(const std::string& value, const std::string& text) {
    FUZZ_CHECK(value.size() <= text.size());
    if (text.find('\\') == std::string::npos) FUZZ_CHECK(text.find(value) != std::string::npos);
    if (isUTF8(text)) FUZZ_CHECK(isUTF8(value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const StoreAnswer parsed = storeAnswerFromData(text, /*hasParser=*/true);
    const StoreAnswer scanned = storeAnswerFromData(text, /*hasParser=*/false);
    FUZZ_CHECK(!scanned.error);
    for (const char* key : keys) {
        if (const auto value = valueForKey(key, parsed.json)) FUZZ_CHECK(!parsed.error && isUTF8(*value));
        if (const auto value = valueForKey(key, scanned.json)) checkScanned(*value, text);
    }
    return 0;
}
