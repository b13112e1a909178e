// Names of faces, and what stands in for fonts that cannot be shipped.
// Both are the same for every text engine.
#include "platform/graphics/ui_font.h"

#include <cctype>
#include <map>

namespace {

/// "AmericanTypewriter" as people write it.
std::string withSpaces(const std::string& name) {
    std::string family;
    for (const char letter : name) {
        if (!family.empty() && std::isupper(static_cast<unsigned char>(letter)) != 0) family += ' ';
        family += letter;
    }
    return family;
}

}  // namespace

UIFont UIFont::fontWithName(const std::string& name, double size) {
    const std::size_t dash = name.find('-');
    const std::string face = dash == std::string::npos ? "" : name.substr(dash + 1);
    return {withSpaces(name.substr(0, dash)), size, face == "Bold"};
}

std::vector<std::string> fontFamiliesFor(const UIFont& font) {
    static const std::map<std::string, std::string> standIns = {{"American Typewriter", "Roboto Slab"}};
    if (font.family.empty()) return {};
    const auto found = standIns.find(font.family);
    if (found == standIns.end()) return {font.family};
    return {found->second, font.family};
}
