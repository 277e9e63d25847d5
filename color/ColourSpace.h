// Red, green and blue, and hue, saturation and brightness (the hexagonal model), in double.
#pragma once

#include "color/GradientColour.h"

#include <algorithm>
#include <cstdint>

namespace kv {

/// Each channel 0 … 1.
struct Rgb
{
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// Hue in degrees, 0 … 360 (both are red), saturation and brightness 0 … 1.
struct Hsb
{
    double hue = 0;
    double saturation = 0;
    double brightness = 0;

    friend bool operator==(const Hsb&, const Hsb&) = default;
};

/// 0 … 1; what is not a number counts as 0.
constexpr double ClampUnit(double value)
{
    return value >= 0 ? std::min(value, 1.0) : 0.0;
}

/// A channel as a byte, to the nearest.
constexpr std::uint32_t ByteOf(double channel)
{
    const double rounded = ClampUnit(channel) * 255 + 0.5;
    return static_cast<std::uint32_t>(rounded);
}

/// The colour channels of 0xAARRGGBB.
constexpr Rgb RgbOf(std::uint32_t colour)
{
    return {RedOf(colour) / 255.0, GreenOf(colour) / 255.0, BlueOf(colour) / 255.0};
}
/// 0xAARRGGBB with an alpha of 0 … 255.
constexpr std::uint32_t Packed(const Rgb& rgb, std::uint32_t alpha = 255)
{
    return MakeColour(alpha, ByteOf(rgb.red), ByteOf(rgb.green), ByteOf(rgb.blue));
}

/// Values from outside put in range: hues wrap around (360 stays), the others are clamped; what is not finite
/// counts as hue 0.
Hsb InRange(const Hsb& hsb);
Rgb InRange(const Rgb& rgb);

/// The channels must be in range. Greys have hue 0, black has saturation 0 too; otherwise the hue is below
/// 360.
Hsb RgbToHsb(const Rgb& rgb);
/// The values must be in range.
Rgb HsbToRgb(const Hsb& hsb);

/// Saturation or brightness in whole percent, toward zero. A product that only binary fractions keep below a
/// whole number is that number: 0.29 is 29.
constexpr int WholePercent(double value)
{
    return static_cast<int>(value * 100 + 1e-6);
}
/// The hue in whole degrees, likewise.
constexpr int WholeDegrees(double hue)
{
    return static_cast<int>(hue + 1e-6);
}

} // namespace kv
