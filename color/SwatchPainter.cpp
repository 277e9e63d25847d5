#include "color/SwatchPainter.h"

#include "color/CellLines.h"
#include "color/Checkerboard.h"
#include "color/GradientColour.h"
#include "color/GradientRaster.h"
#include "color/SwatchStore.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"

namespace kv {

namespace {

constexpr DWORD kDefaultHoverColour = 0xFFFFFFFFu;
constexpr DWORD kDefaultPressedColour = 0x70000000u;

/// The part of an alpha cell's height that shows what the alpha does: black of it over the checkerboard.
constexpr int kAlphaPart = 4;
constexpr int kLeastAlphaStrip = 2;

void DrawAtRest(PixelView pixels, const DeviceGrid& grid, const SwatchLayout& layout,
                const std::vector<std::uint32_t>& colours, bool enabled)
{
    pixels.Fill(0);
    const int shown = layout.ShownSwatches(static_cast<int>(colours.size()));
    for (int index = 0; index < shown; ++index)
        DrawSwatch(pixels, grid, layout.RectOf({SwatchCell::Kind::Swatch, index}),
                   colours[static_cast<std::size_t>(index)], enabled);
    for (int index = 0; index < SwatchLayout::kAlphaCells; ++index)
        DrawAlphaSwatch(pixels, grid, layout.RectOf({SwatchCell::Kind::Alpha, index}), index, enabled);
}

/// The device pixels of a swatch's colour; `framed` those of its frame too, empty without room for one.
struct SwatchPlaces
{
    SwatchPlaces(const DeviceGrid& grid, const CRect& rect)
        : framed(Deflated(grid.Edges(rect), grid.Line()))
        , inside(Deflated(framed, grid.Line()))
    {
        if (inside.IsRectEmpty()) {
            framed = {};
            inside = grid.Edges(rect);
        }
    }

    CRect framed;
    CRect inside;
};

} // namespace

void DrawSwatch(PixelView pixels, const DeviceGrid& grid, const CRect& rect, std::uint32_t colour,
                bool enabled)
{
    const SwatchPlaces places(grid, rect);
    pixels.FillRect(places.framed, qPremultiply(SwatchFrameColour()));
    DrawCheckerboard(pixels, grid, places.inside, BoardUnder(DisplayColour(colour, enabled)));
}

void DrawAlphaSwatch(PixelView pixels, const DeviceGrid& grid, const CRect& rect, int index, bool enabled)
{
    const auto preset = static_cast<std::size_t>(index);
    DrawSwatch(pixels, grid, rect, kFixedAlphaColours[preset], enabled);
    CRect strip = SwatchPlaces(grid, rect).inside;
    const int height = strip.Height() / kAlphaPart;
    if (height < grid.Length(kLeastAlphaStrip))
        return;
    strip.top = strip.bottom - height;
    const auto alpha = static_cast<std::uint32_t>(kFixedAlphas[preset]);
    const CheckerColours board = BoardUnder(MakeColour(alpha, 0, 0, 0));
    DrawCheckerboard(pixels, grid, strip,
                     {DisplayColour(board.dark, enabled), DisplayColour(board.light, enabled)});
}

void SwatchPainter::Paint(Graphics& graphics, const CRect& client, const SwatchLayout& layout,
                          const std::vector<std::uint32_t>& colours, const SwatchLook& look)
{
    m_picture.Paint(graphics, client, [&](PixelView pixels, const DeviceGrid& grid) {
        DrawAtRest(pixels, grid, layout, colours, look.enabled);
    });
    // A light line within a dark one shows on every colour.
    if (look.hovered || look.pressed) {
        const CellLines lines(graphics, layout.RectOf(look.pressed ? *look.pressed : *look.hovered));
        if (look.pressed)
            graphics.fillRect(lines.Within(1), SkinColour(L"keButtonPressedColor", kDefaultPressedColour));
        lines.Draw(graphics, 1, 2, SkinColour(L"keSwatchHoverColor", kDefaultHoverColour));
        lines.Draw(graphics, 2, 3, QColor::fromRgba(SwatchFrameColour()));
    }
    if (look.dropTarget)
        DrawDropMark(graphics, layout.RectOf(*look.dropTarget));
    if (look.focused)
        DrawFocusRing(graphics, CellLines(graphics, layout.RectOf(*look.focused)).Within(0));
}

} // namespace kv
