#include "platform/WindowDrag.h"

#include "KvPlatform.h"
#include "platform/FrameEdges.h"
#include "platform/FrameState.h"

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

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

// The release of a drag that the window manager makes goes there, and not every platform tells the toolkit:
// the pressed widget gets one at any rate. Later, since the press may still be on its way.
void PostRelease(QWindow& window, QPointF screen)
{
    QCoreApplication::postEvent(&window,
                                new QMouseEvent(QEvent::MouseButtonRelease, window.mapFromGlobal(screen),
                                                screen, Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
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
        // The press that began it may still be on its way through the parents.
        QMetaObject::invokeMethod(
            this, [this] { m_pressIsOver = true; }, Qt::QueuedConnection);
    }

protected:
    /// The pointer moved with the button down. The window may be gone afterwards.
    virtual void Follow(const QMouseEvent& event) = 0;
    /// Undoes it.
    virtual void Cancel() = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;

    // The filter may be on the stack.
    void End()
    {
        qApp->removeEventFilter(this);
        deleteLater();
    }

    QWidget& m_window;
    const QPoint m_pressed; // on the screen

private:
    void OnMouse(const QMouseEvent& event);

    bool m_pressIsOver = false;
    static QPointer<WindowDrag> s_current;
};

QPointer<WindowDrag> WindowDrag::s_current;

void WindowDrag::OnMouse(const QMouseEvent& event)
{
    if (event.type() == QEvent::MouseButtonPress) {
        if (m_pressIsOver || event.button() != Qt::LeftButton)
            End();
        return;
    }
    const bool goesOn = event.type() == QEvent::MouseMove && event.buttons().testFlag(Qt::LeftButton) &&
                        !QApplication::activePopupWidget();
    if (goesOn)
        Follow(event);
    else
        End();
}

bool WindowDrag::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonPress:
        if (watched->isWindowType() || watched->isWidgetType()) // a press on a border reaches no widget
            OnMouse(static_cast<const QMouseEvent&>(*event));
        return false;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<const QKeyEvent&>(*event).key() != Qt::Key_Escape)
            return false;
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            End();
            Cancel();
        }
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
    bool RestoreUnder(QPoint screen);
    void HandOver(const QMouseEvent& event);

    const QPoint m_origin; // of the window
    QPoint m_grip;         // of the pointer in the window
    QRect m_normal;        // of a maximised window that the drag restored
    bool m_moving = false;
};

void MoveDrag::Follow(const QMouseEvent& event)
{
    const QPoint screen = event.globalPosition().toPoint();
    const QPointer<WindowDrag> self(this);
    if (!m_moving) {
        if ((screen - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        m_moving = true;
        const bool moves = !m_window.isFullScreen() && (!m_window.isMaximized() || RestoreUnder(screen));
        if (!self)
            return;
        if (!moves) {
            End();
            return;
        }
    }
    m_window.move(screen - m_grip); // without effect on Wayland
    if (self)
        HandOver(event);
}

bool MoveDrag::RestoreUnder(QPoint screen)
{
    const QPointer<WindowDrag> self(this);
    const int maximised = qMax(1, m_window.width());
    const QRect normal = m_window.normalGeometry();
    if (!RequestFrameState(m_window, kShowNormal) || !self)
        return false;
    m_normal = normal;
    m_grip.setX(static_cast<int>(qint64{m_grip.x()} * normal.width() / maximised));
    m_window.setGeometry(QRect(screen - m_grip, normal.size()));
    return true;
}

// On X11 the toolkit tells the window manager where the pointer was in the window at its latest event; the
// window would lag by what it was moved since. So it is moved by hand until the two agree.
void MoveDrag::HandOver(const QMouseEvent& event)
{
    constexpr int unseenLag = 2;
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        const QPoint seenAt = (event.globalPosition() - event.scenePosition()).toPoint();
        if ((m_window.geometry().topLeft() - seenAt).manhattanLength() > unseenLag)
            return;
    }
    QWindow* handle = m_window.windowHandle();
    if (!handle || !handle->startSystemMove())
        return;
    End();
    PostRelease(*handle, event.globalPosition());
}

void MoveDrag::Cancel()
{
    if (!m_moving)
        return;
    if (m_normal.isNull()) {
        m_window.move(m_origin);
        return;
    }
    m_window.setGeometry(m_normal);
    ShowFrame(m_window, kShowMaximised);
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
        PostRelease(*handle, screen);
    else
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
