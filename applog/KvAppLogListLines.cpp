// The log list's lines: adding, trimming, colours, and what is posted from other threads.
#include "applog/KvAppLogListImpl.h"
#include "core/CodePoints.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <utility>

namespace {

constexpr UINT kPostedTimer = 2;
// Milliseconds.
constexpr int kFrame = 15;
constexpr int kSlice = 8;

/// The colours by type: of 0 (and 4 … 9), 1, 2 and 3.
struct ColourStorage
{
    DWORD back[4] = {0xFF1F1F22u, 0xFF1C3046u, 0xFF42341Au, 0xFF4A2020u};
    DWORD text[4] = {0xFFE2E2E4u, 0xFFA9D4FFu, 0xFFFFD88Au, 0xFFFFB8B0u};
    bool isHosts = false; ///< a host has set them: the theme does not count any more
};

// One for all lists, as hosts expect.
ColourStorage g_colours;

constexpr const wchar_t* kBackKeys[] = {L"keApplogMessageBKColor", L"keApplogImportantMsgBKColor",
                                        L"keApplogWarningBKColor", L"keApplogErrorBKColor"};
constexpr const wchar_t* kTextKeys[] = {L"keApplogMessageTextColor", L"keApplogImportantMsgTextColor",
                                        L"keApplogWarningTextColor", L"keApplogErrorTextColor"};

// The messages that hold a text of any length, one at least.
template <typename Visit>
void VisitMessages(int type, WORD level, std::wstring_view text, Visit visit)
{
    SKvAppLogMsgData message{};
    message.type = type;
    message.level = level;
    message.time = CKvAppLogListCtrl::GetLocalTime();
    do {
        const std::size_t length = kv::CutLength(text, kv::kAppLogMostText);
        kv::SetAppLogText(message, text.substr(0, length));
        text.remove_prefix(length);
        visit(message);
    } while (!text.empty());
}

} // namespace

DWORD* const CKvAppLogListCtrl::m_pcBackColor[10] = {
    &g_colours.back[0], &g_colours.back[1], &g_colours.back[2], &g_colours.back[3], &g_colours.back[0],
    &g_colours.back[0], &g_colours.back[0], &g_colours.back[0], &g_colours.back[0], &g_colours.back[0]};
DWORD* const CKvAppLogListCtrl::m_pcTextColor[10] = {
    &g_colours.text[0], &g_colours.text[1], &g_colours.text[2], &g_colours.text[3], &g_colours.text[0],
    &g_colours.text[0], &g_colours.text[0], &g_colours.text[0], &g_colours.text[0], &g_colours.text[0]};

void CKvAppLogListCtrl::Impl::LoadTheme()
{
    if (g_colours.isHosts)
        return;
    for (std::size_t i = 0; i < std::size(kBackKeys); ++i) {
        KvGuiRes::LoadColor(kBackKeys[i], g_colours.back[i]);
        KvGuiRes::LoadColor(kTextKeys[i], g_colours.text[i]);
    }
}

void CKvAppLogListCtrl::SetColor(const DWORD* back, const DWORD* text)
{
    const Impl::Operation operation(*m_impl);
    g_colours.isHosts = true;
    for (int type = 0; type < kv::kAppLogTypes; ++type) {
        if (back)
            *m_pcBackColor[type] = back[type];
        if (text)
            *m_pcTextColor[type] = text[type];
    }
    m_impl->ColourLines();
}

void CKvAppLogListCtrl::GetColor(DWORD* back, DWORD* text) const
{
    for (int type = 0; type < kv::kAppLogTypes; ++type) {
        if (back)
            back[type] = *m_pcBackColor[type];
        if (text)
            text[type] = *m_pcTextColor[type];
    }
}

void CKvAppLogListCtrl::Impl::ColourLine(int line, int type)
{
    if (type > 0)
        list.SetCellColors(line, kv::kAppLogContent, m_pcBackColor[type], m_pcTextColor[type]);
}

