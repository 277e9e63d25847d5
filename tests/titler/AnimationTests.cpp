#include "project/Project.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace titler {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr Ease kOvershoot{4, 0.3, 300, 0.3, 300};
constexpr Ease kUpright{4, 1, 0, 1, 0};

Animated Moving(KeyList keys)
{
    return {7, std::move(keys)};
}

// From 0 at frame 8 to 100 at frame 24.
Animated OneSegment(const Ease& ease)
{
    return Moving({{8, 0, ease}, {24, 100}});
}

std::string Frames(const Animated& animated)
{
    std::string frames;
    for (const Key& key : animated.keys)
        frames += (frames.empty() ? "" : " ") + std::to_string(key.frame);
    return frames;
}

struct ValueCase
{
    const char* name;
    Animated animated;
    double frame;
    double value;
};

void PrintTo(const ValueCase& c, std::ostream* out)
{
    *out << c.name;
}

class Value : public testing::TestWithParam<ValueCase>
{
};

TEST_P(Value, IsOnThePath)
{
    const ValueCase& c = GetParam();
    EXPECT_NEAR(ValueAt(c.animated, Property::Opacity, c.frame), c.value, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Animation, Value,
    testing::Values(ValueCase{"NoKeys", Moving({}), 3, 7},
                    ValueCase{"NoKeysBeyondTheLimit", {170, {}}, 3, 100},
                    ValueCase{"BeforeTheFirst", OneSegment({}), 2, 0},
                    ValueCase{"OnAKey", OneSegment({}), 24, 100},
                    ValueCase{"BehindTheLast", OneSegment({}), 1e30, 100},
                    ValueCase{"NoFrame", OneSegment({}), kNoNumber, 0},
                    ValueCase{"BetweenFrames", OneSegment({}), 8.4, 2.5},
                    // Half way up the parameter is 0.5, so the frame follows from the tangents.
                    ValueCase{"SpeedUp", OneSegment(PresetEase(2)), 8 + 16 * 0.6875, 50},
                    ValueCase{"SpeedUpBeginsSlowly", OneSegment(PresetEase(2)), 8 + 16 * 0.3671875, 15.625},
                    ValueCase{"SpeedDown", OneSegment(PresetEase(3)), 8 + 16 * 0.3125, 50},
                    ValueCase{"Smooth", OneSegment(PresetEase(5)), 8 + 16 * 0.274375, 15.625},
                    ValueCase{"StopsAtTheUpperLimit", OneSegment(kOvershoot), 16, 100},
                    ValueCase{"UprightInTheMiddle", OneSegment(kUpright), 8 + 16 * 0.4375, 15.625},
                    ValueCase{"SecondSegment", Moving({{0, 0}, {10, 50}, {20, 0}}), 15, 25},
                    ValueCase{"KeyBeyondTheLimit", Moving({{0, -5}, {10, 500}}), 10, 100}),
    [](const auto& row) { return std::string(row.param.name); });

struct Place
{
    int frame;
    int key;
    int segment;
    int previous;
    int next;
};

TEST(Animation, FindsKeysAndSegments)
{
    const Animated animated = Moving({{5, 0}, {10, 1}, {20, 2}});
    for (const Place& p : {Place{0, -1, 0, 5, 5}, Place{5, 0, 0, 5, 10}, Place{7, -1, 0, 5, 10},
                           Place{10, 1, 1, 5, 20}, Place{20, 2, 1, 10, 20}, Place{99, -1, 1, 20, 20}}) {
        SCOPED_TRACE(p.frame);
        EXPECT_EQ(KeyAt(animated, p.frame), p.key);
        EXPECT_EQ(SegmentAt(animated, p.frame), p.segment);
        EXPECT_EQ(PreviousKeyFrame(animated, p.frame), p.previous);
        EXPECT_EQ(NextKeyFrame(animated, p.frame), p.next);
    }
    EXPECT_EQ(SegmentAt(Moving({{5, 0}}), 5), -1);
    EXPECT_EQ(NextKeyFrame(Moving({}), 5), std::nullopt);
}

TEST(Animation, AKeyMoreKeepsThePathAndGoesWithoutATrace)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> fraction(0.01, 0.95);
    std::uniform_real_distribution<double> offset(-50, 50);
    for (int round = 0; round < 200; ++round) {
        const Animated before = Moving(
            {{0, offset(random)},
             {20, offset(random), {4, fraction(random), offset(random), fraction(random), offset(random)}},
             {50, offset(random)},
             {60, offset(random)}});
        Animated after = before;
        const int frame = 21 + round % 29;
        AddKey(after, Property::X, frame);
        ASSERT_EQ(after.keys.size(), 5);
        for (double f = -1; f < 62; f += 0.25)
            ASSERT_NEAR(ValueAt(after, Property::X, f), ValueAt(before, Property::X, f), 1e-6)
                << "round " << round << ", frame " << f;
        RemoveKey(after, 2);
        ASSERT_EQ(after.keys.size(), 4);
        EXPECT_NEAR(after.keys[1].ease.outX, before.keys[1].ease.outX, 1e-6);
        EXPECT_NEAR(after.keys[1].ease.outY, before.keys[1].ease.outY, 1e-4);
        EXPECT_NEAR(after.keys[1].ease.inX, before.keys[1].ease.inX, 1e-6);
        EXPECT_NEAR(after.keys[1].ease.inY, before.keys[1].ease.inY, 1e-4);
    }
}

