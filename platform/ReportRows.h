// The rows of a report list: cells, heights, selection and what a filter shows, found by line, by place and
// by number. Pure.
//
// The rows stand in chunks of some hundred, and sums over the chunks are kept up to date lazily: an append
// touches the last chunk alone, a row in the middle its own chunk and a pass over the sums.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kv {

/// A cell's own colours, 0xAARRGGBB.
struct ReportCellColours
{
    std::uint16_t column = 0;
    bool hasBack = false;
    bool hasText = false;
    std::uint32_t back = 0;
    std::uint32_t text = 0;
};

/// One row. Its texts and colours share one block of memory, so that a row costs little over its text.
class ReportRow
{
public:
    ReportRow() = default;
    /// @param texts one a column, at most 65,535.
    /// @param followsFont the height is the list's, which may change it.
    ReportRow(std::span<const std::wstring_view> texts, int height, bool followsFont = false);

    /// Empty for a column that the row does not have.
    std::wstring_view Text(int column) const;
    /// @param text no view of this row's own texts.
    void SetText(int column, std::wstring_view text);
    /// All zero where the cell has none of its own.
    ReportCellColours Colours(int column) const;
    /// Null leaves a colour.
    void SetColours(int column, const std::uint32_t* back, const std::uint32_t* text);
    void ClearColours(int column);

    std::uint64_t id = 0;
    std::uint64_t data = 0;
    int height = 0;
    bool selected = false;
    bool shown = true;
    bool followsFont = false;

private:
    // The block: how many texts and colours, where each text ends, the colours, the texts one after another.
    struct Head
    {
        std::uint16_t texts;
        std::uint16_t colours;
    };
    Head ReadHead() const;
    std::uint32_t End(int column) const;
    void Pack(std::span<const std::wstring_view> texts, std::span<const ReportCellColours> colours);
    void ReplaceText(int column, std::wstring_view text);
    std::vector<std::wstring_view> Texts() const;
    std::vector<ReportCellColours> AllColours() const;

    std::unique_ptr<std::byte[]> m_block;
};

/// All rows. A line is an index from 0; callers pass lines in range. Places are sums of the heights of the
/// rows that are shown.
class ReportRows
{
public:
    int Count() const { return m_total.count; }
    int ShownCount() const { return m_total.shown; }
    int SelectedCount() const { return m_total.selected; }
    /// How many of the rows shown are selected.
    int SelectedShownCount() const;
    /// The height of all rows shown.
    std::int64_t Height() const { return m_total.height; }

    /// Inserts before `line` (0 … count) and gives each row the next number.
    void Insert(int line, ReportRow row);
    void Insert(int line, std::vector<ReportRow> rows);
    /// @param lines where the rows are to stand then: one a row, ascending, each once. One pass, whatever
    /// their number.
    void Insert(std::span<const int> lines, std::vector<ReportRow> rows);
    void Remove(int line, int count);
    /// @param lines ascending, each once. One pass, whatever their number.
    void Remove(std::span<const int> lines);
    void Clear();
    /// The row that is to come to place i stands at order[i]. @return false, with nothing changed, when it is
    /// no permutation.
    bool Sort(std::span<const int> order);
    /// The number that the next row gets; all rows that are there have a smaller one.
    std::uint64_t NextId() const { return m_lastId + 1; }

    const ReportRow& Row(int line) const;
    /// Where the row with that number is; -1 when it is gone. The first call after a sort is a pass over all
    /// rows, and some 40 bytes a row are spent from then on.
    int Find(std::uint64_t id) const;
    /// Calls with every row from `line` on until `visit` gives false.
    void Visit(int line, const std::function<bool(int line, const ReportRow& row)>& visit) const;
    /// The same with the rows shown only; passes quickly over many that are hidden.
    void VisitShown(int line, const std::function<bool(int line, const ReportRow& row)>& visit) const;

    void SetText(int line, int column, std::wstring_view text) { At(line).SetText(column, text); }
    void SetColours(int line, int column, const std::uint32_t* back, const std::uint32_t* text)
    {
        At(line).SetColours(column, back, text);
    }
    void ClearColours(int line, int column) { At(line).ClearColours(column); }
    void SetData(int line, std::uint64_t data) { At(line).data = data; }
    /// From now on the row's own.
    void SetHeight(int line, int height);
    /// Of all rows that follow the font.
    void SetFontHeight(int height);
    void SetShown(int line, bool shown);
    /// Asks for every row whether it is shown.
    void ShowWhere(const std::function<bool(const ReportRow& row)>& accepts);

    void Select(int first, int last, bool select);
    void ClearSelection();
    /// Of the lines first … last, selects exactly those that are shown.
    void SelectShown(int first, int last);
    void SelectedLines(std::vector<int>& lines) const;
    /// -1 when none is.
    int LastSelected() const;

    /// Where the line begins; of a hidden one, where the next one shown does.
    std::int64_t TopOf(int line) const;
    /// The line shown that covers a place; beyond the end the last one, -1 when none is shown.
    int LineAt(std::int64_t place) const;
    /// How many shown rows lie wholly between `place` and `place` + `height`.
    int CountWithin(std::int64_t place, int height) const;
    /// How many lines before that one are shown.
    int ShownBefore(int line) const;
    /// The line that is the n-th shown (from 0); -1 when there are fewer.
    int ShownLine(int index) const;

private:
    /// What says where rows are.
    struct Extent
    {
        int count = 0;
        int shown = 0;
        std::int64_t height = 0;
    };
    struct Sums : Extent
    {
        int selected = 0;

        void Add(const ReportRow& row, int sign);
        void Add(const Sums& other, int sign);
    };
    struct Chunk
    {
        std::vector<ReportRow> rows;
        Sums sums;
        mutable std::size_t place = 0; ///< in m_chunks, as far as the sums before are known
    };
    struct Place
    {
        std::size_t chunk;
        std::size_t row;
    };

    ReportRow& At(int line);
    Place PlaceOf(int line) const;
    void SumUpTo(std::size_t chunk) const;
    void ForgetSumsAfter(std::size_t chunk);
    template <typename Change>
    void ChangeRow(Chunk& chunk, ReportRow& row, Change change);
    template <typename Change>
    std::size_t ChangeRows(int first, int last, Change change);
    void Take(Chunk& chunk, ReportRow row, std::size_t at);
    void Lose(const ReportRow& row);
    void Append(ReportRow row);
    void PutLast(ReportRow row);
    void Split(int line);
    bool CanMerge(const Chunk& left, const Chunk& right) const;
    void Merge(Chunk& left, Chunk& right);
    void MergeAround(std::size_t chunk);
    void MergeAll();

    std::vector<std::unique_ptr<Chunk>> m_chunks;
    Sums m_total;
    std::uint64_t m_lastId = 0;
    mutable std::vector<Extent> m_before; ///< of all chunks before a chunk, as far as known
    mutable std::size_t m_lastChunk = 0;

    using Index = std::unordered_map<std::uint64_t, Chunk*>;
    mutable std::unique_ptr<Index> m_chunkOf; ///< where each row is; made when it is asked for
};

} // namespace kv
