#include "platform/IdleUpdate.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

namespace kv {
namespace {

constexpr int kTick = 90; // milliseconds; a coarse timer may be 5 % late

QEvent::Type IdleEvent()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

IdleUpdate::IdleUpdate(Callback idle) : m_idle(std::move(idle))
{
    QCoreApplication::instance()->installEventFilter(this);
    m_tick.start(kTick, this);
    Post();
}

IdleUpdate::~IdleUpdate() = default;

void IdleUpdate::Post()
{
    if (std::exchange(m_isPosted, true)) {
        // A nested event loop sees what was posted before it began only when it is woken.
        QAbstractEventDispatcher::instance()->wakeUp();
        return;
    }
    // Behind everything that waits now.
    QCoreApplication::postEvent(this, new QEvent(IdleEvent()), Qt::LowEventPriority);
}

// Any event may change what can be done, the tick among them; not those that the update itself causes, or it
// would never come to rest.
bool IdleUpdate::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_isIdling && event->type() != IdleEvent()) {
        m_count = 0;
        Post();
    }
    return QObject::eventFilter(watched, event);
}

bool IdleUpdate::event(QEvent* event)
{
    if (event->type() != IdleEvent())
        return QObject::event(event);
    const QPointer<IdleUpdate> self(this);
    const Callback idle = m_idle; // it may destroy this object
    m_isPosted = false;
    m_isIdling = true;
    const bool wantsMore = idle(m_count++);
    if (!self)
        return true;
    m_isIdling = false;
    if (wantsMore)
        Post();
    return true;
}

} // namespace kv
