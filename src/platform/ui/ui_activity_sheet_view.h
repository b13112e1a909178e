// What the share sheet shows: the picture and its link, a grid of destinations, a line for what happens.
// Answers finger, mouse, arrow keys and screen readers alike.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "platform/host/share_destinations.h"
#include "platform/ui/ui_control.h"

class UIActivityCell;

class UIActivitySheetView : public UIView {
  public:
    using Choose = std::function<void(const ShareDestination&)>;
    enum class Tone { plain, success, mistake };

    UIActivitySheetView(const SharedContent& content, const std::vector<ShareDestination>& destinations,
                        const Choose& choose, const std::function<void()>& close);

    /// Points, for all of it on the present screen.
    CGSize sizeThatFits() const;
    /// Whether it stands on the screen itself, with a ground of its own.
    void setDrawsGround(bool drawsGround);
    /// One line below the destinations.
    void say(const std::string& message, Tone tone);
    /// Arrows and tab go from destination to destination, return and space choose. YES if the key was used.
    bool keyPressed(const HostKeyPress& press);

    void layoutSubviews() override;
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return _drawsGround; }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}

  private:
    std::size_t columns() const;
    void focus(std::ptrdiff_t step);

    std::shared_ptr<UIView> _preview;
    std::shared_ptr<UILabel> _title = std::make_shared<UILabel>();
    std::shared_ptr<UILabel> _link = std::make_shared<UILabel>();
    std::shared_ptr<UIButton> _closeButton = std::make_shared<UIButton>();
    std::shared_ptr<UILabel> _message = std::make_shared<UILabel>();
    std::vector<std::shared_ptr<UIActivityCell>> _cells;
    bool _drawsGround = true;
};
