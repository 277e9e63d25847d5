// What a report list shows of its rows: how far it is scrolled, what its filter lets through, and the lines
// that it keeps in mind. Pure.
//
// What is in view stays where it is while rows come, go or change above it; only at the very top new rows
// come into view. The lines kept in mind follow their rows, and are -1 once these are gone.
#pragma once

#include "platform/ReportRows.h"

namespace kv {

struct ReportView
{
    using Filter = std::function<bool(const ReportRow& row)>;

    // Callers pass lines in range, as for `ReportRows`.

    void InsertRow(int line, ReportRow row);
    void InsertRows(int line, std::vector<ReportRow> added);
    /// @param lines where they are to stand then, ascending, each once.
    void InsertRows(std::span<const int> lines, std::vector<ReportRow> added);
    void RemoveRows(int line, int count);
    /// @param lines ascending, each once.
    void RemoveRows(std::span<const int> lines);
    /// The offset stays; another line may be in view. @return as `ReportRows::Sort`.
    bool SortRows(std::span<const int> order);
    void SetText(int line, int column, std::wstring_view text);
    void SetData(int line, std::uint64_t data);
    void SetHeight(int line, int height);
    /// An empty one shows all. The top line stays; where it becomes hidden, the next one shown takes its
    /// place.
    void SetFilter(Filter accepts);

    int TopLine() const { return rows.LineAt(scrollY); }

    ReportRows rows;
    std::int64_t scrollY = 0; ///< content coordinates; the caller keeps it within what the view allows
    Filter filter;
    int current = -1;  ///< the line with the keyboard's focus
    int anchor = -1;   ///< where Shift selects from
    int editLine = -1; ///< the line whose cell is open
    int dragLine = -1; ///< the line that was pressed

private:
    /// A line and how much of it is above the view.
    struct Held
    {
        int line;
        std::int64_t into;
    };
    Held Hold() const;
    void Restore(Held held);
    bool Accepts(const ReportRow& row) const { return !filter || filter(row); }
    template <typename Change>
    void ChangeRow(int line, Change change);
    template <typename Map>
    void MapLines(Map map);
};

/// Where a line is after `count` lines were inserted before `at`.
int LineAfterInsert(int line, int at, int count);
/// Where it is after others were inserted that stand at those lines (ascending) now.
int LineAfterInsert(int line, std::span<const int> lines);
/// Where it is after `count` lines from `at` on went; -1 when it is one of them.
int LineAfterRemove(int line, int at, int count);
/// Where it is after those lines (ascending) went; -1 when it is one of them.
int LineAfterRemove(int line, std::span<const int> lines);

} // namespace kv
