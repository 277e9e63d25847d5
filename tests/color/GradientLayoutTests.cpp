// Where the parts stand and what stands under a point.
#include "color/GradientLayout.h"
#include "color/GradientModel.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using kv::GradientLayout;
using kv::GradientModel;

TEST(GradientLayout, PositionsTruncateTowardZeroAndNeverOverflow)
{
    const GradientLayout layout(CRect(0, 0, 209, 60));
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const struct
    {
        double position;
        int x;
    } cases[] = {
        {0, 4},      {1, 204},   {0.5, 104},     {0.299, 63},      {-0.002, 4},
        {-0.006, 3}, {1.5, 304}, {0.0 / 0.0, 4}, {1e30, 10000004}, {-infinity, -9999996},
    };
    for (const auto& test : cases)
        EXPECT_EQ(layout.GetDisplayPos(test.position), test.x) << test.position;
    EXPECT_EQ(layout.PositionAt(104), 0.5f);
    EXPECT_EQ(layout.PositionAt(0), -0.02f) << "not clamped";
    const GradientLayout narrow(CRect(0, 0, 9, 60));
    EXPECT_EQ(narrow.PositionAt(7), 0.0f);
    EXPECT_EQ(narrow.GetDisplayPos(infinity), 4);
    EXPECT_EQ(narrow.Shifted(0.3, 1), 0.3);
}

TEST(GradientLayout, AStepIsOnePixelOnTheScreen)
{
    for (const int width : {10, 209, 391, 1900}) {
        const GradientLayout layout(CRect(0, 0, width, 60));
        double position = 0.0;
        for (int step = 1; step <= layout.Span(); ++step) {
            position = layout.Shifted(position, 1);
            ASSERT_EQ(layout.GetDisplayPos(position), 4 + step) << width;
        }
        EXPECT_NEAR(position, 1.0, 1e-5);
        EXPECT_EQ(layout.GetDisplayPos(layout.Shifted(1.0, -10)), std::max(4 + layout.Span() - 10, -5));
    }
}

TEST(GradientLayout, HitBoxesExcludeRightAndBottom)
{
    GradientModel model; // markers at 4, 64 (0.3f is a little more), 124 and 204
    const GradientLayout layout(CRect(0, 0, 209, 60));
    const struct
    {
        CPoint point;
        int hit;
    } keys[] = {
        {{0, 47}, 0},   {{7, 59}, 0},   {{8, 50}, -1},  {{60, 50}, 1},  {{59, 50}, -1},  {{67, 50}, 1},
        {{68, 50}, -1}, {{64, 46}, -1}, {{64, 60}, -1}, {{207, 47}, 3}, {{208, 47}, -1},
    };
    for (const auto& test : keys)
        EXPECT_EQ(layout.HitKey(model, test.point), test.hit) << test.point.x << ' ' << test.point.y;

    model.PlaceKey(1, 0.59);
    EXPECT_EQ(layout.HitKey(model, {124, 50}), 1) << "the lowest index wins";
}

TEST(GradientLayout, OnlyMidPointsBesideTheSelectionAreHit)
{
    GradientModel model; // mid points at 34, 94 and 164
    const GradientLayout layout(CRect(0, 0, 209, 60));
    model.Select(1);
    EXPECT_EQ(layout.HitMidPoint(model, {34, 2}), 1);
    EXPECT_EQ(layout.HitMidPoint(model, {30, 7}), 1);
    EXPECT_EQ(layout.HitMidPoint(model, {38, 5}), -1);
    EXPECT_EQ(layout.HitMidPoint(model, {34, 8}), -1);
    EXPECT_EQ(layout.HitMidPoint(model, {34, 1}), -1);
    EXPECT_EQ(layout.HitMidPoint(model, {94, 5}), 2);
    EXPECT_EQ(layout.HitMidPoint(model, {164, 5}), -1);
    model.SetMidPoint(1, 0.95f);
    model.SetMidPoint(2, 0.05f);
    EXPECT_EQ(layout.HitMidPoint(model, {64, 5}), 2) << "the right one wins";
}

} // namespace
