#include "KvSubTitleTxtListEditor.h"

#include "KvGuiRes.h"
#include "platform/SkinColours.h"
#include "text/ListTexts.h"
#include "text/PlayIndex.h"
#include "text/SubtitleTimes.h"
#include "text/TimecodeEdit.h"

#include <optional>

namespace {

constexpr const wchar_t* kWindowClass = L"KVSUBTITLEEDITOR";
constexpr int kPlayMarkWidth = 3;

struct Column
{
    UINT header;
    int width;
};
constexpr Column kColumns[] = {{12050, 200}, {12051, 100}, {12052, 100}, {12053, 80}};

bool IsTimecode(int column)
{
    return column == kKvSubTitleIn || column == kKvSubTitleOut;
}

} // namespace

struct CKvSubTitleTxtListEditor::Impl
{
    struct Theme
    {
        DWORD back = 0, selectedBack = 0, text = 0;
        QColor mark;
        void Load();
    };

    explicit Impl(CKvSubTitleTxtListEditor& control) : list(control) { theme.Load(); }

    bool IsLine(int line) const { return list.GetRowKey(line) != 0; }
    kv::SubtitleTimes TimesOf(int line) const { return kv::UnpackTimes(list.GetItemData(line)); }
    void SetTimes(int line, const kv::SubtitleTimes& times);
    void ShowTimes(int line, const kv::SubtitleTimes& times);
    void ShowAllTimes();
    void FollowPlayback();
    bool IsPlayed(int line) const { return playKey != 0 && list.GetRowKey(line) == playKey; }

    CKvSubTitleTxtListEditor& list;
    Theme theme;
    kv::TimecodeFormat format;
    std::uint64_t playKey = 0;
    bool follows = false;
    bool userScrolled = false;
    std::optional<kv::PlayIndex> plays; ///< nothing after a change
};

void CKvSubTitleTxtListEditor::Impl::Theme::Load()
{
    back = kv::SkinColour(L"keSubTitlePlayBKColor", 0xFF1E4A34u).rgba();
    selectedBack = kv::SkinColour(L"keSubTitlePlaySelectedBKColor", 0xFF34705Au).rgba();
    text = kv::SkinColour(L"keSubTitlePlayTextColor", 0xFFFFFFFFu).rgba();
    mark = kv::SkinColour(L"keSubTitlePlayMarkColor", 0xFF78DC96u);
}

void CKvSubTitleTxtListEditor::Impl::SetTimes(int line, const kv::SubtitleTimes& times)
{
    list.SetItemData(line, kv::PackTimes(times));
    ShowTimes(line, times);
    plays.reset();
}

void CKvSubTitleTxtListEditor::Impl::ShowTimes(int line, const kv::SubtitleTimes& times)
{
    list.SetItemText(line, kKvSubTitleIn, kv::TimecodeText(times.in, format));
    list.SetItemText(line, kKvSubTitleOut, kv::TimecodeText(times.out, format));
}

void CKvSubTitleTxtListEditor::Impl::ShowAllTimes()
{
    const FrameHold hold(list);
    for (int line = 0; line < list.GetItemCount(); ++line)
        ShowTimes(line, TimesOf(line));
}

void CKvSubTitleTxtListEditor::Impl::FollowPlayback()
{
    // Nothing moves away under an open cell or under the pointer that is dragging.
    if (follows && !userScrolled && !list.IsEditing() && !list.HasCapture())
        list.EnsureVisible(list.GetPlayIndex());
}

CKvSubTitleTxtListEditor::CKvSubTitleTxtListEditor() : m_impl(std::make_unique<Impl>(*this))
{
    setObjectName(KvToQString(kWindowClass));
    for (const Column& column : kColumns)
        _InsertGrowingColumn(L"", column.width);
    SetAutoSizeColumn(kKvSubTitleText);
    CKvSubTitleTxtListEditor::OnSkinChanged();
}

CKvSubTitleTxtListEditor::CKvSubTitleTxtListEditor(QWidget* parent) : CKvSubTitleTxtListEditor()
{
    CreateWhenShown(parent);
}

CKvSubTitleTxtListEditor::~CKvSubTitleTxtListEditor() = default;

CString CKvSubTitleTxtListEditor::GetWindowClass() const
{
    return kWindowClass;
}

int CKvSubTitleTxtListEditor::InserItem(int line, const CString& text, DWORD in, DWORD out,
                                        const wchar_t* templateName)
{
    const int row =
        InsertRow(line, {text, kv::TimecodeText(in, m_impl->format), kv::TimecodeText(out, m_impl->format),
                         templateName ? templateName : L""});
    if (row >= 0)
        SetItemData(row, kv::PackTimes({in, out}));
    m_impl->plays.reset(); // asked for meanwhile, it was made without these times
    return row;
}

int CKvSubTitleTxtListEditor::ModifyItem(int line, const wchar_t* text, const DWORD* in, const DWORD* out,
                                         const wchar_t* templateName)
{
    if (!m_impl->IsLine(line))
        return 0;
    if (text)
        SetItemText(line, kKvSubTitleText, text);
    if (templateName)
        SetItemText(line, kKvSubTitleTemplate, templateName);
    m_impl->SetTimes(line, {in ? *in : kv::kNoTimecode, out ? *out : kv::kNoTimecode});
    return 1;
}

