// The ease y(x) of one cubic: its x is inverted, its y evaluated. x is reckoned as a fraction of the
// segment's width.
#include "KvBezierCurve2D.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kClose = 1e-13;   // error of x that is good enough, a tenth of what is promised
constexpr double kNoise = 1e-14;   // a curve that turns back by less in x still counts as rising
constexpr double kTooLarge = 1e12; // control points that many widths away
constexpr double kStill = 1e-7;    // slopes that count as none
constexpr double kBelowOne = 1 - std::numeric_limits<double>::epsilon() / 2;
constexpr int kLaguerreSteps = 24;  // then only halves, which always arrive
constexpr int kMostSteps = 24 + 64; // of both

// c0 t + c1 t² + c2 t³
using Cubic = std::array<double, 3>;

double At(const Cubic& c, double t)
{
    return t * c[0] + t * t * (c[1] + t * c[2]);
}

double SlopeAt(const Cubic& c, double t)
{
    return c[0] + t * (2 * c[1] + t * (3 * c[2]));
}

double BendAt(const Cubic& c, double t)
{
    return 2 * c[1] + t * (6 * c[2]);
}

// The cubic from 0 whose control points stand at `out`, `in` and `end`.
Cubic FromControls(double out, double in, double end)
{
    return {3 * out, 3 * in - 6 * out, end - 3 * in + 3 * out};
}

double SizeOf(const Cubic& c)
{
    return std::abs(c[0]) + std::abs(c[1]) + std::abs(c[2]);
}

// The parameter in low … high at which a rising x is u. Laguerre's step meets single, double and triple roots
// alike fast; the bracket keeps it safe.
double Solve(const Cubic& x, double u, double low, double high)
{
    double t = low + (high - low) / 2;
    for (int step = 0; step < kMostSteps; ++step) {
        const double error = At(x, t) - u;
        if (std::abs(error) <= kClose)
            return t;
        (error < 0 ? low : high) = t;
        const double slope = SlopeAt(x, t);
        const double root = std::sqrt(std::max(0.0, 4 * slope * slope - 6 * error * BendAt(x, t)));
        const double next = t - 3 * error / (slope + root);
        const bool isInside = step < kLaguerreSteps && next > low && next < high;
        t = isInside ? next : low + (high - low) / 2;
    }
    return t;
}

// The parameters within 0 … 1 at which x turns back, ascending: two, one or none.
std::vector<double> TurnsOf(const Cubic& x)
{
    const double a = 3 * x[2];
    const double b = x[1];
    const double c = x[0];
    const double lowest = a != 0 ? std::clamp(-b / a, 0.0, 1.0) : 0;
    if (std::min({SlopeAt(x, 0), SlopeAt(x, lowest), SlopeAt(x, 1)}) >= -kNoise)
        return {};
    const double q = -(b + std::copysign(std::sqrt(std::max(0.0, b * b - a * c)), b));
    std::vector<double> turns;
    for (const double t : {q / a, c / q}) {
        if (t > 0 && t < 1)
            turns.push_back(t);
    }
    std::sort(turns.begin(), turns.end());
    return turns;
}

} // namespace

// The parameter at which x has a value, for values from 0 to below 1. The parameter's range is cut into
// cells; in each a polynomial in x gives a guess that one step of Newton's method makes good. Cells where
// that would not do, next to a vertical tangent, are narrow in x: few values fall into them.
struct KvBezierEase::Inverse
{
    static constexpr int kCells = 64;
    static constexpr int kBuckets = 256;

    struct Cell
    {
        double start = 0;                 ///< its parameter there
        std::array<double, 5> guess = {}; ///< powers of x, from the cell's edge
        bool isSteep = false;
    };

    Cubic x{};
    std::vector<double> turns;
    std::array<double, kCells + 1> edges{}; ///< x where the cells begin
    std::array<Cell, kCells> cells{};
    std::array<std::uint8_t, kBuckets> firstCell{}; ///< of equal parts of x

