// Arithmetic on the four channels of several pixels at once, written so that compilers make vector
// instructions of it.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kv {

static_assert(std::endian::native == std::endian::little, "lanes are the bytes of a pixel in memory");

/// A channel in 16 bits, 8 of them behind the point.
using Lane = std::uint16_t;

inline constexpr int kGroup = 4; ///< pixels a step
inline constexpr int kLanes = 4 * kGroup;

/// The lanes of a group: blue, green, red and alpha of each pixel.
using LaneGroup = std::array<Lane, kLanes>;

/// Whole groups that hold that many pixels, in pixels.
constexpr int WholeGroups(int pixels)
{
    return (pixels + kGroup - 1) / kGroup * kGroup;
}

/// A value of 0 … 255; the lane's upper byte is the nearest whole number.
constexpr Lane RoundingLane(double value)
{
    return static_cast<Lane>(static_cast<std::int32_t>(value * 256 + 128));
}

/// The same four lanes for each pixel of a group.
constexpr LaneGroup Repeated(const std::array<Lane, 4>& pixel)
{
    LaneGroup group{};
    for (std::size_t i = 0; i < group.size(); ++i)
        group[i] = pixel[i % 4];
    return group;
}

} // namespace kv
