// How something scrolled moves on by itself: it glides and slows down, springs back at the edges, or goes to
// a place. One dimension, points and seconds; a closed form, so that every refresh rate shows the same
// motion.
#pragma once

class ScrollMotion {
  public:
    /// Slows down from a velocity (points per second). Beyond `least` or `most` a spring takes over, whose
    /// rest is the edge; from outside of them it does so at once.
    static ScrollMotion glide(double from, double velocity, double least, double most);
    /// A spring that comes to rest at a place.
    static ScrollMotion springTo(double from, double velocity, double to);

    /// Where it is after so many seconds; for ever at its rest from duration() on.
    double at(double seconds) const;
    double duration() const { return _springStart + _springDuration; }
    double rest() const { return _to; }

  private:
    ScrollMotion(double from, double velocity) : _from(from), _velocity(velocity) {}
    double glidedTo(double seconds) const;
    void springFrom(double seconds, double offset, double velocity);

    double _from;
    double _velocity;
    double _to = 0;
    /// Until then it glides.
    double _springStart = 0;
    double _springDuration = 0;
    double _springOffset = 0;
    double _springVelocity = 0;
};

/// Points that something moves when it is drawn so far beyond its edge, where `room` is what shows of it;
/// always less than the room.
double rubberBand(double overshoot, double room);
/// The reverse.
double rubberBandPull(double shown, double room);