void CKvAppLogListCtrl::Impl::ColourLines()
{
    const Operation operation(*this);
    const FrameHold hold(list);
    for (int line = list.GetItemCount() - 1; line >= 0; --line)
        ColourLine(line, TypeAt(line));
    list.UpdateCells();
}

int CKvAppLogListCtrl::Impl::TypeAt(int line) const
{
    return kv::AppLogTypeOf(list.ViewItemText(line, kv::kAppLogType));
}

int CKvAppLogListCtrl::Impl::AddLine(const Message& message)
{
    const wchar_t typeText[] = {static_cast<wchar_t>(L'0' + message.type), L'\0'};
    isOwnChange = true;
    const int line = list.InsertRow(
        -1, {typeText, kv::AppLogLevelText(message.level), kv::AppLogTimeText(message.time), message.text});
    isOwnChange = false;
    ColourLine(line, message.type);
    if (!isCounted)
        return line;
    ++typeCounts[static_cast<std::size_t>(message.type)];
    if (IsMatch(line)) {
        ++matchCount;
        AskOverlay();
    }
    return line;
}

void CKvAppLogListCtrl::Impl::AddDateLine(const SYSTEMTIME& time)
{
    isOwnChange = true;
    list.InsertRow(-1, {kv::kAppLogDateMark, {}, {}, kv::AppLogDateText(time)}, kv::kAppLogDateHeight);
    isOwnChange = false;
}

void CKvAppLogListCtrl::Impl::Add(const Message& message)
{
    const bool isNewDay = kv::IsNewAppLogDay(dates.message, message.time);
    Add(message, isNewDay, IsFull(isNewDay ? 2 : 1) ? kv::AppLogLinesToKeep(maximum) : 0);
}

void CKvAppLogListCtrl::Impl::Add(const Message& message, bool isNewDay, int keeps)
{
    const FrameHold hold(list);
    const bool follows = followMode == kKvAppLogFollowAlways || IsAtEnd();
    if (isNewDay)
        AddDateLine(message.time);
    const int line = AddLine(message);
    if (!follows) {
        missed.push_back(list.GetRowId(line));
        missedShown += list.IsRowShown(line);
    }
    if (keeps > 0)
        DropOld(keeps);
    dates.message = message.time;
    if (!follows) {
        AskOverlay();
        return;
    }
    SelectLast();
    if (followMode == kKvAppLogFollowAtEnd) // also where a date is shown and its message is not
        list.EnsureVisible(list.NextShownRow(list.GetItemCount(), -1));
}

void CKvAppLogListCtrl::Impl::SelectLast()
{
    const int last = list.GetItemCount() - 1;
    list.SetSelItem(last);
    list.EnsureVisible(last);
}

/// With that many lines more.
bool CKvAppLogListCtrl::Impl::IsFull(int more) const
{
    return kv::AppLogLinesToTrim(list.GetItemCount() + more, maximum) > 0;
}

void CKvAppLogListCtrl::Impl::DropOld(int keeps)
{
    list.RemoveRows(0, list.GetItemCount() - keeps);
    LinesChanged();
}

void CKvAppLogListCtrl::Impl::Clear()
{
    list.RemoveAllRows();
    dates = {};
    LinesChanged();
}

int CKvAppLogListCtrl::ClearLog()
{
    const Impl::Operation operation(*m_impl);
    m_impl->Clear();
    AddTimeSeparateLine(GetLocalTime());
    return 1;
}

void CKvAppLogListCtrl::Impl::LinesChanged()
{
    isCounted = false;
    isMissedCounted = false;
    while (!missed.empty() && list.FindRow(missed.front()) < 0) // the oldest go first
        missed.pop_front();
    AskOverlay();
}

