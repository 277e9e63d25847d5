#include "color/PercentEntry.h"

#include "core/Text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr int kMaxDigits = 3;
constexpr wchar_t kPoint = L'.';

bool IsDigit(std::uint32_t character)
{
    return character >= U'0' && character <= U'9';
}

bool IsPoint(std::uint32_t character)
{
    return character == U'.' || character == U',';
}

} // namespace

std::wstring PercentText(double fraction)
{
    constexpr double farOut = 1e9;
    const double percent = std::isnan(fraction) ? 0.0 : std::clamp(100 * fraction, -farOut, farOut);
    const double tenths = std::round(percent * 10);
    const bool whole = std::fmod(tenths, 10) == 0;
    return whole ? NumberText(static_cast<std::int64_t>(tenths / 10)) : NumberText(tenths / 10, 1);
}

bool PercentEntry::IsPart(std::uint32_t character)
{
    return IsDigit(character) || IsPoint(character);
}

void PercentEntry::Type(std::uint32_t character)
{
    const auto points = std::count(m_text.begin(), m_text.end(), kPoint);
    const auto digits = static_cast<std::ptrdiff_t>(m_text.size()) - points;
    if (IsDigit(character) && digits < kMaxDigits)
        m_text.push_back(static_cast<wchar_t>(character));
    else if (IsPoint(character) && points == 0)
        m_text.push_back(kPoint);
}

void PercentEntry::Erase()
{
    if (!m_text.empty())
        m_text.pop_back();
}

std::optional<double> PercentEntry::Take()
{
    const std::wstring text = std::exchange(m_text, {});
    int digits = 0;
    int number = 0;
    double scale = 1.0;
    bool behindPoint = false;
    for (const wchar_t character : text) {
        if (character == kPoint) {
            behindPoint = true;
            continue;
        }
        number = number * 10 + (character - L'0');
        ++digits;
        if (behindPoint)
            scale *= 10;
    }
    if (digits == 0)
        return std::nullopt;
    return std::min(number / scale / 100, 1.0);
}

} // namespace kv
