// Where the cells stand and how arrows walk over them.
#include "color/SwatchLayout.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using kv::ArrowKey;
using kv::SwatchCell;
using kv::SwatchLayout;

constexpr SwatchCell Swatch(int index)
{
    return {SwatchCell::Kind::Swatch, index};
}
constexpr SwatchCell Alpha(int index)
{
    return {SwatchCell::Kind::Alpha, index};
}

std::string Name(const std::optional<SwatchCell>& cell)
{
    if (!cell)
        return "none";
    return (cell->kind == SwatchCell::Kind::Swatch ? "s" : "a") + std::to_string(cell->index);
}

TEST(SwatchLayout, CellsStandWhereWholeDivisionsPutThem)
{
    const SwatchLayout layout(CRect(10, 20, 113, 115), 4, 9); // cells of 25 x 10, 3 and 5 left over
    EXPECT_EQ(layout.RectOf(Swatch(0)), CRect(10, 20, 35, 30));
    EXPECT_EQ(layout.RectOf(Swatch(31)), CRect(85, 90, 110, 100));
    EXPECT_EQ(layout.RectOf(Alpha(0)), CRect(10, 100, 35, 115));
    EXPECT_EQ(layout.RectOf(Alpha(2)), CRect(61, 100, 87, 115));
    EXPECT_EQ(layout.RectOf(Alpha(3)), CRect(87, 100, 113, 115));
}

TEST(SwatchLayout, HitsWhatStandsThere)
{
    const SwatchLayout layout(CRect(0, 0, 103, 95), 4, 9);
    const struct
    {
        CPoint point;
        int count;
        const char* cell;
    } cases[] = {
        {{0, 0}, 32, "s0"},    {{24, 9}, 32, "s0"},     {{25, 9}, 32, "s1"},     {{0, 10}, 32, "s4"},
        {{99, 79}, 32, "s31"}, {{100, 79}, 32, "none"}, {{99, 79}, 31, "none"},  {{99, 79}, 90, "s31"},
        {{0, 80}, 0, "a0"},    {{102, 94}, 32, "a3"},   {{103, 94}, 32, "none"}, {{0, 95}, 32, "none"},
        {{-1, 0}, 32, "none"}, {{0, -1}, 32, "none"},   {{50, 5}, 0, "none"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(Name(layout.HitTest(test.point, test.count)), test.cell)
            << test.point.x << ' ' << test.point.y;
}

TEST(SwatchLayout, ArrowsStopAtTheEdges)
{
    constexpr auto left = ArrowKey::Left;
    constexpr auto up = ArrowKey::Up;
    constexpr auto right = ArrowKey::Right;
    constexpr auto down = ArrowKey::Down;
    const SwatchLayout grid(CRect(0, 0, 160, 90), 8, 4); // 24 swatches at most
    const SwatchLayout narrow(CRect(0, 0, 160, 90), 1, 3);
    const struct
    {
        const SwatchLayout& layout;
        int count;
        SwatchCell from;
        ArrowKey arrow;
        const char* to;
    } cases[] = {
        {grid, 24, Swatch(0), left, "s0"},    {grid, 24, Swatch(0), up, "s0"},
        {grid, 24, Swatch(0), right, "s1"},   {grid, 24, Swatch(7), right, "s7"},
        {grid, 24, Swatch(8), left, "s8"},    {grid, 24, Swatch(7), down, "s15"},
        {grid, 24, Swatch(15), up, "s7"},     {grid, 24, Swatch(16), down, "a0"},
        {grid, 24, Swatch(21), down, "a2"},   {grid, 24, Alpha(0), left, "a0"},
        {grid, 24, Alpha(3), right, "a3"},    {grid, 24, Alpha(1), down, "a1"},
        {grid, 24, Alpha(1), up, "s19"},      {grid, 99, Alpha(3), up, "s23"},
        {grid, 18, Swatch(17), right, "s17"}, {grid, 18, Swatch(10), down, "a1"},
        {grid, 18, Alpha(1), up, "s11"},      {grid, 2, Alpha(3), up, "s1"},
        {grid, 0, Alpha(3), up, "a3"},        {grid, 18, Swatch(18), left, "s0"},
        {grid, 0, Swatch(0), left, "a0"},     {grid, 24, Alpha(9), left, "s0"},
        {narrow, 2, Swatch(1), down, "a2"},   {narrow, 2, Alpha(0), up, "s1"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(Name(test.layout.Neighbour(test.from, test.arrow, test.count)), test.to)
            << Name(test.from) << " of " << test.count;
}

TEST(SwatchLayout, OddCountsAndSizes)
{
    const SwatchLayout one(CRect(0, 0, 40, 20), -3, 0);
    EXPECT_EQ(one.ShownSwatches(9), 0);
    EXPECT_EQ(Name(one.HitTest({0, 0}, 9)), "a0");
    EXPECT_EQ(Name(one.First(9)), "a0");
    const SwatchLayout huge(CRect(0, 0, 40, 20), 2147483647, 2147483647);
    EXPECT_EQ(huge.ShownSwatches(65536), 65536);
    EXPECT_EQ(Name(huge.HitTest({9, 9}, 65536)), "a0") << "rows of no height leave all to the last one";
    EXPECT_EQ(Name(huge.Neighbour(Swatch(5), ArrowKey::Down, 65536)), "a0");
    EXPECT_EQ(Name(huge.Neighbour(Alpha(3), ArrowKey::Up, 65536)), "s65535");
    const SwatchLayout empty(CRect(5, 5, 5, 5), 4, 9);
    EXPECT_EQ(Name(empty.HitTest({5, 5}, 32)), "none");
    EXPECT_TRUE(empty.RectOf(Swatch(31)).IsRectEmpty());
    EXPECT_EQ(SwatchLayout(CRect(9, 9, 0, 0), 4, 9).ShownSwatches(-5), 0);
}

} // namespace
