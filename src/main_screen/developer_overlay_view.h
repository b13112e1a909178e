// What goes on inside, laid over the picture for developers: events, frame cost, limit, bounds, targets,
// tweens. It takes no touches, so that what it shows goes on as without it.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/host/host_event.h"
#include "platform/ui/ui_view.h"

/// The state of the moment; read for each repaint.
struct DeveloperFigures {
    /// The iteration limit.
    float dwell = 0;
    /// Plane units.
    CGRect bounds;
    std::vector<CGRect> targets;
    /// A line for each running tween.
    std::vector<std::string> tweens;
};

class DeveloperOverlayView : public UIView {
  public:
    /// Fills its superview and keeps to it.
    DeveloperOverlayView(CGRect frame, std::function<DeveloperFigures()> figures);

    void noteEvent(const HostEvent& event);
    /// Cost of the frame just drawn, milliseconds. Asks for a repaint.
    void noteFrame(float cost);
    void drawRect(Canvas& canvas, CGRect bounds) override;

  private:
    void drawTargets(Canvas& canvas, CGRect bounds, const DeveloperFigures& figures) const;
    void drawPanel(Canvas& canvas, CGRect bounds, const std::vector<std::string>& lines) const;
    void drawHistory(Canvas& canvas, CGRect area) const;
    std::vector<std::string> lines(const DeveloperFigures& figures) const;

    std::function<DeveloperFigures()> _figures;
    std::deque<std::string> _events;
    std::deque<float> _costs;
};
