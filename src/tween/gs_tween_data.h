// The properties that a tween moves: one object for each, of a class that fits the property's type.
// The start value is read when the object is made, not when the tween's delay has passed.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/foundation/geometry.h"
#include "platform/foundation/key_value.h"
#include "tween/gs_tween_value.h"

class GSTweenData {
  public:
    GSTweenData() = default;
    GSTweenData(const GSTweenData&) = delete;
    GSTweenData& operator=(const GSTweenData&) = delete;
    virtual ~GSTweenData() = default;

    /// The data for one property, kept with its target. Keys of the target's frame ("x", "y", "width",
    /// "height", "frameOrigin", "frameSize") move its "frame" where it has no such property. Nothing, with a
    /// line in the log, if there is no such property; nothing, silently, if its type cannot be moved.
    static std::unique_ptr<GSTweenData> tweenDataWithValue(const GSTweenValue& value, const std::string& key,
                                                           const std::shared_ptr<KeyValueCoding>& target);

    /// Reads the start value.
    virtual void setup() {}
    /// Writes the value for the curve's value (0 is the start, 1 the end).
    virtual void updateWithValue(double /*eased*/) {}

    /// The property moved; empty for data made without tweenDataWithValue.
    const std::string& key() const { return _key; }

  private:
    std::string _key;
    std::shared_ptr<KeyValueCoding> _target;
};

/// Reads and writes a property as a Value, which is the layout in which the data calculates.
template <typename Type>
class GSTweenDataOf : public GSTweenData {
  public:
    using Value = Type;
    using Getter = std::function<Value()>;
    using Setter = std::function<void(const Value&)>;

    void setup() override;
    void updateWithValue(double eased) override;

  protected:
    GSTweenDataOf(const Value& to, Getter getter, Setter setter)
        : _getter(std::move(getter)), _setter(std::move(setter)), _to(to) {
        GSTweenDataOf::setup();
    }

  private:
    Getter _getter;
    Setter _setter;
    Value _from{};
    Value _to{};
    Value _change{};
};

class GSTweenDataFloat : public GSTweenDataOf<double> {
  public:
    GSTweenDataFloat(const GSTweenValue& value, Getter getter, Setter setter);
};

class GSTweenDataRect : public GSTweenDataOf<CGRect> {
  public:
    GSTweenDataRect(const GSTweenValue& value, Getter getter, Setter setter);
};

class GSTweenDataInteger : public GSTweenDataOf<int64_t> {
  public:
    GSTweenDataInteger(const GSTweenValue& value, Getter getter, Setter setter);
};

class GSTweenDataPoint : public GSTweenDataOf<CGPoint> {
  public:
    GSTweenDataPoint(const GSTweenValue& value, Getter getter, Setter setter);
};

class GSTweenDataSize : public GSTweenDataOf<CGSize> {
  public:
    GSTweenDataSize(const GSTweenValue& value, Getter getter, Setter setter);
};
