#include "core/KvProfileFileUtils.h"
#include "core/ProfileDocument.h"
#include "core/TextTables.h"
#include "tests/core/TemporaryFolder.h"

#include <climits>
#include <gtest/gtest.h>

namespace kv {
namespace {

using namespace std::string_view_literals;

TEST(Profile, AWriteChangesOneLine)
{
    const struct
    {
        const char* name;
        std::string_view before;
        std::wstring_view section, key, value;
        std::string_view after;
    } rows[] = {
        {"the line of the key", "; top\n[A]\n x = 1 ; no comment\n\n#\ny=2\n", L"A", L"x", L"5",
         "; top\n[A]\n x = 5\n\n#\ny=2\n"},
        {"the first of several keys", "[A]\nx=1\nx=2\n", L"A", L"x", L"5", "[A]\nx=5\nx=2\n"},
        {"the first of several sections", "[A]\nx=1\n[B]\n[A]\nz=2\n", L"A", L"z", L"5",
         "[A]\nx=1\nz=5\n[B]\n[A]\nz=2\n"},
        {"other case is another key", "[A]\nX=1\n", L"A", L"x", L"5", "[A]\nX=1\nx=5\n"},
        {"a new key takes the line end", "[A]\r\nx=1\r\n\r\n[B]\r\n", L"A", L"y", L"5",
         "[A]\r\nx=1\r\ny=5\r\n\r\n[B]\r\n"},
        {"a lone carriage return, too", "[A]\rx=1\r", L"A", L"y", L"5", "[A]\rx=1\ry=5\r"},
        {"no line end at the end", "[A]\nx=1", L"A", L"y", L"5", "[A]\nx=1\ny=5"},
        {"an empty section", "[A]\n[B]\n", L"A", L"y", L"5", "[A]\ny=5\n[B]\n"},
        {"a new section", "[A]\r\nx=1\r\n", L"B", L"y", L"5", "[A]\r\nx=1\r\n\r\n[B]\r\ny=5\r\n"},
        {"a new section behind no line end", "[A]\nx=1", L"B", L"y", L"5", "[A]\nx=1\n\n[B]\ny=5\n"},
        {"a new section behind a blank line", "[A]\n\n", L"B", L"y", L"5", "[A]\n\n[B]\ny=5\n"},
        {"an empty document", "", L"B", L"y", L"5", "[B]\ny=5\n"},
        {"before the first section", "; top\n[A]\n", L"", L"y", L"5", "y=5\n; top\n[A]\n"},
        {"blanks at the start of a value", "[A]\nx=1\n", L"A", L"x", L"  5 ", "[A]\nx=  5 \n"},
        {"blanks behind a hand-written key", "[A]\n\tx\t= 1\n", L"A", L"x", L"  5", "[A]\n\tx=  5\n"},
        {"an empty value", "[A]\nx = 1\n", L"A", L"x", L"", "[A]\nx = \n"},
        {"lines that are no UTF-8 stand", "[\xE9]\nx=\xFF\n;\xFE\n", L"A", L"x", L"\u00E9",
         "[\xE9]\nx=\xFF\n;\xFE\n\n[A]\nx=\xC3\xA9\n"},
        {"a key that is no UTF-8", "[A]\n\xE9=1\n", L"A", L"\uFFFD", L"5", "[A]\n\xE9=5\n"},
        {"the value that it has", "[A]\nx = \xFF\n", L"A", L"x", L"\uFFFD", "[A]\nx = \xFF\n"},
        {"a byte order mark", "\xEF\xBB\xBF[A]\nx=1\n", L"A", L"x", L"5", "\xEF\xBB\xBF[A]\nx=5\n"},
        {"a byte order mark alone", "\xEF\xBB\xBF", L"", L"x", L"5", "\xEF\xBB\xBFx=5\n"},
        {"UTF-16", "\xFF\xFE[\0A\0]\0\r\0\n\0x\0=\0\x3C\xD8\xAC\xDF"sv, L"A", L"y", L"5",
         "[A]\r\nx=\xF0\x9F\x8E\xAC\r\ny=5"},
        {"UTF-16, big end first, cut", "\xFE\xFF\0[\0A\0]\0\n\0x\0=\xD8\x3C\0;\0"sv, L"A", L"y", L"5",
         "[A]\nx=\xEF\xBF\xBD;\xEF\xBF\xBD\ny=5"},
    };
    for (const auto& row : rows) {
        ProfileDocument document(row.before);
        if (row.before.find('\0') == std::string_view::npos) {
            EXPECT_EQ(document.Bytes(), row.before) << row.name;
        }
        EXPECT_TRUE(document.SetValue(row.section, row.key, row.value)) << row.name;
        EXPECT_EQ(document.Bytes(), row.after) << row.name;
        EXPECT_EQ(document.Value(row.section, row.key), row.value) << row.name;
        EXPECT_EQ(ProfileDocument(row.after).Value(row.section, row.key), row.value) << row.name;
    }
}

TEST(Profile, AddedKeysStandInTheOrderOfWriting)
{
    ProfileDocument document("[B]\n");
    for (const wchar_t* section : {L"", L"A", L"B"}) {
        for (const wchar_t* key : {L"2", L"1", L"3"})
            EXPECT_TRUE(document.SetValue(section, key, L"v"));
    }
    EXPECT_EQ(document.Bytes(), "2=v\n1=v\n3=v\n[B]\n2=v\n1=v\n3=v\n\n[A]\n2=v\n1=v\n3=v\n");
    EXPECT_EQ(ProfileDocument(document.Bytes()).Section(L"A"), document.Section(L"A"));
}

TEST(Profile, NamesOfAnyCaseAreKeptAsTheyStand)
{
    ProfileDocument document("[Colours]\nRed=1\n[COLOURS]\nblue=2\n", kv::ProfileNames::AnyCase);
    EXPECT_EQ(document.Value(L"colours", L"RED"), L"1");
    EXPECT_TRUE(document.SetValue(L"cOLOURS", L"rED", L"3"));
    EXPECT_TRUE(document.SetValue(L"cOLOURS", L"Green", L"4"));
    EXPECT_TRUE(document.SetValue(L"New", L"Key", L"5"));
    EXPECT_EQ(document.Bytes().substr(0, 24), "[Colours]\nRed=3\nGreen=4\n");
    const ProfileDocument again(document.Bytes(), kv::ProfileNames::AnyCase);
    EXPECT_EQ(again.Value(L"COLOURS", L"green"), L"4");
    EXPECT_EQ(again.Value(L"NEW", L"key"), L"5");
}

TEST(Profile, ReadsHandWrittenLines)
{
    const ProfileDocument document("top=0\n [A] ; comment\n;a=1\n #b=1\nnothing\n=1\n[open\n[open=1\n"
                                   "c=  1 \n  d  =  1 \ne=x=y\nf=\ng h=1\n\xFFi=\xFF\nc=2\n[]\n[B]]\nj=1");
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {
        {L"c", L"  1 "}, {L"d", L"1 "}, {L"e", L"x=y"}, {L"f", L""}, {L"g h", L"1"}, {L"\uFFFDi", L"\uFFFD"}};
    EXPECT_EQ(document.Section(L"A"), expected);
    EXPECT_EQ(document.Value(L"", L"top"), L"0");
    EXPECT_EQ(document.Value(L"B", L"j"), L"1");
    EXPECT_EQ(document.Value(L"A", L"none"), std::nullopt);
    EXPECT_EQ(document.Section(L"a").size(), 0u);
}

TEST(Profile, IntegersAreTheLeadingDigits)
{
    const ProfileDocument document(
        "[A]\na=12x\nb=-7\nc=+8\nd=\ne=x\nf=99999999999999999999\ng=-2147483649\nh=- 1\ni= 3");
    const std::pair<const wchar_t*, int> rows[] = {{L"a", 12}, {L"b", -7},      {L"c", 8},       {L"d", 0},
                                                   {L"e", 0},  {L"f", INT_MAX}, {L"g", INT_MIN}, {L"h", 0},
                                                   {L"i", 3},  {L"none", 42}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(document.Integer(L"A", key, 42), value) << ToUtf8(key);
}

TEST(Profile, RefusesWhatCouldNotBeReadBack)
{
    const std::wstring half(1, wchar_t(0xD800));
    const struct
    {
        const char* name;
        std::wstring section, key, value;
    } rows[] = {
        {"line feed in a value", L"A", L"x", L"1\ny=2"},
        {"carriage return in a value", L"A", L"x", L"1\r"},
        {"half a character", L"A", L"x", half},
        {"section with a bracket", L"A]", L"x", L"1"},
        {"section with a line break", L"A\n", L"x", L"1"},
        {"no key", L"A", L"", L"1"},
        {"key with an equals sign", L"A", L"x=y", L"1"},
        {"key as a comment", L"A", L";x", L"1"},
        {"key as another comment", L"A", L"#x", L"1"},
        {"key as a section", L"A", L"[x", L"1"},
        {"blank before a key", L"A", L" x", L"1"},
        {"blank behind a key", L"A", L"x\t", L"1"},
        {"byte order mark before a key", L"", L"\uFEFFx", L"1"},
    };
    for (const auto& row : rows) {
        ProfileDocument document("[A]\nx=0\n");
        EXPECT_FALSE(document.SetValue(row.section, row.key, row.value)) << row.name;
        EXPECT_EQ(document.Bytes(), "[A]\nx=0\n") << row.name;
    }
}

TEST(Profile, ManySectionsStayFast)
{
    constexpr int kMany = 20000;
    ProfileDocument document;
    for (int i = 0; i < kMany; ++i)
        ASSERT_TRUE(document.SetInteger(L"Rule" + std::to_wstring(i), L"Class", i));
    const ProfileDocument again(document.Bytes());
    for (int i = 0; i < kMany; ++i)
        ASSERT_EQ(again.Integer(L"Rule" + std::to_wstring(i), L"Class", -1), i);
}

TEST(Profile, WhatStandsBehindTooManyLinesIsKeptUnread)
{
    std::string bytes;
    for (std::size_t i = 1; i < ProfileDocument::kMostEntries; ++i)
        bytes += i % 2 == 0 ? "x=\n" : "[]\n";
    ProfileDocument full(bytes);
    EXPECT_FALSE(full.SetValue(L"A", L"y", L"1")) << "two lines, and room for one";
    EXPECT_TRUE(full.SetValue(L"", L"y", L"1"));
    EXPECT_FALSE(full.SetValue(L"", L"z", L"1"));
    EXPECT_TRUE(full.SetValue(L"", L"y", L"2"));

    bytes = full.Bytes() + "; a comment\n[A]\nz=1\n";
    ProfileDocument document(bytes);
    EXPECT_EQ(document.Value(L"", L"y"), L"2");
    EXPECT_EQ(document.Value(L"A", L"z"), std::nullopt);
    EXPECT_FALSE(document.SetValue(L"", L"y", L"3"));
    EXPECT_EQ(document.Bytes(), bytes);
}

TEST(ProfileFile, ReadsAndWritesOneValue)
{
    using namespace KvProfileFileUtils;
    const TemporaryFolder folder;
    const std::wstring file = folder.Wide("a.ini");
    EXPECT_EQ(GetInt(file.c_str(), L"A", L"x", 7), 7);
    EXPECT_EQ(WriteProfileVer(file.c_str(), 1), 1);
    EXPECT_EQ(WriteString(file.c_str(), L"A", L"x", L"12345"), 1);
    EXPECT_EQ(folder.Get("a.ini"), "[ProfileVersion]\nVersion=1\n\n[A]\nx=12345\n");
    EXPECT_EQ(WriteString(file.c_str(), L"A", L"x", L"1\n2"), 0);
    EXPECT_EQ(GetInt(file.c_str(), L"A", L"x", 7), 12345);

    wchar_t buffer[4] = L"###";
    EXPECT_EQ(GetString(file.c_str(), L"A", L"x", buffer, 4, L""), 3);
    EXPECT_STREQ(buffer, L"123");
    const std::wstring_view cut = sizeof(wchar_t) == 2 ? L"12" : L"12\U0001F3AC";
    EXPECT_EQ(GetString(file.c_str(), L"A", L"none", buffer, 4, L"12\U0001F3AC4"), int(cut.size()));
    EXPECT_EQ(buffer, cut) << "no half of a character";
    EXPECT_EQ(GetString(file.c_str(), L"A", L"none", buffer, 4, L"d"), 1);
    EXPECT_STREQ(buffer, L"d");
    EXPECT_EQ(GetString(nullptr, L"A", L"x", buffer, 1, nullptr), 0);
    EXPECT_EQ(GetString(file.c_str(), L"A", L"x", nullptr, 4, L""), 0);
    EXPECT_EQ(WriteInt(folder.Wide("").c_str(), L"A", L"x", 1), 0) << "a folder cannot be read";
    std::filesystem::resize_file(folder / "a.ini", ProfileDocument::kMostBytes);
    EXPECT_EQ(WriteInt(file.c_str(), L"A", L"y", 1), 0) << "it could not be read again";
    EXPECT_EQ(std::filesystem::file_size(folder / "a.ini"), ProfileDocument::kMostBytes);
}

TEST(TextTables, AnOverlayReplacesTextsByNumber)
{
    const TemporaryFolder folder;
    const std::wstring built = LoadText(12026);
    const std::wstring cut = LoadText(TextKind::Menu, 12002, 32772);
    EXPECT_EQ(built, L"Progressive");
    folder.Put("de.ini", "[Strings]\n12026 = a\\r\\n\\\\n\\t\\x\\\n12025 =\n12x = b\n-1=c\n"
                         "[Menus]\n12002.32772 = M\n12002 = x\n[Dialogs]\n1.2=D\n[Tips]\n12026=T\n");
    ASSERT_TRUE(SetTextOverlay(folder.Wide("de.ini")));
    EXPECT_EQ(LoadText(12026), L"a\r\n\\n\t\\x\\");
    EXPECT_EQ(LoadText(12025), L"Lower First") << "not translated";
    EXPECT_EQ(LoadText(TextKind::Menu, 12002, 32772), L"M");
    EXPECT_EQ(LoadText(TextKind::Dialog, 1, 2), L"D");
    EXPECT_EQ(LoadText(TextKind::Tip, 0, 12026), L"T");
    EXPECT_EQ(LoadText(99), L"");

    EXPECT_FALSE(SetTextOverlay(folder.Wide("none.ini")));
    EXPECT_EQ(LoadText(TextKind::Tip, 0, 12026), L"T") << "unchanged";
    EXPECT_TRUE(SetTextOverlay({}));
    EXPECT_EQ(LoadText(12026), built);
    EXPECT_EQ(LoadText(TextKind::Menu, 12002, 32772), cut);
}

} // namespace
} // namespace kv
