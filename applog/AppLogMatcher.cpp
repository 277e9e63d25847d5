#include "applog/AppLogMatcher.h"

#include "core/FoldedText.h"

namespace kv {

AppLogMatcher::AppLogMatcher(std::wstring_view text, bool matchCase)
    : m_text(matchCase ? std::wstring(text) : FoldText(text))
    , m_matchCase(matchCase)
{
}

std::size_t AppLogMatcher::Find(std::wstring_view line, std::size_t from) const
{
    return m_matchCase ? line.find(m_text, from) : FindFolded(line, m_text, from);
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
