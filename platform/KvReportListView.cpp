// The report list: selection, scrolling, filter and places as derived lists ask for them.
#include "platform/KvReportListImpl.h"

#include <algorithm>

void CKvReportListCtrl::SelectRange(int first, int last, BOOL select)
{
    first = std::max(first, 0);
    last = std::min(last, m_impl->rows.Count() - 1);
    if (first > last)
        return;
    m_impl->rows.Select(first, last, select != 0);
    m_impl->RequestSelectionFrame();
}

void CKvReportListCtrl::SelectAllShown()
{
    m_impl->rows.SelectShown(0, m_impl->rows.Count() - 1);
    m_impl->RequestSelectionFrame();
}

int CKvReportListCtrl::GetCurrentItem() const
{
    return m_impl->current;
}

void CKvReportListCtrl::SetCurrentItem(int line)
{
    if (line != -1 && !m_impl->IsLine(line))
        return;
    m_impl->current = line;
    m_impl->anchor = line;
    m_impl->RequestFrame();
}

int CKvReportListCtrl::GetCurrentColumn() const
{
    return m_impl->currentColumn;
}

void CKvReportListCtrl::EnsureVisible(int line)
{
    m_impl->Show(line);
}

BOOL CKvReportListCtrl::IsEndInView() const
{
    return m_impl->rows.ShownCount() == 0 ||
                   m_impl->scrollY + m_impl->layout.cells.Height() >= m_impl->rows.Height()
               ? 1
               : 0;
}

CPoint CKvReportListCtrl::GetScrollOffset() const
{
    return {m_impl->scrollX, static_cast<int>(std::min<std::int64_t>(m_impl->scrollY, INT32_MAX))};
}

void CKvReportListCtrl::SetScrollOffset(CPoint offset)
{
    m_impl->ScrollTo(offset.x, offset.y);
}

void CKvReportListCtrl::_PrivateEnableUpdate(int enable)
{
    if (!enable) {
        ++m_impl->suspended;
        return;
    }
    if (m_impl->suspended == 0 || --m_impl->suspended > 0 || !m_impl->frameDue)
        return;
    m_impl->frameDue = false;
    m_impl->RequestFrame();
}

void CKvReportListCtrl::UpdateCells()
{
    m_impl->RequestWholeFrame();
}

void CKvReportListCtrl::UpdateLine(int line)
{
    m_impl->RepaintRow(line);
}

void CKvReportListCtrl::SetRowFilter(std::function<bool(const KvReportRow&)> accepts)
{
    if (accepts)
        m_impl->SetFilter(
            [accepts = std::move(accepts)](const kv::ReportRow& row) { return accepts(KvReportRow(&row)); });
    else
        m_impl->SetFilter({});
    m_impl->RowsResized();
}

BOOL CKvReportListCtrl::IsRowShown(int line) const
{
    return m_impl->IsLine(line) && m_impl->rows.Row(line).shown ? 1 : 0;
}

int CKvReportListCtrl::GetShownCount() const
{
    return m_impl->rows.ShownCount();
}

int CKvReportListCtrl::GetShownSelCount() const
{
    return m_impl->rows.SelectedShownCount();
}

int CKvReportListCtrl::NextShownRow(int line, int step) const
{
    const int count = m_impl->rows.Count();
    if (step < 0) {
        if (line <= 0)
            return -1;
        return m_impl->rows.ShownLine(m_impl->rows.ShownBefore(std::min(line, count)) - 1);
    }
    return line + 1 >= count ? -1 : m_impl->rows.ShownLine(m_impl->rows.ShownBefore(std::max(line + 1, 0)));
}

CRect CKvReportListCtrl::GetCellRect(int line, int column) const
{
    if (!m_impl->IsCell(line, column) || !m_impl->rows.Row(line).shown)
        return {};
    if (m_impl->drawn.line == line && m_impl->drawn.column == column)
        return m_impl->drawn.rect;
    return m_impl->CellRect(line, column);
}

BOOL CKvReportListCtrl::HitTest(CPoint point, int& line, int& column) const
{
    line = -1;
    column = -1;
    const kv::ReportLayout& layout = m_impl->layout;
    const std::int64_t y = m_impl->scrollY + point.y - layout.cells.top;
    if (!layout.cells.PtInRect(point) || y >= m_impl->rows.Height())
        return 0;
    line = m_impl->rows.LineAt(y);
    column = layout.ColumnAt(point.x - layout.cells.left + m_impl->scrollX);
    return 1;
}

CRect CKvReportListCtrl::GetCellsRect() const
{
    return m_impl->layout.cells;
}

void CKvReportListCtrl::SetTextStyle(int style)
{
    m_impl->textStyle = style;
    m_impl->RequestWholeFrame();
}

int CKvReportListCtrl::_GetColumnTextStyle(int, int)
{
    return m_impl->textStyle;
}

BOOL CKvReportListCtrl::_GetItemBKColor(int line, int column, int state, DWORD& colour)
{
    if (state != kKvReportNormal || !m_impl->IsCell(line, column))
        return 0;
    const kv::ReportCellColours colours = m_impl->rows.Row(line).Colours(column);
    if (colours.hasBack)
        colour = colours.back;
    return colours.hasBack ? 1 : 0;
}

BOOL CKvReportListCtrl::_GetItemTextColor(int line, int column, int state, DWORD& colour)
{
    if (state != kKvReportNormal || !m_impl->IsCell(line, column))
        return 0;
    const kv::ReportCellColours colours = m_impl->rows.Row(line).Colours(column);
    if (colours.hasText)
        colour = colours.text;
    return colours.hasText ? 1 : 0;
}

DWORD CKvReportListCtrl::GetListTextColor() const
{
    return (isEnabled() ? m_impl->theme.text : m_impl->theme.disabledText).rgba();
}

UINT CKvReportListCtrl::_GetNameText() const
{
    return 0;
}

CString CKvReportListCtrl::_GetItemDescription(int) const
{
    return {};
}

void CKvReportListCtrl::_OnHeaderClick(int) {}
void CKvReportListCtrl::_OnUserScroll() {}

BOOL CKvReportListCtrl::_BeginRowDrag(int)
{
    return 0;
}

BOOL CKvReportListCtrl::_OnActivate(int, int)
{
    return 0;
}
