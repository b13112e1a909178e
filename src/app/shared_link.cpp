// The scheme is the build's configuration, the host the program's.
// Schemes and hosts are compared without regard to case, as every program does that opens them.
#include "app/shared_link.h"

#include <algorithm>
#include <optional>

#include "main_screen/link_host.h"
#include "platform/foundation/ascii_text.h"

namespace {

constexpr std::string_view ownScheme = ZENTARO_URL_SCHEME;
constexpr std::size_t longestQuote = 80;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view space(" \t\n\v\f\r\0", 7);
    text.remove_prefix(std::min(text.find_first_not_of(space), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(space) + 1));
    if (text.size() >= 2 && text.front() == '<' && text.back() == '>') return text.substr(1, text.size() - 2);
    return text;
}

/// On one line and no longer than anybody reads.
std::string quotedShort(std::string_view text) {
    std::string quote(text.substr(0, longestQuote));
    std::replace_if(
        quote.begin(), quote.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return "'" + quote + (text.size() > longestQuote ? "...'" : "'");
}

/// With its port where it names one.
std::string hostOf(const NSURL& url) {
    const NSURLComponents& components = url.components();
    std::string host(components.percentEncodedHost().value_or(""));
    if (const auto port = components.port()) host += ":" + std::to_string(*port);
    return host;
}

/// As browsers show links.
bool beginsWithOurHost(std::string_view text) {
    const std::string& host = linkHost();
    return text.size() > host.size() && text[host.size()] == '/' &&
           equalIgnoringASCIICase(text.substr(0, host.size()), host);
}

std::variant<NSURL, LinkMistake> readWord(std::string_view text) {
    std::string whole(beginsWithOurHost(text) ? "http://" : "");
    whole += text;
    const std::optional<NSURL> url = NSURL::URLWithString(std::move(whole));
    const std::string example = "such as http://" + linkHost() + "/mandelbrot/-2/-1.5/1/1.5";
    // A single word is a mistyped option sooner than a path.
    if (!url || text.find('/') == std::string_view::npos)
        return LinkMistake{quotedShort(text) + " is no link; give one " + example};
    const bool names = url->scheme() || url->components().percentEncodedHost();
    if (!names || equalIgnoringASCIICase(url->scheme().value_or(""), ownScheme)) return *url;
    if (url->scheme() && !isWebLink(*url)) {
        return LinkMistake{quotedShort(text) + " is a link for another program; give one " + example};
    }
    const std::string_view host = url->components().percentEncodedHost().value_or("");
    if (equalIgnoringASCIICase(host, linkHost()) || equalIgnoringASCIICase(hostOf(*url), linkHost()))
        return *url;
    return LinkMistake{quotedShort(text) + " is a link for another site; give one " + example};
}

/// The first link of ours among the words of a text, such as the one that goes with a shared picture. Bare
/// paths are links by themselves alone.
std::optional<NSURL> linkAmongWords(std::string_view text) {
    constexpr std::string_view ends = " \t\n\v\f\r<>()\"";
    while (!text.empty()) {
        std::string_view word = text.substr(0, text.find_first_of(ends));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        while (!word.empty() && std::string_view(".,;:!?'").find(word.back()) != std::string_view::npos)
            word.remove_suffix(1);
        if (word.find(":/") == std::string_view::npos && !beginsWithOurHost(word)) continue;
        const auto link = readWord(word);
        if (const auto* url = std::get_if<NSURL>(&link)) return *url;
    }
    return std::nullopt;
}

}  // namespace

bool isWebLink(const NSURL& url) {
    const std::string_view scheme = url.scheme().value_or("");
    return equalIgnoringASCIICase(scheme, "http") || equalIgnoringASCIICase(scheme, "https");
}

std::variant<NSURL, LinkMistake> readSharedLink(std::string_view text) {
    text = trimmed(text);
    auto whole = readWord(text);
    if (std::holds_alternative<NSURL>(whole)) return whole;
    if (const auto within = linkAmongWords(text)) return *within;
    return whole;
}
