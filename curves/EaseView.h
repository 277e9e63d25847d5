// The part of the vertical axis that the ease curve window shows, and the grid over it.
#pragma once

#include <vector>

namespace kv {

/// A range of values, `minimum` at the bottom of the plot and `maximum` at its top.
struct EaseRange
{
    double minimum = 0;
    double maximum = 1;

    double Span() const { return maximum - minimum; }
};

/// Zooms `view` by `factor` (clamped to 0.025 … 40) around its centre; the result spans 0.05 to 2 times the
/// default range.
EaseRange Zoomed(const EaseRange& view, const EaseRange& whole, double factor);
EaseRange Moved(const EaseRange& view, double by);

/// Distance of the grid lines: the largest of 1, 2, 5 times a power of ten, from 0.0001 to 10000, that is not
/// larger than a fifth of the view's span, else the nearest of them.
double TickStep(const EaseRange& view);
/// The values of the grid lines, strictly within the view, ascending; none for a view without a span or with
/// more lines than could be told apart.
std::vector<double> Ticks(const EaseRange& view);
/// How many digits a label shows behind the point, by the step: 2, 4 or 6.
int TickDigits(double step);

} // namespace kv
