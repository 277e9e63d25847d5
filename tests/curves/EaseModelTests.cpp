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
    return {{{{2, 10}, {3, 10}, {4, 30}, {6, 30}}}, 0, 40, lock, kv::kEaseSmooth};
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
        {"its width", {1, InTangent, 0.25}, {4, 20}, {2, 10}, {2, 10}},
        {"width before lock", {1, InTangent, 0.1}, {5, 10}, {2, -50}, {2, -10}},
        {"its wrong side", {1, InTangent, 0.5}, {7, 20}, {6, 10}, {6, 10}},
        {"start key up", {0, Key}, {5, 25}, {2, 25}, {2, 10}},
        {"start key too high", {0, Key}, {2, 50}, {2, 40}, {2, 10}},
        {"end key too low", {1, Key}, {2, -1}, {6, 0}, {6, 30}},
        {"not a number", {0, OutHandle}, {kNaN, 20}, {3, 10}, {3, 10}},
        {"beyond float", {0, OutHandle}, {4, 1e300}, {3, 10}, {4, 50}},
    };
    for (const auto& row : cases) {
        for (const std::uint32_t lock : {0u, 7u}) {
            EaseModel model;
            model.Load(Curve(lock));
            EXPECT_EQ(model.BeginDrag(row.hit), lock == 0 || row.hit.part != Key) << row.name;
            model.DragTo(row.mouse, false);
            const auto moved = static_cast<EaseHandle>(std::abs(3 * row.hit.key - (row.hit.part != Key)));
            ExpectAt(row.name, model.Curve()[moved], lock != 0 ? row.locked : row.free);
            EXPECT_EQ(model.Curve().kind, kv::kEaseSmooth) << row.name << ": of the record before";
        }
    }
}

