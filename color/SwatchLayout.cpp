#include "color/SwatchLayout.h"

#include <algorithm>

namespace kv {

namespace {

using Kind = SwatchCell::Kind;

} // namespace

SwatchLayout::SwatchLayout(const CRect& client, int columns, int rows)
    : m_client(client)
    , m_columns(std::max(columns, 1))
    , m_rows(std::max(rows, 1))
    , m_cellWidth(std::max(client.Width(), 0) / m_columns)
    , m_cellHeight(std::max(client.Height(), 0) / m_rows)
{
}

int SwatchLayout::ShownSwatches(int count) const
{
    const std::int64_t cells = std::int64_t{m_columns} * (m_rows - 1);
    return static_cast<int>(std::clamp<std::int64_t>(count, 0, cells));
}

CRect SwatchLayout::RectOf(const SwatchCell& cell) const
{
    if (cell.kind == Kind::Alpha) {
        const auto edge = [this](int index) {
            return m_client.left + m_client.Width() * index / kAlphaCells;
        };
        return {edge(cell.index), m_client.top + m_cellHeight * (m_rows - 1), edge(cell.index + 1),
                m_client.bottom};
    }
    const int left = m_client.left + m_cellWidth * (cell.index % m_columns);
    const int top = m_client.top + m_cellHeight * (cell.index / m_columns);
    return {left, top, left + m_cellWidth, top + m_cellHeight};
}

std::optional<SwatchCell> SwatchLayout::HitTest(CPoint point, int count) const
{
    if (!m_client.PtInRect(point))
        return std::nullopt;
    for (int index = 0; index < kAlphaCells; ++index) {
        const SwatchCell cell{Kind::Alpha, index};
        if (RectOf(cell).PtInRect(point))
            return cell;
    }
    if (m_cellWidth == 0 || m_cellHeight == 0)
        return std::nullopt;
    const int column = (point.x - m_client.left) / m_cellWidth;
    const int row = (point.y - m_client.top) / m_cellHeight;
    const std::int64_t index = std::int64_t{row} * m_columns + column;
    if (column >= m_columns || index >= ShownSwatches(count))
        return std::nullopt;
    return SwatchCell{Kind::Swatch, static_cast<int>(index)};
}

SwatchCell SwatchLayout::First(int count) const
{
    return {ShownSwatches(count) > 0 ? Kind::Swatch : Kind::Alpha, 0};
}

SwatchCell SwatchLayout::Neighbour(const SwatchCell& cell, ArrowKey arrow, int count) const
{
    const int shown = ShownSwatches(count);
    const bool isSwatch = cell.kind == Kind::Swatch;
    if (cell.index < 0 || cell.index >= (isSwatch ? shown : kAlphaCells))
        return First(count);
    return isSwatch ? SwatchNeighbour(cell.index, arrow, shown) : AlphaNeighbour(cell.index, arrow, shown);
}

SwatchCell SwatchLayout::SwatchNeighbour(int index, ArrowKey arrow, int shown) const
{
    const int column = index % m_columns;
    const auto swatch = [](int at) { return SwatchCell{Kind::Swatch, at}; };
    switch (arrow) {
    case ArrowKey::Left:
        return swatch(column > 0 ? index - 1 : index);
    case ArrowKey::Right:
        return swatch(column + 1 < m_columns && index + 1 < shown ? index + 1 : index);
    case ArrowKey::Up:
        return swatch(index >= m_columns ? index - m_columns : index);
    default:
        return shown - index > m_columns ? swatch(index + m_columns)
                                         : SwatchCell{Kind::Alpha, AlphaBelow(column)};
    }
}

SwatchCell SwatchLayout::AlphaNeighbour(int index, ArrowKey arrow, int shown) const
{
    const int column = ColumnAbove(index);
    switch (arrow) {
    case ArrowKey::Left:
        return {Kind::Alpha, std::max(index - 1, 0)};
    case ArrowKey::Right:
        return {Kind::Alpha, std::min(index + 1, kAlphaCells - 1)};
    case ArrowKey::Up:
        // The lowest swatch of the column, or the last of a first row that does not reach so far.
        if (shown > column)
            return {Kind::Swatch, column + (shown - 1 - column) / m_columns * m_columns};
        return shown > 0 ? SwatchCell{Kind::Swatch, shown - 1} : SwatchCell{Kind::Alpha, index};
    default:
        return {Kind::Alpha, index};
    }
}

/// The alpha cell under the middle of a column.
int SwatchLayout::AlphaBelow(int column) const
{
    return static_cast<int>((std::int64_t{2} * column + 1) * kAlphaCells / (std::int64_t{2} * m_columns));
}

/// The column over the middle of an alpha cell.
int SwatchLayout::ColumnAbove(int alphaCell) const
{
    return static_cast<int>((std::int64_t{2} * alphaCell + 1) * m_columns / (std::int64_t{2} * kAlphaCells));
}

} // namespace kv
