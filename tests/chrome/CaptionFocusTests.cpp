#include "chrome/CaptionFocus.h"

#include <gtest/gtest.h>

namespace {

using kv::CaptionHit;
using kv::CaptionPart;
using kv::CaptionStep;
using kv::CaptionStop;

/// As a bar of 500 pixels has them: the window buttons in the order of their numbers, two items, the flag.
kv::CaptionParts Parts()
{
    kv::CaptionParts parts;
    parts.buttons = {{10000, {4, 2, 84, 23}},
                     {10001, {462, 0, 496, 22}},
                     {10002, {428, 0, 462, 22}},
                     {10003, {394, 0, 428, 22}},
                     {10004, {360, 0, 394, 22}}};
    parts.items = {{120, 5, 160, 21}, {170, 5, 200, 21}};
    parts.flag = {242, 2, 258, 18};
    return parts;
}

std::string Order(const std::vector<CaptionStop>& stops)
{
    std::string order;
    for (const CaptionStop& stop : stops) {
        order += stop.hit.part == CaptionPart::Item ? "i" : stop.hit.part == CaptionPart::Flag ? "f" : "";
        order += (stop.hit.part == CaptionPart::Flag ? "" : std::to_string(stop.hit.index)) + " ";
    }
    return order;
}

TEST(CaptionFocus, PartsAreWalkedFromLeftToRight)
{
    kv::CaptionParts parts = Parts();
    EXPECT_EQ(Order(CaptionStops(parts)), "10000 i0 i1 f 10004 10003 10002 10001 ");
    // A frame so narrow that the application button stands under the others.
    parts.buttons[0].second = {400, 2, 480, 23};
    parts.flag = {};
    EXPECT_EQ(Order(CaptionStops(parts)), "10000 i0 i1 10004 10003 10002 10001 ");
    parts.buttons.clear();
    EXPECT_EQ(Order(CaptionStops(parts)), "i0 i1 ");
}

struct Walk
{
    const char* name;
    std::vector<int> disabled;
    int from;
    CaptionStep step;
    int to;
};

TEST(CaptionFocus, StepsPassOverWhatIsDisabled)
{
    const Walk walks[] = {
        {"next", {}, 1, CaptionStep::Next, 2},
        {"over a disabled one", {2, 3}, 1, CaptionStep::Next, 4},
        {"back over a disabled one", {2, 3}, 4, CaptionStep::Previous, 1},
        {"beyond the right end", {0}, 7, CaptionStep::Next, 1},
        {"beyond the left end", {}, 0, CaptionStep::Previous, 7},
        {"first", {0}, 5, CaptionStep::First, 1},
        {"last", {7, 6}, 1, CaptionStep::Last, 5},
        {"from nowhere", {}, -1, CaptionStep::Next, 0},
        {"back from nowhere", {}, -1, CaptionStep::Previous, 7},
        {"the only one stays", {0, 1, 2, 4, 5, 6, 7}, 3, CaptionStep::Next, 3},
        {"none is enabled", {0, 1, 2, 3, 4, 5, 6, 7}, 3, CaptionStep::Next, -1},
    };
    for (const Walk& walk : walks) {
        std::vector<CaptionStop> stops = CaptionStops(Parts());
        for (const int disabled : walk.disabled)
            stops[static_cast<std::size_t>(disabled)].enabled = false;
        EXPECT_EQ(kv::WalkStops(stops, walk.from, walk.step), walk.to) << walk.name;
    }
    EXPECT_EQ(kv::WalkStops({}, -1, CaptionStep::Next), -1);
}

TEST(CaptionFocus, EntersAtTheSelectedItem)
{
    std::vector<CaptionStop> stops = CaptionStops(Parts());
    EXPECT_EQ(kv::EntryStop(stops, 1), 2);
    EXPECT_EQ(kv::EntryStop(stops, -1), 1) << "the first item, not the application button";
    stops[2].enabled = false;
    EXPECT_EQ(kv::EntryStop(stops, 1), 1);
    stops[1].enabled = false;
    EXPECT_EQ(kv::EntryStop(stops, 1), 0) << "no item is enabled";
    EXPECT_EQ(kv::EntryStop({}, 0), -1);
}

} // namespace
