// A rectangle in which the colours of four corners blend: a fan of four triangles around the centre.
#pragma once

#include "KvTypes.h"
#include "color/GradientRaster.h"

#include <array>
#include <cstdint>

namespace kv {

/// Straight 0xAARRGGBB: top left, top right, bottom left, bottom right.
using QuadColours = std::array<std::uint32_t, 4>;

/// The colour at the centre: the average of the averages, each rounded down.
std::uint32_t QuadCentre(const QuadColours& corners);

/// How the pixels of a picture are meant; the alpha of Rgb32 is 255 whatever stands there.
enum class PixelFormat
{
    Argb32,
    Argb32Premultiplied,
    Rgb32,
};

/// Blends the gradient over the pixels of a rectangle, within 2 of 255 of the exact value (of a straight
/// colour as far as its alpha makes it count); what lies outside of the picture is left out.
/// @param rect in logical pixels; the corners' colours stand at its edges, also where they lie outside.
/// Device pixel (i, j) shows the colour at the logical point (i, j) ÷ ratio, the first ones none before the
/// edge.
void FillQuadGradient(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
                      const QuadColours& corners);

/// The same into given device pixels, for a rectangle whose frame is a whole number of them.
/// @param pixels the part that lies inside of the rectangle or less than a pixel before it is drawn.
void FillQuadGradient(PixelView picture, PixelFormat format, const DeviceGrid& grid, const CRect& rect,
                      const CRect& pixels, const QuadColours& corners);

} // namespace kv
