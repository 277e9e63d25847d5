// Where the gradient control's parts stand, and what stands under a point. Coordinates are logical pixels of
// the client area; right and bottom lie outside a rectangle.
#pragma once

#include "KvTypes.h"

#include <optional>

namespace kv {

class GradientModel;

struct GradientLayout
{
    static constexpr int kMidStripHeight = 10;
    static constexpr int kKeyStripHeight = 13;
    /// Pixels of the client width over which positions do not reach: 4 on the left, 5 on the right.
    static constexpr int kMargins = 9;
    static constexpr int kLeftMargin = 4;

    explicit GradientLayout(const CRect& clientRect = {});

    CRect client;
    CRect midStrip; ///< ticks and mid points, at the top
    CRect palette;  ///< the bar
    CRect keyStrip; ///< the stops' markers, at the bottom

    /// Where a press selects or adds a stop: the bar and the marker strip.
    CRect StopArea() const { return {client.left, midStrip.bottom, client.right, client.bottom}; }
    /// Pixels between the positions 0 and 1; 0 and less in a control that is too narrow.
    int Span() const { return client.Width() - kMargins; }

    /// The pixel column of a position, truncated toward zero from the left end. What is not a number counts
    /// as 0, what is far out of range stays far out.
    int GetDisplayPos(double position) const;
    /// The position of a pixel column, in single precision and not clamped; 0 where there is no span.
    float PositionAt(int x) const;
    /// The nearest position to `position` whose pixel column is `pixels` further.
    double Shifted(double position, int pixels) const;

    /// Where a stop dragged by some pixels goes, clamped to 0..1; none where there is no span.
    std::optional<float> DraggedPosition(float start, int pixels) const;
    /// Where a mid point dragged by some pixels goes, clamped to its limits; none where its stops coincide on
    /// the screen.
    std::optional<float> DraggedMidPoint(const GradientModel& model, int key, float start, int pixels) const;

    /// The box around the marker of a stop, which selects it.
    CRect KeyBox(double position) const;
    /// The box around a mid point at that place, which drags it.
    CRect MidPointBox(double place) const;

    /// @return the index of the first stop whose box holds the point, or -1.
    int HitKey(const GradientModel& model, CPoint point) const;
    /// @return the stop whose mid point (one that is shown) holds the point, or -1. The right one wins.
    int HitMidPoint(const GradientModel& model, CPoint point) const;
};

} // namespace kv
