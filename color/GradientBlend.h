// The colour blend that a gradient's stops describe, ready to be evaluated anywhere along the bar.
#pragma once

#include "KvTypes.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kv {

/// One colour of the blend (straight, not premultiplied) and its place, 0..1.
struct BlendEntry
{
    double position;
    std::uint32_t colour;

    friend bool operator==(const BlendEntry&, const BlendEntry&) = default;
};

/// The blend of some stops: each stop, each mid point with the mix of its neighbours, and the two ends of
/// the bar. Positions never descend: stops that are not sorted are taken in the order that the model's sort
/// gives them, and values out of range or not a number are clamped.
/// @param enabled false turns every colour into the disabled grey.
/// @return empty for no stops.
std::vector<BlendEntry> MakeBlend(std::span<const SKvCGGradientKey> keys, bool enabled);

/// The blend's colour at a place, interpolated channel by channel; 0 for an empty blend.
std::uint32_t BlendColourAt(std::span<const BlendEntry> blend, double place);

} // namespace kv
