// Where the thumbnails of a layout strip stand, which of them are in view, and how the strip moves.
// Coordinates are logical pixels; right and bottom lie outside a rectangle.
#pragma once

#include "KvScrollHelpers.h"

#include <cstdint>

namespace kv {

/// Thumbnails of one size in a row or a column, beside a scroll bar. "Along" is the direction in which they
/// follow one another, "across" the other one.
class StripLayout
{
public:
    static constexpr int kSpacing = 5;
    /// By which a thumbnail's shadow stands to the right of it and below.
    static constexpr int kShadow = 6;

    /// The indices of thumbnails that follow one another; `end` lies behind the last.
    struct Range
    {
        int begin;
        int end;
    };

    StripLayout() = default;
    /// @param layoutSize gives the thumbnails' shape; one without an area leaves them empty.
    /// @param hasBar whether there is a scroll bar.
    StripLayout(const CRect& client, bool vertical, bool hasBar, CSize layoutSize);

    /// The place of the scroll bar: 17 pixels at the right of a column, at the bottom of a row.
    static CRect ScrollBarRect(const CRect& client, bool vertical);

    bool IsVertical() const { return m_vertical; }
    /// The view on the thumbnails: beside the scroll bar and within the margins.
    const CRect& Content() const { return m_content; }
    /// Where a press begins to drag the strip: 40 pixels at the right of a column, at the bottom of a row.
    const CRect& DragBand() const { return m_band; }
    /// Of a thumbnail, along and across; 0 where they have no room.
    std::int64_t Length() const { return m_length; }
    int Across() const { return m_across; }
    /// From one thumbnail to the next.
    std::int64_t Step() const { return m_length + kSpacing; }
    /// Of all thumbnails; 0 for none.
    std::int64_t TotalLength(int count) const;
    /// A thumbnail in the content, which begins at (0, 0).
    SKvScrollRect ThumbAt(int index) const;
    /// The thumbnails that reach into begin … end along the content.
    Range Reaching(std::int64_t begin, std::int64_t end, int count) const;
    /// The thumbnail at a place of the content; -1 for none.
    int HitTest(std::int64_t x, std::int64_t y, int count) const;
    /// Where the view must begin after the thumbnails changed their size, so that it begins at the same part
    /// of the same thumbnail as it did. @param position where it begins in `before`.
    std::int64_t PositionFrom(const StripLayout& before, std::int64_t position) const;

    /// The coordinate of a point along the strip.
    int Along(CPoint point) const { return m_vertical ? point.y : point.x; }

private:
    bool m_vertical = true;
    CRect m_content;
    CRect m_band;
    std::int64_t m_length = 0;
    int m_across = 0;
};

/// What a key does to the thumbnail that has the focus.
enum class StripKey
{
    Previous,
    Next,
    PageBack,
    PageOn,
    First,
    Last
};

/// Where it leads; an end of the strip is not passed. @param current -1 is before the first.
/// @param page how many thumbnails a page has, at least 1.
int StripKeyTarget(int current, StripKey key, int page, int count);

/// Where an animated move of the view stands: in steps of 30 pixels, then in one jump.
/// @param elapsed since it began, in milliseconds.
std::int64_t StripMotionAt(std::int64_t from, std::int64_t target, std::int64_t elapsed);

} // namespace kv
