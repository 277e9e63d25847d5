// The rows of a report list: where they are.
#include "platform/ReportRows.h"

#include <algorithm>

namespace kv {

int ReportRows::Find(std::uint64_t id) const
{
    if (!m_chunkOf) {
        m_chunkOf = std::make_unique<Index>();
        m_chunkOf->reserve(static_cast<std::size_t>(Count()));
        for (const auto& chunk : m_chunks) {
            for (const ReportRow& row : chunk->rows)
                m_chunkOf->emplace(row.id, chunk.get());
        }
    }
    const auto known = m_chunkOf->find(id);
    if (known == m_chunkOf->end())
        return -1;
    SumUpTo(m_chunks.size() - 1);
    const Chunk& chunk = *known->second;
    const auto row = std::find_if(chunk.rows.begin(), chunk.rows.end(),
                                  [&](const ReportRow& one) { return one.id == id; });
    return m_before[chunk.place].count + static_cast<int>(row - chunk.rows.begin());
}

void ReportRows::Visit(int line, const std::function<bool(int line, const ReportRow& row)>& visit) const
{
    if (line >= Count())
        return;
    for (Place place = PlaceOf(line); place.chunk < m_chunks.size(); place = {place.chunk + 1, 0}) {
        for (; place.row < m_chunks[place.chunk]->rows.size(); ++place.row, ++line) {
            if (!visit(line, m_chunks[place.chunk]->rows[place.row]))
                return;
        }
    }
}

void ReportRows::VisitShown(int line, const std::function<bool(int line, const ReportRow& row)>& visit) const
{
    if (line >= Count())
        return;
    for (Place place = PlaceOf(line); place.chunk < m_chunks.size(); place = {place.chunk + 1, 0}) {
        const Chunk& chunk = *m_chunks[place.chunk];
        if (chunk.sums.shown == 0) {
            line += static_cast<int>(chunk.rows.size() - place.row);
            continue;
        }
        for (; place.row < chunk.rows.size(); ++place.row, ++line) {
            if (chunk.rows[place.row].shown && !visit(line, chunk.rows[place.row]))
                return;
        }
    }
}

std::int64_t ReportRows::TopOf(int line) const
{
    if (line >= Count())
        return Height();
    const Place place = PlaceOf(line);
    std::int64_t top = m_before[place.chunk].height;
    for (std::size_t i = 0; i < place.row; ++i) {
        const ReportRow& row = m_chunks[place.chunk]->rows[i];
        top += row.shown ? row.height : 0;
    }
    return top;
}

int ReportRows::LineAt(std::int64_t place) const
{
    if (ShownCount() == 0)
        return -1;
    if (place >= Height())
        return ShownLine(ShownCount() - 1);
    place = std::max<std::int64_t>(place, 0);
    SumUpTo(m_chunks.size() - 1);
    const auto next =
        std::upper_bound(m_before.begin(), m_before.end(), place,
                         [](std::int64_t value, const Extent& before) { return value < before.height; });
    const auto chunk = static_cast<std::size_t>(next - m_before.begin()) - 1;
    std::int64_t bottom = m_before[chunk].height;
    int line = m_before[chunk].count;
    for (const ReportRow& row : m_chunks[chunk]->rows) {
        bottom += row.shown ? row.height : 0;
        if (bottom > place)
            break;
        ++line;
    }
    return line;
}

int ReportRows::CountWithin(std::int64_t place, int height) const
{
    if (ShownCount() == 0 || height <= 0)
        return 0;
    const int top = LineAt(place);
    const int bottom = LineAt(place + height - 1);
    const bool cutAbove = TopOf(top) < place;
    const bool cutBelow = TopOf(bottom) + Row(bottom).height > place + height;
    const int count = ShownBefore(bottom) - ShownBefore(top) + 1;
    return count - (cutAbove ? 1 : 0) - (cutBelow && (bottom != top || !cutAbove) ? 1 : 0);
}

int ReportRows::ShownBefore(int line) const
{
    if (line >= Count())
        return ShownCount();
    const Place place = PlaceOf(line);
    const std::vector<ReportRow>& rows = m_chunks[place.chunk]->rows;
    return m_before[place.chunk].shown +
           static_cast<int>(std::count_if(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(place.row),
                                          [](const ReportRow& row) { return row.shown; }));
}

int ReportRows::ShownLine(int index) const
{
    if (index < 0 || index >= ShownCount())
        return -1;
    SumUpTo(m_chunks.size() - 1);
    const auto next = std::upper_bound(m_before.begin(), m_before.end(), index,
                                       [](int value, const Extent& before) { return value < before.shown; });
    const auto chunk = static_cast<std::size_t>(next - m_before.begin()) - 1;
    int line = m_before[chunk].count;
    int left = index - m_before[chunk].shown;
    for (const ReportRow& row : m_chunks[chunk]->rows) {
        if (row.shown && left-- == 0)
            break;
        ++line;
    }
    return line;
}

} // namespace kv
