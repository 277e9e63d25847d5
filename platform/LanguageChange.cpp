#include "platform/LanguageChange.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

namespace kv {
namespace {

/// The application's: tells its own change of the language from a host's.
class OwnChange : public QObject
{
public:
    explicit OwnChange(QCoreApplication& application) : QObject(&application)
    {
        application.installEventFilter(this);
    }

    void Send()
    {
        QEvent change(QEvent::LanguageChange);
        const QEvent* const outer = std::exchange(m_sent, &change);
        m_isOnItsWay = true; // before the host hears of it, which may bring its translator then
        QCoreApplication::sendEvent(parent(), &change);
        m_sent = outer;
        // Behind what was posted to the windows.
        QCoreApplication::removePostedEvents(this, kArrived);
        QCoreApplication::postEvent(this, new QEvent(kArrived));
    }
    bool IsOnItsWay() const { return m_isOnItsWay; }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != kArrived)
            return QObject::event(event);
        m_isOnItsWay = false;
        return true;
    }

    // A host's translator: the toolkit posts one event for the two.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange && watched == parent() && event != m_sent)
            m_isOnItsWay = false;
        return false;
    }

private:
    static constexpr QEvent::Type kArrived = QEvent::User;

    const QEvent* m_sent = nullptr;
    bool m_isOnItsWay = false;
};

QPointer<OwnChange> s_change;

} // namespace

void SendLanguageChange()
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (!application)
        return;
    if (!s_change)
        s_change = new OwnChange(*application); // the application's
    s_change->Send();
}

bool IsLanguageChangeOwn()
{
    return s_change && s_change->IsOnItsWay();
}

} // namespace kv
