#include "curves/EaseView.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

constexpr double kLeastFactor = 0.025;
constexpr double kMostFactor = 40;
constexpr double kLeastScale = 0.05;
constexpr double kMostScale = 2;

constexpr double kLinesWanted = 5;
constexpr double kMostLines = 1000;
// Rounding in a view that was moved about must not make the grid jump or a line come and go.
constexpr double kSlack = 1e-9;

// Steps are counted in ten-thousandths, whole numbers: so a line's value, divided last, is the double nearest
// to its decimal text.
constexpr double kUnits = 10000;
constexpr int kSteps = 25;

double StepAt(int index)
{
    constexpr double mantissas[] = {1, 2, 5};
    constexpr double powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    return mantissas[index % 3] * powers[index / 3];
}

double StepUnits(const EaseRange& view)
{
    const double target = view.Span() / kLinesWanted * (1 + kSlack);
    int index = 0;
    while (index + 1 < kSteps && StepAt(index + 1) / kUnits <= target)
        ++index;
    return StepAt(index);
}

// A view's edge counted in steps; a whole number where it stands on a line.
double InSteps(double value, double stepUnits)
{
    const double count = value / (stepUnits / kUnits);
    const double whole = std::round(count);
    return std::abs(count - whole) <= kSlack ? whole : count;
}

bool IsUsable(const EaseRange& range)
{
    return std::isfinite(range.minimum) && std::isfinite(range.maximum) && range.Span() > 0 &&
           std::isfinite(range.Span());
}

} // namespace

EaseRange Zoomed(const EaseRange& view, const EaseRange& whole, double factor)
{
    if (!IsUsable(view) || !IsUsable(whole) || std::isnan(factor))
        return view;
    const double scale = std::clamp(
        view.Span() / whole.Span() * std::clamp(factor, kLeastFactor, kMostFactor), kLeastScale, kMostScale);
    const double centre = view.minimum / 2 + view.maximum / 2;
    const double shift = centre - (whole.minimum / 2 + whole.maximum / 2) * scale;
    const EaseRange zoomed{whole.minimum * scale + shift, whole.maximum * scale + shift};
    return IsUsable(zoomed) ? zoomed : view;
}

EaseRange Moved(const EaseRange& view, double by)
{
    const EaseRange moved{view.minimum + by, view.maximum + by};
    return IsUsable(moved) ? moved : view;
}

double TickStep(const EaseRange& view)
{
    return StepUnits(view) / kUnits;
}

std::vector<double> Ticks(const EaseRange& view)
{
    std::vector<double> ticks;
    if (!IsUsable(view))
        return ticks;
    const double step = StepUnits(view);
    const double first = std::floor(InSteps(view.minimum, step)) + 1;
    const double last = std::ceil(InSteps(view.maximum, step)) - 1;
    if (!(last - first < kMostLines))
        return ticks;
    for (int i = 0; first + i <= last; ++i) {
        const double value = (first + i) * step / kUnits;
        // Far from 0 neighbours may be the same number.
        if (value > (ticks.empty() ? view.minimum : ticks.back()) && value < view.maximum)
            ticks.push_back(value);
    }
    return ticks;
}

int TickDigits(double step)
{
    if (step > 0.1)
        return 2;
    return step > 0.001 ? 4 : 6;
}

} // namespace kv
