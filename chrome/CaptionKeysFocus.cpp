// Where the focus is in the strip, and what it does there.
#include "chrome/CaptionKeys.h"
#include "platform/FocusRing.h"

#include <QApplication>

#include <utility>

namespace kv {

namespace {

constexpr int kRingAcross = 4; ///< between a text and its ring
constexpr int kRingAbove = 2;

CRect RingRect(const CRect& part)
{
    return {part.left - kRingAcross, part.top - kRingAbove, part.right + kRingAcross,
            part.bottom + kRingAbove};
}

} // namespace

void CaptionKeys::Focus(const CaptionHit& part)
{
    InvalidateFocus();
    if (!m_focus) {
        QWidget* now = m_strip.Frame()->focusWidget();
        m_previous = IsOurs(now) ? nullptr : now;
    }
    m_focus = part;
    InvalidateFocus();
    // As a popup would: an editor keeps its selection, and nobody takes it for the end of an edit.
    const QPointer<CaptionKeys> self(this);
    m_strip.Bar().setFocus(Qt::PopupFocusReason);
    if (self && part.part == CaptionPart::Button)
        m_strip.Button(static_cast<UINT>(part.index)).setFocus(Qt::TabFocusReason);
    if (self)
        m_told();
}

void CaptionKeys::Leave()
{
    if (!m_focus)
        return;
    InvalidateFocus();
    m_focus.reset();
    const QPointer<CaptionKeys> self(this);
    const QPointer<QWidget> back = std::exchange(m_previous, nullptr);
    QWidget* now = m_strip.Frame()->focusWidget();
    if (back && back->isVisible() && back->window() == m_strip.Frame())
        back->setFocus(Qt::PopupFocusReason);
    else if (IsOurs(now))
        now->clearFocus();
    if (self)
        m_told();
}

void CaptionKeys::Enter()
{
    int selected = m_strip.ItemCount() - 1;
    while (selected >= 0 && !m_strip.Item(selected).selected)
        --selected;
    const std::vector<CaptionStop> stops = Stops();
    const int entry = EntryStop(stops, selected);
    if (entry >= 0)
        Focus(stops[static_cast<std::size_t>(entry)].hit);
}

void CaptionKeys::Step(CaptionStep step)
{
    const std::vector<CaptionStop> stops = Stops();
    const int to = WalkStops(stops, FindStop(stops, *m_focus), step);
    if (to >= 0)
        Focus(stops[static_cast<std::size_t>(to)].hit);
}

void CaptionKeys::Press(const CaptionHit& part)
{
    if (!CanPress(part))
        return;
    const CaptionHit pressed = part;
    m_pressed = part;
    const bool wasFocused = m_focus.has_value();
    const QPointer<CaptionKeys> self(this);
    m_tips.End();
    Leave();
    if (!self)
        return;
    m_escaped.reset();
    if (pressed.part == CaptionPart::Item)
        m_strip.PressItem(pressed.index);
    else if (pressed.part == CaptionPart::Flag)
        m_strip.PressFlag();
    else
        m_strip.Button(static_cast<UINT>(pressed.index)).click();
    if (self && wasFocused && m_escaped && CanPress(*m_escaped))
        Focus(CaptionHit(*m_escaped));
}

CaptionHit CaptionKeys::OpenPart(const CaptionHit& pressed) const
{
    for (int i = 0; i < m_strip.ItemCount(); ++i) {
        if (m_strip.Item(i).open)
            return {CaptionPart::Item, i};
    }
    return pressed;
}

void CaptionKeys::PartsChanged()
{
    if (m_focus && !CanPress(*m_focus))
        Leave();
    m_tips.PartsChanged();
}

void CaptionKeys::OnFocusChanged(QWidget* old, QWidget* now)
{
    if (IsOurs(now)) {
        if (m_focus)
            return;
        // A screen reader or the host put it here.
        const std::vector<CaptionStop> stops = Stops();
        const int entry = EntryStop(stops, -1);
        m_focus = ButtonPart(now);
        if (!m_focus && entry >= 0)
            m_focus = stops[static_cast<std::size_t>(entry)].hit;
        m_previous = old;
        InvalidateFocus();
        m_told();
        return;
    }
    if (!m_focus)
        return;
    if (!now) {
        Leave(); // the window was deactivated: when it comes back, the user works on
        return;
    }
    InvalidateFocus();
    m_focus.reset();
    m_previous = nullptr;
    m_told();
}

bool CaptionKeys::CanPress(const CaptionHit& part) const
{
    switch (part.part) {
    case CaptionPart::Item: {
        if (part.index < 0 || part.index >= m_strip.ItemCount())
            return false;
        const CaptionItem& item = m_strip.Item(part.index);
        return !item.disabled && (item.opensPopup || !m_strip.Form().itemsArePopups);
    }
    case CaptionPart::Flag:
        return m_strip.ShowsFlag();
    case CaptionPart::Button: {
        const QWidget& button = m_strip.Button(static_cast<UINT>(part.index));
        return button.isVisible() && button.isEnabled();
    }
    default:
        return false;
    }
}

bool CaptionKeys::OpensPopup(const CaptionHit& part) const
{
    switch (part.part) {
    case CaptionPart::Item:
        return m_strip.Item(part.index).opensPopup;
    case CaptionPart::Button:
        return part.index == kKvCaptionApplication || part.index == kKvCaptionMenu;
    default:
        return part.part == CaptionPart::Flag;
    }
}

std::vector<CaptionStop> CaptionKeys::Stops() const
{
    std::vector<CaptionStop> stops = CaptionStops(m_strip.Parts());
    for (CaptionStop& stop : stops)
        stop.enabled = CanPress(stop.hit);
    return stops;
}

std::optional<CaptionHit> CaptionKeys::ButtonPart(const QWidget* widget) const
{
    for (const UINT number : kCaptionButtons) {
        if (widget == &m_strip.Button(number))
            return CaptionHit{CaptionPart::Button, static_cast<int>(number)};
    }
    return std::nullopt;
}

bool CaptionKeys::IsOurs(const QWidget* widget) const
{
    return widget && (widget == &m_strip.Bar() || ButtonPart(widget));
}

void CaptionKeys::InvalidateFocus()
{
    if (m_focus && m_focus->part == CaptionPart::Item && m_focus->index < m_strip.ItemCount())
        m_strip.Invalidate(RingRect(m_strip.Item(m_focus->index).rect));
    else if (m_focus && m_focus->part == CaptionPart::Flag)
        m_strip.Invalidate(RingRect(m_strip.FlagRect()));
}

void CaptionKeys::DrawFocus(Graphics& graphics) const
{
    if (!m_focus || m_focus->part == CaptionPart::Button || !CanPress(*m_focus))
        return;
    const bool isItem = m_focus->part == CaptionPart::Item;
    const CRect ring = RingRect(isItem ? m_strip.Item(m_focus->index).rect : m_strip.FlagRect());
    DrawFocusRing(graphics, QRectF(QRect(ring)));
}

} // namespace kv
