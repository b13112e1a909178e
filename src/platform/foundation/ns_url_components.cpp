// Cuts a URL at its delimiters (RFC 3986, appendix B) and holds each part against the characters that the
// grammar of its appendix A allows there. One pass for the cuts and one for the characters, whatever the
// length.
#include "platform/foundation/ns_url_components.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/foundation/ns_percent_encoding.h"

namespace {

/// Where a character may stand unescaped.
enum Place : uint8_t {
    inScheme = 1,
    inUser = 2,
    inPassword = 4,
    inHost = 8,
    inAddress = 16,
    inPath = 32,
    inQuery = 64,  // and in fragments
    inPort = 128,
};

constexpr std::string_view digits = "0123456789";
constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr unsigned inText = inUser | inPassword | inHost | inAddress | inPath | inQuery;

constexpr std::array<uint8_t, 256> placesOfCharacters = [] {
    std::array<uint8_t, 256> places{};
    const auto allow = [&places](std::string_view characters, unsigned where) {
        for (const char character : characters) {
            uint8_t& place = places[static_cast<unsigned char>(character)];
            place = static_cast<uint8_t>(place | where);
        }
    };
    allow(letters, inText | inScheme);
    allow(digits, inText | inScheme | inPort);
    allow("+-.", inScheme);
    allow("-._~", inText);         // the rest of the unreserved ones
    allow("!$&'()*+,;=", inText);  // sub-delims
    allow(":", inPassword | inAddress | inPath | inQuery);
    allow("@/", inPath | inQuery);
    allow("?", inQuery);
    return places;
}();

bool isMadeOf(std::string_view text, Place place) {
    const bool mayEscape = place != inScheme && place != inPort;
    for (std::size_t i = 0; i < text.size();) {
        const bool isPlain = (placesOfCharacters[static_cast<unsigned char>(text[i])] & place) != 0;
        const std::size_t length =
            isPlain || !mayEscape ? std::size_t{isPlain} : percentEscapeLength(text, i);
        if (length == 0) return false;
        i += length;
    }
    return true;
}

bool isScheme(std::string_view text) {
    return !text.empty() && letters.find(text.front()) != std::string_view::npos && isMadeOf(text, inScheme);
}

/// Cuts `text` before the first of the delimiters; answers what stands behind it, if one stands there.
std::optional<std::string_view> cut(std::string_view& text, char delimiter) {
    const std::size_t at = text.find(delimiter);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view behind = text.substr(at + 1);
    text = text.substr(0, at);
    return behind;
}

NSURLQueryItem queryItemOf(std::string_view pair) {
    const std::optional<std::string_view> value = cut(pair, '=');
    return {stringByRemovingPercentEncoding(pair).value_or(std::string(pair)),
            value ? stringByRemovingPercentEncoding(*value) : std::nullopt};
}

}  // namespace

std::optional<NSURLComponents> NSURLComponents::componentsWithString(std::string text) {
    NSURLComponents components(std::move(text));
    if (!components.parse()) return std::nullopt;
    return components;
}

bool NSURLComponents::parse() {
    std::string_view rest = _string;
    const auto fragment = cut(rest, '#');
    const auto query = cut(rest, '?');
    if (fragment) _fragment = rangeOf(*fragment);
    if (query) _query = rangeOf(*query);
    // A colon before the first slash ends a scheme: the first segment of a relative path has none.
    const std::size_t colon = rest.substr(0, rest.find('/')).find(':');
    if (colon != std::string_view::npos) {
        const std::string_view scheme = rest.substr(0, colon);
        if (!isScheme(scheme)) return false;
        _scheme = rangeOf(scheme);
        rest.remove_prefix(colon + 1);
    }
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const std::string_view authority = rest.substr(0, rest.find('/'));
        if (!parseAuthority(authority)) return false;
        rest.remove_prefix(authority.size());
    }
    _path = rangeOf(rest);
    return isMadeOf(rest, inPath) && isMadeOf(query.value_or(""), inQuery) &&
           isMadeOf(fragment.value_or(""), inQuery);
}

bool NSURLComponents::parseAuthority(std::string_view authority) {
    const auto behindUser = cut(authority, '@');
    return behindUser ? parseUserInfo(authority) && parseHostAndPort(*behindUser)
                      : parseHostAndPort(authority);
}

bool NSURLComponents::parseUserInfo(std::string_view userInfo) {
    const auto password = cut(userInfo, ':');
    _user = rangeOf(userInfo);
    return isMadeOf(userInfo, inUser) && isMadeOf(password.value_or(""), inPassword);
}

bool NSURLComponents::parseHostAndPort(std::string_view hostAndPort) {
    const bool isAddress = hostAndPort.starts_with('[');
    const std::size_t bracket = hostAndPort.find(']');
    if (isAddress && bracket == std::string_view::npos) return false;
    const std::size_t end = isAddress ? bracket + 1 : std::min(hostAndPort.find(':'), hostAndPort.size());
    const std::string_view host = hostAndPort.substr(0, end);
    std::string_view port = hostAndPort.substr(end);
    _host = rangeOf(host);
    if (!port.empty()) {
        if (!port.starts_with(':')) return false;
        port.remove_prefix(1);
        _port = rangeOf(port);
    }
    const bool hostIsRight = isAddress
                                 ? host.size() > 2 && isMadeOf(host.substr(1, host.size() - 2), inAddress)
                                 : isMadeOf(host, inHost);
    return hostIsRight && isMadeOf(port, inPort);
}

NSURLComponents::Range NSURLComponents::rangeOf(std::string_view part) const {
    return {static_cast<std::size_t>(part.data() - _string.data()), part.size()};
}

std::optional<std::string_view> NSURLComponents::view(const std::optional<Range>& range) const {
    if (!range) return std::nullopt;
    return std::string_view(_string).substr(range->begin, range->length);
}

std::optional<std::string> NSURLComponents::decoded(const std::optional<Range>& range) const {
    const auto part = view(range);
    return part ? stringByRemovingPercentEncoding(*part) : std::nullopt;
}

std::optional<int64_t> NSURLComponents::port() const {
    const std::string_view text = view(_port).value_or("");
    int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    return number;
}

std::optional<std::vector<NSURLQueryItem>> NSURLComponents::queryItems() const {
    const auto query = percentEncodedQuery();
    if (!query) return std::nullopt;
    return queryItemsOf(*query);
}

std::vector<NSURLQueryItem> NSURLComponents::queryItemsOf(std::string_view percentEncodedQuery) {
    std::vector<NSURLQueryItem> items;
    if (percentEncodedQuery.empty()) return items;
    std::optional<std::string_view> rest = percentEncodedQuery;
    while (rest) {
        std::string_view pair = *rest;
        rest = cut(pair, '&');
        items.push_back(queryItemOf(pair));
    }
    return items;
}
