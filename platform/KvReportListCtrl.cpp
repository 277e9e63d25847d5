// The report list: its lines, selection and view as hosts and derived lists ask for them.
#include "platform/KvReportListImpl.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <span>

std::wstring_view KvReportRow::Text(int column) const
{
    return static_cast<const kv::ReportRow*>(m_row)->Text(column);
}

std::uint64_t KvReportRow::Data() const
{
    return static_cast<const kv::ReportRow*>(m_row)->data;
}

int KvReportRow::Height() const
{
    return static_cast<const kv::ReportRow*>(m_row)->height;
}

CKvReportListCtrl::CKvReportListCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent); // lets the picture be moved when the list is scrolled
    m_impl->FontChanged();
}

CKvReportListCtrl::~CKvReportListCtrl()
{
    m_impl->CloseEditor(); // else it would tell of its focus going
    m_impl->TellObservers([](kv::ReportObserver& observer) { observer.ListGone(); });
}

int CKvReportListCtrl::Create(const CRect& rect, UINT style, CWnd* parent, DWORD id)
{
    if (!CreateWnd(style | WS_TABSTOP, rect, parent, id))
        return 0;
    m_impl->LayOut();
    return 1;
}

int CKvReportListCtrl::CreateSelf()
{
    return Create({}, 0, parentWidget(), GetDlgCtrlID());
}

int CKvReportListCtrl::GetItemCount() const
{
    _BeforeQuery();
    return m_impl->rows.Count();
}

CString CKvReportListCtrl::GetItemText(int line, int column) const
{
    _BeforeQuery();
    return CString(ViewItemText(line, column));
}

std::wstring_view CKvReportListCtrl::ViewItemText(int line, int column) const
{
    return m_impl->IsLine(line) ? m_impl->rows.Row(line).Text(column) : std::wstring_view();
}

int CKvReportListCtrl::GetItemHeight(int line) const
{
    _BeforeQuery();
    return m_impl->IsLine(line) ? m_impl->rows.Row(line).height : 0;
}

BOOL CKvReportListCtrl::GetCellColors(int line, int column, DWORD* back, DWORD* text) const
{
    _BeforeQuery();
    if (!m_impl->IsCell(line, column))
        return 0;
    const kv::ReportCellColours colours = m_impl->rows.Row(line).Colours(column);
    if (back && colours.hasBack)
        *back = colours.back;
    if (text && colours.hasText)
        *text = colours.text;
    return colours.hasBack || colours.hasText ? 1 : 0;
}

int CKvReportListCtrl::FindItem(const wchar_t* text, int column, int from) const
{
    return FindItem(CString(text ? text : L""), column, from);
}

int CKvReportListCtrl::FindItem(const CString& text, int column, int from) const
{
    _BeforeQuery();
    int found = -1;
    if (!m_impl->IsColumn(column))
        return found;
    m_impl->rows.Visit(std::max(from, 0), [&](int line, const kv::ReportRow& row) {
        found = row.Text(column) == text ? line : -1;
        return found < 0;
    });
    return found;
}

int CKvReportListCtrl::GetSelItems(CArray<int, int>& lines) const
{
    _BeforeQuery();
    m_impl->rows.SelectedLines(lines);
    return static_cast<int>(lines.size());
}

int CKvReportListCtrl::GetAllSelItems(CArray<int, int>& lines) const
{
    return GetSelItems(lines);
}

BOOL CKvReportListCtrl::IsItemSelected(int line) const
{
    _BeforeQuery();
    return m_impl->IsLine(line) && m_impl->rows.Row(line).selected ? 1 : 0;
}

int CKvReportListCtrl::GetSelCount() const
{
    _BeforeQuery();
    return m_impl->rows.SelectedCount();
}

int CKvReportListCtrl::GetLastSelItem() const
{
    _BeforeQuery();
    return m_impl->rows.LastSelected();
}

void CKvReportListCtrl::SetSelItem(int line)
{
    _BeforeQuery();
    if (line != -1 && !m_impl->IsLine(line))
        return;
    m_impl->rows.ClearSelection();
    if (line >= 0) {
        m_impl->rows.Select(line, line, true);
        SetCurrentItem(line);
    }
    m_impl->RequestSelectionFrame();
}

