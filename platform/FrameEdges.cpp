#include "platform/FrameEdges.h"

#include <algorithm>

namespace kv {

unsigned FrameEdgesAt(CPoint point, const CRect& frame)
{
    const int left = point.x - frame.left;
    const int top = point.y - frame.top;
    const int right = frame.right - 1 - point.x;
    const int bottom = frame.bottom - 1 - point.y;
    if (left < 0 || top < 0 || right < 0 || bottom < 0)
        return kNoEdge;
    const bool inBorder =
        left < kFrameBorder || right < kFrameBorder || top < kFrameTopBorder || bottom < kFrameBorder;
    if (!inBorder)
        return kNoEdge;
    // Within the border a corner reaches further, so that it is easily found. In a frame smaller than two
    // corners the nearer one counts.
    unsigned edges = kNoEdge;
    const bool alongSides = left < kFrameBorder || right < kFrameBorder;
    const bool alongTop = top < kFrameTopBorder || bottom < kFrameBorder;
    if (std::min(left, right) < (alongTop ? kFrameCorner : kFrameBorder))
        edges |= left <= right ? kLeftEdge : kRightEdge;
    const int vertical = top <= bottom ? kFrameTopBorder : kFrameBorder;
    if (std::min(top, bottom) < (alongSides ? kFrameCorner : vertical))
        edges |= top <= bottom ? kTopEdge : kBottomEdge;
    return edges;
}

CRect DragFrameEdges(const CRect& frame, unsigned edges, CPoint travel, CSize smallest, CSize largest)
{
    const auto width = [&](int wanted) { return std::max(smallest.cx, std::min(wanted, largest.cx)); };
    const auto height = [&](int wanted) { return std::max(smallest.cy, std::min(wanted, largest.cy)); };
    CRect result = frame;
    if (edges & kLeftEdge)
        result.left = frame.right - width(frame.Width() - travel.x);
    else if (edges & kRightEdge)
        result.right = frame.left + width(frame.Width() + travel.x);
    if (edges & kTopEdge)
        result.top = frame.bottom - height(frame.Height() - travel.y);
    else if (edges & kBottomEdge)
        result.bottom = frame.top + height(frame.Height() + travel.y);
    return result;
}

} // namespace kv
