// The characters of a font face, read from its own character map.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kv {

/// A character and the index of its glyph, which is never 0.
struct CodeGlyph
{
    char16_t code;
    std::uint16_t glyph;

    friend bool operator==(const CodeGlyph&, const CodeGlyph&) = default;
};

/// In ascending order of the codes, each once. Never U+FFFF, a surrogate or a character above it.
using CodeTable = std::vector<CodeGlyph>;

/// Reads the "cmap" table of a font file. Of several Unicode maps the widest counts; without one a symbol
/// map, then the ASCII part of a Macintosh map. What is broken or hostile is left out; the work is bounded.
/// @param glyphCount how many glyphs the face has: what maps beyond them is left out, as is glyph 0.
CodeTable ReadCodeTable(std::span<const std::uint8_t> cmap, std::uint32_t glyphCount);

/// What a grid shows: the table without a space at its beginning.
void DropLeadingSpace(CodeTable& table);

/// @return the place of a character in the table; -1 when it is not there.
int PlaceOf(const CodeTable& table, char32_t code);

} // namespace kv
