// Work for the moments in which nothing happens.
#pragma once

#include <QBasicTimer>
#include <QObject>

#include <functional>

namespace kv {

/// Calls back after every burst of events of the application and at least every 100 ms. Costs nothing
/// between.
class IdleUpdate : public QObject
{
public:
    /// @param count of the calls since something happened. @return true asks for another call when the events
    /// that wait by then are through. The callback may destroy this object.
    using Callback = std::function<bool(int count)>;

    explicit IdleUpdate(Callback idle);
    ~IdleUpdate() override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Post();

    Callback m_idle;
    QBasicTimer m_tick;
    int m_count = 0;
    bool m_isPosted = false;
    bool m_isIdling = false;
};

} // namespace kv
