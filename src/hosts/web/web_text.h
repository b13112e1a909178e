// Text by the browser's engine: measured and drawn in the same lines.
// The lines are made in JavaScript, where the widths are; the painter of canvases draws them.
#pragma once

#include <string>

#include "platform/foundation/geometry.h"
#include "platform/graphics/ui_font.h"

namespace WebText {

/// Makes Module.text, which the painter of canvases uses too. Once, before anything is measured or painted.
void prepare();

/// The font's families as Module.text takes them.
std::string familyList(const UIFont& font);

/// As CanvasProvider::measureText.
CGSize measure(const std::string& text, const UIFont& font, CGFloat width);

}  // namespace WebText
