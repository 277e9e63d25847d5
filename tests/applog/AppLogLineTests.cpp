// What log lines say, how they follow one another, and how they are found.
#include "applog/AppLogIntake.h"
#include "applog/AppLogLine.h"
#include "applog/AppLogMatcher.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

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
    const struct
    {
        const char* what;
        SYSTEMTIME before, next;
        bool isNewDay;   ///< of messages
        bool isSameDate; ///< of separators
    } rows[] = {
        {"none before", {}, day, false, false},
        {"the same", day, day, false, true},
        {"the next day", day, At(2016, 3, 2), true, false},
        {"the same day of another month", day, At(2016, 4, 1), false, false},
        {"the same day of another year", day, At(2017, 3, 1), false, false},
        {"year 0 is no time", At(0, 3, 1), At(0, 3, 2), false, false},
        {"year 0 again", At(0, 3, 1), At(0, 3, 1), false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kv::IsNewAppLogDay(row.before, row.next), row.isNewDay) << row.what;
        kv::AppLogDates dates;
        dates.separator = row.before;
        EXPECT_EQ(dates.IsSameDate(row.next), row.isSameDate) << row.what;
        dates = {{}, row.before};
        EXPECT_FALSE(dates.IsSameDate(row.next)) << row.what << ": messages are no separators";
    }
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
    constexpr std::size_t kUnits = std::wstring_view(L"\U00010400").size();
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
        {"beyond the first plane",
         L"\U00010400",
         false,
         L"\U00010428\U00010400",
         {{0, kUnits}, {kUnits, kUnits}}},
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

TEST(AppLogMatcher, GoesFromMatchToMatchAndRound)
{
    const struct
    {
        const char* what;
        int from, step, next;
    } rows[] = {
        {"forwards", 1, 1, 4},
        {"backwards", 4, -1, 1},
        {"between", 2, 1, 4},
        {"round", 4, 1, 1},
        {"round backwards", 1, -1, 4},
        {"from nowhere", -1, 1, 1},
        {"from nowhere backwards", -1, -1, 4},
    };
    for (const auto& row : rows)
        EXPECT_EQ(kv::NextAppLogMatch(6, row.from, row.step, [](int line) { return line % 3 == 1; }),
                  row.next)
            << row.what;
    const auto isTwo = [](int line) { return line == 2; };
    EXPECT_EQ(kv::NextAppLogMatch(3, 2, 1, isTwo), 2) << "the only one is found again";
    EXPECT_EQ(kv::NextAppLogMatch(2, 0, -1, isTwo), -1);
    EXPECT_EQ(kv::NextAppLogMatch(0, -1, 1, isTwo), -1);
}

// Lines as numbers of their messages, a date line with the sign turned over.
struct PlainLog
{
    std::deque<int> lines;
    SYSTEMTIME last{};

    void Add(int number, const SYSTEMTIME& time, int maximum)
    {
        if (kv::IsNewAppLogDay(last, time))
            lines.push_back(-number);
        lines.push_back(number);
        last = time;
        lines.erase(lines.begin(),
                    lines.begin() + kv::AppLogLinesToTrim(static_cast<int>(lines.size()), maximum));
    }
    void Add(const kv::AppLogIntake::Entry& entry)
    {
        if (entry.isNewDay)
            lines.push_back(-entry.message.level);
        lines.push_back(entry.message.level);
        last = entry.message.time;
        while (entry.keeps > 0 && static_cast<int>(lines.size()) > entry.keeps)
            lines.pop_front();
    }
};

TEST(AppLogIntake, LeavesTheLinesThatAddingEachLeaves)
{
    std::mt19937 random(3);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int round = 0; round < 1000; ++round) {
        PlainLog plain;
        for (int i = below(40); i > 0; --i)
            plain.lines.push_back(0); // separators, of which there may be too many
        PlainLog taken = plain;
        kv::AppLogIntake intake;
        int number = 0;
        const int days = 1 + below(3);
        const auto leave = static_cast<kv::AppLogIntake::Leave>(below(2));
        for (int turn = 0; turn < 5; ++turn) {
            const int maximum = below(30);
            kv::AppLogBatch batch(maximum);
            for (int i = below(turn == 2 ? 1000 : 100); i > 0; --i) {
                // Days that alternate, that stay, or anyhow.
                const auto day = static_cast<WORD>(days == 1 ? i % 2 : days == 2 ? i / 50 : below(3));
                const SYSTEMTIME time = At(static_cast<WORD>(below(9) > 0 ? 2020 : 0), 1, day);
                plain.Add(++number, time, maximum);
                batch.Add({0, static_cast<WORD>(number), time, {}});
            }
            EXPECT_LE(batch.Messages().size(), static_cast<std::size_t>(std::max(maximum, 1)));
            intake.Plan(std::move(batch), static_cast<int>(taken.lines.size()), taken.last, leave);
            for (int i = turn < 4 ? below(20) : 10000; i > 0 && !intake.IsEmpty(); --i)
                taken.Add(intake.Take());
        }
        ASSERT_EQ(taken.lines, plain.lines) << round;
    }
}

} // namespace
