#include "KvTextListBase.h"

#include "KvGuiRes.h"
#include "text/ListTexts.h"
#include "text/TextLines.h"
#include "text/TextListImpl.h"

#include <utility>

using kv::RowColour;

CKvTextListBase::CKvTextListBase() : m_impl(std::make_unique<Impl>(*this))
{
    setAcceptDrops(true);
}

CKvTextListBase::~CKvTextListBase() = default;

int CKvTextListBase::GetString(int line, CString& text) const
{
    if (GetRowId(line) == 0)
        return 0;
    text = GetItemText(line, 0);
    return 1;
}

CStringArray CKvTextListBase::GetSelectedTexts() const
{
    CArray<int, int> lines;
    GetSelItems(lines);
    CStringArray texts;
    texts.reserve(lines.size());
    for (const int line : lines)
        texts.push_back(GetItemText(line, 0));
    return texts;
}

CStringArray CKvTextListBase::GetFocusTexts() const
{
    if (!IsEditing())
        return GetSelectedTexts();
    CString text = GetOpenSelection();
    return text.empty() ? CStringArray() : CStringArray{std::move(text)};
}

int CKvTextListBase::GetFirstLineTxtFocus(CStringArray& texts) const
{
    texts = GetFocusTexts();
    for (CString& text : texts)
        text = kv::FirstLine(text);
    return static_cast<int>(texts.size());
}

int CKvTextListBase::SetItemBkColor(int line, const DWORD* normal, const DWORD* selected)
{
    if (GetRowId(line) == 0)
        return 0;
    m_impl->SetColours(line, {{RowColour::Back, normal}, {RowColour::SelectedBack, selected}});
    return 1;
}

int CKvTextListBase::GetItemBkColor(int line, DWORD* normal, DWORD* selected) const
{
    if (GetRowId(line) == 0)
        return 0;
    if (normal)
        *normal = m_impl->ColourOf(line, RowColour::Back);
    if (selected)
        *selected = m_impl->ColourOf(line, RowColour::SelectedBack);
    return 1;
}

void CKvTextListBase::SetRowTextColors(int line, const DWORD* normal, const DWORD* selected,
                                       const DWORD* disabled)
{
    m_impl->SetColours(line, {{RowColour::Text, normal},
                              {RowColour::SelectedText, selected},
                              {RowColour::DisabledText, disabled}});
}

void CKvTextListBase::GetRowTextColors(int line, DWORD* normal, DWORD* selected, DWORD* disabled) const
{
    if (normal)
        *normal = m_impl->ColourOf(line, RowColour::Text);
    if (selected)
        *selected = m_impl->ColourOf(line, RowColour::SelectedText);
    if (disabled)
        *disabled = m_impl->ColourOf(line, RowColour::DisabledText);
}

BOOL CKvTextListBase::GetCellColors(int line, int column, DWORD* back, DWORD* text) const
{
    if (GetRowId(line) == 0 || column < 0 || column >= GetColumnCount())
        return 0;
    const std::optional<DWORD> ownBack = m_impl->OwnColour(line, RowColour::Back);
    const std::optional<DWORD> ownText = m_impl->OwnColour(line, RowColour::Text);
    if (back && ownBack)
        *back = *ownBack;
    if (text && ownText)
        *text = *ownText;
    return ownBack || ownText ? 1 : 0;
}

BOOL CKvTextListBase::_GetItemBKColor(int line, int, int, DWORD& colour)
{
    // The pair knows no disabled one: the background says what it said before.
    const auto own =
        m_impl->OwnColour(line, IsItemSelected(line) ? RowColour::SelectedBack : RowColour::Back);
    colour = own.value_or(colour);
    return own ? 1 : 0;
}

BOOL CKvTextListBase::_GetItemTextColor(int line, int, int state, DWORD& colour)
{
    const auto own = m_impl->OwnColour(line, state == kKvReportDisabled   ? RowColour::DisabledText
                                             : state == kKvReportSelected ? RowColour::SelectedText
                                                                          : RowColour::Text);
    colour = own.value_or(colour);
    return own ? 1 : 0;
}

int CKvTextListBase::SortItems(int column, BOOL ascending)
{
    if (column < 0 || column >= GetColumnCount())
        return 0;
    CStringArray sortKeys;
    const int count = GetItemCount();
    sortKeys.reserve(static_cast<std::size_t>(count));
    for (int line = 0; line < count; ++line)
        sortKeys.push_back(_GetSortKey(line, column));
    const auto isLess = [&](int a, int b) {
        return sortKeys[static_cast<std::size_t>(a)] < sortKeys[static_cast<std::size_t>(b)];
    };
    return SortRows(kv::SortedOrder(count, ascending != 0, isLess));
}

QUndoStack* CKvTextListBase::GetUndoStack() const
{
    return &m_impl->Stack();
}

void CKvTextListBase::SetUndoStack(QUndoStack* stack)
{
    m_impl->hostStack = stack == m_impl->ownStack ? nullptr : stack;
}

CString CKvTextListBase::_GetCellValue(int line, int column) const
{
    return GetItemText(line, column);
}

void CKvTextListBase::_SetCellValue(int line, int column, const CString& value)
{
    SetItemText(line, column, value);
}

CString CKvTextListBase::_ReadCellValue(int, int, const CString& text) const
{
    return text;
}

void CKvTextListBase::_TellCellEdited(int line, int)
{
    Q_EMIT TextEdited(line);
}

void CKvTextListBase::_UpdateRowTexts(int) {}

CString CKvTextListBase::_GetSortKey(int line, int column) const
{
    return KvFromQString(KvToQString(GetItemText(line, column)).toCaseFolded());
}

UINT CKvTextListBase::_GetEditStepText(int) const
{
    return kv::kEditTextStep;
}

void CKvTextListBase::RemoveLines(const CArray<int, int>& lines)
{
    m_impl->Remove(lines);
}

void CKvTextListBase::RemoveAllLines()
{
    ++m_impl->epoch;
    m_impl->colours.clear();
    m_impl->keys = {};
    RemoveAllRows();
    if (m_impl->running == 0)
        m_impl->ownStack->clear();
}

std::uint64_t CKvTextListBase::GetRowKey(int line) const
{
    return m_impl->KeyAt(line);
}

int CKvTextListBase::FindRowKey(std::uint64_t key) const
{
    return m_impl->LineOf(key);
}

bool CKvTextListBase::IsUserModified() const
{
    return m_impl->content != m_impl->saved;
}

void CKvTextListBase::SetUserModified(bool modified)
{
    m_impl->saved = modified ? 0 : m_impl->content;
}

BOOL CKvTextListBase::_CanEditCell(int, int)
{
    return 1;
}

BOOL CKvTextListBase::_IsMultiLineCell(int, int column)
{
    return column == 0 ? 1 : 0;
}

void CKvTextListBase::_CommitEdit(int line, int column, const CString& text)
{
    Impl::CellChange change{GetRowKey(line), column, _GetCellValue(line, column),
                            _ReadCellValue(line, column, text)};
    if (change.before == change.after)
        return;
    m_impl->Push(std::make_unique<Impl::CellStep>(*m_impl, std::move(change), _GetEditStepText(column)));
}

void CKvTextListBase::OnSkinChanged()
{
    m_impl->theme.Load();
    CKvReportListCtrl::OnSkinChanged();
}
