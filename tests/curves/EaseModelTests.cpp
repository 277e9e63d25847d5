// The rules of the ease: limits of a drag, history, presets, and what hosts get back.
#include "curves/EaseModel.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using kv::EaseCurve;
using kv::EaseHandle;
using kv::EaseModel;
using kv::EasePart;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// From (2, 10) to (6, 30) with values of 0 … 40: width 4, span 40.
EaseCurve Curve(std::uint32_t lock = 0)
{
    return {{{{2, 10}, {3, 10}, {4, 30}, {6, 30}}}, 0, 40, lock, kKvEaseSmooth};
}

using Bits = std::array<std::uint64_t, 8>;

Bits BitsOf(const EaseCurve& curve)
{
    Bits bits;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const SKvCurvePoint& point = curve.points[i / 2];
        bits[i] = std::bit_cast<std::uint64_t>(i % 2 == 0 ? point.x : point.y);
    }
    return bits;
}

void ExpectAt(const char* name, const SKvCurvePoint& point, const SKvCurvePoint& place)
{
    EXPECT_DOUBLE_EQ(point.x, place.x) << name;
    EXPECT_DOUBLE_EQ(point.y, place.y) << name;
}

TEST(EaseModel, DragsAndTheirLimits)
{
    using enum EasePart;
    const struct
    {
        const char* name;
        kv::EaseHit hit;
        SKvCurvePoint mouse;
        SKvCurvePoint free;
        SKvCurvePoint locked;
        std::optional<SKvCurvePoint> along = {}; // with Ctrl: where the handle stands first
    } cases[] = {
        {"out follows", {0, OutHandle}, {5, 25}, {5, 25}, {5, 25}},
        {"out falls", {0, OutHandle}, {5, -90}, {5, -90}, {5, 10}},
        {"out beyond the span", {0, OutHandle}, {5, 99}, {5, 99}, {5, 50}},
        {"in follows", {1, InHandle}, {5, 25}, {5, 25}, {5, 25}},
        {"in above its key", {1, InHandle}, {5, 35}, {5, 35}, {5, 30}},
        {"in beyond the span", {1, InHandle}, {5, -20}, {5, -20}, {5, -10}},
        {"line by its middle", {0, OutTangent, 0.5}, {3, 15}, {4, 20}, {4, 20}},
        {"line past the width", {0, OutTangent, 0.5}, {6, 20}, {6, 20}, {6, 20}},
        {"line to the wrong side", {0, OutTangent, 2}, {1, 14}, {2, 12}, {2, 12}},
        {"line of the end", {1, InTangent, 0.5}, {5, 20}, {4, 10}, {4, 10}},
        {"width before lock", {1, InTangent, 0.1}, {5, 10}, {2, -50}, {2, -10}},
        {"its wrong side", {1, InTangent, 0.5}, {7, 20}, {6, 10}, {6, 10}},
        {"start key up", {0, Key}, {5, 25}, {2, 25}, {2, 10}},
        {"end key too low", {1, Key}, {2, -1}, {6, 0}, {6, 30}},
        {"along", {0, OutHandle}, {5, 10}, {3.5, 25}, {3.5, 25}, {{3, 20}}},
        {"along by the line", {0, OutTangent, 0.5}, {3.5, 10}, {3.5, 25}, {3.5, 25}, {{3, 20}}},
        {"along past the segment", {0, OutHandle}, {6, 99}, {6, 50}, {6, 50}, {{3, 20}}},
        {"along, not backwards", {0, OutHandle}, {1, 0}, {2, 10}, {2, 10}, {{3, 20}}},
        {"along a level one", {0, OutHandle}, {4, 35}, {4, 10}, {4, 10}, {{3, 10}}},
        {"along the end's", {1, InHandle}, {4, 30}, {5.6, 22}, {5.6, 22}, {{5, 10}}},
        {"along as far as locked", {1, InHandle}, {2, -99}, {2, -50}, {4, -10}, {{5, 10}}},
        {"along none", {1, InHandle}, {5, 20}, {5, 20}, {5, 20}, {{6, 30}}},
        {"not a number", {0, OutHandle}, {kNaN, 20}, {3, 10}, {3, 10}},
        {"beyond float", {0, OutHandle}, {4, 1e300}, {3, 10}, {4, 50}},
    };
    for (const auto& row : cases) {
        for (const std::uint32_t lock : {0u, 7u}) {
            const EaseHandle key = row.hit.key == 0 ? EaseHandle::Start : EaseHandle::End;
            const EaseHandle handle = row.hit.key == 0 ? EaseHandle::Out : EaseHandle::In;
            const EaseHandle moved = row.hit.part == Key ? key : handle;
            EaseCurve curve = Curve(lock);
            curve[moved] = row.along.value_or(curve[moved]);
            EaseModel model;
            model.Load(curve);
            EXPECT_EQ(model.BeginDrag(row.hit), lock == 0 || row.hit.part != Key) << row.name;
            model.DragTo(row.mouse, row.along.has_value());
            ExpectAt(row.name, model.Curve()[moved], lock != 0 ? row.locked : row.free);
            EXPECT_EQ(model.Curve().kind, kKvEaseSmooth) << row.name << ": of the record before";
        }
    }
}

