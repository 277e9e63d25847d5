#include "color/ColourState.h"

namespace kv {

namespace {

using enum ColourChannel;

/// The channel's own value: of hue in degrees.
double& ValueIn(Rgb& rgb, Hsb& hsb, ColourChannel channel)
{
    switch (channel) {
    case Red:
        return rgb.red;
    case Green:
        return rgb.green;
    case Blue:
        return rgb.blue;
    case Hue:
        return hsb.hue;
    case Saturation:
        return hsb.saturation;
    default:
        return hsb.brightness;
    }
}

double UnitOf(ColourChannel channel)
{
    return channel == Hue ? 360 : 1;
}

ColourChannel NthChannel(int index)
{
    return static_cast<ColourChannel>(std::clamp(index, 0, 5));
}

} // namespace

double ColourState::Place(ColourChannel channel) const
{
    if (channel == ColourChannel::Alpha)
        return m_alpha / 255.0;
    Rgb rgb = m_rgb;
    Hsb hsb = m_hsb;
    return ValueIn(rgb, hsb, channel) / UnitOf(channel);
}

int ColourState::Shown(ColourChannel channel) const
{
    switch (channel) {
    case ColourChannel::Alpha:
        return m_alpha;
    case Hue:
        return WholeDegrees(m_hsb.hue);
    case Saturation:
    case Brightness:
        return WholePercent(Place(channel));
    default:
        return static_cast<int>(ByteOf(Place(channel)));
    }
}

void ColourState::SetRgb(const Rgb& rgb, LostHue lost)
{
    m_rgb = InRange(rgb);
    Hsb hsb = RgbToHsb(m_rgb);
    if (lost == LostHue::Kept && hsb.saturation == 0) {
        hsb.hue = m_hsb.hue;
        if (hsb.brightness == 0)
            hsb.saturation = m_hsb.saturation;
    }
    m_hsb = hsb;
}

void ColourState::SetHsb(const Hsb& hsb)
{
    m_hsb = InRange(hsb);
    m_rgb = HsbToRgb(m_hsb);
}

void ColourState::SetAlpha(int alpha)
{
    m_alpha = std::clamp(alpha, 0, 255);
}

bool ColourState::SetValue(std::uint32_t colour)
{
    const bool changed = colour != Value();
    if (((colour ^ Value()) & 0xFFFFFFu) != 0)
        SetRgb(RgbOf(colour), LostHue::Zero);
    SetAlpha(static_cast<int>(AlphaOf(colour)));
    return changed;
}

void ColourState::Enter(ColourChannel channel, int shown)
{
    const int number = std::clamp(shown, 0, MostOf(channel));
    if (channel == ColourChannel::Alpha) {
        SetAlpha(number);
        return;
    }
    Rgb rgb = m_rgb;
    Hsb hsb = m_hsb;
    ValueIn(rgb, hsb, channel) = channel == Hue ? number : static_cast<double>(number) / MostOf(channel);
    IsHsb(channel) ? SetHsb(hsb) : SetRgb(rgb, LostHue::Zero);
}

void ColourState::Move(ColourChannel channel, double place)
{
    if (channel == ColourChannel::Alpha)
        SetAlpha(static_cast<int>(ByteOf(place)));
    else
        Move(channel, place, channel, place);
}

void ColourState::Move(ColourChannel first, double firstPlace, ColourChannel second, double secondPlace)
{
    Rgb rgb = m_rgb;
    Hsb hsb = m_hsb;
    ValueIn(rgb, hsb, first) = ClampUnit(firstPlace) * UnitOf(first);
    ValueIn(rgb, hsb, second) = ClampUnit(secondPlace) * UnitOf(second);
    IsHsb(first) ? SetHsb(hsb) : SetRgb(rgb, LostHue::Kept);
}

ColourChannel LockedChannel(int fieldLock)
{
    return NthChannel(std::clamp(fieldLock, 1, 6) - 1);
}

ColourChannel SliderChannel(int sliderLock)
{
    return NthChannel(std::clamp(sliderLock, 10, 15) - 10);
}

FieldAxes AxesOf(int fieldLock)
{
    constexpr FieldAxes axes[] = {{Green, Blue},     {Red, Blue},      {Red, Green}, {Saturation, Brightness},
                                  {Hue, Brightness}, {Hue, Saturation}};
    return axes[static_cast<std::size_t>(LockedChannel(fieldLock))];
}

} // namespace kv
