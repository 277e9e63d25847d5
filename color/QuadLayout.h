// Where the four-corner control's parts stand, and which corner stands under a point. Coordinates are logical
// pixels of the client area; right and bottom lie outside a rectangle.
#pragma once

#include "KvTypes.h"

#include <array>

namespace kv {

struct QuadLayout
{
    explicit QuadLayout(const CRect& client = {});

    std::array<CRect, 4> corners; ///< as in QuadColours
    CRect palette;                ///< the blended preview

    /// @return the first corner that holds the point, or -1.
    int HitCorner(CPoint point) const;
};

} // namespace kv
