// The log list: its operations and queries.
#include "KvAppLogListCtrl.h"

#include "applog/AppLogFile.h"
#include "applog/KvAppLogListImpl.h"
#include "core/TextTables.h"

#include <algorithm>

namespace {

constexpr DWORD kAllTypes = (1u << kv::kAppLogTypes) - 1;
constexpr std::uint32_t kHeaderTexts[] = {15041, 15042, 15043, 15044};
constexpr int kWidths[] = {40, 20, 158, 100}; // the last one takes the rest

} // namespace

CKvAppLogListCtrl::CKvAppLogListCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    m_impl->typeMask = kAllTypes;
    Impl::LoadTheme();
}

CKvAppLogListCtrl::~CKvAppLogListCtrl() = default;

void CKvAppLogListCtrl::Initialize(int keepOption)
{
    const Impl::Operation operation(*m_impl);
    if (!keepOption)
        ShowGridLines(0);
    if (m_impl->isInitialized)
        return;
    m_impl->isInitialized = true;
    for (std::size_t i = 0; i < std::size(kHeaderTexts); ++i)
        InsertColumn(kv::LoadText(kHeaderTexts[i]).c_str(), kWidths[i]);
    SetTextStyle(0);
    SetAutoSizeColumn(kv::kAppLogContent);
    m_impl->LoadSkin();
    m_impl->ColourLines(); // of messages that were there before the columns
}

int CKvAppLogListCtrl::AddAppLogMsg(const SKvAppLogMsgData& message)
{
    const Impl::Operation operation(*m_impl);
    if (!kv::IsAppLogType(message.type))
        return 0;
    _PrivateEnableUpdate(0);
    m_impl->Add(message.type, message.level, message.time, kv::AppLogText(message));
    _PrivateEnableUpdate(1);
    return 1;
}

int CKvAppLogListCtrl::AddAppLogMsg(const CArray<SKvAppLogMsgData, const SKvAppLogMsgData&>& messages)
{
    const Impl::Operation operation(*m_impl);
    int added = 0;
    _PrivateEnableUpdate(0);
    for (const SKvAppLogMsgData& message : messages)
        added |= AddAppLogMsg(message);
    _PrivateEnableUpdate(1);
    return added;
}

int CKvAppLogListCtrl::AddEmptySeparateLine(int count)
{
    const Impl::Operation operation(*m_impl);
    if (count > 0) {
        m_impl->AddSeparators([&] {
            InsertRows(-1, std::vector<CStringArray>(static_cast<std::size_t>(count)),
                       kv::kAppLogSpacerHeight);
        });
    }
    return GetItemCount() - 1;
}

int CKvAppLogListCtrl::AddTimeSeparateLine(const SYSTEMTIME& time)
{
    const Impl::Operation operation(*m_impl);
    if (m_impl->dates.IsSameDate(time))
        AddEmptySeparateLine(1);
    else
        m_impl->AddSeparators([&] { m_impl->AddDateLine(time); });
    m_impl->dates.separator = time;
    return 1;
}

unsigned short CKvAppLogListCtrl::SetMaxLogLineCounts(unsigned short count, int apply)
{
    const Impl::Operation operation(*m_impl);
    const unsigned short before = m_impl->maximum;
    m_impl->maximum = count;
    if (apply && _CheckMaxLogLineCounts()) {
        m_impl->SelectLast();
        UpdateCells();
    }
    return before;
}

unsigned short CKvAppLogListCtrl::GetMaxLogLineCounts() const
{
    return m_impl->maximum;
}

int CKvAppLogListCtrl::GetTypeCount(int type) const
{
    const Impl::Operation operation(*m_impl);
    return kv::IsAppLogType(type) ? m_impl->typeCounts[static_cast<std::size_t>(type)] : 0;
}

int CKvAppLogListCtrl::LoadAppLogFmFile(const wchar_t* path, int replace)
{
    const Impl::Operation operation(*m_impl);
    CKvAppLogFile file;
    if (!file.OpenLog(path))
        return 0;
    _PrivateEnableUpdate(0);
    if (replace)
        m_impl->Clear();
    SKvAppLogMsgData message{};
    while (file.ReadLogData(message))
        AddAppLogMsg(message);
    _PrivateEnableUpdate(1);
    return 1;
}

