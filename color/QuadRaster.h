// The pictures of the four-corner control: a swatch for each corner, and the blended preview. Sizes are in
// logical pixels; frames are whole device pixels.
#pragma once

#include "KvTypes.h"
#include "color/QuadGradient.h"

#include <cstdint>

namespace kv {

/// A corner's swatch: a black frame, and the colour over the checkerboard.
/// @param selected draws the mark within, light on dark colours and black on light ones.
/// @param enabled false shows the disabled grey.
void DrawQuadCorner(PixelView picture, const DeviceGrid& grid, CSize size, std::uint32_t colour,
                    bool selected, bool enabled);

/// The preview: a black frame, and the gradient over the checkerboard.
void DrawQuadPalette(PixelView picture, const DeviceGrid& grid, CSize size, const QuadColours& corners,
                     bool enabled);

} // namespace kv