int CKvSubTitleTxtListEditor::DeleteItem(int line)
{
    if (!m_impl->IsLine(line))
        return 0;
    RemoveLines({line});
    return 1;
}

int CKvSubTitleTxtListEditor::EmptyAll()
{
    RemoveAllLines();
    return 1;
}

int CKvSubTitleTxtListEditor::EmptyAllTimeCode()
{
    const FrameHold hold(*this);
    for (int line = 0; line < GetItemCount(); ++line)
        m_impl->SetTimes(line, {});
    return 1;
}

int CKvSubTitleTxtListEditor::UpdateAllTemplateName(const wchar_t* templateName)
{
    const CString name = templateName ? templateName : L"";
    const FrameHold hold(*this);
    for (int line = 0; line < GetItemCount(); ++line)
        SetItemText(line, kKvSubTitleTemplate, name);
    return 1;
}

int CKvSubTitleTxtListEditor::SetTimeCode(int line, DWORD value, int isIn)
{
    if (!m_impl->IsLine(line))
        return 0;
    kv::SubtitleTimes times = m_impl->TimesOf(line);
    (isIn ? times.in : times.out) = value;
    m_impl->SetTimes(line, times);
    return 1;
}

int CKvSubTitleTxtListEditor::GetTimeCode(int line, DWORD& in, DWORD& out) const
{
    if (!m_impl->IsLine(line))
        return 0;
    const kv::SubtitleTimes times = m_impl->TimesOf(line);
    in = times.in;
    out = times.out;
    return 1;
}

int CKvSubTitleTxtListEditor::SetTimecodeFormat(EKvFrameRate rate, BOOL dropFrame)
{
    if (rate < kKvFrameRate23_976 || rate > kKvFrameRate60)
        return 0;
    m_impl->format.rate = rate;
    m_impl->format.dropFrame = dropFrame != 0;
    m_impl->ShowAllTimes();
    return 1;
}

CKvSubTitleTxtListEditor::FrameRate CKvSubTitleTxtListEditor::Rate() const
{
    return static_cast<FrameRate>(m_impl->format.rate);
}

void CKvSubTitleTxtListEditor::SetRate(FrameRate rate)
{
    SetTimecodeFormat(static_cast<EKvFrameRate>(rate), m_impl->format.dropFrame ? 1 : 0);
}

bool CKvSubTitleTxtListEditor::IsDropFrame() const
{
    return m_impl->format.dropFrame;
}

void CKvSubTitleTxtListEditor::SetDropFrame(bool dropFrame)
{
    SetTimecodeFormat(m_impl->format.rate, dropFrame ? 1 : 0);
}

bool CKvSubTitleTxtListEditor::IsFollowingPlayback() const
{
    return m_impl->follows;
}

void CKvSubTitleTxtListEditor::SetTimecodeOffset(DWORD offset)
{
    if (m_impl->format.offset == offset)
        return;
    m_impl->format.offset = offset;
    m_impl->ShowAllTimes();
}

DWORD CKvSubTitleTxtListEditor::GetTimecodeOffset() const
{
    return m_impl->format.offset;
}

void CKvSubTitleTxtListEditor::SetPlayIndex(int line)
{
    const std::uint64_t key = GetRowKey(line);
    if (key == m_impl->playKey)
        return; // a host says so after every edit, too
    UpdateLine(GetPlayIndex());
    m_impl->playKey = key;
    UpdateLine(line);
    m_impl->FollowPlayback();
}

int CKvSubTitleTxtListEditor::GetPlayIndex() const
{
    return FindRowKey(m_impl->playKey);
}

int CKvSubTitleTxtListEditor::FindPlayIndex(DWORD frame) const
{
    if (!m_impl->plays) {
        std::vector<kv::PlaySpan> spans;
        spans.reserve(static_cast<std::size_t>(GetItemCount()));
        for (int line = 0; line < GetItemCount(); ++line) {
            const kv::SubtitleTimes times = m_impl->TimesOf(line);
            spans.push_back({times.in, times.out});
        }
        m_impl->plays.emplace(spans);
    }
    return m_impl->plays->Find(frame);
}

void CKvSubTitleTxtListEditor::SetFollowPlayback(BOOL follow)
{
    m_impl->follows = follow != 0;
    m_impl->userScrolled = false;
    m_impl->FollowPlayback();
}

void CKvSubTitleTxtListEditor::_OnUserScroll()
{
    m_impl->userScrolled = true;
}

const char* CKvSubTitleTxtListEditor::_GetRowFormat() const
{
    return "application/x-kv-subtitle-rows";
}

UINT CKvSubTitleTxtListEditor::_GetNameText() const
{
    return kv::kSubtitleListName;
}

UINT CKvSubTitleTxtListEditor::_GetEditStepText(int column) const
{
    return IsTimecode(column)              ? kv::kEditTimecodeStep
           : column == kKvSubTitleTemplate ? kv::kEditTemplateStep
                                           : kv::kEditTextStep;
}

