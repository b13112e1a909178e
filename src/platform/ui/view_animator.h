// The running view animations: one clock for all, stepped once per frame.
// A change made inside an animation block becomes a track here; the view keeps the end value.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/foundation/geometry.h"
#include "platform/ui/ca_media_timing_function.h"
#include "platform/ui/spring_curve.h"

class UIView;

class ViewAnimator {
  public:
    using Completion = std::function<void(bool finished)>;

    /// How a block's changes move: along the spring or the curve if there is one, else by easing in and out.
    struct Timing {
        double duration = 0;  ///< seconds
        double delay = 0;     ///< seconds
        bool fromCurrentState = false;
        std::optional<SpringCurve> spring;
        std::optional<CAMediaTimingFunction> curve = std::nullopt;
    };

    static ViewAnimator& shared();

    /// Steps every animation to the time (seconds, never backwards) and runs the completions that are due:
    /// those of replaced animations and of ended ones, in the order in which they ended. An animation counts
    /// from the step before its block, the first ones from the first step.
    void step(double time);
    bool isRunning() const { return !_animations.empty(); }
    /// Forgets everything without running completions (the app is going away).
    void reset();

    /// Changes between the two belong to one animation. Blocks nest; the innermost takes the changes.
    void beginBlock(Timing timing, Completion completion);
    void endBlock();

    /// NO: blocks that come last no time and move nothing; their completions still follow with the next step.
    void setEnabled(bool enabled) { _enabled = enabled; }

    /// A view is about to change a value; the track that ran on it so far ends here.
    void alphaChanges(UIView& view, double from, double to);
    void frameChanges(UIView& view, CGRect from, CGRect to);
    /// A change of the view's own, from 0 to 1: it knows what it shows between.
    void progressStarts(UIView& view);
    /// It ends here, unfinished.
    void progressStops(const UIView& view);
    /// What is on screen now: the model value unless a track runs.
    double alphaOnScreen(const UIView& view, double model) const;
    CGRect frameOnScreen(const UIView& view, CGRect model) const;
    /// 1 while nothing runs.
    double progressOnScreen(const UIView& view) const;
    void viewDestroyed(const UIView& view);

  private:
    enum class Property { alpha, frame, progress };

    /// An alpha or a progress lies in origin.x.
    struct Track {
        UIView* view = nullptr;
        Property property = Property::alpha;
        CGRect from;
        CGRect to;
    };

    struct Animation {
        Timing timing;
        Completion completion;
        std::optional<double> start;
        std::vector<Track> tracks;
        /// The time at which the last of its tracks was taken away.
        std::optional<double> interrupted;

        double endTime() const;
        double progressAt(double time) const;
    };

    void valueChanges(UIView& view, Property property, CGRect from, CGRect to);
    CGRect onScreen(const UIView& view, Property property, CGRect model) const;
    template <typename Predicate>
    void dropTracks(Predicate predicate);
    std::vector<Animation> takeEnded();

    bool _enabled = true;
    std::optional<double> _now;
    std::vector<Animation> _animations;
    /// The blocks that run now, the innermost last.
    std::vector<Animation> _openBlocks;
};
