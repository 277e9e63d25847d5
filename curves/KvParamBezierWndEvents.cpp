// The ease curve window's events.
#include "curves/EaseWords.h"
#include "curves/KvParamBezierWndImpl.h"

namespace {

constexpr double kWheelUnits = 500; // 120 a notch

} // namespace

void CKvParamBezierWnd::OnPaint(Graphics& graphics)
{
    kv::DrawEase(graphics, m_impl->model, m_impl->Layout(), m_impl->Look());
}

void CKvParamBezierWnd::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::Drag)
        return;
    if (!m_impl->info || m_impl->gesture != kv::EaseGesture::None)
        CKvWnd::OnLButtonDown(modifiers, point);
    else
        m_impl->Press(point);
}

void CKvParamBezierWnd::OnLButtonDblClk(Qt::KeyboardModifiers, CPoint)
{
    if (m_impl->gesture == kv::EaseGesture::None)
        m_impl->ResetView();
}

void CKvParamBezierWnd::OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::Drag)
        m_impl->EndGesture();
    else
        CKvWnd::OnLButtonUp(modifiers, point);
}

void CKvParamBezierWnd::OnMButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::None)
        m_impl->BeginViewGesture(kv::EaseGesture::Zoom, point);
    else
        CKvWnd::OnMButtonDown(modifiers, point);
}

void CKvParamBezierWnd::OnMButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::Zoom)
        m_impl->EndGesture();
    else
        CKvWnd::OnMButtonUp(modifiers, point);
}

void CKvParamBezierWnd::OnRButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::None)
        m_impl->BeginViewGesture(kv::EaseGesture::Pan, point);
    else
        CKvWnd::OnRButtonDown(modifiers, point);
}

void CKvParamBezierWnd::OnRButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->gesture == kv::EaseGesture::Pan)
        m_impl->EndGesture();
    else
        CKvWnd::OnRButtonUp(modifiers, point);
}

void CKvParamBezierWnd::OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point)
{
    m_impl->Hover(point);
    if (!m_impl->MoveGesture(point, modifiers))
        CKvWnd::OnMouseMove(modifiers, point);
}

void CKvParamBezierWnd::OnMouseLeave()
{
    m_impl->Hover(std::nullopt);
}

void CKvParamBezierWnd::OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point)
{
    if (m_impl->gesture != kv::EaseGesture::None)
        return;
    if (delta == 0) {
        CKvWnd::OnMouseWheel(modifiers, delta, point); // sideways
        return;
    }
    const kv::EaseRange whole{m_impl->model.Curve().minimum, m_impl->model.Curve().maximum};
    m_impl->SetView(kv::Zoomed(m_impl->view, whole, 1.0 - delta / kWheelUnits));
}

// The right button moves the view: no menu, neither here nor of the parent.
void CKvParamBezierWnd::OnContextMenu(CPoint) {}

BOOL CKvParamBezierWnd::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    m_impl->keyModifiers = modifiers;
    if (m_impl->gesture != kv::EaseGesture::None) {
        if (key == VK_ESCAPE)
            m_impl->CancelGesture();
        return key == VK_CONTROL ? 0 : 1;
    }
    if (m_impl->RunEntryKey(key) || m_impl->RunKey(key, modifiers))
        return 1;
    return CKvWnd::OnKeyDown(key, modifiers);
}

BOOL CKvParamBezierWnd::OnChar(UINT character)
{
    if (const auto command = kv::EaseCommandOf(character, m_impl->keyModifiers))
        return m_impl->Run(*command) ? 1 : 0;
    if (!m_impl->IsTyped(character, m_impl->keyModifiers))
        return CKvWnd::OnChar(character);
    m_impl->entry.Type(character);
    update();
    return 1;
}

bool CKvParamBezierWnd::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    if (m_impl->gesture != kv::EaseGesture::None)
        return true; // a host that undid or saved now would meet half an edit
    const bool isOfEntry = key == VK_ESCAPE || key == VK_RETURN || key == VK_BACK;
    return (isOfEntry && m_impl->entry.IsPending()) || m_impl->IsOwnKey(key, modifiers) ||
           m_impl->IsTyped(character, modifiers) || m_impl->CanRun(kv::EaseCommandOf(character, modifiers));
}

void CKvParamBezierWnd::OnSetFocus()
{
    update();
    m_impl->access.FocusChanged();
}

void CKvParamBezierWnd::OnKillFocus()
{
    m_impl->DropEntry();
    update();
}

void CKvParamBezierWnd::OnEnable(BOOL)
{
    m_impl->Hover(std::nullopt);
    update();
}

void CKvParamBezierWnd::OnCaptureChanged()
{
    m_impl->EndGesture();
}

void CKvParamBezierWnd::OnSkinChanged()
{
    m_impl->LoadSkin();
    m_impl->access.TextsChanged();
}

QString CKvParamBezierWnd::ToolTipAt(CPoint point, CRect& area) const
{
    const kv::EaseLayout layout = m_impl->Layout();
    const auto hit = m_impl->model.IsEditable() ? m_impl->HitTest(point) : std::nullopt;
    const auto handle = hit ? kv::HandleOf(*hit) : std::nullopt;
    if (!handle || m_impl->gesture != kv::EaseGesture::None)
        return {};
    area = {point.x, point.y, point.x + 1, point.y + 1};
    return KvToQString(kv::HandleText(layout, *handle, m_impl->Curve()[*handle]));
}
