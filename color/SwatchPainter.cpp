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

/// Where the lines of a cell lie on the painter's device pixels: as in the picture of the cells at rest.
class CellLines
{
public:
    CellLines(const Graphics& graphics, const CRect& cell)
        : m_pixels(graphics)
        , m_grid(PixelRatio(graphics))
        , m_origin(m_pixels.Nearest({0, 0}))
        , m_cell(m_grid.Edge(cell.left), m_grid.Edge(cell.top), m_grid.Edge(cell.right),
                 m_grid.Edge(cell.bottom))
    {
    }

    /// The cell without some lines all around, in logical pixels: 1 leaves its face.
    QRectF Within(int lines) const
    {
        const CRect rect = Deflated(m_cell, lines * m_grid.Line());
        if (rect.IsRectEmpty())
            return {};
        return {m_pixels.ToLogical(m_origin + QPoint(rect.left, rect.top)),
                m_pixels.ToLogical(m_origin + QPoint(rect.right, rect.bottom))};
    }
    /// Draws the lines between two of these rectangles.
    void Draw(Graphics& graphics, int from, int to, const QColor& colour) const
    {
        QPainterPath frame;
        frame.addRect(Within(from));
        frame.addRect(Within(to));
        graphics.fillPath(frame, colour);
    }

private:
    DevicePixels m_pixels;
    DeviceGrid m_grid;
    QPoint m_origin;
    CRect m_cell;
};

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
    pixels.FillRect(face.left, face.top, face.right, face.bottom, qPremultiply(FrameColour()));
    FillOverCheckerboard(pixels, grid, inside, shown);
}

void SwatchPainter::Paint(Graphics& graphics, const CRect& client, const SwatchLayout& layout,
                          const std::vector<std::uint32_t>& colours, const SwatchLook& look)
{
    m_picture.Paint(graphics, client, [&](PixelView pixels, const DeviceGrid& grid) {
        DrawAtRest(pixels, grid, layout, colours, look.enabled);
    });
    const QColor frame = QColor::fromRgba(FrameColour());
    // A light line within a dark one shows on every colour.
    if (look.hovered || look.pressed) {
        const CellLines lines(graphics, layout.RectOf(look.pressed ? *look.pressed : *look.hovered));
        if (look.pressed)
            graphics.fillRect(lines.Within(1), SkinColour(L"keButtonPressedColor", kDefaultPressedColour));
        lines.Draw(graphics, 1, 2, SkinColour(L"keSwatchHoverColor", kDefaultHoverColour));
        lines.Draw(graphics, 2, 3, frame);
    }
    if (look.dropTarget) {
        const CellLines lines(graphics, layout.RectOf(*look.dropTarget));
        lines.Draw(graphics, 0, 2, FocusColour());
        lines.Draw(graphics, 2, 3, frame);
    }
    if (look.focused)
        DrawFocusRing(graphics, CellLines(graphics, layout.RectOf(*look.focused)).Within(0));
}

} // namespace kv
