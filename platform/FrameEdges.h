// The resize border of a frame: which edge a point hits, and what dragging that edge makes of the frame.
// Pure.
#pragma once

#include "KvTypes.h"

namespace kv {

/// Bits: a corner is two of them.
enum FrameEdge : unsigned
{
    kNoEdge = 0,
    kLeftEdge = 1,
    kTopEdge = 2,
    kRightEdge = 4,
    kBottomEdge = 8,
};

inline constexpr int kFrameBorder = 6;
inline constexpr int kFrameTopBorder = 4;
inline constexpr int kFrameCorner = 16; ///< how far a corner reaches along the border

/// @return the edges of `frame` in whose border the point lies; none outside the frame.
unsigned FrameEdgesAt(CPoint point, const CRect& frame);

/// The frame after those edges were dragged by `travel`; the opposite edges stay where they are.
CRect DragFrameEdges(const CRect& frame, unsigned edges, CPoint travel, CSize smallest, CSize largest);

} // namespace kv
