// Notices when a control loses the mouse in a drag.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kv {

/// Watches the application while a control drags. A popup or modal window takes the mouse away without a word
/// to the widget that had it, and an ancestor that is hidden tells its children too late: in the middle of
/// the toolkit's work on them, when the parent must not delete the control.
class CaptureWatcher : public QObject
{
public:
    /// @param lost called when the mouse is taken away; it may destroy the watcher.
    CaptureWatcher(const QWidget& control, std::function<void()> lost);
    ~CaptureWatcher() override;

    /// True while the toolkit works on the control or a window closes, perhaps in its destructor: the parent
    /// hears of the loss later, from the event loop.
    bool IsUnsafe() const { return m_isUnsafe; }
    void MarkUnsafe() { m_isUnsafe = true; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TakesTheMouse(const QObject& watched, const QEvent& event) const;

    const QWidget& m_control;
    std::function<void()> m_lost;
    bool m_isUnsafe = false;
};

} // namespace kv
