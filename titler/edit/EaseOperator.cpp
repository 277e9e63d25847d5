#include "edit/EaseOperator.h"

#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "time/Transport.h"
#include "window/Texts.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace titler {
namespace {

std::optional<Property> PropertyOf(const wchar_t* objectId, const wchar_t* paramName)
{
    if (objectId == nullptr || paramName == nullptr || std::wstring_view(objectId) != EaseOperator::kObject)
        return std::nullopt;
    for (int i = 0; i < kProperties; ++i)
        if (QString::fromWCharArray(paramName) == QLatin1String(TraitsOf(static_cast<Property>(i)).name))
            return static_cast<Property>(i);
    return std::nullopt;
}

bool IsSound(const SKvParamEaseData& data)
{
    const double numbers[] = {data.inTangentX,  data.inTangentY, data.outTangentX,
                              data.outTangentY, data.startY,     data.endY};
    return data.kind >= kKvEaseLinear && data.kind <= kKvEaseSmooth &&
           std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return std::isfinite(n); });
}

bool AsksForPreset(const SKvParamEaseData& data)
{
    const double numbers[] = {data.inTangentX, data.inTangentY, data.outTangentX, data.outTangentY,
                              data.startX,     data.startY,     data.endX,        data.endY,
                              data.minimum,    data.maximum};
    return data.kind != kKvEaseDrawn && data.lock == 0 &&
           std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return n == 0; });
}

bool IsLocked(Property property, const Key& start, const Key& end)
{
    return property == Property::Opacity && end.value > start.value;
}

// The values that a segment offers.
std::pair<double, double> RangeOf(Property property, const Key& start, const Key& end)
{
    const auto [low, high] = std::minmax(start.value, end.value);
    if (IsLocked(property, start, end))
        return {low, high};
    const PropertyTraits& limits = TraitsOf(property);
    const double room = low < high ? (high - low) / 2 : LookOf(property).easeSpan;
    return {std::max(limits.least, low - room), std::min(limits.most, high + room)};
}

SKvParamEaseData DataOf(Property property, const Key& start, const Key& end)
{
    const double factor = LookOf(property).factor;
    const Ease& ease = start.ease;
    const auto [low, high] = RangeOf(property, start, end);
    SKvParamEaseData data{};
    data.kind = ease.kind;
    data.inTangentX = ease.inX;
    data.inTangentY = ease.inY * factor;
    data.outTangentX = ease.outX;
    data.outTangentY = ease.outY * factor;
    data.startX = start.frame;
    data.startY = start.value * factor;
    data.endX = end.frame;
    data.endY = end.value * factor;
    data.minimum = low * factor;
    data.maximum = high * factor;
    data.lock = IsLocked(property, start, end) ? 1 : 0;
    return data;
}

// There and back rounds: a value that is shown as before stays what it is.
void StoreValue(double shown, Property property, Key& key)
{
    const double factor = LookOf(property).factor;
    const PropertyTraits& limits = TraitsOf(property);
    if (shown != key.value * factor)
        key.value = std::clamp(shown / factor, limits.least, limits.most);
}

void Store(const SKvParamEaseData& data, Property property, Key& start, Key& end)
{
    if (AsksForPreset(data)) {
        start.ease = PresetEase(data.kind);
        return;
    }
    const double factor = LookOf(property).factor;
    StoreValue(data.startY, property, start);
    StoreValue(data.endY, property, end);
    start.ease = SoundEase(
        {data.kind, data.outTangentX, data.outTangentY / factor, data.inTangentX, data.inTangentY / factor});
}

} // namespace

EaseOperator::EaseOperator(Document& document, Transport& transport)
    : m_document(document)
    , m_transport(transport)
{
}

// Always looked up anew: whatever happens to the project while the dialog is open, no key is held on to.
std::optional<EaseOperator::Segment> EaseOperator::Find(const wchar_t* objectId,
                                                        const wchar_t* paramName) const
{
    const std::optional<Property> property = PropertyOf(objectId, paramName);
    if (!property)
        return std::nullopt;
    const Animated& animated = m_document.Current().title[*property];
    const int index = SegmentAt(animated, m_transport.Frame());
    return index < 0 ? std::nullopt : std::optional(Segment{*property, animated, index});
}

