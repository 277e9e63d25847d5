// One cubic ease between two keys, as plain values.
#pragma once

#include "KvBezierCurve2D.h"

#include <array>
#include <cstdint>

namespace kv {

/// The four points of a curve, in walking order.
enum class EaseHandle
{
    Start, ///< P0, the start key
    Out,   ///< C0, its out handle
    In,    ///< C1, the end key's in handle
    End,   ///< P1, the end key
};
inline constexpr int kEaseHandles = 4;

SKvCurvePoint operator+(const SKvCurvePoint& a, const SKvCurvePoint& b);
SKvCurvePoint operator-(const SKvCurvePoint& a, const SKvCurvePoint& b);

using EasePoints = std::array<SKvCurvePoint, kEaseHandles>; ///< by EaseHandle; absolute

/// x and y of each point in turn, as hosts exchange them.
std::array<double, 8> Coordinates(const EasePoints& points);
EasePoints PointsOf(const double coordinates[8]);

struct EaseCurve
{
    EasePoints points{{{0, 0}, {0, 0}, {0, 0}, {1, 0}}};
    double minimum = 0; ///< the values that the curve may take
    double maximum = 1;
    std::uint32_t lock = 0; ///< not 0: the curve rises from start to end
    std::uint32_t kind = 0;

    const SKvCurvePoint& operator[](EaseHandle handle) const
    {
        return points[static_cast<std::size_t>(handle)];
    }
    SKvCurvePoint& operator[](EaseHandle handle) { return points[static_cast<std::size_t>(handle)]; }
    SKvCurvePoint OutTangent() const { return points[1] - points[0]; }
    SKvCurvePoint InTangent() const { return points[2] - points[3]; }
    double Width() const { return points[3].x - points[0].x; }
    /// The span of values that the curve may take.
    double Span() const { return maximum - minimum; }
};

/// True when both numbers are finite and within single precision.
bool IsSingle(const SKvCurvePoint& point);

/// True for a width or height that can be divided by: positive and within single precision.
bool IsSize(double value);

/// True when a curve can be edited: its segment and its range of values have a size, and every number, the
/// tangents and the way from key to key included, is finite and within single precision.
bool IsSensible(const EaseCurve& curve);

} // namespace kv
