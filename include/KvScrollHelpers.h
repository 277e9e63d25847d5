/// @file
/// Scrolling as numbers: where a view stands on content that may be longer than a screen can count. Positions
/// and lengths are 64-bit, in whatever unit the user chooses. Needs no toolkit.
#pragma once

#include "KvUnknown.h"

#include <cstdint>

/// A view on one axis of some content. Setters are silent; lengths below 0 count as 0. Whatever changes, the
/// position stays within 0 … range.
class IKvScrollLineHelper : public IKvUnknown
{
public:
    /// How much is seen at once. @param length below 0 is 0.
    virtual void SetViewLength(std::int64_t length) = 0;
    /// @return the view's length.
    virtual std::int64_t GetViewLength() = 0;
    /// How long the content is. @param length one shorter than the view counts as long as the view.
    virtual void SetVirtualLength(std::int64_t length) = 0;
    /// @return the content's length, at least the view's.
    virtual std::int64_t GetVirtualLength() = 0;
    /// @return the largest position: virtual length - view length.
    virtual std::int64_t GetRange() = 0;
    /// The place of the content at which the view begins.
    /// @param position clamped to the range. @return 1 when the position changed.
    virtual int SetPosition(std::int64_t position) = 0;
    /// @return 0 … range.
    virtual std::int64_t GetPosition() = 0;
    /// Moves from where it stands. @param distance of either sign; what lies beyond the range is cut.
    /// @return 1 when the position changed.
    virtual int MoveBy(std::int64_t distance) = 0;
    /// The position nearest to the present one that brings a piece of the content into the view; its
    /// beginning where it is longer than the view. @param begin, end of the piece.
    /// @return the position; nothing moves.
    virtual std::int64_t PositionToShow(std::int64_t begin, std::int64_t end) = 0;
};

/// A rectangle of the content; right and bottom lie outside it.
struct SKvScrollRect
{
    std::int64_t left;   ///< the first column
    std::int64_t top;    ///< the first row
    std::int64_t right;  ///< the column behind the last one
    std::int64_t bottom; ///< the row behind the last one
};

/// A view on content in both axes, and where the view stands in a window.
class IKvScrollRectHelper : public IKvUnknown
{
public:
    /// @param view in client coordinates; its size becomes the view lengths of the two lines.
    virtual void SetView(const CRect& view) = 0;
    /// @return what `SetView` was given.
    virtual CRect GetView() = 0;
    /// The content's size. @param width, height see `IKvScrollLineHelper::SetVirtualLength`.
    virtual void SetVirtualSize(std::int64_t width, std::int64_t height) = 0;
    ///@{
    /// Hands out a line with one added reference, which the caller releases. @param out receives it.
    /// @return 0 for null, else 1.
    virtual int GetHorizontal(IKvScrollLineHelper** out) = 0;
    virtual int GetVertical(IKvScrollLineHelper** out) = 0;
    ///@}
    /// Where a rectangle of the content is in client coordinates. Far outside of the window edges are cut at
    /// 1,073,741,823 on either side, so that widths and heights do not overflow.
    /// @param rect in the content's coordinates. @return the same in client coordinates.
    virtual CRect ToClient(const SKvScrollRect& rect) = 0;
    /// @param point in client coordinates. @param x, y receive the place of the content under it.
    virtual void ToContent(CPoint point, std::int64_t& x, std::int64_t& y) = 0;
};

/// Creates a view of length 0 on nothing. @param out receives it, with one reference.
/// @return 1; 0 when `out` is null or memory is short (`*out` null).
KV_API int KvCreateScrollLineHelper(IKvScrollLineHelper** out);
/// Creates a view over two lines, of which it holds references, with an empty rectangle.
/// @param horizontal, vertical the lines. @param out receives it, with one reference.
/// @return 1; 0 when an argument is null or memory is short (`*out` null).
KV_API int KvCreateScrollRectHelper(IKvScrollLineHelper* horizontal, IKvScrollLineHelper* vertical,
                                    IKvScrollRectHelper** out);
