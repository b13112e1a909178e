// One destination in the share sheet: its icon on a disc, its name below.
// While the keys are at it, it has a ring.
#pragma once

#include "platform/host/share_destinations.h"
#include "platform/ui/ui_control.h"

class UIActivityCell : public UIFocusableButton {
  public:
    explicit UIActivityCell(const ShareDestination& destination);
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return true; }

    static constexpr CGSize size{90, 92};

  private:
    UIImageRef _icon;
    UIColor _color;
};
