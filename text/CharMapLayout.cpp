#include "text/CharMapLayout.h"

#include <algorithm>

namespace kv {

CRect CharPreviewRect(int cell, CSize window)
{
    const CRect rect = CharCellRect(cell);
    const int right = rect.right + 1; // beyond the line
    int left = right + kCharPreviewSide <= window.cx ? right : rect.left - kCharPreviewSide;
    int top = (rect.top + rect.bottom - kCharPreviewSide) / 2;
    left = std::max(0, std::min(left, window.cx - kCharPreviewSide));
    top = std::max(0, std::min(top, window.cy - kCharPreviewSide));
    return {left, top, left + kCharPreviewSide, top + kCharPreviewSide};
}

} // namespace kv
