#include "layout/StripLayout.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace kv {
namespace {

constexpr int kMost = std::numeric_limits<int>::max();

TEST(StripLayout, Measures)
{
    const struct
    {
        const char* name;
        CRect client;
        bool vertical, bar;
        CSize size;
        CRect content, band;
        std::int64_t length;
        int across;
    } rows[] = {
        {"a row with a bar",
         {0, 0, 400, 81},
         false,
         true,
         {720, 576},
         {4, 2, 394, 62},
         {0, 41, 400, 81},
         75,
         60},
        {"a row without",
         {0, 0, 400, 62},
         false,
         false,
         {720, 576},
         {4, 2, 394, 62},
         {0, 22, 400, 62},
         75,
         60},
        {"a column", {0, 0, 109, 400}, true, true, {720, 576}, {4, 2, 84, 400}, {69, 0, 109, 400}, 64, 80},
        {"lower than the band",
         {0, 0, 400, 30},
         false,
         true,
         {16, 9},
         {4, 2, 394, 11},
         {0, 0, 400, 30},
         16,
         9},
        {"no room", {0, 0, 8, 10}, false, true, {16, 9}, {4, 2, 4, 2}, {0, 0, 8, 10}, 0, 0},
        {"no shape", {0, 0, 400, 81}, false, true, {0, 0}, {4, 2, 394, 62}, {0, 41, 400, 81}, 0, 60},
        {"a negative shape",
         {0, 0, 400, 81},
         false,
         true,
         {16, -9},
         {4, 2, 394, 62},
         {0, 41, 400, 81},
         0,
         60},
        {"very high", {0, 0, 400, 81}, false, true, {1, 100000}, {4, 2, 394, 62}, {0, 41, 400, 81}, 0, 60},
        {"very high in a column",
         {0, 0, 109, 400},
         true,
         true,
         {1, 100000},
         {4, 2, 84, 400},
         {69, 0, 109, 400},
         8000000,
         80},
        {"wider than anything",
         {0, 0, 400, 81},
         false,
         true,
         {kMost, 1},
         {4, 2, 394, 62},
         {0, 41, 400, 81},
         1 << 30,
         60},
    };
    for (const auto& row : rows) {
        const StripLayout layout(row.client, row.vertical, row.bar, row.size);
        EXPECT_EQ(layout.Content(), row.content) << row.name;
        EXPECT_EQ(layout.DragBand(), row.band) << row.name;
        EXPECT_EQ(layout.Length(), row.length) << row.name;
        EXPECT_EQ(layout.Across(), row.across) << row.name;
        EXPECT_GE(layout.TotalLength(kMost), layout.TotalLength(kMost - 1)) << row.name;
        EXPECT_EQ(layout.TotalLength(0), 0) << row.name;
    }
    EXPECT_EQ(StripLayout::ScrollBarRect({0, 0, 400, 81}, false), CRect(0, 64, 400, 81));
    EXPECT_EQ(StripLayout::ScrollBarRect({0, 0, 109, 400}, true), CRect(92, 0, 109, 400));
}

// The range and the hit test give what a walk over all thumbnails gives.
TEST(StripLayout, FindsWhatAWalkFinds)
{
    std::mt19937 random(5);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
    for (int round = 0; round < 3000; ++round) {
        const bool vertical = upTo(2) == 1;
        const CSize size(upTo(40), 1 + upTo(40));
        const StripLayout layout({0, 0, 10 + upTo(120), 10 + upTo(120)}, vertical, upTo(2) == 1, size);
        const int count = upTo(12);
        const int begin = upTo(400) - 60;
        const int end = begin + upTo(150);
        const CPoint point(upTo(300) - 20, upTo(300) - 20);
        int hit = -1;
        std::vector<int> reaching;
        for (int index = 0; index < count; ++index) {
            const SKvScrollRect rect = layout.ThumbAt(index);
            if (hit < 0 && point.x >= rect.left && point.x < rect.right && point.y >= rect.top &&
                point.y < rect.bottom)
                hit = index;
            const std::int64_t from = vertical ? rect.top : rect.left;
            const std::int64_t to = vertical ? rect.bottom : rect.right;
            const bool isEmpty = rect.left == rect.right || rect.top == rect.bottom;
            if (!isEmpty && begin < end && from < end && to > begin)
                reaching.push_back(index);
        }
        ASSERT_EQ(layout.HitTest(point.x, point.y, count), hit) << "round " << round;
        const StripLayout::Range range = layout.Reaching(begin, end, count);
        ASSERT_EQ(std::max(range.end - range.begin, 0), static_cast<int>(reaching.size()))
            << "round " << round;
        if (!reaching.empty()) {
            ASSERT_EQ(range.begin, reaching.front()) << "round " << round;
        }
    }
}

TEST(StripLayout, KeepsItsFirstThumbnailWhenTheSizeChanges)
{
    const StripLayout small({0, 0, 400, 81}, false, true, {720, 576});  // step 80
    const StripLayout large({0, 0, 400, 141}, false, true, {720, 576}); // step 155
    EXPECT_EQ(large.PositionFrom(small, 800), 1550);
    EXPECT_EQ(large.PositionFrom(small, 840), 1550 + 77);
    EXPECT_EQ(small.PositionFrom(large, 1550), 800);
    EXPECT_EQ(small.PositionFrom(small, 123), 123);
}

TEST(StripKeys, StopAtTheEnds)
{
    const struct
    {
        int current;
        StripKey key;
        int page, count, target;
    } rows[] = {
        {0, StripKey::Previous, 4, 10, 0},
        {9, StripKey::Next, 4, 10, 9},
        {3, StripKey::Next, 4, 10, 4},
        {3, StripKey::PageBack, 4, 10, 0},
        {7, StripKey::PageOn, 4, 10, 9},
        {2, StripKey::PageOn, 0, 10, 3},
        {5, StripKey::First, 4, 10, 0},
        {5, StripKey::Last, 4, 10, 9},
        {kMost - 1, StripKey::PageOn, kMost, kMost, kMost - 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StripKeyTarget(row.current, row.key, row.page, row.count), row.target)
            << row.current << " by key " << static_cast<int>(row.key);
}

TEST(StripMotion, GoesInStepsAndThenInOneJump)
{
    EXPECT_EQ(StripMotionAt(100, 400, 0), 100);
    EXPECT_EQ(StripMotionAt(100, 400, 4), 130);
    EXPECT_EQ(StripMotionAt(100, 400, 17), 220); // as many steps as are due
    EXPECT_EQ(StripMotionAt(100, 400, 200), 400);
    EXPECT_EQ(StripMotionAt(400, 0, 9), 340);
    EXPECT_EQ(StripMotionAt(0, 1000000, 299), 74 * 30);
    EXPECT_EQ(StripMotionAt(0, 1000000, 300), 1000000);
    EXPECT_EQ(StripMotionAt(50, 50, 10), 50);
}

} // namespace
} // namespace kv
