// Synchronised swaps are left alone: sleeping beside them would miss refreshes.
// That they are not shows in a row of frames far shorter than a period; a queue of two or three can hide it
// for a moment, hence the row.
#include "hosts/desktop/frame_pacer.h"

#include <algorithm>

namespace {
constexpr int kRow = 8;
constexpr double kFarLess = 0.6;
}  // namespace

double FramePacer::pauseAfter(double begun, double shown) {
    if (_hurried < kRow) {
        _hurried = shown - begun < kFarLess * _period ? _hurried + 1 : 0;
        return 0;
    }
    // From frame to frame, so that pauses that end late do not add up; a late frame starts a new count.
    _next = std::max(_next + _period, shown);
    if (_next - shown > _period) _next = shown;
    return _next - shown;
}