    explicit Inverse(const Cubic& cubic);
    double ParameterAt(double u) const;

private:
    void FillCell(std::size_t index);
    double Guess(const Cell& cell, double fromEdge) const;
    bool IsGoodGuess(const Cell& cell, double edge, double width) const;
    double FirstParameterAt(double u) const;
};

KvBezierEase::Inverse::Inverse(const Cubic& cubic) : x(cubic), turns(TurnsOf(cubic))
{
    if (!turns.empty())
        return;
    edges[kCells] = 1;
    for (std::size_t i = 1; i < kCells; ++i)
        edges[i] = std::clamp(At(x, static_cast<double>(i) / kCells), edges[i - 1], 1.0);
    for (std::size_t i = 0; i < kCells; ++i)
        FillCell(i);
    std::size_t cell = 0;
    for (std::size_t i = 0; i < kBuckets; ++i) {
        while (cell + 1 < kCells && edges[cell + 1] <= static_cast<double>(i) / kBuckets)
            ++cell;
        firstCell[i] = static_cast<std::uint8_t>(cell);
    }
}

// The polynomial of fifth degree that has the inverse's value, slope and bend at both edges.
void KvBezierEase::Inverse::FillCell(std::size_t index)
{
    constexpr double size = 1.0 / kCells;
    Cell& cell = cells[index];
    cell.start = static_cast<double>(index) * size;
    const double width = edges[index + 1] - edges[index];
    double slopes[2];
    double bends[2];
    for (int end = 0; end < 2; ++end) {
        const double t = cell.start + end * size;
        slopes[end] = width / (size * SlopeAt(x, t));
        bends[end] = -BendAt(x, t) * size * size / width * slopes[end] * slopes[end] * slopes[end];
    }
    const double c1 = slopes[0];
    const double c2 = bends[0] / 2;
    const double value = 1 - c1 - c2;
    const double slope = slopes[1] - c1 - 2 * c2;
    const double bend = bends[1] - 2 * c2;
    cell.guess = {c1, c2, 10 * value - 4 * slope + bend / 2, -15 * value + 7 * slope - bend,
                  6 * value - 3 * slope + bend / 2};
    double scale = size;
    for (double& coefficient : cell.guess) {
        scale /= width;
        coefficient *= scale;
    }
    cell.isSteep = !IsGoodGuess(cell, edges[index], width);
}

double KvBezierEase::Inverse::Guess(const Cell& cell, double fromEdge) const
{
    const auto& c = cell.guess;
    const double squared = fromEdge * fromEdge;
    return cell.start + fromEdge * c[0] +
           squared * ((c[1] + fromEdge * c[2]) + squared * (c[3] + fromEdge * c[4]));
}

// Newton's step leaves at most bend / 2 · (error / slope)². The guess errs most about the middle of the cell.
bool KvBezierEase::Inverse::IsGoodGuess(const Cell& cell, double edge, double width) const
{
    const double end = cell.start + 1.0 / kCells;
    const double lowest = x[2] != 0 ? std::clamp(-x[1] / (3 * x[2]), cell.start, end) : end;
    const double slope = std::min({SlopeAt(x, cell.start), SlopeAt(x, lowest), SlopeAt(x, end)});
    const double bend = std::max(std::abs(BendAt(x, cell.start)), std::abs(BendAt(x, end)));
    double error = 0;
    for (const double part : {0.3, 0.5, 0.7}) {
        const double off = std::abs(At(x, Guess(cell, part * width)) - (edge + part * width));
        if (!(off < 1)) // next to no slope makes powers that are no numbers
            return false;
        error = std::max(error, off);
    }
    const double onSlope = 2 * error / slope;
    return slope > 0 && bend / 2 * onSlope * onSlope <= kClose;
}

