#include "layout/KvLayoutSelectorImpl.h"

#include "platform/SkinColours.h"
#include "platform/VirtualKey.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kPicked = 1;

bool EditsText(const QWidget* widget)
{
    return widget && widget->testAttribute(Qt::WA_InputMethodEnabled);
}

std::optional<kv::StripKey> StripKeyOf(UINT key)
{
    switch (key) {
    case VK_LEFT:
    case VK_UP:
        return kv::StripKey::Previous;
    case VK_RIGHT:
    case VK_DOWN:
        return kv::StripKey::Next;
    case VK_PRIOR:
        return kv::StripKey::PageBack;
    case VK_NEXT:
        return kv::StripKey::PageOn;
    case VK_HOME:
        return kv::StripKey::First;
    case VK_END:
        return kv::StripKey::Last;
    default:
        return std::nullopt;
    }
}

} // namespace

CKvLayoutSelector::Impl::Impl(CKvLayoutSelector& owner) : control(owner), access(owner, *this)
{
    IKvScrollLineHelper* across = nullptr;
    IKvScrollLineHelper* down = nullptr;
    IKvScrollRectHelper* both = nullptr;
    KvCreateScrollLineHelper(&across);
    KvCreateScrollLineHelper(&down);
    KvCreateScrollRectHelper(across, down, &both);
    columns.reset(across);
    rows.reset(down);
    scroll.reset(both);
}

kv::Reference<IKvLayoutSelectorData> CKvLayoutSelector::Impl::HeldData() const
{
    if (data)
        data->AddRef();
    return kv::Reference<IKvLayoutSelectorData>(data.get());
}

int CKvLayoutSelector::Impl::Count() const
{
    const kv::Reference<IKvLayoutSelectorData> held = HeldData();
    return held ? std::max(held->GetCount(), 0) : 0;
}

bool CKvLayoutSelector::Impl::IsLayoutSelected(int index) const
{
    const kv::Reference<IKvLayoutSelectorData> held = HeldData();
    return held && index < held->GetCount() && held->IsSelected(index) != 0;
}

IKvScrollLineHelper& CKvLayoutSelector::Impl::Line() const
{
    return vertical ? *rows : *columns;
}

kv::StripLayout::Range CKvLayoutSelector::Impl::InView(int shadow) const
{
    const CRect client = control.GetClientRect();
    std::int64_t x = 0;
    std::int64_t y = 0;
    scroll->ToContent(client.TopLeft(), x, y);
    const std::int64_t begin = vertical ? y : x;
    const int length = vertical ? client.Height() : client.Width();
    return layout.Reaching(begin - shadow, begin + length, Count());
}

bool CKvLayoutSelector::Impl::IsInView(int index) const
{
    const kv::StripLayout::Range range = InView(0);
    return index >= range.begin && index < range.end;
}

int CKvLayoutSelector::Impl::HitTest(CPoint point) const
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    scroll->ToContent(point, x, y);
    return layout.HitTest(x, y, Count());
}

kv::StripLook CKvLayoutSelector::Impl::Look() const
{
    kv::StripLook look;
    look.background =
        settings ? QColor::fromRgba(settings->background) : kv::SkinColour(L"keWindowBKColor", 0xFF2B2B2Eu);
    look.text = settings ? QColor::fromRgba(settings->textColour) : kv::TextColour();
    look.font = settings ? settings->font : control.font();
    look.enabled = control.isEnabled();
    return look;
}

kv::StripThumb CKvLayoutSelector::Impl::Thumb(int index)
{
    const kv::Reference<IKvLayoutSelectorData> held = HeldData();
    return held ? cache.Get(*held, index) : kv::StripThumb();
}

void CKvLayoutSelector::Impl::Repaint() const
{
    QRect rest = control.rect();
    if (bar)
        (vertical ? rest.setRight(bar->x() - 1) : rest.setBottom(bar->y() - 1));
    control.update(rest);
}

void CKvLayoutSelector::Impl::RepaintUnit(int index) const
{
    if (IsInView(index))
        control.update(QRect(RectOf(index)).adjusted(-1, -1, 1, 1)); // as far as whole device pixels reach
}

