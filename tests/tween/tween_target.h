// An object with a property of each type, and a run loop whose frames are stepped by hand.
// For the tests of tweens and of their data.
#pragma once

#include <any>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/ca_display_link.h"
#include "platform/foundation/key_value.h"
#include "tests/support/log_capture.h"
#include "tween/gs_tween.h"

class TweenTarget : public KeyValueCoding {
  public:
    double number = 0;
    float single = 0;
    int32_t narrow = 0;
    int64_t wide = 0;
    CGPoint point;
    CGSize size;
    CGRect frame;
    CGRectOfFloats singles;
    bool flag = false;
    std::string text;
    /// Every writing of "number" is told here.
    std::function<void(double)> onNumber;

  protected:
    template <typename Value>
    static KeyValueAccess<Value> field(Value& place) {
        return {[&place] { return place; }, [&place](const Value& value) { place = value; }};
    }

    KeyValueTable makeKeyValueTable() override {
        return {{"number", KeyValueAccess<double>{[this] { return number; },
                                                  [this](double value) {
                                                      number = value;
                                                      if (onNumber) onNumber(value);
                                                  }}},
                {"single", field(single)},
                {"narrow", field(narrow)},
                {"wide", field(wide)},
                {"point", field(point)},
                {"size", field(size)},
                {"frame", field(frame)},
                {"singles", field(singles)},
                {"flag", field(flag)},
                {"readOnly", KeyValueAccess<double>{[] { return 1.0; }, {}}},
                {"text", KeyValueAccess<std::any>{
                             [this] { return std::any(text); },
                             setterOf<std::string>([this](const auto& value) { text = value; })}}};
    }
};

class TweenTest : public testing::Test {
  protected:
    void TearDown() override {
        NSRunLoop::currentRunLoop().invalidateDisplayLinks();
        NSRunLoop::currentRunLoop().setRefreshInterval(NSRunLoop::defaultRefreshInterval);
        target.reset();
        EXPECT_EQ(GSTween::livingTweens(), 0U);
    }

    static void frames(int count) {
        for (int i = 0; i < count; ++i)
            NSRunLoop::currentRunLoop().fireDisplayLinks(0);
    }

    std::shared_ptr<TweenTarget> target = std::make_shared<TweenTarget>();
    LogCapture log;
};
