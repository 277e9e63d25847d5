#include "KvMenu.h"
#include "KvWnd.h"
#include "platform/FrameEdges.h"
#include "platform/FrameState.h"
#include "platform/MessageDispatch.h"
#include "platform/SkinColours.h"
#include "platform/WindowDrag.h"

#include <QApplication>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QShortcut>
#include <QWindow>
#include <QtMath>

#include <utility>

namespace {

// The pixel that holds the point: rounding would reach beyond the right and bottom edge.
QPoint PixelOf(QPointF point)
{
    return {qFloor(point.x()), qFloor(point.y())};
}

constexpr QSize kSmallestFrame{240, 100};

} // namespace

struct CKvFrameWnd::Impl
{
    QSize minimum;           // the one set last by the frame itself
    bool overBorder = false; // the pointer has a resize shape

    unsigned EdgesAt(const CKvFrameWnd& frame, QPoint point) const;
    bool OnWindowEvent(CKvFrameWnd& frame, QWindow& window, QEvent& event);
    bool OnMouse(CKvFrameWnd& frame, QWindow& window, const QMouseEvent& event);
    void ShowPointer(CKvFrameWnd& frame, QWindow& window, unsigned edges, const QMouseEvent& event);
    void UpdateMargins(CKvFrameWnd& frame) const;
    void UpdateMinimum(CKvFrameWnd& frame);
};

// A caption decides for its own area: its buttons and items reach into the border.
unsigned CKvFrameWnd::Impl::EdgesAt(const CKvFrameWnd& frame, QPoint point) const
{
    if (!kv::HasResizeBorder(frame))
        return kv::kNoEdge;
    const unsigned edges = kv::FrameEdgesAt(point, frame.rect());
    if (edges == kv::kNoEdge)
        return edges;
    for (const QWidget* child = frame.childAt(point); child; child = child->parentWidget()) {
        if (const auto* caption = dynamic_cast<const IKvFrameCaption*>(child))
            return caption->TakesBorderAt(child->mapFrom(&frame, point)) ? kv::kNoEdge : edges;
    }
    return edges;
}

// The toolkit's windows see the mouse before the widgets in them do: the frame's own, and those of children
// that have one.
bool CKvFrameWnd::Impl::OnWindowEvent(CKvFrameWnd& frame, QWindow& window, QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return OnMouse(frame, window, static_cast<const QMouseEvent&>(event));
    case QEvent::Leave:
        if (std::exchange(overBorder, false))
            window.setCursor(frame.cursor());
        return false;
    case QEvent::ChildAdded:
        if (QObject* child = static_cast<const QChildEvent&>(event).child(); child->isWindowType())
            child->installEventFilter(&frame);
        return false;
    default:
        return false;
    }
}

bool CKvFrameWnd::Impl::OnMouse(CKvFrameWnd& frame, QWindow& window, const QMouseEvent& event)
{
    const bool hovers = event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton;
    const bool presses = event.type() != QEvent::MouseMove && event.buttons() == Qt::LeftButton;
    if ((!hovers && !presses) || QApplication::activePopupWidget())
        return false;
    const QPointF screen = event.globalPosition();
    const unsigned edges = EdgesAt(frame, PixelOf(frame.mapFromGlobal(screen)));
    if (hovers)
        ShowPointer(frame, window, edges, event);
    else if (edges != kv::kNoEdge)
        kv::StartFrameResize(frame, edges, screen.toPoint());
    return edges != kv::kNoEdge;
}

// To the widgets the border is outside: they see the pointer leave and come back.
void CKvFrameWnd::Impl::ShowPointer(CKvFrameWnd& frame, QWindow& window, unsigned edges,
                                    const QMouseEvent& event)
{
    if (edges != kv::kNoEdge) {
        if (!overBorder) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(&window, &leave);
            overBorder = true;
        }
        window.setCursor(kv::FrameEdgeCursor(edges));
    } else if (std::exchange(overBorder, false)) {
        QEnterEvent enter(event.position(), event.scenePosition(), event.globalPosition());
        QCoreApplication::sendEvent(&window, &enter);
        const QWidget* below = frame.childAt(PixelOf(frame.mapFromGlobal(event.globalPosition())));
        window.setCursor((below ? *below : frame).cursor());
    }
}

