// A URL: well-formed text with its components, immutable and cheap to copy.
// A malformed text makes none, so whoever holds one need not check again.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/ns_url_components.h"

class NSURL {
  public:
    /// Nothing if the text is malformed (see NSURLComponents). It may be relative, or empty.
    static std::optional<NSURL> URLWithString(std::string text) {
        auto components = NSURLComponents::componentsWithString(std::move(text));
        if (!components) return std::nullopt;
        return NSURL(std::make_shared<const NSURLComponents>(std::move(*components)));
    }

    const std::string& absoluteString() const { return _components->string(); }
    /// As it stands: "HTTP" is not "http".
    std::optional<std::string_view> scheme() const { return _components->scheme(); }
    const NSURLComponents& components() const { return *_components; }

    std::size_t hash() const { return std::hash<std::string>{}(absoluteString()); }
    friend bool operator==(const NSURL& a, const NSURL& b) {
        return a.absoluteString() == b.absoluteString();
    }

  private:
    explicit NSURL(std::shared_ptr<const NSURLComponents> components) : _components(std::move(components)) {}

    std::shared_ptr<const NSURLComponents> _components;
};
