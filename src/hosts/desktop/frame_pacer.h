// Keeps frames at the display's pace where the driver does not: the software rasteriser shows frames at once.
// Pure arithmetic on times; the loop does the sleeping.
#pragma once

class FramePacer {
  public:
    /// Seconds from one refresh to the next.
    explicit FramePacer(double period) : _period(period) {}

    /// Seconds to sleep before the next frame, when one that began at `begun` is on the screen at `shown`
    /// (seconds on one clock). 0 as long as swaps wait for the display, and for frames that are late.
    double pauseAfter(double begun, double shown);
    /// The window came back after a while: what was, says nothing about what is.
    void restart() { _next = 0; }

  private:
    double _period;
    int _hurried = 0;  ///< frames in a row that took far less than a period
    double _next = 0;  ///< when the next frame is due; 0 while unknown
};
