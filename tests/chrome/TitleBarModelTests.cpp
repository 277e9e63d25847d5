// Look-ups, selection and removal in the records of a title bar.
#include "chrome/TitleBarModel.h"

#include <gtest/gtest.h>

namespace {

using kv::CaptionRecords;
using kv::SKvTitleBarData;

SKvTitleBarData Bar(const wchar_t* text = L"Titles", bool shortLabels = false)
{
    return {L"key", text, nullptr, 1, nullptr, shortLabels};
}

TEST(TitleBarModel, TextsAreCutAndDefaultToTheButtonText)
{
    const std::wstring longName(200, L'n');
    const std::wstring longKey(300, L'k');
    const SKvTitleBarData bar(longKey.c_str(), longName.c_str(), longName.c_str(), 7, nullptr, false);
    EXPECT_EQ(bar.imageKey, longKey.substr(0, 259));
    EXPECT_EQ(bar.buttonText, longName.substr(0, 63));
    EXPECT_EQ(bar.switchName, longName.substr(0, 63));

    const SKvTitleBarData empty(nullptr, nullptr, nullptr, 0, nullptr, true);
    EXPECT_TRUE(empty.imageKey.empty() && empty.buttonText.empty() && empty.switchName.empty());
    EXPECT_EQ(empty.productLabel + empty.documentLabel, L"KolvaUntitled");
    EXPECT_EQ(SKvTitleBarData(L"", L"a", L"", 0, nullptr, false).switchName, L"") << "given, though empty";
}

TEST(TitleBarModel, ShortLabelsReplaceEveryLongOne)
{
    EXPECT_EQ(Bar(L"NovCGNovCG Live", true).switchName, L"CG CG  Live");
    EXPECT_EQ(Bar(L"NovNovCGCG", true).buttonText, L"NovCG CG") << "one pass only";
    EXPECT_EQ(Bar(L"NovCG", false).buttonText, L"NovCG");
    const std::wstring tail(61, L'x');
    EXPECT_EQ(Bar((L"NovCG" + tail).c_str(), true).buttonText, L"CG " + tail.substr(0, 60));
}

TEST(TitleBarModel, TabsAreFoundByTheirCutNameAndTheFirstWins)
{
    SKvTitleBarData bar = Bar();
    const std::wstring kept(63, L'n');
    for (const std::wstring& name : {std::wstring(L"a"), kept, std::wstring(L"a"), std::wstring()})
        bar.items.emplace_back().text = name;
    EXPECT_EQ(bar.FindItem(L"a"), 0);
    EXPECT_EQ(bar.FindItem((kept + L"different ends").c_str()), 1);
    EXPECT_EQ(bar.FindItem(L"A"), -1);
    EXPECT_EQ(bar.FindItem(nullptr), 3);
}

struct Activation
{
    const char* name;
    const char* tabs; // one letter each: f flagged, s selected, b both, - neither; upper case is disabled
    int expected;
};

TEST(TitleBarModel, ActivationPassesOverDisabledTabs)
{
    const Activation rows[] = {
        {"no tabs", "", -1},
        {"the first tab", "--", 0},
        {"a flagged one", "-ff", 1},
        {"a flag goes before the selection", "-sf", 2},
        {"the selection without a flag", "--s", 2},
        {"a disabled flag is passed over", "-Ff", 2},
        {"the selection after a disabled flag", "-Fs", 2},
        {"a disabled selection is left", "_-S", 1},
        {"only disabled ones, one selected", "_SF", 1},
        {"only disabled ones", "_F", -1},
        {"flagged, selected and disabled", "-B", 0},
    };
    for (const Activation& row : rows) {
        SKvTitleBarData bar = Bar();
        for (const char* tab = row.tabs; *tab; ++tab) {
            kv::SKvRibbonItem& item = bar.items.emplace_back();
            const std::string kind(1, *tab);
            item.flag = kind.find_first_of("fFbB") == 0 ? -1 : 0;
            item.selected = kind.find_first_of("sSbB") == 0;
            item.disabled = kind.find_first_of("_FSB") == 0;
        }
        EXPECT_EQ(bar.ItemToActivate(), row.expected) << row.name;
    }
}

struct Removal
{
    const char* name;
    int count, active, removed;
    int expected;     // the active index afterwards
    std::uint32_t id; // of the record there
};

TEST(TitleBarModel, RemovalCountsPositionsAfterwards)
{
    const Removal rows[] = {
        {"an earlier one keeps the active one", 3, 2, 0, 1, 2},
        {"the active one gives way to the one before", 3, 1, 1, 0, 0},
        {"the first active one gives way to the new first", 3, 0, 0, 0, 1},
        {"a later one changes nothing", 3, 1, 2, 1, 1},
        {"the only one leaves none", 1, 0, 0, -1, 0},
        {"nothing was active", 2, -1, 0, -1, 0},
    };
    for (const Removal& row : rows) {
        CaptionRecords bars;
        for (std::uint32_t id = 0; id < static_cast<std::uint32_t>(row.count); ++id)
            bars.Add(std::make_unique<SKvTitleBarData>(nullptr, nullptr, nullptr, id, nullptr, false));
        bars.Activate(row.active);
        EXPECT_EQ(bars.Remove(row.removed)->id, static_cast<std::uint32_t>(row.removed));
        EXPECT_EQ(bars.ActiveIndex(), row.expected) << row.name;
        if (bars.Active()) {
            EXPECT_EQ(bars.Active()->id, row.id) << row.name;
        }
    }
}

TEST(TitleBarModel, TheMenuNamesTheFirstFourApplicationsFromTwoOn)
{
    CaptionRecords bars;
    for (const std::size_t entries : {0u, 0u, 2u, 3u, 4u, 4u}) {
        EXPECT_EQ(kv::MenuApplications(bars).size(), entries);
        bars.Add(std::make_unique<SKvTitleBarData>(L"", L"", nullptr, 1, nullptr, false));
    }
}

} // namespace
