// The four corners: colours, selection, places and pictures.
#include "color/Checkerboard.h"
#include "color/GradientColour.h"
#include "color/QuadLayout.h"
#include "color/QuadModel.h"
#include "color/QuadRaster.h"
#include "tests/color/PixelPicture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using kv::ArrowKey;
using kv::QuadColours;
using kv::QuadLayout;
using kv::QuadModel;

TEST(QuadModel, RearrangesTheCorners)
{
    const struct
    {
        const char* name;
        bool (*edit)(QuadModel&);
        QuadColours corners;
        bool changed = true;
    } cases[] = {
        {"left and right", [](QuadModel& m) { return m.ExchangeLeftAndRight(); }, {2, 1, 4, 3}},
        {"top and bottom", [](QuadModel& m) { return m.ExchangeTopAndBottom(); }, {3, 4, 1, 2}},
        {"clockwise", [](QuadModel& m) { return m.TurnClockwise(); }, {3, 1, 4, 2}},
        {"counterclockwise", [](QuadModel& m) { return m.TurnCounterclockwise(); }, {2, 4, 1, 3}},
        {"across", [](QuadModel& m) { return m.Exchange(0, 3); }, {4, 2, 3, 1}},
        {"with itself", [](QuadModel& m) { return m.Exchange(2, 2); }, {1, 2, 3, 4}, false},
        {"with nothing",
         [](QuadModel& m) { return m.Exchange(0, 4) || m.Exchange(-1, 0); },
         {1, 2, 3, 4},
         false},
        {"one corner", [](QuadModel& m) { return m.SetCorner(2, 9); }, {1, 2, 9, 4}},
        {"the same colour", [](QuadModel& m) { return m.SetCorner(2, 3); }, {1, 2, 3, 4}, false},
        {"no corner", [](QuadModel& m) { return m.SetCorner(4, 9); }, {1, 2, 3, 4}, false},
        {"the selected one", [](QuadModel& m) { return m.SetSelectedColour(9); }, {1, 9, 3, 4}},
        {"none selected",
         [](QuadModel& m) { return m.Select(-1) && m.SetSelectedColour(9); },
         {1, 2, 3, 4},
         false},
    };
    for (const auto& test : cases) {
        QuadModel model;
        EXPECT_TRUE(model.SetCorners({1, 2, 3, 4}));
        EXPECT_FALSE(model.SetCorners({1, 2, 3, 4}));
        model.Select(1);
        EXPECT_EQ(test.edit(model), test.changed) << test.name;
        EXPECT_EQ(model.Corners(), test.corners) << test.name;
    }
}

TEST(QuadModel, ArrowsWalkTheCorners)
{
    // Left, up, right, down of each corner.
    constexpr int expected[4][4] = {{0, 0, 1, 2}, {0, 1, 1, 3}, {2, 0, 3, 2}, {2, 1, 3, 3}};
    QuadModel model;
    for (int corner = 0; corner < 4; ++corner) {
        model.Select(corner);
        for (int arrow = 0; arrow < 4; ++arrow)
            EXPECT_EQ(model.Neighbour(static_cast<ArrowKey>(arrow)), expected[corner][arrow])
                << corner << arrow;
    }
    EXPECT_FALSE(model.Select(3));
    EXPECT_TRUE(model.Select(77)) << "no such corner is none";
    EXPECT_EQ(model.Selected(), -1);
    EXPECT_EQ(model.SelectedColour(), 0u);
    EXPECT_EQ(model.Neighbour(ArrowKey::Down), 0);
}

TEST(QuadLayout, RectanglesAndHits)
{
    const QuadLayout layout(CRect(10, 20, 177, 121)); // 167 x 101
    EXPECT_EQ(layout.corners[0], CRect(10, 20, 30, 53));
    EXPECT_EQ(layout.corners[1], CRect(157, 20, 177, 53));
    EXPECT_EQ(layout.corners[2], CRect(10, 88, 30, 121));
    EXPECT_EQ(layout.corners[3], CRect(157, 88, 177, 121));
    EXPECT_EQ(layout.palette, CRect(30, 40, 157, 101));
    const struct
    {
        CPoint point;
        int corner;
    } cases[] = {{{10, 20}, 0},   {{29, 52}, 0}, {{30, 52}, -1},  {{29, 53}, -1}, {{157, 20}, 1},
                 {{177, 20}, -1}, {{10, 88}, 2}, {{176, 120}, 3}, {{90, 70}, -1}, {{9, 20}, -1}};
    for (const auto& test : cases)
        EXPECT_EQ(layout.HitCorner(test.point), test.corner) << test.point.x << ' ' << test.point.y;
    EXPECT_EQ(QuadLayout(CRect(0, 0, 7, 90)).HitCorner({0, 0}), -1) << "corners of no width";
    EXPECT_EQ(QuadLayout(CRect(0, 0, 7, 90)).palette, CRect(0, 18, 7, 72));
    EXPECT_EQ(QuadLayout(CRect(0, 0, 80, -7)).corners[0], CRect(0, 0, 10, -2)) << "toward zero";
}

