// Paths are bytes of any kind, so their escapes need not make UTF-8 as those of other URLs must.
// RFC 8089, with an empty host or "localhost" alone.
#include "platform/foundation/file_url.h"

#include <charconv>

#include "platform/foundation/ascii_text.h"
#include "platform/foundation/ns_percent_encoding.h"

namespace {

constexpr std::string_view start = "file://";
constexpr std::string_view localhost = "localhost";

bool staysAsItIs(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("/-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::string fileURLOfPath(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string url(start);
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (staysAsItIs(c)) {
            url += c;
        } else {
            url.append(1, '%').append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
        }
    }
    return url;
}

std::optional<std::string> pathOfFileURL(std::string_view url) {
    if (!equalIgnoringASCIICase(url.substr(0, start.size()), start)) return std::nullopt;
    url.remove_prefix(start.size());
    if (equalIgnoringASCIICase(url.substr(0, localhost.size()), localhost))
        url.remove_prefix(localhost.size());
    if (!url.starts_with('/')) return std::nullopt;
    std::string path;
    for (std::size_t i = 0; i < url.size(); ++i) {
        const std::size_t escape = percentEscapeLength(url, i);
        if (url[i] == '%' && escape == 0) return std::nullopt;
        unsigned byte = static_cast<unsigned char>(url[i]);
        if (escape != 0) std::from_chars(url.data() + i + 1, url.data() + i + escape, byte, 16);
        if (byte == 0) return std::nullopt;
        path += static_cast<char>(byte);
        if (escape != 0) i += escape - 1;
    }
    return path;
}
