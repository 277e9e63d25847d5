// Lines around a cell or a swatch on whole device pixels, as they lie in the control's pictures.
#pragma once

#include "KvPlatform.h"
#include "color/GradientRaster.h"
#include "platform/DevicePixels.h"

namespace kv {

/// Where the lines of a cell lie on the painter's device pixels.
class CellLines
{
public:
    /// @param cell in client coordinates.
    CellLines(const Graphics& graphics, const CRect& cell);

    /// The cell without some lines all around, in logical pixels: 1 leaves its face.
    QRectF Within(int lines) const;
    /// Draws the lines between two of these rectangles.
    void Draw(Graphics& graphics, int from, int to, const QColor& colour) const;

private:
    DevicePixels m_pixels;
    DeviceGrid m_grid;
    QPoint m_origin;
    CRect m_cell;
};

/// The frame of a swatch, dark.
std::uint32_t SwatchFrameColour();

/// Marks the cell that takes what is dropped: thicker than the focus ring, and dark within, so that it shows
/// on every colour.
void DrawDropMark(Graphics& graphics, const CRect& cell);

} // namespace kv
