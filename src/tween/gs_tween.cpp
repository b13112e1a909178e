// The clock of a tween, its passes and its life.
// A tween may lose its last owner inside its own calls: those that call out hold it until they are done.
#include "tween/gs_tween.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/foundation/ns_log.h"

namespace {

/// In the order of their making. Never destroyed: tweens may die at exit.
std::vector<const GSTween*>& allTweens() {
    static auto* tweens = new std::vector<const GSTween*>;
    return *tweens;
}

template <typename Field, typename Value>
bool assign(Field& field, const std::optional<Value>& value) {
    if (value) field = static_cast<Field>(*value);
    return value.has_value();
}

template <typename Block>
bool assignBlock(Block& field, const GSTweenValue& value) {
    const Block* block = std::get_if<Block>(&value);
    if (block) field = *block;
    return block != nullptr;
}

}  // namespace

std::shared_ptr<GSTween> GSTween::tweenWithTarget(std::shared_ptr<KeyValueCoding> target, double time,
                                                  GSEasingFunction ease, const GSTweenParams& params) {
    return initWithTarget(std::move(target), time, std::move(ease), params);
}

std::shared_ptr<GSTween> GSTween::initWithTarget(std::shared_ptr<KeyValueCoding> target, double time,
                                                 GSEasingFunction ease, const GSTweenParams& params) {
    std::shared_ptr<GSTween> made(new GSTween(std::move(target), time, std::move(ease)));
    return initialised(std::move(made), params);
}

GSTween::GSTween(std::shared_ptr<KeyValueCoding> target, double time, GSEasingFunction ease)
    : _target(std::move(target)), _time(time), _totalTime(time), _ease(std::move(ease)) {
    allTweens().push_back(this);
}

GSTween::~GSTween() {
    std::erase(allTweens(), this);
}

std::shared_ptr<GSTween> GSTween::initialised(std::shared_ptr<GSTween> tween, const GSTweenParams& params) {
    tween->parseKeys(params);
    if (!tween->_autoStart) return tween;
    tween->start();
    return tween->_displayLink ? tween : nullptr;
}

struct GSTween::ReservedKey {
    std::string_view name;
    /// NO if the value is of the wrong kind.
    bool (*apply)(GSTween& tween, const GSTweenValue& value) = nullptr;
};

const GSTween::ReservedKey* GSTween::reservedKey(const std::string& name) {
    using Value = GSTweenValue;
    static constexpr std::array<ReservedKey, 8> keys = {{
        {"yoyo", [](GSTween& t, const Value& v) { return assign(t._isYoyo, boolValue(v)); }},
        {"speed", [](GSTween& t, const Value& v) { return assign(t._speed, floatValue(v)); }},
        {"delay",
         [](GSTween& t, const Value& v) {
             const bool known = assign(t._delay, floatValue(v));
             t._totalTime = t._time + t._delay;
             return known;
         }},
        {"repeat", [](GSTween& t, const Value& v) { return assign(t._repeat, integerValue(v)); }},
        {"onStart", [](GSTween& t, const Value& v) { return assignBlock(t._startBlock, v); }},
        {"onComplete", [](GSTween& t, const Value& v) { return assignBlock(t._completeBlock, v); }},
        {"onUpdate", [](GSTween& t, const Value& v) { return assignBlock(t._updateBlock, v); }},
        {"autoStart", [](GSTween& t, const Value& v) { return assign(t._autoStart, boolValue(v)); }},
    }};
    const auto* const found = std::find_if(keys.begin(), keys.end(),
                                           [&name](const ReservedKey& each) { return each.name == name; });
    return found == keys.end() ? nullptr : found;
}

void GSTween::parseKeys(const GSTweenParams& params) {
    for (const auto& [key, value] : params) {
        bool known = true;
        if (const ReservedKey* reserved = reservedKey(key)) {
            known = reserved->apply(*this, value);
        } else if (!stringValue(value)) {
            known = false;
        } else if (auto data = GSTweenData::tweenDataWithValue(value, key, _target)) {
            _values.push_back(std::move(data));
        }
        if (!known) NSLog("GSTween: the value of \"%s\" is of the wrong kind: ignored", key.c_str());
    }
}

/// A link that still runs ends: else nothing could stop it any more.
bool GSTween::setupDisplayLink() {
    if (_displayLink) _displayLink->invalidate();
    _displayLink = CADisplayLink::displayLinkWithTarget(shared_from_this(), &GSTween::update);
    _displayLink->addToRunLoop(NSRunLoop::currentRunLoop());
    return true;
}

void GSTween::update(CADisplayLink& link) {
    const bool moves = (_speed > 0 && _currentTime >= _delay) || _speed < 0;
    if (moves) {
        const auto progress = static_cast<float>((_currentTime - _delay) / _time);
        // With 0 / 0 the two answer their other operand.
        const float p = std::fmin(std::fmax(progress, 0.0F), 1.0F);
        const double eased = _ease(static_cast<double>(p));
        for (const auto& value : _values)
            value->updateWithValue(eased);
        if (_startBlock && !_init) {
            _startBlock();
            _init = true;
        }
        if (_updateBlock) _updateBlock(static_cast<double>(p), eased);
        endOfPass(p);
    }
    _currentTime += link.duration() * _speed;
}

void GSTween::endOfPass(float progress) {
    if (progress == 1) {
        if (_isYoyo) {
            _currentTime = _totalTime;
            _speed = -_speed;
        } else if (hasNoPassLeft()) {
            stop();
        } else {
            _currentTime = 0;
            ++_repeatCount;
        }
    } else if (progress == 0 && _speed < 0) {
        if (hasNoPassLeft()) {
            stop();
        } else {
            _currentTime = 0;
            _speed = -_speed;
            ++_repeatCount;
        }
    }
}

void GSTween::start() {
    if (!setupDisplayLink()) stop();
}

void GSTween::stop() {
    const auto self = shared_from_this();
    if (_completeBlock) _completeBlock();
    if (_displayLink) _displayLink->invalidate();
    reset();
}

void GSTween::pause() {
    if (_isPaused) return;
    const auto self = shared_from_this();
    if (_displayLink) _displayLink->invalidate();
    _isPaused = true;
}

void GSTween::resume() {
    if (!_isPaused) return;
    if (setupDisplayLink()) {
        _isPaused = false;
    } else {
        stop();
    }
}

std::string GSTween::description() const {
    std::string names;
    for (const auto& value : _values)
        names += (names.empty() ? "" : ", ") + value->key();
    char state[96];
    std::snprintf(state, sizeof state, " %.2f of %.2f s, speed %g%s", _currentTime, _totalTime, _speed,
                  _isPaused ? ", paused" : "");
    return names + state;
}

std::vector<std::string> GSTween::runningTweens() {
    std::vector<std::string> lines;
    for (const GSTween* tween : allTweens()) {
        if (tween->isRunning()) lines.push_back(tween->description());
    }
    return lines;
}

std::size_t GSTween::livingTweens() {
    return allTweens().size();
}
