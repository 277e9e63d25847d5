// The layout strip's window events.
#include "layout/KvLayoutSelectorImpl.h"
#include "platform/VirtualKey.h"

#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>

#include <cstdlib>

namespace {

bool IsStripKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = kv::HeldModifiers(modifiers);
    return (held == Qt::NoModifier || held == Qt::ControlModifier) &&
           (kv::IsArrow(key) || key == VK_HOME || key == VK_END || key == VK_PRIOR || key == VK_NEXT ||
            key == VK_SPACE || key == VK_RETURN);
}

} // namespace

BOOL CKvLayoutSelector::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message != WM_HSCROLL && message != WM_VSCROLL)
        return CKvWnd::OnWndMsg(message, wParam, lParam, result);
    const bool isOurs = m_impl->bar && lParam == reinterpret_cast<LPARAM>(m_impl->bar);
    const std::int64_t position = isOurs ? m_impl->bar->GetScrollPos() : std::int64_t{HIWORD(wParam)};
    *result = 0;
    return m_impl->RunScrollCode(LOWORD(wParam), position) ? 1 : 0;
}

void CKvLayoutSelector::OnPaint(Graphics& graphics)
{
    _DrawLayoutView(graphics);
}

void CKvLayoutSelector::OnSize(int, int)
{
    _UpdateClient();
}

void CKvLayoutSelector::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const QPointer<CKvLayoutSelector> alive(this);
    m_impl->isFocusByMove = false;
    setFocus(Qt::MouseFocusReason);
    if (!alive)
        return;
    const int index = m_impl->HitTest(point);
    // First, so that whatever takes the mouse in the host's handler ends it.
    if (m_impl->layout.DragBand().PtInRect(point))
        m_impl->BeginDrag(point);
    if (index >= 0)
        m_impl->Pick(index, !modifiers.testFlag(Qt::ControlModifier));
}

void CKvLayoutSelector::OnLButtonUp(Qt::KeyboardModifiers, CPoint)
{
    if (m_impl->drag)
        m_impl->EndDrag();
}

void CKvLayoutSelector::OnMouseMove(Qt::KeyboardModifiers, CPoint point)
{
    const QPointer<CKvLayoutSelector> alive(this);
    m_impl->TakeFocusByMove();
    if (!alive)
        return;
    if (m_impl->drag)
        m_impl->DragTo(point);
    else if (!m_impl->isLeftDown)
        m_impl->SetHot(m_impl->HitTest(point));
}

void CKvLayoutSelector::OnMouseLeave()
{
    m_impl->SetHot(-1);
}

void CKvLayoutSelector::OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point)
{
    if (m_impl->Line().GetRange() == 0) {
        CKvWnd::OnMouseWheel(modifiers, delta, point);
        return;
    }
    const int steps = m_impl->wheel.Turn(delta);
    if (steps == 0)
        return;
    m_impl->ScrollTo(m_impl->Line().GetPosition() - steps * m_impl->layout.Step());
}

BOOL CKvLayoutSelector::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (m_impl->drag) {
        if (key == VK_ESCAPE) {
            m_impl->ScrollTo(m_impl->drag->start);
            m_impl->EndDrag();
        }
        return 1;
    }
    if (IsStripKey(key, modifiers) && m_impl->RunKey(key, modifiers))
        return 1;
    return CKvWnd::OnKeyDown(key, modifiers);
}

bool CKvLayoutSelector::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT) const
{
    return m_impl->drag ? key == VK_ESCAPE : IsStripKey(key, modifiers) && m_impl->Count() > 0;
}

void CKvLayoutSelector::OnSetFocus()
{
    m_impl->Repaint();
    m_impl->access.FocusChanged();
}

void CKvLayoutSelector::OnKillFocus()
{
    m_impl->isFocusByMove = false;
    m_impl->Repaint();
}

void CKvLayoutSelector::OnEnable(BOOL enabled)
{
    if (!enabled)
        m_impl->hot = -1;
    m_impl->Repaint();
}

void CKvLayoutSelector::OnTimer(UINT)
{
    m_impl->MoveOn();
}

void CKvLayoutSelector::OnCaptureChanged()
{
    m_impl->EndDrag();
}

void CKvLayoutSelector::OnSkinChanged()
{
    m_impl->painter.LoadSkin();
    if (m_impl->bar)
        m_impl->bar->LoadSkin();
    const kv::StripLayout::Range range = m_impl->InView(0);
    for (int index = range.begin; QAccessible::isActive() && index < range.end; ++index)
        m_impl->access.NameChanged(static_cast<kv::AccessibleParts::Key>(index));
}

QString CKvLayoutSelector::ToolTipAt(CPoint point, CRect& area) const
{
    const int index = m_impl->HitTest(point);
    if (index < 0 || !m_impl->IsInView(index))
        return {};
    area = m_impl->RectOf(index);
    return m_impl->Thumb(index).name;
}

// The bar keeps the pointer's moves to itself, and the toolkit tells of no leave to it.
bool CKvLayoutSelector::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter && watched == m_impl->bar)
        m_impl->SetHot(-1);
    return CKvWnd::eventFilter(watched, event);
}

void CKvLayoutSelector::mouseMoveEvent(QMouseEvent* event)
{
    m_impl->isLeftDown = event->buttons().testFlag(Qt::LeftButton);
    CKvWnd::mouseMoveEvent(event);
}

void CKvLayoutSelector::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    if (m_impl->vertical || std::abs(turned.y()) >= std::abs(turned.x())) {
        CKvWnd::wheelEvent(event);
        return;
    }
    // A row scrolls sideways by itself.
    QWheelEvent upright(event->position(), event->globalPosition(), event->pixelDelta().transposed(),
                        turned.transposed(), event->buttons(), event->modifiers(), event->phase(),
                        event->inverted(), event->source());
    CKvWnd::wheelEvent(&upright);
    event->setAccepted(upright.isAccepted());
}
