// Arithmetic on 0xAARRGGBB colours.
#pragma once

#include <cstdint>

namespace kv {

constexpr std::uint32_t AlphaOf(std::uint32_t colour)
{
    return colour >> 24;
}
constexpr std::uint32_t RedOf(std::uint32_t colour)
{
    return (colour >> 16) & 0xFFu;
}
constexpr std::uint32_t GreenOf(std::uint32_t colour)
{
    return (colour >> 8) & 0xFFu;
}
constexpr std::uint32_t BlueOf(std::uint32_t colour)
{
    return colour & 0xFFu;
}

constexpr std::uint32_t MakeColour(std::uint32_t a, std::uint32_t r, std::uint32_t g, std::uint32_t b)
{
    return (a << 24) | (r << 16) | (g << 8) | b;
}

/// The average of each of the four channels, rounded down.
constexpr std::uint32_t MixColour(std::uint32_t a, std::uint32_t b)
{
    return (a & b) + (((a ^ b) & 0xFEFEFEFEu) >> 1);
}

/// How a colour shows in a disabled control: grey at half brightness (hence 6, not 3), alpha kept.
constexpr std::uint32_t DisabledGrey(std::uint32_t colour)
{
    const std::uint32_t grey = (RedOf(colour) + GreenOf(colour) + BlueOf(colour)) / 6;
    return MakeColour(AlphaOf(colour), grey, grey, grey);
}

/// The colour that shows in an enabled or disabled control.
constexpr std::uint32_t DisplayColour(std::uint32_t colour, bool enabled)
{
    return enabled ? colour : DisabledGrey(colour);
}

/// A straight (not premultiplied) colour drawn over an opaque one.
constexpr std::uint32_t DrawOver(std::uint32_t colour, std::uint32_t opaque)
{
    const std::uint32_t alpha = AlphaOf(colour);
    const auto channel = [alpha](std::uint32_t top, std::uint32_t below) {
        return (top * alpha + below * (255 - alpha) + 127) / 255;
    };
    return MakeColour(255, channel(RedOf(colour), RedOf(opaque)), channel(GreenOf(colour), GreenOf(opaque)),
                      channel(BlueOf(colour), BlueOf(opaque)));
}

} // namespace kv
