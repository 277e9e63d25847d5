// Notices when a control loses the mouse in a drag.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kv {

/// Watches the application while a control drags. The mouse is lost when a popup or modal window opens, and
/// when the control is hidden or disabled or its window is deactivated or blocked. The toolkit is in the
/// middle of its work on the control, its parents or its siblings then, all of which the parent may delete
/// when it hears of the end: so the loss is told later, from the event loop, or by `TellLoss`.
class CaptureWatcher : public QObject
{
public:
    /// @param lost called once; it may destroy the watcher. A watcher that is destroyed before says nothing.
    CaptureWatcher(QWidget& control, std::function<void()> lost);
    ~CaptureWatcher() override;

    bool IsLost() const { return m_isLost; }
    /// Tells of a loss that was not told yet: the control gets another input. The control may be gone then.
    void TellLoss();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TakesTheMouse(const QObject& watched, const QEvent& event) const;

    QWidget& m_control;
    std::function<void()> m_lost;
    bool m_isLost = false;
};

} // namespace kv
