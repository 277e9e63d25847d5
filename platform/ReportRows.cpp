#include "platform/ReportRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kv {

namespace {

constexpr std::size_t kChunkRows = 256;

std::size_t Index(int value)
{
    return static_cast<std::size_t>(value);
}

} // namespace

void ReportRows::Sums::Add(const ReportRow& row, int sign)
{
    count += sign;
    shown += row.shown ? sign : 0;
    selected += row.selected ? sign : 0;
    height += row.shown ? std::int64_t{row.height} * sign : 0;
}

void ReportRows::Sums::Add(const Sums& other, int sign)
{
    count += other.count * sign;
    shown += other.shown * sign;
    selected += other.selected * sign;
    height += other.height * sign;
}

void ReportRows::Chunk::Take(ReportRow row, std::size_t at)
{
    sums.Add(row, 1);
    lowestId = std::min(lowestId, row.id);
    highestId = std::max(highestId, row.id);
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(at), std::move(row));
}

// Makes the sums before that chunk known.
void ReportRows::SumUpTo(std::size_t chunk) const
{
    while (m_before.size() <= chunk) {
        const std::size_t next = m_before.size();
        Sums sums;
        if (next > 0) {
            sums = m_before[next - 1];
            sums.Add(m_chunks[next - 1]->sums, 1);
        }
        m_before.push_back(sums);
    }
}

const ReportRows::Sums& ReportRows::Before(std::size_t chunk) const
{
    SumUpTo(chunk);
    return m_before[chunk];
}

void ReportRows::ForgetSumsAfter(std::size_t chunk)
{
    if (m_before.size() > chunk + 1)
        m_before.resize(chunk + 1);
}

ReportRows::Place ReportRows::PlaceOf(int line) const
{
    SumUpTo(m_chunks.size() - 1);
    const auto next = std::upper_bound(m_before.begin(), m_before.end(), line,
                                       [](int value, const Sums& sums) { return value < sums.count; });
    const auto chunk = static_cast<std::size_t>(next - m_before.begin()) - 1;
    return {chunk, Index(line - m_before[chunk].count)};
}

const ReportRow& ReportRows::Row(int line) const
{
    const Place place = PlaceOf(line);
    return m_chunks[place.chunk]->rows[place.row];
}

ReportRow& ReportRows::At(int line)
{
    return const_cast<ReportRow&>(Row(line));
}

void ReportRows::Append(ReportRow row)
{
    if (m_chunks.empty() || m_chunks.back()->rows.size() >= kChunkRows)
        m_chunks.push_back(std::make_unique<Chunk>());
    m_total.Add(row, 1);
    m_chunks.back()->Take(std::move(row), m_chunks.back()->rows.size());
}

void ReportRows::Insert(int line, ReportRow row)
{
    row.id = ++m_lastId;
    if (line == Count()) {
        Append(std::move(row));
        return;
    }
    Place place = PlaceOf(line);
    if (m_chunks[place.chunk]->rows.size() >= kChunkRows) {
        Split(line - static_cast<int>(place.row) + static_cast<int>(kChunkRows / 2));
        place = PlaceOf(line);
    }
    m_total.Add(row, 1);
    m_chunks[place.chunk]->Take(std::move(row), place.row);
    ForgetSumsAfter(place.chunk);
}

// Lets a chunk begin at that line.
void ReportRows::Split(int line)
{
    if (line >= Count())
        return;
    const Place place = PlaceOf(line);
    if (place.row == 0)
        return;
    std::vector<ReportRow>& old = m_chunks[place.chunk]->rows;
    const auto from = old.begin() + static_cast<std::ptrdiff_t>(place.row);
    auto tail = std::make_unique<Chunk>();
    tail->rows.reserve(kChunkRows);
    for (auto row = from; row != old.end(); ++row) {
        m_chunks[place.chunk]->sums.Add(*row, -1);
        tail->Take(std::move(*row), tail->rows.size());
    }
    old.erase(from, old.end());
    m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(place.chunk) + 1, std::move(tail));
    ForgetSumsAfter(place.chunk);
}

void ReportRows::Insert(int line, std::vector<ReportRow> rows)
{
    // The rows behind the place step aside as whole chunks and come back when the new ones are in.
    std::vector<std::unique_ptr<Chunk>> behind;
    if (line < Count()) {
        Split(line);
        const auto from = m_chunks.begin() + static_cast<std::ptrdiff_t>(PlaceOf(line).chunk);
        behind.assign(std::make_move_iterator(from), std::make_move_iterator(m_chunks.end()));
        m_chunks.erase(from, m_chunks.end());
        if (m_before.size() > m_chunks.size())
            m_before.resize(m_chunks.size());
    }
    for (ReportRow& row : rows) {
        row.id = ++m_lastId;
        Append(std::move(row));
    }
    m_chunks.insert(m_chunks.end(), std::make_move_iterator(behind.begin()),
                    std::make_move_iterator(behind.end()));
}

void ReportRows::Remove(int line, int count)
{
    if (count <= 0)
        return;
    Split(line);
    Split(line + count);
    const std::size_t first = PlaceOf(line).chunk;
    std::size_t last = first;
    while (count > 0) {
        count -= m_chunks[last]->sums.count;
        m_total.Add(m_chunks[last]->sums, -1);
        ++last;
    }
    m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(first),
                   m_chunks.begin() + static_cast<std::ptrdiff_t>(last));
    if (m_before.size() > first)
        m_before.resize(first);
    MergeAround(first);
}