TEST(EaseModel, AKeyTakesItsHandleAlongAndBack)
{
    EaseModel model;
    model.Load(Curve());
    ASSERT_TRUE(model.BeginDrag({1, EasePart::Key}));
    model.DragTo({6, 39.7}, false);
    ExpectAt("handle of the end", model.Curve()[EaseHandle::In], {4, 39.7});
    ExpectAt("handle of the start", model.Curve()[EaseHandle::Out], {3, 10});
    model.DragTo({6, 30}, false);
    EXPECT_EQ(BitsOf(model.Curve()), BitsOf(Curve()));
    model.EndDrag();
    EXPECT_EQ(model.RecordCount(), 2u) << "also without a change";
    EXPECT_EQ(model.Curve().kind, kKvEaseDrawn);

    EaseCurve high = Curve();
    high[EaseHandle::End].y = 90;
    model.Load(high);
    ASSERT_TRUE(model.BeginDrag({1, EasePart::Key}));
    model.DragTo({6, 90}, false);
    ExpectAt("into the range, also from where it stands", model.Curve()[EaseHandle::End], {6, 40});
}

TEST(EaseModel, SingleMovesObeyTheLimitsAndLeaveTheRestAlone)
{
    // Both handles beyond the far key.
    const EaseCurve odd{{{{0.1, 0.7}, {1.1 + 0.2, 7}, {-0.0, 1e-17}, {1.1, 1.3}}}, 0, 1, 0, 2};
    EaseModel model;
    model.Load(odd);
    EXPECT_FALSE(model.Move(EaseHandle::End, {5, 1.3})) << "time of a key";
    EXPECT_FALSE(model.Move(EaseHandle::In, {0.0, 1e-17}));
    EXPECT_FALSE(model.Move(EaseHandle::In, {kInfinity, 0}));
    EXPECT_FALSE(model.MoveHandles(odd[EaseHandle::Out], odd[EaseHandle::In]));
    EXPECT_EQ(model.RecordCount(), 1u);

    EXPECT_TRUE(model.Move(EaseHandle::Out, {odd[EaseHandle::Out].x, 0.9}));
    EXPECT_TRUE(model.Move(EaseHandle::In, {0.0, 0.4}));
    EaseCurve expected = odd;
    expected[EaseHandle::Out].y = 0.9;
    expected[EaseHandle::In].y = 0.4;
    EXPECT_EQ(BitsOf(model.Curve()), BitsOf(expected));
    EXPECT_TRUE(model.MoveHandles({9, 0.7}, {-9, 0.3}));
    ExpectAt("out at the far end", model.Curve()[EaseHandle::Out], {1.1, 0.7});
    ExpectAt("in at the far end", model.Curve()[EaseHandle::In], {0.1, 0.3});
    EXPECT_FALSE(model.Move(EaseHandle::Out, {1.2, 0.7}) || model.Move(EaseHandle::In, {0, 0.3})) << "there";
    EXPECT_EQ(model.RecordCount(), 4u);
    model.Revert();
    EXPECT_EQ(BitsOf(model.Curve()), BitsOf(odd));
    EXPECT_EQ(model.Curve().kind, 2u);
    EXPECT_TRUE(model.CanRedo());
}