int EaseOperator::RegisterParam(const wchar_t* objectId, const wchar_t* paramName)
{
    return PropertyOf(objectId, paramName) ? 1 : 0;
}

int EaseOperator::UnregisterParam(const wchar_t* objectId, const wchar_t* paramName)
{
    return PropertyOf(objectId, paramName) ? 1 : 0;
}

int EaseOperator::BeginEdit(const wchar_t* objectId, const wchar_t* paramName)
{
    const std::optional<Property> property = PropertyOf(objectId, paramName);
    if (!property || m_edited)
        return 0;
    m_document.EndRun();
    m_run = m_document.BeginRun(PropertyStep(kStepEase, *property));
    m_edited = property;
    return 1;
}

int EaseOperator::CommitEdit(const wchar_t* objectId, const wchar_t* paramName)
{
    if (!m_edited || PropertyOf(objectId, paramName) != m_edited)
        return 0;
    m_edited.reset();
    if (m_document.IsInRun(m_run))
        m_document.EndRun();
    return 1;
}

int EaseOperator::CancelEdit(const wchar_t* objectId, const wchar_t* paramName)
{
    if (!m_edited || PropertyOf(objectId, paramName) != m_edited)
        return 0;
    m_edited.reset();
    if (m_document.IsInRun(m_run))
        m_document.CancelRun();
    return 1;
}

int EaseOperator::GetEaseData(const wchar_t* objectId, const wchar_t* paramName, SKvParamEaseData& data)
{
    const std::optional<Segment> segment = Find(objectId, paramName);
    if (!segment)
        return 0;
    data = DataOf(segment->property, segment->Start(), segment->End());
    return 1;
}

int EaseOperator::SetEaseData(const wchar_t* objectId, const wchar_t* paramName, const SKvParamEaseData& data)
{
    const std::optional<Segment> segment = Find(objectId, paramName);
    if (!segment || segment->property != m_edited || !IsSound(data))
        return 0;
    // A step from elsewhere has ended our run: what follows is another one.
    if (!m_document.IsInRun(m_run)) {
        m_document.EndRun();
        m_run = m_document.BeginRun(PropertyStep(kStepEase, segment->property));
    }
    const int index = segment->index;
    m_document.UpdateRun([&](Project& project) {
        KeyList& keys = project.title[*m_edited].keys;
        Store(data, *m_edited, keys[index], keys[index + 1]);
    });
    return 1;
}

// @param really false only asks whether there is one.
int EaseOperator::Go(const wchar_t* objectId, const wchar_t* paramName, int by, bool really)
{
    const std::optional<Segment> segment = Find(objectId, paramName);
    if (!segment)
        return 0;
    const int to = segment->index + by;
    const KeyList& keys = segment->animated.keys;
    // A key behind the project's end cannot be gone to.
    if (to < 0 || to + 1 >= keys.size() || keys[to].frame > m_transport.LastFrame())
        return 0;
    if (really) // to where the ease shows
        m_transport.Seek(std::midpoint(keys[to].frame, keys[to + 1].frame));
    return 1;
}

int EaseOperator::CanGoPrevKey(const wchar_t* objectId, const wchar_t* paramName)
{
    return Go(objectId, paramName, -1, false);
}

int EaseOperator::CanGoNextKey(const wchar_t* objectId, const wchar_t* paramName)
{
    return Go(objectId, paramName, 1, false);
}

int EaseOperator::GoPrevKey(const wchar_t* objectId, const wchar_t* paramName)
{
    return Go(objectId, paramName, -1, true);
}

int EaseOperator::GoNextKey(const wchar_t* objectId, const wchar_t* paramName)
{
    return Go(objectId, paramName, 1, true);
}

} // namespace titler
