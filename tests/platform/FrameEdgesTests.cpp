// The resize border of a frame.
#include "platform/FrameEdges.h"

#include <gtest/gtest.h>

using namespace kv;

namespace {

TEST(FrameEdges, WhatAPointHits)
{
    constexpr CRect frame{100, 50, 500, 350};
    constexpr unsigned topLeft = kTopEdge | kLeftEdge;
    constexpr unsigned bottomRight = kBottomEdge | kRightEdge;
    const struct
    {
        const char* what;
        CPoint point;
        unsigned edges;
    } rows[] = {
        {"inside", {300, 200}, kNoEdge},
        {"last column of the left border", {105, 200}, kLeftEdge},
        {"behind the left border", {106, 200}, kNoEdge},
        {"last row of the top border", {300, 53}, kTopEdge},
        {"below the top border", {300, 54}, kNoEdge},
        {"first column of the right border", {494, 200}, kRightEdge},
        {"before the right border", {493, 200}, kNoEdge},
        {"first row of the bottom border", {300, 344}, kBottomEdge},
        {"below the frame", {300, 350}, kNoEdge},
        {"the corner itself", {100, 50}, topLeft},
        {"a corner reaches along the top", {115, 50}, topLeft},
        {"and ends there", {116, 50}, kTopEdge},
        {"a corner reaches down the side", {100, 65}, topLeft},
        {"but not inwards", {106, 54}, kNoEdge},
        {"the opposite corner", {499, 349}, bottomRight},
        {"right end of the top", {490, 52}, kTopEdge | kRightEdge},
        {"left end of the bottom", {110, 346}, kBottomEdge | kLeftEdge},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FrameEdgesAt(row.point, frame), row.edges) << row.what;
    EXPECT_EQ(FrameEdgesAt({1, 1}, {0, 0, 3, 3}), topLeft) << "a frame smaller than its border";
}

TEST(FrameEdges, DraggingThem)
{
    constexpr CRect frame{100, 50, 500, 350};
    constexpr CSize smallest{200, 100};
    constexpr CSize largest{600, 400};
    const struct
    {
        const char* what;
        unsigned edges;
        CPoint travel;
        CRect result;
    } rows[] = {
        {"left", kLeftEdge, {-30, 77}, {70, 50, 500, 350}},
        {"left, to the smallest: the right edge stays", kLeftEdge, {900, 0}, {300, 50, 500, 350}},
        {"left, to the largest", kLeftEdge, {-900, 0}, {-100, 50, 500, 350}},
        {"right, to the smallest", kRightEdge, {-900, 0}, {100, 50, 300, 350}},
        {"bottom, to the largest", kBottomEdge, {0, 900}, {100, 50, 500, 450}},
        {"a corner", kTopEdge | kRightEdge, {10, -5}, {100, 45, 510, 350}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DragFrameEdges(frame, row.edges, row.travel, smallest, largest), row.result) << row.what;
}

} // namespace
