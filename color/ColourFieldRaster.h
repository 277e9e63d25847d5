// The pixels of colour fields and sliders. Sizes are those of the client area in logical pixels; device pixel
// (i, j) shows the colour at the logical point (i, j) ÷ ratio, as ColourMapLayout.h says.
#pragma once

#include "KvTypes.h"
#include "color/ColourState.h"
#include "color/GradientRaster.h"

namespace kv {

/// What each place of the field would make of a colour. @param lock 1 … 6.
void DrawColourField(PixelView picture, const DeviceGrid& grid, CSize size, int lock,
                     const ColourState& colour);

/// The same for a slider. The hue slider shows the pure hues, so that it can be read on greys too.
/// @param lock 10 … 15.
void DrawColourSlider(PixelView picture, const DeviceGrid& grid, CSize size, int lock,
                      const ColourState& colour);

/// The colour over the checkerboard, from no opacity at the bottom to the full one.
void DrawAlphaSlider(PixelView picture, const DeviceGrid& grid, CSize size, const ColourState& colour);

} // namespace kv
