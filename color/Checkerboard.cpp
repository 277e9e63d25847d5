#include "color/Checkerboard.h"

#include "color/GradientColour.h"

#include <algorithm>

namespace kv {

namespace {

constexpr int kSquare = 4;

} // namespace

CheckerColours BoardUnder(std::uint32_t colour)
{
    const CheckerColours board;
    return {DrawOver(colour, board.dark), DrawOver(colour, board.light)};
}

int CheckerEdge(const DeviceGrid& grid, int index)
{
    return grid.Edge((index + 1.0) * kSquare);
}

int CheckerSquare(const DeviceGrid& grid, int pixel)
{
    int square = static_cast<int>(pixel / (kSquare * grid.Ratio()));
    while (square > 0 && CheckerEdge(grid, square - 1) > pixel)
        --square;
    while (CheckerEdge(grid, square) <= pixel)
        ++square;
    return square;
}

void DrawCheckerRow(std::uint32_t* row, int left, int right, const DeviceGrid& grid, int square,
                    const CheckerColours& colours)
{
    int across = CheckerSquare(grid, left);
    for (int from = left; from < right; ++across) {
        const int to = std::clamp(CheckerEdge(grid, across), from, right);
        std::fill(row + from, row + to, (across + square) % 2 == 0 ? colours.dark : colours.light);
        from = to;
    }
}

void DrawCheckerboard(PixelView picture, const DeviceGrid& grid, const CRect& rect,
                      const CheckerColours& colours)
{
    const int left = std::max(rect.left, 0);
    const int right = std::min(rect.right, picture.width);
    const int top = std::max(rect.top, 0);
    const int bottom = std::min(rect.bottom, picture.height);
    if (left >= right || top >= bottom)
        return;
    int square = CheckerSquare(grid, top);
    const std::uint32_t* drawn = nullptr;
    for (int y = top; y < bottom; ++y) {
        std::uint32_t* const row = picture.Row(y);
        if (CheckerEdge(grid, square) <= y) {
            ++square;
            drawn = nullptr;
        }
        if (drawn)
            std::copy(drawn + left, drawn + right, row + left);
        else
            DrawCheckerRow(row, left, right, grid, square, colours);
        drawn = row;
    }
}

} // namespace kv
