// Keeps one Pango layout and refills it for each text.
// Hinting is off, so that text measured in points fits at every scale it is drawn at.
#include "hosts/native/pango_text.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <pango/pangocairo.h>

namespace {

constexpr const char* systemFamily = "Sans";
/// Points; Pango counts in 1024ths of one, in an int.
constexpr CGFloat largestLength = 1e6;

struct Free {
    void operator()(char* text) const { g_free(text); }
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};

int pangoUnits(CGFloat points) {
    return static_cast<int>(std::lround(std::clamp(points, 0.0, largestLength) * PANGO_SCALE));
}

/// By the first letter that has a direction. The text is valid UTF-8.
bool isRightToLeft(const std::string& text) {
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end; at = g_utf8_next_char(at)) {
        const gunichar letter = g_utf8_get_char(at);
        if (!g_unichar_isalpha(letter)) continue;
        return (letter >= 0x0590 && letter <= 0x08FF) || (letter >= 0xFB1D && letter <= 0xFEFC);
    }
    return false;
}

/// Pango's left is where lines begin.
PangoAlignment pangoAlignment(NSTextAlignment alignment, bool rightToLeft) {
    if (alignment == NSTextAlignment::center) return PANGO_ALIGN_CENTER;
    const bool begins = (alignment == NSTextAlignment::left) != rightToLeft;
    return begins ? PANGO_ALIGN_LEFT : PANGO_ALIGN_RIGHT;
}

std::unique_ptr<PangoFontDescription, Free> describeFont(const UIFont& font) {
    std::unique_ptr<PangoFontDescription, Free> description(pango_font_description_new());
    std::string families;
    for (const std::string& family : fontFamiliesFor(font))
        families += family + ",";
    pango_font_description_set_family(description.get(), (families + systemFamily).c_str());
    pango_font_description_set_weight(description.get(), font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description.get(), pangoUnits(font.pointSize));
    return description;
}

/// Pango complains on stderr about bytes that are no UTF-8.
std::string validText(const std::string& text, bool singleLine) {
    const std::unique_ptr<char, Free> valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string result = valid.get();
    if (singleLine) std::replace(result.begin(), result.end(), '\n', ' ');
    return result;
}

}  // namespace

PangoText::~PangoText() {
    if (!_layout) return;
    g_object_unref(_layout);
    g_object_unref(_context);
    g_object_unref(_fontMap);
}

PangoLayout* PangoText::layout() {
    if (_layout) return _layout;
    _fontMap = pango_cairo_font_map_new();
    _context = pango_font_map_create_context(_fontMap);
    pango_context_set_round_glyph_positions(_context, FALSE);
    cairo_font_options_t* options = cairo_font_options_create();
    // Subpixel rendering needs to know what lies behind the text; an overlay does not.
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(_context, options);
    cairo_font_options_destroy(options);
    _layout = pango_layout_new(_context);
    pango_layout_set_wrap(_layout, PANGO_WRAP_WORD_CHAR);
    return _layout;
}

void PangoText::fill(const std::string& text, const UIFont& font, CGFloat width, NSTextAlignment alignment,
                     bool singleLine) {
    PangoLayout* const target = layout();
    const std::string valid = validText(text, singleLine);
    const auto description = describeFont(font);
    pango_layout_set_font_description(target, description.get());
    pango_layout_set_width(target, width > 0 ? pangoUnits(width) : -1);
    pango_layout_set_alignment(target, pangoAlignment(alignment, isRightToLeft(valid)));
    pango_layout_set_ellipsize(target, singleLine ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
    pango_layout_set_text(target, valid.data(), static_cast<int>(valid.size()));
}

CGSize PangoText::measure(const std::string& text, const UIFont& font, CGFloat width) {
    fill(text, font, width, NSTextAlignment::left, false);
    int pangoWidth = 0;
    int pangoHeight = 0;
    pango_layout_get_size(_layout, &pangoWidth, &pangoHeight);
    return CGSizeMake(std::ceil(static_cast<CGFloat>(pangoWidth) / PANGO_SCALE),
                      std::ceil(static_cast<CGFloat>(pangoHeight) / PANGO_SCALE));
}

void PangoText::draw(cairo_t* cairo, const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                     NSTextAlignment alignment, bool singleLine) {
    if (text.empty() || (singleLine && !(rect.size.width > 0))) return;
    fill(text, font, rect.size.width, alignment, singleLine);
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
    cairo_move_to(cairo, rect.origin.x, rect.origin.y);
    pango_cairo_show_layout(cairo, _layout);
    cairo_new_path(cairo);
}
