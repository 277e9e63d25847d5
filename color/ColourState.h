// One colour as it is edited, and what moves it. Hue and saturation are kept beside red, green and blue,
// because a grey or a black has lost them and still has to come back to them.
#pragma once

#include "color/ColourSpace.h"

#include <cstdint>

namespace kv {

enum class ColourChannel
{
    Red,
    Green,
    Blue,
    Hue,
    Saturation,
    Brightness,
    Alpha,
};

constexpr bool IsHsb(ColourChannel channel)
{
    return channel >= ColourChannel::Hue && channel <= ColourChannel::Brightness;
}

/// The largest whole number that a channel is shown as: 255, 360 degrees or 100 percent.
constexpr int MostOf(ColourChannel channel)
{
    if (channel == ColourChannel::Hue)
        return 360;
    return IsHsb(channel) ? 100 : 255;
}

/// What becomes of hue and saturation when red, green and blue have none.
enum class LostHue
{
    Zero, ///< hue 0 for greys, saturation 0 for black
    Kept,
};

/// A value type; everything that is set is put in range.
class ColourState
{
public:
    ColourState() = default;
    explicit ColourState(std::uint32_t colour) { SetValue(colour); }

    const Rgb& GetRgb() const { return m_rgb; }
    const Hsb& GetHsb() const { return m_hsb; }
    int Alpha() const { return m_alpha; }
    /// 0xAARRGGBB.
    std::uint32_t Value() const { return Packed(m_rgb, static_cast<std::uint32_t>(m_alpha)); }

    /// A channel as a fraction of its range, 0 … 1.
    double Place(ColourChannel channel) const;
    /// A channel as it is shown: red, green, blue and alpha to the nearest of 255, the others whole degrees
    /// and percent toward zero.
    int Shown(ColourChannel channel) const;

    void SetRgb(const Rgb& rgb, LostHue lost);
    void SetHsb(const Hsb& hsb);
    void SetAlpha(int alpha);
    /// Colour and alpha; a colour that shows already keeps its finer values. @return true when it changed.
    bool SetValue(std::uint32_t colour);

    /// A channel as a number in its shown range: what an edit does. Greys and blacks made with red, green or
    /// blue lose hue and saturation.
    void Enter(ColourChannel channel, int shown);
    /// A channel as a fraction of its range: what a slider does. Hue and saturation are kept.
    void Move(ColourChannel channel, double place);
    /// Two channels of one colour model at once: what a field does.
    void Move(ColourChannel first, double firstPlace, ColourChannel second, double secondPlace);

    friend bool operator==(const ColourState&, const ColourState&) = default;

private:
    Rgb m_rgb;
    Hsb m_hsb;
    int m_alpha = 255;
};

// Lock types name the channel that a field leaves out and a slider shows: 1 … 6 for fields and 10 … 15 for
// sliders stand for red, green, blue, hue, saturation, brightness. Other numbers are taken for the nearest.

struct FieldAxes
{
    ColourChannel x; ///< grows to the right
    ColourChannel y; ///< grows upwards
};

ColourChannel LockedChannel(int fieldLock);
ColourChannel SliderChannel(int sliderLock);
FieldAxes AxesOf(int fieldLock);
constexpr int FieldLock(ColourChannel channel)
{
    return 1 + static_cast<int>(channel);
}
constexpr int SliderLock(ColourChannel channel)
{
    return 10 + static_cast<int>(channel);
}

} // namespace kv
