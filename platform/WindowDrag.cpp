#include "platform/WindowDrag.h"

#include "KvPlatform.h"

#include "chrome/FrameEdges.h"
#include "platform/FrameState.h"

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <memory>

namespace kv {
namespace {

Qt::Edges ToolkitEdges(unsigned edges)
{
    Qt::Edges result;
    result.setFlag(Qt::LeftEdge, (edges & kLeftEdge) != 0);
    result.setFlag(Qt::TopEdge, (edges & kTopEdge) != 0);
    result.setFlag(Qt::RightEdge, (edges & kRightEdge) != 0);
    result.setFlag(Qt::BottomEdge, (edges & kBottomEdge) != 0);
    return result;
}

// Lives from the press to the release, or until the window manager takes over; dies with its window. While it
// lives it hears the application's events, so that nothing listens between drags.
class WindowDrag : public QObject
{
public:
    WindowDrag(QWidget& window, QPoint pressed) : QObject(&window), m_window(window), m_pressed(pressed)
    {
        delete s_current; // its release was never seen
        s_current = this;
        qApp->installEventFilter(this);
    }

protected:
    /// The pointer moved with the button down.
    virtual void Follow(const QMouseEvent& event) = 0;
    virtual void Cancel() = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;

    // The filter may be on the stack.
    void End()
    {
        qApp->removeEventFilter(this);
        deleteLater();
    }
    // The release goes to the window manager: without one the toolkit would send all that the pointer does
    // to the pressed widget.
    void EndWithRelease(const QMouseEvent& event)
    {
        End();
        QMouseEvent release(QEvent::MouseButtonRelease, event.scenePosition(), event.globalPosition(),
                            Qt::LeftButton, Qt::NoButton, event.modifiers());
        QCoreApplication::sendEvent(m_window.windowHandle(), &release);
    }

    QWidget& m_window;
    const QPoint m_pressed; // on the screen

private:
    bool OnMouse(const QMouseEvent& event);

    static QPointer<WindowDrag> s_current;
};

QPointer<WindowDrag> WindowDrag::s_current;

bool WindowDrag::OnMouse(const QMouseEvent& event)
{
    if (event.type() == QEvent::MouseMove && event.buttons().testFlag(Qt::LeftButton)) {
        Follow(event);
        return false;
    }
    if (event.button() != Qt::LeftButton || event.type() == QEvent::MouseButtonRelease)
        End();
    return false;
}

bool WindowDrag::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonPress:
        return watched->isWidgetType() && OnMouse(static_cast<const QMouseEvent&>(*event));
    case QEvent::ShortcutOverride:
        if (static_cast<const QKeyEvent&>(*event).key() != Qt::Key_Escape)
            return false;
        event->accept();
        return true;
    case QEvent::KeyPress:
        if (static_cast<const QKeyEvent&>(*event).key() != Qt::Key_Escape)
            return false;
        End();
        Cancel();
        return true;
    case QEvent::WindowBlocked:
    case QEvent::Hide:
    case QEvent::Close:
        if (watched == &m_window)
            End();
        return false;
    default:
        return false;
    }
}

class MoveDrag final : public WindowDrag
{
public:
    MoveDrag(QWidget& window, QPoint pressed)
        : WindowDrag(window, pressed)
        , m_origin(window.pos())
        , m_grip(pressed - window.pos())
    {
    }

private:
    void Follow(const QMouseEvent& event) override;
    void Cancel() override;
    bool Begin(QPoint screen);
    bool RestoreUnder(QPoint screen);
    bool TryHandOver(const QMouseEvent& event);

    const QPoint m_origin; // of the window
    QPoint m_grip;         // of the pointer in the window
    bool m_moving = false;
    bool m_wasMaximised = false;
};

void MoveDrag::Follow(const QMouseEvent& event)
{
    const QPoint screen = event.globalPosition().toPoint();
    if (!m_moving) {
        if ((screen - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        if (!Begin(screen)) {
            End();
            return;
        }
    }
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        m_window.move(screen - m_grip);
    if (TryHandOver(event))
        EndWithRelease(event);
}

bool MoveDrag::Begin(QPoint screen)
{
    m_moving = true;
    if (m_window.isFullScreen())
        return false;
    return !m_window.isMaximized() || RestoreUnder(screen);
}

bool MoveDrag::RestoreUnder(QPoint screen)
{
    const QPointer<WindowDrag> self(this);
    const QSize maximised = m_window.size();
    const QSize normal = m_window.normalGeometry().size();
    if (!RequestFrameState(m_window, kShowNormal) || !self)
        return false;
    m_wasMaximised = true;
    m_grip.setX(
        static_cast<int>(static_cast<qint64>(m_grip.x()) * normal.width() / qMax(1, maximised.width())));
    m_window.setGeometry(QRect(screen - m_grip, normal));
    return true;
}

bool MoveDrag::TryHandOver(const QMouseEvent&)
{
    QWindow* window = m_window.windowHandle();
    return window && window->startSystemMove();
}

void MoveDrag::Cancel()
{
    if (!m_moving)
        return;
    m_window.move(m_origin);
    if (m_wasMaximised)
        RequestFrameState(m_window, kShowMaximised);
}

class ResizeDrag final : public WindowDrag
{
public:
    ResizeDrag(QWidget& window, unsigned edges, QPoint pressed)
        : WindowDrag(window, pressed)
        , m_edges(edges)
        , m_before(window.geometry())
    {
    }

private:
    void Follow(const QMouseEvent& event) override
    {
        const QPoint travel = event.globalPosition().toPoint() - m_pressed;
        m_window.setGeometry(
            DragFrameEdges(m_before, m_edges, travel, m_window.minimumSize(), m_window.maximumSize()));
    }
    void Cancel() override { m_window.setGeometry(m_before); }

    const unsigned m_edges;
    const QRect m_before;
};

} // namespace

void StartWindowMove(QWidget& source, QPoint point)
{
    new MoveDrag(*source.window(), source.mapToGlobal(point)); // owned by the window until it ends
}

void StartFrameResize(QWidget& window, unsigned edges, QPoint screen)
{
    if (edges == kNoEdge)
        return;
    QWindow* handle = window.windowHandle();
    if (handle && handle->startSystemResize(ToolkitEdges(edges)))
        return;
    new ResizeDrag(window, edges, screen); // owned by the window until it ends
}

Qt::CursorShape FrameEdgeCursor(unsigned edges)
{
    switch (edges) {
    case kLeftEdge:
    case kRightEdge:
        return Qt::SizeHorCursor;
    case kTopEdge:
    case kBottomEdge:
        return Qt::SizeVerCursor;
    case kLeftEdge | kTopEdge:
    case kRightEdge | kBottomEdge:
        return Qt::SizeFDiagCursor;
    case kRightEdge | kTopEdge:
    case kLeftEdge | kBottomEdge:
        return Qt::SizeBDiagCursor;
    default:
        return Qt::ArrowCursor;
    }
}

} // namespace kv
