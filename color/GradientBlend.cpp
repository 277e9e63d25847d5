#include "color/GradientBlend.h"

#include "color/GradientColour.h"
#include "color/GradientModel.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

/// The stops with positions in 0..1 and in order.
class DrawnStops
{
public:
    explicit DrawnStops(std::span<const SKvCGGradientKey> keys) : m_keys(keys)
    {
        if (InRangeAndSorted(keys))
            return;
        m_sorted.assign(keys.begin(), keys.end());
        for (SKvCGGradientKey& key : m_sorted)
            key.position = ClampPosition(key.position);
        SortKeysByExchange(std::span(m_sorted), [](std::size_t, std::size_t) {});
        m_keys = m_sorted;
    }
    std::span<const SKvCGGradientKey> Keys() const { return m_keys; }

private:
    static bool InRangeAndSorted(std::span<const SKvCGGradientKey> keys)
    {
        float last = 0.0f;
        for (const SKvCGGradientKey& key : keys) {
            if (!(key.position >= last && key.position <= 1.0f))
                return false;
            last = key.position;
        }
        return true;
    }

    std::vector<SKvCGGradientKey> m_sorted;
    std::span<const SKvCGGradientKey> m_keys;
};

std::uint32_t Interpolate(std::uint32_t from, std::uint32_t to, double fraction)
{
    const auto channel = [fraction](std::uint32_t a, std::uint32_t b) {
        return static_cast<std::uint32_t>(std::lround(a + (static_cast<double>(b) - a) * fraction));
    };
    return MakeColour(channel(AlphaOf(from), AlphaOf(to)), channel(RedOf(from), RedOf(to)),
                      channel(GreenOf(from), GreenOf(to)), channel(BlueOf(from), BlueOf(to)));
}

} // namespace

std::vector<BlendEntry> MakeBlend(std::span<const SKvCGGradientKey> keys, bool enabled)
{
    std::vector<BlendEntry> blend;
    if (keys.empty())
        return blend;
    blend.reserve(2 * keys.size() + 1);
    const DrawnStops drawn(keys);
    const auto add = [&blend, enabled](std::uint32_t colour, double position) {
        blend.push_back({position, DisplayColour(colour, enabled)});
    };

    const SKvCGGradientKey* before = nullptr;
    for (const SKvCGGradientKey& key : drawn.Keys()) {
        const double place = key.position;
        if (before == nullptr && place != 0.0)
            add(key.colour, 0.0);
        if (before != nullptr) {
            const double from = before->position;
            add(MixColour(before->colour, key.colour), from + (place - from) * ClampPosition(key.midPoint));
        }
        add(key.colour, place);
        before = &key;
    }
    if (blend.back().position != 1.0)
        add(before->colour, 1.0);
    return blend;
}

std::uint32_t BlendColourAt(std::span<const BlendEntry> blend, double place)
{
    if (blend.empty())
        return 0;
    const auto isBehind = [](double at, const BlendEntry& entry) { return at < entry.position; };
    const auto next = std::upper_bound(blend.begin(), blend.end(), place, isBehind);
    if (next == blend.begin())
        return blend.front().colour;
    if (next == blend.end())
        return blend.back().colour;
    const BlendEntry& from = *(next - 1);
    return Interpolate(from.colour, next->colour, (place - from.position) / (next->position - from.position));
}

} // namespace kv
