// The toolbar over the fractal: touches beside its buttons end here instead of moving the fractal below.
// Cancelled touches still go on, as they end whatever began elsewhere.
#pragma once

#include "platform/ui/ui_toolbar.h"

class SwallowTouchesView : public UIToolbar {
  public:
    using UIToolbar::UIToolbar;
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}
};
