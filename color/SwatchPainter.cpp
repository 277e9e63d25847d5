#include "color/SwatchPainter.h"

#include "color/Checkerboard.h"
#include "color/GradientColour.h"
#include "color/GradientPainter.h"
#include "color/GradientRaster.h"
#include "color/SwatchStore.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"

namespace kv {

namespace {

constexpr DWORD kDefaultFrameColour = 0xFF18181Au;
constexpr DWORD kDefaultHoverColour = 0xFFFFFFFFu;
constexpr DWORD kDefaultPressedColour = 0x70000000u;

std::uint32_t FrameColour()
{
    return SkinColour(L"keSwatchFrameColor", kDefaultFrameColour).rgba();
}

CRect Deflated(const CRect& rect, int by)
{
    return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}

void FillOverCheckerboard(PixelView pixels, const DeviceGrid& grid, const CRect& rect, std::uint32_t colour)
{
    DrawCheckerboard(pixels, grid, rect);
    const int right = std::min(rect.right, pixels.width);
    for (int y = rect.top; y < std::min(rect.bottom, pixels.height); ++y) {
        std::uint32_t* const row = pixels.Row(y);
        for (int x = rect.left; x < right; ++x)
            row[x] = DrawOver(colour, row[x]);
    }
}

void DrawAtRest(PixelView pixels, const DeviceGrid& grid, const SwatchLayout& layout,
                const std::vector<std::uint32_t>& colours, bool enabled)
{
    pixels.Fill(0);
    const int shown = layout.ShownSwatches(static_cast<int>(colours.size()));
    for (int index = 0; index < shown; ++index)
        DrawSwatch(pixels, grid, layout.RectOf({SwatchCell::Kind::Swatch, index}),
                   colours[static_cast<std::size_t>(index)], enabled);
    for (int index = 0; index < SwatchLayout::kAlphaCells; ++index)
        DrawSwatch(pixels, grid, layout.RectOf({SwatchCell::Kind::Alpha, index}),
                   kFixedAlphaColours[static_cast<std::size_t>(index)], enabled);
}

/// Lines within a rectangle of logical pixels, a logical pixel thick, on whole device pixels.
/// @return what is left within.
QRectF DrawFrame(Graphics& graphics, const QRectF& rect, const QColor& colour)
{
    const DevicePixels devicePixels(graphics);
    const qreal line = devicePixels.Hairline();
    const QRectF outer = devicePixels.Snapped(rect);
    const QRectF inner = outer.adjusted(line, line, -line, -line);
    if (inner.isEmpty())
        return {};
    QPainterPath frame;
    frame.addRect(outer);
    frame.addRect(inner);
    graphics.fillPath(frame, colour);
    return inner;
}

/// Where a cell shows colour and frame: without the gap around it.
QRectF FaceOf(const CRect& cell)
{
    return QRectF(QRect(Deflated(cell, 1)));
}

} // namespace

void DrawSwatch(PixelView pixels, const DeviceGrid& grid, const CRect& rect, std::uint32_t colour,
                bool enabled)
{
    const std::uint32_t shown = DisplayColour(colour, enabled);
    const CRect cell(grid.Edge(rect.left), grid.Edge(rect.top), grid.Edge(rect.right),
                     grid.Edge(rect.bottom));
    const CRect face = Deflated(cell, grid.Line());
    const CRect inside = Deflated(face, grid.Line());
    if (inside.IsRectEmpty()) {
        FillOverCheckerboard(pixels, grid, cell, shown);
        return;
    }
    pixels.FillRect(face.left, face.top, face.right, face.bottom, FrameColour());
    FillOverCheckerboard(pixels, grid, inside, shown);
}

void SwatchPainter::Paint(Graphics& graphics, const CRect& client, const SwatchLayout& layout,
                          const std::vector<std::uint32_t>& colours, const SwatchLook& look)
{
    m_picture.Paint(graphics, client, [&](PixelView pixels, const DeviceGrid& grid) {
        DrawAtRest(pixels, grid, layout, colours, look.enabled);
    });
    if (look.pressed) {
        const QRectF face = DevicePixels(graphics).Snapped(FaceOf(layout.RectOf(*look.pressed)));
        graphics.fillRect(face, SkinColour(L"keButtonPressedColor", kDefaultPressedColour));
    }
    // A light line within a dark one shows on every colour.
    if (look.hovered || look.pressed) {
        const QRectF face = FaceOf(layout.RectOf(look.pressed ? *look.pressed : *look.hovered));
        const QRectF within =
            DrawFrame(graphics, face, SkinColour(L"keSwatchHoverColor", kDefaultHoverColour));
        DrawFrame(graphics, within, QColor::fromRgba(FrameColour()));
    }
    if (look.dropTarget) {
        const QRectF within = DrawFrame(graphics, QRect(layout.RectOf(*look.dropTarget)), FocusColour());
        DrawFrame(graphics, DrawFrame(graphics, within, FocusColour()), QColor::fromRgba(FrameColour()));
    }
    if (look.focused)
        DrawFocusRing(graphics, QRectF(QRect(layout.RectOf(*look.focused))));
}

} // namespace kv
