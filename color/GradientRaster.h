// The pixel loops of the gradient control's three pictures. Everything is measured in logical pixels of the
// picture and drawn on whole device pixels, so lines and markers are sharp at any pixel ratio.
#pragma once

#include "KvTypes.h"
#include "color/GradientBlend.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace kv {

/// A picture's pixels, 0xAARRGGBB; every one we write is opaque or 0.
struct PixelView
{
    std::uint32_t* bits;
    int width;
    int height;
    std::ptrdiff_t stride; ///< pixels from a row to the next

    std::uint32_t* Row(int y) const { return bits + y * stride; }
    void Fill(std::uint32_t colour) const;
    /// Fills the part of a rectangle that lies inside; right and bottom are outside.
    void FillRect(int left, int top, int right, int bottom, std::uint32_t colour) const;
    void FillRect(const CRect& rect, std::uint32_t colour) const
    {
        FillRect(rect.left, rect.top, rect.right, rect.bottom, colour);
    }
};

/// A rectangle without some pixels all around.
constexpr CRect Deflated(const CRect& rect, int by)
{
    return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}

/// Where logical pixels fall on device pixels.
class DeviceGrid
{
public:
    explicit DeviceGrid(double pixelRatio) : m_ratio(pixelRatio) {}

    double Ratio() const { return m_ratio; }
    /// The device pixel at which a logical edge lies.
    int Edge(double logical) const { return Floor(logical * m_ratio + 0.5); }
    /// A logical length in device pixels, at least one.
    int Length(double logical) const;
    /// Device pixels of a line that is one logical pixel wide.
    int Line() const { return Length(1.0); }
    /// The first device pixel of a line that stands for logical pixel `pixel`, centred on it.
    int LineAt(int pixel) const;
    /// A rectangle of logical edges on device pixels.
    CRect Edges(const CRect& logical) const
    {
        return {Edge(logical.left), Edge(logical.top), Edge(logical.right), Edge(logical.bottom)};
    }

private:
    // The library's floor is a call that shows in the pixel loops.
    static int Floor(double value)
    {
        const int truncated = static_cast<int>(value);
        return value < truncated ? truncated - 1 : truncated;
    }

    double m_ratio;
};

/// The bar: frame, checkerboard and the blend over it.
/// @param width the picture's width in logical pixels; its height follows from its device pixels.
void DrawPalette(PixelView picture, const DeviceGrid& grid, int width, std::span<const BlendEntry> blend,
                 std::uint32_t frameColour);

/// A tick of the mid point strip at logical column `x`.
void DrawTick(PixelView picture, const DeviceGrid& grid, int x);
/// The diamond of a mid point around logical column `x`.
void DrawMidPointPointer(PixelView picture, const DeviceGrid& grid, int x, std::uint32_t colour);
/// The marker of a stop: an upward triangle whose base line lies in logical row `y`, in a colour (straight)
/// over white.
void DrawKeyPointer(PixelView picture, const DeviceGrid& grid, int x, int y, std::uint32_t colour);

} // namespace kv
