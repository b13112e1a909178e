// Drawing and dragging of the strip.
// The part to keep never becomes shorter than a moment, so that there is always something to save.
#include "platform/media/clip_timeline_view.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double shortestPart = 0.1;  // seconds
constexpr CGFloat handleWidth = 12;
constexpr CGFloat playheadWidth = 4;
constexpr CGFloat handleReach = 22;
constexpr UIColor stripColor{0.25, 0.26, 0.3, 1};
constexpr UIColor keptColor{0.42, 0.44, 0.5, 1};
constexpr UIColor handleColor{1, 0.8, 0.2, 1};

}  // namespace

ClipTimelineView::ClipTimelineView(double duration)
    : _duration(std::max(duration, shortestPart)), _end(_duration) {
    setAccessibilityLabel("Timeline");
}

void ClipTimelineView::setPosition(double position) {
    const double kept = std::clamp(position, _start, _end);
    if (kept == _position) return;
    _position = kept;
    setNeedsDisplay();
}

double ClipTimelineView::secondsAt(CGFloat x) const {
    const CGFloat length = std::max(bounds().size.width - 2 * handleWidth, 1.0);
    return std::clamp((x - handleWidth) / length, 0.0, 1.0) * _duration;
}

CGFloat ClipTimelineView::placeOf(double seconds) const {
    return handleWidth + (bounds().size.width - 2 * handleWidth) * seconds / _duration;
}

void ClipTimelineView::drawRect(Canvas& canvas, CGRect bounds) {
    const CGFloat height = bounds.size.height;
    const CGFloat start = placeOf(_start);
    const CGFloat end = placeOf(_end);
    canvas.fillRect(CGRectMake(handleWidth, height * 0.25, bounds.size.width - 2 * handleWidth, height * 0.5),
                    stripColor);
    canvas.fillRect(CGRectMake(start, height * 0.25, end - start, height * 0.5), keptColor);
    canvas.fillRect(CGRectMake(start, height * 0.25 - 3, end - start, 3), handleColor);
    canvas.fillRect(CGRectMake(start, height * 0.75, end - start, 3), handleColor);
    canvas.fillRect(CGRectMake(start - handleWidth, height * 0.25 - 3, handleWidth, height * 0.5 + 6),
                    handleColor);
    canvas.fillRect(CGRectMake(end, height * 0.25 - 3, handleWidth, height * 0.5 + 6), handleColor);
    canvas.fillRect(
        CGRectMake(placeOf(_position) - playheadWidth / 2, height * 0.1, playheadWidth, height * 0.8),
        UIColor::white());
}

/// A handle within reach goes before the playhead, which can be taken anywhere else.
ClipTimelineView::Grip ClipTimelineView::gripAt(CGFloat x) const {
    const CGFloat toStart = std::abs(x - (placeOf(_start) - handleWidth / 2));
    const CGFloat toEnd = std::abs(x - (placeOf(_end) + handleWidth / 2));
    if (std::min(toStart, toEnd) > handleReach) return Grip::position;
    return toStart < toEnd ? Grip::start : Grip::end;
}

void ClipTimelineView::drag(CGFloat x) {
    const double seconds = secondsAt(x);
    if (_grip == Grip::start) _position = _start = std::min(seconds, _end - shortestPart);
    if (_grip == Grip::end) _position = _end = std::max(seconds, _start + shortestPart);
    if (_grip == Grip::position) _position = std::clamp(seconds, _start, _end);
    setNeedsDisplay();
    if (_onScrub) _onScrub();
}

void ClipTimelineView::touchesBegan(const UITouches& touches, const UIEvent&) {
    if (_finger || touches.empty()) return;
    _finger = touches.front()->id;
    const CGFloat x = touches.front()->locationInView(*this).x;
    _grip = gripAt(x);
    if (_grip == Grip::position) drag(x);
}

void ClipTimelineView::touchesMoved(const UITouches& touches, const UIEvent&) {
    for (const auto& touch : touches) {
        if (touch->id == _finger) drag(touch->locationInView(*this).x);
    }
}

void ClipTimelineView::touchesEnded(const UITouches& touches, const UIEvent&) {
    for (const auto& touch : touches) {
        if (touch->id == _finger) _finger.reset();
    }
}

void ClipTimelineView::touchesCancelled(const UITouches& touches, const UIEvent& event) {
    touchesEnded(touches, event);
}
