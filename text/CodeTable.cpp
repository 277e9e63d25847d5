#include "text/CodeTable.h"

#include "core/CodePoints.h"

#include <algorithm>

namespace kv {

namespace {

constexpr std::uint32_t kEnd = 0xFFFF; // U+FFFF and what is beyond are never asked for

/// Big-endian numbers of a table; what lies outside it reads as 0.
class Bytes
{
public:
    explicit Bytes(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::size_t Size() const { return m_bytes.size(); }
    bool Has(std::size_t at, std::size_t length) const { return at <= Size() && length <= Size() - at; }
    std::uint32_t U8(std::size_t at) const { return Has(at, 1) ? m_bytes[at] : 0u; }
    std::uint32_t U16(std::size_t at) const
    {
        return Has(at, 2) ? static_cast<std::uint32_t>(m_bytes[at] << 8 | m_bytes[at + 1]) : 0u;
    }
    std::uint32_t U32(std::size_t at) const { return U16(at) << 16 | U16(at + 2); }
    /// How many items of a size there can be from a place on, at most `count`.
    std::size_t Items(std::size_t at, std::size_t size, std::size_t count) const
    {
        return at < Size() ? std::min(count, (Size() - at) / size) : 0;
    }
    Bytes From(std::size_t at) const { return Bytes(m_bytes.subspan(std::min(at, Size()))); }

private:
    std::span<const std::uint8_t> m_bytes;
};

/// Takes the mappings in ascending order; a map whose ranges overlap or stand in disorder keeps the first
/// ones, and no character is looked at twice.
class Collector
{
public:
    Collector(std::uint32_t glyphCount, std::uint32_t end) : m_glyphCount(glyphCount), m_end(end) {}

