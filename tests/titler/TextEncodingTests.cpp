#include "subtitles/TextEncoding.h"

#include <gtest/gtest.h>

namespace titler {
namespace {

using namespace std::string_literals;

TEST(TextEncoding, IsDetected)
{
    const struct
    {
        const char* name;
        std::string bytes;
        const char* encoding;
    } rows[] = {
        {"mark of UTF-8",
         "\xEF\xBB\xBF"
         "1",
         "UTF-8"},
        {"mark of UTF-16",
         "\xFF\xFE"
         "1\0"s,
         "UTF-16LE"},
        {"mark of UTF-16, big end first",
         "\xFE\xFF\0"
         "1"s,
         "UTF-16BE"},
        {"UTF-16 without a mark", "1\0\n\0"s, "UTF-16LE"},
        {"UTF-16 without a mark, big end first",
         "\0"
         "1\0\n"s,
         "UTF-16BE"},
        {"ASCII", "1\n", "UTF-8"},
        {"empty", "", "UTF-8"},
        {"UTF-8", "1 مرحبا 😀", "UTF-8"},
        {"a code page", "caf\xE9", ""},
        {"cut UTF-8", "caf\xC3", ""},
        {"a surrogate in UTF-8", "\xED\xA0\x80", ""},
        {"overlong", "\xC0\xAF", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DetectEncoding(row.bytes), row.encoding) << row.name;
}

TEST(TextEncoding, IsConverted)
{
    const struct
    {
        const char* encoding;
        std::string bytes;
        const char* utf8;
    } rows[] = {
        {"UTF-8", "é😀", "é😀"},
        {"UTF-16LE", "\xE9\0\x3D\xD8\0\xDE"s, "é😀"},
        {"UTF-16BE", "\0\xE9\xD8\x3D\xDE\0"s, "é😀"},
        {"windows-1252", "caf\xE9 \x80", "café €"},
        {"windows-1256", "\xE3\xD1\xCD\xC8\xC7", "مرحبا"},
        {"windows-1251", "\xCF\xF0\xE8\xE2\xE5\xF2", "Привет"},
        {"Shift_JIS", "\x93\xFA\x96\x7B", "日本"},
        {"GB18030", "\xC4\xE3\xBA\xC3", "你好"},
    };
    for (const auto& row : rows) {
        const auto decoded = DecodeText(row.bytes, row.encoding);
        ASSERT_TRUE(decoded) << row.encoding;
        EXPECT_EQ(decoded->bytes, row.utf8) << row.encoding;
        EXPECT_EQ(decoded->replaced, 0u) << row.encoding;
        const auto encoded = EncodeText(row.utf8, row.encoding);
        ASSERT_TRUE(encoded) << row.encoding;
        EXPECT_EQ(encoded->bytes, row.bytes) << row.encoding;
    }
}

TEST(TextEncoding, LeavesMarksAndCountsWhatItReplaces)
{
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                         "a",
                         "UTF-8")
                  ->bytes,
              "a");
    EXPECT_EQ(DecodeText("\xFF\xFE"
                         "a\0"s,
                         "UTF-16LE")
                  ->bytes,
              "a");
    EXPECT_EQ(DecodeText("\xFE\xFF\0a"s, "UTF-16BE")->bytes, "a");
    const auto lone = DecodeText("a\0\0\xD8"
                                 "b\0"s,
                                 "UTF-16LE");
    EXPECT_EQ(lone->bytes, "a\uFFFDb");
    EXPECT_EQ(lone->replaced, 1u);
    EXPECT_EQ(DecodeText("a\xFF", "UTF-8")->bytes, "a\uFFFD");
    const auto poor = EncodeText("a你b好", "windows-1252");
    EXPECT_EQ(poor->replaced, 2u);
    EXPECT_EQ(poor->bytes.size(), 4u);
    EXPECT_FALSE(DecodeText("a", "no such encoding"));
    EXPECT_FALSE(DecodeText("a", ""));
    EXPECT_EQ(DecodeText("", "windows-1252")->bytes, "");
}

TEST(TextEncoding, LongTextsGoThroughInPieces)
{
    std::string utf8;
    for (int i = 0; i < 20000; ++i)
        utf8 += "Привет, 你好 😀\n";
    const auto encoded = EncodeText(utf8, "UTF-16BE");
    EXPECT_EQ(DecodeText(encoded->bytes, "UTF-16BE")->bytes, utf8);
}

TEST(TextEncoding, IsGuessedAmongThoseOffered)
{
    for (const char* name : Encodings())
        EXPECT_TRUE(IsEncoding(name)) << name;
    EXPECT_FALSE(IsEncoding("no such encoding"));
    EXPECT_FALSE(IsEncoding(""));
    const auto russian =
        EncodeText("Сегодня мы поедем к морю, и никто не узнает, где мы были.", "windows-1251");
    const struct
    {
        std::string bytes;
        const char* encoding;
    } rows[] = {
        {russian->bytes, "windows-1251"},
        {"1\0\n\0a"s, "UTF-16LE"},
        {"\0001\0\n\0"s, "UTF-16BE"},
        {"Où étiez-vous à l'été ? Là-bas, près d'ici. déjà \xE9 là", "UTF-8"},
        {"1\r\n00:00:01,000 --> 00:00:02,000\r\nD\xE9j\xE0\r\n", "windows-1252"},
        {"\xE9", "windows-1252"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(GuessEncoding(row.bytes), row.encoding) << row.bytes;
}

TEST(TextEncoding, TellsTheLineOfTheFirstDamage)
{
    EXPECT_EQ(DecodeText("a\r\nb\r\nc\xFF\r\n\xFF", "UTF-8")->firstLine, 3u);
    EXPECT_EQ(DecodeText("\xFF", "UTF-8")->firstLine, 1u);
    EXPECT_EQ(DecodeText("a\0\n\0\0\xD8\n\0"s, "UTF-16LE")->firstLine, 2u);
    EXPECT_EQ(DecodeText("a\nb\xC3", "UTF-8")->firstLine, 2u) << "cut at the end";
    EXPECT_EQ(DecodeText("a\nb", "UTF-8")->firstLine, 0u);
}

TEST(TextEncoding, AFileKeepsItsForm)
{
    const struct
    {
        const char* name;
        TextForm form;
        std::string bytes;
    } rows[] = {
        {"UTF-8", {"UTF-8", false, "\n"}, "é\n\n"},
        {"a mark and pairs", {"UTF-8", true, "\r\n"}, "\xEF\xBB\xBFé\r\n\r\n"},
        {"UTF-16", {"UTF-16LE", true, "\r\n"}, "\xFF\xFE\xE9\0\r\0\n\0\r\0\n\0"s},
        {"UTF-16 without a mark", {"UTF-16BE", false, "\n"}, "\0\xE9\0\n\0\n"s},
        {"a code page and returns", {"windows-1252", false, "\r"}, "\xE9\r\r"},
    };
    for (const auto& row : rows) {
        const std::string text = DecodeText(row.bytes, row.form.encoding)->bytes;
        EXPECT_EQ(TextFormOf(row.bytes, row.form.encoding, text), row.form) << row.name;
        TextForm form = row.form;
        EXPECT_EQ(EncodeFile("é\n\n", form), row.bytes) << row.name;
        EXPECT_EQ(form, row.form) << row.name;
    }
    TextForm poor{"windows-1252", false, "\r\n"};
    EXPECT_EQ(EncodeFile("é你\n", poor), "é你\r\n");
    EXPECT_EQ(poor, (TextForm{"UTF-8", false, "\r\n"})) << "whose encoding holds not all";
    EXPECT_EQ(TextFormOf("", "UTF-8", "a\r\nb\nc\n").lineEnd, "\n") << "the most frequent one";
}

TEST(TextEncoding, NamesTheFirstCharacterThatACodePageLacks)
{
    const std::string much(100000, 'x');
    const struct
    {
        std::string text;
        const char* encoding;
        const char* first;
    } rows[] = {
        {"plain", "windows-1252", ""},
        {"Déjà 你 好", "windows-1252", "你"},
        {"ж", "windows-1252", "ж"},
        {"ok😀", "windows-1252", "😀"},
        {much + "ś" + much + "ж", "windows-1252", "ś"},
        {"é你", "UTF-16LE", ""},
        {"é", "klingon", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FirstNotIn(row.text, row.encoding), row.first) << row.encoding;
}

} // namespace
} // namespace titler
