// The columns of the report list.
#include "platform/KvReportListImpl.h"

#include <algorithm>

namespace {

int ColumnWidth(int width)
{
    return std::clamp(width, kv::kReportMinColumn, kv::kReportMost);
}

} // namespace

int CKvReportListCtrl::GetColumnCount() const
{
    return m_impl->layout.ColumnCount();
}

CString CKvReportListCtrl::GetHeaderText(int column) const
{
    return m_impl->IsColumn(column) ? m_impl->columns.columns[static_cast<std::size_t>(column)].header
                                    : CString();
}

int CKvReportListCtrl::GetColumnWidth(int column) const
{
    return m_impl->IsColumn(column) ? m_impl->layout.Right(column) - m_impl->layout.Left(column) : 0;
}

int CKvReportListCtrl::SetColumnWidth(int column, int width)
{
    if (!m_impl->IsColumn(column))
        return 0;
    if (m_impl->columns.autoColumn == column)
        m_impl->columns.autoColumn = -1;
    kv::ReportColumn& changed = m_impl->columns.columns[static_cast<std::size_t>(column)];
    changed.width = ColumnWidth(width);
    changed.natural = 0;
    m_impl->LayOut();
    return 1;
}

int CKvReportListCtrl::InsertColumn(const wchar_t* header, int width)
{
    const int column = GetColumnCount();
    if (!m_impl->TellObservers([&](kv::ReportObserver& observer) { observer.ColumnAdding(column); }))
        return -1;
    m_impl->columns.columns.push_back({header ? header : L"", ColumnWidth(width)});
    m_impl->LayOut();
    return m_impl->TellObservers([](kv::ReportObserver& observer) { observer.ColumnAdded(); }) ? column : -1;
}

int CKvReportListCtrl::_InsertGrowingColumn(const wchar_t* header, int width)
{
    const int column = InsertColumn(header, width);
    if (column < 0)
        return column;
    m_impl->columns.columns[static_cast<std::size_t>(column)].natural = ColumnWidth(width);
    kv::ScaleColumns(m_impl->columns, fontMetrics().horizontalAdvance(u'0'));
    m_impl->LayOut();
    return column;
}

void CKvReportListCtrl::SetHeaderText(int column, const wchar_t* header)
{
    if (!m_impl->IsColumn(column))
        return;
    m_impl->columns.columns[static_cast<std::size_t>(column)].header = header ? header : L"";
    m_impl->RequestWholeFrame();
    m_impl->TellObservers([&](kv::ReportObserver& observer) { observer.HeaderChanged(column); });
}

void CKvReportListCtrl::SetAutoSizeColumn(int column, int minimum)
{
    if (column != -1 && !m_impl->IsColumn(column))
        return;
    const int before = m_impl->columns.autoColumn;
    if (before >= 0) { // goes on with the width that it has
        kv::ReportColumn& ended = m_impl->columns.columns[static_cast<std::size_t>(before)];
        ended.width = GetColumnWidth(before);
        ended.natural = 0;
    }
    m_impl->columns.autoColumn = column;
    m_impl->columns.autoMinimum = ColumnWidth(minimum);
    m_impl->LayOut();
}
