#include "project/Paint.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace titler {
namespace {

float Fraction(float value)
{
    return std::isnan(value) ? 0.0f : std::clamp(value, 0.0f, 1.0f);
}

using IsSameStop = bool (*)(const SKvCGGradientKey&, const SKvCGGradientKey&);

bool HasSameColour(const SKvCGGradientKey& a, const SKvCGGradientKey& b)
{
    return a.colour == b.colour;
}

bool HasSamePlace(const SKvCGGradientKey& a, const SKvCGGradientKey& b)
{
    return a.position == b.position;
}

bool HasSameColourAndPlace(const SKvCGGradientKey& a, const SKvCGGradientKey& b)
{
    return HasSameColour(a, b) && HasSamePlace(a, b);
}

bool IsEqual(const SKvCGGradientKey& a, const SKvCGGradientKey& b)
{
    return HasSameColourAndPlace(a, b) && a.midPoint == b.midPoint;
}

} // namespace

bool LooksSame(const Paint& a, const Paint& b)
{
    return a.kind == b.kind && a.colour == b.colour && a.angle == b.angle && a.corners == b.corners &&
           std::equal(a.stops.begin(), a.stops.end(), b.stops.begin(), b.stops.end(), IsEqual);
}

GradientStops NormalisedStops(GradientStops stops)
{
    if (stops.size() > kMostStops)
        stops.resize(kMostStops);
    for (SKvCGGradientKey& stop : stops) {
        stop.position = Fraction(stop.position);
        stop.midPoint = Fraction(stop.midPoint);
    }
    std::stable_sort(stops.begin(), stops.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return stops;
}

// A stop is known again by all it has, or else by what one edit leaves as it was.
void SetStops(Paint& paint, GradientStops stops)
{
    constexpr IsSameStop tests[] = {IsEqual, HasSameColourAndPlace, HasSameColour, HasSamePlace};
    std::vector<QJsonObject> sources(stops.size());
    std::vector<bool> found(stops.size());
    std::vector<bool> gone(paint.stops.size());
    paint.stopSources.resize(paint.stops.size());
    for (const IsSameStop isSame : tests)
        for (std::size_t to = 0; to < stops.size(); ++to)
            for (std::size_t from = 0; from < gone.size() && !found[to]; ++from)
                if (!gone[from] && isSame(paint.stops[from], stops[to])) {
                    sources[to] = std::move(paint.stopSources[from]);
                    found[to] = gone[from] = true;
                }
    paint.stops = std::move(stops);
    paint.stopSources = std::move(sources);
}

} // namespace titler
