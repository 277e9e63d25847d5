#include "curves/KvParamBezierWndImpl.h"

#include <QPointer>

#include <utility>

namespace {

constexpr double kZoomPixels = 500; // of a middle drag that double the range shown

SKvCurvePoint AsPoint(CPoint pixel)
{
    return {static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
}

} // namespace

CKvParamBezierWnd::Impl::Impl(CKvParamBezierWnd& owner, IKvParamBezierInfo* infoObject,
                              IKvParamBezierCtrlCallback* callbackObject)
    : control(owner)
    , info(infoObject)
    , callback(callbackObject)
    , access(owner, *this)
{
    LoadSkin();
}

kv::EaseLayout CKvParamBezierWnd::Impl::Layout() const
{
    const kv::EaseCurve& curve = model.Curve();
    return {control.GetClientRect(), curve[kv::EaseHandle::Start].x, curve[kv::EaseHandle::End].x, view};
}

std::optional<kv::EaseHit> CKvParamBezierWnd::Impl::HitTest(CPoint point)
{
    return Layout().HitTest(model.Keys(), model.Origin(), point);
}

kv::EaseLook CKvParamBezierWnd::Impl::Look() const
{
    kv::EaseLook look;
    look.enabled = control.isEnabled();
    look.focused = control.hasFocus();
    look.editable = CanEdit();
    look.colours = colours;
    look.selected = selected;
    look.entry = KvToQString(entry.Text());
    look.frameLength = frameLength;
    look.speed = showSpeed;
    look.initialCurve = showInitialCurve;
    // What is dragged, else what is pointed at, else what the keys move.
    const auto& drag = model.Drag();
    if (drag)
        look.place = model.Curve()[kv::HandleOf(*drag).value()];
    else if (pointer)
        look.place = Layout().ToCurve(AsPoint(*pointer));
    else if (selected && look.focused)
        look.place = model.Curve()[*selected];
    return look;
}

void CKvParamBezierWnd::Impl::Redraw()
{
    control.update();
    access.Update();
}

void CKvParamBezierWnd::Impl::LoadSkin()
{
    colours.Load();
}

bool CKvParamBezierWnd::Impl::SendCurve(std::uint32_t kind)
{
    const QPointer<CKvParamBezierWnd> alive(&control);
    info->SetCurve(kv::Coordinates(model.Curve().points).data(), model.Curve().lock, kind);
    if (alive)
        emit alive->CurveChanged(static_cast<int>(kind));
    return !alive.isNull();
}

void CKvParamBezierWnd::Impl::TellHistory()
{
    const QPointer<CKvParamBezierWnd> alive(&control);
    if (callback)
        callback->UndoChanged();
    if (alive)
        emit alive->HistoryChanged();
}

void CKvParamBezierWnd::Impl::Load()
{
    const QPointer<CKvParamBezierWnd> alive(&control);
    kv::EaseCurve curve;
    bool hasGiven = false;
    if (info) {
        kv::EaseCurve given;
        double points[8] = {};
        hasGiven = info->GetCurve(points, given.minimum, given.maximum, given.lock, given.kind) != 0;
        if (hasGiven) {
            given.points = kv::PointsOf(points);
            curve = given;
        }
        if (!alive)
            return;
    }
    gesture = kv::EaseGesture::None;
    control.ReleaseCapture();
    entry.Clear();
    model.Load(curve);
    ++loads;
    isRead = hasGiven;
    view = {curve.minimum, curve.maximum};
    if (selected && !CanMove(*selected))
        selected.reset();
    Redraw();
    TellHistory();
}

int CKvParamBezierWnd::Impl::GoTo(bool (kv::EaseModel::*step)())
{
    if (!CanEdit() || !(model.*step)())
        return 0;
    DropDrag();
    SendCurve(model.Curve().kind);
    return 1;
}

int CKvParamBezierWnd::Impl::ApplyPreset(std::uint32_t kind, PresetQuery query)
{
    if (!CanEdit())
        return 0;
    const QPointer<CKvParamBezierWnd> alive(&control);
    kv::EasePreset preset;
    const bool isKnown = query ? (info->*query)(&preset.outX, &preset.outY, &preset.inX, &preset.inY) != 0
                               : (info->ApplyLinear(), true);
    if (!alive || !isKnown || !CanEdit() || !model.ApplyPreset(kind, preset))
        return 0;
    DropDrag();
    TellHistory();
    return 1;
}

void CKvParamBezierWnd::Impl::Edit(const std::function<bool(kv::EaseModel&)>& rule)
{
    if (!CanEdit() || !rule(model))
        return;
    entry.Clear();
    Redraw();
    const unsigned loadsBefore = loads;
    // A host that loads meanwhile has heard of its fresh history; this record is not in it.
    if (SendCurve(kKvEaseDrawn) && loads == loadsBefore)
        TellHistory();
}

void CKvParamBezierWnd::Impl::Press(CPoint point)
{
    DropEntry();
    const auto hit = HitTest(point);
    if (!hit || !CanEdit() || !model.BeginDrag(*hit))
        return;
    gesture = kv::EaseGesture::Drag;
    control.SetCapture();
    Select(kv::HandleOf(*hit));
    Redraw();
}

void CKvParamBezierWnd::Impl::BeginViewGesture(kv::EaseGesture kind, CPoint point)
{
    gesture = kind;
    startView = view;
    startPoint = point;
    control.SetCapture();
}

bool CKvParamBezierWnd::Impl::MoveGesture(CPoint point, Qt::KeyboardModifiers modifiers)
{
    switch (gesture) {
    case kv::EaseGesture::None:
        return false;
    case kv::EaseGesture::Drag:
        DragTo(point, modifiers.testFlag(Qt::ControlModifier));
        break;
    case kv::EaseGesture::Zoom: {
        const kv::EaseRange whole{model.Curve().minimum, model.Curve().maximum};
        SetView(kv::Zoomed(startView, whole, 1.0 + (point.y - startPoint.y) / kZoomPixels));
        break;
    }
    case kv::EaseGesture::Pan: {
        // Values alone matter, also where the segment has no width.
        const kv::EaseLayout atStart(control.GetClientRect(), 0, 1, startView);
        const double by = atStart.ToCurve(AsPoint(startPoint)).y - atStart.ToCurve(AsPoint(point)).y;
        SetView(kv::Moved(startView, by));
        break;
    }
    }
    return true;
}

void CKvParamBezierWnd::Impl::DragTo(CPoint point, bool keepDirection)
{
    const kv::EaseLayout layout = Layout();
    if (!layout.IsMapped())
        return;
    model.DragTo(layout.ToCurve(AsPoint(layout.ClampedToPlot(point))), keepDirection);
    Redraw();
    SendCurve(kKvEaseDrawn);
}

void CKvParamBezierWnd::Impl::EndGesture()
{
    const kv::EaseGesture ended = std::exchange(gesture, kv::EaseGesture::None);
    if (ended == kv::EaseGesture::None)
        return;
    control.ReleaseCapture();
    if (ended != kv::EaseGesture::Drag)
        return;
    model.EndDrag();
    Redraw();
    TellHistory();
}

void CKvParamBezierWnd::Impl::CancelGesture()
{
    const kv::EaseGesture ended = std::exchange(gesture, kv::EaseGesture::None);
    control.ReleaseCapture();
    if (ended != kv::EaseGesture::Drag) {
        SetView(startView);
        return;
    }
    model.CancelDrag();
    Redraw();
    SendCurve(model.Curve().kind);
}

void CKvParamBezierWnd::Impl::DropDrag()
{
    if (gesture == kv::EaseGesture::Drag) {
        gesture = kv::EaseGesture::None;
        control.ReleaseCapture();
    }
    entry.Clear();
    Redraw();
}

void CKvParamBezierWnd::Impl::SetView(const kv::EaseRange& range)
{
    view = range;
    control.update();
}

void CKvParamBezierWnd::Impl::ResetView()
{
    SetView({model.Curve().minimum, model.Curve().maximum});
}

void CKvParamBezierWnd::Impl::Hover(std::optional<CPoint> point)
{
    const kv::EaseLayout layout = Layout();
    const bool isInPlot = point && layout.IsMapped() && layout.plot.PtInRect(*point);
    const auto before = std::exchange(pointer, isInPlot ? point : std::nullopt);
    if (before != pointer)
        control.update(kv::EasePlaceRect(layout));
}

void CKvParamBezierWnd::Impl::PlaceHandle(kv::EaseHandle handle, SKvCurvePoint place)
{
    Edit([&](kv::EaseModel& ease) { return ease.Move(handle, place); });
}

void CKvParamBezierWnd::Impl::FocusHandle(kv::EaseHandle handle)
{
    const QPointer<CKvParamBezierWnd> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (alive && CanMove(handle))
        Select(handle);
}
