// The list of keys: a panel in the middle of the screen, closed by a tap anywhere.
// Keys are of no use to those who cannot find them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_control.h"

class KeyHelpView : public UIView {
  public:
    /// Fills its superview and keeps to it; close is called for a tap.
    KeyHelpView(CGRect frame, std::function<void()> close);

    void layoutSubviews() override;
    /// The screen below rests while the list is shown.
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;

  private:
    void addLine(const std::string& keys, const std::string& title);

    std::function<void()> _close;
    std::shared_ptr<UIView> _panel;
    /// A key's name and what it does, a pair for each line.
    std::vector<std::shared_ptr<UILabel>> _labels;
};
