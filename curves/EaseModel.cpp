#include "curves/EaseModel.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace kv {

namespace {

constexpr int kStartKey = 0;
constexpr int kEndKey = 1;

struct Release
{
    void operator()(IKvBezierCurve2D* curve) const { curve->Release(); }
};

std::unique_ptr<IKvBezierCurve2D, Release> NewKeys()
{
    IKvBezierCurve2D* curve = nullptr;
    if (KvCreateBezierCurve2D(&curve) == 0)
        throw std::bad_alloc();
    return std::unique_ptr<IKvBezierCurve2D, Release>(curve);
}

float Narrowed(double value)
{
    constexpr double most = std::numeric_limits<float>::max();
    return std::isnan(value) ? 0.0f : static_cast<float>(std::clamp(value, -most, most));
}

bool IsFinite(const SKvCurvePoint& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsSame(const SKvCurvePoint& a, const SKvCurvePoint& b)
{
    return a.x == b.x && a.y == b.y;
}

bool IsKey(EaseHandle handle)
{
    return handle == EaseHandle::Start || handle == EaseHandle::End;
}

// `curve` with one point elsewhere; the handle of a key goes along with it.
EaseCurve WithPoint(EaseCurve curve, EaseHandle handle, const SKvCurvePoint& place)
{
    if (IsKey(handle) && place.y != curve[handle].y) {
        SKvCurvePoint& along = curve[handle == EaseHandle::Start ? EaseHandle::Out : EaseHandle::In];
        along.y = place.y + (along.y - curve[handle].y);
    }
    curve[handle] = place;
    return curve;
}

} // namespace

EaseHandle KeyOf(EaseHandle handle)
{
    return handle == EaseHandle::Start || handle == EaseHandle::Out ? EaseHandle::Start : EaseHandle::End;
}

EaseRange ValueLimits(const EaseCurve& curve, EaseHandle handle)
{
    constexpr double all = std::numeric_limits<double>::infinity();
    if (IsKey(handle))
        return {curve.minimum, curve.maximum};
    if (curve.lock == 0)
        return {-all, all};
    const double key = curve[KeyOf(handle)].y;
    return handle == EaseHandle::Out ? EaseRange{key, key + curve.Span()}
                                     : EaseRange{key - curve.Span(), key};
}

std::optional<EaseHandle> HandleOf(const EaseHit& hit)
{
    const bool isIn = hit.part == EasePart::InHandle || hit.part == EasePart::InTangent;
    const bool isOut = hit.part == EasePart::OutHandle || hit.part == EasePart::OutTangent;
    const bool onLine = hit.part == EasePart::InTangent || hit.part == EasePart::OutTangent;
    if (onLine && !(hit.t > 0))
        return std::nullopt;
    if (hit.key == kStartKey && !isIn)
        return isOut ? EaseHandle::Out : EaseHandle::Start;
    if (hit.key == kEndKey && !isOut)
        return isIn ? EaseHandle::In : EaseHandle::End;
    return std::nullopt;
}

struct EaseModel::Impl
{
    struct Record
    {
        EasePoints points;
        std::uint32_t kind;
    };

    std::unique_ptr<IKvBezierCurve2D, Release> keys = NewKeys();
    EaseCurve loaded;
    EaseCurve curve;
    SKvCurvePoint origin; ///< of the keys
    bool isEditable = false;
    std::vector<Record> records;
    std::size_t current = 0;
    std::optional<EaseHit> drag;
    EaseCurve grabbed;

