// An ease y(x) beside the toolkit's easing curve and the usual ten bisections with a linear step. Each
// reports, beside its time, its largest error in x, as a fraction of the width, against a reckoning in long
// double.
#include "KvBezierCurve2D.h"

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

// Control points as fractions, as in cubic-bezier(a, b, c, d).
struct Shape
{
    const char* name;
    double a, b, c, d;
};

constexpr Shape kShapes[] = {
    {"ease", 0.25, 0.1, 0.25, 1},    {"ease in", 0.42, 0, 1, 1},    {"ease in out", 0.42, 0, 0.58, 1},
    {"speed up", 0.5, 0, 1, 1},      {"speed down", 0, 0, 0.5, 1},  {"late and steep", 0.9, 0, 0.1, 1},
    {"vertical middle", 1, 0, 0, 1}, {"vertical ends", 0, 1, 1, 0}, {"threefold start", 0, 0.5, 0, 1},
};

const Shape& ShapeOf(const benchmark::State& state)
{
    return kShapes[static_cast<std::size_t>(state.range(0))];
}

enum Order
{
    kInOrder, ///< as in playback: processors foresee all branches
    kAtRandom,
};

std::vector<double> MakePlaces(Order order)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> anywhere(0, 1);
    std::vector<double> places(4096);
    for (double& x : places)
        x = anywhere(random);
    if (order == kInOrder)
        std::sort(places.begin(), places.end());
    return places;
}

long double Bezier(long double t, long double first, long double second)
{
    return 3 * first * t * (1 - t) * (1 - t) + 3 * second * t * t * (1 - t) + t * t * t;
}

// With the y of this shape's control points at 1/3 and 2/3, y is the parameter: how far its x is off.
template <typename Value>
double WorstError(const Shape& shape, const Value& parameterAt)
{
    long double worst = 0;
    for (const double x : MakePlaces(kAtRandom)) {
        const long double error = std::abs(Bezier(parameterAt(x), shape.a, shape.c) - x);
        if (std::isnan(error))
            return std::numeric_limits<double>::quiet_NaN();
        worst = std::max(worst, error);
    }
    return static_cast<double>(worst);
}

Shape WithParameter(Shape shape)
{
    shape.b = 1.0 / 3;
    shape.d = 2.0 / 3;
    return shape;
}

template <typename Value>
void Measure(benchmark::State& state, const Value& value, double error)
{
    const auto order = static_cast<Order>(state.range(1));
    const std::vector<double> places = MakePlaces(order);
    for (auto _ : state) {
        double sum = 0;
        for (const double x : places)
            sum += value(x);
        benchmark::DoNotOptimize(sum);
    }
    state.SetLabel(ShapeOf(state).name + std::string(order == kInOrder ? ", in order" : ", at random"));
    state.counters["error"] = error;
    using benchmark::Counter;
    state.counters["each"] =
        Counter(static_cast<double>(places.size()), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

// Every shape in both orders.
void AllOf(benchmark::internal::Benchmark* bench)
{
    bench->ArgsProduct({benchmark::CreateDenseRange(0, std::size(kShapes) - 1, 1), {kInOrder, kAtRandom}});
}

KvBezierEase OurEase(const Shape& shape)
{
    const double points[8] = {0, 0, shape.a, shape.b, shape.c, shape.d, 1, 1};
    return KvBezierEase(points);
}

void Ours(benchmark::State& state)
{
    const KvBezierEase ease = OurEase(ShapeOf(state));
    const KvBezierEase parameter = OurEase(WithParameter(ShapeOf(state)));
    const double error = WorstError(ShapeOf(state), [&](double x) { return parameter.Value(x); });
    if (!(error <= 1e-12))
        state.SkipWithError("the error is larger than promised");
    Measure(
        state, [&](double x) { return ease.Value(x); }, error);
}
BENCHMARK(Ours)->Apply(AllOf);

// Whether a peer gives our y to within its own error in x: every shape here rises.
template <typename Value>
bool AgreesWithOurs(const Shape& shape, const Value& value)
{
    constexpr double reach = 1e-3;
    constexpr double noise = 1e-5;
    const KvBezierEase ours = OurEase(shape);
    for (const double x : MakePlaces(kAtRandom)) {
        const double y = value(x);
        if (!(y >= ours.Value(x - reach) - noise && y <= ours.Value(x + reach) + noise))
            return false;
    }
    return true;
}

template <typename Value>
void MeasurePeer(benchmark::State& state, const Value& value, double error)
{
    if (AgreesWithOurs(ShapeOf(state), value))
        Measure(state, value, error);
    else
        state.SkipWithError("the answer is not ours");
}

QEasingCurve PeerEase(const Shape& shape)
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({shape.a, shape.b}, {shape.c, shape.d}, {1, 1});
    return curve;
}

void PeerEasingCurve(benchmark::State& state)
{
    const QEasingCurve ease = PeerEase(ShapeOf(state));
    const QEasingCurve parameter = PeerEase(WithParameter(ShapeOf(state)));
    const double error = WorstError(ShapeOf(state), [&](double x) { return parameter.valueForProgress(x); });
    MeasurePeer(
        state, [&](double x) { return ease.valueForProgress(x); }, error);
}
BENCHMARK(PeerEasingCurve)->Apply(AllOf);

// The cubic through 0 and 1 in powers of the parameter.
struct Powers
{
    double c1, c2, c3;

    Powers(double first, double second)
        : c1(3 * first)
        , c2(3 * second - 6 * first)
        , c3(1 - 3 * second + 3 * first)
    {
    }
    double At(double t) const { return t * (c1 + t * (c2 + t * c3)); }
};

class Bisection
{
public:
    explicit Bisection(const Shape& shape) : m_x(shape.a, shape.c), m_y(shape.b, shape.d) {}

    double Value(double x) const
    {
        double low = 0;
        double step = 0.5;
        for (int i = 0; i < 10; ++i) {
            low += m_x.At(low + step) < x ? step : 0;
            step /= 2;
        }
        const double high = low + 2 * step;
        const double from = m_x.At(low);
        const double width = m_x.At(high) - from;
        return m_y.At(low + (width > 0 ? (x - from) / width : 0) * (high - low));
    }

private:
    Powers m_x;
    Powers m_y;
};

void PeerBisection(benchmark::State& state)
{
    const Bisection ease(ShapeOf(state));
    const Bisection parameter(WithParameter(ShapeOf(state)));
    const double error = WorstError(ShapeOf(state), [&](double x) { return parameter.Value(x); });
    MeasurePeer(
        state, [&](double x) { return ease.Value(x); }, error);
}
BENCHMARK(PeerBisection)->Apply(AllOf);

// What a curve costs that changes with every move of the mouse.
void OursPrepared(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(OurEase(ShapeOf(state)));
    state.SetLabel(ShapeOf(state).name);
}
BENCHMARK(OursPrepared)->DenseRange(0, std::size(kShapes) - 1);

} // namespace
