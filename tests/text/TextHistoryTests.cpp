// The texts that an entry field had before.
#include "text/TextHistory.h"

#include <gtest/gtest.h>

namespace {

TEST(TextHistory, KeepsTheLastTenOnce)
{
    kv::TextHistory history;
    for (int number = 0; number < 12; ++number)
        history.Use(std::to_wstring(number));
    history.Use(L"");
    history.Use(L"5");
    const std::vector<std::wstring> expected{L"5", L"11", L"10", L"9", L"8", L"7", L"6", L"4", L"3", L"2"};
    EXPECT_EQ(history.Texts(), expected);
}

TEST(TextHistory, WalksThereAndBack)
{
    struct Case
    {
        const char* name;
        std::wstring typed;
        const char* steps; ///< u and d
        std::wstring shown;
    };
    const Case cases[] = {
        {"newest first", L"draft", "u", L"b"},
        {"the oldest stays", L"draft", "uuuu", L"a"},
        {"back", L"draft", "uud", L"b"},
        {"back to what was typed", L"draft", "uudd", L"draft"},
        {"not beyond it", L"draft", "uddd", L"draft"},
        {"nothing newer", L"draft", "d", L"draft"},
        {"a step shows something new", L"b", "u", L"a"},
        {"on the way back too", L"b", "ud", L"b"},
        {"and from there again", L"b", "udu", L"a"},
        {"an empty field", L"", "ud", L""},
    };
    for (const Case& one : cases) {
        kv::TextHistory history;
        history.Use(L"a");
        history.Use(L"b");
        std::wstring shown = one.typed;
        for (const char* step = one.steps; *step; ++step)
            shown = *step == 'u' ? history.Older(shown) : history.Newer(shown);
        EXPECT_EQ(shown, one.shown) << one.name;
    }
    kv::TextHistory history;
    EXPECT_EQ(history.Older(L"alone"), L"alone");
    EXPECT_EQ(history.Newer(L"alone"), L"alone");
}

} // namespace
