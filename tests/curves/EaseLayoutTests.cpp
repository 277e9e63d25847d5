// Where things stand in the ease window, what the mouse hits, zoom and grid.
#include "curves/EasePath.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

using kv::EaseLayout;
using kv::EasePart;
using kv::EaseRange;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// A plot of 400 x 200 pixels from (50, 20).
constexpr CRect kClient(0, 0, 470, 240);

TEST(EaseLayout, MapsThereAndBackAndExactlyAtTheEdges)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> part(-0.5, 1.5);
    const double segments[][4] = {
        {0, 1, 0, 1}, {0.1, 0.7, -0.3, 1.1}, {-1e6, 1e6, 5e-3, 6e-3}, {7, 7.125, -9, 33}};
    for (const auto& [start, end, low, high] : segments) {
        const EaseLayout layout(kClient, start, end, {low, high});
        EXPECT_EQ(layout.ToCurve({450, 20}).x, end);
        EXPECT_EQ(layout.ToCurve({50, 220}).x, start);
        EXPECT_EQ(layout.ToCurve({450, 20}).y, high);
        EXPECT_EQ(layout.ToPixel({end, low}).x, 450);
        EXPECT_EQ(layout.ToPixel({end, low}).y, 220);
        for (int i = 0; i < 100; ++i) {
            const SKvCurvePoint pixel{50 + 400 * part(random), 20 + 200 * part(random)};
            const SKvCurvePoint back = layout.ToPixel(layout.ToCurve(pixel));
            EXPECT_NEAR(back.x, pixel.x, 1e-7);
            EXPECT_NEAR(back.y, pixel.y, 1e-7);
        }
    }
    const EaseLayout layout(kClient, 0, 1, {0, 1});
    EXPECT_EQ(layout.ClampedToPlot({49, -7}), CPoint(50, -7));
    EXPECT_EQ(layout.ClampedToPlot({9999, 300}), CPoint(450, 300));
}

TEST(EaseLayout, HitsInTheirOrder)
{
    // Pixels: keys (50, 220) and (450, 20), out handle (150, 220), in handle (350, 120).
    kv::EaseModel model;
    model.Load({{{{0, 0}, {0.25, 0}, {0.75, 0.5}, {1, 1}}}, 0, 1, 0, 1});
    const EaseLayout layout(kClient, 0, 1, {0, 1});
    const struct
    {
        const char* name;
        CPoint at;
        int key;
        EasePart part;
        double t = 1;
    } cases[] = {
        {"out handle, left and top edge", {146, 216}, 0, EasePart::OutHandle},
        {"out handle, last pixel", {153, 223}, 0, EasePart::OutHandle},
        {"in handle", {346, 123}, 1, EasePart::InHandle},
        {"start key", {46, 216}, 0, EasePart::Key},
        {"out line", {100, 223}, 0, EasePart::OutTangent, 0.5},
        {"behind the start key, no line", {45, 220}, -1, EasePart::Key},
        {"off the line by the root of 12", {100, 224}, -1, EasePart::Key},
        {"below the box", {152, 224}, -1, EasePart::Key},
        {"in line", {400, 70}, 1, EasePart::InTangent, 0.5},
        {"nothing", {250, 200}, -1, EasePart::Key},
    };
    for (const auto& row : cases) {
        const auto hit = layout.HitTest(model.Keys(), model.Origin(), row.at);
        ASSERT_EQ(hit.has_value(), row.key >= 0) << row.name;
        if (!hit)
            continue;
        EXPECT_EQ(hit->key, row.key) << row.name;
        EXPECT_EQ(hit->part, row.part) << row.name;
        EXPECT_NEAR(hit->t, row.t, 1e-9) << row.name;
    }
    model.ApplyPreset(kKvEaseLinear, {});
    const auto partAt = [&](CPoint at) { return layout.HitTest(model.Keys(), model.Origin(), at)->part; };
    EXPECT_EQ(partAt({50, 220}), EasePart::OutHandle) << "before its key";
    EXPECT_EQ(partAt({450, 20}), EasePart::InHandle);
}

TEST(EaseLayout, HitsToThePixelAlsoFarFromNothing)
{
    const double segments[][4] = {
        {36000.02, 36000.06, 0, 1}, {0, 1, 1e8 + 0.5, 1e8 + 1.5}, {-1e8, -1e8 + 0.25, 3e9, 3e9 + 1}};
    for (const auto& [start, end, low, high] : segments) {
        const EaseLayout layout({0, 0, 800, 400}, start, end, {low, high});
        const CPoint pixels[] = {{50, 380}, {230, 350}, {600, 80}, {780, 20}};
        kv::EaseCurve curve{{}, low, high, 0, 1};
        for (std::size_t i = 0; i < 4; ++i)
            curve.points[i] = layout.ToCurve({double(pixels[i].x), double(pixels[i].y)});
        kv::EaseModel model;
        model.Load(curve);
        const auto isHit = [&](CPoint at) {
            return layout.HitTest(model.Keys(), model.Origin(), at).has_value();
        };
        for (const CPoint& at : {pixels[0], pixels[1], pixels[2], pixels[3]}) {
            EXPECT_TRUE(isHit({at.x - 4, at.y - 4}) && isHit({at.x + 3, at.y + 3})) << start << ": " << at.x;
            EXPECT_FALSE(isHit({at.x - 5, at.y - 5}) || isHit({at.x + 4, at.y + 4})) << start << ": " << at.x;
        }
    }
}