int CKvLayoutSelector::Impl::RingedLayout() const
{
    return control.hasFocus() && !isFocusByMove ? CurrentLayout() : -1;
}

void CKvLayoutSelector::Impl::DrawUnit(Graphics& graphics, const CRect& rect, int index,
                                       const kv::StripLook& look, int focused)
{
    // Counted each time: the host may lose layouts while it makes their pictures.
    if (index >= Count() || rect.IsRectEmpty())
        return;
    cache.SetStyle(kv::StripPainter::StyleFor(graphics, rect, look));
    const kv::StripThumb thumb = Thumb(index);
    kv::StripCell cell{rect, index};
    if (showsSelection && index == hot)
        cell.frame = kv::StripFrame::Hovered;
    else if (showsSelection && index < Count() && IsLayoutSelected(index))
        cell.frame = kv::StripFrame::Selected;
    cell.focused = index == focused;
    painter.DrawCell(graphics, control.GetClientRect(), cell, thumb, look);
}

void CKvLayoutSelector::Impl::UpdateClient()
{
    const CRect client = control.GetClientRect();
    if (bar)
        bar->setGeometry(kv::StripLayout::ScrollBarRect(client, vertical));
    UpdateThumbs();
}

void CKvLayoutSelector::Impl::UpdateThumbs()
{
    const std::int64_t position = motion ? motion->target : Line().GetPosition();
    DropMotion();
    const kv::StripLayout before =
        std::exchange(layout, kv::StripLayout(control.GetClientRect(), vertical, bar != nullptr, layoutSize));
    scroll->SetView(layout.Content());
    // Without a range of its own the new place would be cut at the end of the old one.
    if (before.Length() > 0 && layout.Length() == 0)
        collapsed = kv::StripPlace{before, position};
    std::int64_t target = position;
    if (layout.Length() > 0 && before.Length() > 0)
        target = layout.PositionFrom(before, position);
    else if (const auto place = layout.Length() > 0 ? std::exchange(collapsed, std::nullopt) : std::nullopt)
        target = layout.PositionFrom(place->layout, place->position);
    if (drag && layout.Length() > 0 && before.Length() > 0)
        drag->start = layout.PositionFrom(before, drag->start);
    UpdateScroll();
    Line().SetPosition(target);
    if (bar)
        bar->SetScrollPos(Line().GetPosition());
}

void CKvLayoutSelector::Impl::UpdateScroll()
{
    const int count = Count();
    const std::int64_t length = layout.TotalLength(count);
    scroll->SetVirtualSize(vertical ? layout.Across() : length, vertical ? length : layout.Across());
    hot = hot < count ? hot : -1;
    focus = std::min(focus, count - 1);
    if (motion)
        motion->target = std::min(motion->target, Line().GetRange());
    if (bar)
        bar->SetScroll(Line());
    Repaint();
    if (std::exchange(seenCount, count) != count)
        access.PartsChanged();
    access.UpdateFocus();
}

bool CKvLayoutSelector::Impl::ScrollTo(std::int64_t position)
{
    DropMotion();
    if (Line().SetPosition(position) == 0)
        return false;
    hot = -1; // another thumbnail is under the pointer now
    if (bar)
        bar->SetScrollPos(Line().GetPosition());
    Repaint();
    return true;
}

void CKvLayoutSelector::Impl::MoveOn()
{
    if (!motion)
        return;
    const std::int64_t target = motion->target;
    Line().SetPosition(control.isVisible() ? kv::StripMotionAt(motion->from, target, motion->clock.elapsed())
                                           : target);
    hot = -1;
    if (bar)
        bar->SetScrollPos(Line().GetPosition());
    Repaint();
    if (Line().GetPosition() == target)
        DropMotion();
}

void CKvLayoutSelector::Impl::DropMotion()
{
    motion.reset();
    control.KillTimer(kv::kStripMotionTimer);
}

void CKvLayoutSelector::Impl::ShowAtOnce(int index)
{
    const SKvScrollRect thumb = layout.ThumbAt(index);
    ScrollTo(vertical ? Line().PositionToShow(thumb.top, thumb.bottom)
                      : Line().PositionToShow(thumb.left, thumb.right));
}

