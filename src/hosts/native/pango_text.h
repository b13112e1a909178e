// Text through Pango: laid out once the same way for measuring and for drawing.
// Fonts are looked up by the first text, not before; a run that draws none never asks for them.
#pragma once

#include <string>

#include "platform/foundation/geometry.h"
#include "platform/graphics/ui_color.h"
#include "platform/graphics/ui_font.h"

typedef struct _cairo cairo_t;
typedef struct _PangoContext PangoContext;
typedef struct _PangoFontMap PangoFontMap;
typedef struct _PangoLayout PangoLayout;

class PangoText {
  public:
    PangoText() = default;
    ~PangoText();
    PangoText(const PangoText&) = delete;
    PangoText& operator=(const PangoText&) = delete;

    /// As CanvasProvider::measureText.
    CGSize measure(const std::string& text, const UIFont& font, CGFloat width);
    /// As Canvas::drawText, at the context's present scale.
    void draw(cairo_t* cairo, const std::string& text, const UIFont& font, UIColor color, CGRect rect,
              NSTextAlignment alignment, bool singleLine);

  private:
    PangoLayout* layout();
    void fill(const std::string& text, const UIFont& font, CGFloat width, NSTextAlignment alignment,
              bool singleLine);

    PangoFontMap* _fontMap = nullptr;
    PangoContext* _context = nullptr;
    PangoLayout* _layout = nullptr;
};
