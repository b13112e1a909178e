// Moves properties of an object from their present values to given ones, once per refresh of the display.
// Everything happens on the thread of the run loop; callbacks may start and stop tweens, this one included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/ca_display_link.h"
#include "tween/gs_easing_function.h"
#include "tween/gs_tween_data.h"
#include "tween/gs_tween_value.h"

class GSTween : public std::enable_shared_from_this<GSTween> {
  public:
    /// A tween of `time` seconds for each pass. The parameters hold end values by property name (a number, or
    /// a point, size or rectangle in brace form) and, of the reserved keys, any of:
    ///   "delay"       seconds before each pass
    ///   "repeat"      further passes, or round trips with "yoyo"
    ///   "yoyo"        back again after each pass
    ///   "speed"       rate of the clock, 1 by default; backwards if negative
    ///   "autoStart"   start now, the default
    ///   "onStart"     called once, after the first values are set
    ///   "onUpdate"    called after each setting of values
    ///   "onComplete"  called by each stop
    /// It lives on while it runs, whether or not anybody holds it. Nothing if it cannot start.
    static std::shared_ptr<GSTween> tweenWithTarget(std::shared_ptr<KeyValueCoding> target, double time,
                                                    GSEasingFunction ease, const GSTweenParams& params);
    static std::shared_ptr<GSTween> initWithTarget(std::shared_ptr<KeyValueCoding> target, double time,
                                                   GSEasingFunction ease, const GSTweenParams& params);

    virtual ~GSTween();
    GSTween(const GSTween&) = delete;
    GSTween& operator=(const GSTween&) = delete;

    /// On a stopped tween: goes on from where its clock stands.
    void start();
    /// Leaves the values as they are and calls "onComplete", on every call.
    void stop();
    void pause();
    void resume();
    void reset() {}

    double speed() const { return _speed; }
    void setSpeed(double speed) { _speed = speed; }
    const std::string& version() const { return _version; }

    /// Adds what the parameters say to what the tween has.
    void parseKeys(const GSTweenParams& params);
    /// A new link in the place of the one before. NO if there is none to be had.
    virtual bool setupDisplayLink();
    /// One refresh: sets the values for the clock, then moves the clock on by the link's nominal interval.
    void update(CADisplayLink& link);

    bool isRunning() const { return _displayLink && !_displayLink->isInvalidated(); }
    /// One line for developers: what moves, how far it is.
    std::string description() const;
    /// Descriptions of the running tweens, in the order of their making.
    static std::vector<std::string> runningTweens();
    /// Tweens that exist, running or not.
    static std::size_t livingTweens();

  protected:
    GSTween(std::shared_ptr<KeyValueCoding> target, double time, GSEasingFunction ease);
    /// The second half of making one: reads the parameters, starts. Nothing if it cannot start.
    static std::shared_ptr<GSTween> initialised(std::shared_ptr<GSTween> tween, const GSTweenParams& params);

  private:
    struct ReservedKey;
    static const ReservedKey* reservedKey(const std::string& name);
    void endOfPass(float progress);
    bool hasNoPassLeft() const { return _repeat == 0 || _repeatCount == _repeat; }

    std::shared_ptr<KeyValueCoding> _target;
    double _time;
    double _currentTime = 0;
    double _totalTime;
    std::vector<std::unique_ptr<GSTweenData>> _values;
    GSEasingFunction _ease;
    double _delay = 0;
    std::shared_ptr<CADisplayLink> _displayLink;
    bool _isYoyo = false;
    int64_t _repeat = 0;
    int64_t _repeatCount = 0;
    GSTweenUpdateBlock _updateBlock;
    GSTweenBlock _startBlock;
    GSTweenBlock _completeBlock;
    bool _autoStart = true;
    bool _init = false;
    bool _isPaused = false;
    double _speed = 1;
    std::string _version = "0.1.1";
};
