#include "color/KvGradientCtrlImpl.h"

#include "color/GradientKeys.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/ColourClipboard.h"

#include <QPointer>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kTextPercent = 20018;

} // namespace

CKvGradientCtrl::Impl::Impl(CKvGradientCtrl& owner) : control(owner), access(owner, model, layout, *this) {}

kv::GradientLook CKvGradientCtrl::Impl::Look() const
{
    const int draggedMidPoint = drag ? drag->midPoint : -1;
    return {control.isEnabled(), active || editing, blinkPhase, draggedMidPoint};
}

void CKvGradientCtrl::Impl::Redraw(kv::GradientPainter::Area area)
{
    painter.Invalidate(area);
    control.update(painter.AreaRect(layout, area));
}

void CKvGradientCtrl::Impl::RedrawAll()
{
    painter.InvalidateAll();
    control.update();
    access.Update();
}

bool CKvGradientCtrl::Impl::Notify(EKvGradientEvent event, EKvGradientPhase phase, SKvCGGradientKey* key)
{
    const QPointer<CKvGradientCtrl> alive(&control);
    constexpr std::int32_t colourSize = sizeof(key->colour);
    GradientNotifyRecord record{{&control, event, kKvGradientNotifyCode}, phase, key, key ? colourSize : 0};
    // An edit at once has changed the stops by its begin, a run does by each step.
    const bool isEdit = event == kKvGradientStopsEdited &&
                        (phase == kKvPhaseBegin || (phase == kKvPhaseContinue && changing));
    KvSendMessage(control.parentWidget(), WM_NOTIFY, control.GetDlgCtrlID(),
                  reinterpret_cast<LPARAM>(&record));
    if (alive)
        emit alive->GradientChanged(static_cast<int>(event), phase);
    if (alive && isEdit)
        emit alive->StopsEdited();
    // An edit may select another stop too: one added, moved past its neighbour, or next to one taken away.
    if (alive) {
        const int stop = control.GetSelectedKey();
        if (std::exchange(toldStop, stop) != stop && event != kKvGradientDataSet)
            emit alive->StopSelected(stop);
    }
    return !alive.isNull();
}

bool CKvGradientCtrl::Impl::NotifyChange()
{
    return Notify(kKvGradientStopsEdited, std::exchange(changing, true) ? kKvPhaseContinue : kKvPhaseBegin);
}

bool CKvGradientCtrl::Impl::EditOnce(const std::function<bool(kv::GradientModel&)>& rule)
{
    if (!EndInput() || !rule(model))
        return false;
    RedrawAll();
    for (const EKvGradientPhase phase : {kKvPhaseBegin, kKvPhaseContinue, kKvPhaseEnd}) {
        if (!Notify(kKvGradientStopsEdited, phase))
            break;
    }
    return true;
}

void CKvGradientCtrl::Impl::Select(int index)
{
    if (!model.Select(index))
        return;
    Redraw(kv::GradientPainter::MidStrip);
    Redraw(kv::GradientPainter::KeyStrip);
    access.Update();
}

void CKvGradientCtrl::Impl::SelectKey(int index)
{
    Select(index);
    Notify(kKvGradientStopSelected, kKvPhaseBegin, model.SelectedKey());
}

void CKvGradientCtrl::Impl::AddSilently(float position)
{
    model.AddKey(position);
    RedrawAll();
    changing = true;
}

void CKvGradientCtrl::Impl::AddKeyAt(float position)
{
    AddSilently(position);
    Notify(kKvGradientStopsEdited, kKvPhaseBegin);
}

std::function<bool()> CKvGradientCtrl::Impl::WatchSelection()
{
    // Stops that a host sets keep their identities by index: the place tells them from those before.
    const auto place = [this] {
        const SKvCGGradientKey* stop = model.SelectedKey();
        return std::pair(model.IdOf(model.Selected()), stop ? kv::ClampPosition(stop->position) : 0.0f);
    };
    return [alive = QPointer<CKvGradientCtrl>(&control), place, before = place()] {
        return alive && place() == before;
    };
}

void CKvGradientCtrl::Impl::Cut()
{
    if (!model.CanDelete())
        return;
    const std::function<bool()> isStillMeant = WatchSelection(); // the clipboard tells the host at once
    if (control.CopyColor() && isStillMeant())
        control.DeleteCurrentKey();
}

