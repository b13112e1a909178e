// One destination in the share sheet: its icon on a disc, its name below.
// A button like any other, drawn in its own way.
#pragma once

#include "platform/host/share_destinations.h"
#include "platform/ui/ui_control.h"

class UIActivityCell : public UIButton {
  public:
    explicit UIActivityCell(const ShareDestination& destination);
    /// Whether the keys have come to it: it then has a ring.
    void setFocused(bool focused);
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return true; }

    static constexpr CGSize size{90, 92};

  private:
    UIImageRef _icon;
    UIColor _color;
    bool _isFocused = false;
};
