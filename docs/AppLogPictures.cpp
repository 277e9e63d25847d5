// Pictures of the log list: plain, searched, and with messages below the view.
#include "KvAppLogListCtrl.h"
#include "Pictures.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <string>
#include <string_view>

namespace {

constexpr int kMargin = 16;
constexpr QSize kSize(720, 292);

class LogScene
{
public:
    LogScene()
    {
        m_window.resize(kSize + QSize(2 * kMargin, 2 * kMargin));
        m_log.Create(QRect(QPoint(kMargin, kMargin), kSize), WS_CHILD | WS_VISIBLE | WS_TABSTOP, &m_window,
                     1);
        m_log.Initialize(1);
        m_log.AddTimeSeparateLine(At(0));
        Add(0, 0, L"titler 0.1.0 has started");
        Add(5, 0, L"Opened /home/kim/Northern lights.ktitle: 3 titles, 2 clips");
        Add(1, 1, L"The project is 1920 * 1080, 25p; the sound is 48 KHz, 16 bit, Stereo");
        Add(2, 2, L"The font \"Cantarell Extra Bold\" is not there: \"Cantarell\" stands in for it");
        Add(3, 4, L"Cannot write /media/card/frames/Northern lights_0012.png: no space left on device");
        m_log.AddEmptySeparateLine(1);
        Add(7, 1, L"Exporting frames 0 to 74 to /home/kim/frames");
        m_window.show();
    }

    QWidget& Window() { return m_window; }
    CKvAppLogListCtrl& Log() { return m_log; }
    void Add(int type, WORD level, std::wstring_view text)
    {
        SKvAppLogMsgData message{};
        message.type = type;
        message.level = level;
        message.time = At(m_number++);
        text.copy(message.text, text.size());
        m_log.AddAppLogMsg(message);
    }

private:
    static SYSTEMTIME At(int number)
    {
        return {2026, 3, 1, 2, 9, 5, static_cast<WORD>(7 + number), static_cast<WORD>(42 + 97 * number)};
    }

    QWidget m_window;
    CKvAppLogListCtrl m_log; // dies before the window
    int m_number = 0;
};

} // namespace

bool SaveAppLog(const Pictures& pictures)
{
    LogScene plain;
    LogScene searched;
    searched.Log().ShowFindBar(1);
    searched.Window().findChild<QLineEdit*>()->setText(QStringLiteral("frames"));
    LogScene below;
    below.Log().SetFollowMode(kKvAppLogFollowAtEnd);
    for (int i = 0; i < 8; ++i)
        below.Add(0, 1, L"Exported frame " + std::to_wstring(i));
    QKeyEvent home(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier);
    QApplication::sendEvent(&below.Log(), &home);
    for (int i = 8; i < 11; ++i)
        below.Add(0, 1, L"Exported frame " + std::to_wstring(i));
    QApplication::processEvents();
    return pictures.Save(plain.Window(), "app-log") && pictures.Save(searched.Window(), "app-log-find") &&
           pictures.Save(below.Window(), "app-log-new");
}
