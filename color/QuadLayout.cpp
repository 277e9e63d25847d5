#include "color/QuadLayout.h"

namespace kv {

QuadLayout::QuadLayout(const CRect& client)
{
    const auto [left, top, right, bottom] = client;
    const int dx = client.Width() / 8;
    const int dy = client.Height() / 3;
    const int inset = client.Height() / 5;
    corners = {CRect(left, top, left + dx, top + dy), CRect(right - dx, top, right, top + dy),
               CRect(left, bottom - dy, left + dx, bottom), CRect(right - dx, bottom - dy, right, bottom)};
    palette = {left + dx, top + inset, right - dx, bottom - inset};
}

int QuadLayout::HitCorner(CPoint point) const
{
    for (int corner = 0; corner < static_cast<int>(corners.size()); ++corner) {
        if (corners[static_cast<std::size_t>(corner)].PtInRect(point))
            return corner;
    }
    return -1;
}

} // namespace kv