// Of a time code the frame count, empty for none.
CString CKvSubTitleTxtListEditor::_GetCellValue(int line, int column) const
{
    if (!IsTimecode(column))
        return CKvTextListBase::_GetCellValue(line, column);
    const kv::SubtitleTimes times = m_impl->TimesOf(line);
    return kv::FrameValue(column == kKvSubTitleIn ? times.in : times.out);
}

void CKvSubTitleTxtListEditor::_SetCellValue(int line, int column, const CString& value)
{
    if (IsTimecode(column))
        SetTimeCode(line, kv::FrameOfValue(value), column == kKvSubTitleIn);
    else
        CKvTextListBase::_SetCellValue(line, column, value);
}

CString CKvSubTitleTxtListEditor::_ReadCellValue(int line, int column, const CString& text) const
{
    if (!IsTimecode(column))
        return CKvTextListBase::_ReadCellValue(line, column, text);
    const DWORD present = kv::FrameOfValue(_GetCellValue(line, column));
    return kv::FrameValue(kv::ReadTimecodeEntry(text, present, m_impl->format).frame);
}

void CKvSubTitleTxtListEditor::_TellCellEdited(int line, int column)
{
    if (IsTimecode(column))
        Q_EMIT TimeCodeEdited(line, column == kKvSubTitleIn);
    else
        CKvTextListBase::_TellCellEdited(line, column);
}

// The format or the offset may have changed meanwhile.
void CKvSubTitleTxtListEditor::_UpdateRowTexts(int line)
{
    m_impl->ShowTimes(line, m_impl->TimesOf(line));
    m_impl->plays.reset();
}

CString CKvSubTitleTxtListEditor::_GetSortKey(int line, int column) const
{
    if (!IsTimecode(column))
        return CKvTextListBase::_GetSortKey(line, column);
    const kv::SubtitleTimes times = m_impl->TimesOf(line);
    return kv::FrameSortKey(column == kKvSubTitleIn ? times.in : times.out);
}

void CKvSubTitleTxtListEditor::_OnNotifyItemModify(int kind, const CArray<int, int>&, int)
{
    if (kind == kKvReportAllRemoved)
        m_impl->playKey = 0;
    if (kind != kKvReportTextChanged)
        m_impl->plays.reset();
    if (kind == kKvReportOrderChanged)
        m_impl->FollowPlayback();
}

void CKvSubTitleTxtListEditor::OnSize(int width, int height)
{
    CKvTextListBase::OnSize(width, height);
    m_impl->FollowPlayback();
}

void CKvSubTitleTxtListEditor::_OnEditClosed()
{
    m_impl->FollowPlayback();
}

BOOL CKvSubTitleTxtListEditor::_GetItemBKColor(int line, int column, int state, DWORD& colour)
{
    if (!m_impl->IsPlayed(line))
        return CKvTextListBase::_GetItemBKColor(line, column, state, colour);
    colour = IsItemSelected(line) ? m_impl->theme.selectedBack : m_impl->theme.back;
    return 1;
}

BOOL CKvSubTitleTxtListEditor::_GetItemTextColor(int line, int column, int state, DWORD& colour)
{
    if (!m_impl->IsPlayed(line) || state == kKvReportDisabled)
        return CKvTextListBase::_GetItemTextColor(line, column, state, colour);
    colour = m_impl->theme.text;
    return 1;
}

CString CKvSubTitleTxtListEditor::_GetItemDescription(int line) const
{
    return m_impl->IsPlayed(line) ? KvGuiRes::LoadStringW(kv::kPlayedRow) : CString();
}

// Colour alone would not tell everybody which row plays.
void CKvSubTitleTxtListEditor::DrawItem(Graphics* graphics, int line, int column)
{
    if (graphics && column == 0 && m_impl->IsPlayed(line)) {
        QRect mark = GetCellRect(line, column);
        mark.setWidth(kPlayMarkWidth);
        graphics->fillRect(mark, m_impl->theme.mark);
    }
    CKvTextListBase::DrawItem(graphics, line, column);
}

BOOL CKvSubTitleTxtListEditor::_PasteReplacesCell(int, int column, const CString& pasted)
{
    return IsTimecode(column) && kv::IsWholeTimecode(pasted) ? 1 : 0;
}

BOOL CKvSubTitleTxtListEditor::_ValidateEdit(int line, int column, const CString& text, CString& why)
{
    if (!IsTimecode(column))
        return 1;
    const DWORD present = kv::FrameOfValue(_GetCellValue(line, column));
    const UINT refusal = kv::ReadTimecodeEntry(text, present, m_impl->format).refusal;
    why = KvGuiRes::LoadStringW(refusal);
    return refusal == 0 ? 1 : 0;
}

void CKvSubTitleTxtListEditor::OnSkinChanged()
{
    m_impl->theme.Load();
    int column = 0;
    for (const Column& one : kColumns)
        SetHeaderText(column++, KvGuiRes::LoadStringW(one.header).c_str());
    CKvTextListBase::OnSkinChanged();
}
