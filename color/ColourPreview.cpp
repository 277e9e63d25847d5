#include "color/ColourPreview.h"

#include "color/Checkerboard.h"
#include "color/ColourMapPainter.h"
#include "color/ColourText.h"
#include "color/ColourWords.h"
#include "color/GradientPainter.h"
#include "color/GradientRaster.h"
#include "color/SwatchTexts.h"
#include "core/TextTables.h"
#include "platform/SkinColours.h"

#include <utility>

namespace kv {

namespace {

constexpr std::uint32_t kTextPreview = 20358;
constexpr DWORD kDefaultFrameColour = 0xFF686870u;

void DrawBoth(PixelView picture, const DeviceGrid& grid, DWORD colour, DWORD frame)
{
    picture.Fill(frame);
    const int line = grid.Line();
    const int middle = picture.width / 2;
    const int bottom = picture.height - line;
    DrawCheckerboard(picture, grid, {middle, line, picture.width - line, bottom}, BoardUnder(colour));
    picture.FillRect(line, line, middle, bottom, 0xFF000000u | colour);
}

} // namespace

ColourPreview::ColourPreview()
    : m_access(*this, QAccessible::Graphic, [] { return KvToQString(LoadText(kTextPreview)); })
{
    Describe();
}

void ColourPreview::SetColour(DWORD colour)
{
    if (std::exchange(m_colour, colour) == colour)
        return;
    Describe();
    update();
}

void ColourPreview::Describe()
{
    setAccessibleDescription(KvToQString(ColourWords(m_colour)) + QStringLiteral(", ") +
                             ChannelsText(m_colour));
}

void ColourPreview::OnSkinChanged()
{
    Describe();
}

void ColourPreview::OnPaint(Graphics& graphics)
{
    if (rect().isEmpty())
        return;
    const DWORD frame = SkinColour(L"keWindowBorderColor", kDefaultFrameColour).rgba();
    graphics.setOpacity(isEnabled() ? 1 : kDisabledOpacity);
    DrawSharply(graphics, rect(),
                [&](PixelView picture, const DeviceGrid& grid) { DrawBoth(picture, grid, m_colour, frame); });
}

QString ColourPreview::ToolTipAt(CPoint, CRect&) const
{
    return KvToQString(ColourText(m_colour));
}

} // namespace kv
