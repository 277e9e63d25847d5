// Reading a font's character map: every format, and tables that lie.
#include "text/CodeTable.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes operator+(Bytes a, const Bytes& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Bytes U16(std::initializer_list<unsigned> numbers)
{
    Bytes bytes;
    for (const unsigned number : numbers) {
        bytes.push_back(static_cast<std::uint8_t>(number >> 8));
        bytes.push_back(static_cast<std::uint8_t>(number));
    }
    return bytes;
}

Bytes U32(std::initializer_list<unsigned> numbers)
{
    Bytes bytes;
    for (const unsigned number : numbers)
        bytes = std::move(bytes) + U16({number >> 16, number & 0xFFFF});
    return bytes;
}

struct Map
{
    unsigned platform;
    unsigned encoding;
    Bytes bytes;
};

Bytes Cmap(const std::vector<Map>& maps)
{
    const auto count = static_cast<unsigned>(maps.size());
    Bytes head = U16({0, count});
    Bytes body;
    for (const Map& map : maps) {
        head = head + U16({map.platform, map.encoding}) +
               U32({4 + 8 * count + static_cast<unsigned>(body.size())});
        body = body + map.bytes;
    }
    return head + body;
}

/// Segments of format 4: ends, a pad, starts, deltas, offsets, glyphs.
Bytes Format4(unsigned segments, const Bytes& rest)
{
    return U16({4, 0, 0, 2 * segments, 0, 0, 0}) + rest;
}

Bytes Format12(const Bytes& groups, unsigned format = 12)
{
    return U16({format, 0}) + U32({0, 0, static_cast<unsigned>(groups.size() / 12)}) + groups;
}

/// "code:glyph" in hexadecimal, each followed by a blank.
std::string Text(const kv::CodeTable& table)
{
    std::string text;
    char buffer[32];
    for (const kv::CodeGlyph& one : table) {
        std::snprintf(buffer, sizeof buffer, "%X:%X ", unsigned{one.code}, unsigned{one.glyph});
        text += buffer;
    }
    return text;
}

TEST(CodeTable, ReadsEveryFormat)
{
    struct Case
    {
        const char* name;
        Bytes cmap;
        const char* table;
    };
    Bytes oneByte(256, 0);
    oneByte[65] = 3;
    oneByte[0xE9] = 4;
    const Bytes few = Format12(U32({0x41, 0x41, 9}));
    const Case cases[] = {
        {"0 holds Macintosh characters: ASCII alone is the same", Cmap({{1, 0, U16({0, 262, 0}) + oneByte}}),
         "41:3 "},
        {"4 by deltas, which wrap",
         Cmap({{3, 1, Format4(2, U16({66, 0x100, 0, 65, 0x100, 65536 - 60, 5, 0, 0}))}}),
         "41:5 42:6 100:105 "},
        {"4 by glyphs, of which 0 has no delta",
         Cmap({{3, 1, Format4(2, U16({67, 0xFFFF, 0, 65, 0xFFFF, 10, 1, 4, 0, 1, 0, 2}))}}), "41:B 43:C "},
        {"4 with the broken offset of old tools",
         Cmap({{3, 1, Format4(2, U16({66, 68, 0, 65, 67, 0, 0, 0, 0xFFFF}))}}), "41:41 42:42 "},
        {"6", Cmap({{0, 3, U16({6, 0, 0, 65, 3, 7, 0, 8})}}), "41:7 43:8 "},
        {"10", Cmap({{3, 10, U16({10, 0}) + U32({0, 0, 65, 2}) + U16({7, 8})}}), "41:7 42:8 "},
        {"12, what is above U+FFFF left out", Cmap({{3, 10, Format12(U32({65, 66, 7, 0xFFFD, 0x10001, 9}))}}),
         "41:7 42:8 FFFD:9 FFFE:A "},
        {"13 gives one glyph to all", Cmap({{3, 10, Format12(U32({65, 67, 7}), 13)}}), "41:7 42:7 43:7 "},
        {"surrogates are no characters", Cmap({{3, 10, Format12(U32({0xD7FF, 0xE000, 1}))}}),
         "D7FF:1 E000:802 "},
        {"the widest map counts",
         Cmap({{1, 0, U16({0, 262, 0}) + oneByte}, {3, 1, U16({6, 0, 0, 66, 1, 1})}, {3, 10, few}}), "41:9 "},
        {"unless it is empty", Cmap({{3, 10, Format12({})}, {3, 1, U16({6, 0, 0, 66, 1, 1})}}), "42:1 "},
        {"a symbol font shows its own range", Cmap({{3, 0, U16({6, 0, 0, 0xF021, 2, 1, 2})}}),
         "F021:1 F022:2 "},
        {"variation sequences are no map", Cmap({{0, 5, few}}), ""},
        {"another platform", Cmap({{2, 1, few}}), ""},
        {"an unknown format", Cmap({{3, 1, U16({8, 0, 0, 65, 1, 1})}}), ""},
    };
    for (const Case& one : cases)
        EXPECT_EQ(Text(kv::ReadCodeTable(one.cmap, 0xFFFF)), one.table) << one.name;
}

