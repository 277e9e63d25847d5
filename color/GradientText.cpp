#include "color/GradientText.h"

#include "color/ColourText.h"

#include <algorithm>
#include <charconv>

namespace kv {

namespace {

constexpr float kHalfWay = 0.5f;

std::wstring NumberText(float number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return std::wstring(digits, end);
}

std::optional<float> ParseFraction(std::wstring_view text)
{
    const std::string digits(text.begin(), text.end()); // what is not ASCII becomes no number
    float number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isWhole = result.ec == std::errc() && result.ptr == digits.data() + digits.size();
    if (!isWhole || !(number >= 0 && number <= 1))
        return std::nullopt;
    return number;
}

/// Takes what stands before the next separator off the text.
std::wstring_view Take(std::wstring_view& text, wchar_t separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::wstring_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

std::wstring_view TakeWord(std::wstring_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(L' '), text.size()));
    return Take(text, L' ');
}

std::optional<SKvCGGradientKey> ParseStop(std::wstring_view text)
{
    const auto position = ParseFraction(TakeWord(text));
    const auto colour = ParseColourText(TakeWord(text));
    const std::wstring_view mid = TakeWord(text);
    const auto midPoint = mid.empty() ? kHalfWay : ParseFraction(mid);
    if (!position || !colour || !midPoint || !TakeWord(text).empty())
        return std::nullopt;
    return SKvCGGradientKey{colour->colour, *position, *midPoint};
}

} // namespace

std::wstring GradientText(std::span<const SKvCGGradientKey> keys)
{
    std::wstring text;
    for (const SKvCGGradientKey& key : keys) {
        text += (text.empty() ? L"" : L"; ") + NumberText(key.position) + L' ' + ColourText(key.colour);
        if (key.midPoint != kHalfWay)
            text += L' ' + NumberText(key.midPoint);
    }
    return text;
}

std::optional<std::vector<SKvCGGradientKey>> ParseGradientText(std::wstring_view text)
{
    std::vector<SKvCGGradientKey> keys;
    while (text.find_first_not_of(L' ') != text.npos) {
        const auto key = ParseStop(Take(text, L';'));
        if (!key)
            return std::nullopt;
        keys.push_back(*key);
    }
    return keys;
}

} // namespace kv
