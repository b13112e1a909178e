// The parts of a URL by the grammar of RFC 3986, as they stand and percent-decoded.
// Reading only: nothing here resolves, normalises or changes a URL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Decoded. What is no UTF-8 once decoded leaves a value away and a name as it stands.
struct NSURLQueryItem {
    std::string name;
    std::optional<std::string> value;
    friend bool operator==(const NSURLQueryItem&, const NSURLQueryItem&) = default;
};

/// Views that it hands out live as long as it does. A component that is absent is nothing, one that is there
/// without text is empty; the path is always there. What stands in brackets as a host is not checked to be an
/// address.
class NSURLComponents {
  public:
    /// A URL or a relative reference; nothing if it is malformed (a space, a raw non-ASCII character, "%"
    /// without two hexadecimal digits, ...).
    static std::optional<NSURLComponents> componentsWithString(std::string text);

    const std::string& string() const { return _string; }

    std::optional<std::string_view> scheme() const { return view(_scheme); }
    std::optional<std::string_view> percentEncodedUser() const { return view(_user); }
    std::optional<std::string_view> percentEncodedHost() const { return view(_host); }
    std::string_view percentEncodedPath() const { return view(_path).value_or(""); }
    std::optional<std::string_view> percentEncodedQuery() const { return view(_query); }
    std::optional<std::string_view> percentEncodedFragment() const { return view(_fragment); }
    /// Nothing as well if there is no number, or one beyond 64 bits.
    std::optional<int64_t> port() const;

    /// Nothing as well where the decoded text is no UTF-8; so are the four below.
    std::optional<std::string> host() const { return decoded(_host); }
    std::optional<std::string> path() const { return decoded(_path); }
    std::optional<std::string> query() const { return decoded(_query); }
    std::optional<std::string> fragment() const { return decoded(_fragment); }

    /// In their order; a name without "=" has no value. Nothing without a query, no item for an empty one.
    std::optional<std::vector<NSURLQueryItem>> queryItems() const;
    /// Items of a percent-encoded query that stands by itself.
    static std::vector<NSURLQueryItem> queryItemsOf(std::string_view percentEncodedQuery);

  private:
    struct Range {
        std::size_t begin;
        std::size_t length;
    };

    explicit NSURLComponents(std::string text) : _string(std::move(text)) {}
    bool parse();
    bool parseAuthority(std::string_view authority);
    bool parseUserInfo(std::string_view userInfo);
    bool parseHostAndPort(std::string_view hostAndPort);
    Range rangeOf(std::string_view part) const;
    std::optional<std::string_view> view(const std::optional<Range>& range) const;
    std::optional<std::string> decoded(const std::optional<Range>& range) const;

    std::string _string;
    std::optional<Range> _scheme;
    std::optional<Range> _user;
    std::optional<Range> _host;
    std::optional<Range> _port;
    std::optional<Range> _path;
    std::optional<Range> _query;
    std::optional<Range> _fragment;
};
