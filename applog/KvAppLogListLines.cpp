// The log list's lines: adding, trimming, colours, and what is posted from other threads.
#include "applog/KvAppLogListImpl.h"
#include "core/TextTables.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kPostedTimer = 2;
constexpr int kFrame = 15; // milliseconds

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
    list._PrivateEnableUpdate(0);
    for (int line = list.GetItemCount() - 1; line >= 0; --line)
        ColourLine(line, TypeAt(line));
    list.UpdateCells();
    list._PrivateEnableUpdate(1);
}

int CKvAppLogListCtrl::Impl::TypeAt(int line) const
{
    return kv::AppLogTypeOf(list.GetItemText(line, kv::kAppLogType));
}

int CKvAppLogListCtrl::Impl::AddLine(int type, WORD level, const SYSTEMTIME& time, std::wstring_view text)
{
    const wchar_t typeText[] = {static_cast<wchar_t>(L'0' + type), L'\0'};
    const int line = list.InsertRow(
        -1, {typeText, kv::AppLogLevelText(level), kv::AppLogTimeText(time), text}, kv::kAppLogMessageHeight);
    ColourLine(line, type);
    ++typeCounts[static_cast<std::size_t>(type)];
    if (!needle.IsEmpty() && list.IsRowShown(line) && needle.IsIn(text)) {
        ++matchCount;
        AskOverlay();
    }
    return line;
}

void CKvAppLogListCtrl::Impl::AddDateLine(const SYSTEMTIME& time)
{
    list.InsertRow(-1, {kv::kAppLogDateMark, {}, {}, kv::AppLogDateText(time)}, kv::kAppLogDateHeight);
}

void CKvAppLogListCtrl::Impl::Add(int type, WORD level, const SYSTEMTIME& time, std::wstring_view text)
{
    const bool follows = followMode == kKvAppLogFollowAlways || list.IsEndInView();
    if (dates.IsNewDay(time))
        AddDateLine(time);
    const int line = AddLine(type, level, time, text);
    const bool isMissed = !follows && list.IsRowShown(line);
    Trim();
    dates.message = time;
    if (follows) {
        SelectLast();
    } else if (isMissed) {
        ++missed;
        AskOverlay();
    }
}

void CKvAppLogListCtrl::Impl::AddSeparators(const std::function<void()>& add)
{
    const bool wasAtEnd = list.IsEndInView() != 0;
    list._PrivateEnableUpdate(0);
    add();
    if (wasAtEnd && followMode == kKvAppLogFollowAtEnd)
        list.EnsureVisible(list.NextShownRow(list.GetItemCount(), -1));
    list._PrivateEnableUpdate(1);
}

void CKvAppLogListCtrl::Impl::SelectLast()
{
    const int last = list.GetItemCount() - 1;
    list.SetSelItem(last);
    list.EnsureVisible(last);
}

int CKvAppLogListCtrl::Impl::Trim()
{
    const int gone = kv::AppLogLinesToTrim(list.GetItemCount(), maximum);
    int matches = 0;
    for (int line = 0; line < gone; ++line) {
        const int type = TypeAt(line);
        if (type < 0)
            continue;
        --typeCounts[static_cast<std::size_t>(type)];
        matches += IsMatch(line) ? 1 : 0;
    }
    list.RemoveRows(0, gone);
    matchCount -= matches;
    matchPlace = std::max(0, matchPlace - matches);
    if (matches > 0)
        AskOverlay();
    return gone;
}

void CKvAppLogListCtrl::Impl::Clear()
{
    list.RemoveAllRows();
    typeCounts.fill(0);
    dates = {};
    missed = 0;
    matchCount = 0;
    matchPlace = 0;
    AskOverlay();
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

void CKvAppLogListCtrl::OnTimer(UINT id)
{
    if (id != kPostedTimer) {
        CKvReportListCtrl::OnTimer(id);
        return;
    }
    KillTimer(kPostedTimer);
    const Impl::Operation operation(*m_impl);
}

void CKvAppLogListCtrl::Impl::TakePosted()
{
    const std::vector<kv::AppLogMessage> messages = posted.TakeAll();
    if (messages.empty())
        return;
    list._PrivateEnableUpdate(0);
    for (const kv::AppLogMessage& message : messages)
        Add(message.type, message.level, message.time, message.text);
    list._PrivateEnableUpdate(1);
}
