// What log lines say, how they follow one another, and how they are found.
#include "applog/AppLogLine.h"
#include "applog/AppLogMatcher.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

namespace {

SYSTEMTIME At(WORD year, WORD month, WORD day)
{
    return {year, month, 0, day, 0, 0, 0, 0};
}

TEST(AppLogLine, TextsOfDatesTimesAndLevels)
{
    const struct
    {
        const char* what;
        SYSTEMTIME time;
        const wchar_t* date;
        const wchar_t* text;
    } rows[] = {
        {"ordinary", {2016, 3, 0, 1, 9, 5, 7, 42}, L"2016/03/01 - Tuesday", L"2016/03/01-09:05:07.042"},
        {"the weekday given does not count",
         {2024, 2, 5, 29, 23, 59, 59, 999},
         L"2024/02/29 - Thursday",
         L"2024/02/29-23:59:59.999"},
        {"no leap year", {1900, 3, 0, 1, 0, 0, 0, 0}, L"1900/03/01 - Thursday", L"1900/03/01-00:00:00.000"},
        {"no time", {}, L"1970/01/01 - Thursday", L"1970/01/01-00:00:00.000"},
        {"too early", {1899, 12, 0, 31, 5, 0, 0, 7}, L"1970/01/01 - Thursday", L"1970/01/01-00:00:00.007"},
        {"month and day beyond the end run on",
         {2023, 14, 0, 30, 0, 0, 0, 0},
         L"2023/14/30 - Friday",
         L"2023/14/30-00:00:00.000"},
        {"all zero but the year",
         {2023, 0, 0, 0, 0, 0, 0, 0},
         L"2023/00/00 - Wednesday",
         L"2023/00/00-00:00:00.000"},
        {"largest", {65535, 12, 0, 31, 1, 2, 3, 4}, L"65535/12/31 - Tuesday", L"65535/12/31-01:02:03.004"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kv::AppLogDateText(row.time), row.date) << row.what;
        EXPECT_EQ(kv::AppLogTimeText(row.time), row.text) << row.what;
    }
    EXPECT_EQ(kv::AppLogLevelText(5), L"05");
    EXPECT_EQ(kv::AppLogLevelText(65535), L"65535");
    EXPECT_EQ(kv::AppLogLineText(L"3", L"02", L"now", L"a]\nb"), L"[3][02][now][a]\nb]");
}

TEST(AppLogLine, ATextWithoutTerminatorHas512Characters)
{
    SKvAppLogMsgData message{};
    std::fill(std::begin(message.text), std::end(message.text), L'x');
    EXPECT_EQ(kv::AppLogText(message), std::wstring(512, L'x'));
    kv::SetAppLogText(message, L"short");
    EXPECT_EQ(kv::AppLogText(message), L"short");
    kv::SetAppLogText(message, std::wstring(600, L'y'));
    EXPECT_EQ(kv::AppLogText(message), std::wstring(512, L'y'));
}

TEST(AppLogLine, TypesByTheirText)
{
    for (const auto& [text, type] : {std::pair(L"0", 0), std::pair(L"9", 9), std::pair(L"#", -1),
                                     std::pair(L"", -1), std::pair(L"10", -1)})
        EXPECT_EQ(kv::AppLogTypeOf(text), type) << type;
}

TEST(AppLogLine, DatesAskForLinesOfTheirOwn)
{
    const SYSTEMTIME day = At(2016, 3, 1);
    kv::AppLogDates dates;
    EXPECT_FALSE(dates.IsNewDay(day)) << "the first message";
    EXPECT_FALSE(dates.IsSameDate(day)) << "the first separator";
    dates.message = day;
    EXPECT_TRUE(dates.IsNewDay(At(2016, 3, 2)));
    EXPECT_FALSE(dates.IsNewDay(At(2017, 4, 1))) << "only the day of the month counts";
    EXPECT_FALSE(dates.IsSameDate(day)) << "messages and separators do not know of one another";
    dates = {day, {}};
    EXPECT_TRUE(dates.IsSameDate(day));
    EXPECT_FALSE(dates.IsSameDate(At(2016, 4, 1)));
    EXPECT_FALSE(dates.IsSameDate(At(2017, 3, 1)));
    EXPECT_FALSE(dates.IsNewDay(At(2016, 3, 2)));
    dates = {At(0, 3, 1), At(0, 3, 1)};
    EXPECT_FALSE(dates.IsSameDate(At(0, 3, 1)) || dates.IsNewDay(At(0, 3, 2))) << "year 0 is no time";
}

TEST(AppLogLine, AFullLogFallsBackToAQuarter)
{
    const struct
    {
        int count, maximum, goes;
    } rows[] = {{7, 8, 0},
                {8, 8, 6},
                {3, 3, 2},
                {499, 500, 0},
                {500, 500, 375},
                {2, 2, 1},
                {1, 1, 0},
                {2, 1, 1},
                {1, 0, 0},
                {5, 0, 4},
                {0, 0, 0},
                {9000, 8, 8998},
                {65535, 65535, 49152}};
    for (const auto& row : rows)
        EXPECT_EQ(kv::AppLogLinesToTrim(row.count, row.maximum), row.goes)
            << row.count << " of " << row.maximum;
}

TEST(AppLogMatcher, FindsTexts)
{
    using Matches = std::vector<kv::AppLogMatcher::Match>;
    const struct
    {
        const char* what;
        const wchar_t* text;
        bool matchCase;
        const wchar_t* line;
        Matches matches;
    } rows[] = {
        {"every place", L"ab", false, L"abAB ab", {{0, 2}, {2, 2}, {5, 2}}},
        {"case", L"AB", true, L"abAB ab", {{2, 2}}},
        {"none over another", L"aa", false, L"aaaaa", {{0, 2}, {2, 2}}},
        {"beyond ASCII", L"ÄÖ", false, L"xäöx", {{1, 2}}},
        {"Greek", L"σ", false, L"Σς", {{0, 1}, {1, 1}}},
        {"longer than the line", L"abc", false, L"ab", {}},
        {"nothing to look for", L"", true, L"ab", {}},
        {"empty line", L"a", true, L"", {}},
    };
    for (const auto& row : rows) {
        const kv::AppLogMatcher matcher(row.text, row.matchCase);
        EXPECT_EQ(matcher.All(row.line), row.matches) << row.what;
        EXPECT_EQ(matcher.IsIn(row.line), !row.matches.empty()) << row.what;
    }
}

} // namespace
