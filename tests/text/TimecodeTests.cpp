#include "KvTimecode.h"
#include "core/TextTables.h"
#include "text/TimecodeEdit.h"

#include <cwchar>
#include <gtest/gtest.h>

namespace {

std::wstring Shown(DWORD frame, EKvFrameRate rate, bool dropFrame)
{
    std::wstring text;
    KvTimecode::ToText(frame, rate, dropFrame, text);
    return text;
}

/// Counts labels as a clock does, one frame at a time.
struct LabelClock
{
    int nominal;
    int dropped;
    int hours = 0, minutes = 0, seconds = 0, frames = 0;

    void Tick()
    {
        if (++frames < nominal)
            return;
        frames = 0;
        if (++seconds < 60)
            return;
        seconds = 0;
        minutes = (minutes + 1) % 60;
        hours += minutes == 0 ? 1 : 0;
        if (minutes % 10 != 0)
            frames = dropped;
    }
    bool Shows(const std::wstring& text) const
    {
        const int numbers[] = {hours, minutes, seconds, frames};
        bool same = text.size() == 11 && text[8] == (dropped > 0 ? L';' : L':');
        for (std::size_t i = 0; same && i < 4; ++i)
            same = text[3 * i] == L'0' + numbers[i] / 10 && text[3 * i + 1] == L'0' + numbers[i] % 10;
        return same;
    }
};

struct DayCase
{
    const char* name;
    EKvFrameRate rate;
    bool dropFrame;
    int nominal;
    int dropped;
    DWORD frames;
};

class WholeDay : public testing::TestWithParam<DayCase>
{
};

TEST_P(WholeDay, EveryFrameIsWrittenAndReadAgain)
{
    const DayCase& day = GetParam();
    LabelClock clock{day.nominal, day.dropped};
    std::wstring text;
    DWORD read = 0;
    DWORD frame = 0;
    for (bool same = true; frame < day.frames && same; clock.Tick()) {
        same = KvTimecode::ToText(frame, day.rate, day.dropFrame, text) && clock.Shows(text) &&
               KvTimecode::FromText(text, day.rate, day.dropFrame, read) && read == frame;
        frame += same ? 1 : 0;
    }
    EXPECT_EQ(frame, day.frames) << "the first that differs";
    EXPECT_EQ(clock.hours, 24);
    EXPECT_EQ(Shown(day.frames, day.rate, day.dropFrame), Shown(0, day.rate, day.dropFrame));
}

INSTANTIATE_TEST_SUITE_P(Timecode, WholeDay,
                         testing::Values(DayCase{"At23_976", kKvFrameRate23_976, true, 24, 0, 2073600},
                                         DayCase{"At24", kKvFrameRate24, true, 24, 0, 2073600},
                                         DayCase{"At25", kKvFrameRate25, true, 25, 0, 2160000},
                                         DayCase{"At29_97", kKvFrameRate29_97, false, 30, 0, 2592000},
                                         DayCase{"At29_97Drop", kKvFrameRate29_97, true, 30, 2, 2589408},
                                         DayCase{"At30", kKvFrameRate30, true, 30, 0, 2592000},
                                         DayCase{"At50", kKvFrameRate50, true, 50, 0, 4320000},
                                         DayCase{"At59_94", kKvFrameRate59_94, false, 60, 0, 5184000},
                                         DayCase{"At59_94Drop", kKvFrameRate59_94, true, 60, 4, 5178816},
                                         DayCase{"At60", kKvFrameRate60, true, 60, 0, 5184000}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Timecode, ReadsLabels)
{
    constexpr DWORD refused = 0xFFFFFFFF;
    const struct
    {
        const char* name;
        const wchar_t* text;
        EKvFrameRate rate;
        bool dropFrame;
        DWORD frame;
    } rows[] = {
        {"all fields", L"1:02:03:04", kKvFrameRate25, false, 93079},
        {"digits in pairs from the right", L"1020304", kKvFrameRate25, false, 93079},
        {"semicolons without drop frame", L"01;02;03;04", kKvFrameRate25, false, 93079},
        {"colons with drop frame", L"00:01:00:02", kKvFrameRate29_97, true, 1800},
        {"frames alone", L"7", kKvFrameRate25, false, 7},
        {"three digits", L"112", kKvFrameRate25, false, 37},
        {"one digit a field", L"1:2", kKvFrameRate25, false, 27},
        {"white space around it", L" \t1:12\r\n", kKvFrameRate25, false, 37},
        {"the last of a day", L"23:59:59:24", kKvFrameRate25, false, 2159999},
        {"a tenth minute keeps all", L"00:10:00;00", kKvFrameRate29_97, true, 17982},
        {"drop frame ignored at 25", L"00:01:00:00", kKvFrameRate25, true, 1500},
        {"left out at 29.97", L"00:01:00;01", kKvFrameRate29_97, true, refused},
        {"left out at 59.94", L"00:01:00;03", kKvFrameRate59_94, true, refused},
        {"not left out without drop frame", L"00:01:00;01", kKvFrameRate29_97, false, 1801},
        {"a day", L"24:00:00:00", kKvFrameRate25, false, refused},
        {"60 minutes", L"60:00:00", kKvFrameRate25, false, refused},
        {"60 seconds", L"60:00", kKvFrameRate25, false, refused},
        {"the rate's frames", L"25", kKvFrameRate25, false, refused},
        {"empty", L"", kKvFrameRate25, false, refused},
        {"empty field", L"1::2", kKvFrameRate25, false, refused},
        {"leading separator", L":12", kKvFrameRate25, false, refused},
        {"trailing separator", L"12:", kKvFrameRate25, false, refused},
        {"five fields", L"0:0:0:0:1", kKvFrameRate25, false, refused},
        {"nine digits", L"000000001", kKvFrameRate25, false, refused},
        {"three digits in a field", L"001:12", kKvFrameRate25, false, refused},
        {"a sign", L"-1", kKvFrameRate25, false, refused},
        {"another separator", L"1.12", kKvFrameRate25, false, refused},
        {"rate above the table", L"1", static_cast<EKvFrameRate>(8), false, refused},
        {"rate below the table", L"1", static_cast<EKvFrameRate>(-1), true, refused},
    };
    for (const auto& row : rows) {
        DWORD frame = refused;
        EXPECT_EQ(KvTimecode::FromText(row.text, row.rate, row.dropFrame, frame), row.frame != refused)
            << row.name;
        EXPECT_EQ(frame, row.frame) << row.name;
    }
}

TEST(Timecode, WritesWhatIsNoFrameOfADay)
{
    EXPECT_EQ(Shown(2160000 + 37, kKvFrameRate25, false), L"00:00:01:12");
    EXPECT_EQ(Shown(0xFFFFFFFE, kKvFrameRate25, false), L"09:51:31:19");
    std::wstring text = L"old";
    EXPECT_FALSE(KvTimecode::ToText(0xFFFFFFFF, kKvFrameRate25, false, text));
    EXPECT_EQ(text, L"");
    text = L"old";
    EXPECT_FALSE(KvTimecode::ToText(0, static_cast<EKvFrameRate>(8), false, text));
    EXPECT_EQ(text, L"");
}

TEST(TimecodeEdit, ReadsWhatIsTyped)
{
    using namespace kv;
    constexpr TimecodeFormat plain;
    constexpr TimecodeFormat drop{kKvFrameRate29_97, true, 0};
    constexpr TimecodeFormat hourLater{kKvFrameRate25, false, 90000};
    constexpr TimecodeFormat lastOffset{kKvFrameRate25, false, 0xFFFFFFFF};
    const struct
    {
        const char* name;
        const wchar_t* text;
        std::uint32_t present;
        TimecodeFormat format;
        std::uint32_t frame;
        std::uint32_t refusal;
    } rows[] = {
        {"a label", L"1:12", 5, plain, 37, 0},
        {"empty", L"", 5, plain, kNoTimecode, 0},
        {"white space alone", L"  ", 5, plain, kNoTimecode, 0},
        {"empty stays empty", L"", kNoTimecode, plain, kNoTimecode, 0},
        {"frames later", L"+10", 5, plain, 15, 0},
        {"a second earlier", L"-1:00", 30, plain, 5, 0},
        {"space after the sign", L"- 1:00 ", 30, plain, 5, 0},
        {"a number is frames", L"+100", 5, plain, 105, 0},
        {"a number of many digits", L"+0000000000001", 5, plain, 6, 0},
        {"a number beyond all", L"+99999999999999999999", 5, plain, 5, kOutOfRangeTimecodeText},
        {"a field larger than a label's", L"+90:99", 0, plain, 2349, 0},
        {"from an empty cell", L"+10", kNoTimecode, plain, 10, 0},
        {"nothing", L"+0", 5, plain, 5, 0},
        {"steps ask no labels", L"+1:00:00", 0, drop, 1800, 0},
        {"below 0", L"-6", 5, plain, 5, kOutOfRangeTimecodeText},
        {"below 0 from an empty cell", L"-1", kNoTimecode, plain, kNoTimecode, kOutOfRangeTimecodeText},
        {"the largest", L"+1", 0xFFFFFFFD, plain, 0xFFFFFFFE, 0},
        {"beyond the largest", L"+1", 0xFFFFFFFE, plain, 0xFFFFFFFE, kOutOfRangeTimecodeText},
        {"a sign alone", L"+", 5, plain, 5, kNoTimecodeText},
        {"two signs", L"+-1", 5, plain, 5, kNoTimecodeText},
        {"a word", L"soon", 5, plain, 5, kNoTimecodeText},
        {"an impossible label", L"25", 5, plain, 5, kImpossibleTimecodeText},
        {"a day", L"24:00:00:00", 5, plain, 5, kImpossibleTimecodeText},
        {"a label left out", L"1:00;00", 5, drop, 5, kLeftOutTimecodeText},
        {"offset", L"1:00:00:01", 5, hourLater, 1, 0},
        {"offset before its begin", L"0", 5, hourLater, 2160000 - 90000, 0},
        {"the largest offset", L"9:51:31:20", 5, lastOffset, 0, 0},
        {"unchanged beyond a day", L"00:00:01:12", 2160037, plain, 2160037, 0},
        {"another writing of it", L"1:12", 2160037, plain, 37, 0},
        {"unchanged with offset", L"01:00:00:00", 2160000, hourLater, 2160000, 0},
        {"rate outside the table", L"1", 5, {static_cast<EKvFrameRate>(9), false, 0}, 5, kNoTimecodeText},
    };
    for (const auto& row : rows) {
        const TimecodeEntry entry = ReadTimecodeEntry(row.text, row.present, row.format);
        EXPECT_EQ(entry.frame, row.frame) << row.name;
        EXPECT_EQ(entry.refusal, row.refusal) << row.name;
        EXPECT_EQ(LoadText(row.refusal).empty(), row.refusal == 0) << row.name;
    }
}

TEST(TimecodeEdit, ShowsTheSumModuloADay)
{
    using namespace kv;
    EXPECT_EQ(TimecodeText(kNoTimecode, {}), L"");
    EXPECT_EQ(TimecodeText(2159999, {kKvFrameRate25, false, 1}), L"00:00:00:00");
    EXPECT_EQ(TimecodeText(0xFFFFFFFE, {kKvFrameRate25, false, 0xFFFFFFFF}), L"19:43:03:14");
    // Whatever the offset, what is shown reads back as the frame of that day.
    for (const std::uint32_t offset : {0u, 1u, 107891u, 2589407u, 0x80000000u, 0xFFFFFFFFu}) {
        for (std::uint32_t frame = 0; frame < 2589408; frame += 9973) {
            const TimecodeFormat format{kKvFrameRate29_97, true, offset};
            EXPECT_EQ(ReadTimecodeEntry(TimecodeText(frame, format), kNoTimecode, format).frame, frame)
                << offset;
        }
    }
}

TEST(TimecodeEdit, KnowsWholeTimecodes)
{
    for (const wchar_t* whole : {L"01:02:03:04", L"1:2:3;4\n", L"01020304"})
        EXPECT_TRUE(kv::IsWholeTimecode(whole)) << std::wcslen(whole);
    for (const wchar_t* part : {L"", L"02:03:04", L"1020304", L"+01:02:03:04", L"a:b:c:d"})
        EXPECT_FALSE(kv::IsWholeTimecode(part)) << std::wcslen(part);
}

} // namespace
