// The checkerboard under everything translucent: squares of 4 logical pixels, anchored at a picture's corner.
#pragma once

#include "KvTypes.h"
#include "color/GradientRaster.h"

#include <cstdint>

namespace kv {

/// The colours of a board; the square at the picture's corner is a dark one.
struct CheckerColours
{
    std::uint32_t dark = 0xFFCCCCCCu;
    std::uint32_t light = 0xFFDDDDDDu;
};

/// The board under a translucent colour.
CheckerColours BoardUnder(std::uint32_t colour);

/// Device pixel rows and columns of a square: number `index` from the picture's edge ends before this pixel.
int CheckerEdge(const DeviceGrid& grid, int index);
/// The number of the square that holds a device pixel's row or column.
int CheckerSquare(const DeviceGrid& grid, int pixel);

/// Draws the pixels from `left` to `right` of a picture's row.
/// @param square the number of the row's square.
void DrawCheckerRow(std::uint32_t* row, int left, int right, const DeviceGrid& grid, int square,
                    const CheckerColours& colours);

/// Draws the part of a rectangle, in device pixels, that lies inside.
void DrawCheckerboard(PixelView picture, const DeviceGrid& grid, const CRect& rect,
                      const CheckerColours& colours = {});

} // namespace kv