    void SetPoints(const EasePoints& points);
    bool TryPoints(const EasePoints& points);
    void Push(std::uint32_t kind);
    bool GoTo(std::size_t record);
    bool CanMove(EaseHandle handle) const { return isEditable && !(curve.lock != 0 && IsKey(handle)); }
    SKvCurvePoint Clamped(EaseHandle handle, SKvCurvePoint to) const;
    SKvCurvePoint Shortened(EaseHandle handle, SKvCurvePoint to) const;
    SKvCurvePoint AlongGrabbed(EaseHandle handle, SKvCurvePoint to) const;
    SKvCurvePoint Edited(EaseHandle handle, SKvCurvePoint to) const;
};

void EaseModel::Impl::SetPoints(const EasePoints& points)
{
    curve.points = points;
    const SKvCurvePoint tangents[] = {curve.OutTangent(), curve.InTangent()};
    const EaseHandle places[] = {EaseHandle::Start, EaseHandle::End};
    for (const int index : {kStartKey, kEndKey}) {
        SKvBezierKey key;
        keys->GetKey(index, key);
        const SKvCurvePoint place = curve[places[index]] - origin;
        key.x = Narrowed(place.x);
        key.y = Narrowed(place.y);
        (index == kStartKey ? key.outX : key.inX) = Narrowed(tangents[index].x);
        (index == kStartKey ? key.outY : key.inY) = Narrowed(tangents[index].y);
        keys->SetKey(index, key);
    }
}

bool EaseModel::Impl::TryPoints(const EasePoints& points)
{
    EaseCurve next = curve;
    next.points = points;
    if (!IsSensible(next) || !IsSingle(next[EaseHandle::Start] - origin) ||
        !IsSingle(next[EaseHandle::End] - origin))
        return false;
    SetPoints(points);
    return true;
}

void EaseModel::Impl::Push(std::uint32_t kind)
{
    if (!records.empty())
        records.resize(current + 1);
    records.push_back({curve.points, kind});
    current = records.size() - 1;
    curve.kind = kind;
}

bool EaseModel::Impl::GoTo(std::size_t record)
{
    drag.reset();
    current = record;
    SetPoints(records[record].points);
    curve.kind = records[record].kind;
    return true;
}

// x and y each for itself: a key keeps its time, a handle stays within the segment.
SKvCurvePoint EaseModel::Impl::Clamped(EaseHandle handle, SKvCurvePoint to) const
{
    const EaseRange values = ValueLimits(curve, handle);
    to.y = std::clamp(to.y, values.minimum, values.maximum);
    to.x = IsKey(handle) ? curve[handle].x
                         : std::clamp(to.x, curve[EaseHandle::Start].x, curve[EaseHandle::End].x);
    return to;
}

// A tangent at most as long as the segment is wide, in the same direction.
SKvCurvePoint EaseModel::Impl::Shortened(EaseHandle handle, SKvCurvePoint to) const
{
    const SKvCurvePoint& key = curve[KeyOf(handle)];
    const SKvCurvePoint& far = curve[handle == EaseHandle::Out ? EaseHandle::End : EaseHandle::Start];
    const double widths = (to.x - key.x) / (far.x - key.x);
    return widths > 1 ? SKvCurvePoint{far.x, key.y + (to.y - key.y) / widths} : to;
}

// The place nearest to `to` on the grabbed tangent's ray, measured in the segment's width and the span of
// values; short enough for the lock.
SKvCurvePoint EaseModel::Impl::AlongGrabbed(EaseHandle handle, SKvCurvePoint to) const
{
    const SKvCurvePoint& key = grabbed[KeyOf(handle)];
    const SKvCurvePoint tangent = grabbed[handle] - key;
    const SKvCurvePoint unit{tangent.x / curve.Width(), tangent.y / curve.Span()};
    const double squared = unit.x * unit.x + unit.y * unit.y;
    if (!IsSize(squared))
        return to;
    const SKvCurvePoint way{(to.x - key.x) / curve.Width(), (to.y - key.y) / curve.Span()};
    double length = std::max(0.0, (way.x * unit.x + way.y * unit.y) / squared);
    if (curve.lock != 0 && std::abs(length * unit.y) > 1)
        length = 1 / std::abs(unit.y);
    return {key.x + length * tangent.x, key.y + length * tangent.y};
}

// What the user did not ask for stays where it is, to the last bit.
SKvCurvePoint EaseModel::Impl::Edited(EaseHandle handle, SKvCurvePoint to) const
{
    const SKvCurvePoint& from = curve[handle];
    if (!CanMove(handle) || !IsFinite(to))
        return from;
    const SKvCurvePoint limited = Clamped(handle, to);
    return {to.x == from.x ? from.x : limited.x, to.y == from.y ? from.y : limited.y};
}

EaseModel::EaseModel() : m_impl(std::make_unique<Impl>())
{
    Load({});
}

EaseModel::~EaseModel() = default;

void EaseModel::Load(const EaseCurve& curve)
{
    m_impl->drag.reset();
    m_impl->records.clear();
    m_impl->loaded = m_impl->curve = curve;
    m_impl->isEditable = IsSensible(curve);
    m_impl->origin = m_impl->isEditable ? curve[EaseHandle::Start] : SKvCurvePoint{};
    m_impl->keys->Reset();
    m_impl->keys->AddKey({});
    m_impl->keys->AddKey({});
    m_impl->SetPoints(curve.points);
    m_impl->Push(curve.kind);
}

const EaseCurve& EaseModel::Loaded() const
{
    return m_impl->loaded;
}

const EaseCurve& EaseModel::Curve() const
{
    return m_impl->curve;
}

EaseCurve EaseModel::Recorded() const
{
    EaseCurve curve = m_impl->curve;
    curve.points = m_impl->records[m_impl->current].points;
    return curve;
}

bool EaseModel::IsEditable() const
{
    return m_impl->isEditable;
}

IKvBezierCurve2D& EaseModel::Keys()
{
    return *m_impl->keys;
}

SKvCurvePoint EaseModel::Origin() const
{
    return m_impl->origin;
}

bool EaseModel::BeginDrag(const EaseHit& hit)
{
    const auto handle = HandleOf(hit);
    if (m_impl->drag || !handle || !CanMove(*handle))
        return false;
    m_impl->drag = hit;
    m_impl->grabbed = m_impl->curve;
    return true;
}

const std::optional<EaseHit>& EaseModel::Drag() const
{
    return m_impl->drag;
}

void EaseModel::DragTo(SKvCurvePoint mouse, bool keepDirection)
{
    const auto handle = m_impl->drag ? HandleOf(*m_impl->drag) : std::nullopt;
    if (!handle)
        return;
    const EasePart part = m_impl->drag->part;
    const bool isLine = part == EasePart::InTangent || part == EasePart::OutTangent;
    const bool isAlong = keepDirection && !IsKey(*handle);
    if (isLine) {
        const SKvCurvePoint& key = m_impl->curve[KeyOf(*handle)];
        mouse = {key.x + (mouse.x - key.x) / m_impl->drag->t, key.y + (mouse.y - key.y) / m_impl->drag->t};
    }
    if (isAlong)
        mouse = m_impl->AlongGrabbed(*handle, mouse);
    if (isLine || isAlong)
        mouse = m_impl->Shortened(*handle, mouse);
    if (IsFinite(mouse))
        m_impl->TryPoints(WithPoint(m_impl->grabbed, *handle, m_impl->Clamped(*handle, mouse)).points);
}

void EaseModel::EndDrag()
{
    if (!m_impl->drag)
        return;
    m_impl->drag.reset();
    m_impl->Push(kKvEaseDrawn);
}

void EaseModel::CancelDrag()
{
    if (!m_impl->drag)
        return;
    m_impl->drag.reset();
    m_impl->SetPoints(m_impl->grabbed.points);
}

bool EaseModel::CanUndo() const
{
    return m_impl->isEditable && m_impl->current > 0;
}

bool EaseModel::CanRedo() const
{
    return m_impl->isEditable && m_impl->current + 1 < m_impl->records.size();
}

bool EaseModel::Undo()
{
    return CanUndo() && m_impl->GoTo(m_impl->current - 1);
}

bool EaseModel::Redo()
{
    return CanRedo() && m_impl->GoTo(m_impl->current + 1);
}

bool EaseModel::Revert()
{
    return m_impl->isEditable && m_impl->GoTo(0);
}

bool EaseModel::ApplyPreset(std::uint32_t kind, const EasePreset& preset)
{
    if (!m_impl->isEditable)
        return false;
    const EaseCurve& curve = m_impl->curve;
    const double width = curve.Width();
    EasePoints points = curve.points;
    points[1] = points[0] + SKvCurvePoint{preset.outX * width, preset.outY};
    points[2] = points[3] + SKvCurvePoint{-preset.inX * width, preset.inY};
    if (!m_impl->TryPoints(points))
        return false;
    m_impl->drag.reset();
    m_impl->Push(kind);
    return true;
}

bool EaseModel::CanMove(EaseHandle handle) const
{
    return m_impl->CanMove(handle);
}

bool EaseModel::Move(EaseHandle handle, SKvCurvePoint to)
{
    const SKvCurvePoint place = m_impl->Edited(handle, to);
    if (m_impl->drag || IsSame(place, m_impl->curve[handle]))
        return false;
    if (!m_impl->TryPoints(WithPoint(m_impl->curve, handle, place).points))
        return false;
    m_impl->Push(kKvEaseDrawn);
    return true;
}

bool EaseModel::MoveHandles(SKvCurvePoint out, SKvCurvePoint in)
{
    EaseCurve next = m_impl->curve;
    next[EaseHandle::Out] = m_impl->Edited(EaseHandle::Out, out);
    next[EaseHandle::In] = m_impl->Edited(EaseHandle::In, in);
    const bool isSame = IsSame(next[EaseHandle::Out], m_impl->curve[EaseHandle::Out]) &&
                        IsSame(next[EaseHandle::In], m_impl->curve[EaseHandle::In]);
    if (m_impl->drag || isSame || !m_impl->TryPoints(next.points))
        return false;
    m_impl->Push(kKvEaseDrawn);
    return true;
}

std::size_t EaseModel::RecordCount() const
{
    return m_impl->records.size();
}

} // namespace kv