// Small neighbours become one, so that removals leave no crowd of tiny chunks.
void ReportRows::MergeAround(std::size_t chunk)
{
    for (std::size_t right : {chunk + 1, chunk}) {
        if (right == 0 || right >= m_chunks.size() ||
            m_chunks[right - 1]->rows.size() + m_chunks[right]->rows.size() > kChunkRows / 2)
            continue;
        Chunk& left = *m_chunks[right - 1];
        for (ReportRow& row : m_chunks[right]->rows)
            left.Take(std::move(row), left.rows.size());
        m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(right));
        ForgetSumsAfter(right - 1);
    }
}

void ReportRows::Clear()
{
    m_chunks.clear();
    m_before.clear();
    m_total = {};
}

bool ReportRows::Sort(std::span<const int> order)
{
    if (order.size() != Index(Count()))
        return false;
    std::vector<bool> seen(order.size());
    for (const int line : order) {
        if (line < 0 || line >= Count() || seen[Index(line)])
            return false;
        seen[Index(line)] = true;
    }
    std::vector<ReportRow> old;
    old.reserve(order.size());
    for (const auto& chunk : m_chunks)
        old.insert(old.end(), std::make_move_iterator(chunk->rows.begin()),
                   std::make_move_iterator(chunk->rows.end()));
    Clear();
    for (const int line : order)
        Append(std::move(old[Index(line)]));
    return true;
}

int ReportRows::Find(std::uint64_t id) const
{
    for (std::size_t i = 0; i < m_chunks.size(); ++i) {
        const Chunk& chunk = *m_chunks[i];
        if (id < chunk.lowestId || id > chunk.highestId)
            continue;
        const auto row = std::find_if(chunk.rows.begin(), chunk.rows.end(),
                                      [&](const ReportRow& one) { return one.id == id; });
        if (row != chunk.rows.end())
            return Before(i).count + static_cast<int>(row - chunk.rows.begin());
    }
    return -1;
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

int LineAfterInsert(int line, int at, int count)
{
    return line >= at ? line + count : line;
}

int LineAfterRemove(int line, int at, int count)
{
    if (line < at)
        return line;
    return line < at + count ? -1 : line - count;
}

template <typename Change>
void ReportRows::ChangeRow(Chunk& chunk, ReportRow& row, Change change)
{
    chunk.sums.Add(row, -1);
    m_total.Add(row, -1);
    change(row);
    chunk.sums.Add(row, 1);
    m_total.Add(row, 1);
}

// @param last included.
template <typename Change>
void ReportRows::ChangeRows(int first, int last, Change change)
{
    if (first > last)
        return;
    Place place = PlaceOf(first);
    const std::size_t firstChunk = place.chunk;
    for (int left = last - first + 1; left > 0; place = {place.chunk + 1, 0}) {
        Chunk& chunk = *m_chunks[place.chunk];
        for (; place.row < chunk.rows.size() && left > 0; ++place.row, --left)
            ChangeRow(chunk, chunk.rows[place.row], change);
    }
    ForgetSumsAfter(firstChunk);
}

void ReportRows::SetHeight(int line, int height)
{
    ChangeRows(line, line, [&](ReportRow& row) { row.height = height; });
}

void ReportRows::SetShown(int line, bool shown)
{
    ChangeRows(line, line, [&](ReportRow& row) { row.shown = shown; });
}

void ReportRows::ShowWhere(const std::function<bool(const ReportRow& row)>& accepts)
{
    ChangeRows(0, Count() - 1, [&](ReportRow& row) { row.shown = accepts(row); });
}

void ReportRows::Select(int first, int last, bool select)
{
    ChangeRows(first, last, [&](ReportRow& row) { row.selected = select; });
}

void ReportRows::ClearSelection()
{
    // From the end: what is selected in a list that follows its end stands there.
    for (std::size_t i = m_chunks.size(); i-- > 0 && m_total.selected > 0;) {
        Chunk& chunk = *m_chunks[i];
        if (chunk.sums.selected == 0)
            continue;
        for (ReportRow& row : chunk.rows)
            row.selected = false;
        m_total.selected -= std::exchange(chunk.sums.selected, 0);
        ForgetSumsAfter(i);
    }
}

void ReportRows::SelectShown(int first, int last)
{
    ChangeRows(first, last, [](ReportRow& row) { row.selected = row.shown; });
}

void ReportRows::SelectedLines(std::vector<int>& lines) const
{
    lines.clear();
    lines.reserve(Index(m_total.selected));
    int first = 0;
    for (const auto& chunk : m_chunks) {
        for (std::size_t i = 0; chunk->sums.selected > 0 && i < chunk->rows.size(); ++i) {
            if (chunk->rows[i].selected)
                lines.push_back(first + static_cast<int>(i));
        }
        first += chunk->sums.count;
    }
}

int ReportRows::LastSelected() const
{
    int end = Count();
    for (std::size_t i = m_chunks.size(); i-- > 0; end -= m_chunks[i]->sums.count) {
        const std::vector<ReportRow>& rows = m_chunks[i]->rows;
        for (std::size_t row = rows.size(); m_chunks[i]->sums.selected > 0 && row-- > 0;) {
            if (rows[row].selected)
                return end - static_cast<int>(rows.size() - row);
        }
    }
    return -1;
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
                         [](std::int64_t value, const Sums& sums) { return value < sums.height; });
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
                                       [](int value, const Sums& sums) { return value < sums.shown; });
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
