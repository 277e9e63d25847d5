#include "color/ColourPreview.h"

#include "color/Checkerboard.h"
#include "color/ColourText.h"
#include "color/GradientColour.h"
#include "color/GradientPainter.h"
#include "color/GradientRaster.h"
#include "platform/SkinColours.h"

#include <utility>

namespace kv {

namespace {

constexpr DWORD kDefaultFrameColour = 0xFF686870u;

void DrawBoth(PixelView picture, const DeviceGrid& grid, DWORD colour, DWORD frame)
{
    picture.Fill(frame);
    const CheckerColours board;
    const CheckerColours shown{DrawOver(colour, board.dark), DrawOver(colour, board.light)};
    const int line = grid.Line();
    int square = 0;
    for (int y = line; y < picture.height - line; ++y) {
        while (CheckerEdge(grid, square) <= y)
            ++square;
        DrawCheckerRow(picture.Row(y), picture.width / 2, picture.width - line, grid, square, shown);
    }
    picture.FillRect(line, line, picture.width / 2, picture.height - line, 0xFF000000u | colour);
}

} // namespace

void ColourPreview::SetColour(DWORD colour)
{
    if (std::exchange(m_colour, colour) == colour)
        return;
    setAccessibleDescription(KvToQString(ColourText(colour)));
    update();
}

void ColourPreview::OnPaint(Graphics& graphics)
{
    if (rect().isEmpty())
        return;
    const DWORD frame = SkinColour(L"keWindowBorderColor", kDefaultFrameColour).rgba();
    DrawSharply(graphics, rect(),
                [&](PixelView picture, const DeviceGrid& grid) { DrawBoth(picture, grid, m_colour, frame); });
}

QString ColourPreview::ToolTipAt(CPoint, CRect&) const
{
    return KvToQString(ColourText(m_colour));
}

} // namespace kv
