#include "color/KvColorMapWndImpl.h"

#include "color/ColourMapLayout.h"
#include "platform/VirtualKey.h"

#include <QPointer>

#include <utility>

CKvColorMapWnd::Impl::Impl(CKvColorMapWnd& owner) : control(owner), told(model.Value()), access(owner, *this)
{
}

kv::ColourMapShape CKvColorMapWnd::Impl::Shape() const
{
    return {type, control.GetLockType(), control.GetClientRect()};
}

kv::ColourState CKvColorMapWnd::Impl::ColourAt(CPoint point) const
{
    kv::ColourPanelModel there = model;
    const kv::ColourPlace place = kv::PlaceAt(control.GetClientRect(), point);
    if (IsField())
        there.MoveMap(place.x, place.y);
    else if (type == kKvColorMapSlider)
        there.MoveSlider(place.y);
    else
        there.MoveAlpha(place.y);
    return there.Colour();
}

void CKvColorMapWnd::Impl::Show(const kv::ColourState& colour)
{
    if (colour == model.Colour())
        return;
    model.Restore(colour);
    control.update();
    access.Update();
}

void CKvColorMapWnd::Impl::Set(const kv::ColourState& colour)
{
    Show(colour);
    if (isNotifying)
        return;
    told = model.Value();
    if (dragFrom)
        dragFrom = colour;
}

bool CKvColorMapWnd::Impl::Notify(EKvColorPhase phase)
{
    const QPointer<CKvColorMapWnd> alive(&control);
    const UINT id = control.GetDlgCtrlID();
    DWORD colour = model.Value();
    KvColorNotifyRecord record{{&control, id, kKvColorNotifyCode}, phase, &colour, sizeof(colour)};
    const bool outer = std::exchange(isNotifying, true);
    KvSendMessage(control.parentWidget(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
    if (alive)
        emit alive->ColorChanged(phase);
    if (const DWORD now = alive ? model.Value() : 0; alive && std::exchange(told, now) != now)
        emit alive->ColorEdited(alive->Colour());
    if (!alive)
        return false;
    isNotifying = outer;
    return true;
}

bool CKvColorMapWnd::Impl::Begin()
{
    const QPointer<CKvColorMapWnd> alive(&control);
    emit control.RunBeginning();
    return !alive.isNull();
}

void CKvColorMapWnd::Impl::DragTo(CPoint point)
{
    const bool begins = !dragFrom;
    if (begins && (!Begin() || !control.HasCapture())) // a parent that opens a window there takes the mouse
        return;
    if (begins)
        dragFrom = model.Colour();
    Show(ColourAt(point));
    Notify(begins ? kKvPhaseBegin : kKvPhaseContinue);
}

bool CKvColorMapWnd::Impl::EndDrag()
{
    if (!dragFrom)
        return true;
    dragFrom.reset();
    control.ReleaseCapture();
    return Notify(kKvPhaseEnd);
}

void CKvColorMapWnd::Impl::CancelDrag()
{
    Show(*dragFrom);
    if (Notify(kKvPhaseContinue))
        EndDrag();
}

void CKvColorMapWnd::Impl::EditOnce(const std::function<bool(kv::ColourPanelModel&)>& rule)
{
    if (!EndDrag())
        return;
    if (kv::ColourPanelModel tried = model; !rule(tried))
        return;
    if (!Begin() || !rule(model))
        return;
    control.update();
    access.Update();
    for (const EKvColorPhase phase : {kKvPhaseBegin, kKvPhaseContinue, kKvPhaseEnd}) {
        if (!Notify(phase))
            return;
    }
}

void CKvColorMapWnd::Impl::Step(int stepsX, int stepsY)
{
    if (const auto right = kv::ChannelToTheRight(Shape()))
        access.FollowChannel(stepsX != 0 ? *right : kv::ChannelUpwards(Shape()));
    EditOnce([&](kv::ColourPanelModel& colour) {
        if (IsField())
            return colour.StepMap(stepsX, stepsY);
        const int steps = stepsX + stepsY;
        return type == kKvColorMapSlider ? colour.StepSlider(steps) : colour.StepAlpha(steps);
    });
}

void CKvColorMapWnd::Impl::EnterValue(kv::ColourChannel channel, int value)
{
    const int steps = value - model.Colour().Shown(channel);
    const bool isRight = channel == kv::ChannelToTheRight(Shape());
    Step(isRight ? steps : 0, isRight ? 0 : steps);
}

bool CKvColorMapWnd::Impl::RunKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    constexpr int kPage = 10;
    constexpr int kWhole = 1000; // more than any range; the model stops at its end
    if (kv::IsCommand(modifiers))
        return false;
    const int step = modifiers.testFlag(Qt::ShiftModifier) ? kPage : 1;
    const auto along = [this](int steps) { return IsField() ? Step(steps, 0) : Step(0, steps); };
    switch (key) {
    case VK_LEFT:
        Step(-step, 0);
        return true;
    case VK_RIGHT:
        Step(step, 0);
        return true;
    case VK_UP:
        Step(0, step);
        return true;
    case VK_DOWN:
        Step(0, -step);
        return true;
    case VK_PRIOR:
        Step(0, kPage);
        return true;
    case VK_NEXT:
        Step(0, -kPage);
        return true;
    case VK_HOME:
        along(-kWhole);
        return true;
    case VK_END:
        along(kWhole);
        return true;
    default:
        return false;
    }
}
