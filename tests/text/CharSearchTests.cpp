// Finding a character by its name, its code or itself.
#include "core/Text.h"
#include "text/CharSearch.h"

#include <gtest/gtest.h>

namespace {

struct Named
{
    char16_t code;
    const char* name;
};

constexpr Named kNames[] = {
    {0x2D, "HYPHEN-MINUS"},
    {0x45, "LATIN CAPITAL LETTER E"},
    {0x61, "LATIN SMALL LETTER A"},
    {0xAC, "NOT SIGN"},
    {0xB4, "ACUTE ACCENT"},
    {0xC9, "LATIN CAPITAL LETTER E WITH ACUTE"},
    {0xE9, "LATIN SMALL LETTER E WITH ACUTE"},
    {0x2665, "BLACK HEART SUIT"},
    {0x2763, "HEAVY HEART EXCLAMATION MARK ORNAMENT"},
    {0xFACE, "CJK COMPATIBILITY IDEOGRAPH-FACE"},
};

TEST(CharSearch, FindsByItselfByCodeAndByName)
{
    kv::CharNameIndex names;
    kv::CodeTable table;
    for (const Named& one : kNames) {
        names.Add(one.code, one.name);
        if (one.code != 0x2763) // not every face has every character
            table.push_back({one.code, 1});
    }
    struct Case
    {
        const wchar_t* query;
        int code; ///< -1 for none
    };
    const Case cases[] = {
        {L"é", 0xE9},
        {L" a ", 0x61},
        {L"♥", 0x2665},
        {L"\U0001F600", -1},
        {L"E9", 0xE9},
        {L"e9", 0xE9},
        {L"U+E9", 0xE9},
        {L"u+00e9", 0xE9},
        {L"0xE9", 0xE9},
        {L"0X2665", 0x2665},
        {L"U+2763", -1}, // the face lacks it
        {L"U+", -1},
        {L"U+E9 acute", -1},
        {L"0xFFFFFFFFF", -1},
        {L"face", 0xFACE}, // a code that is there goes before a name
        {L"ac", 0xAC},
        {L"acu", 0xB4},
        {L"acute", 0xB4},
        {L"ACUTE e", 0xC9}, // a word of its own, not the letter anywhere
        {L"e acute small", 0xE9},
        {L"minus", 0x2D},
        {L"minus-hyphen", 0x2D},
        {L"eart", -1}, // no word begins so
        {L"heart", 0x2665},
        {L"heart ornament", -1},
        {L"heart\nsuit", 0x2665},
        {L"herz", -1},
        {L"ñandú", -1},
        {L"   ", -1},
        {L"", -1},
        {L"-", 0x2D},
        {L"--", -1},
    };
    for (const Case& one : cases) {
        const int place = kv::FindCharacter(one.query, table, names);
        EXPECT_EQ(place < 0 ? -1 : table[static_cast<std::size_t>(place)].code, one.code)
            << kv::ToUtf8(one.query);
    }
}

TEST(CharSearch, GoesOnAfterAMatchAndBeginsAgain)
{
    kv::CharNameIndex names;
    kv::CodeTable table;
    for (const Named& one : kNames) {
        names.Add(one.code, one.name);
        table.push_back({one.code, 1});
    }
    std::vector<int> found{-1};
    for (int i = 0; i < 4; ++i)
        found.push_back(kv::FindCharacter(L"letter e", table, names, found.back()));
    EXPECT_EQ(found, (std::vector<int>{-1, 1, 5, 6, 1}));
    // A code comes first, then the names that its digits spell.
    names = {};
    table.clear();
    for (const Named& one :
         {Named{0xBA, "MASCULINE ORDINAL"}, Named{0xBEE, "NO SIGN"}, Named{0x1000, "BEE SIGN"},
          Named{0x2003, "EM SPACE"}, Named{0x3000, "BEEHIVE"}}) {
        names.Add(one.code, one.name);
        table.push_back({one.code, 1});
    }
    found = {-1};
    for (int i = 0; i < 4; ++i)
        found.push_back(kv::FindCharacter(L"bee", table, names, found.back()));
    EXPECT_EQ(found, (std::vector<int>{-1, 1, 2, 4, 1}));
    EXPECT_EQ(kv::FindCharacter(L"\u2003", table, names), 3);
    EXPECT_EQ(kv::FindCharacter(L"  ", table, names), -1);
    EXPECT_EQ(kv::FindCharacter(L"heart", {}, names), -1);
    EXPECT_EQ(kv::FindCharacter(L"heart", table, {}), -1);
}

} // namespace
