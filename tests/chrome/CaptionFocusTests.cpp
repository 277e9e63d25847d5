#include "chrome/CaptionFocus.h"
#include "chrome/KeyTips.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using kv::CaptionHit;
using kv::CaptionPart;
using kv::CaptionStep;
using kv::CaptionStop;
using kv::KeyTipKind;
using kv::KeyTipPart;

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

KeyTipPart Entry(wchar_t mnemonic)
{
    return {KeyTipKind::Mnemonic, L"Entry", mnemonic};
}

KeyTipPart Tab(const wchar_t* name)
{
    return {KeyTipKind::Tab, name};
}

KeyTipPart Button(const wchar_t* name)
{
    return {KeyTipKind::Button, name};
}

std::wstring Tips(const std::vector<KeyTipPart>& parts, std::wstring_view held = {})
{
    std::wstring tips;
    for (const wchar_t tip : kv::AssignKeyTips(parts, held))
        tips += tip == 0 ? L'-' : tip;
    return tips;
}

TEST(KeyTips, EveryKindHasItsKeys)
{
    struct
    {
        const char* name;
        std::vector<KeyTipPart> parts;
        const wchar_t* tips;
        const wchar_t* held = L"";
    } const rows[] = {
        {"window buttons",
         {Button(L"AppMenu"), Button(L"Minimize"), Button(L"Maximize"), Button(L"Close")},
         L"AMXC"},
        {"an entry beats a button before it", {Button(L"Fine"), Entry(L'F')}, L"IF"},
        {"a lower-case mnemonic has no tip", {Entry(L'f'), Button(L"Fine")}, L"-F"},
        {"two entries with one mnemonic", {Entry(L'E'), Entry(L'E')}, L"E-"},
        {"no letter", {Entry(0), Entry(L'5'), Entry(L'É'), Entry(L'-')}, L"----"},
        {"initials of words first", {Button(L"Media"), Button(L"my Clips"), Button(L"smartTool")}, L"MCS"},
        {"inner capitals are initials", {Button(L"Ab"), Button(L"aTool")}, L"AT"},
        {"any free letter", {Button(L"Абв"), Button(L""), Button(L"B")}, L"ACB"},
        {"tabs by their place", {Tab(L"Design"), Button(L"Design"), Tab(L"Animate")}, L"1D2"},
        {"the host's keys", {Button(L"Maximize"), Tab(L"Text"), Entry(L'M')}, L"ATM", L"MX1"},
        {"the tenth tab",
         {Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"), Tab(L"a"),
          Tab(L"ab"), Tab(L"ab"), Tab(L"ab"), Button(L"b")},
         L"123456789A--B"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Tips(row.parts, row.held), row.tips) << row.name;
}

TEST(KeyTips, AThousandTabsTakeNoKeyFromAnybody)
{
    std::vector<KeyTipPart> parts = {Button(L"Close"), Button(L"Clear")};
    const std::wstring alone = Tips(parts);
    for (int i = 0; i < 1000; ++i)
        parts.push_back(Tab((L"Tab " + std::to_wstring(i) + L"abcdefghijklmnopqrstuvwxyz").c_str()));
    const std::wstring tips = Tips(parts);
    EXPECT_EQ(tips.substr(0, 2), alone);
    std::wstring given = tips;
    given.erase(std::remove(given.begin(), given.end(), L'-'), given.end());
    EXPECT_EQ(given.size(), 9u + 26u);
    EXPECT_EQ(std::set<wchar_t>(given.begin(), given.end()).size(), given.size());
    parts.push_back(Tab(L"One more"));
    EXPECT_EQ(Tips(parts), tips + L"-");
}

} // namespace
