#include "subtitles/Subtitles.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace titler {
namespace {

struct ExpectedCue
{
    std::int64_t in;
    std::int64_t out;
    const char* text;
    std::size_t line;
    const char* settings = "";
    const char* identifier = "";
};

struct ReadCase
{
    const char* name;
    const char* bytes;
    std::vector<ExpectedCue> cues;
    std::vector<CueFault> faults;
    SubtitleHead head = {};
    std::size_t notes = 0;
};

void Expect(const SubtitleFile& file, const ReadCase& row)
{
    ASSERT_EQ(file.cues.size(), row.cues.size()) << row.name;
    for (std::size_t i = 0; i < file.cues.size(); ++i) {
        const Cue& cue = file.cues[i];
        const ExpectedCue& expected = row.cues[i];
        EXPECT_EQ(cue.in, expected.in) << row.name << i;
        EXPECT_EQ(cue.out, expected.out) << row.name << i;
        EXPECT_EQ(cue.text, expected.text) << row.name << i;
        EXPECT_EQ(cue.line, expected.line) << row.name << i;
        EXPECT_EQ(cue.settings, expected.settings) << row.name << i;
        EXPECT_EQ(cue.identifier, expected.identifier) << row.name << i;
    }
    EXPECT_EQ(file.faults, row.faults) << row.name;
    EXPECT_EQ(file.head, row.head) << row.name;
    EXPECT_EQ(file.notes, row.notes) << row.name;
}

constexpr auto NoHeader = CueFaultKind::NoHeader;
constexpr auto NoTimes = CueFaultKind::NoTimes;
constexpr auto BadTimes = CueFaultKind::BadTimes;

TEST(SubRip, IsReadAsItIsMet)
{
    const ReadCase rows[] = {
        {"two cues ",
         "1\n00:00:01,000 --> 00:00:02,500\nHello\n\n2\n00:00:03,000 --> 00:00:04,000\nTwo\nlines\n",
         {{1000, 2500, "Hello", 2}, {3000, 4000, "Two\nlines", 6}},
         {}},
        {"CRLF and a mark ",
         "\xEF\xBB\xBF"
         "1\r\n00:00:01,000 --> 00:00:02,000\r\nA\r\nB\r\n\r\n2\r\n00:00:03,000 --> 00:00:04,000\r\nC\r\n",
         {{1000, 2000, "A\nB", 2}, {3000, 4000, "C", 7}},
         {}},
        {"CR ",
         "1\r00:00:01,000 --> 00:00:02,000\rA\r\r2\r00:00:03,000 --> 00:00:04,000\rB",
         {{1000, 2000, "A", 2}, {3000, 4000, "B", 6}},
         {}},
        {"mixed ends ", "1\n00:00:01,000 --> 00:00:02,000\r\nA\rB\n", {{1000, 2000, "A\nB", 2}}, {}},
        {"empty ", "", {}, {}},
        {"a mark alone ", "\xEF\xBB\xBF", {}, {}},
        {"blank lines alone ", "\n \n\t\r\n", {}, {}},
        {"no numbers ",
         "00:00:01,000 --> 00:00:02,000\nA\n\n00:00:03,000 --> 00:00:04,000\n42\n\n00:00:05,000 --> "
         "00:00:06,000\nC",
         {{1000, 2000, "A", 1}, {3000, 4000, "42", 4}, {5000, 6000, "C", 7}},
         {}},
        {"no blank lines ",
         "1\n00:00:01,000 --> 00:00:02,000\nA\n2\n00:00:03,000 --> 00:00:04,000\nB\n00:00:05,000 --> "
         "00:00:06,000\nC",
         {{1000, 2000, "A", 2}, {3000, 4000, "B", 5}, {5000, 6000, "C", 7}},
         {}},
        {"many blank lines ",
         "\n\n1\n00:00:01,000 --> 00:00:02,000\nA\n\n\n \n\n2\n00:00:03,000 --> 00:00:04,000\nB\n\n\n",
         {{1000, 2000, "A", 4}, {3000, 4000, "B", 11}},
         {}},
        {"every line doubled ",
         "1\n\n00:00:01,000 --> 00:00:02,000\n\nA\n\nB\n\n\n\n2\n\n00:00:03,000 --> 00:00:04,000\n\nC\n\n",
         {{1000, 2000, "A\n\nB", 3}, {3000, 4000, "C", 13}},
         {}},
        {"a blank line in a text ",
         "1\n00:00:01,000 --> 00:00:02,000\nA\n\nB\n\n2\n00:00:03,000 --> 00:00:04,000\nC",
         {{1000, 2000, "A\n\nB", 2}, {3000, 4000, "C", 8}},
         {}},
        {"a text that is a number ",
         "1\n00:00:01,000 --> 00:00:02,000\n1984\n\n2\n00:00:03,000 --> 00:00:04,000\n2001\n",
         {{1000, 2000, "1984", 2}, {3000, 4000, "2001", 6}},
         {}},
        {"no text ",
         "1\n00:00:01,000 --> 00:00:02,000\n\n2\n00:00:03,000 --> 00:00:04,000\nB",
         {{1000, 2000, "", 2}, {3000, 4000, "B", 5}},
         {}},
        {"points, no hours, short fractions ",
         "1\n01:02.5 --> 1:1:4\nA\n\n2\n00:00:05.1234 --> 00:00:06,07\nB",
         {{62500, 3664000, "A", 2}, {5123, 6070, "B", 6}},
         {}},
        {"no spaces around the arrow ", "1\n00:00:01,000-->00:00:02,000\nA", {{1000, 2000, "A", 2}}, {}},
        {"positions ",
         "1\n  00:00:01,000 --> 00:00:02,000  X1:40 X2:600 Y1:20 Y2:50 \n{\\an8}<i>A</i>",
         {{1000, 2000, "{\\an8}<i>A</i>", 2, "X1:40 X2:600 Y1:20 Y2:50"}},
         {}},
        {"many hours ",
         "1\n100:00:00,000 --> 999999999:59:59,999\nA",
         {{360000000, 3600000000000000 - 1, "A", 2}},
         {}},
        {"ends before it begins ", "1\n00:00:02,000 --> 00:00:01,000\nA", {{2000, 1000, "A", 2}}, {}},
        {"an arrow in a text ",
         "1\n00:00:01,000 --> 00:00:02,000\nA --> B\n5 --> 6\n- 7 --> 8\n",
         {{1000, 2000, "A --> B\n5 --> 6\n- 7 --> 8", 2}},
         {}},
        {"scripts ",
         "1\n00:00:01,000 --> 00:00:02,000\nمرحبا، كيف حالك؟\n\n2\n00:00:03,000 --> "
         "00:00:04,000\n你好，世界\n👩‍🚀 🇳🇱\n\n3\n00:00:05,000 --> "
         "00:00:06,000\nZ\u0351a\u0308\u0301hlen \u202Bעברית\u202C\n",
         {{1000, 2000, "مرحبا، كيف حالك؟", 2},
          {3000, 4000, "你好，世界\n👩‍🚀 🇳🇱", 6},
          {5000, 6000, "Z\u0351a\u0308\u0301hlen \u202Bעברית\u202C", 11}},
         {}},
    };
    for (const ReadCase& row : rows)
        Expect(ReadSubRip(row.bytes), row);
}

TEST(SubRip, ReportsWhatIsBrokenAndGoesOn)
{
    const char* const good = "9\n00:00:09,000 --> 00:00:10,000\nZ";
    const struct
    {
        const char* name;
        const char* broken;
        std::vector<CueFault> faults;
    } rows[] = {
        {"letters in a time ", "1\n00:00:0x,000 --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"letters in front, below a number ", "1\nab:00:01,000 --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"60 seconds ", "1\n00:00:60,000 --> 00:01:02,000\nA\n\n", {{2, BadTimes}}},
        {"60 minutes ", "1\n60:00 --> 61:00\nA\n\n", {{2, BadTimes}}},
        {"three digits ", "1\n00:00:001,000 --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"ten digits of hours ", "1\n1000000000:00:00,000 --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"negative ", "1\n-00:00:01,000 --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"no end ", "1\n00:00:01,000 -->\nA\n\n", {{2, BadTimes}}},
        {"no fraction behind its sign ", "1\n00:00:01, --> 00:00:02,000\nA\n\n", {{2, BadTimes}}},
        {"text right behind a time ", "1\n00:00:01,000 --> 00:00:02,000A\nA\n\n", {{2, BadTimes}}},
        {"text before the first times ",
         "A comment\nof two lines\n\nand another\n\n",
         {{1, NoTimes}, {4, NoTimes}}},
        {"two in a row ", "1\n00:00:a --> 1\nA\n\n2\n00:00:b --> 2\nB\n\n", {{2, BadTimes}, {6, BadTimes}}},
    };
    for (const auto& row : rows) {
        const SubtitleFile file = ReadSubRip(std::string(row.broken) + good);
        EXPECT_EQ(file.faults, row.faults) << row.name;
        ASSERT_EQ(file.cues.size(), 1u) << row.name;
        EXPECT_EQ(file.cues[0].text, "Z") << row.name;
    }
    const ReadCase behind = {"no times behind a cue ",
                             "1\n00:00:01,000 --> 00:00:02,000\nA\n\n2\nB\n\n3\n00:00:03,000 -> "
                             "00:00:04,000\nC\n\n4\n00:00:05,000 --> 00:00:06,000\nD",
                             {{1000, 2000, "A", 2}, {5000, 6000, "D", 13}},
                             {{5, NoTimes}, {8, NoTimes}}};
    Expect(ReadSubRip(behind.bytes), behind);
    const ReadCase broken = {"many in a row ",
                             "1\n00:00:0x,000 --> 00:00:02,000\nA\n\n2\n00:00:03,000 -> 00:00:04,000\nB\n\n"
                             "3\nno times\n\n00:00:05,000 - 00:00:06,000\nC\n\n00:07 -> 00:08\nD\n\n"
                             "5\n00:00:09,000 --> 00:00:10,000\nE\n\n12:30 - 14:00\n\n12,5 or 13,5",
                             {{9000, 10000, "E\n\n12:30 - 14:00\n\n12,5 or 13,5", 19}},
                             {{2, BadTimes}, {5, NoTimes}, {9, NoTimes}, {12, NoTimes}, {15, NoTimes}}};
    Expect(ReadSubRip(broken.bytes), broken);
}

TEST(WebVtt, IsRead)
{
    const SubtitleHead Bare{"WEBVTT", {}};
    const ReadCase rows[] = {
        {"settings and names ",
         "WEBVTT - a title\nKind: captions\n\nintro\n00:01.000 --> 00:00:02.500 align:start "
         "line:0%\nHello\n\n00:00:03.000 --> 100:00:04.000\nTwo\nlines\n",
         {{1000, 2500, "Hello", 5, "align:start line:0%", "intro"}, {3000, 360004000, "Two\nlines", 8}},
         {},
         {"WEBVTT - a title\nKind: captions", {}}},
        {"notes, styles, regions ",
         "\xEF\xBB\xBFWEBVTT\n\nSTYLE\n::cue { color: lime }\n\nREGION\nid:fred\n\nNOTE one "
         "line\n\nNOTE\nmore\nlines\n\n00:01.000 --> 00:02.000\nA\n\nNOTE\n",
         {{1000, 2000, "A", 15}},
         {},
         {"WEBVTT", {"STYLE\n::cue { color: lime }", "REGION\nid:fred"}},
         3},
        {"cue right behind the header ",
         "WEBVTT\n00:01.000 --> 00:02.000\nA",
         {{1000, 2000, "A", 2}},
         {},
         Bare},
        {"tags stay, references do not ",
         "WEBVTT\n\n00:01.000 --> 00:02.000\n<v Anna><i>R&amp;B</i> &lt;3 "
         "&#233;&#x1F600;&nbsp;&rlm;&unknown; & &#0; &#xD800;</v>",
         {{1000, 2000, "<v Anna><i>R&B</i> <3 é😀\u00A0\u200F&unknown; & &#0; &#xD800;</v>", 3}},
         {},
         Bare},
        {"commas and CRLF ",
         "WEBVTT\r\n\r\n1\r\n00:00:01,000 --> 00:00:02,000\r\nمرحبا\r\n\r\n2\r\n00:00:03,000 --> "
         "00:00:04,000\r\n你好",
         {{1000, 2000, "مرحبا", 4, "", "1"}, {3000, 4000, "你好", 8, "", "2"}},
         {},
         Bare},
        {"no blank line ",
         "WEBVTT\n\n1\n00:01.000 --> 00:02.000\nA\n2\n00:03.000 --> 00:04.000\nB\n00:05.000 --> 00:06.000\nC",
         {{1000, 2000, "A", 4, "", "1"}, {3000, 4000, "B", 7, "", "2"}, {5000, 6000, "C", 9}},
         {},
         Bare},
        {"a line of spaces goes on ",
         "WEBVTT\n\n00:01.000 --> 00:02.000\nA\n \nB\n\n",
         {{1000, 2000, "A\n\nB", 3}},
         {},
         Bare},
        {"no header ", "1\n00:01.000 --> 00:02.000\nA", {{1000, 2000, "A", 2, "", "1"}}, {{1, NoHeader}}},
        {"another word ",
         "WEBVTTX\n\n00:01.000 --> 00:02.000\nA",
         {{1000, 2000, "A", 3}},
         {{1, NoHeader}, {1, NoTimes}}},
        {"broken ones ",
         "WEBVTT\n\nstray\ntext\n\n00:61.000 --> 00:62.000\nA\n\nx --> y\nB\n\n00:01.000 --> "
         "00:02.000\nC\n\nlast",
         {{1000, 2000, "C", 12}},
         {{3, NoTimes}, {6, BadTimes}, {9, BadTimes}, {15, NoTimes}},
         Bare},
        {"empty ", "", {}, {}},
        {"header alone ", "WEBVTT", {}, {}, Bare},
    };
    for (const ReadCase& row : rows)
        Expect(ReadWebVtt(row.bytes), row);
}

TEST(Subtitles, AreToldApart)
{
    EXPECT_EQ(SubtitleFormatOf("WEBVTT\n"), SubtitleFormat::WebVtt);
    EXPECT_EQ(SubtitleFormatOf("\xEF\xBB\xBFWEBVTT - title\r\n"), SubtitleFormat::WebVtt);
    EXPECT_EQ(SubtitleFormatOf("WEBVTTX"), SubtitleFormat::SubRip);
    EXPECT_EQ(SubtitleFormatOf("1\n00:00:01,000 --> 00:00:02,000\n"), SubtitleFormat::SubRip);
    EXPECT_EQ(SubtitleFormatOf(""), SubtitleFormat::SubRip);
    EXPECT_EQ(SubtitleFormatOfText("WEBVTT\n"), SubtitleFormat::WebVtt);
    EXPECT_EQ(SubtitleFormatOfText("1\r\n\r\n1\r\n00:00:01,000 --> 00:00:02,000\r\n"),
              SubtitleFormat::SubRip);
    EXPECT_EQ(SubtitleFormatOfText("1\nfrom a --> b"), SubtitleFormat::PlainText);
    EXPECT_EQ(SubtitleFormatOfText(""), SubtitleFormat::PlainText);
}

TEST(PlainText, IsLines)
{
    const SubtitleFile file = ReadPlainText("\uFEFFone\r\n\r\n<two>");
    ASSERT_EQ(file.cues.size(), 3u);
    EXPECT_EQ(file.cues[0].text, "\uFEFFone");
    EXPECT_EQ(file.cues[1].text, "");
    EXPECT_EQ(file.cues[2].text, "<two>");
    EXPECT_EQ(file.cues[2].line, 3u);
    EXPECT_EQ(file.cues[2].in, SubtitleRow::kNoTime);
}

TEST(SubtitleWriter, WritesBothFormats)
{
    const std::vector<SubtitleRow> rows = {{1000, 2500, "R&B <3\n<i>a</i> --> b", false},
                                           {SubtitleRow::kNoTime, 5, "left out", false},
                                           {360000000, 360000001, "a\r\n\rb", false}};
    EXPECT_EQ(WriteSubtitles(rows, SubtitleFormat::SubRip),
              "1\n00:00:01,000 --> 00:00:02,500\nR&B <3\n<i>a</i> --> b\n\n2\n100:00:00,000 --> "
              "100:00:00,001\na\n \nb\n\n");
    EXPECT_EQ(
        WriteSubtitles(rows, SubtitleFormat::WebVtt),
        "WEBVTT\n\n00:00:01.000 --> 00:00:02.500\nR&amp;B &lt;3\n<i>a</i> --&gt; b\n\n100:00:00.000 --> "
        "100:00:00.001\na\n \nb\n\n");
    EXPECT_EQ(WriteSubtitles({}, SubtitleFormat::SubRip), "");
    EXPECT_EQ(WriteSubtitles({}, SubtitleFormat::WebVtt), "WEBVTT\n\n");
}

TEST(SubtitleWriter, ListsWhatIsLost)
{
    using Kind = SubtitleLossKind;
    constexpr auto kNone = static_cast<Kind>(-1);
    const struct
    {
        const char* name;
        std::int64_t out;
        const char* text;
        bool hasTemplate;
        Kind subRip;
        Kind webVtt;
        const char* again; ///< what SubRip gives again
    } rows[] = {
        {"nothing", 1, "a\n\nb", false, kNone, kNone, "a\n\nb"},
        {"an empty text", 1, "", false, kNone, kNone, ""},
        {"no out time", -1, "a", false, Kind::NoTimes, Kind::NoTimes, nullptr},
        {"a template", 1, "a", true, Kind::Template, Kind::Template, "a"},
        {"blank lines around it", 1, "\na\n ", false, Kind::EdgeLines, Kind::EdgeLines, "a"},
        {"a blank line alone", 1, "\n", false, Kind::EdgeLines, Kind::EdgeLines, ""},
        {"spaces in a line", 1, "a\n \nb", false, Kind::SpacedLines, Kind::SpacedLines, "a\n\nb"},
        {"times in a text", 1, "0:1 ---> 0:2 --> 3", false, Kind::Arrow, kNone, "0:1 -> 0:2 -> 3"},
        {"a number and an arrow", 1, "x\n\n5\na --> b", false, kNone, kNone, "x\n\n5\na --> b"},
    };
    for (const auto& row : rows) {
        const SubtitleRow written{0, row.out, row.text, row.hasTemplate};
        for (const SubtitleFormat format : {SubtitleFormat::SubRip, SubtitleFormat::WebVtt}) {
            const std::vector<SubtitleLoss> losses = SubtitleLosses({{0, 1, "fine", false}, written}, format);
            const Kind kind = format == SubtitleFormat::SubRip ? row.subRip : row.webVtt;
            ASSERT_EQ(losses.size(), kind == kNone ? 0u : 1u) << row.name;
            if (losses.empty())
                continue;
            EXPECT_EQ(losses[0].kind, kind) << row.name;
            EXPECT_EQ(losses[0].rows, std::vector<std::size_t>{1}) << row.name;
        }
        const SubtitleFile file = ReadSubRip(WriteSubtitles({written}, SubtitleFormat::SubRip));
        EXPECT_TRUE(file.faults.empty()) << row.name;
        ASSERT_EQ(file.cues.size(), row.again ? 1u : 0u) << row.name;
        EXPECT_STREQ(row.again ? file.cues[0].text.c_str() : nullptr, row.again) << row.name;
    }
}

/// What stands beside texts and times comes back in its own format, and is listed for the others.
TEST(SubtitleWriter, KeepsHeadSettingsAndNames)
{
    using enum SubtitleLossKind;
    const std::string vtt =
        "WEBVTT - Title\nKind: captions\n\nSTYLE\n::cue { color: lime }\n\nREGION\nid:fred\n\n"
        "intro\n00:00:01.000 --> 00:00:02.000 align:end region:fred\n<v Anna>A &amp; <00:01.500>B</v>\n\n"
        "2\n00:00:03.000 --> 00:00:04.000\nC\nD\n\n";
    const std::string srt = "1\n00:00:01,000 --> 00:00:02,000 X1:40 Y1:20\n{\\an8}A\n\n";
    const struct
    {
        const std::string& bytes;
        SubtitleFormat from;
        SubtitleFormat to;
        std::vector<std::pair<SubtitleLossKind, std::size_t>> lost;
        std::string written;
    } rows[] = {
        {vtt, SubtitleFormat::WebVtt, SubtitleFormat::WebVtt, {}, vtt},
        {vtt,
         SubtitleFormat::WebVtt,
         SubtitleFormat::SubRip,
         {{Settings, 1}, {Identifier, 1}, {Markup, 1}, {Title, 1}, {Blocks, 2}},
         "1\n00:00:01,000 --> 00:00:02,000\nA & B\n\n2\n00:00:03,000 --> "
         "00:00:04,000\nC\nD\n\n"},
        {vtt,
         SubtitleFormat::WebVtt,
         SubtitleFormat::PlainText,
         {{Settings, 1}, {Identifier, 1}, {Times, 2}, {LineBreaks, 1}, {Markup, 1}, {Title, 1}, {Blocks, 2}},
         "A & B\nC D\n"},
        {srt, SubtitleFormat::SubRip, SubtitleFormat::SubRip, {}, srt},
        {srt,
         SubtitleFormat::SubRip,
         SubtitleFormat::WebVtt,
         {{Settings, 1}},
         "WEBVTT\n\n00:00:01.000 --> 00:00:02.000 line:0\nA\n\n"},
        {srt,
         SubtitleFormat::SubRip,
         SubtitleFormat::PlainText,
         {{Settings, 1}, {Times, 1}, {Markup, 1}},
         "A\n"},
    };
    for (const auto& row : rows) {
        const SubtitleFile file = ReadSubtitles(row.bytes, row.from);
        std::vector<SubtitleRow> written;
        for (const Cue& cue : file.cues)
            written.push_back({cue.in, cue.out, cue.text, false, cue.settings, cue.identifier, row.from});
        std::vector<std::pair<SubtitleLossKind, std::size_t>> lost;
        for (const SubtitleLoss& loss : SubtitleLosses(written, row.to, file.head))
            lost.emplace_back(loss.kind, loss.count);
        EXPECT_EQ(lost, row.lost) << row.written;
        EXPECT_EQ(WriteSubtitles(written, row.to, file.head), row.written);
    }
    const std::vector<SubtitleRow> odd = {{0, 1, "1 < 2 {x} <3> </4> </b <a\n>", false},
                                          {-1, -1, "<i>a</i>", false, "", "", SubtitleFormat::PlainText}};
    EXPECT_EQ(WriteSubtitles(odd, SubtitleFormat::PlainText), "1 < 2 {x} <3> </4> </b <a >\n<i>a</i>\n");
}

/// What both formats know goes over, what only one knows is taken out and said.
TEST(SubtitleWriter, TakesMarkupToTheOtherFormat)
{
    constexpr SubtitleFormat srt = SubtitleFormat::SubRip;
    constexpr SubtitleFormat vtt = SubtitleFormat::WebVtt;
    const struct
    {
        SubtitleFormat from;
        const char* text;
        const char* settings; ///< that were made of it
        const char* written;
        bool loses;
    } rows[] = {
        {srt, "<i>a</i> <B>b</B> <u>c</u>", "", "<i>a</i> <b>b</b> <u>c</u>", false},
        {srt, "{\\an8}a", " line:0", "a", false},
        {srt, "{\\an7}a", " line:0 align:left", "a", false},
        {srt, "a{\\an2}", "", "a", false},
        {srt, "{\\an6}a", " line:50%,center align:right", "a", false},
        {srt, "{\\an8}{\\an1}a", " line:0", "a", true},
        {srt, "{\\an0}a", "", "a", true},
        {srt, "{\\pos(1,2)}a", "", "a", true},
        {srt, "<font color=\"red\">a</FONT> <s>b</s>", "", "a b", true},
        {srt, "<sigh> {x} 1 < 2", "", "&lt;sigh> {x} 1 &lt; 2", false},
        {srt, "<v Anna>a</v>", "", "<v Anna>a</v>", false},
        {vtt, "<i>a</i> <sigh>", "", "<i>a</i> <sigh>", false},
        {vtt, "<v.loud Anna>a</v>", "", "a", true},
        {vtt, "<c.yellow>a</c> <lang en>b</lang>", "", "a b", true},
        {vtt, "<ruby>a<rt>b</rt></ruby>", "", "ab", true},
        {vtt, "a <00:01.500>b", "", "a b", true},
        {vtt, "<i.loud>a</i>", "", "<i>a</i>", true},
        {SubtitleFormat::PlainText, "<c>{\\an8}", "", "<c>{\\an8}", false},
    };
    for (const auto& row : rows) {
        const bool toVtt = row.from != vtt;
        const std::vector<SubtitleRow> written = {{0, 1000, row.text, false, "", "", row.from}};
        const std::string head =
            toVtt ? "WEBVTT\n\n00:00:00.000 --> 00:00:01.000" : "1\n00:00:00,000 --> 00:00:01,000";
        EXPECT_EQ(WriteSubtitles(written, toVtt ? vtt : srt),
                  head + row.settings + '\n' + row.written + "\n\n");
        const std::vector<SubtitleLoss> losses = SubtitleLosses(written, toVtt ? vtt : srt);
        ASSERT_EQ(losses.size(), row.loses ? 1u : 0u) << row.text;
        EXPECT_TRUE(losses.empty() || losses[0].kind == SubtitleLossKind::Markup) << row.text;
    }
}

/// A film's length of cues in many scripts goes through both formats unchanged.
TEST(SubtitleWriter, TheSampleGoesThroughBothFormats)
{
    std::ifstream file(TITLER_SAMPLES "/subtitles.srt", std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const SubtitleFile sample = ReadSubRip(bytes);
    EXPECT_TRUE(sample.faults.empty());
    ASSERT_EQ(sample.cues.size(), 38u);
    EXPECT_GT(sample.cues.back().out, 90 * 60000);
    EXPECT_EQ(sample.cues[36].text, "He is alive.\n\nThey are all alive.");
    std::vector<SubtitleRow> rows;
    for (const Cue& cue : sample.cues)
        rows.push_back({cue.in, cue.out, cue.text, false});
    for (const SubtitleFormat format : {SubtitleFormat::SubRip, SubtitleFormat::WebVtt}) {
        EXPECT_TRUE(SubtitleLosses(rows, format).empty());
        const SubtitleFile again = ReadSubtitles(WriteSubtitles(rows, format), format);
        ASSERT_EQ(again.cues.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const bool isPlaced = format == SubtitleFormat::WebVtt && rows[i].text.starts_with("{\\an8}");
            EXPECT_EQ(again.cues[i].text, rows[i].text.substr(isPlaced ? 6 : 0));
            EXPECT_EQ(again.cues[i].settings, isPlaced ? "line:0" : "");
            EXPECT_EQ(again.cues[i].in, rows[i].in);
            EXPECT_EQ(again.cues[i].out, rows[i].out);
        }
    }
}

/// Whatever rows are written, those that are said to lose nothing come back.
TEST(SubtitleWriter, GivesAgainWhatItDoesNotListAsLost)
{
    const std::string pieces[] = {"a",
                                  "7",
                                  "\n",
                                  "\n\n",
                                  " ",
                                  "-->",
                                  "-",
                                  ">",
                                  "<",
                                  "<b>",
                                  "</b>",
                                  "&",
                                  "&lt;",
                                  "1:2",
                                  "\xEF\xBB\xBF",
                                  "مر",
                                  "😀",
                                  "WEBVTT",
                                  "NOTE",
                                  "\r\n",
                                  "\r",
                                  "\t",
                                  "00:00:01,000 --> 00:00:02,000"};
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        const auto format = static_cast<SubtitleFormat>(random() % 3);
        std::vector<SubtitleRow> rows;
        for (auto row = random() % 4; row > 0; --row) {
            SubtitleRow& added = rows.emplace_back();
            added.in = static_cast<std::int64_t>(random());
            added.out = static_cast<std::int64_t>(random() % 100000);
            added.origin = format;
            if (format == SubtitleFormat::PlainText)
                added.in = added.out = SubtitleRow::kNoTime;
            else if (random() % 4 == 0)
                added.settings = "--> X1:1";
            if (format == SubtitleFormat::WebVtt && random() % 4 == 0)
                added.identifier = "NOTE 7";
            for (auto piece = random() % 7; piece > 0; --piece)
                added.text += pieces[random() % std::size(pieces)];
        }
        if (!SubtitleLosses(rows, format).empty())
            continue;
        const std::string bytes = WriteSubtitles(rows, format);
        const SubtitleFile file = ReadSubtitles(bytes, format);
        ASSERT_TRUE(file.faults.empty()) << bytes;
        ASSERT_EQ(file.cues.size(), rows.size()) << bytes;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::string text = rows[i].text;
            for (std::size_t at = 0; (at = text.find('\r', at)) != text.npos;)
                text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
            ASSERT_EQ(file.cues[i].text, text) << bytes;
            ASSERT_EQ(file.cues[i].in, rows[i].in) << bytes;
            ASSERT_EQ(file.cues[i].out, rows[i].out) << bytes;
            ASSERT_EQ(file.cues[i].settings, rows[i].settings) << bytes;
            ASSERT_EQ(file.cues[i].identifier, rows[i].identifier) << bytes;
        }
    }
}

} // namespace
} // namespace titler