void CKvAppLogListCtrl::Impl::CountLines()
{
    const Quiet still(*this);
    typeCounts.fill(0);
    matchCount = 0;
    matchPlace = 0;
    const int place = searchId > 0 ? list.FindRow(searchId) : -1;
    for (int line = 0; line < list.GetItemCount(); ++line) {
        const int type = TypeAt(line);
        if (type >= 0)
            ++typeCounts[static_cast<std::size_t>(type)];
        if (!IsMatch(line))
            continue;
        ++matchCount;
        if (line == place)
            matchPlace = matchCount;
    }
    isCounted = true;
}

void CKvAppLogListCtrl::_OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column)
{
    CKvReportListCtrl::_OnNotifyItemModify(kind, rows, column);
    if (!m_impl->isOwnChange)
        m_impl->LinesChanged();
}

int CKvAppLogListCtrl::PostAppLogMsg(const SKvAppLogMsgData& message)
{
    if (!kv::IsAppLogType(message.type))
        return 0;
    if (!m_impl->posted.Push(
            {message.type, message.level, message.time, std::wstring(kv::AppLogText(message))}))
        return 1;
    // Not at once: messages without end would leave no time for painting.
    QMetaObject::invokeMethod(
        this, [this] { SetTimer(kPostedTimer, kFrame); }, Qt::QueuedConnection);
    return 1;
}

int CKvAppLogListCtrl::AddAppLogText(int type, unsigned short level, const CString& text)
{
    const Impl::Operation operation(*m_impl);
    const FrameHold hold(*this);
    int added = 0;
    VisitMessages(type, level, text, [&](const SKvAppLogMsgData& message) { added = AddAppLogMsg(message); });
    return added;
}

int CKvAppLogListCtrl::PostAppLogText(int type, unsigned short level, const CString& text)
{
    int posted = 0;
    VisitMessages(type, level, text,
                  [&](const SKvAppLogMsgData& message) { posted = PostAppLogMsg(message); });
    return posted;
}

SYSTEMTIME CKvAppLogListCtrl::GetLocalTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    const auto word = [](int value) { return static_cast<WORD>(value); };
    return {word(date.year()), word(date.month()),  word(date.dayOfWeek() % 7), word(date.day()),
            word(time.hour()), word(time.minute()), word(time.second()),        word(time.msec())};
}

void CKvAppLogListCtrl::OnTimer(UINT id)
{
    if (id != kPostedTimer) {
        CKvReportListCtrl::OnTimer(id);
        return;
    }
    if (m_impl->quiet > 0)
        return; // comes again
    KillTimer(kPostedTimer);
    m_impl->TakeIn(Impl::Portion::kSlice);
}

void CKvAppLogListCtrl::Impl::TakeIn(Portion portion)
{
    if (posted.IsEmpty() && intake.IsEmpty())
        return;
    Plan(posted.TakeAll());
    AddPlanned(portion);
}

// Away from the end each message counts: a log that falls back may bring its end into view, and is followed
// from then on.
void CKvAppLogListCtrl::Impl::Plan(kv::AppLogBatch batch)
{
    using Leave = kv::AppLogIntake::Leave;
    const Quiet still(*this);
    const bool follows = followMode == kKvAppLogFollowAlways || IsAtEnd();
    intake.Plan(std::move(batch), list.GetItemCount(), dates.message,
                follows ? Leave::kWhatCounts : Leave::kAll);
}

void CKvAppLogListCtrl::Impl::AddPlanned(Portion portion)
{
    const Quiet still(*this);
    const FrameHold hold(list);
    QElapsedTimer timer;
    timer.start();
    while (!intake.IsEmpty() && (portion == Portion::kAll || timer.elapsed() < kSlice)) {
        const kv::AppLogIntake::Entry entry = intake.Take();
        const kv::AppLogMessage& message = entry.message;
        Add({message.type, message.level, message.time, message.text}, entry.isNewDay, entry.keeps);
    }
    if (!intake.IsEmpty())
        list.SetTimer(kPostedTimer, kFrame);
}
