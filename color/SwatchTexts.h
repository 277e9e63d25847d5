// The texts of swatches and corners.
#pragma once

#include <QString>

#include <cstdint>

namespace kv {

enum SwatchTextNumber : std::uint32_t
{
    kTextSwatches = 12100,
    kTextSwatch = 12101,
    kTextAlphaCell = 12102,
    kTextChannels = 12103,
    kTextQuadGradient = 12104,
    kTextQuadCorner = 12105,
    kTextFirstCorner = 12106, ///< and the three that follow, in the corners' order
};

/// A colour's numbers.
QString ChannelsText(std::uint32_t colour);
/// @param index 0 … 3.
QString AlphaText(int index);

} // namespace kv
