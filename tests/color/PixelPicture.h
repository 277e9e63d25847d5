// A picture to draw on, and its pixels to look at.
#pragma once

#include "KvTypes.h"
#include "color/GradientRaster.h"

#include <cstdint>
#include <vector>

struct PixelPicture
{
    /// @param logical size in logical pixels. @param colour of every pixel. @param spare pixels behind each
    /// row.
    explicit PixelPicture(CSize logical, double ratio = 1, std::uint32_t colour = 7u, int spare = 0)
        : grid(ratio)
        , size(logical)
        , width(grid.Edge(logical.cx))
        , height(grid.Edge(logical.cy))
        , stride(width + spare)
        , pixels(static_cast<std::size_t>(stride * height), colour)
    {
    }

    kv::PixelView View() { return {pixels.data(), width, height, stride}; }
    std::uint32_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * stride + x)]; }

    kv::DeviceGrid grid;
    CSize size;
    int width;
    int height;
    int stride;
    std::vector<std::uint32_t> pixels;
};