void CKvFrameWnd::Impl::UpdateMargins(CKvFrameWnd& frame) const
{
    const int line = frame.isMaximized() || frame.isFullScreen() ? 0 : 1;
    frame.setContentsMargins(line, line, line, line);
}

// At least what the contents need, and never so small that it cannot be found again. A host's own minimum
// counts.
void CKvFrameWnd::Impl::UpdateMinimum(CKvFrameWnd& frame)
{
    if (frame.minimumSize() != minimum)
        return;
    minimum = frame.layout()->totalMinimumSize().expandedTo(kSmallestFrame).boundedTo(frame.maximumSize());
    frame.setMinimumSize(minimum);
}

CKvFrameWnd::CKvFrameWnd() : m_impl(std::make_unique<Impl>())
{
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    m_impl->minimum = minimumSize();
    m_impl->UpdateMargins(*this);
    m_impl->UpdateMinimum(*this);
    auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Space), this);
    QObject::connect(shortcut, &QShortcut::activated, this, [this] {
        const auto* caption = dynamic_cast<const IKvFrameCaption*>(menuWidget());
        const QPoint below(0, caption ? caption->CaptionBottom() : 0);
        OpenSystemMenu(mapToGlobal(contentsRect().topLeft() + below));
    });
}

CKvFrameWnd::~CKvFrameWnd() = default;

int CKvFrameWnd::RequestShowState(int showCommand)
{
    if (showCommand < kv::kShowNormal || showCommand > kv::kShowMaximised)
        return 0;
    const QPointer<CKvFrameWnd> self(this);
    if (!OnShowStateRequest(showCommand) || !self)
        return 0;
    kv::ShowFrame(*this, showCommand);
    return 1;
}

void CKvFrameWnd::OpenSystemMenu(CPoint screen)
{
    CKvMenu menu;
    menu.LoadMenu(kv::kFrameMenu);
    // The applications and the separator after them are the caption bar's.
    const QList<QAction*> actions = menu.GetHandle()->actions();
    for (QAction* action : actions) {
        const bool first = action->isSeparator();
        delete action;
        if (first)
            break;
    }
    kv::FitFrameEntries(menu, *this);
    const QPointer<CKvFrameWnd> self(this);
    const UINT command = menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, screen, this);
    if (self)
        kv::DoFrameCommand(*self, command);
}

BOOL CKvFrameWnd::OnShowStateRequest(int)
{
    return 1;
}

BOOL CKvFrameWnd::OnNotify(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvFrameWnd::OnCommand(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvFrameWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return kv::DispatchToHandlers(
        message, [&] { return OnNotify(wParam, lParam, result); },
        [&] { return OnCommand(wParam, lParam, result); });
}

bool CKvFrameWnd::event(QEvent* event)
{
    if (const auto handled =
            kv::DispatchMessage(*event, [this](auto... message) { return OnWndMsg(message...); }))
        return *handled;
    const QPointer<CKvFrameWnd> self(this);
    const QEvent::Type type = event->type();
    const bool result = QMainWindow::event(event);
    if (!self)
        return result;
    if (type == QEvent::LayoutRequest)
        m_impl->UpdateMinimum(*this);
    else if (type == QEvent::WinIdChange && windowHandle())
        windowHandle()->installEventFilter(this);
    return result;
}

bool CKvFrameWnd::eventFilter(QObject* watched, QEvent* event)
{
    if (watched->isWindowType()) {
        auto& window = static_cast<QWindow&>(*watched);
        const QWindow* own = windowHandle();
        const bool isOurs = own && (own == watched || own->isAncestorOf(&window));
        if (isOurs && m_impl->OnWindowEvent(*this, window, *event))
            return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void CKvFrameWnd::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        m_impl->UpdateMargins(*this);
}

void CKvFrameWnd::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (contentsMargins().isNull())
        return;
    QPainter painter(this);
    painter.setPen(kv::SkinColour(L"keWindowBorderColor", palette().color(QPalette::Mid).rgba()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
