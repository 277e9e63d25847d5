// Curves as lines that can be drawn: flattened, and cut at a box, so that no place beyond it, however far,
// reaches the drawing layer.
#pragma once

#include "curves/EaseLayout.h"

#include <optional>
#include <vector>

namespace kv {

/// In pixels.
struct EaseBox
{
    double left;
    double top;
    double right;
    double bottom;
};

struct EaseLine
{
    SKvCurvePoint from;
    SKvCurvePoint to;
};

using EasePolyline = std::vector<SKvCurvePoint>;

/// The part of a line within the box.
std::optional<EaseLine> Clipped(const EaseLine& line, const EaseBox& box);
/// The parts of a cubic within the box, as lines that stay within a tenth of a pixel of it.
std::vector<EasePolyline> Flattened(const EasePoints& pixels, const EaseBox& box);

/// The speed over the plot, the average at a third of its height, cut at the plot.
std::vector<EasePolyline> SpeedLines(const EaseCurve& curve, const EaseLayout& layout);
/// Where the frames of a length lie on the curve, in pixels; none that would stand closer than they can be
/// told apart, and none outside the plot.
std::vector<SKvCurvePoint> FrameMarks(const EaseCurve& curve, const EaseLayout& layout, double frameLength);

} // namespace kv
