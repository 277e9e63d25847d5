#include "curves/EaseLayout.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

constexpr double kLeastOnLine = 0.001; // nearer to the key than that, the line belongs to the key
constexpr double kLineReachSquared = 12;

// A handle's pixel without the noise of single precision, so that a handle that stands on a whole pixel has
// its box on whole pixels.
double Settled(double pixel)
{
    constexpr double fineness = 256;
    return std::round(pixel * fineness) / fineness;
}

double Dot(const SKvCurvePoint& a, const SKvCurvePoint& b)
{
    return a.x * b.x + a.y * b.y;
}

// Where the line from a key to a handle is hit; all in pixels.
std::optional<double> HitLine(const SKvCurvePoint& key, const SKvCurvePoint& handle, const SKvCurvePoint& at)
{
    const SKvCurvePoint line = handle - key;
    const double squared = Dot(line, line);
    const double t = squared > 0 ? Dot(at - key, line) / squared : 0;
    if (!(t > kLeastOnLine))
        return std::nullopt;
    const double nearest = std::min(t, 1.0);
    const SKvCurvePoint away = at - SKvCurvePoint{key.x + line.x * nearest, key.y + line.y * nearest};
    return Dot(away, away) < kLineReachSquared ? std::optional(t) : std::nullopt;
}

} // namespace

EaseLayout::EaseLayout(const CRect& clientRect, double startX, double endX, const EaseRange& viewRange)
    : client(clientRect)
    , plot(clientRect.left + kLeftMargin, clientRect.top + kMargin, clientRect.right - kMargin,
           clientRect.bottom - kMargin)
    , start(startX)
    , end(endX)
    , view(viewRange)
{
}

bool EaseLayout::IsMapped() const
{
    return !plot.IsRectEmpty() && IsSize(end - start) && IsSize(view.Span());
}

SKvCurvePoint EaseLayout::ToPixel(SKvCurvePoint curve) const
{
    if (!IsMapped())
        return {static_cast<double>(plot.left), static_cast<double>(plot.top)};
    return {plot.left + (curve.x - start) / (end - start) * plot.Width(),
            plot.top + (view.maximum - curve.y) / view.Span() * plot.Height()};
}

SKvCurvePoint EaseLayout::ToCurve(SKvCurvePoint pixel) const
{
    if (!IsMapped())
        return {start, view.maximum};
    // The edges of the plot are exactly the ends of the segment and of the view.
    return {std::lerp(start, end, (pixel.x - plot.left) / plot.Width()),
            std::lerp(view.maximum, view.minimum, (pixel.y - plot.top) / plot.Height())};
}

CPoint EaseLayout::ClampedToPlot(CPoint pixel) const
{
    return {std::clamp(pixel.x, plot.left, std::max(plot.left, plot.right)), pixel.y};
}

bool EaseLayout::IsInHandleBox(SKvCurvePoint handle, CPoint pixel)
{
    const double left = Settled(handle.x) - kHandleBox / 2.0;
    const double top = Settled(handle.y) - kHandleBox / 2.0;
    return left <= pixel.x && pixel.x < left + kHandleBox && top <= pixel.y && pixel.y < top + kHandleBox;
}

std::optional<EaseHit> EaseLayout::HitKey(const SKvBezierKey& key, SKvCurvePoint origin, bool hasIn,
                                          bool hasOut, CPoint pixel) const
{
    const SKvCurvePoint position = origin + SKvCurvePoint{key.x, key.y};
    const SKvCurvePoint at{static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
    const SKvCurvePoint keyPixel = ToPixel(position);
    const SKvCurvePoint inPixel = ToPixel(position + SKvCurvePoint{key.inX, key.inY});
    const SKvCurvePoint outPixel = ToPixel(position + SKvCurvePoint{key.outX, key.outY});
    if (hasIn && IsInHandleBox(inPixel, pixel))
        return EaseHit{key.index, EasePart::InHandle, 1};
    if (hasOut && IsInHandleBox(outPixel, pixel))
        return EaseHit{key.index, EasePart::OutHandle, 1};
    if (IsInHandleBox(keyPixel, pixel))
        return EaseHit{key.index, EasePart::Key, 1};
    if (const auto t = hasIn ? HitLine(keyPixel, inPixel, at) : std::nullopt)
        return EaseHit{key.index, EasePart::InTangent, *t};
    if (const auto t = hasOut ? HitLine(keyPixel, outPixel, at) : std::nullopt)
        return EaseHit{key.index, EasePart::OutTangent, *t};
    return std::nullopt;
}

std::optional<EaseHit> EaseLayout::HitTest(IKvBezierCurve2D& keys, SKvCurvePoint origin, CPoint pixel) const
{
    if (!IsMapped())
        return std::nullopt;
    const int last = keys.GetKeyCount() - 1;
    for (int i = 0; i <= last; ++i) {
        SKvBezierKey key;
        if (keys.GetKey(i, key) == 0)
            continue;
        if (const auto hit = HitKey(key, origin, i != 0, i != last, pixel))
            return hit;
    }
    return std::nullopt;
}

} // namespace kv
