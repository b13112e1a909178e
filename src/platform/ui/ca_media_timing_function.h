// How an animation's pace goes over its time: the platform's curves, by the control points of a cubic.
// Pure: time in, progress out.
#pragma once

class CAMediaTimingFunction {
  public:
    /// A cubic from (0, 0) to (1, 1) with these control points; each x is 0 to 1.
    constexpr CAMediaTimingFunction(double x1, double y1, double x2, double y2)
        : _x1(x1), _y1(y1), _x2(x2), _y2(y2) {}
    static constexpr CAMediaTimingFunction linear() { return {0, 0, 1, 1}; }
    static constexpr CAMediaTimingFunction easeOut() { return {0, 0, 0.58, 1}; }

    /// The progress at a share of the time, 0 to 1.
    double valueAt(double time) const;

  private:
    double _x1;
    double _y1;
    double _x2;
    double _y2;
};
