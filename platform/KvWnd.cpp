#include "KvWnd.h"

#include "platform/CaptureWatcher.h"
#include "platform/LeftControlKey.h"
#include "platform/VirtualKey.h"

#include <QApplication>
#include <QBasicTimer>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>
#include <functional>
#include <unordered_map>
#include <utility>

namespace {

// The pixel that holds the point: rounding would reach beyond the right and bottom edge.
CPoint PixelOf(const QMouseEvent& event)
{
    const QPointF position = event.position();
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

} // namespace

struct CKvWnd::Impl
{
    bool created = false;
    // Set by the default handlers: the event goes on to the parent.
    bool unhandled = false;
    Qt::MouseButton lastPressed = Qt::LeftButton; // the one that a drag is made with
    std::unordered_map<UINT, QBasicTimer> timers;
    std::unique_ptr<kv::CaptureWatcher> capture;
};

CKvWnd::CKvWnd() : m_impl(std::make_unique<Impl>())
{
    kv::WatchControlKeys();
    setMouseTracking(true); // hover, and a move that tells of a button-up seen elsewhere
}

CKvWnd::~CKvWnd() = default;

int CKvWnd::CreateWnd(UINT style, const CRect& rect, CWnd* parent, DWORD id)
{
    if (m_impl->created)
        return 0;
    m_impl->created = true;
    const QRect before = geometry();
    const bool wasMoved = testAttribute(Qt::WA_Moved);
    const bool wasResized = testAttribute(Qt::WA_Resized);
    setParent(parent);
    KvSetDlgItemId(this, id);
    if (!rect.IsRectEmpty()) {
        setGeometry(rect);
    } else {
        if (wasMoved)
            move(before.topLeft());
        if (wasResized)
            resize(before.size());
    }
    if (style & WS_TABSTOP)
        setFocusPolicy(Qt::StrongFocus);
    if (style & WS_DISABLED)
        setEnabled(false);
    setVisible((style & WS_VISIBLE) != 0);
    return 1;
}

BOOL CKvWnd::IsCreated() const
{
    return m_impl->created ? 1 : 0;
}

UINT CKvWnd::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvWnd*>(this)); // reads only
}

CRect CKvWnd::GetClientRect() const
{
    return rect();
}

BOOL CKvWnd::OnNotify(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvWnd::OnCommand(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_NOTIFY:
        return OnNotify(wParam, lParam, result);
    case WM_COMMAND:
        return OnCommand(wParam, lParam, result);
    case WM_GETDLGCODE:
        *result = static_cast<LRESULT>(OnGetDlgCode());
        return 1;
    default:
        return 0;
    }
}

void CKvWnd::OnPaint(Graphics&) {}
void CKvWnd::OnSize(int, int) {}

void CKvWnd::OnLButtonDown(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point)
{
    OnLButtonDown(modifiers, point);
}

