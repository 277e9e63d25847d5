#include "platform/ReportRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kv {

namespace {

constexpr std::size_t kChunkRows = 256;

std::size_t ToSize(int value)
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

void ReportRows::Take(Chunk& chunk, ReportRow row, std::size_t at)
{
    chunk.sums.Add(row, 1);
    if (m_chunkOf)
        (*m_chunkOf)[row.id] = &chunk;
    chunk.rows.insert(chunk.rows.begin() + static_cast<std::ptrdiff_t>(at), std::move(row));
}

// The row is about to go for good.
void ReportRows::Lose(const ReportRow& row)
{
    if (m_chunkOf)
        m_chunkOf->erase(row.id);
}

// Makes the sums before that chunk known.
void ReportRows::SumUpTo(std::size_t chunk) const
{
    while (m_before.size() <= chunk) {
        const std::size_t next = m_before.size();
        Extent before;
        if (next > 0) {
            before = m_before[next - 1];
            const Sums& last = m_chunks[next - 1]->sums;
            before.count += last.count;
            before.shown += last.shown;
            before.height += last.height;
        }
        if (next < m_chunks.size())
            m_chunks[next]->place = next;
        m_before.push_back(before);
    }
}

void ReportRows::ForgetSumsAfter(std::size_t chunk)
{
    if (m_before.size() > chunk + 1)
        m_before.resize(chunk + 1);
}

ReportRows::Place ReportRows::PlaceOf(int line) const
{
    // Mostly the chunk of the row that was asked for before.
    if (m_lastChunk < std::min(m_before.size(), m_chunks.size())) {
        const int row = line - m_before[m_lastChunk].count;
        if (row >= 0 && row < m_chunks[m_lastChunk]->sums.count)
            return {m_lastChunk, ToSize(row)};
    }
    SumUpTo(m_chunks.size() - 1);
    const auto next = std::upper_bound(m_before.begin(), m_before.end(), line,
                                       [](int value, const Extent& before) { return value < before.count; });
    const auto chunk = static_cast<std::size_t>(next - m_before.begin()) - 1;
    m_lastChunk = chunk;
    return {chunk, ToSize(line - m_before[chunk].count)};
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
    m_total.Add(row, 1);
    PutLast(std::move(row));
}

// Of a row that counts already.
void ReportRows::PutLast(ReportRow row)
{
    if (m_chunks.empty() || m_chunks.back()->rows.size() >= kChunkRows)
        m_chunks.push_back(std::make_unique<Chunk>());
    Take(*m_chunks.back(), std::move(row), m_chunks.back()->rows.size());
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
    Take(*m_chunks[place.chunk], std::move(row), place.row);
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
        Take(*tail, std::move(*row), tail->rows.size());
    }
    old.erase(from, old.end());
    m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(place.chunk) + 1, std::move(tail));
    ForgetSumsAfter(place.chunk);
}

void ReportRows::Insert(int line, std::vector<ReportRow> rows)
{
    if (rows.size() == 1) {
        Insert(line, std::move(rows.front()));
        return;
    }
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
    const std::size_t seam = m_chunks.size();
    m_chunks.insert(m_chunks.end(), std::make_move_iterator(behind.begin()),
                    std::make_move_iterator(behind.end()));
    MergeAround(seam);
}

void ReportRows::Insert(std::span<const int> lines, std::vector<ReportRow> rows)
{
    std::vector<std::unique_ptr<Chunk>> old = std::exchange(m_chunks, {});
    m_before.clear();
    std::size_t next = 0;
    int line = 0;
    const auto putNew = [&] {
        for (; next < lines.size() && lines[next] == line; ++next, ++line) {
            rows[next].id = ++m_lastId;
            Append(std::move(rows[next]));
        }
    };
    for (auto& chunk : old) {
        if (next == lines.size() || lines[next] >= line + chunk->sums.count) {
            line += chunk->sums.count;
            m_chunks.push_back(std::move(chunk));
            continue;
        }
        for (ReportRow& row : chunk->rows) {
            putNew();
            PutLast(std::move(row));
            ++line;
        }
    }
    putNew();
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
        for (std::size_t row = 0; m_chunkOf && row < m_chunks[last]->rows.size(); ++row)
            Lose(m_chunks[last]->rows[row]);
        ++last;
    }
    m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(first),
                   m_chunks.begin() + static_cast<std::ptrdiff_t>(last));
    if (m_before.size() > first)
        m_before.resize(first);
    MergeAround(first);
}

void ReportRows::Remove(std::span<const int> lines)
{
    auto next = lines.begin();
    int line = 0;
    for (const auto& chunk : m_chunks) {
        const int end = line + chunk->sums.count;
        if (next == lines.end())
            break;
        if (*next >= end) {
            line = end;
            continue;
        }
        std::erase_if(chunk->rows, [&](const ReportRow& row) {
            if (next == lines.end() || *next != line++)
                return false;
            ++next;
            chunk->sums.Add(row, -1);
            m_total.Add(row, -1);
            Lose(row);
            return true;
        });
        line = end;
    }
    MergeAll();
}

