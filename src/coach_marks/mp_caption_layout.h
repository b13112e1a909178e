// Where the caption of a mark and its arrow stand: numbers in, rectangles out.
// Apart from the view, so that every position can be worked out by hand.
#pragma once

#include <optional>

#include "coach_marks/mp_coach_marks.h"

struct MPCaptionRequest {
    CGRect rect;     ///< of the mark
    CGSize caption;  ///< as the text fits
    CGSize bounds;   ///< of the overlay
    CGFloat lblSpacing = 0;
    MPCoachMarkAlignment alignment = MPCoachMarkAlignment::center;
    MPCoachMarkPosition position = MPCoachMarkPosition::bottom;
    /// The size of the arrow's image; nothing for no arrow.
    std::optional<CGSize> arrow;
};

struct MPCaptionPlaces {
    CGRect caption;
    std::optional<CGRect> arrow;
};

/// The image of the arrow at a position; null where none is ever shown.
const char* arrowImageName(MPCoachMarkPosition position);

MPCaptionPlaces placeCaption(const MPCaptionRequest& request);
