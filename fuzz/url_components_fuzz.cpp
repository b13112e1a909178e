// Any bytes as a URL. What is accepted must say the same as the splitting expression of RFC 3986, appendix B,
// written here once more with plain searches, and nothing raw may stand in it that the grammar has no place
// for.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "platform/foundation/ns_percent_encoding.h"
#include "platform/foundation/ns_url.h"

namespace {

using View = std::string_view;

/// Position of the first of the characters, or the end.
std::size_t positionOf(View text, View characters) {
    return std::min(text.find_first_of(characters), text.size());
}

void checkCuts(const NSURLComponents& url) {
    View rest = url.string();
    const std::size_t colon = positionOf(rest, ":/?#");
    const bool hasScheme = colon < rest.size() && rest[colon] == ':';
    FUZZ_CHECK(url.scheme() == (hasScheme ? std::optional(rest.substr(0, colon)) : std::nullopt));
    if (hasScheme) rest.remove_prefix(colon + 1);
    FUZZ_CHECK(url.percentEncodedHost().has_value() == rest.starts_with("//"));
    if (rest.starts_with("//")) {
        const View authority = rest.substr(2, positionOf(rest.substr(2), "/?#"));
        FUZZ_CHECK(authority.find(*url.percentEncodedHost()) != View::npos);
        FUZZ_CHECK(url.percentEncodedUser().has_value() == (authority.find('@') != View::npos));
        rest.remove_prefix(2 + authority.size());
    }
    const View path = rest.substr(0, positionOf(rest, "?#"));
    FUZZ_CHECK(url.percentEncodedPath() == path);
    rest.remove_prefix(path.size());
    FUZZ_CHECK(url.percentEncodedQuery().has_value() == rest.starts_with('?'));
    if (rest.starts_with('?')) {
        FUZZ_CHECK(*url.percentEncodedQuery() == rest.substr(1, positionOf(rest, "#") - 1));
        rest.remove_prefix(positionOf(rest, "#"));
    }
    FUZZ_CHECK(url.percentEncodedFragment() == (rest.empty() ? std::nullopt : std::optional(rest.substr(1))));
}

void checkCharacters(View text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        FUZZ_CHECK(text[i] > ' ' && text[i] < 0x7F && View("\"<>\\^`{|}").find(text[i]) == View::npos);
        FUZZ_CHECK(text[i] != '%' || percentEscapeLength(text, i) == 3);
    }
}

void checkDecoded(const NSURLComponents& url) {
    for (const auto& text : {url.host(), url.path(), url.query(), url.fragment()})
        FUZZ_CHECK(!text || isUTF8(*text));
    const auto items = url.queryItems();
    FUZZ_CHECK(items.has_value() == url.percentEncodedQuery().has_value());
    if (!items) return;
    std::size_t length = 0;
    for (const NSURLQueryItem& item : *items) {
        FUZZ_CHECK(isUTF8(item.name) && isUTF8(item.value.value_or("")));
        length += item.name.size() + (item.value ? item.value->size() : 0);
    }
    FUZZ_CHECK(length <= url.percentEncodedQuery()->size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const auto decoded = stringByRemovingPercentEncoding(text);
    FUZZ_CHECK(!decoded || isUTF8(*decoded));
    const auto url = NSURL::URLWithString(text);
    if (!url) return 0;
    FUZZ_CHECK(url->absoluteString() == text);
    checkCharacters(text);
    checkCuts(url->components());
    checkDecoded(url->components());
    return 0;
}
