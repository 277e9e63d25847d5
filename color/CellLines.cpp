#include "color/CellLines.h"

#include "color/GradientPainter.h"
#include "platform/SkinColours.h"

#include <QPainterPath>

namespace kv {

namespace {

constexpr DWORD kDefaultFrameColour = 0xFF18181Au;

} // namespace

CellLines::CellLines(const Graphics& graphics, const CRect& cell)
    : m_pixels(graphics)
    , m_grid(PixelRatio(graphics))
    , m_origin(m_pixels.Nearest({0, 0}))
    , m_cell(m_grid.Edges(cell))
{
}

QRectF CellLines::Within(int lines) const
{
    const CRect rect = Deflated(m_cell, lines * m_grid.Line());
    if (rect.IsRectEmpty())
        return {};
    return {m_pixels.ToLogical(m_origin + QPoint(rect.left, rect.top)),
            m_pixels.ToLogical(m_origin + QPoint(rect.right, rect.bottom))};
}

void CellLines::Draw(Graphics& graphics, int from, int to, const QColor& colour) const
{
    QPainterPath frame;
    frame.addRect(Within(from));
    frame.addRect(Within(to));
    graphics.fillPath(frame, colour);
}

std::uint32_t SwatchFrameColour()
{
    return SkinColour(L"keSwatchFrameColor", kDefaultFrameColour).rgba();
}

void DrawDropMark(Graphics& graphics, const CRect& cell)
{
    const CellLines lines(graphics, cell);
    lines.Draw(graphics, 0, 2, FocusColour());
    lines.Draw(graphics, 2, 3, QColor::fromRgba(SwatchFrameColour()));
}

} // namespace kv
