#include "color/ColourWords.h"

#include "color/ColourSpace.h"
#include "color/PercentEntry.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <algorithm>
#include <iterator>

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
    const Hsb hsb = RgbToHsb(RgbOf(colour));
    const double high = hsb.brightness;
    const double chroma = hsb.saturation * high;
    if (high < 0.16)
        return kBlack;
    if (chroma < 0.12)
        return high > 0.9 ? kWhite : kGrey;
    const bool pale = high > 0.8 && hsb.saturation < 0.6;
    return WordOfHue(hsb.hue, high, pale);
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
