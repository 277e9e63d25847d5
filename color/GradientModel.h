// The gradient's stops and every rule about them; no pixels, no events.
#pragma once

#include "KvTypes.h"

#include <array>
#include <cstdint>
#include <span>
#include <utility>

namespace kv {

/// The limits of a mid point, as fractions of its segment.
inline constexpr float kMidPointMin = 0.05f;
inline constexpr float kMidPointMax = 0.95f;

/// Where a mid point snaps to while the left Ctrl key is down: the first of `places` that lies closer to
/// `value` than 0.05, else `value` itself.
float SnapMidPoint(float value, std::span<const float> places);

/// A position in 0..1; what is not a number counts as 0.
float ClampPosition(double position);

/// Exchange sort by position: `swapped(i, j)`, i < j, is called after each exchange. Which stops it exchanges
/// is part of what hosts see: equal positions keep their places, and a stop that leaves the first place gets
/// the mid point 0.5.
template <typename Swapped>
void SortKeysByExchange(std::span<SKvCGGradientKey> keys, Swapped swapped)
{
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        for (std::size_t j = i + 1; j < keys.size(); ++j) {
            if (!(keys[i].position > keys[j].position))
                continue;
            if (i == 0)
                keys[0].midPoint = 0.5f;
            std::swap(keys[i], keys[j]);
            swapped(i, j);
        }
    }
}

/// The stops in use with the selection. Every stop carries an identity that stays with it when the order
/// changes, so that what is known of a stop elsewhere (a screen reader's focus) survives a sort.
struct GradientStops
{
    /// Two full sets and more: a reverse reads the slot behind the last stop, a reflect doubles the count.
    static constexpr int kStorage = 512;

    std::array<SKvCGGradientKey, kStorage> keys{};
    std::array<std::uint32_t, kStorage> ids{};
    int count = 0;
    int selected = 0; ///< index of the current stop; out of 0..count − 1 when there is none
};

/// A value type. Edits answer indexes out of range and absent selections, they never follow them; the places
/// of mid points are asked for a stop that has one before it.
class GradientModel
{
public:
    /// Stops that a user or an owner can put in; only reflecting goes beyond.
    static constexpr int kMaxKeys = 255;
    static constexpr int kMaxCount = GradientStops::kStorage - 1;

    GradientModel();

    int Count() const { return m_stops.count; }
    std::span<const SKvCGGradientKey> Keys() const;
    /// The array itself, which hosts read and may write.
    SKvCGGradientKey* Data() { return m_stops.keys.data(); }
    std::uint32_t IdOf(int index) const;
    /// @return the index of the stop with that identity, or -1.
    int IndexOf(std::uint32_t id) const;

    int Selected() const { return m_stops.selected; }
    bool HasSelection() const { return IsIndex(m_stops.selected); }
    /// The selected stop, or null.
    SKvCGGradientKey* SelectedKey() { return HasSelection() ? &Key(m_stops.selected) : nullptr; }
    const SKvCGGradientKey* SelectedKey() const { return HasSelection() ? &Key(m_stops.selected) : nullptr; }
    /// @return 0 when no stop is selected.
    std::uint32_t SelectedColour() const;
    /// @return true when the selection changed.
    bool Select(int index);
    /// @return true when a stop is selected and its colour changed.
    bool SetSelectedColour(std::uint32_t colour);

    /// Copies stops as they are. A count below 0 makes the count 255 and copies nothing, one above 254
    /// makes it 255 and copies 255. Stops keep their identity by index.
    /// @return false, nothing changed, for null with a count above 0.
    bool SetData(int count, const SKvCGGradientKey* keys);
    void SetDefaultData(int count, const SKvCGGradientKey* keys);
    bool HasDefaults() const { return m_defaultCount >= 1; }
    /// @return false when there are no default stops.
    bool ResetDefault();

    /// `SortKeysByExchange`; identities and the selection follow their stops.
    void SortKeys();

    bool CanAdd() const { return m_stops.count < kMaxKeys; }
    /// Adds a stop, selects it and colours it after its neighbours. @return false at 255 stops.
    bool AddKey(float position);
    /// Adds a stop half way to the next one (for the last: to the previous), selects it and mixes its
    /// colour from both. @return false at 255 stops.
    bool InsertKey();
    /// The selection stays on the same index, now the next stop; behind the last stop it goes to the first.
    /// @return false below 3 stops.
    bool DeleteCurrentKey();
    bool CanDelete() const { return m_stops.count >= 3 && HasSelection(); }

    /// Puts a stop at a position, clamped to 0..1, and sorts; the selection follows its stop.
    void PlaceKey(int index, double position);

    /// True for the mid points before and after the selected stop. A mid point is named by the stop behind
    /// it.
    bool IsMidPointShown(int key) const;
    /// Where a mid point stands along the bar, from the stored floats.
    double MidPointPlace(int key) const { return SegmentPlace(key, MidPoint(key)); }
    /// The place at a fraction of the segment that ends at stop `key`, 1..count − 1.
    double SegmentPlace(int key, double fraction) const;
    float MidPoint(int key) const { return m_stops.keys[static_cast<std::size_t>(key)].midPoint; }
    /// Clamped to 0.05..0.95. @return true when it changed.
    bool SetMidPoint(int key, float value);

    void Reverse();
    /// Squeezes the gradient into the left half and mirrors it into the right one. Above 127 stops or so
    /// nothing is written, yet the count grows all the same (at most to 511).
    void Reflect();
    /// Swap the selected stop's colour with a neighbour's. @return false when there is none.
    bool ExchangeBefore();
    bool ExchangeAfter();
    /// Spaces the inner stops evenly. @return false below 3 stops.
    bool SameSpace();

    /// The stops without the defaults, to come back to after a drag.
    const GradientStops& Stops() const { return m_stops; }
    void Restore(const GradientStops& stops) { m_stops = stops; }

private:
    bool IsIndex(int index) const { return index >= 0 && index < m_stops.count; }
    SKvCGGradientKey& Key(int index) { return m_stops.keys[static_cast<std::size_t>(index)]; }
    const SKvCGGradientKey& Key(int index) const { return m_stops.keys[static_cast<std::size_t>(index)]; }
    std::uint32_t& Id(int index) { return m_stops.ids[static_cast<std::size_t>(index)]; }
    bool Exchange(int neighbour);
    void SetCount(int count);

    GradientStops m_stops;
    std::array<SKvCGGradientKey, kMaxKeys> m_defaults{};
    int m_defaultCount = 0;
    std::uint32_t m_lastId = 0;
};

} // namespace kv
