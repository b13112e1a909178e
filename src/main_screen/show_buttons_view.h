// Where the toolbar was, while it is hidden: for who finds the way by focus and name, a button that brings it
// back. It shows nothing, and touches go through it, as a tap anywhere does the same.
#pragma once

#include <functional>
#include <utility>

#include "platform/ui/ui_view.h"

class ShowButtonsView : public UIView {
  public:
    explicit ShowButtonsView(std::function<void()> show) : _show(std::move(show)) {
        setAccessibilityLabel("Show the buttons");
        setUserInteractionEnabled(false);
    }
    UIAccessibilityTraits accessibilityTraits() const override { return UIAccessibilityTraitButton; }
    bool accessibilityActivate() override {
        _show();
        return true;
    }
    bool drawsContent() const override { return false; }

  private:
    std::function<void()> _show;
};
