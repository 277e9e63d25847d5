// The texts of swatches and corners.
#pragma once

#include <QString>

#include <cstdint>

namespace kv {

enum SwatchTextNumber : std::uint32_t
{
    kTextSwatches = 20300,
    kTextSwatch = 20301,
    kTextAlphaCell = 20302,
    kTextChannels = 20303,
    kTextQuadGradient = 20304,
    kTextQuadCorner = 20305,
    kTextFirstCorner = 20306, ///< and the three that follow, in the corners' order
};

/// A colour's numbers.
QString ChannelsText(std::uint32_t colour);
/// @param index 0 … 3.
QString AlphaText(int index);

} // namespace kv
