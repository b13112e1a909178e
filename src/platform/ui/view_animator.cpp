// Animations as functions of time: a step only moves the clock, marks what changed and collects what ended.
// Completions run at the end of a step, since they may start new animations.
#include "platform/ui/view_animator.h"

#include <algorithm>
#include <utility>

#include "platform/ui/ui_view.h"

namespace {

/// The cubic through 0 and 1 that starts and ends at rest.
double easeInOut(double t) {
    return t * t * (3 - 2 * t);
}

CGFloat mix(CGFloat from, CGFloat to, double progress) {
    return from + (to - from) * progress;
}

CGRect mix(CGRect from, CGRect to, double progress) {
    return {{mix(from.origin.x, to.origin.x, progress), mix(from.origin.y, to.origin.y, progress)},
            {mix(from.size.width, to.size.width, progress), mix(from.size.height, to.size.height, progress)}};
}

}  // namespace

double ViewAnimator::Animation::endTime() const {
    return interrupted ? *interrupted : *start + timing.delay + timing.duration;
}

double ViewAnimator::Animation::progressAt(double time) const {
    const double elapsed = start ? time - *start - timing.delay : 0;
    if (elapsed <= 0) return 0;
    if (elapsed >= timing.duration) return 1;
    const double normalised = elapsed / timing.duration;
    if (timing.spring) return timing.spring->valueAt(normalised);
    return timing.curve ? timing.curve->valueAt(normalised) : easeInOut(normalised);
}

ViewAnimator& ViewAnimator::shared() {
    static ViewAnimator animator;
    return animator;
}

void ViewAnimator::step(double time) {
    _now = std::max(time, _now.value_or(time));
    for (Animation& animation : _animations) {
        if (!animation.start) animation.start = _now;
        if (*_now < *animation.start + animation.timing.delay) continue;
        for (const Track& track : animation.tracks)
            track.view->setNeedsDisplay();
    }
    for (Animation& ended : takeEnded()) {
        if (ended.completion) ended.completion(!ended.interrupted);
    }
}

std::vector<ViewAnimator::Animation> ViewAnimator::takeEnded() {
    const auto runs = [this](const Animation& animation) { return animation.endTime() > *_now; };
    if (std::all_of(_animations.begin(), _animations.end(), runs)) return {};
    const auto firstEnded = std::stable_partition(_animations.begin(), _animations.end(), runs);
    std::vector<Animation> ended(std::make_move_iterator(firstEnded),
                                 std::make_move_iterator(_animations.end()));
    _animations.erase(firstEnded, _animations.end());
    std::stable_sort(ended.begin(), ended.end(),
                     [](const Animation& a, const Animation& b) { return a.endTime() < b.endTime(); });
    return ended;
}

void ViewAnimator::reset() {
    _animations.clear();
    _now.reset();
}

void ViewAnimator::beginBlock(Timing timing, Completion completion) {
    timing.duration = _enabled && timing.duration > 0 ? timing.duration : 0;
    timing.delay = _enabled && timing.delay > 0 ? timing.delay : 0;
    _openBlocks.push_back({timing, std::move(completion), _now, {}, {}});
}

void ViewAnimator::endBlock() {
    _animations.push_back(std::move(_openBlocks.back()));
    _openBlocks.pop_back();
}

void ViewAnimator::alphaChanges(UIView& view, double from, double to) {
    valueChanges(view, Property::alpha, {{from, 0}, {}}, {{to, 0}, {}});
}

void ViewAnimator::frameChanges(UIView& view, CGRect from, CGRect to) {
    valueChanges(view, Property::frame, from, to);
}

void ViewAnimator::progressStarts(UIView& view) {
    valueChanges(view, Property::progress, CGRectZero, {{1, 0}, {}});
}

void ViewAnimator::progressStops(const UIView& view) {
    dropTracks([&](const Track& t) { return t.view == &view && t.property == Property::progress; });
}

void ViewAnimator::valueChanges(UIView& view, Property property, CGRect from, CGRect to) {
    const auto isThis = [&](const Track& t) { return t.view == &view && t.property == property; };
    if (_openBlocks.empty() || !_enabled) return dropTracks(isThis);

    std::vector<Track>& own = _openBlocks.back().tracks;
    if (const auto again = std::find_if(own.begin(), own.end(), isThis); again != own.end()) {
        again->to = to;
        return;
    }
    if (_openBlocks.back().timing.fromCurrentState) from = onScreen(view, property, from);
    dropTracks(isThis);
    own.push_back({&view, property, from, to});
}

double ViewAnimator::alphaOnScreen(const UIView& view, double model) const {
    return onScreen(view, Property::alpha, {{model, 0}, {}}).origin.x;
}

CGRect ViewAnimator::frameOnScreen(const UIView& view, CGRect model) const {
    return onScreen(view, Property::frame, model);
}

double ViewAnimator::progressOnScreen(const UIView& view) const {
    return onScreen(view, Property::progress, {{1, 0}, {}}).origin.x;
}

CGRect ViewAnimator::onScreen(const UIView& view, Property property, CGRect model) const {
    for (const auto* list : {&_animations, &_openBlocks}) {
        for (const Animation& animation : *list) {
            for (const Track& track : animation.tracks) {
                if (track.view != &view || track.property != property) continue;
                const double progress = animation.progressAt(_now.value_or(0));
                return progress == 1 ? model : mix(track.from, track.to, progress);
            }
        }
    }
    return model;
}

void ViewAnimator::viewDestroyed(const UIView& view) {
    dropTracks([&](const Track& track) { return track.view == &view; });
}

/// An animation that loses its last track ends, unfinished, with the next step: its completion must not run
/// in the middle of whatever is changing the view now.
template <typename Predicate>
void ViewAnimator::dropTracks(Predicate predicate) {
    for (auto* list : {&_animations, &_openBlocks}) {
        for (Animation& animation : *list) {
            const auto dropped = std::erase_if(animation.tracks, predicate);
            if (dropped > 0 && animation.tracks.empty()) animation.interrupted = _now.value_or(0);
        }
    }
}