TEST(EaseModel, PresetsAndDragsThatAreRefusedOrDropped)
{
    EaseModel model;
    model.Load(Curve());
    EXPECT_FALSE(model.BeginDrag({0, EasePart::InHandle}) || model.BeginDrag({1, EasePart::OutTangent}) ||
                 model.BeginDrag({0, EasePart::OutTangent, 0}) || model.BeginDrag({2, EasePart::Key}));
    EXPECT_TRUE(model.ApplyPreset(kKvEaseSpeedUp, {0.5, 1, 0.25, -2}));
    ExpectAt("out", model.Curve()[EaseHandle::Out], {4, 11});
    ExpectAt("in", model.Curve()[EaseHandle::In], {5, 28});
    EXPECT_FALSE(model.ApplyPreset(kKvEaseSmooth, {0.5, kNaN, 0, 0}));
    const Bits preset = BitsOf(model.Curve());
    ASSERT_TRUE(model.BeginDrag({0, EasePart::Key}));
    EXPECT_FALSE(model.Move(EaseHandle::End, {6, 1}) || model.BeginDrag({1, EasePart::Key})) << "in a drag";
    EXPECT_EQ(model.Drag()->key, 0);
    model.DragTo({2, 0}, false);
    model.CancelDrag();
    EXPECT_EQ(BitsOf(model.Curve()), preset);
    ASSERT_TRUE(model.BeginDrag({0, EasePart::Key}));
    EXPECT_TRUE(model.Undo());
    EXPECT_FALSE(model.Drag()) << "dropped";
    EXPECT_TRUE(model.Redo());
    EXPECT_EQ(BitsOf(model.Curve()), preset);
    EXPECT_EQ(model.RecordCount(), 2u);
}

TEST(EaseModel, CurvesThatCannotBeEdited)
{
    const struct
    {
        const char* name;
        EaseCurve curve;
    } cases[] = {
        {"not a number", {{{{0, 0}, {0, kNaN}, {1, 1}, {1, 1}}}, 0, 1, 0, 1}},
        {"a height beyond float", {{{{0, -3e38}, {0, -3e38}, {1, 3e38}, {1, 3e38}}}, 0, 1, 0, 1}},
        {"a tangent beyond float", {{{{0, -3e38}, {0, 3e38}, {1, 1}, {1, 1}}}, 0, 1, 0, 1}},
        {"below float", {{{{0, 0}, {0, 0}, {1e-60, 1}, {1e-60, 1}}}, 0, 1, 0, 1}},
    };
    for (const auto& row : cases) {
        EaseModel model;
        model.Load(row.curve);
        EXPECT_FALSE(model.IsEditable()) << row.name;
        EXPECT_EQ(model.RecordCount(), 1u) << row.name;
        EXPECT_FALSE(model.BeginDrag({0, EasePart::OutHandle}) || model.Revert() || model.Undo() ||
                     model.Redo() || model.ApplyPreset(1, {}) || model.Move(EaseHandle::Out, {0.5, 0.5}) ||
                     model.MoveHandles({0.5, 0}, {0.5, 1}))
            << row.name;
        EXPECT_EQ(BitsOf(model.Curve()), BitsOf(row.curve)) << row.name;
    }
}

void CheckInvariants(const EaseCurve& curve)
{
    constexpr double noise = 1e-12;
    const SKvCurvePoint out = curve.OutTangent();
    const SKvCurvePoint in = curve.InTangent();
    ASSERT_TRUE(curve.points[0].x == 2 && curve.points[3].x == 6);
    ASSERT_TRUE(out.x >= 0 && out.x <= 4 && in.x <= 0 && in.x >= -4);
    if (curve.lock == 0)
        return;
    ASSERT_TRUE(out.y >= 0 && out.y <= 40 + noise && in.y <= 0 && in.y >= -40 - noise);
    const KvBezierEase ease(kv::Coordinates(curve.points).data());
    for (double x = 2.1; x <= 6; x += 0.1)
        ASSERT_GE(ease.Value(x), ease.Value(x - 0.1) - 1e-9);
}

TEST(EaseModel, RandomEditsKeepTheInvariants)
{
    std::mt19937 random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const auto number = [&](double from, double to) {
        return std::uniform_real_distribution(from, to)(random);
    };
    EaseModel model;
    for (int i = 0; i < 2000; ++i) {
        if (i % 40 == 0) // free and locked in turn
            model.Load({{{{2, 0}, {3, 1}, {4, 30}, {6, 40}}}, 0, 40, i / 40 % 2u, 4});
        if (model.BeginDrag({below(2), static_cast<EasePart>(below(5)), number(0.002, 1.5)})) {
            for (int moves = below(4); moves > 0; --moves) {
                model.DragTo({number(2, 6), number(-100, 100)}, below(3) == 0);
                CheckInvariants(model.Curve());
            }
            below(4) == 0 ? model.CancelDrag() : model.EndDrag();
        }
        if (below(4) == 0)
            model.Move(static_cast<EaseHandle>(below(4)), {number(-5, 15), number(-100, 100)});
        CheckInvariants(model.Curve());
        const Bits before = BitsOf(model.Curve());
        ASSERT_TRUE(!model.Undo() || model.Redo());
        ASSERT_EQ(BitsOf(model.Curve()), before);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << "step " << i;
    }
}

} // namespace
