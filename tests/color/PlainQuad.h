// The four-corner gradient reckoned place by place, without any rounding.
#pragma once

#include "color/GradientColour.h"
#include "color/QuadGradient.h"

#include <algorithm>
#include <array>
#include <cmath>

using Channels = std::array<double, 4>; // alpha, red, green, blue

inline Channels ChannelsOf(std::uint32_t colour)
{
    return {kv::AlphaOf(colour) + 0.0, kv::RedOf(colour) + 0.0, kv::GreenOf(colour) + 0.0,
            kv::BlueOf(colour) + 0.0};
}

/// The gradient's own colour at a place, by barycentric weights in the triangle that holds it.
inline Channels Fan(const kv::QuadColours& corners, double x, double y)
{
    const Channels tl = ChannelsOf(corners[0]);
    const Channels tr = ChannelsOf(corners[1]);
    const Channels bl = ChannelsOf(corners[2]);
    const Channels br = ChannelsOf(corners[3]);
    Channels centre;
    for (std::size_t c = 0; c < 4; ++c) // the average of averages, each rounded down
        centre[c] = std::floor((std::floor((tl[c] + tr[c]) / 2) + std::floor((bl[c] + br[c]) / 2)) / 2);
    const auto in = [&](const Channels& first, const Channels& second, double depth, double along) {
        Channels mixed{};
        for (std::size_t c = 0; c < 4; ++c)
            mixed[c] = first[c] * (1 - along - depth) + second[c] * (along - depth) + centre[c] * 2 * depth;
        return mixed;
    };
    const double depth = std::min({x, y, 1 - x, 1 - y});
    if (depth == y)
        return in(tl, tr, depth, x);
    if (depth == x)
        return in(tl, bl, depth, y);
    return depth == 1 - x ? in(tr, br, depth, y) : in(bl, br, depth, x);
}

/// Drawn over a pixel, without any rounding.
inline Channels Over(const Channels& top, std::uint32_t pixel, kv::PixelFormat format)
{
    const double alpha = top[0] / 255;
    Channels below = ChannelsOf(pixel);
    if (format == kv::PixelFormat::Rgb32)
        below[0] = 255;
    Channels out{};
    out[0] = top[0] + below[0] * (1 - alpha);
    for (std::size_t c = 1; c < 4; ++c) {
        if (format == kv::PixelFormat::Argb32)
            out[c] = out[0] > 0 ? (top[c] * top[0] + below[c] * below[0] * (1 - alpha)) / out[0] : 0;
        else
            out[c] = top[c] * alpha + below[c] * (1 - alpha);
    }
    return out;
}

struct PlainFill
{
    CRect rect;
    double ratio = 1;
    kv::PixelFormat format = kv::PixelFormat::Argb32;
};

/// The largest difference of any channel from the plain fill; a pixel outside of it must not have changed.
/// @param before, after the pixel (i, j).
template <typename Pixel, typename Drawn>
double WorstError(CSize size, const PlainFill& fill, const kv::QuadColours& corners, Pixel before,
                  Drawn after)
{
    const auto edge = [&fill](int place) { return static_cast<int>(std::floor(place * fill.ratio + 0.5)); };
    const CRect covered(edge(fill.rect.left), edge(fill.rect.top), edge(fill.rect.right),
                        edge(fill.rect.bottom));
    double worst = 0;
    for (int j = 0; j < size.cy; ++j) {
        for (int i = 0; i < size.cx; ++i) {
            if (i < covered.left || i >= covered.right || j < covered.top || j >= covered.bottom) {
                worst = after(i, j) == before(i, j) ? worst : 1000;
                continue;
            }
            const double x = std::max((i / fill.ratio - fill.rect.left) / fill.rect.Width(), 0.0);
            const double y = std::max((j / fill.ratio - fill.rect.top) / fill.rect.Height(), 0.0);
            const Channels exact = Over(Fan(corners, x, y), before(i, j), fill.format);
            const Channels drawn = ChannelsOf(after(i, j));
            // Where next to nothing is seen of a straight colour, it has no digits to be right in.
            const bool counts = fill.format != kv::PixelFormat::Argb32 || exact[0] >= 1;
            for (std::size_t c = 0; c < (counts ? 4u : 1u); ++c)
                worst = std::max(worst, std::fabs(drawn[c] - exact[c]));
        }
    }
    return worst;
}