TEST(EaseModel, DragsAlongATangent)
{
    using enum EasePart;
    const struct
    {
        const char* name;
        kv::EaseHit hit;
        SKvCurvePoint handle; // where it stands first
        SKvCurvePoint mouse;
        SKvCurvePoint free;
        SKvCurvePoint locked;
    } cases[] = {
        {"out", {0, OutHandle}, {3, 20}, {5, 10}, {3.5, 25}, {3.5, 25}},
        {"out by its line", {0, OutTangent, 0.5}, {3, 20}, {3.5, 10}, {3.5, 25}, {3.5, 25}},
        {"out past the segment", {0, OutHandle}, {3, 20}, {6, 99}, {6, 50}, {6, 50}},
        {"level", {0, OutHandle}, {3, 10}, {4, 35}, {4, 10}, {4, 10}},
        {"not backwards", {0, OutHandle}, {3, 20}, {1, 0}, {2, 10}, {2, 10}},
        {"in", {1, InHandle}, {5, 10}, {4, 30}, {5.6, 22}, {5.6, 22}},
        {"in as far as the lock allows", {1, InHandle}, {5, 10}, {2, -99}, {2, -50}, {4, -10}},
        {"none has no direction", {1, InHandle}, {6, 30}, {5, 20}, {5, 20}, {5, 20}},
    };
    for (const auto& row : cases) {
        for (const std::uint32_t lock : {0u, 7u}) {
            const EaseHandle handle = row.hit.key == 0 ? EaseHandle::Out : EaseHandle::In;
            EaseCurve curve = Curve(lock);
            curve[handle] = row.handle;
            EaseModel model;
            model.Load(curve);
            ASSERT_TRUE(model.BeginDrag(row.hit)) << row.name;
            model.DragTo(row.mouse, true);
            ExpectAt(row.name, model.Curve()[handle], lock != 0 ? row.locked : row.free);
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
    EXPECT_EQ(model.Curve().kind, kv::kEaseDrawn);

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
    const EaseCurve odd{{{{0.1, 0.7}, {1.1 + 0.2, 7}, {-0.0, 1e-17}, {1.1, 0.3}}}, 0, 1, 0, 2};
    EaseModel model;
    model.Load(odd);
    EXPECT_FALSE(model.Move(EaseHandle::Start, {5, 0.7})) << "time of a key";
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

TEST(EaseModel, HistoryOfPresetsAndDrags)
{
    EaseModel model;
    model.Load(Curve());
    EXPECT_FALSE(model.BeginDrag({0, EasePart::InHandle}) || model.BeginDrag({1, EasePart::OutTangent}) ||
                 model.BeginDrag({0, EasePart::OutTangent, 0}) || model.BeginDrag({2, EasePart::Key}));
    EXPECT_TRUE(model.ApplyPreset(kv::kEaseSpeedUp, {0.5, 1, 0.25, -2}));
    ExpectAt("out", model.Curve()[EaseHandle::Out], {4, 11});
    ExpectAt("in", model.Curve()[EaseHandle::In], {5, 28});
    EXPECT_FALSE(model.ApplyPreset(kv::kEaseSmooth, {0.5, kNaN, 0, 0}));
    EXPECT_TRUE(model.ApplyPreset(kv::kEaseLinear, {}));
    const Bits linear = BitsOf(model.Curve());
    ASSERT_TRUE(model.BeginDrag({0, EasePart::Key}));
    model.DragTo({2, 0}, false);
    model.CancelDrag();
    EXPECT_EQ(BitsOf(model.Curve()), linear);
    EXPECT_EQ(model.RecordCount(), 3u);
    EXPECT_FALSE(model.Redo());

    ASSERT_TRUE(model.BeginDrag({0, EasePart::Key}));
    EXPECT_FALSE(model.Move(EaseHandle::End, {6, 1}) || model.BeginDrag({1, EasePart::Key})) << "in a drag";
    EXPECT_EQ(model.Drag()->key, 0);
    EXPECT_TRUE(model.Undo());
    EXPECT_FALSE(model.Drag()) << "dropped";
    EXPECT_EQ(model.Curve().kind, kv::kEaseSpeedUp);
    EXPECT_TRUE(model.Redo());
    EXPECT_EQ(BitsOf(model.Curve()), linear);
    EXPECT_TRUE(model.Revert() && model.Revert()) << "also to where it stands";
    EXPECT_TRUE(model.Move(EaseHandle::In, {5, 5}));
    EXPECT_EQ(model.RecordCount(), 2u) << "an edit discards what was undone";
    EXPECT_FALSE(model.CanRedo());
}

TEST(EaseModel, CurvesThatCannotBeEdited)
{
    const struct
    {
        const char* name;
        EaseCurve curve;
    } cases[] = {
        {"empty segment", {{{{1, 0}, {1, 0}, {1, 1}, {1, 1}}}, 0, 1, 0, 1}},
        {"reversed", {{{{2, 0}, {2, 0}, {1, 1}, {1, 1}}}, 0, 1, 0, 1}},
        {"empty range", {{{{0, 0}, {0, 0}, {1, 1}, {1, 1}}}, 1, 1, 0, 1}},
        {"not a number", {{{{0, 0}, {0, kNaN}, {1, 1}, {1, 1}}}, 0, 1, 0, 1}},
        {"infinite range", {{{{0, 0}, {0, 0}, {1, 1}, {1, 1}}}, 0, kInfinity, 0, 1}},
        {"beyond float", {{{{0, 0}, {0, 0}, {1, 4e38}, {1, 1}}}, 0, 1, 0, 1}},
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
        KvBezierPath path;
        EXPECT_EQ(model.Keys().AddToPath(path), 1) << row.name;
        ASSERT_EQ(path.size(), 1u) << row.name;
        for (const SKvCurvePoint& point : path[0].points)
            EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y)) << row.name;
    }
}

// Runs random edits and looks at the invariants after each.
class RandomEdits
{
public:
    RandomEdits(unsigned seed, std::uint32_t lock) : m_random(seed)
    {
        EaseCurve curve = Curve(lock);
        if (lock != 0)
            curve.points = {{{2, 0}, {3, 1}, {4, 30}, {6, 40}}};
        m_model.Load(curve);
    }

    void Step()
    {
        const kv::EaseHit hit{Below(2), static_cast<EasePart>(Below(5)), Number(0.002, 1.5)};
        if (m_model.BeginDrag(hit)) {
            for (int moves = Below(4); moves > 0; --moves) {
                m_model.DragTo({Number(2, 6), Number(-100, 100)}, Below(3) == 0);
                Check();
            }
            Below(4) == 0 ? m_model.CancelDrag() : m_model.EndDrag();
        }
        if (Below(4) == 0)
            m_model.Move(static_cast<EaseHandle>(Below(4)), {Number(-5, 15), Number(-100, 100)});
        Check();
        const Bits before = BitsOf(m_model.Curve());
        if (m_model.Undo()) {
            ASSERT_TRUE(m_model.Redo());
            ASSERT_EQ(BitsOf(m_model.Curve()), before);
        }
    }

private:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    double Number(double from, double to) { return std::uniform_real_distribution(from, to)(m_random); }

    void Check()
    {
        const EaseCurve& curve = m_model.Curve();
        const SKvCurvePoint out = curve.OutTangent();
        const SKvCurvePoint in = curve.InTangent();
        constexpr double noise = 1e-12;
        ASSERT_TRUE(curve.points[0].x == 2 && curve.points[3].x == 6);
        ASSERT_TRUE(out.x >= 0 && out.x <= 4 && in.x <= 0 && in.x >= -4);
        if (curve.lock == 0)
            return;
        ASSERT_TRUE(out.y >= 0 && out.y <= 40 + noise && in.y <= 0 && in.y >= -40 - noise);
        const double points[] = {
            2, 0, curve.points[1].x, curve.points[1].y, curve.points[2].x, curve.points[2].y, 6, 40};
        const KvBezierEase ease(points);
        for (double x = 2.1; x <= 6; x += 0.1)
            ASSERT_GE(ease.Value(x), ease.Value(x - 0.1) - 1e-9);
    }

    std::mt19937 m_random;
    EaseModel m_model;
};

TEST(EaseModel, RandomEditsKeepTheInvariants)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        RandomEdits edits(seed, seed % 2);
        for (int i = 0; i < 40; ++i) {
            edits.Step();
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << "seed " << seed << ", step " << i;
        }
    }
}

} // namespace
