// The places by position. Distances that look odd (to the left of a mark, below and left of it) fit marks at
// the screen's right edge and are kept for tours that count on them.
#include "coach_marks/mp_caption_layout.h"

#include <cmath>

namespace {

/// Between rectangle, arrow and caption.
constexpr CGFloat margin = 5;
constexpr CGFloat bottomLeftShift = 60;

CGFloat floorOfFloat(CGFloat value) {
    return static_cast<CGFloat>(std::floor(static_cast<float>(value)));
}

CGFloat alignedX(const MPCaptionRequest& r) {
    switch (r.alignment) {
        case MPCoachMarkAlignment::left:
            return margin;
        case MPCoachMarkAlignment::right:
            return floorOfFloat(r.bounds.width - r.caption.width - margin);
        case MPCoachMarkAlignment::center:
            break;
    }
    return floorOfFloat((r.bounds.width - r.caption.width) / 2);
}

/// Under the rectangle; over it where the caption would leave the screen.
CGFloat belowY(const MPCaptionRequest& r) {
    const CGFloat y = CGRectGetMaxY(r.rect) + r.lblSpacing;
    const bool fits = y + r.caption.height + r.lblSpacing <= r.bounds.height;
    return fits ? y : r.rect.origin.y - r.lblSpacing - r.caption.height;
}

MPCaptionPlaces placeLeft(const MPCaptionRequest& r) {
    const CGFloat y = CGRectGetMidY(r.rect) - r.caption.height / 2;
    CGFloat x = r.bounds.width - r.caption.width - margin - r.rect.size.width;
    std::optional<CGRect> arrow;
    if (r.arrow) {
        arrow = CGRect{{r.bounds.width - r.arrow->width - margin - r.rect.size.width,
                        y + r.caption.height / 2 - r.arrow->height / 2},
                       *r.arrow};
        x -= r.arrow->width + margin;
    }
    return {{{x, y}, r.caption}, arrow};
}

/// The arrow takes the caption's place and the caption moves on by it: up (-1) or down (1).
MPCaptionPlaces placeInColumn(const MPCaptionRequest& r, CGFloat y, CGFloat direction) {
    const CGFloat x = alignedX(r);
    if (!r.arrow) return {{{x, y}, r.caption}, std::nullopt};
    const CGRect arrow{{x, y}, *r.arrow};
    return {{{x, y + direction * (r.arrow->height + margin)}, r.caption}, arrow};
}

/// Beside the lower corner; shift: how far to the left of it.
MPCaptionPlaces placeAtCorner(const MPCaptionRequest& r, CGFloat shift) {
    const CGFloat y = belowY(r);
    const CGFloat corner = CGRectGetMaxX(r.rect) + margin;
    const CGFloat x = corner - shift;
    if (!r.arrow) return {{{x, y}, r.caption}, std::nullopt};
    const CGRect arrow{{corner - r.rect.size.width / 2 - r.arrow->width / 2, y - margin}, *r.arrow};
    return {{{x, y + r.arrow->height / 2}, r.caption}, arrow};
}

}  // namespace

const char* arrowImageName(MPCoachMarkPosition position) {
    switch (position) {
        case MPCoachMarkPosition::left:
            return "arrow-right";
        case MPCoachMarkPosition::top:
            return "arrow-down";
        case MPCoachMarkPosition::right:
            return nullptr;
        case MPCoachMarkPosition::bottomLeft:
            return "arrow-top-left";
        case MPCoachMarkPosition::bottom:
        case MPCoachMarkPosition::bottomRight:
            break;
    }
    return "arrow-top";
}

MPCaptionPlaces placeCaption(const MPCaptionRequest& r) {
    switch (r.position) {
        case MPCoachMarkPosition::left:
            return placeLeft(r);
        case MPCoachMarkPosition::top:
            return placeInColumn(r, r.rect.origin.y - r.caption.height - margin, -1);
        case MPCoachMarkPosition::right:
            return {
                {{CGRectGetMaxX(r.rect) + margin, CGRectGetMidY(r.rect) - r.caption.height / 2}, r.caption},
                std::nullopt};
        case MPCoachMarkPosition::bottomRight:
            return placeAtCorner(r, 0);
        case MPCoachMarkPosition::bottomLeft:
            return placeAtCorner(r, r.caption.width + bottomLeftShift);
        case MPCoachMarkPosition::bottom:
            break;
    }
    return placeInColumn(r, belowY(r), 1);
}
