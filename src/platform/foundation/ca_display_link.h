// Display links: operations that are called once per refresh of the display, in the order of their adding.
// Tweens hang on them; the app steps them all at one place of its frame.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class NSRunLoop;

class CADisplayLink : public std::enable_shared_from_this<CADisplayLink> {
  public:
    using Block = std::function<void(CADisplayLink&)>;

    explicit CADisplayLink(Block block) : _block(std::make_shared<const Block>(std::move(block))) {}

    /// Keeps its target alive until it is invalidated.
    template <typename Target>
    static std::shared_ptr<CADisplayLink> displayLinkWithTarget(std::shared_ptr<Target> target,
                                                                void (Target::*selector)(CADisplayLink&)) {
        return std::make_shared<CADisplayLink>(
            [target = std::move(target), selector](CADisplayLink& link) { (target.get()->*selector)(link); });
    }

    /// The loop keeps the link until it is invalidated. Once per link; an invalidated one stays out.
    void addToRunLoop(NSRunLoop& loop);
    /// Ends it for good and lets the target go. Safe from inside its own call.
    void invalidate();
    bool isInvalidated() const { return !_block; }

    /// The configured interval from frame to frame in seconds, however long the last one really took.
    double duration() const;
    /// The time of the frame that called it last, in seconds.
    double timestamp() const { return _timestamp; }

  private:
    friend class NSRunLoop;
    void fire(double timestamp);

    /// Shared, so that it outlives a call in which it is invalidated.
    std::shared_ptr<const Block> _block;
    NSRunLoop* _loop = nullptr;
    double _timestamp = 0;
};

/// The main thread's run loop, as far as display links need one.
class NSRunLoop {
  public:
    /// Of so many refreshes per second, as displays tell it: in single precision. A little more than the
    /// sixtieth of a second, so that clocks that add it up reach half a second in thirty steps.
    static constexpr double refreshIntervalOf(double rate) {
        return static_cast<double>(1.0F / static_cast<float>(rate));
    }
    static constexpr double defaultRefreshInterval = static_cast<double>(1.0F / 60.0F);

    static NSRunLoop& currentRunLoop();

    /// One frame: calls every link once. Links added meanwhile wait for the next frame, links invalidated
    /// meanwhile are not called any more.
    void fireDisplayLinks(double timestamp);
    /// Ends all links (the app is going away, or a test has ended).
    void invalidateDisplayLinks();
    /// Those that are not invalidated.
    std::size_t displayLinkCount() const;

    /// Seconds from one refresh to the next, as the host's display has it; others than positive, finite
    /// intervals are refused with a line in the log.
    void setRefreshInterval(double seconds);
    double refreshInterval() const { return _refreshInterval; }
    /// How many refreshes lie between two frames where not every refresh gets one; 1 or more.
    void setRefreshesPerFrame(int refreshes) { _refreshesPerFrame = refreshes; }
    double frameInterval() const { return _refreshInterval * _refreshesPerFrame; }

  private:
    friend class CADisplayLink;
    void remove(const CADisplayLink& link);

    /// A link that is removed during a frame leaves an empty place until its end.
    std::vector<std::shared_ptr<CADisplayLink>> _links;
    bool _isFiring = false;
    double _refreshInterval = defaultRefreshInterval;
    int _refreshesPerFrame = 1;
};
