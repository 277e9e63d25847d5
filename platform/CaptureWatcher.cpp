#include "platform/CaptureWatcher.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace kv {

CaptureWatcher::CaptureWatcher(QWidget& control, std::function<void()> lost)
    : m_control(control)
    , m_lost(std::move(lost))
{
    QCoreApplication::instance()->installEventFilter(this);
}

CaptureWatcher::~CaptureWatcher() = default;

void CaptureWatcher::TellLoss()
{
    if (!m_isLost || !m_lost)
        return;
    const std::function<void()> lost = std::exchange(m_lost, {});
    lost();
}

bool CaptureWatcher::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_isLost && TakesTheMouse(*watched, *event)) {
        m_isLost = true;
        const auto tell = [self = QPointer<CaptureWatcher>(this)] {
            if (self)
                self->TellLoss();
        };
        QMetaObject::invokeMethod(&m_control, tell, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

bool CaptureWatcher::TakesTheMouse(const QObject& watched, const QEvent& event) const
{
    if (event.type() == QEvent::Show && watched.isWidgetType()) {
        const auto& widget = static_cast<const QWidget&>(watched);
        return widget.isWindow() && (widget.windowType() == Qt::Popup || widget.isModal());
    }
    if (&watched != &m_control)
        return false;
    switch (event.type()) {
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::Hide:
        return true;
    case QEvent::EnabledChange:
        return !m_control.isEnabled();
    default:
        return false;
    }
}

} // namespace kv
