#include "KvTextEditListCtrl.h"

#include "KvGuiRes.h"
#include "text/ListTexts.h"
#include "text/TextLines.h"

#include <utility>

namespace {

constexpr int kColumnWidth = 200; // until the list has a size

int Count(const CStringArray& texts)
{
    return static_cast<int>(texts.size());
}

} // namespace

CKvTextEditListCtrl::CKvTextEditListCtrl()
{
    InsertColumn(KvGuiRes::LoadStringW(kv::kTextColumnText).c_str(), kColumnWidth);
    SetAutoSizeColumn(0);
    ShowHeader(0);
    connect(this, &CKvTextListBase::TextEdited, this, &CKvTextEditListCtrl::TextsEdited);
    connect(this, &CKvTextListBase::RowsEdited, this, &CKvTextEditListCtrl::TextsEdited);
    CKvTextEditListCtrl::OnSkinChanged();
}

CKvTextEditListCtrl::CKvTextEditListCtrl(QWidget* parent) : CKvTextEditListCtrl()
{
    CreateWhenShown(parent);
}

CKvTextEditListCtrl::~CKvTextEditListCtrl() = default;

void CKvTextEditListCtrl::OnSkinChanged()
{
    SetHeaderText(0, KvGuiRes::LoadStringW(kv::kTextColumnText).c_str());
    CKvTextListBase::OnSkinChanged();
}

int CKvTextEditListCtrl::AddString(const wchar_t* text)
{
    return InsertString(-1, text);
}

int CKvTextEditListCtrl::AddString(const CStringArray& texts)
{
    std::vector<CStringArray> rows;
    rows.reserve(texts.size());
    for (const CString& text : texts)
        rows.push_back({text});
    return InsertRows(-1, rows);
}

int CKvTextEditListCtrl::InsertString(int line, const wchar_t* text)
{
    return text ? InsertRow(line, {text}) : -1;
}

int CKvTextEditListCtrl::DeleteString(UINT line)
{
    if (line >= static_cast<UINT>(GetItemCount()))
        return 0;
    RemoveLines({static_cast<int>(line)});
    return 1;
}

int CKvTextEditListCtrl::ResetContent(int clearModified)
{
    RemoveAllLines();
    if (clearModified)
        SetUserModified(false);
    return 1;
}

int CKvTextEditListCtrl::GetString(CStringArray& texts) const
{
    texts.clear();
    texts.reserve(static_cast<std::size_t>(GetItemCount()));
    for (int line = 0; line < GetItemCount(); ++line)
        texts.push_back(GetItemText(line, 0));
    return Count(texts);
}

int CKvTextEditListCtrl::GetSelectString(CStringArray& texts) const
{
    texts = GetSelectedTexts();
    return Count(texts);
}

int CKvTextEditListCtrl::GetTxtFocus(CStringArray& texts) const
{
    texts = GetFocusTexts();
    return Count(texts);
}

int CKvTextEditListCtrl::GetMultiLinesTxtFocus(CStringArray& texts) const
{
    texts.clear();
    for (const CString& text : GetFocusTexts()) {
        for (CString& line : kv::SplitLines(text))
            texts.push_back(std::move(line));
    }
    return Count(texts);
}

int CKvTextEditListCtrl::SetItemTextColor(int line, const DWORD* normal, const DWORD* selected,
                                          const DWORD* disabled)
{
    if (GetRowKey(line) == 0)
        return 0;
    SetRowTextColors(line, normal, selected, disabled);
    return 1;
}

int CKvTextEditListCtrl::GetItemTextColor(int line, DWORD* normal, DWORD* selected, DWORD* disabled) const
{
    if (GetRowKey(line) == 0)
        return 0;
    GetRowTextColors(line, normal, selected, disabled);
    return 1;
}

BOOL CKvTextEditListCtrl::IsModified() const
{
    return IsUserModified() ? 1 : 0;
}

void CKvTextEditListCtrl::SetModify(int modified)
{
    SetUserModified(modified != 0);
}

const char* CKvTextEditListCtrl::_GetRowFormat() const
{
    return "application/x-kv-text-rows";
}

UINT CKvTextEditListCtrl::_GetNameText() const
{
    return kv::kTextListName;
}

QStringList CKvTextEditListCtrl::Texts() const
{
    CStringArray rows;
    GetString(rows);
    QStringList texts;
    for (const CString& row : rows)
        texts << KvToQString(row);
    return texts;
}

void CKvTextEditListCtrl::SetTexts(const QStringList& texts)
{
    CStringArray rows;
    for (const QString& text : texts)
        rows.push_back(KvFromQString(text));
    const FrameHold hold(*this);
    ResetContent(0);
    AddString(rows);
}
