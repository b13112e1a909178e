// The icons of the share sheet and how one destination is drawn.
// Icons are paths on a square of 24, like those of the toolbar.
#include "platform/ui/ui_activity_cell.h"

#include <array>
#include <string_view>

#include "platform/ui/text_measure.h"

namespace {

constexpr CGFloat discSize = 52;
constexpr CGFloat iconSize = 28;
constexpr CGFloat discTop = 6;
constexpr CGFloat nameTop = discTop + discSize + 6;
constexpr double nameSize = 12.5;
constexpr CGFloat ringGap = 3;
constexpr double iconUnits = 24;
constexpr double iconLine = 1.6;

struct Icon {
    ShareIcon icon;
    UIColor color;
    std::string_view strokes;
};

constexpr std::array<Icon, 7> icons{{
    {ShareIcon::copy, {0.36, 0.42, 0.55, 1}, "M9 8.5h10.5V20H9zM15 8.5V4H4.5v11.5H9"},
    {ShareIcon::picture,
     {0.17, 0.56, 0.45, 1},
     "M3.8 5h16.4v14H3.8zM4 16.5l4.8-5 4 4 2.6-2.4 4.6 4.3M15 9.2a1.4 1.4 0 1 0 2.8 0a1.4 1.4 0 1 0-2.8 0z"},
    {ShareIcon::mail, {0.16, 0.45, 0.86, 1}, "M3.5 5.8h17v12.4h-17zM3.8 6.2 12 13l8.2-6.8"},
    {ShareIcon::bubble,
     {0.13, 0.6, 0.84, 1},
     "M12 4.5c4.9 0 8.7 3 8.7 6.9s-3.8 6.9-8.7 6.9c-.9 0-1.8-.1-2.6-.3L5 "
     "20.2l.8-3.6c-1.6-1.3-2.5-3.1-2.5-5.2 "
     "0-3.9 3.8-6.9 8.7-6.9z"},
    {ShareIcon::people,
     {0.25, 0.36, 0.7, 1},
     "M6 8.6a3 3 0 1 0 6 0a3 3 0 1 0-6 0zM3.2 19c0-3.5 2.4-5.6 5.8-5.6s5.8 2.1 5.8 5.6M14.8 6.2a2.7 2.7 0 1 "
     "1 "
     "1.2 5.1M16.6 13.7c2.6.4 4.2 2.4 4.2 5.3"},
    {ShareIcon::chat, {0.16, 0.6, 0.32, 1}, "M4 5h16v11.500H10.500L6.500 20v-3.500H4zM8 9h8M8 12.500h5"},
    {ShareIcon::browser,
     {0.46, 0.37, 0.72, 1},
     "M3.6 12a8.4 8.4 0 1 0 16.8 0a8.4 8.4 0 1 0-16.8 0zM3.8 12h16.4M12 3.700c-5 4.800-5 11.800 0 16.600M12 "
     "3.700c5 4.800 5 11.800 0 16.600"},
}};

const Icon& iconFor(ShareIcon wanted) {
    for (const Icon& one : icons) {
        if (one.icon == wanted) return one;
    }
    return icons.front();
}

UIImageRef imageOf(const Icon& icon) {
    VectorGlyph glyph;
    glyph.size = {iconUnits, iconUnits};
    if (auto path = UIBezierPath::pathWithSVGData(icon.strokes))
        glyph.shapes.push_back({std::move(*path), true, iconLine, FillRule::nonZero});
    return UIImage::imageWithGlyph(std::move(glyph), {iconSize, iconSize});
}

}  // namespace

UIActivityCell::UIActivityCell(const ShareDestination& destination)
    : _icon(imageOf(iconFor(destination.icon))), _color(iconFor(destination.icon).color) {
    setTitle(destination.title);
}

void UIActivityCell::drawRect(Canvas& canvas, CGRect bounds) {
    const CGRect disc = CGRectMake(CGRectGetMidX(bounds) - discSize / 2, discTop, discSize, discSize);
    canvas.fillPath(UIBezierPath::bezierPathWithOvalInRect(disc), FillRule::nonZero, _color);
    if (isFocused()) {
        const CGRect ring = CGRectInset(disc, -ringGap, -ringGap);
        canvas.strokePath(UIBezierPath::bezierPathWithOvalInRect(ring), 2, UIColor::white());
    }
    const CGFloat inset = (discSize - iconSize) / 2;
    canvas.drawImage(*_icon, CGRectInset(disc, inset, inset), UIColor::white());
    const UIFont font = UIFont::systemFontOfSize(nameSize);
    const CGFloat height = bounds.size.height - nameTop;
    canvas.drawText(title(), font, UIColor::white(0.92), CGRectMake(0, nameTop, bounds.size.width, height),
                    NSTextAlignment::center, true);
}
