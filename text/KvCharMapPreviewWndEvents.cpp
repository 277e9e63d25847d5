// The character grid's window events.
#include "platform/VirtualKey.h"
#include "text/CharNames.h"
#include "text/KvCharMapPreviewWndImpl.h"

#include <QApplication>
#include <QClipboard>

#include <utility>

namespace {

std::optional<kv::CharStep> StepOf(UINT key)
{
    switch (key) {
    case VK_LEFT:
        return kv::CharStep::Left;
    case VK_RIGHT:
        return kv::CharStep::Right;
    case VK_UP:
        return kv::CharStep::Up;
    case VK_DOWN:
        return kv::CharStep::Down;
    case VK_PRIOR:
        return kv::CharStep::PageUp;
    case VK_NEXT:
        return kv::CharStep::PageDown;
    case VK_HOME:
        return kv::CharStep::First;
    case VK_END:
        return kv::CharStep::Last;
    default:
        return std::nullopt;
    }
}

bool IsGridKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    return kv::HeldModifiers(modifiers) == Qt::NoModifier && (key == VK_RETURN || StepOf(key));
}

} // namespace

void CKvCharMapPreviewWnd::OnPaint(Graphics& graphics)
{
    kv::DrawCharMap(graphics, GetClientRect(), m_impl->font, m_impl->model, m_impl->rows, m_impl->Look());
}

void CKvCharMapPreviewWnd::OnLButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    const int index = m_impl->IndexAt(point);
    if (index < 0)
        return;
    m_impl->press = point;
    SetCapture();
    m_impl->SelectByUser(index);
}

void CKvCharMapPreviewWnd::OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const int index = m_impl->IndexAt(point);
    if (index >= 0 && index == m_impl->model.Selected())
        m_impl->Pick();
    else
        OnLButtonDown(modifiers, point);
}

void CKvCharMapPreviewWnd::OnLButtonUp(Qt::KeyboardModifiers, CPoint)
{
    m_impl->press.reset();
    ReleaseCapture();
}

void CKvCharMapPreviewWnd::OnMouseMove(Qt::KeyboardModifiers, CPoint point)
{
    if (!m_impl->press) {
        _UpdatePreviewPos(point);
        return;
    }
    if ((QPoint(point) - QPoint(*m_impl->press)).manhattanLength() < QApplication::startDragDistance())
        return;
    // Not within the mouse event: the toolkit runs the drag in a loop of its own, in which the host may do
    // anything, and a release that comes first is no drop.
    QMetaObject::invokeMethod(
        this, [this] { m_impl->BeginDrag(); }, Qt::QueuedConnection);
}

void CKvCharMapPreviewWnd::_UpdatePreviewPos(CPoint pointer)
{
    const bool hides = m_impl->PreviewRect().PtInRect(pointer);
    if (std::exchange(m_impl->hidesPreview, hides) != hides)
        DrawSelected();
}

void CKvCharMapPreviewWnd::OnMouseWheel(Qt::KeyboardModifiers, int delta, CPoint)
{
    ScrollWheel(delta);
}

void CKvCharMapPreviewWnd::OnMouseLeave()
{
    _UpdatePreviewPos({-1, -1});
}

void CKvCharMapPreviewWnd::OnContextMenu(CPoint point)
{
    const int index = m_impl->IndexAt(point);
    if (index < 0)
        return;
    const QPointer<CKvCharMapPreviewWnd> alive(this);
    m_impl->SelectByUser(index);
    if (alive)
        Q_EMIT MenuRequested(mapToGlobal(QPoint(point)));
}

CPoint CKvCharMapPreviewWnd::ContextMenuPoint() const
{
    const int cell = m_impl->model.CellOf(m_impl->model.Selected());
    return cell < 0 ? CPoint(-1, -1) : CPoint(QRect(kv::CharCellRect(cell)).center());
}

BOOL CKvCharMapPreviewWnd::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (m_impl->press && key == VK_ESCAPE) {
        m_impl->press.reset();
        ReleaseCapture();
        return 1;
    }
    if (!IsGridKey(key, modifiers))
        return CKvStatic::OnKeyDown(key, modifiers);
    if (const auto step = StepOf(key))
        m_impl->SelectByUser(m_impl->model.Stepped(*step));
    else
        m_impl->Pick();
    return 1;
}

BOOL CKvCharMapPreviewWnd::OnChar(UINT character)
{
    if (character != kv::kCtrlC)
        return CKvStatic::OnChar(character);
    if (m_impl->model.Selected() < 0)
        return 1;
    const char16_t code = m_impl->SelectedCode();
    QApplication::clipboard()->setText(QString(QChar(code)));
    if (m_impl->characterUsed)
        m_impl->characterUsed(code);
    return 1;
}

bool CKvCharMapPreviewWnd::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return IsGridKey(key, modifiers) || character == kv::kCtrlC || (key == VK_ESCAPE && m_impl->press);
}

void CKvCharMapPreviewWnd::OnSetFocus()
{
    update();
    m_impl->access.FocusChanged();
}

void CKvCharMapPreviewWnd::OnKillFocus()
{
    update();
}

void CKvCharMapPreviewWnd::OnEnable(BOOL)
{
    update();
}

void CKvCharMapPreviewWnd::OnCaptureChanged()
{
    m_impl->press.reset();
}

void CKvCharMapPreviewWnd::OnSkinChanged()
{
    update();
}

// Without a face of its own the grid shows the one of its font; another size of that is no other face.
void CKvCharMapPreviewWnd::changeEvent(QEvent* event)
{
    CKvStatic::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_impl->face.empty() && IsCreated() &&
        m_impl->shown != GetFont())
        UpdateCodeTable();
}

QString CKvCharMapPreviewWnd::ToolTipAt(CPoint point, CRect& area) const
{
    const int index = m_impl->IndexAt(point);
    if (index < 0)
        return {};
    area = kv::CharCellRect(m_impl->model.CellOf(index));
    return kv::CharCodeAndName(static_cast<char16_t>(GetCode(index)));
}