void CKvWnd::OnLButtonUp(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnMButtonDown(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnMButtonUp(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnRButtonDown(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnRButtonUp(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnMouseMove(Qt::KeyboardModifiers, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnMouseWheel(Qt::KeyboardModifiers, int, CPoint)
{
    m_impl->unhandled = true;
}

void CKvWnd::OnMouseLeave() {}

void CKvWnd::OnContextMenu(CPoint)
{
    m_impl->unhandled = true;
}

CPoint CKvWnd::ContextMenuPoint() const
{
    return rect().center();
}

BOOL CKvWnd::OnKeyDown(UINT, Qt::KeyboardModifiers)
{
    return 0;
}

BOOL CKvWnd::OnChar(UINT)
{
    return 0;
}

UINT CKvWnd::OnGetDlgCode()
{
    return 0;
}

bool CKvWnd::WantsShortcut(UINT, Qt::KeyboardModifiers, UINT) const
{
    return false;
}

void CKvWnd::OnSetFocus() {}
void CKvWnd::OnKillFocus() {}
void CKvWnd::OnEnable(BOOL) {}
void CKvWnd::OnTimer(UINT) {}
void CKvWnd::OnCaptureChanged() {}
void CKvWnd::OnSkinChanged() {}

QString CKvWnd::ToolTipAt(CPoint, CRect&) const
{
    return {};
}

void CKvWnd::SetTimer(UINT id, int milliseconds)
{
    m_impl->timers[id].start(milliseconds, this);
}

void CKvWnd::KillTimer(UINT id)
{
    m_impl->timers.erase(id);
}

void CKvWnd::SetCapture()
{
    if (!m_impl->capture)
        m_impl->capture = std::make_unique<kv::CaptureWatcher>(*this, [this] { LoseCapture(); });
}

void CKvWnd::ReleaseCapture()
{
    m_impl->capture.reset();
}

bool CKvWnd::HasCapture() const
{
    return m_impl->capture != nullptr;
}

void CKvWnd::LoseCapture()
{
    if (!m_impl->capture)
        return;
    const bool isUnsafe = m_impl->capture->IsUnsafe();
    m_impl->capture.reset();
    if (isUnsafe)
        QMetaObject::invokeMethod(
            this, [this] { OnCaptureChanged(); }, Qt::QueuedConnection);
    else
        OnCaptureChanged();
}

bool CKvWnd::IsLeftControlDown() const
{
    return kv::IsLeftControlDown();
}

bool CKvWnd::event(QEvent* event)
{
    if (event->type() == KvMessageEvent::EventType()) {
        auto& message = static_cast<KvMessageEvent&>(*event);
        LRESULT result = 0;
        const bool handled = OnWndMsg(message.message, message.wParam, message.lParam, &result) != 0;
        message.result = handled ? result : 0;
        message.setAccepted(handled);
        return handled;
    }
    switch (event->type()) {
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked: {
        const QPointer<CKvWnd> self(this);
        LoseCapture();
        return self ? QWidget::event(event) : true;
    }
    case QEvent::ShortcutOverride: {
        auto& key = static_cast<QKeyEvent&>(*event);
        if (WantsShortcut(kv::VirtualKey(key), key.modifiers(), kv::KeyCharacter(key))) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::ToolTip: {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        CRect area = rect();
        const QString text = ToolTipAt(help.pos(), area);
        if (text.isEmpty())
            break;
        QToolTip::showText(help.globalPos(), text, this, area);
        return true;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

bool CKvWnd::focusNextPrevChild(bool next)
{
    return (OnGetDlgCode() & DLGC_WANTTAB) == 0 && QWidget::focusNextPrevChild(next);
}

void CKvWnd::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    OnPaint(painter);
}

void CKvWnd::resizeEvent(QResizeEvent*)
{
    if (m_impl->created)
        OnSize(width(), height());
}

// Calls a mouse handler; the event is ignored when only the default handler saw it.
template <typename Handler>
void CKvWnd::Dispatch(QEvent* event, Handler handler)
{
    const QPointer<CKvWnd> self(this);
    const bool outer = std::exchange(m_impl->unhandled, false); // of the event in whose handler this one came
    handler();
    event->setAccepted(!self || !std::exchange(m_impl->unhandled, outer));
}

void CKvWnd::mousePressEvent(QMouseEvent* event)
{
    const CPoint point = PixelOf(*event);
    if (!HasCapture())
        m_impl->lastPressed = event->button();
    Dispatch(event, [&] {
        switch (event->button()) {
        case Qt::LeftButton:
            return OnLButtonDown(event->modifiers(), point);
        case Qt::MiddleButton:
            return OnMButtonDown(event->modifiers(), point);
        case Qt::RightButton:
            return OnRButtonDown(event->modifiers(), point);
        default:
            m_impl->unhandled = true;
        }
    });
}

void CKvWnd::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event); // quick presses are presses all the same
        return;
    }
    if (!HasCapture())
        m_impl->lastPressed = event->button();
    Dispatch(event, [&] { OnLButtonDblClk(event->modifiers(), PixelOf(*event)); });
}

void CKvWnd::mouseReleaseEvent(QMouseEvent* event)
{
    const CPoint point = PixelOf(*event);
    Dispatch(event, [&] {
        switch (event->button()) {
        case Qt::LeftButton:
            return OnLButtonUp(event->modifiers(), point);
        case Qt::MiddleButton:
            return OnMButtonUp(event->modifiers(), point);
        case Qt::RightButton:
            return OnRButtonUp(event->modifiers(), point);
        default:
            m_impl->unhandled = true;
        }
    });
}

void CKvWnd::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(m_impl->lastPressed)) {
        // The button went up where this window could not see it.
        const QPointer<CKvWnd> self(this);
        LoseCapture();
        if (!self)
            return;
    }
    Dispatch(event, [&] { OnMouseMove(event->modifiers(), PixelOf(*event)); });
}

void CKvWnd::wheelEvent(QWheelEvent* event)
{
    const QPointF position = event->position();
    const CPoint point(static_cast<int>(std::floor(position.x())),
                       static_cast<int>(std::floor(position.y())));
    // Some platforms turn the vertical wheel sideways while Alt is down.
    const QPoint turned = event->angleDelta();
    const bool sideways = event->modifiers().testFlag(Qt::AltModifier) && turned.y() == 0;
    Dispatch(event, [&] { OnMouseWheel(event->modifiers(), sideways ? turned.x() : turned.y(), point); });
}

void CKvWnd::leaveEvent(QEvent*)
{
    OnMouseLeave();
}

void CKvWnd::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    if (byKey && HasCapture())
        return;
    const CPoint point = byKey ? ContextMenuPoint() : CPoint(event->pos());
    Dispatch(event, [&] { OnContextMenu(point); });
}

void CKvWnd::keyPressEvent(QKeyEvent* event)
{
    const QPointer<CKvWnd> self(this);
    // A copy: the handlers may delete this window, and the event with it.
    const UINT character = kv::KeyCharacter(*event);
    bool used = OnKeyDown(kv::VirtualKey(*event), event->modifiers()) != 0;
    if (self && !used && character != 0)
        used = OnChar(character) != 0;
    event->setAccepted(used || !self);
}

// A popup menu leaves the focus where it is; only the toolkit sees it go and come back.
void CKvWnd::focusInEvent(QFocusEvent* event)
{
    if (event->reason() != Qt::PopupFocusReason)
        OnSetFocus();
}

void CKvWnd::focusOutEvent(QFocusEvent* event)
{
    if (event->reason() != Qt::PopupFocusReason)
        OnKillFocus();
}

void CKvWnd::timerEvent(QTimerEvent* event)
{
    for (const auto& [id, timer] : m_impl->timers) {
        if (timer.timerId() == event->timerId()) {
            OnTimer(id);
            return;
        }
    }
    QWidget::timerEvent(event);
}

void CKvWnd::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange)
        return;
    const QPointer<CKvWnd> self(this);
    if (!isEnabled())
        LoseCapture();
    if (self)
        OnEnable(isEnabled() ? 1 : 0);
}

void CKvWnd::setVisible(bool visible)
{
    const QPointer<CKvWnd> self(this);
    if (!visible)
        LoseCapture(); // before the toolkit hides it: the parent may delete it when it hears of the end
    if (self)
        QWidget::setVisible(visible);
}

void CKvWnd::hideEvent(QHideEvent*)
{
    if (m_impl->capture)
        m_impl->capture->MarkUnsafe();
    LoseCapture();
}