int CKvAppLogListCtrl::SaveAppLogToFile(const wchar_t* path, int selectedOnly)
{
    const Impl::Operation operation(*m_impl);
    return path && m_impl->SaveTo(path, selectedOnly != 0) == Impl::Outcome::kDone ? 1 : 0;
}

int CKvAppLogListCtrl::SaveAppLogToSysClipboard(int selectedOnly)
{
    const Impl::Operation operation(*m_impl);
    return m_impl->Copy(selectedOnly != 0, true) ? 1 : 0;
}

void CKvAppLogListCtrl::SetFollowMode(int mode)
{
    const Impl::Operation operation(*m_impl);
    if (mode != kKvAppLogFollowAlways && mode != kKvAppLogFollowAtEnd)
        return;
    m_impl->followMode = mode;
    if (mode == kKvAppLogFollowAlways)
        m_impl->missed = 0;
    m_impl->AskOverlay();
}

int CKvAppLogListCtrl::GetFollowMode() const
{
    return m_impl->followMode;
}

void CKvAppLogListCtrl::SetTypeFilter(DWORD mask)
{
    const Impl::Operation operation(*m_impl);
    m_impl->typeMask = mask & kAllTypes;
    m_impl->ApplyFilter();
}

void CKvAppLogListCtrl::SetTextFilter(const wchar_t* text, BOOL matchCase)
{
    const Impl::Operation operation(*m_impl);
    m_impl->textFilter = kv::AppLogMatcher(text ? text : L"", matchCase != 0);
    m_impl->ApplyFilter();
}

void CKvAppLogListCtrl::ShowFindBar(BOOL show)
{
    const Impl::Operation operation(*m_impl);
    if (show)
        m_impl->OpenFind();
    else
        m_impl->CloseFind();
}

int CKvAppLogListCtrl::_AddNewLogLine(const SKvAppLogMsgData& message)
{
    return m_impl->AddLine(message.type, message.level, message.time, kv::AppLogText(message));
}

int CKvAppLogListCtrl::_CheckMaxLogLineCounts()
{
    return m_impl->Trim() > 0 ? 1 : 0;
}

int CKvAppLogListCtrl::_FormatLogLine(int line, CString& out) const
{
    const Impl::Operation operation(*m_impl);
    if (m_impl->TypeAt(line) < 0)
        return 0;
    out = kv::AppLogLineText(GetItemText(line, kv::kAppLogType), GetItemText(line, kv::kAppLogLevel),
                             GetItemText(line, kv::kAppLogTime), GetItemText(line, kv::kAppLogContent));
    return 1;
}

int CKvAppLogListCtrl::GetItemCount() const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetItemCount();
}

CString CKvAppLogListCtrl::GetItemText(int line, int column) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetItemText(line, column);
}

int CKvAppLogListCtrl::GetItemHeight(int line) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetItemHeight(line);
}

BOOL CKvAppLogListCtrl::GetCellColors(int line, int column, DWORD* back, DWORD* text) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetCellColors(line, column, back, text);
}

int CKvAppLogListCtrl::FindItem(const wchar_t* text, int column, int from) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::FindItem(text, column, from);
}

int CKvAppLogListCtrl::FindItem(const CString& text, int column, int from) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::FindItem(text, column, from);
}

int CKvAppLogListCtrl::GetSelItems(CArray<int, int>& lines) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetSelItems(lines);
}

int CKvAppLogListCtrl::GetAllSelItems(CArray<int, int>& lines) const
{
    return GetSelItems(lines);
}

BOOL CKvAppLogListCtrl::IsItemSelected(int line) const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::IsItemSelected(line);
}

int CKvAppLogListCtrl::GetSelCount() const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetSelCount();
}

int CKvAppLogListCtrl::GetLastSelItem() const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetLastSelItem();
}

void CKvAppLogListCtrl::SetSelItem(int line)
{
    const Impl::Operation operation(*m_impl);
    CKvReportListCtrl::SetSelItem(line);
}

void CKvAppLogListCtrl::SetSelItem(const CArray<int, int>& lines)
{
    const Impl::Operation operation(*m_impl);
    CKvReportListCtrl::SetSelItem(lines);
}

int CKvAppLogListCtrl::GetTopIndex() const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetTopIndex();
}

int CKvAppLogListCtrl::GetVisibleCount() const
{
    const Impl::Operation operation(*m_impl);
    return CKvReportListCtrl::GetVisibleCount();
}