bool CKvGradientCtrl::Impl::Paste(std::uint32_t colour)
{
    return EditOnce([colour](kv::GradientModel& stops) {
        if (!stops.HasSelection())
            return false;
        stops.SetSelectedColour(colour);
        return true;
    });
}

void CKvGradientCtrl::Impl::BeginDrag(kv::GradientDrag::Kind kind, CPoint point, float value, int midPoint)
{
    drag = kv::GradientDrag{kind, point, value, midPoint, model.Stops()};
    control.SetCapture();
}

void CKvGradientCtrl::Impl::PressStop(CPoint point)
{
    const int hit = layout.HitKey(model, point);
    if (hit < 0 && !model.CanAdd())
        return;
    // The drag begins before the parent hears of it, so that whatever the handler does can end it.
    const float position =
        hit < 0 ? layout.PositionAt(point.x) : model.Keys()[static_cast<std::size_t>(hit)].position;
    BeginDrag(kv::GradientDrag::Stop, point, position, -1);
    if (hit < 0)
        AddKeyAt(position);
    else
        SelectKey(hit);
}

void CKvGradientCtrl::Impl::PressMidPoint(CPoint point)
{
    const int hit = layout.HitMidPoint(model, point);
    if (hit < 0)
        return;
    BeginDrag(kv::GradientDrag::MidPoint, point, model.MidPoint(hit), hit);
    Redraw(kv::GradientPainter::MidStrip);
}

void CKvGradientCtrl::Impl::DragTo(CPoint point)
{
    if (drag->kind == kv::GradientDrag::MidPoint) {
        DragMidPointTo(point);
        return;
    }
    const std::optional<float> position = layout.DraggedPosition(drag->startValue, point.x - drag->start.x);
    if (position)
        model.PlaceKey(model.Selected(), *position);
    RedrawAll();
    NotifyChange();
}

void CKvGradientCtrl::Impl::DragMidPointTo(CPoint point)
{
    const std::optional<float> dragged =
        layout.DraggedMidPoint(model, drag->midPoint, drag->startValue, point.x - drag->start.x);
    if (dragged)
        model.SetMidPoint(drag->midPoint,
                          control.IsLeftControlDown() ? kv::SnapMidPoint(*dragged, m_fAttachPos) : *dragged);
    Redraw(kv::GradientPainter::MidStrip);
    Redraw(kv::GradientPainter::Palette);
    access.Update();
    NotifyChange();
}

bool CKvGradientCtrl::Impl::EndInput()
{
    DropEntry();
    if (!drag && !changing)
        return true;
    drag.reset();
    control.ReleaseCapture();
    Redraw(kv::GradientPainter::MidStrip);
    // Everything is put away before the parent hears of it: its handler may well set the stops anew.
    return !std::exchange(changing, false) || Notify(kKvGradientStopsEdited, kKvPhaseEnd);
}

void CKvGradientCtrl::Impl::CancelDrag()
{
    // Without a run the stops are as they were, but for what the host has done to them since.
    if (changing)
        model.Restore(drag->before);
    else
        model.Select(drag->before.selected);
    drag.reset();
    control.ReleaseCapture();
    RedrawAll();
    if (changing && NotifyChange())
        EndInput();
}

bool CKvGradientCtrl::Impl::RunKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    using Command = kv::GradientKeyCommand;
    const std::optional<Command> command = kv::GradientKeyCommandOf(key, modifiers);
    if (!command)
        return false;
    DropEntry();
    const int selected = model.Selected();
    const auto moveMidPoint = [this, &command](int midPoint) {
        if (midPoint >= 1 && midPoint < model.Count())
            SetMidPoint(midPoint, model.MidPoint(midPoint) + static_cast<float>(command->amount) * 0.01f);
    };
    switch (command->kind) {
    case Command::Delete:
        control.DeleteCurrentKey();
        break;
    case Command::Insert:
        EditOnce([](kv::GradientModel& stops) { return stops.InsertKey(); });
        break;
    case Command::SelectFirst:
        SelectByKey(0);
        break;
    case Command::SelectLast:
        SelectByKey(model.Count() - 1);
        break;
    case Command::SelectStep:
        SelectByKey(selected + command->amount);
        break;
    case Command::MoveStop:
        if (const SKvCGGradientKey* stop = model.SelectedKey())
            PlaceStop(selected, layout.Shifted(stop->position, command->amount));
        break;
    case Command::MoveMidBefore:
        moveMidPoint(selected);
        break;
    case Command::MoveMidAfter:
        moveMidPoint(selected + 1);
        break;
    }
    return true;
}

