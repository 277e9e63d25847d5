#include "platform/NumberEntry.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>

namespace kv {

std::optional<int> ParseWholeNumber(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return std::nullopt;
    text = text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
    const bool isNegative = text.front() == L'-';
    if (isNegative || text.front() == L'+')
        text.remove_prefix(1);
    if (text.empty())
        return std::nullopt;
    // The least number has no positive one beside it.
    const std::int64_t most = std::int64_t{std::numeric_limits<int>::max()} + (isNegative ? 1 : 0);
    std::int64_t number = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9')
            return std::nullopt;
        number = std::min(number * 10 + (digit - L'0'), most);
    }
    return static_cast<int>(isNegative ? -number : number);
}

void NumberEntry::SetRange(int minimum, int maximum)
{
    std::tie(m_minimum, m_maximum) = std::minmax(minimum, maximum);
    SetValue(m_value);
}

void NumberEntry::SetStep(int step)
{
    m_step = std::max(1, step);
}

void NumberEntry::SetValue(int value)
{
    Answer(value);
    m_before = m_value;
}

void NumberEntry::Answer(int value)
{
    m_value = std::clamp(value, m_minimum, m_maximum);
    if (m_typed)
        m_typed = std::to_wstring(m_value);
}

NumberRun NumberEntry::Change(int value)
{
    if (value == m_value)
        return {};
    m_value = value;
    const bool continues = std::exchange(m_isRunning, true);
    return {!continues, continues, false};
}

NumberRun NumberEntry::End()
{
    return {false, false, std::exchange(m_isRunning, false)};
}

NumberRun NumberEntry::Type(std::wstring_view text)
{
    if (!m_typed)
        m_before = m_value;
    m_typed = text;
    const std::optional<int> number = ParseWholeNumber(text);
    if (!number || *number < m_minimum || *number > m_maximum)
        return {};
    return Change(*number);
}

NumberRun NumberEntry::Commit()
{
    if (!m_typed)
        return {};
    const std::optional<int> number = ParseWholeNumber(*m_typed);
    m_typed.reset();
    NumberRun run = Change(std::clamp(number.value_or(m_value), m_minimum, m_maximum));
    run.ends = End().ends;
    return run;
}

NumberRun NumberEntry::TakeBack()
{
    if (!m_typed)
        return {};
    m_typed.reset();
    m_value = m_before;
    return End();
}

NumberRun NumberEntry::StopTyping()
{
    if (!m_typed)
        return {};
    m_typed.reset();
    return End();
}

int NumberEntry::Stepped(int from, int steps) const
{
    const std::int64_t stepped = from + std::int64_t{steps} * m_step;
    return static_cast<int>(std::clamp<std::int64_t>(stepped, m_minimum, m_maximum));
}

NumberRun NumberEntry::Enter(int value)
{
    const int number = std::clamp(value, m_minimum, m_maximum);
    if (std::exchange(m_value, number) == number)
        return {};
    return {true, true, true};
}

NumberRun NumberEntry::Scrub(int steps)
{
    return m_scrubFrom ? Change(Stepped(*m_scrubFrom, steps)) : NumberRun{};
}

NumberRun NumberEntry::EndScrub(bool takeBack)
{
    if (m_scrubFrom && takeBack)
        m_value = m_before;
    m_scrubFrom.reset();
    return End();
}

} // namespace kv
