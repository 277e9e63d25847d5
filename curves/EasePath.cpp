#include "curves/EasePath.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

constexpr double kTolerance = 0.1;
constexpr int kMostDepth = 60;   // of halvings: by then nothing is left of the parameter's precision
constexpr int kMostParts = 4000; // a curve that rounding made erratic is cut short

constexpr double kFrameDistance = 4; // pixels between marks that can still be told apart
constexpr double kFrameSlack = 1e-6; // a key that stands on a frame, but for rounding
constexpr double kMostFrames = 1e9;  // beyond, a frame's number is no longer exact enough

constexpr int kSpeedStep = 2; // pixels
constexpr double kAverageHeight = 1.0 / 3;
constexpr double kLeastRise = 0.01; // of the range: a flatter segment has no average to measure by

SKvCurvePoint Middle(const SKvCurvePoint& a, const SKvCurvePoint& b)
{
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

EaseBox Whole(const CRect& rect)
{
    return {double(rect.left), double(rect.top), double(rect.right), double(rect.bottom)};
}

bool IsInside(const SKvCurvePoint& point, const EaseBox& box)
{
    return point.x >= box.left && point.x <= box.right && point.y >= box.top && point.y <= box.bottom;
}

class Flattener
{
public:
    explicit Flattener(const EaseBox& box) : m_box(box) {}

    void Add(const EasePoints& p, int depth = 0)
    {
        if (++m_parts > kMostParts || IsOutside(p))
            return;
        if (depth == kMostDepth || IsFlat(p)) {
            AddLine({p[0], p[3]});
            return;
        }
        const SKvCurvePoint a = Middle(p[0], p[1]);
        const SKvCurvePoint b = Middle(p[1], p[2]);
        const SKvCurvePoint c = Middle(p[2], p[3]);
        const SKvCurvePoint ab = Middle(a, b);
        const SKvCurvePoint bc = Middle(b, c);
        const SKvCurvePoint middle = Middle(ab, bc);
        Add({p[0], a, ab, middle}, depth + 1);
        Add({middle, bc, c, p[3]}, depth + 1);
    }

    void AddLine(const EaseLine& line)
    {
        const auto visible = Clipped(line, m_box);
        if (!visible)
            return;
        const bool goesOn = !m_lines.empty() && m_lines.back().back().x == visible->from.x &&
                            m_lines.back().back().y == visible->from.y;
        if (!goesOn)
            m_lines.push_back({visible->from});
        m_lines.back().push_back(visible->to);
    }

    std::vector<EasePolyline> Take() { return std::move(m_lines); }

private:
    // The curve lies within the hull of its points.
    bool IsOutside(const EasePoints& p) const
    {
        const auto all = [&p](auto is) { return std::all_of(p.begin(), p.end(), is); };
        return all([this](const SKvCurvePoint& q) { return q.x < m_box.left; }) ||
               all([this](const SKvCurvePoint& q) { return q.x > m_box.right; }) ||
               all([this](const SKvCurvePoint& q) { return q.y < m_box.top; }) ||
               all([this](const SKvCurvePoint& q) { return q.y > m_box.bottom; });
    }

    // By the second differences, which bound the distance from the chord.
    static bool IsFlat(const EasePoints& p)
    {
        const auto bend = [&p](std::size_t i) {
            return std::hypot(p[i].x - 2 * p[i + 1].x + p[i + 2].x, p[i].y - 2 * p[i + 1].y + p[i + 2].y);
        };
        return 0.75 * std::max(bend(0), bend(1)) <= kTolerance;
    }

    const EaseBox m_box;
    std::vector<EasePolyline> m_lines;
    int m_parts = 0;
};

// Cuts off what lies beyond an edge, on its greater side (1) or its lesser one (-1). @return false when that
// is the whole line.
bool Cut(EaseLine& line, double SKvCurvePoint::*across, double SKvCurvePoint::*along, double edge, int side)
{
    const auto beyond = [&](const SKvCurvePoint& point) { return side * (point.*across - edge); };
    if (beyond(line.from) <= 0 && beyond(line.to) <= 0)
        return true;
    if (beyond(line.from) > 0 && beyond(line.to) > 0)
        return false;
    // Measured from the nearer end: a far one has no digits left for the pixels at the edge.
    const bool isFromNear = std::abs(beyond(line.from)) < std::abs(beyond(line.to));
    const SKvCurvePoint& near = isFromNear ? line.from : line.to;
    const SKvCurvePoint& far = isFromNear ? line.to : line.from;
    const double part = (edge - near.*across) / (far.*across - near.*across);
    SKvCurvePoint at;
    at.*across = edge;
    at.*along = near.*along + part * (far.*along - near.*along);
    (beyond(line.from) > 0 ? line.from : line.to) = at;
    return true;
}

} // namespace

