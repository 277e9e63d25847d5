#include "curves/EaseText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kv {

namespace {

constexpr std::size_t kMostText = 256; // of an ease; longer text is something else
constexpr std::size_t kMostEntry = 48;
constexpr std::string_view kSpaces = " \t\r\n";

// A control point as fractions of the segment.
struct Fractions
{
    double x;
    double y;
};

double HeightOf(const EaseCurve& curve)
{
    return curve[EaseHandle::End].y - curve[EaseHandle::Start].y;
}

Fractions FractionsOf(const EaseCurve& curve, EaseHandle handle)
{
    const SKvCurvePoint offset = curve[handle] - curve[EaseHandle::Start];
    return {offset.x / curve.Width(), offset.y / HeightOf(curve)};
}

// True also where a height next to nothing would make fractions beyond every number.
bool IsFlat(const EaseCurve& curve)
{
    return !std::isfinite(FractionsOf(curve, EaseHandle::Out).y) ||
           !std::isfinite(FractionsOf(curve, EaseHandle::In).y);
}

std::wstring ShortestText(double value)
{
    char digits[32];
    const double unsignedZero = value == 0 ? 0 : value;
    const auto end = std::to_chars(digits, digits + sizeof digits, unsignedZero).ptr;
    return {digits, end};
}

std::string_view Trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kSpaces);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

// Nothing for text that is too long or not plain ASCII, of which numbers consist.
std::optional<std::string> Plain(std::wstring_view text)
{
    if (text.size() > kMostText)
        return std::nullopt;
    std::string plain;
    for (const wchar_t character : text) {
        if (character < 1 || character > 126)
            return std::nullopt;
        plain.push_back(static_cast<char>(character));
    }
    return plain;
}

// Takes one finite number off the front of a text.
std::optional<double> TakeNumber(std::string_view& text)
{
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    const char* const first = text.data() + (hasPlus ? 1 : 0);
    double value = 0;
    const auto result = std::from_chars(first, text.data() + text.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value))
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return value;
}

// All numbers of a text, between them a comma or space. Nothing for a text with anything else.
std::optional<std::vector<double>> Numbers(std::string_view text)
{
    std::vector<double> numbers;
    text = Trimmed(text);
    for (;;) {
        const auto number = TakeNumber(text);
        if (!number)
            return std::nullopt;
        numbers.push_back(*number);
        const std::size_t length = text.size();
        text = Trimmed(text);
        if (text.empty())
            return numbers;
        if (text[0] == ',')
            text = Trimmed(text.substr(1));
        else if (text.size() == length)
            return std::nullopt;
    }
}

// What stands between the brackets of "cubic-bezier(…)", else the text itself.
std::string_view Arguments(std::string_view text)
{
    constexpr std::string_view name = "cubic-bezier(";
    const auto isSame = [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b + ('a' - 'A') : b); };
    if (text.size() > name.size() && text.back() == ')' &&
        std::equal(name.begin(), name.end(), text.begin(), isSame))
        return text.substr(name.size(), text.size() - name.size() - 1);
    return text;
}

// A fraction that the handle has already leaves it exactly where it is.
SKvCurvePoint Placed(const EaseCurve& curve, EaseHandle handle, const Fractions& asked)
{
    const SKvCurvePoint& start = curve[EaseHandle::Start];
    const Fractions present = FractionsOf(curve, handle);
    SKvCurvePoint place = curve[handle];
    const double x = std::clamp(asked.x, 0.0, 1.0);
    if (x != present.x)
        place.x = std::lerp(start.x, curve[EaseHandle::End].x, x);
    if (!IsFlat(curve) && asked.y != present.y)
        place.y = start.y + asked.y * HeightOf(curve);
    return place;
}

} // namespace

std::wstring CubicBezierText(const EaseCurve& curve)
{
    if (!IsSensible(curve))
        return {};
    Fractions out = FractionsOf(curve, EaseHandle::Out);
    Fractions in = FractionsOf(curve, EaseHandle::In);
    if (IsFlat(curve)) {
        out.y = 0;
        in.y = 1;
    }
    std::wstring text = L"cubic-bezier(";
    text += ShortestText(std::clamp(out.x, 0.0, 1.0)) + L", " + ShortestText(out.y) + L", ";
    text += ShortestText(std::clamp(in.x, 0.0, 1.0)) + L", " + ShortestText(in.y) + L")";
    return text;
}

std::optional<EaseHandles> ParseCubicBezier(std::wstring_view text, const EaseCurve& curve)
{
    const auto plain = Plain(text);
    if (!plain || !IsSensible(curve))
        return std::nullopt;
    const auto numbers = Numbers(Arguments(Trimmed(*plain)));
    if (!numbers || numbers->size() != 4)
        return std::nullopt;
    return EaseHandles{Placed(curve, EaseHandle::Out, {(*numbers)[0], (*numbers)[1]}),
                       Placed(curve, EaseHandle::In, {(*numbers)[2], (*numbers)[3]})};
}

bool EaseEntry::IsPart(unsigned character, bool pending)
{
    const bool begins =
        (character >= '0' && character <= '9') || character == '-' || character == '+' || character == '.';
    return begins || (pending && (character == ',' || character == ' '));
}

void EaseEntry::Type(unsigned character)
{
    if (IsPart(character, IsPending()) && m_text.size() < kMostEntry)
        m_text.push_back(static_cast<wchar_t>(character));
}

void EaseEntry::Erase()
{
    if (!m_text.empty())
        m_text.pop_back();
}

std::optional<SKvCurvePoint> EaseEntry::Value(SKvCurvePoint from) const
{
    const auto plain = Plain(m_text);
    const auto numbers = plain ? Numbers(*plain) : std::nullopt;
    if (!numbers || numbers->empty() || numbers->size() > 2)
        return std::nullopt;
    return numbers->size() == 1 ? SKvCurvePoint{from.x, numbers->front()}
                                : SKvCurvePoint{numbers->front(), numbers->back()};
}

} // namespace kv
