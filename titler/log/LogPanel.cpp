#include "log/LogPanel.h"

#include "KvAppLogListCtrl.h"
#include "window/Texts.h"

#include <QDateTime>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string>

namespace titler {
namespace {

constexpr DWORD kListId = 1001;
constexpr unsigned short kMostLines = 10000;

std::mutex g_mutex; ///< guards g_list
CKvAppLogListCtrl* g_list = nullptr;
QtMessageHandler g_terminal = nullptr; ///< what the toolkit itself does with a message

SYSTEMTIME Now()
{
    const QDateTime now = QDateTime::currentDateTime();
    const auto number = [](int value) { return static_cast<std::uint16_t>(value); };
    SYSTEMTIME time{};
    time.wYear = number(now.date().year());
    time.wMonth = number(now.date().month());
    time.wDayOfWeek = number(now.date().dayOfWeek() % 7);
    time.wDay = number(now.date().day());
    time.wHour = number(now.time().hour());
    time.wMinute = number(now.time().minute());
    time.wSecond = number(now.time().second());
    time.wMilliseconds = number(now.time().msec());
    return time;
}

// A message holds so much; a longer text becomes several.
template <typename Take>
void Split(LogType type, const QString& text, Take take)
{
    const std::wstring whole = text.toStdWString();
    std::size_t from = 0;
    do {
        SKvAppLogMsgData message{};
        message.type = static_cast<std::int32_t>(type);
        message.time = Now();
        const std::size_t length = std::min(whole.size() - from, std::size(message.text) - 1);
        whole.copy(message.text, length, from);
        from += length;
        take(message);
    } while (from < whole.size());
}

void HearToolkit(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (g_terminal != nullptr)
        g_terminal(type, context, text);
    const LogType kind = type == QtCriticalMsg || type == QtFatalMsg ? LogType::Error : LogType::Warning;
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    const std::lock_guard lock(g_mutex);
    if (g_list != nullptr)
        Split(kind, text, [](const SKvAppLogMsgData& message) { g_list->PostAppLogMsg(message); });
}

} // namespace

LogPanel::LogPanel() : m_list(new CKvAppLogListCtrl)
{
    m_list->Create(CRect(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kListId);
    m_list->Initialize(1);
    m_list->SetMaxLogLineCounts(kMostLines, 0);
    m_list->SetFollowMode(1);
    m_list->setObjectName(QStringLiteral("log"));
    m_list->setAccessibleName(Text(kTextTabLog));
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_list);
    setFocusProxy(m_list);
}

LogPanel::~LogPanel()
{
    const std::lock_guard lock(g_mutex);
    if (g_list == m_list)
        g_list = nullptr;
}

void LogPanel::Add(LogType type, const QString& text)
{
    Split(type, text, [this](const SKvAppLogMsgData& message) { m_list->AddAppLogMsg(message); });
}

void LogPanel::TakeToolkitWarnings()
{
    const std::lock_guard lock(g_mutex);
    g_list = m_list;
    if (g_terminal == nullptr)
        g_terminal = qInstallMessageHandler(HearToolkit);
}

} // namespace titler
