#include "subtitles/CueLines.h"

#include "subtitles/Subtitles.h"

#include <algorithm>

namespace titler {
namespace {

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool IsSpace(char c)
{
    return c == ' ' || c == '\t';
}

/// Reads a line from its begin.
struct Scanner
{
    std::string_view rest;

    bool Take(char c)
    {
        const bool isThere = !rest.empty() && rest.front() == c;
        rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }
    void SkipSpace()
    {
        while (!rest.empty() && IsSpace(rest.front()))
            rest.remove_prefix(1);
    }
    /// A number of 1 … most digits.
    std::optional<std::int64_t> Number(std::size_t most)
    {
        std::int64_t number = 0;
        std::size_t digits = 0;
        for (; digits < rest.size() && IsDigit(rest[digits]); ++digits) {
            if (digits == most)
                return std::nullopt;
            number = 10 * number + (rest[digits] - '0');
        }
        rest.remove_prefix(digits);
        return digits > 0 ? std::optional(number) : std::nullopt;
    }
    /// The digits behind a decimal sign; what is finer than a millisecond is cut off.
    std::optional<std::int64_t> Milliseconds()
    {
        std::int64_t milliseconds = 0;
        std::size_t digits = 0;
        for (; digits < rest.size() && IsDigit(rest[digits]); ++digits)
            milliseconds = digits < 3 ? 10 * milliseconds + (rest[digits] - '0') : milliseconds;
        rest.remove_prefix(digits);
        for (std::size_t i = digits; i < 3; ++i)
            milliseconds *= 10;
        return digits > 0 ? std::optional(milliseconds) : std::nullopt;
    }
    std::optional<std::int64_t> Time()
    {
        constexpr std::size_t mostHourDigits = 9;
        constexpr std::size_t mostDigits = 2;
        std::optional<std::int64_t> hours = Number(mostHourDigits);
        std::optional<std::int64_t> minutes = hours && Take(':') ? Number(mostDigits) : std::nullopt;
        if (!minutes)
            return std::nullopt;
        std::optional<std::int64_t> seconds;
        if (Take(':')) {
            seconds = Number(mostDigits);
        } else {
            seconds = minutes;
            minutes = hours;
            hours = 0;
        }
        const bool hasFraction = Take('.') || Take(',');
        const std::optional<std::int64_t> milliseconds = hasFraction ? Milliseconds() : 0;
        if (!seconds || !milliseconds || *minutes > 59 || *seconds > 59)
            return std::nullopt;
        return ((*hours * 60 + *minutes) * 60 + *seconds) * 1000 + *milliseconds;
    }
};

} // namespace

CueLineReader::CueLineReader(std::string_view bytes, ByteOrderMark mark)
    : m_bytes(mark == ByteOrderMark::IsSkipped && bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark
                  ? bytes.substr(kByteOrderMark.size())
                  : bytes)
    , m_nextLf(m_bytes.find('\n'))
    , m_nextCr(m_bytes.find('\r'))
{
}

bool CueLineReader::Next(CueLine& line)
{
    if (m_at >= m_bytes.size())
        return false;
    const std::size_t end = std::min({m_nextLf, m_nextCr, m_bytes.size()});
    line.text = m_bytes.substr(m_at, end - m_at);
    line.number = ++m_number;
    const bool isPair = end == m_nextCr && m_nextLf == end + 1;
    m_at = end + (isPair ? 2 : 1);
    if (m_nextLf < m_at)
        m_nextLf = m_bytes.find('\n', m_at);
    if (m_nextCr < m_at)
        m_nextCr = m_bytes.find('\r', m_at);
    return true;
}

std::optional<CueTimes> ParseCueTimes(std::string_view line)
{
    Scanner scanner{line};
    scanner.SkipSpace();
    const std::optional<std::int64_t> in = scanner.Time();
    scanner.SkipSpace();
    if (!in || scanner.rest.substr(0, kArrow.size()) != kArrow)
        return std::nullopt;
    scanner.rest.remove_prefix(kArrow.size());
    scanner.SkipSpace();
    const std::optional<std::int64_t> out = scanner.Time();
    if (!out || (!scanner.rest.empty() && !IsSpace(scanner.rest.front())))
        return std::nullopt;
    return CueTimes{*in, *out, Trimmed(scanner.rest)};
}

bool AddCue(SubtitleFile& file, const CueLine& line)
{
    const std::optional<CueTimes> times = ParseCueTimes(line.text);
    if (!times) {
        file.faults.push_back({line.number, CueFaultKind::BadTimes});
        return false;
    }
    Cue& cue = file.cues.emplace_back();
    cue.in = times->in;
    cue.out = times->out;
    cue.settings = times->settings;
    cue.line = line.number;
    return true;
}

bool IsMeantForTimes(std::string_view line)
{
    std::size_t first = 0;
    while (first < line.size() && IsSpace(line[first]))
        ++first;
    if (first < line.size() && line[first] == '-')
        ++first;
    if (first >= line.size() || !IsDigit(line[first]))
        return false;
    const std::size_t arrow = line.find(kArrow, first);
    return arrow != line.npos && line.substr(0, arrow).find(':') != line.npos;
}

bool ResemblesTimes(std::string_view line)
{
    Scanner scanner{Trimmed(line)};
    const std::size_t size = scanner.rest.size();
    if (!scanner.Time())
        return false;
    const std::string_view first = Trimmed(line).substr(0, size - scanner.rest.size());
    scanner.SkipSpace();
    if (scanner.rest.substr(0, 2) == "->")
        return true;
    // Without fractions it is as likely a text: "12:30 - 14:00".
    const std::size_t second = scanner.rest.find_first_of("0123456789");
    if (second == 0 || second == scanner.rest.npos || first.find_first_of(".,") == first.npos)
        return false;
    scanner.rest.remove_prefix(second);
    return scanner.Time().has_value();
}

std::span<const CueLine> InnerLines(std::span<const CueLine> lines)
{
    while (!lines.empty() && IsBlank(lines.front().text))
        lines = lines.subspan(1);
    while (!lines.empty() && IsBlank(lines.back().text))
        lines = lines.first(lines.size() - 1);
    return lines;
}

std::string JoinedText(std::span<const CueLine> lines)
{
    std::string text;
    std::size_t size = lines.size();
    for (const CueLine& line : lines)
        size += line.text.size();
    text.reserve(size);
    for (const CueLine& line : lines) {
        if (&line != &lines.front())
            text += '\n';
        if (!IsBlank(line.text))
            text += line.text;
    }
    return text;
}

bool IsBlank(std::string_view line)
{
    return std::all_of(line.begin(), line.end(), IsSpace);
}

bool IsNumber(std::string_view line)
{
    const std::string_view trimmed = Trimmed(line);
    return !trimmed.empty() && std::all_of(trimmed.begin(), trimmed.end(), IsDigit);
}

std::string_view Trimmed(std::string_view line)
{
    while (!line.empty() && IsSpace(line.front()))
        line.remove_prefix(1);
    while (!line.empty() && IsSpace(line.back()))
        line.remove_suffix(1);
    return line;
}

} // namespace titler