void CKvReportListCtrl::SetSelItem(const CArray<int, int>& lines)
{
    _BeforeQuery();
    m_impl->rows.ClearSelection();
    int last = -1;
    for (const int line : lines) {
        if (!m_impl->IsLine(line))
            continue;
        m_impl->rows.Select(line, line, true);
        last = line;
    }
    if (last >= 0)
        SetCurrentItem(last);
    m_impl->RequestSelectionFrame();
}

int CKvReportListCtrl::GetTopIndex() const
{
    _BeforeQuery();
    return std::max(0, m_impl->TopLine());
}

int CKvReportListCtrl::GetVisibleCount() const
{
    _BeforeQuery();
    return m_impl->rows.CountWithin(m_impl->scrollY, m_impl->layout.cells.Height());
}

bool CKvReportListCtrl::HasGridLines() const
{
    return m_impl->hasGrid;
}

void CKvReportListCtrl::ShowGridLines(BOOL show)
{
    m_impl->hasGrid = show != 0;
    m_impl->RequestWholeFrame();
}

QSize CKvReportListCtrl::sizeHint() const
{
    return {480, 240};
}

QSize CKvReportListCtrl::minimumSizeHint() const
{
    const int header = m_impl->hasHeader ? _TextHeight() : 0;
    return {80, std::max(72, header + _TextHeight() + m_impl->barExtent)};
}

void CKvReportListCtrl::ShowHeader(BOOL show)
{
    m_impl->hasHeader = show != 0;
    m_impl->LayOut();
    updateGeometry();
}

void CKvReportListCtrl::SetFooterHeight(int height)
{
    m_impl->footer = std::clamp(height, 0, kv::kReportMost);
    m_impl->LayOut();
}

void CKvReportListCtrl::SetDefaultItemHeight(int height)
{
    m_impl->defaultHeight = std::clamp(height, 1, kv::kReportMost);
    m_impl->isHeightHosts = true;
}

int CKvReportListCtrl::_TextHeight() const
{
    return m_impl->TextHeight();
}

int CKvReportListCtrl::GetDefaultItemHeight() const
{
    return m_impl->defaultHeight;
}

int CKvReportListCtrl::InsertRow(int line, std::initializer_list<std::wstring_view> texts, int height)
{
    const int count = m_impl->rows.Count();
    if (line < -1 || line > count)
        return -1;
    const int at = line == -1 ? count : line;
    if (!m_impl->Inserting(at, 1))
        return -1;
    m_impl->InsertRow(at, m_impl->NewRow(std::span(texts.begin(), texts.size()), height));
    m_impl->Inserted(at, 1);
    return at;
}

int CKvReportListCtrl::InsertRows(int line, const std::vector<CStringArray>& rows, int height)
{
    const int count = m_impl->rows.Count();
    if (line < -1 || line > count || rows.empty())
        return -1;
    const int at = line == -1 ? count : line;
    if (!m_impl->Inserting(at, static_cast<int>(rows.size())))
        return -1;
    m_impl->InsertRows(at, m_impl->NewRows(rows, height));
    m_impl->Inserted(at, static_cast<int>(rows.size()));
    return at;
}

int CKvReportListCtrl::InsertRows(const CArray<int, int>& lines, const std::vector<CStringArray>& rows,
                                  int height)
{
    const bool isAscending =
        std::adjacent_find(lines.begin(), lines.end(), std::greater_equal<>()) == lines.end();
    const std::int64_t count = m_impl->rows.Count() + static_cast<std::int64_t>(rows.size());
    if (lines.empty() || lines.size() != rows.size() || !isAscending || lines.front() < 0 ||
        lines.back() >= count)
        return 0;
    if (!m_impl->TellChanging(kKvReportInserted, lines))
        return 0;
    m_impl->InsertRows(lines, m_impl->NewRows(rows, height));
    m_impl->RowsResized();
    m_impl->Notify(kKvReportInserted, lines);
    return static_cast<int>(lines.size());
}

int CKvReportListCtrl::RemoveRows(int line, int count)
{
    if (!m_impl->IsLine(line) || count <= 0)
        return 0;
    count = std::min(count, m_impl->rows.Count() - line);
    CArray<int, int> lines(static_cast<std::size_t>(count));
    std::iota(lines.begin(), lines.end(), line);
    _OnItemsModifying(kKvReportRemoved, lines.data(), count);
    if (!m_impl->TellChanging(kKvReportRemoved, lines))
        return 0;
    m_impl->RemoveRows(line, count);
    m_impl->Removed(lines, kKvReportRemoved);
    return count;
}

