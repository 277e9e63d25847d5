#include "color/QuadModel.h"

#include <utility>

namespace kv {

bool QuadModel::SetCorners(const QuadColours& corners)
{
    const QuadColours before = std::exchange(m_corners, corners);
    return before != m_corners;
}

bool QuadModel::SetCorner(int corner, std::uint32_t colour)
{
    if (!IsCorner(corner))
        return false;
    return std::exchange(m_corners[static_cast<std::size_t>(corner)], colour) != colour;
}

bool QuadModel::Select(int corner)
{
    const int selected = IsCorner(corner) ? corner : -1;
    return std::exchange(m_selected, selected) != selected;
}

std::uint32_t QuadModel::SelectedColour() const
{
    return IsCorner(m_selected) ? m_corners[static_cast<std::size_t>(m_selected)] : 0;
}

int QuadModel::Neighbour(ArrowKey arrow) const
{
    if (!IsCorner(m_selected))
        return 0;
    // Bit 0 of a corner's number is its column, bit 1 its row.
    switch (arrow) {
    case ArrowKey::Left:
        return m_selected & ~1;
    case ArrowKey::Right:
        return m_selected | 1;
    case ArrowKey::Up:
        return m_selected & ~2;
    default:
        return m_selected | 2;
    }
}

bool QuadModel::Exchange(int first, int second)
{
    if (!IsCorner(first) || !IsCorner(second))
        return false;
    QuadColours corners = m_corners;
    std::swap(corners[static_cast<std::size_t>(first)], corners[static_cast<std::size_t>(second)]);
    return SetCorners(corners);
}

bool QuadModel::ExchangeLeftAndRight()
{
    const auto [tl, tr, bl, br] = m_corners;
    return SetCorners({tr, tl, br, bl});
}

bool QuadModel::ExchangeTopAndBottom()
{
    const auto [tl, tr, bl, br] = m_corners;
    return SetCorners({bl, br, tl, tr});
}

bool QuadModel::TurnClockwise()
{
    const auto [tl, tr, bl, br] = m_corners;
    return SetCorners({bl, tl, br, tr});
}

bool QuadModel::TurnCounterclockwise()
{
    const auto [tl, tr, bl, br] = m_corners;
    return SetCorners({tr, br, tl, bl});
}

} // namespace kv
