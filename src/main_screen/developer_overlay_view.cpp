// The panel in the top left corner with its graph, and the marks of the targets where they lie on the screen.
// The graph's two lines are the costs between which the iteration limit stays as it is.
#include "main_screen/developer_overlay_view.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/graphics/canvas.h"

namespace {

constexpr std::size_t eventsKept = 6;
constexpr std::size_t costsKept = 120;
constexpr std::size_t tweensShown = 4;

constexpr CGFloat margin = 12;
constexpr CGFloat padding = 10;
constexpr CGFloat textWidth = 320;
constexpr CGFloat lineHeight = 16;
constexpr CGFloat fontSize = 12;
constexpr CGFloat graphHeight = 48;
constexpr CGFloat panelRadius = 8;
/// Milliseconds: the top of the graph, and its two lines.
constexpr CGFloat graphTop = 100;
constexpr CGFloat fastFrame = 50;
constexpr CGFloat slowFrame = 80;

constexpr UIColor panelColor{0.04, 0.05, 0.08, 0.78};
constexpr UIColor textColor{0.92, 0.95, 1, 1};
constexpr UIColor fastColor{0.42, 0.85, 0.55, 1};
constexpr UIColor slowColor{1, 0.52, 0.36, 1};
constexpr UIColor markColor{1, 0.86, 0.25, 1};
/// Targets that would be smaller on the screen get a mark of this size; points.
constexpr CGFloat smallestMark = 10;

template <typename... Values>
std::string text(const char* format, Values... values) {
    char line[160];
    std::snprintf(line, sizeof line, format, values...);
    return line;
}

}  // namespace

DeveloperOverlayView::DeveloperOverlayView(CGRect frame, std::function<DeveloperFigures()> figures)
    : UIView(frame), _figures(std::move(figures)) {
    setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setUserInteractionEnabled(false);
}

void DeveloperOverlayView::noteEvent(const HostEvent& event) {
    _events.push_back(describe(event));
    if (_events.size() > eventsKept) _events.pop_front();
}

void DeveloperOverlayView::noteFrame(float cost) {
    _costs.push_back(cost);
    if (_costs.size() > costsKept) _costs.pop_front();
    setNeedsDisplay();
}

void DeveloperOverlayView::drawRect(Canvas& canvas, CGRect bounds) {
    const DeveloperFigures figures = _figures();
    drawTargets(canvas, bounds, figures);
    drawPanel(canvas, bounds, lines(figures));
}

void DeveloperOverlayView::drawTargets(Canvas& canvas, CGRect bounds, const DeveloperFigures& figures) const {
    const CGRect plane = figures.bounds;
    if (CGRectIsEmpty(plane)) return;
    for (const CGRect& target : figures.targets) {
        const CGFloat x = (CGRectGetMidX(target) - plane.origin.x) / plane.size.width * bounds.size.width;
        const CGFloat y = (CGRectGetMidY(target) - plane.origin.y) / plane.size.height * bounds.size.height;
        const CGFloat width =
            std::max(target.size.width / plane.size.width * bounds.size.width, smallestMark);
        const CGFloat height =
            std::max(target.size.height / plane.size.height * bounds.size.height, smallestMark);
        const CGRect mark = CGRectMake(x - width / 2, y - height / 2, width, height);
        if (CGRectIsEmpty(CGRectIntersection(mark, bounds))) continue;
        canvas.strokePath(UIBezierPath::bezierPathWithRect(mark), 1, markColor);
        canvas.fillRect(CGRectMake(x - 1, y - 1, 2, 2), markColor);
    }
}

std::vector<std::string> DeveloperOverlayView::lines(const DeveloperFigures& figures) const {
    const CGRect b = figures.bounds;
    std::vector<std::string> all = {
        text("frame %.1f ms, uDwell %.0f, targets %zu",
             static_cast<double>(_costs.empty() ? 0 : _costs.back()), static_cast<double>(figures.dwell),
             figures.targets.size()),
        text("at %.9g, %.9g", b.origin.x, b.origin.y),
        text("size %.6g x %.6g", b.size.width, b.size.height),
    };
    for (std::size_t i = 0; i < figures.tweens.size() && i < tweensShown; ++i)
        all.push_back(figures.tweens[i]);
    all.insert(all.end(), _events.begin(), _events.end());
    return all;
}

void DeveloperOverlayView::drawPanel(Canvas& canvas, CGRect bounds,
                                     const std::vector<std::string>& lines) const {
    const CGFloat width = std::min(textWidth, bounds.size.width - 2 * (margin + padding));
    const CGFloat height = graphHeight + padding + lineHeight * static_cast<CGFloat>(lines.size());
    const CGRect panel = CGRectMake(margin, margin, width + 2 * padding, height + 2 * padding);
    canvas.fillPath(UIBezierPath::bezierPathWithRoundedRect(panel, panelRadius), FillRule::nonZero,
                    panelColor);
    drawHistory(canvas, CGRectMake(margin + padding, margin + padding, width, graphHeight));
    CGFloat y = margin + padding + graphHeight + padding;
    for (const std::string& line : lines) {
        canvas.drawText(line, UIFont::systemFontOfSize(fontSize), textColor,
                        CGRectMake(margin + padding, y, width, lineHeight), NSTextAlignment::left, true);
        y += lineHeight;
    }
}

void DeveloperOverlayView::drawHistory(Canvas& canvas, CGRect area) const {
    const CGFloat barWidth = area.size.width / static_cast<CGFloat>(costsKept);
    CGFloat x = CGRectGetMaxX(area) - barWidth * static_cast<CGFloat>(_costs.size());
    for (const float cost : _costs) {
        const auto milliseconds = static_cast<CGFloat>(cost);
        const CGFloat height = std::clamp(milliseconds / graphTop, 0.0, 1.0) * area.size.height;
        canvas.fillRect(CGRectMake(x, CGRectGetMaxY(area) - height, barWidth, height),
                        milliseconds > fastFrame ? slowColor : fastColor);
        x += barWidth;
    }
    for (const CGFloat level : {fastFrame, slowFrame}) {
        const CGFloat y = CGRectGetMaxY(area) - level / graphTop * area.size.height;
        canvas.fillRect(CGRectMake(area.origin.x, y, area.size.width, 1), textColor.withAlpha(0.35));
    }
}
