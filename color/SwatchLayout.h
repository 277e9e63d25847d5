// Where the cells of a swatch grid stand, what stands under a point, and how arrow keys walk over them.
// Coordinates are logical pixels of the client area; right and bottom lie outside a rectangle.
#pragma once

#include "KvTypes.h"
#include "color/ArrowKey.h"

#include <cstdint>
#include <optional>

namespace kv {

struct SwatchCell
{
    enum class Kind
    {
        Swatch,
        Alpha,
    };

    Kind kind;
    int index; ///< of a swatch, or 0 … 3

    friend bool operator==(const SwatchCell&, const SwatchCell&) = default;
};

/// Columns by rows of cells, of which the last row is divided into the four alpha cells. Swatches fill the
/// rows above it row by row; those that do not fit are not shown. The pixels that whole cells leave over at
/// the right belong to no swatch; at the bottom the alpha cells take them.
class SwatchLayout
{
public:
    static constexpr int kAlphaCells = 4;

    /// Counts below 1 count as 1.
    SwatchLayout(const CRect& client, int columns, int rows);

    /// How many of `count` swatches are shown.
    int ShownSwatches(int count) const;
    CRect RectOf(const SwatchCell& cell) const;
    /// @param count of swatches that there are.
    std::optional<SwatchCell> HitTest(CPoint point, int count) const;

    /// The first swatch, or the first alpha cell where no swatch is shown.
    SwatchCell First(int count) const;
    static SwatchCell Last() { return {SwatchCell::Kind::Alpha, kAlphaCells - 1}; }
    /// The next cell in the direction of an arrow key: within the row to the sides; the cell at the same
    /// place upwards and downwards. At an edge it is the cell itself; a cell that is not there leads to the
    /// first.
    SwatchCell Neighbour(const SwatchCell& cell, ArrowKey arrow, int count) const;

private:
    SwatchCell SwatchNeighbour(int index, ArrowKey arrow, int shown) const;
    SwatchCell AlphaNeighbour(int index, ArrowKey arrow, int shown) const;
    int AlphaBelow(int column) const;
    int ColumnAbove(int alphaCell) const;

    CRect m_client;
    int m_columns;
    int m_rows;
    int m_cellWidth;
    int m_cellHeight;
};

} // namespace kv
