#include "color/ColourWords.h"

#include "color/GradientColour.h"
#include "color/PercentEntry.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <algorithm>

namespace kv {

namespace {

enum Word : std::uint32_t
{
    kBlack = 20020,
    kGrey,
    kWhite,
    kRed,
    kOrange,
    kBrown,
    kYellow,
    kGreen,
    kCyan,
    kBlue,
    kPurple,
    kMagenta,
    kPink,
};

constexpr std::uint32_t kTextTranslucent = 20016;

/// Hue in degrees of a colour whose channels are not all the same.
double Hue(double red, double green, double blue, double high, double chroma)
{
    if (high == red)
        return 60 * (green - blue) / chroma + (green < blue ? 360 : 0);
    if (high == green)
        return 60 * (blue - red) / chroma + 120;
    return 60 * (red - green) / chroma + 240;
}

Word WordOfHue(double hue, double high, bool pale)
{
    struct Sector
    {
        double end;
        Word word;
    };
    constexpr Sector sectors[] = {{15, kRed},   {45, kOrange},  {70, kYellow},   {165, kGreen}, {200, kCyan},
                                  {255, kBlue}, {290, kPurple}, {335, kMagenta}, {361, kRed}};
    const auto holds = [hue](const Sector& sector) { return hue < sector.end; };
    const Word word = std::find_if(std::begin(sectors), std::end(sectors), holds)->word;
    if (word == kOrange && high < 0.65)
        return kBrown;
    const bool reddish = word == kRed || word == kMagenta;
    return reddish && pale ? kPink : word;
}

Word FindWord(std::uint32_t colour)
{
    const double red = RedOf(colour) / 255.0;
    const double green = GreenOf(colour) / 255.0;
    const double blue = BlueOf(colour) / 255.0;
    const double high = std::max({red, green, blue});
    const double chroma = high - std::min({red, green, blue});
    if (high < 0.16)
        return kBlack;
    if (chroma < 0.12)
        return high > 0.9 ? kWhite : kGrey;
    const bool pale = high > 0.8 && chroma / high < 0.6;
    return WordOfHue(Hue(red, green, blue, high, chroma), high, pale);
}

} // namespace

std::wstring ColourWord(std::uint32_t colour)
{
    return LoadText(FindWord(colour));
}

std::wstring ColourWords(std::uint32_t colour)
{
    if (AlphaOf(colour) == 255)
        return ColourWord(colour);
    return FillText(LoadText(kTextTranslucent), {ColourWord(colour), PercentText(AlphaOf(colour) / 255.0)});
}

} // namespace kv
