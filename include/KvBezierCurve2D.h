/// @file
/// Two-dimensional curves of cubic Bezier segments through key points, and the fast evaluation of one such
/// segment as an ease y(x). Needs no toolkit; any thread, but one curve belongs to one thread at a time.
#pragma once

#include "KvTypes.h"

#include <array>
#include <memory>

/// A key point of a curve. Tangents are relative to the position.
struct SKvBezierKey
{
    std::uint32_t flags = 0;               ///< passed through unchanged
    std::int32_t index = -1;               ///< -1 while the key is in no curve
    float x = 0;                           ///< position to the right
    float y = 0;                           ///< position upwards
    float inX = 0;                         ///< towards the key before
    float inY = 0;                         ///< likewise
    float outX = 0;                        ///< towards the key after
    float outY = 0;                        ///< likewise
    std::uint32_t reserved[3] = {0, 1, 1}; ///< passed through unchanged
};
static_assert(sizeof(SKvBezierKey) == 44);

/// A point of a curve, in the curve's own space.
struct SKvCurvePoint
{
    double x = 0; ///< to the right
    double y = 0; ///< upwards
};

/// One cubic: start, two control points, end.
struct SKvBezierSegment
{
    SKvCurvePoint points[4]; ///< in that order
};

/// The segments of a curve in order, each beginning where the one before ended.
using KvBezierPath = std::vector<SKvBezierSegment>;

/// A curve through keys; between two keys runs the cubic through the first key, its out handle, the second
/// key's in handle and the second key. Operations return 1 for success and 0 for failure, also without
/// memory, with nothing changed.
class IKvBezierCurve2D
{
public:
    /// Destroys the curve. @return 1.
    virtual int Release() = 0;
    /// Removes all keys. @return 1.
    virtual int Reset() = 0;
    /// @return how many keys there are.
    virtual int GetKeyCount() = 0;
    /// @param index 0 … count - 1. @param key receives it. @return 1; 0 for an index that is none.
    virtual int GetKey(int index, SKvBezierKey& key) = 0;
    /// Replaces a key; its index stays. @param index 0 … count - 1. @param key the new one.
    /// @return 1; 0 for an index that is none and for values that are not finite.
    virtual int SetKey(int index, const SKvBezierKey& key) = 0;
    /// @param path gets the curve's segments appended, in the curve's own space; fewer than two keys have
    /// none. @return 1 or 0.
    virtual int AddToPath(KvBezierPath& path) = 0;
    /// Appends a key and gives it its index. @param key the key. @return 1; 0 for values that are not finite.
    virtual int AddKey(const SKvBezierKey& key) = 0;

protected:
    ~IKvBezierCurve2D() = default;
};

/// Makes an empty curve, to be destroyed by its `Release`. @param curve receives it.
/// @return 1; 0 for null or without memory.
KV_API int KvCreateBezierCurve2D(IKvBezierCurve2D** curve);

/// y(x) along one cubic whose x rises from start to end; prepared once, then evaluated fast. A value type
/// that is cheap to copy: copies share what was prepared.
///
/// The parameter is solved to 1e-12 of the segment's width in x, so that y is right to 1e-9 of its height
/// wherever |dy/dx| is at most 1e3, both as fractions of the segment. Source: the inverse of the cubic's x
/// from a table, corrected by a step of Newton's method; where the curve is next to vertical, Laguerre's
/// method within a bracket.
class KV_API KvBezierEase
{
public:
    /// The straight ease from (0, 0) to (1, 1).
    KvBezierEase();
    /// @param points P0, C0, C1, P1 as x, y pairs. A loop in x takes the first parameter that has the x; an
    /// empty or reversed segment and values that are not finite, or too large to reckon with, step from P0.y
    /// to P1.y at P1.x. Throws std::bad_alloc without memory.
    explicit KvBezierEase(const double points[8]);
    /// Shares what was prepared.
    KvBezierEase(const KvBezierEase&);
    /// Shares what was prepared. @return this one.
    KvBezierEase& operator=(const KvBezierEase&);
    ~KvBezierEase();

    /// @param x in the segment's time.
    /// @return P0.y up to the segment's start (and for what is not a number), P1.y from its end on.
    double Value(double x) const;
    /// @param x in the segment's time.
    /// @return dy/dx there; infinite where the curve is vertical, 0 outside the segment.
    double Speed(double x) const;

private:
    struct Inverse;

    void MakeStep();
    double ParameterAt(double x) const;

    double m_start = 0;
    double m_end = 1;
    double m_scale = 1;                       ///< 1 / width; 0 for a step
    double m_y0 = 0;                          ///< P0.y
    double m_y1 = 1;                          ///< P1.y
    std::array<double, 3> m_y{1, 0, 0};       ///< y − P0.y as a cubic of the parameter
    std::shared_ptr<const Inverse> m_inverse; ///< null where x is the parameter itself
};
