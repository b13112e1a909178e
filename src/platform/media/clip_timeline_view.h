// The length of a film as a strip: where it plays, and a handle at each end of the part to keep.
// A finger takes the nearest of the three.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/ui/ui_view.h"

class ClipTimelineView : public UIView {
  public:
    /// Seconds, above 0.
    explicit ClipTimelineView(double duration);

    double trimStart() const { return _start; }
    double trimEnd() const { return _end; }
    double position() const { return _position; }
    /// Kept within the part to keep.
    void setPosition(double position);
    /// Called when the user moves anything; position is what to show then.
    void setOnScrub(std::function<void()> onScrub) { _onScrub = std::move(onScrub); }

    bool swallowsTouches() const override { return true; }
    void drawRect(Canvas& canvas, CGRect bounds) override;
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesMoved(const UITouches& touches, const UIEvent& event) override;
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) override;

  private:
    enum class Grip { start, position, end };

    double secondsAt(CGFloat x) const;
    CGFloat placeOf(double seconds) const;
    Grip gripAt(CGFloat x) const;
    void drag(CGFloat x);

    double _duration;
    double _start = 0;
    double _end;
    double _position = 0;
    std::function<void()> _onScrub;
    std::optional<int64_t> _finger;
    Grip _grip = Grip::position;
};