TEST(CodeTable, LeavesOutGlyphsThatTheFaceLacks)
{
    const Bytes cmap = Cmap({{3, 10, Format12(U32({65, 70, 7}))}});
    EXPECT_EQ(Text(kv::ReadCodeTable(cmap, 9)), "41:7 42:8 ");
    EXPECT_EQ(Text(kv::ReadCodeTable(cmap, 0)), "");
}

TEST(CodeTable, SurvivesTablesThatLie)
{
    EXPECT_TRUE(kv::ReadCodeTable({}, 100).empty());
    EXPECT_TRUE(kv::ReadCodeTable(Bytes(3, 0xFF), 100).empty());
    // Cut anywhere, what comes out is a part of the whole.
    const Bytes whole = Cmap({{3, 1, Format4(2, U16({67, 0xFFFF, 0, 65, 0xFFFF, 10, 1, 4, 0, 1, 0, 2}))}});
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_LE(kv::ReadCodeTable(std::span(whole).first(length), 100).size(), 2u) << length;
    // Every segment claims all characters: each is looked at once all the same.
    constexpr unsigned kSegments = 0x7FFF;
    Bytes claims = U16({4, 0, 0, 2 * kSegments, 0, 0, 0}) + Bytes(8 * kSegments + 2, 0xFF);
    for (std::size_t start = 0; start < 2 * kSegments; ++start)
        claims[14 + 2 * kSegments + 2 + start] = 0;
    for (std::size_t offset = 0; offset < 2 * kSegments; ++offset)
        claims[14 + 6 * kSegments + 2 + offset] = 0;
    EXPECT_EQ(kv::ReadCodeTable(Cmap({{3, 1, claims}}), 0xFFFF).size(), 0xFFFEu - 1 - 0x800);
    // A second range that overlaps gives only what is new.
    const Bytes overlap = Cmap({{3, 10, Format12(U32({65, 66, 1, 65, 67, 11, 60, 61, 21}))}});
    EXPECT_EQ(Text(kv::ReadCodeTable(overlap, 100)), "41:1 42:2 43:D ");
}

TEST(CodeTable, ShowsNoSpaceFirst)
{
    kv::CodeTable table{{u' ', 3}, {u'!', 4}};
    kv::DropLeadingSpace(table);
    EXPECT_EQ(Text(table), "21:4 ");
    kv::DropLeadingSpace(table);
    EXPECT_EQ(Text(table), "21:4 ");
    kv::CodeTable later{{u'\r', 2}, {u' ', 3}};
    kv::DropLeadingSpace(later);
    EXPECT_EQ(Text(later), "D:2 20:3 ");
    EXPECT_EQ(kv::PlaceOf(later, U' '), 1);
    EXPECT_EQ(kv::PlaceOf(later, 0x10020), -1);
}

} // namespace
