// A colour with its opacity, each component 0 to 1, not premultiplied.
// Plain data: painting turns it into what the host's Canvas wants.
#pragma once

struct UIColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend bool operator==(const UIColor&, const UIColor&) = default;

    static constexpr UIColor clear() { return {0, 0, 0, 0}; }
    static constexpr UIColor black() { return {0, 0, 0, 1}; }
    static constexpr UIColor white(double brightness = 1, double alpha = 1) {
        return {brightness, brightness, brightness, alpha};
    }
    static constexpr UIColor systemGray() { return {142.0 / 255, 142.0 / 255, 147.0 / 255, 1}; }
    constexpr UIColor withAlpha(double value) const { return {red, green, blue, value}; }
};