/// A letter for each pixel of a corner's row.
std::string Row(const PixelPicture& picture, int y, std::uint32_t colour)
{
    std::string row;
    for (int x = 0; x < picture.width; ++x) {
        const std::uint32_t pixel = picture.At(x, y);
        row += pixel == 0             ? ' '
               : pixel == 0xFF000000u ? '#'
               : pixel == 0xFFC0C0C0u ? 'o'
               : pixel == colour      ? '.'
                                      : '?';
    }
    return row;
}

TEST(QuadRaster, ACornersFrameColourAndMark)
{
    const struct
    {
        const char* name;
        double ratio;
        std::uint32_t colour;
        bool selected, enabled;
        std::uint32_t shown;
        std::string first, second, third, middle;
    } cases[] = {
        {"plain", 1, 0xFF123456u, false, true, 0xFF123456u, "            ", " ########## ", " #........# ",
         " #........# "},
        {"dark, selected", 1, 0xFF808000u, true, true, 0xFF808000u, "            ", " ########## ",
         " #oooooooo# ", " #oo....oo# "},
        {"light, selected", 1, 0xFF8080FFu, true, true, 0xFF8080FFu, "            ", " ########## ",
         " ########## ", " ###....### "},
        {"disabled, selected", 1, 0xFFFFFFFFu, true, false, 0xFF7F7F7Fu, "            ", " ########## ",
         " #oooooooo# ", " #oo....oo# "},
        {"at 150 %", 1.5, 0xFF123456u, true, true, 0xFF123456u, "                  ", "                  ",
         "  ############### ", "  ##ooo.....ooo## "},
        {"clear", 1, 0x00FFFFFFu, false, true, 0xFFCCCCCCu, "            ", " ########## ", " #..????..# ",
         " #??....??# "},
    };
    for (const auto& test : cases) {
        PixelPicture picture({12, 12}, test.ratio);
        kv::DrawQuadCorner(picture.View(), picture.grid, picture.size, test.colour, test.selected,
                           test.enabled);
        EXPECT_EQ(Row(picture, 0, test.shown), test.first) << test.name;
        EXPECT_EQ(Row(picture, 1, test.shown), test.second) << test.name;
        EXPECT_EQ(Row(picture, 2, test.shown), test.third) << test.name;
        EXPECT_EQ(Row(picture, picture.height / 2, test.shown), test.middle) << test.name;
    }
}

TEST(QuadRaster, ThePaletteIsTheGradientOverTheBoard)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        const QuadColours corners{0xFFFF0000u, 0x8000FF00u, 0xFF0000FFu, 0x00FFFFFFu};
        PixelPicture picture({60, 40}, ratio);
        PixelPicture expected(picture.size, ratio);
        kv::DrawQuadPalette(picture.View(), picture.grid, picture.size, corners, true);
        kv::DrawCheckerboard(expected.View(), expected.grid, {0, 0, expected.width, expected.height});
        kv::FillQuadGradient(expected.View(), kv::PixelFormat::Rgb32, expected.grid, {2, 2, 58, 38}, corners);
        const kv::DeviceGrid& grid = picture.grid;
        const int edge = std::max(grid.Edge(2), grid.Edge(1) + grid.Line());
        for (int y = edge; y < std::min(grid.Edge(38), grid.Edge(39) - grid.Line()); ++y) {
            for (int x = edge; x < std::min(grid.Edge(58), grid.Edge(59) - grid.Line()); ++x)
                ASSERT_EQ(picture.At(x, y), expected.At(x, y)) << x << ' ' << y << " at " << ratio;
        }
        const int frame = picture.grid.Edge(1);
        for (int x = 0; x < picture.width; ++x) {
            const bool inside = x >= frame && x < picture.grid.Edge(59);
            ASSERT_EQ(picture.At(x, 0), 0u);
            ASSERT_EQ(picture.At(x, frame), inside ? 0xFF000000u : 0u);
            ASSERT_EQ(picture.At(x, picture.grid.Edge(39) - 1), inside ? 0xFF000000u : 0u);
        }
        EXPECT_LT(kv::GreenOf(picture.At(frame + grid.Line(), frame + grid.Line())), 0x10u)
            << "no bare line beside the frame at " << ratio;
    }
}

TEST(QuadRaster, SmallAndDisabledPictures)
{
    for (int size = 0; size < 8; ++size) {
        PixelPicture picture({size, size}, 1);
        kv::DrawQuadPalette(picture.View(), picture.grid, picture.size, {1, 2, 3, 4}, true);
        kv::DrawQuadCorner(picture.View(), picture.grid, picture.size, 0xFFFFFFFFu, true, true);
        if (size > 4) {
            EXPECT_EQ(picture.At(1, 1), 0xFF000000u) << size;
        }
    }
    PixelPicture picture({60, 40}, 1);
    kv::DrawQuadPalette(picture.View(), picture.grid, picture.size, QuadModel().Corners(), false);
    EXPECT_EQ(picture.At(2, 2), 0xFF2A2A2Au) << "(255 + 0 + 0) / 6";
    EXPECT_EQ(kv::RedOf(picture.At(30, 20)), 0x34u)
        << "the centre averages the greys 2A, 2A, 2A and 55, rounded down twice";
}

} // namespace
