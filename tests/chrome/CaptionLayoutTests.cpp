// Where the parts of a caption strip stand, and which of them a point hits.
#include "chrome/CaptionLayout.h"
#include "platform/FrameEdges.h"

#include <array>
#include <gtest/gtest.h>
#include <ostream>

static void PrintTo(const CRect& rect, std::ostream* out)
{
    *out << rect.left << ',' << rect.top << ',' << rect.right << ',' << rect.bottom;
}

namespace kv {
namespace {

// Not at the origin, so that no edge is taken for a size.
const CRect kClient(10, 20, 810, 116);

TEST(CaptionLayout, PlacesBandToolAreaAndSeparator)
{
    EXPECT_EQ(CaptionBand(kClient), CRect(10, 24, 810, 45));
    EXPECT_EQ(ToolWindowArea(kClient, kTitleBarForm), CRect(10, 47, 810, 116));
    EXPECT_EQ(ToolWindowArea(kClient, kMenuBarForm), CRect(10, 47, 810, 111));
    EXPECT_EQ(SeparatorLines(kClient)[0], CRect(10, 45, 810, 46));
    EXPECT_EQ(SeparatorLines(kClient)[1], CRect(10, 46, 810, 47));
    EXPECT_EQ(CaptionGrowth(21), 0);
    EXPECT_EQ(CaptionGrowth(30), 9);
    EXPECT_EQ(CaptionBand(kClient, 9), CRect(10, 24, 810, 54));
    EXPECT_EQ(ToolWindowArea(kClient, kMenuBarForm, 9), CRect(10, 56, 810, 111));
    EXPECT_EQ(SeparatorLines(kClient, 9)[0], CRect(10, 54, 810, 55));
}

TEST(CaptionLayout, PlacesItemsBehindTheTitleAndNeverCutsThem)
{
    const CRect band = CaptionBand(kClient);
    const CRect title = ApplicationTitleRect(band, 50);
    EXPECT_EQ(title, CRect(14, 24, 64, 45));
    const CRect row = ItemRow(band, title);
    EXPECT_EQ(row, CRect(94, 20, 810, 41));
    const std::vector<CRect> items = ItemRects(row, {{40, 15}, {0, 15}, {900, 17}, {20, 15}});
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[0], CRect(94, 26, 134, 41));
    EXPECT_EQ(items[1], CRect(144, 26, 144, 41));
    EXPECT_EQ(items[2], CRect(154, 24, 1054, 41));
    EXPECT_EQ(items[3], CRect(1064, 26, 1084, 41));
}

TEST(CaptionLayout, PlacesTheStaticTitleBetweenItemsAndButtons)
{
    const CRect band = CaptionBand(kClient);
    const int right = 200;
    EXPECT_EQ(StaticTitleRect(band, &right, 676, kTitleBarForm), CRect(300, 22, 626, 43));
    EXPECT_EQ(StaticTitleRect(band, &right, 676, kMenuBarForm), CRect(350, 22, 626, 43));
    EXPECT_EQ(StaticTitleRect(band, nullptr, 676, kTitleBarForm), CRect(110, 22, 626, 43));
    const int tooFar = 600;
    EXPECT_TRUE(StaticTitleRect(band, &tooFar, 676, kTitleBarForm).IsRectEmpty());
}

TEST(CaptionLayout, CutsTheTitlesTextBeforeTheFlag)
{
    const CRect title(300, 22, 600, 43);
    const std::array<int, 3> rows[] = {
        {500, 300, 492}, // cut before it
        {428, 300, 420}, // legible
        {427, 451, 600}, // not so: behind it is more room
        {290, 314, 600}, {276, 300, 600}, {595, 300, 587}, {608, 300, 600},
    };
    for (const auto& [flagLeft, left, right] : rows)
        EXPECT_EQ(TitleTextRoom(title, {flagLeft, 22, flagLeft + 16, 38}), CRect(left, 22, right, 43))
            << flagLeft;
    EXPECT_EQ(TitleTextRoom(title, {}), title);
}

TEST(CaptionLayout, HalvesTowardsZeroForTheFlag)
{
    EXPECT_EQ(SwitchFlagRect({0, 4, 801, 25}, {17, 16}), CRect(392, 2, 409, 18));
    EXPECT_EQ(SwitchFlagRect({-9, 4, 4, 25}, {3, 16}), CRect(-3, 2, 0, 18));
    EXPECT_EQ(SwitchFlagRect({0, 4, 801, 25}, {}), CRect());
}

TEST(CaptionLayout, PlacesAdvancedWindowsBehindTheirSeparators)
{
    const CRect area(10, 47, 810, 116);
    const CSize first(100, 60);
    const CSize second(50, 30);
    const CSize separator(6, 64);
    const CSize* const both[2] = {&first, &second};
    AdvancedLayout layout = AdvancedToolRects(area, both, separator);
    EXPECT_EQ(layout.separators[0], CRect(646, 47, 652, 111));
    EXPECT_EQ(layout.windows[0], CRect(652, 47, 752, 107));
    EXPECT_EQ(layout.separators[1], CRect(754, 47, 760, 111));
    EXPECT_EQ(layout.windows[1], CRect(760, 47, 810, 77));

    const CSize* const onlyFirst[2] = {&first, nullptr};
    layout = AdvancedToolRects(area, onlyFirst, separator);
    EXPECT_EQ(layout.windows[0], CRect(710, 47, 810, 107));
    EXPECT_EQ(layout.separators[0], CRect(704, 47, 710, 111));
    EXPECT_TRUE(layout.windows[1].IsRectEmpty() && layout.separators[1].IsRectEmpty());
}

struct HitCase
{
    const char* name;
    CPoint point;
    CaptionHit hit;
    CaptionHit maximised; ///< without resize borders
};

class CaptionHitTest : public testing::TestWithParam<HitCase>
{
};

TEST_P(CaptionHitTest, FindsThePart)
{
    const HitCase& row = GetParam();
    CaptionParts parts;
    parts.band = CaptionBand({0, 0, 800, 96});
    parts.items = {{100, 6, 140, 21}, {130, 6, 180, 21}, {780, 6, 900, 21}};
    parts.flag = {392, 2, 408, 18};
    parts.buttons = {{10000, {4, 2, 70, 23}}, {10001, {762, 0, 796, 22}}};
    parts.frame = {0, 0, 800, 600};
    parts.resizable = true;
    EXPECT_EQ(HitTestCaption(row.point, parts), row.hit);
    parts.resizable = false;
    EXPECT_EQ(HitTestCaption(row.point, parts), row.maximised);
}

constexpr CaptionHit kCaption{CaptionPart::Caption, -1};
constexpr CaptionHit kClientHit{CaptionPart::Client, -1};
constexpr CaptionHit kFlag{CaptionPart::Flag, -1};

constexpr CaptionHit Item(int index)
{
    return {CaptionPart::Item, index};
}
constexpr CaptionHit Button(int number)
{
    return {CaptionPart::Button, number};
}
constexpr CaptionHit Edge(unsigned edges)
{
    return {CaptionPart::Edge, static_cast<int>(edges)};
}

const HitCase kHits[] = {
    {"FreeBand", {300, 10}, kCaption, kCaption},
    {"BandsFirstRow", {300, 4}, kCaption, kCaption},
    {"AboveTheBand", {300, 3}, Edge(kTopEdge), kClientHit},
    {"BandsLastRow", {300, 24}, kCaption, kCaption},
    {"BelowTheBand", {300, 25}, kClientHit, kClientHit},
    {"LeftOfTheButton", {3, 10}, Edge(kLeftEdge | kTopEdge), kCaption},
    {"LeftBorderBelow", {5, 50}, Edge(kLeftEdge), kClientHit},
    {"InsideTheBorder", {6, 50}, kClientHit, kClientHit},
    {"RightBorderBelow", {794, 50}, Edge(kRightEdge), kClientHit},
    {"ButtonOverBorder", {5, 2}, Button(10000), Button(10000)},
    {"ButtonAtTheTop", {762, 0}, Button(10001), Button(10001)},
    {"ButtonOverItem", {790, 10}, Button(10001), Button(10001)},
    {"ItemOverBorder", {798, 10}, Item(2), Item(2)},
    {"FirstOfTwoItems", {135, 10}, Item(0), Item(0)},
    {"SecondItem", {140, 6}, Item(1), Item(1)},
    {"BelowAnItem", {110, 21}, kCaption, kCaption},
    {"FlagOverBorder", {392, 2}, kFlag, kFlag},
    {"BesideTheFlag", {408, 10}, kCaption, kCaption},
    {"OutsideTheFrame", {-1, 10}, kClientHit, kClientHit},
};

INSTANTIATE_TEST_SUITE_P(Points, CaptionHitTest, testing::ValuesIn(kHits),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace kv