double KvBezierEase::Inverse::FirstParameterAt(double u) const
{
    double low = 0;
    for (const double high : turns) {
        if (At(x, low) <= u && At(x, high) >= u)
            return Solve(x, u, low, high);
        low = high;
    }
    return Solve(x, u, low, 1);
}

inline double KvBezierEase::Inverse::ParameterAt(double u) const
{
    if (!turns.empty())
        return FirstParameterAt(u);
    std::size_t index = firstCell[static_cast<std::size_t>(static_cast<int>(u * kBuckets))];
    index += u >= edges[index + 1] ? 1 : 0;
    while (u >= edges[index + 1])
        ++index;
    const Cell& cell = cells[index];
    if (cell.isSteep)
        return Solve(x, u, cell.start, cell.start + 1.0 / kCells);
    const double t = Guess(cell, u - edges[index]);
    return t - (At(x, t) - u) / SlopeAt(x, t);
}

KvBezierEase::KvBezierEase() = default;
KvBezierEase::KvBezierEase(const KvBezierEase&) = default;
KvBezierEase& KvBezierEase::operator=(const KvBezierEase&) = default;
KvBezierEase::~KvBezierEase() = default;

KvBezierEase::KvBezierEase(const double points[8])
    : m_start(points[0])
    , m_end(points[6])
    , m_scale(1 / (m_end - m_start))
    , m_y0(points[1])
    , m_y1(points[7])
    , m_y(FromControls(points[3] - m_y0, points[5] - m_y0, m_y1 - m_y0))
{
    const double out = (points[2] - m_start) * m_scale;
    const double in = (points[4] - m_start) * m_scale;
    const Cubic x = FromControls(out, in, 1);
    const double reach = std::abs(m_y0) + 6 * SizeOf(m_y); // of every sum below
    if (!(m_scale > 0 && std::isfinite(m_scale) && SizeOf(x) <= kTooLarge && std::isfinite(reach))) {
        MakeStep();
        return;
    }
    const bool isStraight = m_y == Cubic{x[0] * (m_y1 - m_y0), x[1] * (m_y1 - m_y0), x[2] * (m_y1 - m_y0)};
    if (isStraight && TurnsOf(x).empty())
        m_y = {m_y1 - m_y0, 0, 0};
    else if (x != Cubic{1, 0, 0})
        m_inverse = std::make_shared<const Inverse>(x);
}

void KvBezierEase::MakeStep()
{
    for (double* y : {&m_y0, &m_y1})
        *y = std::isfinite(*y) ? *y : 0;
    if (!std::isfinite(m_end))
        m_end = std::isfinite(m_start) ? m_start : 0;
    m_start = m_end;
    m_scale = 0;
}

inline double KvBezierEase::ParameterAt(double x) const
{
    const double u = std::min((x - m_start) * m_scale, kBelowOne);
    return m_inverse ? m_inverse->ParameterAt(u) : u;
}

double KvBezierEase::Value(double x) const
{
    if (x >= m_end)
        return m_y1;
    return x > m_start ? m_y0 + At(m_y, ParameterAt(x)) : m_y0;
}

double KvBezierEase::Speed(double x) const
{
    if (!(x >= m_start && x <= m_end) || m_scale == 0)
        return 0;
    const Cubic inX = m_inverse ? m_inverse->x : Cubic{1, 0, 0};
    const double t = x >= m_end ? 1 : x > m_start ? ParameterAt(x) : 0;
    // Where the point stands still the next derivatives tell where it is going.
    const double ways[][2] = {
        {SlopeAt(inX, t), SlopeAt(m_y, t)}, {BendAt(inX, t), BendAt(m_y, t)}, {inX[2], m_y[2]}};
    for (const auto& [dx, dy] : ways) {
        if (std::abs(dx) > kStill)
            return dy / dx * m_scale;
        if (std::abs(dy) > kStill * SizeOf(m_y))
            return std::copysign(std::numeric_limits<double>::infinity(), dy);
    }
    return 0;
}