struct AddCase
{
    const char* name;
    Animated animated;
    int frame;
    const char* frames;
    std::vector<std::uint32_t> kinds; ///< of each key's ease
};

TEST(Animation, AddsKeys)
{
    const Ease bulge{4, 0.2, 5, 0.2, 5};
    for (const AddCase& c :
         {AddCase{"first", Moving({}), 3, "3", {1}}, AddCase{"there is one", Moving({{3, 1}}), 3, "3", {1}},
          AddCase{"linear", OneSegment({}), 12, "8 12 24", {1, 1, 1}},
          AddCase{"preset", OneSegment(PresetEase(5)), 12, "8 12 24", {4, 4, 1}},
          AddCase{"before", OneSegment(PresetEase(5)), 2, "2 8 24", {1, 5, 1}},
          AddCase{"behind a preset", Moving({{0, 0, PresetEase(2)}}), 9, "0 9", {2, 1}},
          AddCase{"behind a bulge", Moving({{0, 0, bulge}}), 9, "0 9", {1, 1}},
          AddCase{"negative", Moving({}), -1, "", {}},
          AddCase{"too late", Moving({}), kLongestDuration + 1, "", {}}}) {
        SCOPED_TRACE(c.name);
        Animated animated = c.animated;
        AddKey(animated, Property::Opacity, c.frame);
        EXPECT_EQ(Frames(animated), c.frames);
        std::vector<std::uint32_t> kinds;
        for (const Key& key : animated.keys)
            kinds.push_back(key.ease.kind);
        EXPECT_EQ(kinds, c.kinds);
    }
    KeyList many(kMostKeys);
    for (int i = 0; i < kMostKeys; ++i)
        many[i].frame = 2 * i;
    Animated full = Moving(many);
    AddKey(full, Property::X, 1);
    EXPECT_EQ(full.keys.size(), many.size());
}

TEST(Animation, JoinsPresetsOfOneKindToThatPreset)
{
    for (const std::uint32_t kind : {1u, 2u, 3u, 5u}) {
        Animated animated = Moving({{0, 3, PresetEase(kind)}, {30, 3, PresetEase(kind)}, {40, 9}});
        RemoveKey(animated, 1);
        EXPECT_EQ(animated.keys.front().ease, PresetEase(kind));
    }
    Animated mixed = Moving({{0, 0, PresetEase(2)}, {30, 50, PresetEase(3)}, {40, 9}});
    RemoveKey(mixed, 1);
    EXPECT_EQ(mixed.keys.front().ease, (Ease{4, 0.5, 0, 0.5, 0}));
}

