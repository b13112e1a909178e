// Measuring text through the host's text engine.
// Where there is no engine nothing has a size: nothing could be painted either.
#pragma once

#include <string>

#include "platform/host/canvas_provider.h"

/// Posted when texts have other sizes than before: fonts arrived.
inline const std::string UIContentSizeCategoryDidChangeNotification =
    "UIContentSizeCategoryDidChangeNotification";

/// Points; a width of 0 or less for unwrapped lines.
inline CGSize measureText(const std::string& text, const UIFont& font, CGFloat width) {
    const std::shared_ptr<CanvasProvider> provider = sharedCanvasProvider();
    return provider ? provider->measureText(text, font, width) : CGSizeZero;
}
