#include "color/SwatchProfile.h"

#include "color/GradientColour.h"
#include "core/ProfileLine.h"
#include "core/Text.h"

#include <array>

namespace kv {

namespace {

constexpr wchar_t kHead[] = L"SolidColorTemplate_Head";
constexpr wchar_t kLines[] = L"TemplateLine";
constexpr wchar_t kColoursPerLine[] = L"Colors Per Line";
constexpr wchar_t kFactoryLine[] = L"SolidColorLine_";
constexpr wchar_t kAlteredLine[] = L"SolidColorLine_Altered_";
constexpr wchar_t kColour[] = L"Color_";

constexpr std::size_t kMostCharacters = 31;
constexpr std::uint32_t kMalformed = 0xFFFFFFFFu;

constexpr int kFactoryColoursPerLine = 4;
// All channels stay within 16 … 235, which every broadcast chain passes unharmed.
constexpr std::uint32_t kFactoryColours[] = {
    0xFFEB1010, 0xFF10EB10, 0xFF1010EB, 0xFFEBEB10, // primaries
    0xFF10EBEB, 0xFFEB10EB, 0xFFEB8010, 0xFF8010EB, //
    0xFF101010, 0xFF2F2F2F, 0xFF4E4E4E, 0xFF6E6E6E, // a neutral ramp
    0xFF8D8D8D, 0xFFACACAC, 0xFFCCCCCC, 0xFFEBEBEB, //
    0xFF3B2219, 0xFF5C3A2A, 0xFF7D4F38, 0xFF9C6A4C, // skin, deep to fair
    0xFFB98362, 0xFFD09E7E, 0xFFE0B899, 0xFFEBD2BA, //
    0xFF16243F, 0xFF1F3F66, 0xFF2F5F8F, 0xFF4F86B5, // cool tones
    0xFF1E4A4C, 0xFF2F7274, 0xFF58A0A0, 0xFFA9CDD6, //
};

struct Head
{
    int lines;
    int coloursPerLine;
    std::size_t Count() const
    {
        return static_cast<std::size_t>(lines) * static_cast<unsigned>(coloursPerLine);
    }
};

/// A value without the blanks around it and without one pair of quotes; empty when there is none.
std::wstring ReadValue(const ProfileDocument& profile, std::wstring_view section, std::wstring_view key)
{
    constexpr wchar_t kBlanks[] = L" \t";
    const std::wstring value = profile.Value(section, key).value_or(L"");
    std::wstring_view read = value;
    read.remove_prefix(std::min(read.find_first_not_of(kBlanks), read.size()));
    read = read.substr(0, read.find_last_not_of(kBlanks) + 1);
    const bool isQuoted =
        read.size() > 1 && read.front() == read.back() && (read.front() == L'"' || read.front() == L'\'');
    return std::wstring(isQuoted ? read.substr(1, read.size() - 2) : read);
}

std::optional<Head> ReadHead(const ProfileDocument& profile)
{
    const Head head{LeadingInteger(ReadValue(profile, kHead, kLines)),
                    LeadingInteger(ReadValue(profile, kHead, kColoursPerLine))};
    if (head.lines < 1 || head.coloursPerLine < 1 || head.lines > kMostSwatches / head.coloursPerLine)
        return std::nullopt;
    return head;
}

std::wstring Numbered(const wchar_t* prefix, int number)
{
    return prefix + NumberText(std::int64_t{number});
}

/// Calls `visit(section, key)` for each swatch in order until it answers false. @return false then.
template <typename Visit>
bool ForEachSwatch(const Head& head, SwatchSet set, Visit visit)
{
    const wchar_t* const prefix = set == SwatchSet::Factory ? kFactoryLine : kAlteredLine;
    for (int line = 1; line <= head.lines; ++line) {
        const std::wstring section = Numbered(prefix, line);
        for (int colour = 1; colour <= head.coloursPerLine; ++colour) {
            if (!visit(section, Numbered(kColour, colour)))
                return false;
        }
    }
    return true;
}

bool WriteSet(ProfileDocument& profile, const Head& head, SwatchSet set,
              std::span<const std::uint32_t> colours)
{
    return ForEachSwatch(head, set, [&](const std::wstring& section, const std::wstring& key) {
        const std::uint32_t colour = colours.front();
        colours = colours.subspan(1);
        return profile.SetValue(section, key, SwatchValue(colour));
    });
}

} // namespace

std::uint32_t ParseSwatch(std::wstring_view value)
{
    value.remove_prefix(std::min(value.find_first_not_of(L" \t"), value.size()));
    value = value.substr(0, kMostCharacters);
    std::array<std::uint32_t, 4> channels{255, 255, 255, 255}; // red, green, blue, alpha
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::size_t comma = value.find(L',');
        const bool isAlpha = i + 1 == channels.size();
        if (isAlpha ? value.empty() : comma == std::wstring_view::npos)
            break;
        const int number = LeadingInteger(value.substr(0, comma));
        if (number < 0 || number > 255)
            return kMalformed;
        channels[i] = static_cast<std::uint32_t>(number);
        if (!isAlpha)
            value.remove_prefix(comma + 1);
    }
    return MakeColour(channels[3], channels[0], channels[1], channels[2]);
}

std::wstring SwatchValue(std::uint32_t colour)
{
    std::wstring value;
    for (const std::uint32_t channel : {RedOf(colour), GreenOf(colour), BlueOf(colour), AlphaOf(colour)})
        value += (value.empty() ? L" " : L",") + NumberText(std::int64_t{channel});
    return value;
}

std::optional<std::vector<std::uint32_t>> ReadSwatches(const ProfileDocument& profile, SwatchSet set)
{
    const auto head = ReadHead(profile);
    if (!head)
        return std::nullopt;
    std::vector<std::uint32_t> colours;
    colours.reserve(head->Count());
    ForEachSwatch(*head, set, [&](const std::wstring& section, const std::wstring& key) {
        colours.push_back(ParseSwatch(ReadValue(profile, section, key)));
        return true;
    });
    return colours;
}

bool WriteSwatches(ProfileDocument& profile, std::span<const std::uint32_t> colours)
{
    const auto head = ReadHead(profile);
    return head && head->Count() == colours.size() && WriteSet(profile, *head, SwatchSet::Altered, colours);
}

std::string FactorySwatchProfile()
{
    constexpr Head head{static_cast<int>(std::size(kFactoryColours)) / kFactoryColoursPerLine,
                        kFactoryColoursPerLine};
    ProfileDocument profile;
    profile.SetInteger(kHead, kLines, head.lines);
    profile.SetInteger(kHead, kColoursPerLine, head.coloursPerLine);
    WriteSet(profile, head, SwatchSet::Factory, kFactoryColours);
    WriteSet(profile, head, SwatchSet::Altered, kFactoryColours);
    return profile.Bytes();
}

} // namespace kv
