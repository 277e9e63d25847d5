#include "platform/LanguageChange.h"

#include <QCoreApplication>
#include <QEvent>

namespace kv {
namespace {

/// Lives until what was posted has arrived.
class OwnChange : public QObject
{
public:
    explicit OwnChange(QCoreApplication& application) : QObject(&application)
    {
        QEvent event(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&application, &event);
        application.installEventFilter(this);
        s_latest = this;
        // From the same queue; what is deleted later would wait for a nested event loop.
        QMetaObject::invokeMethod(
            &application, [this] { delete this; }, Qt::QueuedConnection);
    }
    ~OwnChange() override
    {
        if (s_latest == this)
            s_latest = nullptr;
    }

    static bool IsOnItsWay() { return s_latest; }

protected:
    // A host's translator: the toolkit posts one event for the two.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange && watched == parent())
            s_latest = nullptr;
        return false;
    }

private:
    inline static OwnChange* s_latest = nullptr;
};

} // namespace

void SendLanguageChange()
{
    if (QCoreApplication* application = QCoreApplication::instance())
        new OwnChange(*application); // the application's
}

bool IsLanguageChangeOwn()
{
    return OwnChange::IsOnItsWay();
}

} // namespace kv
