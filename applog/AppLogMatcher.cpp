#include "applog/AppLogMatcher.h"

#include "core/Wildcard.h"

#include <algorithm>

namespace kv {

namespace {

// Of UTF-16 the halves of a pair stay as they are.
wchar_t Fold(wchar_t character)
{
    if (character < 0x80)
        return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character | 0x20) : character;
    return static_cast<wchar_t>(FoldCase(static_cast<char32_t>(character)));
}

} // namespace

AppLogMatcher::AppLogMatcher(std::wstring_view text, bool matchCase) : m_text(text), m_matchCase(matchCase)
{
    if (!matchCase)
        std::transform(m_text.begin(), m_text.end(), m_text.begin(), Fold);
}

std::size_t AppLogMatcher::Find(std::wstring_view line, std::size_t from) const
{
    if (m_matchCase)
        return line.find(m_text, from);
    const auto begin = line.begin() + static_cast<std::ptrdiff_t>(std::min(from, line.size()));
    const auto at = std::search(begin, line.end(), m_text.begin(), m_text.end(),
                                [](wchar_t a, wchar_t folded) { return Fold(a) == folded; });
    return at == line.end() ? std::wstring_view::npos : static_cast<std::size_t>(at - line.begin());
}

std::vector<AppLogMatcher::Match> AppLogMatcher::All(std::wstring_view line) const
{
    std::vector<Match> matches;
    if (IsEmpty())
        return matches;
    for (std::size_t at = Find(line, 0); at != std::wstring_view::npos; at = Find(line, at + m_text.size()))
        matches.push_back({at, m_text.size()});
    return matches;
}

int NextAppLogMatch(int count, int from, int step, const std::function<bool(int)>& matches)
{
    int line = from < 0 && step < 0 ? count : from;
    for (int left = count; left > 0; --left) {
        line = (line + step + count) % count;
        if (matches(line))
            return line;
    }
    return -1;
}

} // namespace kv
