#include "color/GradientModel.h"

#include "color/GradientColour.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr std::uint32_t kNewStopColour = 0xFFFF0000u;
constexpr float kHalfWay = 0.5f;

constexpr SKvCGGradientKey kFirstStops[] = {
    {0xFF0000FFu, 0.0f, 0.0f},
    {0xFFFFFF00u, 0.3f, 0.5f},
    {0xFFFF0000u, 0.6f, 0.5f},
    {0xFFFF00FFu, 1.0f, 0.5f},
};

double NumberOrZero(double value)
{
    return std::isnan(value) ? 0.0 : value;
}

} // namespace

float SnapMidPoint(float value, std::span<const float> places)
{
    const auto near = [value](float place) { return std::fabs(value - place) < 0.05f; };
    const auto place = std::find_if(places.begin(), places.end(), near);
    return place == places.end() ? value : *place;
}

float ClampPosition(double position)
{
    return static_cast<float>(std::clamp(NumberOrZero(position), 0.0, 1.0));
}

GradientModel::GradientModel()
{
    SetData(static_cast<int>(std::size(kFirstStops)), kFirstStops);
}

std::span<const SKvCGGradientKey> GradientModel::Keys() const
{
    return {m_stops.keys.data(), static_cast<std::size_t>(m_stops.count)};
}

std::uint32_t GradientModel::IdOf(int index) const
{
    return IsIndex(index) ? m_stops.ids[static_cast<std::size_t>(index)] : 0;
}

int GradientModel::IndexOf(std::uint32_t id) const
{
    const auto end = m_stops.ids.begin() + m_stops.count;
    const auto found = std::find(m_stops.ids.begin(), end, id);
    return found == end ? -1 : static_cast<int>(found - m_stops.ids.begin());
}

std::uint32_t GradientModel::SelectedColour() const
{
    return HasSelection() ? Key(m_stops.selected).colour : 0;
}

bool GradientModel::Select(int index)
{
    return IsIndex(index) && std::exchange(m_stops.selected, index) != index;
}

bool GradientModel::SetSelectedColour(std::uint32_t colour)
{
    return HasSelection() && std::exchange(Key(m_stops.selected).colour, colour) != colour;
}

void GradientModel::SetCount(int count)
{
    for (int i = m_stops.count; i < count; ++i)
        Id(i) = ++m_lastId;
    m_stops.count = count;
}

bool GradientModel::SetData(int count, const SKvCGGradientKey* keys)
{
    if (keys == nullptr && count > 0)
        return false;
    const int copied = std::clamp(count, 0, kMaxKeys);
    if (keys != nullptr && keys != m_stops.keys.data())
        std::copy_n(keys, copied, m_stops.keys.begin());
    SetCount(count < 0 ? kMaxKeys : copied);
    if (m_stops.selected >= m_stops.count)
        m_stops.selected = 0;
    return true;
}

void GradientModel::SetDefaultData(int count, const SKvCGGradientKey* keys)
{
    m_defaultCount = keys == nullptr ? 0 : std::clamp(count, 0, kMaxKeys);
    if (m_defaultCount > 0)
        std::copy_n(keys, m_defaultCount, m_defaults.begin());
}

bool GradientModel::ResetDefault()
{
    if (!HasDefaults())
        return false;
    std::copy_n(m_defaults.begin(), m_defaultCount, m_stops.keys.begin());
    SetCount(m_defaultCount);
    m_stops.selected = 0;
    return true;
}

void GradientModel::SortKeys()
{
    const std::span<SKvCGGradientKey> keys{m_stops.keys.data(), static_cast<std::size_t>(m_stops.count)};
    SortKeysByExchange(keys, [this](std::size_t i, std::size_t j) {
        std::swap(m_stops.ids[i], m_stops.ids[j]);
        if (m_stops.selected == static_cast<int>(i))
            m_stops.selected = static_cast<int>(j);
        else if (m_stops.selected == static_cast<int>(j))
            m_stops.selected = static_cast<int>(i);
    });
}

bool GradientModel::AddKey(float position)
{
    if (!CanAdd())
        return false;
    const int added = m_stops.count;
    SetCount(added + 1);
    Key(added) = {kNewStopColour, position, kHalfWay};
    m_stops.selected = added;
    SortKeys();

    const int place = m_stops.selected;
    const bool hasBefore = place > 0;
    const bool hasAfter = place < m_stops.count - 1;
    if (hasBefore && hasAfter)
        Key(place).colour = MixColour(Key(place - 1).colour, Key(place + 1).colour);
    else if (hasAfter)
        Key(place).colour = Key(place + 1).colour;
    else if (hasBefore)
        Key(place).colour = Key(place - 1).colour;
    return true;
}

