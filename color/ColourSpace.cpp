#include "color/ColourSpace.h"

#include <cmath>

namespace kv {

namespace {

constexpr double kTurn = 360;

/// How much of a channel's fall from full to none applies at a hue, 0 … 1: none for a third of the circle,
/// all of it for a third, and a ramp between them.
/// @param sector the hue in sixths of the circle, turned so that the channel's ramps lie at 0 … 1 and 3 … 4;
/// 0 … 12.
double Fall(double sector)
{
    const double k = sector >= 6 ? sector - 6 : sector;
    return std::clamp(std::min(k, 4 - k), 0.0, 1.0);
}

} // namespace

Hsb InRange(const Hsb& hsb)
{
    double hue = std::isfinite(hsb.hue) ? hsb.hue : 0.0;
    if (hue < 0 || hue > kTurn) {
        hue = std::fmod(hue, kTurn);
        hue += hue < 0 ? kTurn : 0;
    }
    return {hue, ClampUnit(hsb.saturation), ClampUnit(hsb.brightness)};
}

Rgb InRange(const Rgb& rgb)
{
    return {ClampUnit(rgb.red), ClampUnit(rgb.green), ClampUnit(rgb.blue)};
}

Hsb RgbToHsb(const Rgb& rgb)
{
    const auto [red, green, blue] = rgb;
    const double high = std::max({red, green, blue});
    const double chroma = high - std::min({red, green, blue});
    if (chroma <= 0)
        return {0, 0, high};
    double sector = 0;
    if (high == red)
        sector = (green - blue) / chroma;
    else if (high == green)
        sector = (blue - red) / chroma + 2;
    else
        sector = (red - green) / chroma + 4;
    double hue = 60 * sector;
    if (hue < 0) {
        hue += kTurn;
        // A hue next to nothing below red rounds up to the full turn.
        hue = hue < kTurn ? hue : 0;
    }
    return {hue, chroma / high, high};
}

Rgb HsbToRgb(const Hsb& hsb)
{
    const double sector = hsb.hue / 60;
    const double chroma = hsb.brightness * hsb.saturation;
    const auto channel = [&](int turn) { return hsb.brightness - chroma * Fall(sector + turn); };
    return {channel(5), channel(3), channel(1)};
}

} // namespace kv
