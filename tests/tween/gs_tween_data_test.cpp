// What tweens write into properties: every type, the keys of a frame, and values that make no sense.
// Expected numbers are worked out by hand.
#include "tween/gs_tween_data.h"

#include <bit>
#include <gmock/gmock.h>
#include <limits>

#include "tests/tween/tween_target.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string notFound = "GSTween Warning: Property was not found on target!";

struct GSTweenDataTest : TweenTest {
    /// The value for 0.5, or nothing.
    std::unique_ptr<GSTweenData> halfway(const std::string& key, const GSTweenValue& value) {
        auto data = GSTweenData::tweenDataWithValue(value, key, target);
        if (data) data->updateWithValue(0.5);
        return data;
    }
};

TEST_F(GSTweenDataTest, NumbersMoveInTheirTypes) {
    target->number = 1;
    EXPECT_NE(halfway("number", 0.1), nullptr);
    EXPECT_EQ(target->number, (1 + static_cast<double>(0.1F)) / 2);
    EXPECT_NE(halfway("number", " 3.5 apples"), nullptr);
    EXPECT_EQ(target->number, (3.5 + (1 + static_cast<double>(0.1F)) / 2) / 2);

    const struct {
        int64_t from;
        GSTweenValue to;
        int64_t half;
    } cases[] = {{0, int64_t{7}, 3}, {0, int64_t{-7}, -3}, {-5, int64_t{10}, 2},
                 {10, 2.9, 6},       {0, "42", 21},        {3, "x", 1},
                 {2, true, 1},       {-9, -9.5, -9},       {0, std::numeric_limits<double>::quiet_NaN(), 0}};
    for (const auto& each : cases) {
        target->wide = each.from;
        target->narrow = static_cast<int32_t>(each.from);
        EXPECT_NE(halfway("wide", each.to), nullptr);
        EXPECT_NE(halfway("narrow", each.to), nullptr);
        EXPECT_EQ(target->wide, each.half);
        EXPECT_EQ(target->narrow, each.half);
    }
    target->wide = std::numeric_limits<int64_t>::min();
    GSTweenData::tweenDataWithValue(1e300, "wide", target)->updateWithValue(1e9);
    EXPECT_EQ(target->wide, std::numeric_limits<int64_t>::min());
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(GSTweenDataTest, PointsSizesAndRectanglesMoveByComponents) {
    target->point = {1, 2};
    target->size = {10, 20};
    target->frame = CGRectMake(1, 2, 3, 4);
    EXPECT_EQ(halfway("point", "{3, -2}")->key(), "point");
    EXPECT_NE(halfway("size", "{0,30}"), nullptr);
    EXPECT_NE(halfway("frame", "{{3, 4}, {5, 6}}"), nullptr);
    EXPECT_EQ(target->point, CGPointMake(2, 0));
    EXPECT_EQ(target->size, CGSizeMake(5, 25));
    EXPECT_EQ(target->frame, CGRectMake(2, 3, 4, 5));
    for (const GSTweenValue& malformed :
         {GSTweenValue("{{1, 2}, {3"), GSTweenValue("soup"), GSTweenValue(4.0)}) {
        target->frame = CGRectMake(2, 4, 6, 8);
        EXPECT_NE(halfway("frame", malformed), nullptr);
        EXPECT_EQ(target->frame, CGRectMake(1, 2, 3, 4));
    }
}

/// Two roundings would give 0.31000000000000005, 0.33999999999999997, 2.83 and 0.6599999999999999.
TEST_F(GSTweenDataTest, ComponentsRoundOnce) {
    target->frame = CGRectMake(0.1, 0.1, 0.1, 0.1);
    const auto data = GSTweenData::tweenDataWithValue("{{0.8, 0.9}, {4, 0.9}}", "frame", target);
    data->updateWithValue(0.3);
    EXPECT_EQ(target->frame.origin, CGPointMake(0.31, 0.34));
    data->updateWithValue(0.7);
    EXPECT_EQ(target->frame.size, CGSizeMake(2.8299999999999996, 0.66));
}

/// Their bytes lie at the head of the wider layout, both ways.
TEST_F(GSTweenDataTest, SinglePrecisionTravelsInTheWiderLayoutAsItIs) {
    target->single = 1.5F;
    const auto data = GSTweenData::tweenDataWithValue(2.0, "single", target);
    data->updateWithValue(0);
    EXPECT_EQ(target->single, 1.5F);
    data->updateWithValue(1);
    EXPECT_EQ(std::bit_cast<uint32_t>(target->single), static_cast<uint32_t>(std::bit_cast<uint64_t>(2.0)));

    target->singles = {1, 2, 3, 4};
    GSTweenData::tweenDataWithValue("{{0, 0}, {9, 9}}", "singles", target)->updateWithValue(0);
    EXPECT_EQ(target->singles, (CGRectOfFloats{1, 2, 3, 4}));
}

TEST_F(GSTweenDataTest, PartsOfAFrameMoveTheFrame) {
    const struct {
        const char* key;
        GSTweenValue value;
        CGRect end;
    } cases[] = {
        {"x", 9.0, CGRectMake(9, 2.123457, 3, 4)},
        {"y", "9", CGRectMake(1, 9, 3, 4)},
        {"width", 0.5, CGRectMake(1, 2.123457, 0.5, 4)},
        {"height", int64_t{9}, CGRectMake(1, 2.123457, 3, 9)},
        {"frameOrigin", "{7, 8.25}", CGRectMake(7, 8.25, 3, 4)},
        {"frameSize", "{7, 8}", CGRectMake(1, 2.123457, 7, 8)},
        {"frameSize", "7", CGRectZero},
    };
    for (const auto& each : cases) {
        target->frame = CGRectMake(1, 2.1234567, 3, 4);
        const auto data = GSTweenData::tweenDataWithValue(each.value, each.key, target);
        ASSERT_NE(data, nullptr) << each.key;
        EXPECT_EQ(data->key(), "frame");
        data->updateWithValue(1);
        EXPECT_EQ(target->frame, each.end) << each.key;
    }
    EXPECT_THAT(log.lines, IsEmpty());
}

/// A target that has an "x" of its own, and another that has neither it nor a frame.
struct OwnX : KeyValueCoding {
    double x = 1;

  protected:
    KeyValueTable makeKeyValueTable() override {
        return {{"x", KeyValueAccess<double>{[this] { return x; }, [this](double value) { x = value; }}}};
    }
};

TEST_F(GSTweenDataTest, OnlyMissingPartsAreLookedForInTheFrame) {
    const auto own = std::make_shared<OwnX>();
    GSTweenData::tweenDataWithValue(5.0, "x", own)->updateWithValue(1);
    EXPECT_EQ(own->x, 5);
    EXPECT_EQ(GSTweenData::tweenDataWithValue(5.0, "width", own), nullptr);
    EXPECT_THAT(log.lines, ElementsAre(notFound));
}

TEST_F(GSTweenDataTest, WhatCannotMoveIsSkipped) {
    for (const char* key : {"absent", "Number", "", "readOnly"}) {
        log.lines.clear();
        EXPECT_EQ(halfway(key, 1.0), nullptr) << key;
        EXPECT_THAT(log.lines, ElementsAre(notFound)) << key;
    }
    log.lines.clear();
    EXPECT_EQ(halfway("flag", true), nullptr);
    EXPECT_EQ(halfway("text", "t"), nullptr);
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_EQ(GSTweenData::tweenDataWithValue(1.0, "number", nullptr), nullptr);
    EXPECT_THAT(log.lines, ElementsAre(notFound));
}

}  // namespace
