#include "platform/ReportView.h"

#include <algorithm>
#include <utility>

namespace kv {

namespace {

int CountBelow(std::span<const int> lines, int line)
{
    return static_cast<int>(std::lower_bound(lines.begin(), lines.end(), line) - lines.begin());
}

} // namespace

int LineAfterInsert(int line, int at, int count)
{
    return line >= at ? line + count : line;
}

int LineAfterInsert(int line, std::span<const int> lines)
{
    // A new line stands before the old one when, without the new ones before itself, it has its index at
    // most.
    int before = 0;
    for (int end = static_cast<int>(lines.size()); before < end;) {
        const int middle = before + (end - before) / 2;
        if (lines[static_cast<std::size_t>(middle)] - middle <= line)
            before = middle + 1;
        else
            end = middle;
    }
    return line + before;
}

int LineAfterRemove(int line, int at, int count)
{
    if (line < at)
        return line;
    return line < at + count ? -1 : line - count;
}

int LineAfterRemove(int line, std::span<const int> lines)
{
    const int below = CountBelow(lines, line);
    const bool isGone =
        below < static_cast<int>(lines.size()) && lines[static_cast<std::size_t>(below)] == line;
    return isGone ? -1 : line - below;
}

// At the very top nothing is held.
ReportView::Held ReportView::Hold() const
{
    const int top = scrollY > 0 ? TopLine() : -1;
    return {top, top < 0 ? 0 : scrollY - rows.TopOf(top)};
}

void ReportView::Restore(Held held)
{
    if (held.line < 0)
        return;
    scrollY = rows.TopOf(held.line);
    if (held.line < rows.Count() && rows.Row(held.line).shown)
        scrollY += std::clamp<std::int64_t>(held.into, 0, rows.Row(held.line).height - 1);
}

template <typename Map>
void ReportView::MapLines(Map map)
{
    for (int* line : {&current, &anchor, &editLine, &dragLine})
        *line = *line < 0 ? -1 : map(*line);
}

void ReportView::InsertRow(int line, ReportRow row)
{
    row.shown = Accepts(row);
    if (line == rows.Count()) { // what is appended moves nothing
        rows.Insert(line, std::move(row));
        return;
    }
    Held held = Hold();
    rows.Insert(line, std::move(row));
    const auto after = [&](int one) { return LineAfterInsert(one, line, 1); };
    held.line = after(held.line);
    Restore(held);
    MapLines(after);
}

void ReportView::InsertRows(int line, std::vector<ReportRow> added)
{
    const int count = static_cast<int>(added.size());
    for (ReportRow& row : added)
        row.shown = Accepts(row);
    Held held = Hold();
    rows.Insert(line, std::move(added));
    const auto after = [&](int one) { return LineAfterInsert(one, line, count); };
    held.line = after(held.line);
    Restore(held);
    MapLines(after);
}

void ReportView::InsertRows(std::span<const int> lines, std::vector<ReportRow> added)
{
    for (ReportRow& row : added)
        row.shown = Accepts(row);
    Held held = Hold();
    rows.Insert(lines, std::move(added));
    const auto after = [&](int one) { return LineAfterInsert(one, lines); };
    held.line = held.line < 0 ? -1 : after(held.line);
    Restore(held);
    MapLines(after);
}

void ReportView::RemoveRows(int line, int count)
{
    Held held = Hold();
    rows.Remove(line, count);
    const auto after = [&](int one) { return LineAfterRemove(one, line, count); };
    if (held.line >= 0) {
        const int top = after(held.line);
        held = top < 0 ? Held{line, 0} : Held{top, held.into};
    }
    Restore(held);
    MapLines(after);
}

void ReportView::RemoveRows(std::span<const int> lines)
{
    Held held = Hold();
    rows.Remove(lines);
    const auto after = [&](int one) { return LineAfterRemove(one, lines); };
    if (held.line >= 0) {
        const int top = after(held.line);
        held = top < 0 ? Held{held.line - CountBelow(lines, held.line), 0} : Held{top, held.into};
    }
    Restore(held);
    MapLines(after);
}

bool ReportView::SortRows(std::span<const int> order)
{
    if (!rows.Sort(order))
        return false;
    std::vector<int> placeOf(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        placeOf[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
    MapLines([&](int line) { return placeOf[static_cast<std::size_t>(line)]; });
    return true;
}

// What a row holds may decide whether the filter shows it.
template <typename Change>
void ReportView::ChangeRow(int line, Change change)
{
    const Held held = Hold();
    change();
    const ReportRow& row = rows.Row(line);
    if (const bool accepts = Accepts(row); accepts != row.shown)
        rows.SetShown(line, accepts);
    Restore(held);
}

void ReportView::SetText(int line, int column, std::wstring_view text)
{
    ChangeRow(line, [&] { rows.SetText(line, column, text); });
}

void ReportView::SetData(int line, std::uint64_t data)
{
    ChangeRow(line, [&] { rows.SetData(line, data); });
}

void ReportView::SetHeight(int line, int height)
{
    ChangeRow(line, [&] { rows.SetHeight(line, height); });
}

void ReportView::SetFilter(Filter accepts)
{
    // Also at the very top: lines that come back above the first one shown stay above the view.
    const int top = TopLine();
    const Held held{top, top < 0 ? 0 : scrollY - rows.TopOf(top)};
    filter = std::move(accepts);
    rows.ShowWhere([this](const ReportRow& row) { return Accepts(row); });
    Restore(held);
}

} // namespace kv
