// The window base's input: mouse, capture, wheel, keys and focus become the `On…` handlers.
#include "platform/KvWndImpl.h"
#include "platform/VirtualKey.h"
#include "platform/WindowDrag.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace {

// The pixel that holds the point: rounding would reach beyond the right and bottom edge.
CPoint PixelOf(const QMouseEvent& event)
{
    const QPointF position = event.position();
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

} // namespace

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

void CKvWnd::OnHitCaption(CPoint point)
{
    kv::StartWindowMove(*this, point);
}

void CKvWnd::OnContextMenu(CPoint)
{
    m_impl->unhandled = true;
}

CPoint CKvWnd::ContextMenuPoint() const
{
    return rect().center();
}

void CKvWnd::SetCapture()
{
    if (!HasCapture())
        m_impl->capture = std::make_unique<kv::CaptureWatcher>(*this, [this] { LoseCapture(); });
}

void CKvWnd::ReleaseCapture()
{
    m_impl->capture.reset();
}

bool CKvWnd::HasCapture() const
{
    return m_impl->capture && !m_impl->capture->IsLost();
}

void CKvWnd::LoseCapture()
{
    if (!m_impl->capture)
        return;
    m_impl->capture.reset();
    OnCaptureChanged();
}

// Input that comes before the event loop has told of the loss is no part of that drag any more.
bool CKvWnd::TellLoss()
{
    const QPointer<CKvWnd> self(this);
    if (m_impl->capture)
        m_impl->capture->TellLoss();
    return !self.isNull();
}

// Calls a mouse handler; the event is ignored when only the default handler saw it.
template <typename Handler>
void CKvWnd::Dispatch(QEvent* event, Handler handler)
{
    if (!TellLoss()) {
        event->accept();
        return;
    }
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
    if (!TellLoss()) {
        event->accept();
        return;
    }
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