std::optional<EaseLine> Clipped(const EaseLine& line, const EaseBox& box)
{
    constexpr auto x = &SKvCurvePoint::x;
    constexpr auto y = &SKvCurvePoint::y;
    EaseLine part = line;
    const bool isSeen = Cut(part, x, y, box.left, -1) && Cut(part, x, y, box.right, 1) &&
                        Cut(part, y, x, box.top, -1) && Cut(part, y, x, box.bottom, 1);
    return isSeen ? std::optional(part) : std::nullopt;
}

std::vector<EasePolyline> Flattened(const EasePoints& pixels, const EaseBox& box)
{
    Flattener flattener(box);
    flattener.Add(pixels);
    return flattener.Take();
}

std::vector<EasePolyline> SpeedLines(const EaseCurve& curve, const EaseLayout& layout)
{
    if (!layout.IsMapped() || !IsSensible(curve))
        return {};
    const double rise = std::abs(curve[EaseHandle::End].y - curve[EaseHandle::Start].y);
    const double average = std::max(rise, kLeastRise * curve.Span()) / curve.Width();
    const double unit = kAverageHeight * layout.plot.Height() / average;
    const KvBezierEase ease(Coordinates(curve.points).data());
    const EaseBox box = Whole(layout.plot);
    Flattener lines(box);
    std::optional<SKvCurvePoint> before;
    for (int x = layout.plot.left;; x = std::min(x + kSpeedStep, layout.plot.right)) {
        // Within the segment at both ends: outside, the speed is none.
        const double inside = std::clamp(double(x), box.left + 0.01, box.right - 0.01);
        const double speed = std::abs(ease.Speed(layout.ToCurve({inside, 0}).x));
        const double height = std::isfinite(speed) ? speed * unit : 2.0 * layout.plot.Height();
        const SKvCurvePoint point{double(x), layout.plot.bottom - height};
        if (before)
            lines.AddLine({*before, point});
        before = point;
        if (x >= layout.plot.right)
            return lines.Take();
    }
}

std::vector<SKvCurvePoint> FrameMarks(const EaseCurve& curve, const EaseLayout& layout, double frameLength)
{
    if (!layout.IsMapped() || !IsSensible(curve) || !(frameLength > 0) || !std::isfinite(frameLength))
        return {};
    const double first = std::ceil(curve[EaseHandle::Start].x / frameLength - kFrameSlack);
    const double last = std::floor(curve[EaseHandle::End].x / frameLength + kFrameSlack);
    const double distance = layout.plot.Width() / curve.Width() * frameLength;
    if (distance < kFrameDistance || !(std::abs(first) < kMostFrames) || !(std::abs(last) < kMostFrames))
        return {};
    const KvBezierEase ease(Coordinates(curve.points).data());
    std::vector<SKvCurvePoint> marks;
    for (auto frame = static_cast<int>(first); frame <= static_cast<int>(last); ++frame) {
        const double time =
            std::clamp(frame * frameLength, curve[EaseHandle::Start].x, curve[EaseHandle::End].x);
        const SKvCurvePoint mark = layout.ToPixel({time, ease.Value(time)});
        if (IsInside(mark, Whole(layout.plot)))
            marks.push_back(mark);
    }
    return marks;
}

} // namespace kv
