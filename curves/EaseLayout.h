// Where the ease curve window's parts stand, how curve space maps to pixels, and what stands under a point.
// Pixels are logical ones of the client area.
#pragma once

#include "curves/EaseModel.h"
#include "curves/EaseView.h"

#include <optional>

namespace kv {

struct EaseLayout
{
    static constexpr int kLeftMargin = 50;
    static constexpr int kMargin = 20; ///< top, right and bottom
    static constexpr int kHandleBox = 8;

    EaseLayout() = default;
    /// @param startX, endX the segment, which always fills the plot's width.
    EaseLayout(const CRect& clientRect, double startX, double endX, const EaseRange& viewRange);

    CRect client;
    CRect plot;
    double start = 0;
    double end = 1;
    EaseRange view;

    /// False while the plot, the segment or the view has no size: then nothing maps and nothing is hit.
    bool IsMapped() const;
    // Each other's inverse. The start of the segment is at the plot's left edge and its end at the right one,
    // the view's maximum at the top and its minimum at the bottom, exactly.
    SKvCurvePoint ToPixel(SKvCurvePoint curve) const;
    SKvCurvePoint ToCurve(SKvCurvePoint pixel) const;
    /// The pixel with its x brought into the plot, both edges included.
    CPoint ClampedToPlot(CPoint pixel) const;

    /// The box around a handle or key that is hit: half open, 4 pixels to each side.
    static bool IsInHandleBox(SKvCurvePoint handle, CPoint pixel);
    /// In this order, first hit wins: of each key the in handle, out handle, key, in tangent, out tangent.
    /// @param origin is added to the keys.
    std::optional<EaseHit> HitTest(IKvBezierCurve2D& keys, SKvCurvePoint origin, CPoint pixel) const;

private:
    std::optional<EaseHit> HitKey(const SKvBezierKey& key, SKvCurvePoint origin, bool hasIn, bool hasOut,
                                  CPoint pixel) const;
};

} // namespace kv