bool ReportRows::CanMerge(const Chunk& left, const Chunk& right) const
{
    return left.rows.size() + right.rows.size() <= kChunkRows / 2;
}

void ReportRows::Merge(Chunk& left, Chunk& right)
{
    for (ReportRow& row : right.rows)
        Take(left, std::move(row), left.rows.size());
}

// Small neighbours become one, so that neither removals nor insertions leave a crowd of tiny chunks.
void ReportRows::MergeAround(std::size_t chunk)
{
    for (std::size_t right : {chunk + 1, chunk}) {
        if (right == 0 || right >= m_chunks.size() || !CanMerge(*m_chunks[right - 1], *m_chunks[right]))
            continue;
        Merge(*m_chunks[right - 1], *m_chunks[right]);
        m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(right));
        ForgetSumsAfter(right - 1);
    }
}

void ReportRows::MergeAll()
{
    std::vector<std::unique_ptr<Chunk>> merged;
    for (auto& chunk : m_chunks) {
        if (!merged.empty() && CanMerge(*merged.back(), *chunk))
            Merge(*merged.back(), *chunk);
        else if (!chunk->rows.empty())
            merged.push_back(std::move(chunk));
    }
    m_chunks = std::move(merged);
    m_before.clear();
}

void ReportRows::Clear()
{
    m_chunks.clear();
    m_before.clear();
    m_chunkOf.reset();
    m_total = {};
}

bool ReportRows::Sort(std::span<const int> order)
{
    if (order.size() != ToSize(Count()))
        return false;
    std::vector<bool> seen(order.size());
    for (const int line : order) {
        if (line < 0 || line >= Count() || seen[ToSize(line)])
            return false;
        seen[ToSize(line)] = true;
    }
    std::vector<ReportRow> old;
    old.reserve(order.size());
    for (const auto& chunk : m_chunks)
        old.insert(old.end(), std::make_move_iterator(chunk->rows.begin()),
                   std::make_move_iterator(chunk->rows.end()));
    Clear();
    for (const int line : order)
        Append(std::move(old[ToSize(line)]));
    return true;
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

// @param last included. @return the first chunk that holds one of them.
template <typename Change>
std::size_t ReportRows::ChangeRows(int first, int last, Change change)
{
    if (first > last)
        return m_chunks.size();
    Place place = PlaceOf(first);
    const std::size_t firstChunk = place.chunk;
    for (int left = last - first + 1; left > 0; place = {place.chunk + 1, 0}) {
        Chunk& chunk = *m_chunks[place.chunk];
        for (; place.row < chunk.rows.size() && left > 0; ++place.row, --left)
            ChangeRow(chunk, chunk.rows[place.row], change);
    }
    return firstChunk;
}

void ReportRows::SetHeight(int line, int height)
{
    ForgetSumsAfter(ChangeRows(line, line, [&](ReportRow& row) {
        row.height = height;
        row.followsFont = false;
    }));
}

void ReportRows::SetFontHeight(int height)
{
    ForgetSumsAfter(ChangeRows(0, Count() - 1, [&](ReportRow& row) {
        if (row.followsFont)
            row.height = height;
    }));
}

void ReportRows::SetShown(int line, bool shown)
{
    ForgetSumsAfter(ChangeRows(line, line, [&](ReportRow& row) { row.shown = shown; }));
}

void ReportRows::ShowWhere(const std::function<bool(const ReportRow& row)>& accepts)
{
    m_total.shown = 0;
    m_total.height = 0;
    for (const auto& chunk : m_chunks) {
        chunk->sums.shown = 0;
        chunk->sums.height = 0;
        for (ReportRow& row : chunk->rows) {
            row.shown = accepts(row);
            chunk->sums.shown += row.shown ? 1 : 0;
            chunk->sums.height += row.shown ? row.height : 0;
        }
        m_total.shown += chunk->sums.shown;
        m_total.height += chunk->sums.height;
    }
    m_before.clear();
}

// What is selected moves no row: the sums before the chunks stay.

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
    }
}

void ReportRows::SelectShown(int first, int last)
{
    ChangeRows(first, last, [](ReportRow& row) { row.selected = row.shown; });
}

void ReportRows::SelectedLines(std::vector<int>& lines) const
{
    lines.clear();
    lines.reserve(ToSize(m_total.selected));
    int first = 0;
    for (const auto& chunk : m_chunks) {
        for (std::size_t i = 0; chunk->sums.selected > 0 && i < chunk->rows.size(); ++i) {
            if (chunk->rows[i].selected)
                lines.push_back(first + static_cast<int>(i));
        }
        first += chunk->sums.count;
    }
}

int ReportRows::SelectedShownCount() const
{
    int selected = m_total.selected;
    for (const auto& chunk : m_chunks) {
        if (chunk->sums.selected == 0 || chunk->sums.shown == chunk->sums.count)
            continue;
        selected -=
            static_cast<int>(std::count_if(chunk->rows.begin(), chunk->rows.end(),
                                           [](const ReportRow& row) { return row.selected && !row.shown; }));
    }
    return selected;
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

} // namespace kv
