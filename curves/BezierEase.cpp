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

// The parameter at which x has a value, for values from 0 to below 1. x is cut into equal parts; in each a
// polynomial in x gives a guess that one step of Newton's method makes good. Parts where that would not do,
// next to a vertical tangent, are looked up again in equal parts of the parameter: of those only few are
// steep still, and they are narrow in x.
struct KvBezierEase::Inverse
{
    static constexpr int kPieces = 64;

    struct Piece
    {
        double x = 0;                     ///< where it begins
        double t = 0;                     ///< the parameter there
        std::array<double, 5> guess = {}; ///< powers of x, from there
        bool isSteep = true;
    };

    Cubic x{};
    std::vector<double> turns;
    std::array<Piece, kPieces> ofX{}; ///< equal parts of x; all steep in a loop
    std::array<Piece, kPieces> ofT{}; ///< equal parts of the parameter; unused in a loop

    explicit Inverse(const Cubic& cubic);
    double ParameterAt(double u) const;

private:
    Piece MakePiece(double x0, double x1, double t0, double t1) const;
    bool IsGoodGuess(const Piece& piece, double width, double t1) const;
    double Guess(const Piece& piece, double u) const;
    double Corrected(double t, double u) const;
    double SteepParameterAt(double u) const;
    double FirstParameterAt(double u) const;
};

KvBezierEase::Inverse::Inverse(const Cubic& cubic) : x(cubic), turns(TurnsOf(cubic))
{
    if (!turns.empty())
        return;
    std::array<double, kPieces + 1> edges{}; // equally spaced
    std::array<double, kPieces + 1> places{};
    for (std::size_t i = 0; i <= kPieces; ++i)
        edges[i] = static_cast<double>(i) / kPieces;
    places[kPieces] = 1;
    for (std::size_t i = 1; i < kPieces; ++i)
        places[i] = std::clamp(At(x, edges[i]), places[i - 1], 1.0);
    for (std::size_t i = 0; i < kPieces; ++i)
        ofT[i] = MakePiece(places[i], places[i + 1], edges[i], edges[i + 1]);
    for (std::size_t i = 1; i < kPieces; ++i)
        places[i] = SteepParameterAt(edges[i]);
    for (std::size_t i = 0; i < kPieces; ++i)
        ofX[i] = MakePiece(edges[i], edges[i + 1], places[i], places[i + 1]);
}

// The polynomial of fifth degree that has the inverse's value, slope and bend at both ends.
KvBezierEase::Inverse::Piece KvBezierEase::Inverse::MakePiece(double x0, double x1, double t0,
                                                              double t1) const
{
    const double width = x1 - x0;
    const double slope0 = width / SlopeAt(x, t0);
    const double slope1 = width / SlopeAt(x, t1);
    const double bend0 = -BendAt(x, t0) / width * slope0 * slope0 * slope0;
    const double bend1 = -BendAt(x, t1) / width * slope1 * slope1 * slope1;
    const double value = t1 - t0 - slope0 - bend0 / 2;
    const double slope = slope1 - slope0 - bend0;
    const double bend = bend1 - bend0;
    Piece piece{x0,
                t0,
                {slope0, bend0 / 2, 10 * value - 4 * slope + bend / 2, -15 * value + 7 * slope - bend,
                 6 * value - 3 * slope + bend / 2}};
    double scale = 1;
    for (double& coefficient : piece.guess) {
        scale /= width;
        coefficient *= scale;
    }
    piece.isSteep = !IsGoodGuess(piece, width, t1);
    return piece;
}

// Newton's step leaves at most bend / 2 · (error / slope)². The guess errs most about the middle.
bool KvBezierEase::Inverse::IsGoodGuess(const Piece& piece, double width, double t1) const
{
    double error = 0;
    for (const double part : {0.3, 0.5, 0.7}) {
        const double place = piece.x + part * width;
        const double off = std::abs(At(x, Guess(piece, place)) - place);
        if (!(off < 1)) // next to no slope makes powers that are no numbers
            return false;
        error = std::max(error, off);
    }
    const double lowest = x[2] != 0 ? std::clamp(-x[1] / (3 * x[2]), piece.t, std::max(piece.t, t1)) : t1;
    const double slope = std::min({SlopeAt(x, piece.t), SlopeAt(x, lowest), SlopeAt(x, t1)});
    const double bend = std::max(std::abs(BendAt(x, piece.t)), std::abs(BendAt(x, t1)));
    const double onSlope = 2 * error / slope;
    return slope > 0 && bend / 2 * onSlope * onSlope <= kClose;
}

inline double KvBezierEase::Inverse::Guess(const Piece& piece, double u) const
{
    const auto& c = piece.guess;
    const double from = u - piece.x;
    const double squared = from * from;
    return piece.t + from * c[0] + squared * ((c[1] + from * c[2]) + squared * (c[3] + from * c[4]));
}

inline double KvBezierEase::Inverse::Corrected(double t, double u) const
{
    return t - (At(x, t) - u) / SlopeAt(x, t);
}

inline double KvBezierEase::Inverse::ParameterAt(double u) const
{
    const Piece& piece = ofX[static_cast<std::size_t>(static_cast<int>(u * kPieces))];
    return piece.isSteep ? SteepParameterAt(u) : Corrected(Guess(piece, u), u);
}

double KvBezierEase::Inverse::SteepParameterAt(double u) const
{
    if (!turns.empty())
        return FirstParameterAt(u);
    const auto next = std::upper_bound(ofT.begin() + 1, ofT.end(), u,
                                       [](double value, const Piece& piece) { return value < piece.x; });
    const Piece& piece = *(next - 1);
    return piece.isSteep ? Solve(x, u, piece.t, piece.t + 1.0 / kPieces) : Corrected(Guess(piece, u), u);
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
