// What is wrong with subtitles, and what is done to their texts and times.
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitleText.h"

#include <gtest/gtest.h>

using namespace titler;

namespace {

TEST(SubtitleCheck, FindsNegativeOverlappingAndFastRows)
{
    const std::vector<TimedText> rows = {
        {0, 50, 10},    // 2 s: fine
        {100, 100, 1},  // no time at all
        {200, 250, 41}, // more than 20 a second
        {240, 300, 5},  // begins before the one above ends
        {-1, 20, 100},  {400, -1, 100},
    };
    EXPECT_EQ(CheckSubtitles(rows, 25),
              (std::vector<unsigned>{0, kSubtitleNegative, kSubtitleFast | kSubtitleOverlap, 0, 0, 0}));
    EXPECT_EQ(CheckSubtitles({{10, 60, 1}, {0, 20, 1}}, 25), (std::vector<unsigned>{0, kSubtitleOverlap}))
        << "whatever the order of the rows";
    EXPECT_TRUE(CheckSubtitles({}, 25).empty());
}

TEST(SubtitleText, SplitsAtTheNearestBreakAndReadsSteps)
{
    using Parts = std::pair<QString, QString>;
    EXPECT_EQ(SplitSubtitle("one\ntwo\nthree", 0.4), Parts("one", "two\nthree"));
    EXPECT_EQ(SplitSubtitle("one two three", 0.9), Parts("one two", "three"));
    EXPECT_EQ(SplitSubtitle("abcdef", 0.5), Parts("abc", "def"));
    EXPECT_EQ(SplitSubtitle(QString::fromUtf8("\U0001F469\u200D\U0001F4BB"), 0.5).first.size() % 5, 0)
        << "a character stays whole";
    EXPECT_EQ(SplitSubtitle("", 0.5), Parts("", ""));
    EXPECT_EQ(ShiftOf("+10", kKvFrameRate25), 10);
    EXPECT_EQ(ShiftOf(" -1:00 ", kKvFrameRate25), -25);
    EXPECT_EQ(ShiftOf("00:00:02:05", kKvFrameRate25), 55);
    EXPECT_EQ(ShiftOf("soon", kKvFrameRate25), std::nullopt);
    EXPECT_EQ(CutOf({10, 20}, 12), 12u);
    EXPECT_EQ(CutOf({10, 20}, 20), 15u) << "out is exclusive";
    EXPECT_EQ(CutOf({10, 11}, 10), kNoTime);
    EXPECT_EQ(CutOf({kNoTime, 20}, 12), kNoTime);
    EXPECT_EQ(MergedTimes({{kNoTime, 5}, {10, kNoTime}, {7, 9}}), (SubtitleTimes{7, 9}));
    EXPECT_EQ(MergedTimes({{}, {}}), SubtitleTimes());
    EXPECT_EQ(Shifted({10, kNoTime}, -10), (SubtitleTimes{0, kNoTime}));
    EXPECT_EQ(Shifted({10, 30}, -11), std::nullopt);
    EXPECT_EQ(Shifted({10, kNoTime - 1}, 1), std::nullopt);
}

TEST(SubtitleText, SplitsOutsideOfMarkupAndKeepsIt)
{
    const struct
    {
        const char* why;
        const char* text;
        std::pair<QString, QString> parts;
    } rows[] = {
        {"open tags", "<i>one <b>two three</b></i>", {"<i>one <b>two</b></i>", "<i><b>three</b></i>"}},
        {"closed ones", "<i>one</i> two", {"<i>one</i>", "two"}},
        {"blanks in a tag",
         "<font color=\"red\">ab cd</font>",
         {"<font color=\"red\">ab</font>", "<font color=\"red\">cd</font>"}},
        {"placement", "{\\an8}ab\ncd", {"{\\an8}ab", "{\\an8}cd"}},
        {"the length is that of what is read",
         "<font color=\"#123456\">a</font> b c d e",
         {"<font color=\"#123456\">a</font> b c", "d e"}},
        {"no markup", "a < b > c d", {"a < b", "> c d"}},
        {"not closed", "<i ab", {"<i", "ab"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SplitSubtitle(row.text, 0.5), row.parts) << row.why;
}

TEST(SubtitleText, CountsWhatIsRead)
{
    const std::pair<const char*, int> rows[] = {
        {"<i>ab</i>\ncd", 4},
        {"{\\an8}ab", 2},
        {"a < b", 5},
        {"<3 {x}", 6},
        {"e\u0301", 1},
        {"\U0001F469\u200D\U0001F4BB", 1},
        {"\u4f60\n\u597d", 2},
        {"", 0},
        {"<", 1},
        {"{\\", 2},
        {"</", 2},
    };
    for (const auto& [text, characters] : rows)
        EXPECT_EQ(CharactersOf(QString::fromUtf8(text)), characters) << text;
}

TEST(SubtitleText, FramesGoByTimeFromRateToRate)
{
    const FrameRate film = FrameRateOf(kKvFrameRate23_976);
    const FrameRate pal = FrameRateOf(kKvFrameRate25);
    const FrameRate fast = FrameRateOf(kKvFrameRate59_94);
    EXPECT_EQ(FrameAtRate(100, pal, FrameRateOf(kKvFrameRate50)), 200u);
    EXPECT_EQ(ShownAtRate(11, FrameRateOf(kKvFrameRate50), pal), 5u);
    EXPECT_EQ(FirstAtRate(11, FrameRateOf(kKvFrameRate50), pal), 6u);
    EXPECT_EQ(FrameAtRate(kNoTime - 1, pal, fast), kNoTime - 1) << "no overflow";
    for (DWORD frame = 0; frame < 100000; frame += 7) {
        EXPECT_EQ(FrameAtRate(FrameAtRate(frame, film, fast), fast, film), frame);
        // Where the play head is sent to, the row is shown, and a frame earlier it is not.
        const DWORD first = FirstAtRate(frame, pal, film);
        EXPECT_GE(ShownAtRate(first, film, pal), frame);
        if (first > 0) {
            EXPECT_LT(ShownAtRate(first - 1, film, pal), frame);
        }
    }
    EXPECT_EQ(RateText(film), "23.976");
    EXPECT_EQ(RateText(pal), "25");
}

} // namespace