TEST(EasePath, ClipsLinesFromFarAway)
{
    const struct
    {
        const char* name;
        kv::EaseLine line;
        std::vector<double> part; // from, to
    } cases[] = {
        {"within", {{1, 2}, {9, 8}}, {1, 2, 9, 8}},
        {"through a corner's edges", {{-2, 6}, {6, -2}}, {0, 4, 4, 0}},
        {"past a corner", {{-9, 5}, {5, -9}}, {}},
        {"beside", {{11, 0}, {99, 9}}, {}},
        {"from far away", {{1e20, -1e20}, {2, 10}}, {10, 2, 2, 10}},
        {"to far away", {{2, 10}, {1e20, -1e20}}, {2, 10, 10, 2}},
        {"from end to end of the world", {{-1e30, 3}, {1e30, 3}}, {0, 3, 10, 3}},
    };
    for (const auto& row : cases) {
        const auto part = kv::Clipped(row.line, {0, 0, 10, 10});
        std::vector<double> places;
        if (part)
            places = {part->from.x, part->from.y, part->to.x, part->to.y};
        EXPECT_EQ(places, row.part) << row.name;
    }
}

TEST(EaseLayout, WithoutSizeNothingMapsAndNothingIsHit)
{
    kv::EaseModel model;
    const EaseLayout layouts[] = {
        EaseLayout(), EaseLayout({0, 0, 60, 30}, 0, 1, {0, 1}), EaseLayout(kClient, 1, 1, {0, 1}),
        EaseLayout(kClient, 0, std::nan(""), {0, 1}), EaseLayout(kClient, 0, 1, {2, 2})};
    for (const EaseLayout& layout : layouts) {
        EXPECT_FALSE(layout.IsMapped());
        EXPECT_FALSE(layout.HitTest(model.Keys(), model.Origin(), layout.plot.TopLeft()));
        EXPECT_EQ(layout.ToPixel({0.5, 0.5}).x, layout.plot.left);
        EXPECT_EQ(layout.ClampedToPlot({-9, 0}).x, layout.plot.left);
    }
}

TEST(EaseView, Grid)
{
    const struct
    {
        EaseRange view;
        double step;
        std::vector<double> ticks;
    } cases[] = {
        {{0, 1}, 0.2, {0.2, 0.4, 0.6, 0.8}},
        {{0.6, 1.6}, 0.2, {0.8, 1.0, 1.2, 1.4}},
        {{-1, 1}, 0.2, {-0.8, -0.6, -0.4, -0.2, 0, 0.2, 0.4, 0.6, 0.8}},
        {{-0.9, -0.05}, 0.1, {-0.8, -0.7, -0.6, -0.5, -0.4, -0.3, -0.2, -0.1}},
        {{0.3, 0.3 + 0.1 * 3}, 0.05, {0.35, 0.4, 0.45, 0.5, 0.55}},
        {{0, 100}, 20, {20, 40, 60, 80}},
        {{-360, 360}, 100, {-300, -200, -100, 0, 100, 200, 300}},
        {{0, 0.0003}, 0.0001, {0.0001, 0.0002}},
        {{0.00011, 0.00019}, 0.0001, {}},
        {{0, 60000}, 10000, {10000, 20000, 30000, 40000, 50000}},
        {{0, 1e30}, 10000, {}},
        {{1, 1}, 0.0001, {}},
        {{0, kInfinity}, 10000, {}},
        {{std::nan(""), 1}, 0.0001, {}},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(kv::TickStep(row.view), row.step) << row.view.minimum << " … " << row.view.maximum;
        EXPECT_EQ(kv::Ticks(row.view), row.ticks) << row.view.minimum << " … " << row.view.maximum;
    }
    EXPECT_EQ(kv::TickDigits(0.2), 2);
    EXPECT_EQ(kv::TickDigits(0.1), 4);
    EXPECT_EQ(kv::TickDigits(0.002), 4);
    EXPECT_EQ(kv::TickDigits(0.001), 6);
}

TEST(EaseView, ZoomAndMove)
{
    const EaseRange whole{-1, 3};
    const struct
    {
        const char* name;
        EaseRange view;
        double factor;
        EaseRange after;
    } cases[] = {
        {"in", whole, 0.5, {0, 2}},
        {"out", whole, 1.5, {-2, 4}},
        {"no farther out than twice", whole, 40, {-3, 5}},
        {"no farther in than a twentieth", whole, -7, {0.9, 1.1}},
        {"around the view's own centre", {9, 11}, 2, {8, 12}},
        {"not a number", {9, 11}, std::nan(""), {9, 11}},
    };
    for (const auto& row : cases) {
        const EaseRange after = kv::Zoomed(row.view, whole, row.factor);
        EXPECT_DOUBLE_EQ(after.minimum, row.after.minimum) << row.name;
        EXPECT_DOUBLE_EQ(after.maximum, row.after.maximum) << row.name;
    }
    EXPECT_EQ(kv::Zoomed({1, 2}, {5, 5}, 1).maximum, 2) << "of nothing";
    EXPECT_EQ(kv::Moved({1, 2}, -0.5).minimum, 0.5);
    EXPECT_EQ(kv::Moved({1, 2}, 1e300).minimum, 1) << "so far away that it would have no size";

    std::mt19937 random(5);
    std::uniform_real_distribution<double> anything(-1, 50);
    EaseRange view = whole;
    for (int i = 0; i < 1000; ++i) {
        view = kv::Moved(kv::Zoomed(view, whole, anything(random)), anything(random));
        ASSERT_GE(view.Span() / whole.Span(), 0.05 - 1e-9);
        ASSERT_LE(view.Span() / whole.Span(), 2 + 1e-9);
    }
}

} // namespace
