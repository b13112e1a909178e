// A font asked for by family and size; the host's text engine finds the nearest one.
// Measuring goes through the same engine that draws, so that text fits where it was measured.
#pragma once

#include <string>
#include <vector>

enum class NSTextAlignment { left, center, right };

struct UIFont {
    /// Empty for the system's own sans-serif font.
    std::string family;
    /// Points.
    double pointSize = 17;
    bool bold = false;
    friend bool operator==(const UIFont&, const UIFont&) = default;

    static UIFont systemFontOfSize(double size) { return {"", size, false}; }
    static UIFont boldSystemFontOfSize(double size) { return {"", size, true}; }
    /// By the name of one of its faces: "AmericanTypewriter-Bold".
    static UIFont fontWithName(const std::string& name, double size);
    /// Running text. Hosts do not tell which size the user prefers.
    static UIFont preferredFontForTextStyleBody() { return systemFontOfSize(17); }
};

/// The families that a text engine looks for, the first one first; without any of them the system's own font
/// stands in. Fonts that cannot be shipped come after a like one that can, so that every host looks the same.
std::vector<std::string> fontFamiliesFor(const UIFont& font);
