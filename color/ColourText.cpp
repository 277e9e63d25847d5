#include "color/ColourText.h"

#include "color/GradientColour.h"

#include <algorithm>
#include <array>

namespace kv {

namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

std::wstring_view Trimmed(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

wchar_t Lower(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

/// A digit's value in a base of 10 or 16.
std::optional<std::uint32_t> Digit(wchar_t character, std::uint32_t base)
{
    const wchar_t lower = Lower(character);
    if (lower >= L'0' && lower <= L'9')
        return static_cast<std::uint32_t>(lower - L'0');
    if (base == 16 && lower >= L'a' && lower <= L'f')
        return static_cast<std::uint32_t>(lower - L'a') + 10;
    return std::nullopt;
}

/// At most eight digits and nothing else.
std::optional<std::uint32_t> Number(std::wstring_view digits, std::uint32_t base)
{
    if (digits.empty() || digits.size() > 8)
        return std::nullopt;
    std::uint32_t number = 0;
    for (const wchar_t character : digits) {
        const auto digit = Digit(character, base);
        if (!digit)
            return std::nullopt;
        number = number * base + *digit;
    }
    return number;
}

std::optional<TypedColour> ParseHexadecimal(std::wstring_view digits)
{
    const auto number = Number(digits, 16);
    if (!number)
        return std::nullopt;
    switch (digits.size()) {
    case 3: // each digit stands for two
        return TypedColour{
            MakeColour(255, (*number >> 8) * 17, (*number >> 4 & 15) * 17, (*number & 15) * 17), false};
    case 6:
        return TypedColour{0xFF000000u | *number, false};
    case 8:
        return TypedColour{*number, true};
    default:
        return std::nullopt;
    }
}

/// @param text what stands between the brackets.
std::optional<TypedColour> ParseChannels(std::wstring_view text)
{
    std::array<std::uint32_t, 3> channels{};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::size_t comma = text.find(L',');
        const bool last = i + 1 == channels.size();
        if (last != (comma == std::wstring_view::npos))
            return std::nullopt;
        const auto number = Number(Trimmed(text.substr(0, comma)), 10);
        if (!number || *number > 255)
            return std::nullopt;
        channels[i] = *number;
        text.remove_prefix(last ? text.size() : comma + 1);
    }
    return TypedColour{MakeColour(255, channels[0], channels[1], channels[2]), false};
}

bool StartsWithRgb(std::wstring_view text)
{
    constexpr std::wstring_view name = L"rgb";
    const auto same = [](wchar_t a, wchar_t b) { return Lower(a) == b; };
    return text.size() >= name.size() && std::equal(name.begin(), name.end(), text.begin(),
                                                    [&](wchar_t b, wchar_t a) { return same(a, b); });
}

} // namespace

std::optional<TypedColour> ParseColourText(std::wstring_view text)
{
    text = Trimmed(text);
    if (text.starts_with(L'#'))
        return ParseHexadecimal(text.substr(1));
    if (!StartsWithRgb(text))
        return std::nullopt;
    text = Trimmed(text.substr(3));
    if (text.size() < 2 || text.front() != L'(' || text.back() != L')')
        return std::nullopt;
    return ParseChannels(text.substr(1, text.size() - 2));
}

std::wstring ColourText(std::uint32_t colour)
{
    constexpr wchar_t digits[] = L"0123456789abcdef";
    std::wstring text = L"#";
    for (int shift = 28; shift >= 0; shift -= 4)
        text.push_back(digits[colour >> shift & 15]);
    return text;
}

} // namespace kv
