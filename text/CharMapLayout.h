// Where the cells of a character grid stand: 20 columns by 10 rows of 24 by 24 logical pixels from (12, 12).
#pragma once

#include "KvTypes.h"

#include <optional>

namespace kv {

inline constexpr int kCharColumns = 20;
inline constexpr int kCharRows = 10;
inline constexpr int kCharCells = kCharColumns * kCharRows;
inline constexpr int kCharCellSide = 24;
inline constexpr int kCharOrigin = 12;
/// The lines to the right and below the last cells.
inline constexpr int kCharGridRight = kCharOrigin + kCharColumns * kCharCellSide;
inline constexpr int kCharGridBottom = kCharOrigin + kCharRows * kCharCellSide;
inline constexpr int kCharPreviewSide = 3 * kCharCellSide;

/// A cell of the page, the line at its left and top included. @param cell 0 … 199.
constexpr CRect CharCellRect(int cell)
{
    const int left = kCharOrigin + cell % kCharColumns * kCharCellSide;
    const int top = kCharOrigin + cell / kCharColumns * kCharCellSide;
    return {left, top, left + kCharCellSide, top + kCharCellSide};
}

/// @return the cell of the page at a client point, or none.
constexpr std::optional<int> CharCellAt(CPoint point)
{
    if (!CRect(kCharOrigin, kCharOrigin, kCharGridRight, kCharGridBottom).PtInRect(point))
        return std::nullopt;
    return (point.y - kCharOrigin) / kCharCellSide * kCharColumns + (point.x - kCharOrigin) / kCharCellSide;
}

/// The enlarged preview: three cells wide, to the right of the cell or, without room, to its left; moved
/// inside the window, of which it covers no more than there is.
CRect CharPreviewRect(int cell, CSize window);

/// The largest first index: the last page is full as far as the characters go.
constexpr int LastFirstChar(int count)
{
    const int rows = count / kCharColumns + (count % kCharColumns != 0 ? 1 : 0);
    return rows > kCharRows ? (rows - kCharRows) * kCharColumns : 0;
}

} // namespace kv
