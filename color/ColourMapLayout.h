// Places on colour fields and sliders, and their pixels. Coordinates are logical pixels of the client area;
// x grows to the right, y upwards.
#pragma once

#include "KvTypes.h"

#include <algorithm>

namespace kv {

struct ColourPlace
{
    double x; ///< 0 … 1 from the left pixel to the right one
    double y; ///< 0 … 1 from the bottom pixel to the top one
};

/// The place of pixel `pixel` of `size`, 0 … 1, clamped; 0 where there is one pixel or none.
constexpr double PlaceOfPixel(double pixel, int size)
{
    return size > 1 ? std::clamp(pixel / (size - 1), 0.0, 1.0) : 0.0;
}

/// The nearest pixel to a place in 0 … 1.
constexpr int PixelOfPlace(double place, int size)
{
    const double rounded = size > 1 ? place * (size - 1) + 0.5 : 0.0;
    return static_cast<int>(rounded);
}

/// The place of a row, upwards. Counted from the bottom row: 1 less a quotient would round half a step away.
constexpr double PlaceOfRow(double row, int height)
{
    return PlaceOfPixel(height - 1 - row, height);
}

constexpr ColourPlace PlaceAt(const CRect& client, CPoint point)
{
    return {PlaceOfPixel(point.x - client.left, client.Width()),
            PlaceOfRow(point.y - client.top, client.Height())};
}

constexpr CPoint PointOf(const CRect& client, const ColourPlace& place)
{
    return {client.left + PixelOfPlace(place.x, client.Width()),
            client.top + PixelOfPlace(1 - place.y, client.Height())};
}

} // namespace kv
