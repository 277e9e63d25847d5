#include "platform/CaptureWatcher.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace kv {

CaptureWatcher::CaptureWatcher(const QWidget& control, std::function<void()> lost)
    : m_control(control)
    , m_lost(std::move(lost))
{
    QCoreApplication::instance()->installEventFilter(this);
}

CaptureWatcher::~CaptureWatcher() = default;

bool CaptureWatcher::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close)
        m_isUnsafe = true;
    if (!TakesTheMouse(*watched, *event))
        return QObject::eventFilter(watched, event);
    const std::function<void()> lost = m_lost;
    lost();
    return false;
}

bool CaptureWatcher::TakesTheMouse(const QObject& watched, const QEvent& event) const
{
    if (!watched.isWidgetType())
        return false;
    const auto& widget = static_cast<const QWidget&>(watched);
    if (event.type() == QEvent::Show)
        return widget.isWindow() && (widget.windowType() == Qt::Popup || widget.isModal());
    return event.type() == QEvent::Hide && widget.isAncestorOf(&m_control);
}

} // namespace kv