bool GradientModel::InsertKey()
{
    if (!CanAdd() || (m_stops.count > 0 && !HasSelection()))
        return false;
    if (m_stops.count < 2) {
        // No neighbour: half way to the farther end of the bar.
        const float alone = m_stops.count == 0 ? 0.0f : ClampPosition(Key(0).position);
        return AddKey((alone < 0.5f ? alone + 1.0f : alone) / 2);
    }
    const int before = std::min(m_stops.selected, m_stops.count - 2);
    const int place = before + 1;
    const double sum = NumberOrZero(Key(before).position) + NumberOrZero(Key(place).position);
    const SKvCGGradientKey added{MixColour(Key(before).colour, Key(place).colour),
                                 static_cast<float>(sum / 2), kHalfWay};
    SetCount(m_stops.count + 1);
    const auto shiftUp = [this, place](auto& array) {
        std::rotate(array.begin() + place, array.begin() + m_stops.count - 1, array.begin() + m_stops.count);
    };
    shiftUp(m_stops.keys);
    shiftUp(m_stops.ids);
    Key(place) = added;
    m_stops.selected = place;
    SortKeys();
    return true;
}

bool GradientModel::DeleteCurrentKey()
{
    if (!CanDelete())
        return false;
    const auto shiftDown = [this](auto& array) {
        std::copy(array.begin() + m_stops.selected + 1, array.begin() + m_stops.count,
                  array.begin() + m_stops.selected);
    };
    shiftDown(m_stops.keys);
    shiftDown(m_stops.ids);
    --m_stops.count;
    if (m_stops.selected >= m_stops.count)
        m_stops.selected = 0;
    SortKeys();
    return true;
}

void GradientModel::PlaceKey(int index, double position)
{
    if (IsIndex(index))
        Key(index).position = ClampPosition(position);
    SortKeys();
}

bool GradientModel::IsMidPointShown(int key) const
{
    return HasSelection() && key >= 1 && IsIndex(key) &&
           (key == m_stops.selected || key == m_stops.selected + 1);
}

double GradientModel::SegmentPlace(int key, double fraction) const
{
    const double from = Key(key - 1).position;
    const double to = Key(key).position;
    return from + (to - from) * fraction;
}

bool GradientModel::SetMidPoint(int key, float value)
{
    if (key < 1 || !IsIndex(key))
        return false;
    const float clamped = std::isnan(value) ? kHalfWay : std::clamp(value, kMidPointMin, kMidPointMax);
    return std::exchange(Key(key).midPoint, clamped) != clamped;
}

void GradientModel::Reverse()
{
    if (m_stops.count == 0)
        return;
    const GradientStops old = m_stops;
    for (int i = 0; i < m_stops.count; ++i) {
        const auto from = static_cast<std::size_t>(i);
        const int to = m_stops.count - 1 - i;
        // Behind the last stop this reads an unused slot; it lands on the first stop, whose mid point is
        // unused.
        Key(to) = {old.keys[from].colour, 1.0f - old.keys[from].position, 1.0f - old.keys[from + 1].midPoint};
        Id(to) = old.ids[from];
    }
    m_stops.selected = m_stops.count - 1 - m_stops.selected;
}

void GradientModel::Reflect()
{
    const int n = m_stops.count;
    const bool axisAtEnd = n > 0 && Key(n - 1).position == 1.0f;
    const int mirrored = axisAtEnd ? n - 1 : n;
    if (n + mirrored < kMaxKeys) {
        for (int i = 0; i < n; ++i)
            Key(i).position = static_cast<float>(static_cast<double>(Key(i).position) / 2);
        for (int j = 0; j < mirrored; ++j) {
            const SKvCGGradientKey& source = Key(mirrored - 1 - j);
            Key(n + j) = {source.colour, 1.0f - source.position, 1.0f - Key(mirrored - j).midPoint};
        }
    }
    SetCount(std::min(n + mirrored, kMaxCount));
}

bool GradientModel::Exchange(int neighbour)
{
    if (!HasSelection() || !IsIndex(neighbour))
        return false;
    std::swap(Key(m_stops.selected).colour, Key(neighbour).colour);
    return true;
}

bool GradientModel::ExchangeBefore()
{
    return Exchange(m_stops.selected - 1);
}

bool GradientModel::ExchangeAfter()
{
    return Exchange(m_stops.selected + 1);
}

bool GradientModel::SameSpace()
{
    const int n = m_stops.count;
    if (n < 3)
        return false;
    const float step = (Key(n - 1).position - Key(0).position) / static_cast<float>(n - 1);
    for (int i = 1; i < n - 1; ++i)
        Key(i).position = Key(i - 1).position + step;
    return true;
}

} // namespace kv