int CKvReportListCtrl::RemoveRows(const CArray<int, int>& lines)
{
    CArray<int, int> gone = lines;
    std::erase_if(gone, [this](int line) { return !m_impl->IsLine(line); });
    std::sort(gone.begin(), gone.end());
    gone.erase(std::unique(gone.begin(), gone.end()), gone.end());
    if (gone.empty())
        return 0;
    _OnItemsModifying(kKvReportRemoved, gone.data(), static_cast<int>(gone.size()));
    if (!m_impl->TellChanging(kKvReportRemoved, gone))
        return 0;
    m_impl->RemoveRows(gone);
    m_impl->Removed(gone, kKvReportRemoved);
    return static_cast<int>(gone.size());
}

void CKvReportListCtrl::RemoveAllRows()
{
    _OnItemsModifying(kKvReportAllRemoved, nullptr, 0);
    if (!m_impl->TellChanging(kKvReportAllRemoved, {}))
        return;
    if (m_impl->rows.Count() > 0)
        m_impl->RemoveRows(0, m_impl->rows.Count());
    m_impl->Removed({}, kKvReportAllRemoved);
}

int CKvReportListCtrl::SortRows(const CArray<int, int>& order)
{
    if (!m_impl->SortRows(order))
        return 0;
    m_impl->RowsResized();
    m_impl->Notify(kKvReportOrderChanged, order);
    return 1;
}

int CKvReportListCtrl::SetItemText(int line, int column, const CString& text)
{
    if (!m_impl->IsCell(line, column))
        return 0;
    if (m_impl->rows.Row(line).Text(column) == text)
        return 1;
    _OnItemsModifying(kKvReportTextChanged, &line, 1);
    m_impl->Refill(line, [&] { m_impl->SetText(line, column, text); });
    m_impl->NotifyText(line, column);
    return 1;
}

int CKvReportListCtrl::SetItemHeight(int line, int height)
{
    if (!m_impl->IsLine(line) || height <= 0)
        return 0;
    m_impl->SetHeight(line, std::min(height, kv::kReportMost));
    m_impl->RowsResized();
    return 1;
}

int CKvReportListCtrl::SetCellColors(int line, int column, const DWORD* back, const DWORD* text)
{
    if (!m_impl->IsCell(line, column))
        return 0;
    m_impl->rows.SetColours(line, column, back, text);
    m_impl->RepaintRow(line);
    m_impl->TellChanged(kKvReportTextChanged, {&line, 1});
    return 1;
}

int CKvReportListCtrl::ClearCellColors(int line, int column)
{
    if (!m_impl->IsCell(line, column))
        return 0;
    m_impl->rows.ClearColours(line, column);
    m_impl->RepaintRow(line);
    m_impl->TellChanged(kKvReportTextChanged, {&line, 1});
    return 1;
}

std::uint64_t CKvReportListCtrl::GetItemData(int line) const
{
    return m_impl->IsLine(line) ? m_impl->rows.Row(line).data : 0;
}

int CKvReportListCtrl::SetItemData(int line, std::uint64_t value)
{
    if (!m_impl->IsLine(line))
        return 0;
    _OnItemsModifying(kKvReportTextChanged, &line, 1);
    m_impl->Refill(line, [&] { m_impl->SetData(line, value); });
    m_impl->TellChanged(kKvReportTextChanged, {&line, 1});
    return 1;
}

std::uint64_t CKvReportListCtrl::GetRowId(int line) const
{
    return m_impl->IsLine(line) ? m_impl->rows.Row(line).id : 0;
}

std::uint64_t CKvReportListCtrl::GetNextRowId() const
{
    return m_impl->rows.NextId();
}

int CKvReportListCtrl::FindRow(std::uint64_t id) const
{
    return m_impl->rows.Find(id);
}

void CKvReportListCtrl::_BeforeQuery() const {}
void CKvReportListCtrl::_OnNotifyItemModify(int, const CArray<int, int>&, int) {}
void CKvReportListCtrl::_OnItemsModifying(int, const int*, int) {}
