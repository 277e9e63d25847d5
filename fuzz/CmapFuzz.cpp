// A glyph count and a "cmap" table. Whatever it says, the characters come out in order and within the face.
#include "Require.h"
#include "core/CodePoints.h"
#include "text/CodeTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t headSize = 2;
    if (size < headSize)
        return 0;
    const std::uint32_t glyphs = data[0] | std::uint32_t{data[1]} << 8;
    kv::CodeTable table = kv::ReadCodeTable({data + headSize, size - headSize}, glyphs);
    for (std::size_t i = 0; i < table.size(); ++i) {
        Require(table[i].glyph != 0 && table[i].glyph < glyphs);
        Require(table[i].code != 0xFFFF && !kv::IsSurrogate(table[i].code));
        Require(i == 0 || table[i - 1].code < table[i].code);
        Require(kv::PlaceOf(table, table[i].code) == static_cast<int>(i));
    }
    kv::DropLeadingSpace(table);
    Require(table.empty() || table.front().code != u' ');
    return 0;
}
