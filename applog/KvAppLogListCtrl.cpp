// The log list: its operations and queries.
#include "KvAppLogListCtrl.h"

#include "applog/AppLogFile.h"
#include "applog/KvAppLogListImpl.h"
#include "core/TextTables.h"

#include <algorithm>

namespace {

constexpr int kMostLines = 65535;             // of the largest maximum
constexpr int kWidths[] = {40, 20, 158, 100}; // the last one takes the rest

} // namespace

CKvAppLogListCtrl::CKvAppLogListCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    Impl::LoadTheme();
}

CKvAppLogListCtrl::CKvAppLogListCtrl(QWidget* parent) : CKvAppLogListCtrl()
{
    CreateWhenShown(parent);
}

CKvAppLogListCtrl::~CKvAppLogListCtrl() = default;

int CKvAppLogListCtrl::CreateSelf()
{
    const int result = CKvReportListCtrl::CreateSelf();
    Initialize(1);
    return result;
}

void CKvAppLogListCtrl::Initialize(int keepOption)
{
    const Impl::Operation operation(*m_impl);
    if (!keepOption)
        ShowGridLines(0);
    if (m_impl->isInitialized)
        return;
    m_impl->isInitialized = true;
    for (std::size_t i = 0; i < std::size(kAppLogHeaderTexts); ++i)
        _InsertGrowingColumn(kv::LoadText(kAppLogHeaderTexts[i]).c_str(), kWidths[i]);
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
    m_impl->Add({message.type, message.level, message.time, kv::AppLogText(message)});
    return 1;
}

int CKvAppLogListCtrl::AddAppLogMsg(const CArray<SKvAppLogMsgData, const SKvAppLogMsgData&>& messages)
{
    const Impl::Operation operation(*m_impl);
    const FrameHold hold(*this);
    int added = 0;
    for (const SKvAppLogMsgData& message : messages)
        added |= AddAppLogMsg(message);
    return added;
}

int CKvAppLogListCtrl::AddEmptySeparateLine(int count)
{
    const Impl::Operation operation(*m_impl);
    const int added = std::min(count, kMostLines - GetItemCount());
    if (added > 0) {
        m_impl->KeepEnd([&] {
            InsertRows(-1, std::vector<CStringArray>(static_cast<std::size_t>(added)),
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
        m_impl->KeepEnd([&] { m_impl->AddDateLine(time); });
    m_impl->dates.separator = time;
    return 1;
}

unsigned short CKvAppLogListCtrl::SetMaxLogLineCounts(unsigned short count, int apply)
{
    const Impl::Operation operation(*m_impl);
    // What was posted up to now comes in under the old maximum.
    m_impl->Plan(m_impl->posted.SetMaximum(count));
    if (m_impl->quiet == 1)
        m_impl->AddPlanned(Impl::Portion::kAll);
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

void CKvAppLogListCtrl::SetMaximumLines(int count)
{
    SetMaxLogLineCounts(static_cast<unsigned short>(std::clamp(count, 0, kMostLines)), 1);
}

DWORD CKvAppLogListCtrl::GetTypeFilter() const
{
    return m_impl->typeMask;
}

int CKvAppLogListCtrl::GetTypeCount(int type) const
{
    const Impl::Operation operation(*m_impl);
    if (!m_impl->isCounted)
        m_impl->CountLines();
    return kv::IsAppLogType(type) ? m_impl->typeCounts[static_cast<std::size_t>(type)] : 0;
}

int CKvAppLogListCtrl::LoadAppLogFmFile(const wchar_t* path, int replace)
{
    const Impl::Operation operation(*m_impl);
    CKvAppLogFile file;
    if (!file.OpenLog(path))
        return 0;
    const FrameHold hold(*this);
    if (replace)
        m_impl->Clear();
    SKvAppLogMsgData message{};
    while (file.ReadLogData(message))
        AddAppLogMsg(message);
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
        m_impl->missed.clear();
    m_impl->AskOverlay();
}

int CKvAppLogListCtrl::GetFollowMode() const
{
    return m_impl->followMode;
}

void CKvAppLogListCtrl::SetTypeFilter(DWORD mask)
{
    const Impl::Operation operation(*m_impl);
    m_impl->typeMask = mask & kv::kAppLogAllTypes;
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
    const Impl::Operation operation(*m_impl);
    if (!kv::IsAppLogType(message.type))
        return 0;
    return m_impl->AddLine({message.type, message.level, message.time, kv::AppLogText(message)});
}

int CKvAppLogListCtrl::_CheckMaxLogLineCounts()
{
    const Impl::Operation operation(*m_impl);
    if (!m_impl->IsFull(0))
        return 0;
    m_impl->DropOld(kv::AppLogLinesToKeep(m_impl->maximum));
    return 1;
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

void CKvAppLogListCtrl::_BeforeQuery() const
{
    const Impl::Operation operation(*m_impl);
}
