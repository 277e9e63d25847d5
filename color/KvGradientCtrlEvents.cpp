// The gradient control's window events.
#include "color/ColourWords.h"
#include "color/GradientBlend.h"
#include "color/GradientKeys.h"
#include "color/KvGradientCtrlImpl.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/VirtualKey.h"

#include <QContextMenuEvent>

namespace {

constexpr std::uint32_t kTextPlaceAndColour = 20010;
constexpr std::uint32_t kTextMidPoint = 20011;

bool IsClipboardCharacter(UINT character)
{
    return character == kv::kCtrlC || character == kv::kCtrlV || character == kv::kCtrlX;
}

/// A digit or point typed without Ctrl, Alt or Meta.
bool IsPercentCharacter(UINT character, Qt::KeyboardModifiers modifiers)
{
    return kv::PercentEntry::IsPart(character) && !kv::IsCommand(modifiers);
}

QString PlaceAndColour(double position, DWORD colour)
{
    const QString hex = QString::number(colour, 16).rightJustified(8, u'0').toUpper();
    return KvToQString(
        kv::FillText(kv::LoadText(kTextPlaceAndColour), {kv::PercentText(position), KvFromQString(hex)}));
}

} // namespace

void CKvGradientCtrl::OnPaint(Graphics& graphics)
{
    m_impl->painter.Paint(graphics, m_impl->model, m_impl->layout, m_impl->Look());
}

void CKvGradientCtrl::OnSize(int, int)
{
    RecalcLayout();
}

void CKvGradientCtrl::OnLButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    if (!m_impl->EndInput())
        return;
    if (m_impl->layout.StopArea().PtInRect(point))
        m_impl->PressStop(point);
    else if (m_impl->layout.midStrip.PtInRect(point))
        m_impl->PressMidPoint(point);
}

void CKvGradientCtrl::OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->drag || m_impl->changing)
        m_impl->EndInput();
    else
        CKvStatic::OnLButtonUp(modifiers, point);
}

void CKvGradientCtrl::OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->drag)
        m_impl->DragTo(point);
    else
        CKvStatic::OnMouseMove(modifiers, point);
}

void CKvGradientCtrl::OnCaptureChanged()
{
    m_impl->EndInput();
}

void CKvGradientCtrl::contextMenuEvent(QContextMenuEvent* event)
{
    m_impl->menuByKey = event->reason() == QContextMenuEvent::Keyboard && !HasCapture();
    CKvStatic::contextMenuEvent(event);
}

void CKvGradientCtrl::OnContextMenu(CPoint point)
{
    if (m_impl->EndInput())
        DoMenu(point);
}

CPoint CKvGradientCtrl::ContextMenuPoint() const
{
    const SKvCGGradientKey* stop = m_impl->model.SelectedKey();
    if (!stop)
        return CKvStatic::ContextMenuPoint();
    const CRect& strip = m_impl->layout.keyStrip;
    return {m_impl->layout.GetDisplayPos(stop->position), (strip.top + strip.bottom) / 2};
}

BOOL CKvGradientCtrl::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    m_impl->keyModifiers = modifiers;
    if (m_impl->drag) {
        if (key == VK_ESCAPE)
            m_impl->CancelDrag();
        return key == VK_CONTROL ? 0 : 1;
    }
    if (m_impl->RunEntryKey(key) || m_impl->RunKey(key, modifiers))
        return 1;
    return CKvStatic::OnKeyDown(key, modifiers);
}

BOOL CKvGradientCtrl::OnChar(UINT character)
{
    if (IsPercentCharacter(character, m_impl->keyModifiers) && m_impl->model.HasSelection()) {
        m_impl->TypePercent(character);
        return 1;
    }
    if (!IsClipboardCharacter(character))
        return CKvStatic::OnChar(character);
    m_impl->DropEntry();
    m_impl->RedrawAll();
    if (!IsLeftControlDown())
        return 1;
    if (character == kv::kCtrlC)
        CopyColor();
    else if (character == kv::kCtrlV)
        PasteColor();
    else
        m_impl->Cut();
    return 1;
}

UINT CKvGradientCtrl::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

bool CKvGradientCtrl::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    if (key == VK_ESCAPE && m_impl->drag)
        return true;
    if (m_impl->entry.IsPending() && (key == VK_ESCAPE || key == VK_RETURN || key == VK_BACK))
        return true;
    return kv::GradientKeyCommandOf(key, modifiers) || IsPercentCharacter(character, modifiers) ||
           (IsClipboardCharacter(character) && IsLeftControlDown());
}

bool CKvGradientCtrl::focusNextPrevChild(bool next)
{
    // In a drag the Tab key, too, does nothing.
    return m_impl->drag || CKvStatic::focusNextPrevChild(next);
}

void CKvGradientCtrl::OnSetFocus()
{
    SetActive(1);
    m_impl->access.FocusChanged();
}

void CKvGradientCtrl::OnKillFocus()
{
    m_impl->DropEntry();
    SetActive(0);
}

void CKvGradientCtrl::OnEnable(BOOL)
{
    m_impl->RedrawAll();
}

void CKvGradientCtrl::OnTimer(UINT id)
{
    if (id != kv::kGradientBlinkTimer || !isEnabled())
        return;
    m_impl->blinkPhase = !m_impl->blinkPhase;
    DrawKeyArea();
}

void CKvGradientCtrl::OnSkinChanged()
{
    m_impl->RedrawAll();
    m_impl->access.TextsChanged();
}

QString CKvGradientCtrl::ToolTipAt(CPoint point, CRect& area) const
{
    const kv::GradientModel& model = m_impl->model;
    const kv::GradientLayout& layout = m_impl->layout;
    if (const int midPoint = layout.HitMidPoint(model, point); midPoint >= 0) {
        area = layout.MidPointBox(model.MidPointPlace(midPoint));
        return KvToQString(
            kv::FillText(kv::LoadText(kTextMidPoint), {kv::PercentText(model.MidPoint(midPoint))}));
    }
    if (const int hit = layout.HitKey(model, point); hit >= 0) {
        const SKvCGGradientKey& stop = model.Keys()[static_cast<std::size_t>(hit)];
        area = layout.KeyBox(stop.position);
        return PlaceAndColour(stop.position, stop.colour);
    }
    if (!layout.palette.PtInRect(point))
        return {};
    area = {point.x, layout.palette.top, point.x + 1, layout.palette.bottom};
    const double position = kv::ClampPosition(layout.PositionAt(point.x));
    return PlaceAndColour(position, kv::BlendColourAt(kv::MakeBlend(model.Keys(), true), position));
}
