#include "color/QuadRaster.h"

#include "color/Checkerboard.h"
#include "color/GradientColour.h"

#include <algorithm>

namespace kv {

namespace {

constexpr std::uint32_t kBlack = 0xFF000000u;
constexpr std::uint32_t kLightMark = 0xFFC0C0C0u;
/// Up to this sum of its channels a colour is a dark one.
constexpr std::uint32_t kMostOfDark = 384;
/// The mark is drawn three pixels wide on the swatch's outline, which cuts one off.
constexpr int kMarkWidth = 2;

/// Lines of a rectangle, within it.
void DrawFrame(PixelView picture, const CRect& rect, int width, std::uint32_t colour)
{
    const CRect inner = Deflated(rect, width);
    picture.FillRect(rect.left, rect.top, rect.right, std::min(inner.top, rect.bottom), colour);
    picture.FillRect(rect.left, std::max(inner.bottom, rect.top), rect.right, rect.bottom, colour);
    picture.FillRect(rect.left, rect.top, std::min(inner.left, rect.right), rect.bottom, colour);
    picture.FillRect(std::max(inner.right, rect.left), rect.top, rect.right, rect.bottom, colour);
}

/// Clears the picture and draws its frame. @return the device pixels within the frame.
CRect DrawGround(PixelView picture, const DeviceGrid& grid, CSize size)
{
    const CRect frame = grid.Edges({1, 1, size.cx - 1, size.cy - 1});
    const CRect inside = Deflated(frame, grid.Line());
    picture.Fill(0);
    if (frame.IsRectEmpty())
        return {};
    DrawFrame(picture, frame, grid.Line(), kBlack);
    return inside;
}

} // namespace

void DrawQuadCorner(PixelView picture, const DeviceGrid& grid, CSize size, std::uint32_t colour,
                    bool selected, bool enabled)
{
    const CRect inside = DrawGround(picture, grid, size);
    const std::uint32_t shown = DisplayColour(colour, enabled);
    DrawCheckerboard(picture, grid, inside, BoardUnder(shown));
    if (!selected || inside.IsRectEmpty())
        return;
    const bool isDark = RedOf(shown) + GreenOf(shown) + BlueOf(shown) <= kMostOfDark;
    DrawFrame(picture, inside, grid.Length(kMarkWidth), isDark ? kLightMark : kBlack);
}

void DrawQuadPalette(PixelView picture, const DeviceGrid& grid, CSize size, const QuadColours& corners,
                     bool enabled)
{
    const CRect inside = DrawGround(picture, grid, size);
    DrawCheckerboard(picture, grid, inside);
    QuadColours shown;
    std::transform(corners.begin(), corners.end(), shown.begin(),
                   [enabled](std::uint32_t colour) { return DisplayColour(colour, enabled); });
    FillQuadGradient(picture, PixelFormat::Rgb32, grid, Deflated({0, 0, size.cx, size.cy}, 2), inside, shown);
}

} // namespace kv
