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

} // namespace

bool IsSingle(const SKvCurvePoint& point)
{
    return IsSingle(point.x) && IsSingle(point.y);
}

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

std::array<double, 8> Coordinates(const EasePoints& points)
{
    return {points[0].x, points[0].y, points[1].x, points[1].y,
            points[2].x, points[2].y, points[3].x, points[3].y};
}

EasePoints PointsOf(const double coordinates[8])
{
    const double* const at = coordinates;
    return {{{at[0], at[1]}, {at[2], at[3]}, {at[4], at[5]}, {at[6], at[7]}}};
}

bool IsSensible(const EaseCurve& curve)
{
    for (const SKvCurvePoint& point : curve.points) {
        if (!IsSingle(point))
            return false;
    }
    return IsSingle(curve.OutTangent()) && IsSingle(curve.InTangent()) &&
           IsSingle(curve[EaseHandle::End] - curve[EaseHandle::Start]) &&
           IsSingle({curve.minimum, curve.maximum}) && IsSize(curve.Width()) && IsSize(curve.Span());
}

} // namespace kv
