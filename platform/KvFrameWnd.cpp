#include "KvGuiRes.h"
#include "KvMenu.h"
#include "KvWnd.h"
#include "chrome/FrameEdges.h"
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

namespace {

constexpr int kCaptionBottom = 25; // of the caption band
constexpr QSize kSmallestFrame{240, 100};

} // namespace

struct CKvFrameWnd::Impl
{
    QSize minimum;           // the one set last by the frame itself
    bool overBorder = false; // the pointer has a resize shape

    unsigned EdgesAt(const CKvFrameWnd& frame, QPoint point) const;
    bool OnMouse(CKvFrameWnd& frame, const QMouseEvent& event);
    void ShowPointer(CKvFrameWnd& frame, unsigned edges, QPoint point);
    void UpdateMargins(CKvFrameWnd& frame) const;
    void UpdateMinimum(CKvFrameWnd& frame);
};

// The caption bar decides for its own area: its buttons and items reach into the border.
unsigned CKvFrameWnd::Impl::EdgesAt(const CKvFrameWnd& frame, QPoint point) const
{
    if (!kv::HasResizeBorder(frame))
        return kv::kNoEdge;
    const unsigned edges = kv::FrameEdgesAt(point, frame.rect());
    if (edges == kv::kNoEdge)
        return edges;
    for (const QWidget* child = frame.childAt(point); child; child = child->parentWidget()) {
        if (child->inherits("CKvCaptionBar"))
            return kv::kNoEdge;
    }
    return edges;
}

bool CKvFrameWnd::Impl::OnMouse(CKvFrameWnd& frame, const QMouseEvent& event)
{
    const bool hovers = event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton;
    const bool presses = event.type() != QEvent::MouseMove && event.buttons() == Qt::LeftButton;
    if ((!hovers && !presses) || QApplication::activePopupWidget())
        return false;
    const QPoint point = event.scenePosition().toPoint();
    const unsigned edges = EdgesAt(frame, point);
    if (hovers)
        ShowPointer(frame, edges, point);
    else if (edges != kv::kNoEdge)
        kv::StartFrameResize(frame, edges, event.globalPosition().toPoint());
    return edges != kv::kNoEdge;
}

void CKvFrameWnd::Impl::ShowPointer(CKvFrameWnd& frame, unsigned edges, QPoint point)
{
    if (edges == kv::kNoEdge && !overBorder)
        return;
    overBorder = edges != kv::kNoEdge;
    const QWidget* below = frame.childAt(point);
    frame.windowHandle()->setCursor(overBorder ? QCursor(kv::FrameEdgeCursor(edges))
                                               : (below ? *below : frame).cursor());
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
    minimum = frame.layout()->totalMinimumSize().expandedTo(kSmallestFrame);
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
        const QPoint corner = contentsRect().topLeft() + QPoint(0, menuWidget() ? kCaptionBottom : 0);
        OpenSystemMenu(mapToGlobal(corner));
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
        windowHandle()->installEventFilter(this); // sees the whole frame's mouse before its children do
    return result;
}

bool CKvFrameWnd::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (watched == windowHandle() && m_impl->OnMouse(*this, static_cast<const QMouseEvent&>(*event)))
            return true;
        break;
    default:
        break;
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