void CKvGradientCtrl::Impl::SelectByKey(int index)
{
    const bool isStop = index >= 0 && index < model.Count();
    if (isStop && index != model.Selected() && EndInput())
        SelectKey(index);
}

void CKvGradientCtrl::Impl::PlaceStop(int stop, double position)
{
    EditOnce([stop, position](kv::GradientModel& stops) {
        if (stop < 0 || stop >= stops.Count())
            return false;
        if (stops.Keys()[static_cast<std::size_t>(stop)].position == kv::ClampPosition(position))
            return false;
        stops.PlaceKey(stop, position);
        return true;
    });
}

void CKvGradientCtrl::Impl::SetMidPoint(int stop, float midPoint)
{
    EditOnce([stop, midPoint](kv::GradientModel& stops) { return stops.SetMidPoint(stop, midPoint); });
}

void CKvGradientCtrl::Impl::FocusStop(int stop)
{
    const QPointer<CKvGradientCtrl> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (alive)
        SelectByKey(stop);
}

void CKvGradientCtrl::Impl::TypePercent(UINT character)
{
    entry.Type(character);
    ShowEntry();
}

bool CKvGradientCtrl::Impl::RunEntryKey(UINT key)
{
    if (!entry.IsPending())
        return false;
    switch (key) {
    case VK_BACK:
        entry.Erase();
        ShowEntry();
        return true;
    case VK_ESCAPE:
        DropEntry();
        return true;
    case VK_RETURN: {
        const std::optional<double> position = entry.Take();
        QToolTip::hideText();
        if (position)
            PlaceStop(model.Selected(), *position);
        return true;
    }
    default:
        return false;
    }
}

void CKvGradientCtrl::Impl::ShowEntry()
{
    const SKvCGGradientKey* stop = model.SelectedKey();
    if (!entry.IsPending() || !stop) {
        QToolTip::hideText();
        return;
    }
    const CRect marker = layout.KeyBox(stop->position);
    const std::wstring text = kv::FillText(kv::LoadText(kTextPercent), {entry.Text()});
    QToolTip::showText(control.mapToGlobal(QPoint(marker.left, marker.top)), KvToQString(text), &control);
}

void CKvGradientCtrl::Impl::DropEntry()
{
    if (!entry.IsPending())
        return;
    entry.Drop();
    QToolTip::hideText();
}

void CKvGradientCtrl::Impl::RunMenuCommand(UINT command, CPoint point, bool byKey)
{
    switch (command) {
    case kv::kGradientCopy:
        control.CopyColor();
        break;
    case kv::kGradientPaste:
        PasteAt(point, byKey);
        break;
    case kv::kGradientCut:
        Cut();
        break;
    case kv::kGradientDelete:
        control.DeleteCurrentKey();
        break;
    case kv::kGradientReset:
        control.ResetDefault();
        break;
    case kv::kGradientReverse:
        control.ReverseKeys();
        break;
    case kv::kGradientReflect:
        control.AddReverse();
        break;
    case kv::kGradientExchangeBefore:
        control.ExchangeColor(0);
        break;
    case kv::kGradientExchangeAfter:
        control.ExchangeColor(1);
        break;
    case kv::kGradientSameSpace:
        control.SameSpace();
        break;
    default:
        break;
    }
}

void CKvGradientCtrl::Impl::PasteAt(CPoint point, bool byKey)
{
    const std::optional<std::uint32_t> colour = kv::ClipboardColour();
    if (!colour || !EndInput())
        return;
    const int hit = byKey && model.HasSelection() ? model.Selected() : layout.HitKey(model, point);
    if (hit < 0 && !model.CanAdd())
        return;
    if (hit < 0)
        AddSilently(layout.PositionAt(point.x));
    else
        Select(hit);
    const std::function<bool()> isStillMeant = WatchSelection();
    const bool isAlive = hit < 0 ? Notify(kKvGradientStopsEdited, kKvPhaseBegin)
                                 : Notify(kKvGradientStopSelected, kKvPhaseBegin, model.SelectedKey());
    if (!isAlive)
        return;
    if (!isStillMeant()) {
        EndInput();
        return;
    }
    // The triple closes what the added stop began; an end before it would close a run that nobody opened.
    changing = false;
    Paste(*colour);
}