bool CKvLayoutSelector::Impl::RunScrollCode(UINT code, std::int64_t position)
{
    SetHot(-1);
    switch (code) {
    case SB_LINEUP:
    case SB_PAGEUP:
        ScrollBy(-layout.Step());
        return true;
    case SB_LINEDOWN:
    case SB_PAGEDOWN:
        ScrollBy(layout.Step());
        return true;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        ScrollTo(position);
        return true;
    case SB_TOP:
        ScrollTo(0);
        return true;
    case SB_BOTTOM:
        ScrollTo(Line().GetRange());
        return true;
    default:
        return code == SB_ENDSCROLL;
    }
}

bool CKvLayoutSelector::Impl::Pick(int index, bool exclusive)
{
    const QPointer<CKvLayoutSelector> alive(&control);
    const kv::Reference<IKvLayoutSelectorData> held = HeldData();
    if (held)
        held->Select(index, exclusive ? 1 : 0);
    if (!alive || !held)
        return !alive.isNull();
    hot = -1;
    focus = index;
    UpdateScroll();
    access.SelectionChanged();
    KvSendMessage(control.parentWidget(), WM_COMMAND, MAKEWPARAM(control.GetDlgCtrlID(), kPicked),
                  reinterpret_cast<LPARAM>(&control));
    if (alive && index < Count())
        emit alive->LayoutPicked(index);
    return !alive.isNull();
}

void CKvLayoutSelector::Impl::SetHot(int index)
{
    const int before = std::exchange(hot, index);
    if (before == index)
        return;
    RepaintUnit(before);
    RepaintUnit(index);
}

void CKvLayoutSelector::Impl::SetFocusMark(int index)
{
    focus = index;
    Repaint();
    access.UpdateFocus();
}

void CKvLayoutSelector::Impl::TakeFocusByMove()
{
    if (control.hasFocus() || EditsText(control.window()->focusWidget()))
        return;
    isFocusByMove = true;
    control.setFocus(Qt::MouseFocusReason);
}

void CKvLayoutSelector::Impl::BeginDrag(CPoint point)
{
    DropMotion();
    drag = kv::StripDrag{point, Line().GetPosition()};
    control.SetCapture();
}

void CKvLayoutSelector::Impl::DragTo(CPoint point)
{
    ScrollBy(std::int64_t{2} * (layout.Along(point) - layout.Along(drag->anchor)));
    drag->anchor = point;
}

void CKvLayoutSelector::Impl::EndDrag()
{
    drag.reset();
    control.ReleaseCapture();
}

bool CKvLayoutSelector::Impl::RunKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    const int count = Count(); // once: a host may lose layouts at any question
    const int current = std::min(CurrentLayout(), count - 1);
    const bool withControl = modifiers.testFlag(Qt::ControlModifier);
    if (current < 0)
        return false;
    isFocusByMove = false;
    if (key == VK_SPACE || key == VK_RETURN) {
        ShowAtOnce(current);
        Pick(current, !withControl);
        return true;
    }
    const std::optional<kv::StripKey> step = StripKeyOf(key);
    if (!step)
        return false;
    const auto page = static_cast<int>(
        std::min<std::int64_t>((Line().GetViewLength() + kv::StripLayout::kSpacing) / layout.Step(), count));
    const int target = kv::StripKeyTarget(current, *step, page, count);
    if (target == current && kv::IsArrow(key))
        return true;
    ShowAtOnce(target);
    if (withControl)
        SetFocusMark(target);
    else
        Pick(target, true);
    return true;
}

int CKvLayoutSelector::Impl::CurrentLayout() const
{
    const int count = Count();
    if (count == 0 || focus >= 0)
        return std::min(focus, count - 1);
    // Nobody has been there yet: what the host shows as selected, where that is in view.
    const kv::StripLayout::Range range = InView(0);
    for (int index = range.begin; index < range.end; ++index)
        if (IsLayoutSelected(index))
            return index;
    return 0;
}

void CKvLayoutSelector::Impl::PickLayout(int index)
{
    if (index < Count())
        Pick(index, true);
}

void CKvLayoutSelector::Impl::FocusLayout(int index)
{
    if (index >= Count())
        return;
    const QPointer<CKvLayoutSelector> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (!alive)
        return;
    ShowAtOnce(index);
    SetFocusMark(index);
}
