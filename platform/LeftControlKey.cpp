#include "platform/LeftControlKey.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QSet>

namespace kv {
namespace {

bool IsRightControl(const QKeyEvent& event)
{
#if defined(Q_OS_WIN)
    constexpr quint32 extendedControlScanCode = 0x11D;
    return event.nativeScanCode() == extendedControlScanCode;
#elif defined(Q_OS_MACOS)
    constexpr quint32 rightControlKeyCode = 0x3E;
    return event.nativeVirtualKey() == rightControlKeyCode;
#else
    constexpr quint32 keysymControlR = 0xFFE4;
    return event.nativeVirtualKey() == keysymControlR;
#endif
}

// Sees every key event of the application. The same press is seen more than once (by the window and by the
// widget), so presses are kept by scan code and not counted.
class ControlKeyWatcher : public QObject
{
public:
    explicit ControlKeyWatcher(QCoreApplication* application) : QObject(application)
    {
        application->installEventFilter(this);
    }

    bool IsLeftDown() const { return !m_left.isEmpty() || (m_heldUnseen && m_right.isEmpty()); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            NoteKey(static_cast<QKeyEvent&>(*event));
            break;
        case QEvent::ShortcutOverride:
            if (static_cast<QKeyEvent&>(*event).key() == Qt::Key_Control)
                break;
            [[fallthrough]];
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::Wheel:
            NoteModifiers(static_cast<QInputEvent&>(*event));
            break;
        case QEvent::ApplicationStateChange:
            // The release will go to another program.
            m_left.clear();
            m_right.clear();
            m_heldUnseen = false;
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void NoteModifiers(const QInputEvent& event)
    {
        m_heldUnseen = event.modifiers().testFlag(Qt::ControlModifier);
    }

    // The Ctrl keys' own events tell of the modifiers before or after, by platform.
    void NoteKey(const QKeyEvent& event)
    {
        if (event.key() != Qt::Key_Control) {
            NoteModifiers(event);
            return;
        }
        m_heldUnseen = false;
        QSet<quint32>& keys = IsRightControl(event) ? m_right : m_left;
        if (event.type() == QEvent::KeyPress)
            keys.insert(event.nativeScanCode());
        else if (!event.isAutoRepeat())
            keys.remove(event.nativeScanCode());
    }

    QSet<quint32> m_left;
    QSet<quint32> m_right;
    bool m_heldUnseen = false; ///< the latest event came with Ctrl held
};

QPointer<ControlKeyWatcher> g_watcher;

} // namespace

void WatchControlKeys()
{
    if (!g_watcher && QCoreApplication::instance())
        g_watcher = new ControlKeyWatcher(QCoreApplication::instance());
}

bool IsLeftControlDown()
{
    return g_watcher && g_watcher->IsLeftDown();
}

} // namespace kv
