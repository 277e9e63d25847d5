// How the cells of a swatch grid look.
#pragma once

#include "KvPlatform.h"
#include "color/OffScreenPicture.h"
#include "color/SwatchLayout.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace kv {

/// What the user does to the cells.
struct SwatchLook
{
    bool enabled = true;
    std::optional<SwatchCell> hovered;
    std::optional<SwatchCell> pressed; ///< and the pointer is still over it
    std::optional<SwatchCell> focused;
    std::optional<SwatchCell> dropTarget;
};

/// A cell at rest: the colour over the checkerboard within a thin frame. A cell without room for the frame is
/// all colour.
/// @param rect of the cell, in logical pixels of the picture.
void DrawSwatch(PixelView pixels, const DeviceGrid& grid, const CRect& rect, std::uint32_t colour,
                bool enabled);
/// An alpha cell at rest: its grey, and along the bottom a strip that shows the alpha over the checkerboard,
/// where there is room for it.
void DrawAlphaSwatch(PixelView pixels, const DeviceGrid& grid, const CRect& rect, int index, bool enabled);

/// Keeps the cells at rest as a picture and draws what the user does over it.
class SwatchPainter
{
public:
    void Invalidate() { m_picture.Invalidate(); }
    void Paint(Graphics& graphics, const CRect& client, const SwatchLayout& layout,
               const std::vector<std::uint32_t>& colours, const SwatchLook& look);

private:
    OffScreenPicture m_picture;
};

} // namespace kv
