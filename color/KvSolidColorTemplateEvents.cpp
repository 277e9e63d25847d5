// The swatch grid's window events.
#include "color/ColourDrag.h"
#include "color/KvSolidColorTemplateImpl.h"
#include "color/SwatchTexts.h"
#include "platform/ColourClipboard.h"
#include "platform/VirtualKey.h"

#include <QDropEvent>

#include <utility>

using kv::SwatchCell;

namespace {

bool IsPickKey(UINT key)
{
    return key == VK_RETURN || key == VK_SPACE;
}

bool IsGridKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    return kv::HeldModifiers(modifiers) == Qt::NoModifier &&
           (IsPickKey(key) || kv::IsArrow(key) || key == VK_HOME || key == VK_END);
}

} // namespace

void CKvSolidColorTemplate::OnPaint(Graphics& graphics)
{
    m_impl->painter.Paint(graphics, GetClientRect(), m_impl->layout, Impl::Store().Colours(), m_impl->Look());
}

void CKvSolidColorTemplate::OnSize(int, int)
{
    RecalcLayout();
}

void CKvSolidColorTemplate::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (const std::optional<SwatchCell> cell = m_impl->HitTest(point))
        m_impl->Press(*cell, point);
    else
        CKvStatic::OnLButtonDown(modifiers, point);
}

void CKvSolidColorTemplate::OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (!m_impl->press) {
        CKvStatic::OnLButtonUp(modifiers, point);
        return;
    }
    const SwatchCell pressed = m_impl->press->cell;
    m_impl->DropPress();
    if (m_impl->HitTest(point) == pressed)
        m_impl->PickCell(pressed);
}

void CKvSolidColorTemplate::OnMouseMove(Qt::KeyboardModifiers, CPoint point)
{
    m_impl->MoveTo(point);
}

void CKvSolidColorTemplate::OnMouseLeave()
{
    m_impl->HoverAt(std::nullopt);
}

void CKvSolidColorTemplate::OnCaptureChanged()
{
    m_impl->DropPress();
}

void CKvSolidColorTemplate::OnContextMenu(CPoint point)
{
    if (m_impl->HitTest(point))
        DoMenu(point);
    else
        CKvStatic::OnContextMenu(point);
}

CPoint CKvSolidColorTemplate::ContextMenuPoint() const
{
    const CRect cell = m_impl->layout.RectOf(m_impl->CurrentCell());
    return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
}

BOOL CKvSolidColorTemplate::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (m_impl->press) {
        if (key == VK_ESCAPE)
            m_impl->DropPress();
        return 1;
    }
    if (!IsGridKey(key, modifiers))
        return CKvStatic::OnKeyDown(key, modifiers);
    if (IsPickKey(key))
        m_impl->PickCell(m_impl->CurrentCell());
    else
        m_impl->Walk(key);
    return 1;
}

BOOL CKvSolidColorTemplate::OnChar(UINT character)
{
    if (character != kv::kCtrlC)
        return CKvStatic::OnChar(character);
    const SwatchCell cell = m_impl->CurrentCell();
    if (cell.kind == SwatchCell::Kind::Swatch)
        kv::CopyColour(m_impl->ColourOf(cell));
    return 1;
}

bool CKvSolidColorTemplate::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return IsGridKey(key, modifiers) || character == kv::kCtrlC || (key == VK_ESCAPE && m_impl->press);
}

void CKvSolidColorTemplate::OnSetFocus()
{
    update();
    m_impl->access.FocusChanged();
}

void CKvSolidColorTemplate::OnKillFocus()
{
    update();
}

void CKvSolidColorTemplate::OnEnable(BOOL enabled)
{
    if (!enabled) {
        m_impl->HoverAt(std::nullopt);
        m_impl->DropOver(std::nullopt);
    }
    DrawPalette();
}

void CKvSolidColorTemplate::OnSkinChanged()
{
    DrawPalette();
    for (int index = 0; index < m_impl->access.Count(); ++index)
        m_impl->access.NameChanged(m_impl->access.KeyAt(index));
}

QString CKvSolidColorTemplate::ToolTipAt(CPoint point, CRect& area) const
{
    const std::optional<SwatchCell> cell = m_impl->HitTest(point);
    if (!cell)
        return {};
    area = m_impl->layout.RectOf(*cell);
    return cell->kind == SwatchCell::Kind::Alpha ? kv::AlphaText(cell->index)
                                                 : kv::ChannelsText(m_impl->ColourOf(*cell));
}

void CKvSolidColorTemplate::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
    // Also over a cell that takes none: the pointer may go on to one that does.
    event->setAccepted(isEnabled() && kv::DroppedColour(event->mimeData()).has_value());
}

void CKvSolidColorTemplate::dragMoveEvent(QDragMoveEvent* event)
{
    m_impl->DropOver(m_impl->DropCell(*event));
    kv::AnswerDrag(*event, m_impl->dropTarget.has_value());
}

void CKvSolidColorTemplate::dragLeaveEvent(QDragLeaveEvent*)
{
    m_impl->DropOver(std::nullopt);
}

void CKvSolidColorTemplate::dropEvent(QDropEvent* event)
{
    m_impl->DropOver(std::nullopt);
    const std::optional<SwatchCell> cell = m_impl->DropCell(*event);
    kv::AnswerDrag(*event, cell.has_value());
    if (cell)
        Impl::Keep(cell->index, *kv::DroppedColour(event->mimeData()));
}
