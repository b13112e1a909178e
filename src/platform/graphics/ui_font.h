// A font asked for by family and size; the host's text engine finds the nearest one.
// Measuring goes through the same engine that draws, so that text fits where it was measured.
#pragma once

#include <string>

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
};