TEST(Animation, EditsValuesKeysAndAnimation)
{
    Animated animated = Moving({});
    SetValueAt(animated, Property::Scale, 5, 4000);
    EXPECT_EQ(animated.value, 1000);
    SetValueAt(animated, Property::Scale, 5, kNoNumber);
    EXPECT_EQ(animated.value, 1000);
    SetAnimated(animated, Property::Scale, 5, true);
    SetAnimated(animated, Property::Scale, 9, true);
    EXPECT_EQ(Frames(animated), "5");
    SetValueAt(animated, Property::Scale, 15, -3);
    SetValueAt(animated, Property::Scale, 5, 40);
    EXPECT_EQ(Frames(animated), "5 15");
    EXPECT_EQ(ValueAt(animated, Property::Scale, 10), 20);
    for (const int odd : {-1, 2})
        RemoveKey(animated, odd);
    Animated stopped = animated;
    SetAnimated(stopped, Property::Scale, 10, false);
    EXPECT_FALSE(stopped.IsAnimated());
    EXPECT_EQ(stopped.value, 20);
    RemoveKey(animated, 1);
    RemoveKey(animated, 0);
    EXPECT_FALSE(animated.IsAnimated());
    EXPECT_EQ(animated.value, 40);
}

struct RateCase
{
    const char* name;
    EKvFrameRate from, to;
    int duration;
    KeyList keys;
    int newDuration;
    const char* frames;
};

TEST(Animation, KeepsKeysAtTheirTimesAtAnotherRate)
{
    constexpr int most = kLongestDuration;
    for (const RateCase& c :
         {RateCase{"same", kKvFrameRate25, kKvFrameRate25, 9, {{1, 1}, {most, 9}}, 9, "1 1000000"},
          RateCase{"half", kKvFrameRate50, kKvFrameRate25, 150, {{0, 0}, {50, 1}, {149, 9}}, 75, "0 25 74"},
          RateCase{"double", kKvFrameRate25, kKvFrameRate50, 75, {{0, 0}, {25, 1}, {74, 9}}, 150, "0 50 149"},
          RateCase{"behind the end",
                   kKvFrameRate50,
                   kKvFrameRate25,
                   150,
                   {{149, 0}, {150, 1}, {153, 9}},
                   75,
                   "74 75 77"},
          RateCase{"one frame", kKvFrameRate25, kKvFrameRate50, 1, {{0, 0}, {1, 9}}, 2, "0 2"},
          RateCase{"less than a frame", kKvFrameRate60, kKvFrameRate24, 1, {{0, 0}, {1, 9}}, 1, "0 1"},
          RateCase{"the last of one frame", kKvFrameRate60, kKvFrameRate24, 99, {{10, 0}, {11, 9}}, 40, "4"},
          RateCase{"far behind",
                   kKvFrameRate25,
                   kKvFrameRate50,
                   100,
                   {{50, 0}, {most - 1, 1}, {most, 9}},
                   200,
                   "100 999999 1000000"},
          RateCase{"too long",
                   kKvFrameRate25,
                   kKvFrameRate50,
                   most - 2,
                   {{50, 0}, {most - 3, 1}, {most - 2, 1}, {most, 9}},
                   most - 2,
                   "50 999997 999998 1000000"}}) {
        SCOPED_TRACE(c.name);
        Project project = NewProject();
        project.video.frameRate = c.from;
        project.duration = c.duration;
        project.title[Property::X].keys = c.keys;
        SKvVideoResolution format = project.video;
        format.frameRate = c.to;
        SetVideoFormat(project, format);
        EXPECT_EQ(project.duration, c.newDuration);
        EXPECT_EQ(Frames(project.title[Property::X]), c.frames);
        EXPECT_EQ(project.title[Property::X].keys.back().value, 9);
    }
}

TEST(Animation, AnEaseFromOutsideIsMadeSound)
{
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(SoundEase({9, -1, kNoNumber, 3, infinite}),
              (Ease{4, 0, 0, kLongestTangent, kLargestEaseOffset}));
    EXPECT_EQ(SoundEase(kOvershoot), kOvershoot);
}

} // namespace
} // namespace titler
