// Holds the destinations of this run, and the texts that several of them need.
// A link is in the text or beside it, never twice.
#include "platform/host/share_destinations.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t longestFileName = 120;

std::shared_ptr<ShareDestinations>& shared() {
    static std::shared_ptr<ShareDestinations> destinations;
    return destinations;
}

bool isPlain(char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

/// From the first slash after the host on.
std::string pathOf(const std::string& link) {
    const std::size_t host = link.find("//");
    const std::size_t path = link.find('/', host == std::string::npos ? 0 : host + 2);
    return path == std::string::npos ? std::string() : link.substr(path);
}

}  // namespace

std::string SharedContent::textWithLink() const {
    if (link.empty() || text.find(link) != std::string::npos) return text;
    const bool isApart = text.empty() || text.back() == ' ' || text.back() == '\n';
    return text + (isApart ? "" : "\n") + link;
}

std::string SharedContent::fileName() const {
    std::string name = "Zentaro";
    for (const char c : pathOf(link)) {
        if (isPlain(c)) {
            name += c;
        } else if (name.back() != ' ') {
            name += ' ';
        }
    }
    name.resize(std::min(name.size(), longestFileName));
    while (name.back() == ' ' || name.back() == '.')
        name.pop_back();
    return name;
}

std::shared_ptr<ShareDestinations> sharedShareDestinations() {
    return shared();
}

void setSharedShareDestinations(std::shared_ptr<ShareDestinations> destinations) {
    shared() = std::move(destinations);
}
