// The screen the app fills: its size in points and how many pixels a point has.
// Whoever turns points into pixels asks here.
#pragma once

#include "platform/foundation/geometry.h"

class UIScreen {
  public:
    static UIScreen& mainScreen();
    CGRect bounds() const { return {CGPointZero, _size}; }
    double scale() const { return _scale; }
    void setSizeAndScale(CGSize points, double scale);

  private:
    CGSize _size{1280, 720};
    double _scale = 1;
};
