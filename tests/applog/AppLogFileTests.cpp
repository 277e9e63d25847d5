// The log file: what is written is read back, and what is odd is not lost.
#include "applog/AppLogFile.h"
#include "applog/AppLogLine.h"
#include "core/Text.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

struct Read
{
    int type;
    int level;
    std::wstring time;
    std::wstring text;
    friend bool operator==(const Read&, const Read&) = default;
};

std::ostream& operator<<(std::ostream& out, const Read& read)
{
    return out << kv::ToUtf8(kv::AppLogLineText(std::to_wstring(read.type), std::to_wstring(read.level),
                                                read.time, read.text));
}

std::vector<Read> ReadAll(CKvAppLogFile& file)
{
    std::vector<Read> all;
    SKvAppLogMsgData data{};
    while (file.ReadLogData(data))
        all.push_back(
            {data.type, data.level, kv::AppLogTimeText(data.time), std::wstring(kv::AppLogText(data))});
    return all;
}

std::vector<Read> ReadAll(std::string bytes)
{
    CKvAppLogFile file;
    file.OpenBytes(std::move(bytes));
    return ReadAll(file);
}

const std::wstring kZero = L"1970/01/01-00:00:00.000";
const std::wstring kTime = L"2016/03/01-09:05:07.042";
const std::string kHead = "[3][02][2016/03/01-09:05:07.042][";

TEST(AppLogFile, ReadsLines)
{
    const struct
    {
        const char* what;
        std::string bytes;
        std::vector<Read> read;
    } rows[] = {
        {"empty", "", {}},
        {"one", kHead + "text]\n", {{3, 2, kTime, L"text"}}},
        {"brackets in the text", kHead + "a][b]]\n", {{3, 2, kTime, L"a][b]"}}},
        {"empty text, CR LF, no end",
         kHead + "]\r\n" + kHead + "x]",
         {{3, 2, kTime, L""}, {3, 2, kTime, L"x"}}},
        {"byte order mark", "\xEF\xBB\xBF" + kHead + "\xC3\xA4]\n", {{3, 2, kTime, L"ä"}}},
        {"continued", kHead + "a\n\tb\r\n\t\tc\n\t]\n", {{3, 2, kTime, L"a\nb\n\tc\n"}}},
        {"goes on behind a whole line", kHead + "a]\n\tb\n", {{3, 2, kTime, L"a\nb"}}},
        {"the same, closed as the writer does", kHead + "a]\n\tb]\n", {{3, 2, kTime, L"a]\nb"}}},
        {"odd",
         "hello\n" + kHead + "x]\nworld\n",
         {{0, 0, kZero, L"hello"}, {3, 2, kTime, L"x"}, {0, 0, kTime, L"world"}}},
        {"blank lines", "\n\r\n", {{0, 0, kZero, L""}, {0, 0, kZero, L""}}},
        {"a tab at first, behind an odd line and behind a blank one",
         "\ta\nb\n\tc\n\n\td\n",
         {{0, 0, kZero, L"\ta"}, {0, 0, kZero, L"b\nc"}, {0, 0, kZero, L"\nd"}}},
        {"cut short", kHead + "tex", {{0, 0, kZero, kv::FromUtf8(kHead) + L"tex"}}},
        {"a zero",
         std::string("a\0b", 3),
         {{0, 0, kZero,
           L"a\xFFFD"
           L"b"}}},
        {"no UTF-8", "\xFF", {{0, 0, kZero, L"\xFFFD"}}},
        {"ordinary characters", kHead + "\xE2\x80\xA8\xC2\x85\v]\n", {{3, 2, kTime, L"\x2028\x0085\v"}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadAll(row.bytes), row.read) << row.what;
}

TEST(AppLogFile, OddLinesAreKeptWhole)
{
    const std::string good = "[1][05][2016/03/01-09:05:07.042][x]";
    ASSERT_EQ(ReadAll(good)[0].type, 1);
    // A type, a level, a date, a time or a blank that the writer would not write.
    for (const char* line : {"[10][05][2016/03/01-09:05:07.042][x]", "[][05][2016/03/01-09:05:07.042][x]",
                             "[1][70000][2016/03/01-09:05:07.042][x]", "[1][-5][2016/03/01-09:05:07.042][x]",
                             "[1][05][2016/13/01-09:05:07.042][x]", "[1][05][2015/02/29-09:05:07.042][x]",
                             "[1][05][1899/03/01-09:05:07.042][x]", "[1][05][70000/03/01-09:05:07.042][x]",
                             "[1][05][2016/03/01-24:05:07.042][x]", "[1][05][2016/03/01-09:05:60.042][x]",
                             "[1][05][2016/03/01-09:05:07.42][x]", "[1][05][2016/3/01-09:05:07.042][x]",
                             " [1][05][2016/03/01-09:05:07.042][x]"}) {
        EXPECT_EQ(ReadAll(std::string(line) + "\n"), (std::vector<Read>{{0, 0, kZero, kv::FromUtf8(line)}}));
    }
}

TEST(AppLogFile, LongTextsBecomeSeveralMessages)
{
    const std::string text(1025, 'x');
    EXPECT_EQ(ReadAll(kHead + text + "]\n"), (std::vector<Read>{{3, 2, kTime, std::wstring(512, L'x')},
                                                                {3, 2, kTime, std::wstring(512, L'x')},
                                                                {3, 2, kTime, L"x"}}));
    EXPECT_EQ(ReadAll(kHead + text.substr(1) + "]\n").size(), 2u);
}

TEST(AppLogFile, WritesLineBreaksAsContinuations)
{
    kv::AppLogFileText text;
    text.Add(L"[1][a\r\nb\rc\n\td\n]");
    text.Add(L"ä\x2028");
#if defined(_WIN32)
    const std::string end = "\r\n";
#else
    const std::string end = "\n";
#endif
    EXPECT_EQ(text.Bytes(), "[1][a" + end + "\tb" + end + "\tc" + end + "\t\td" + end + "\t]" + end +
                                "\xC3\xA4\xE2\x80\xA8" + end);
}

TEST(AppLogFile, FilesThatCannotBeRead)
{
    const kv::TemporaryFolder folder;
    CKvAppLogFile file;
    EXPECT_EQ(file.OpenLog(nullptr), 0);
    EXPECT_EQ(file.OpenLog(L""), 0);
    EXPECT_EQ(file.OpenLog(folder.Wide("missing").c_str()), 0);
    EXPECT_EQ(file.OpenLog(folder.Wide("").c_str()), 0);
    EXPECT_TRUE(ReadAll(file).empty());
    file.OpenBytes("x\n");
    file.CloseLog();
    EXPECT_TRUE(ReadAll(file).empty());
}

} // namespace
