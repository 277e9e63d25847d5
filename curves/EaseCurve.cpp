#include "curves/EaseCurve.h"

#include <cmath>
#include <limits>

namespace kv {

namespace {

using Single = std::numeric_limits<float>;

bool IsSingle(double value)
{
    return std::abs(value) <= Single::max();
}

bool IsSingle(const SKvCurvePoint& point)
{
    return IsSingle(point.x) && IsSingle(point.y);
}

} // namespace

bool IsSize(double value)
{
    return value >= Single::min() && value <= Single::max();
}

SKvCurvePoint operator+(const SKvCurvePoint& a, const SKvCurvePoint& b)
{
    return {a.x + b.x, a.y + b.y};
}

SKvCurvePoint operator-(const SKvCurvePoint& a, const SKvCurvePoint& b)
{
    return {a.x - b.x, a.y - b.y};
}

bool IsSensible(const EaseCurve& curve)
{
    for (const SKvCurvePoint& point : curve.points) {
        if (!IsSingle(point))
            return false;
    }
    return IsSingle(curve.OutTangent()) && IsSingle(curve.InTangent()) && IsSingle(curve.minimum) &&
           IsSingle(curve.maximum) && IsSize(curve.Width()) && IsSize(curve.Span());
}

} // namespace kv