    /// Asks for the glyph of every character of a range, both ends included, that is still to come.
    template <typename GlyphOf>
    void AddRange(std::uint32_t first, std::uint32_t last, GlyphOf glyphOf)
    {
        for (first = std::max(first, m_next); first <= last && first < m_end; ++first) {
            const std::uint32_t glyph = glyphOf(first);
            if (glyph != 0 && glyph < m_glyphCount && glyph <= 0xFFFF && !IsSurrogate(first))
                m_table.push_back({static_cast<char16_t>(first), static_cast<std::uint16_t>(glyph)});
            m_next = first + 1;
        }
    }
    bool IsFull() const { return m_next >= m_end; }
    CodeTable Take() { return std::move(m_table); }

private:
    CodeTable m_table;
    std::uint32_t m_next = 0;
    std::uint32_t m_glyphCount;
    std::uint32_t m_end;
};

/// Format 4: segments of 16-bit characters, each with a delta or an array of glyphs.
void ReadSegments(const Bytes& map, Collector& collector)
{
    constexpr std::size_t kEnds = 14;
    constexpr std::uint32_t kBrokenOffset = 0xFFFF; // some tools write it into the last segment
    const std::size_t segments = map.U16(6) / 2;
    if (!map.Has(kEnds, 8 * segments + 2))
        return; // where the arrays begin is not known
    const std::size_t starts = kEnds + 2 * segments + 2;
    const std::size_t deltas = starts + 2 * segments;
    const std::size_t offsets = deltas + 2 * segments;
    for (std::size_t i = 0; i < segments && !collector.IsFull(); ++i) {
        const std::uint32_t start = map.U16(starts + 2 * i);
        const std::uint32_t delta = map.U16(deltas + 2 * i);
        const std::size_t offsetAt = offsets + 2 * i;
        const std::uint32_t offset = map.U16(offsetAt);
        if (offset == kBrokenOffset)
            continue;
        collector.AddRange(start, map.U16(kEnds + 2 * i), [&](std::uint32_t code) {
            if (offset == 0)
                return (code + delta) & 0xFFFF;
            // Counted from where the offset itself stands.
            const std::uint32_t glyph = map.U16(offsetAt + offset + std::size_t{2} * (code - start));
            return glyph == 0 ? 0 : (glyph + delta) & 0xFFFF;
        });
    }
}

/// Formats 12 and 13: groups of 32-bit characters whose glyphs go on, or are the same.
void ReadGroups(const Bytes& map, bool goOn, Collector& collector)
{
    constexpr std::size_t kGroups = 16;
    const std::size_t groups = map.Items(kGroups, 12, map.U32(12));
    for (std::size_t i = 0; i < groups && !collector.IsFull(); ++i) {
        const std::size_t at = kGroups + 12 * i;
        const std::uint32_t start = map.U32(at);
        const std::uint32_t glyph = map.U32(at + 8);
        collector.AddRange(start, map.U32(at + 4), [&](std::uint32_t code) {
            const std::uint64_t shown = std::uint64_t{glyph} + (goOn ? code - start : 0);
            return shown <= 0xFFFF ? static_cast<std::uint32_t>(shown) : 0;
        });
    }
}

/// Formats 0, 6 and 10: one array of glyphs from a first character on.
void ReadArray(const Bytes& map, std::size_t at, std::size_t size, std::uint32_t first, std::uint32_t count,
               Collector& collector)
{
    const std::size_t glyphs = map.Items(at, size, count);
    if (glyphs == 0 || first >= kEnd)
        return;
    const std::uint64_t last = std::uint64_t{first} + glyphs - 1;
    collector.AddRange(first, static_cast<std::uint32_t>(std::min<std::uint64_t>(last, kEnd)),
                       [&](std::uint32_t code) {
                           const std::size_t place = at + size * (code - first);
                           return size == 1 ? map.U8(place) : map.U16(place);
                       });
}

void ReadMap(const Bytes& map, Collector& collector)
{
    switch (map.U16(0)) {
    case 0:
        ReadArray(map, 6, 1, 0, 256, collector);
        break;
    case 4:
        ReadSegments(map, collector);
        break;
    case 6:
        ReadArray(map, 10, 2, map.U16(6), map.U16(8), collector);
        break;
    case 10:
        ReadArray(map, 20, 2, map.U32(12), map.U32(16), collector);
        break;
    case 12:
    case 13:
        ReadGroups(map, map.U16(0) == 12, collector);
        break;
    default: // variation sequences, and old encodings of mixed width
        break;
    }
}

enum class Encoding
{
    None,
    Macintosh,
    Symbol,
    UnicodeBmp,
    UnicodeFull
};

Encoding EncodingOf(std::uint32_t platform, std::uint32_t id)
{
    constexpr std::uint32_t kVariations = 5;
    switch (platform) {
    case 0:
        return id == kVariations ? Encoding::None : id >= 4 ? Encoding::UnicodeFull : Encoding::UnicodeBmp;
    case 1:
        return id == 0 ? Encoding::Macintosh : Encoding::None;
    case 3:
        return id == 0    ? Encoding::Symbol
               : id == 1  ? Encoding::UnicodeBmp
               : id == 10 ? Encoding::UnicodeFull
                          : Encoding::None;
    default:
        return Encoding::None;
    }
}

} // namespace

CodeTable ReadCodeTable(std::span<const std::uint8_t> cmap, std::uint32_t glyphCount)
{
    constexpr std::size_t kRecords = 4;
    constexpr std::uint32_t kEndOfAscii = 0x7F;
    const Bytes bytes(cmap);
    const std::size_t count = bytes.Items(kRecords, 8, bytes.U16(2));
    // The best encoding that gives anything; maps of one encoding say the same.
    for (int kind = static_cast<int>(Encoding::UnicodeFull); kind > 0; --kind) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = kRecords + 8 * i;
            const Encoding encoding = EncodingOf(bytes.U16(at), bytes.U16(at + 2));
            if (encoding != static_cast<Encoding>(kind))
                continue;
            Collector collector(glyphCount, encoding == Encoding::Macintosh ? kEndOfAscii : kEnd);
            ReadMap(bytes.From(bytes.U32(at + 4)), collector);
            CodeTable table = collector.Take();
            if (!table.empty())
                return table;
        }
    }
    return {};
}

void DropLeadingSpace(CodeTable& table)
{
    if (!table.empty() && table.front().code == u' ')
        table.erase(table.begin());
}

int PlaceOf(const CodeTable& table, char32_t code)
{
    const auto place =
        std::lower_bound(table.begin(), table.end(), code,
                         [](const CodeGlyph& entry, char32_t wanted) { return entry.code < wanted; });
    return place != table.end() && place->code == code ? static_cast<int>(place - table.begin()) : -1;
}

} // namespace kv
