// What is wrong with subtitles, and what is done to their texts and times.
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitleMatches.h"
#include "subtitles/SubtitlePicture.h"
#include "subtitles/SubtitleText.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace titler;

namespace {

TEST(SubtitleCheck, FindsWhatIsWrong)
{
    using Faults = std::vector<SubtitleFaults>;
    const std::vector<TimedText> rows = {
        {0, 50, 10},    // 2 s: fine
        {100, 100, 1},  // no time at all
        {200, 250, 41}, // more than 20 a second
        {240, 300, 5},  // begins before the one above ends
        {-1, 20, 100},  {400, -1, 100}, {500, 550, 0},
    };
    EXPECT_EQ(CheckSubtitles(rows, 25), (Faults{{},
                                                {kSubtitleNegative},
                                                {kSubtitleFast | kSubtitleOverlap, 3, 0.4},
                                                {},
                                                {},
                                                {},
                                                {kSubtitleEmpty}}));
    EXPECT_EQ(CheckSubtitles({{10, 60, 1}, {0, 20, 1}}, 25), (Faults{{}, {kSubtitleOverlap, 0, 0.4}}))
        << "whatever the order of the rows";
    EXPECT_EQ(CheckSubtitles({{0, 100, 1}, {25, 50, 1}}, 25), (Faults{{kSubtitleOverlap, 1, 1}, {}}))
        << "as long as both stand";
    EXPECT_TRUE(CheckSubtitles({}, 25).empty());
}

TEST(SubtitleMatches, FindsAndSaysWhatIsWrong)
{
    using Ranges = std::vector<TextRange>;
    const QString text = QString::fromUtf8("Sea seaside\n\U0001F30A SEA_ \u017fea");
    const struct
    {
        SubtitleQuery query;
        Ranges found;
    } rows[] = {
        {{"sea"}, {{0, 3}, {4, 7}, {15, 18}, {20, 23}}}, // the long s is an s
        {{"sea", true}, {{4, 7}}},
        {{"sea", false, true}, {{0, 3}, {20, 23}}}, // a low line belongs to a word
        {{"^s.a", true, false, true}, {}},
        {{"^.", true, false, true}, {{0, 1}, {12, 14}}},
        {{"x*", true, false, true}, {}}, // nothing is no match
        {{"s*", true, false, true}, {{4, 5}, {7, 8}}},
        {{""}, {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SubtitleMatches(row.query).In(text), row.found) << row.query.text.toStdString();
    const auto fault = [](const char* pattern) {
        return SubtitleMatches({QString::fromUtf8(pattern), false, false, true}).Fault();
    };
    EXPECT_EQ(fault("a(b)+"), "");
    EXPECT_EQ(fault("a(b"), "The regular expression is wrong at its end: missing closing parenthesis.");
    EXPECT_TRUE(fault("\U0001F30A)x").contains("at character 2, \u201c)\u201d: "))
        << fault("\U0001F30A)x").toStdString();
    EXPECT_EQ(WithContext("0123456789abc\nhit tail", {14, 17}), "\u202623456789abc hit tail");
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
    const struct
    {
        EKvFrameRate rate;
        const char* typed;
        std::int64_t frames;
    } clock[] = {
        {kKvFrameRate29_97, "+1:00:00:00", 107892},
        {kKvFrameRate29_97, "-1:00:00:00", -107892},
        {kKvFrameRate29_97, "10:00:00", 17982},
        {kKvFrameRate29_97, "1:00:00", 1798},
        {kKvFrameRate29_97, "1:00", 30},
        {kKvFrameRate29_97, "29", 29},
        {kKvFrameRate59_94, "+1:00:00:00", 215784},
        {kKvFrameRate59_94, "1:00:00:05", 215789},
        {kKvFrameRate59_94, "10:00:00", 35964},
        {kKvFrameRate23_976, "1:00:00:00", 86400},
    };
    for (const auto& row : clock) {
        EXPECT_EQ(ShiftOf(row.typed, row.rate), row.frames) << row.typed << " at " << row.rate;
        const FrameRate rate = FrameRateOf(row.rate);
        if (QString(row.typed) != "+1:00:00:00")
            continue;
        for (const int frame : {0, 1799, 1800, 17981, 17982, 100000}) // the same label, an hour later
            EXPECT_EQ(TimeCode(frame + static_cast<int>(row.frames), rate),
                      "01" + TimeCode(frame, rate).mid(2));
    }
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

TEST(SubtitleText, ReadsStylesInBracesAsTags)
{
    EXPECT_EQ(WithTags("{\\an8}{\\i1}a{\\i0} {\\b1}b{\\b} {\\i2}{i1}"),
              "{\\an8}<i>a</i> <b>b</b> {\\i2}{i1}");
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

// What a subtitle covers of a frame of 320 x 180, and how much of that is red.
struct Covered
{
    explicit Covered(const Subtitle& subtitle)
    {
        const QImage picture = SubtitlePicture(NewProject(), subtitle, QSize(320, 180));
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (const QColor colour = picture.pixelColor(x, y);
                    colour.value() > 64) { // not what is below
                    area |= colour.value() > 128 ? QRect(x, y, 1, 1) : QRect();
                    ++pixels;
                    red += colour.red() > 128 && colour.green() < 64 ? 1 : 0;
                }
    }
    QRect area;
    int pixels = 0;
    int red = 0;
};

TEST(SubtitlePicture, WrapsWithinTheSafeAreaWhereItsTextSays)
{
    const QRect safe(16, 9, 288, 162);
    const Covered one({"short", {}});
    const Covered wrapped({QString("word ").repeated(40), {}});
    EXPECT_TRUE(safe.contains(wrapped.area));
    EXPECT_GT(wrapped.area.height(), 2 * one.area.height());
    EXPECT_GT(one.area.top(), 120);
    EXPECT_TRUE(safe.contains(Covered({QString(200, u'm'), {}}).area)) << "a word that is too long";
    EXPECT_TRUE(safe.contains(Covered({QString("word ").repeated(12), "Title"}).area)) << "a title's look";
    EXPECT_LT(Covered({"{\\an8}short", {}}).area.bottom(), 40);
    EXPECT_LT(Covered({"{\\an1}short", {}}).area.right(), 160);
    EXPECT_GT(Covered({"{\\an6}short", {}}).area.left(), 160);
    EXPECT_LT(Covered({"{\\an2}short", "Top"}).area.top() - one.area.top(), 2)
        << "the text beats its template";
    EXPECT_EQ(Covered({"", {}}).pixels, 0);
}

TEST(SubtitlePicture, StandsApartFromABrightPicture)
{
    const QImage letters = SubtitlePicture(NewProject(), {"HH", {}}, QSize(640, 360));
    QImage page(letters.size(), QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter(&page).drawImage(0, 0, letters);
    // From the left: the page, its rim, and the white stem of a letter.
    const int row = 332;
    int x = 0;
    const auto skip = [&](auto holds) {
        while (x < page.width() && holds(qRed(page.pixel(x, row))))
            ++x;
        return x;
    };
    EXPECT_LT(skip([](int red) { return red == 255; }), 320);
    const int dark = skip([](int red) { return red > 64; });
    const int stem = skip([](int red) { return red <= 64; });
    EXPECT_GE(stem - dark, 1);
    EXPECT_LE(stem - dark, 4);
    skip([](int red) { return red < 190; });
    EXPECT_LE(x - stem, 3);
    EXPECT_EQ(qAlpha(letters.pixel(320, 250)), 0) << "above";
}

TEST(SubtitlePicture, ShowsTags)
{
    const Covered plain({"word\nword", {}});
    EXPECT_EQ(plain.red, 0);
    const Covered red({"<font color=\"#ff0000\">word\nword</font>", {}});
    EXPECT_GT(red.red, plain.pixels / 2) << "over the end of a line";
    EXPECT_EQ(red.area, plain.area);
    EXPECT_GT(Covered({"<FONT COLOR=red>word</FONT> word", {}}).red, 0);
    EXPECT_EQ(Covered({"<font color=\"nosuch\">word</font>", {}}).red, 0);
    EXPECT_GT(Covered({"<b>word</b>\nword", {}}).pixels, plain.pixels);
    EXPECT_GT(Covered({"<u>word</u>\nword", {}}).pixels, plain.pixels);
    EXPECT_EQ(Covered({"</i></font>word\nword", {}}).pixels, plain.pixels) << "ends without a begin";
}

} // namespace
