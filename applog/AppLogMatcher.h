// Looks for a text in log lines. Pure.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

class AppLogMatcher
{
public:
    struct Match
    {
        std::size_t begin;
        std::size_t length;
        friend bool operator==(const Match&, const Match&) = default;
    };

    AppLogMatcher() = default;
    /// @param matchCase false compares by simple Unicode case folding, one character with one.
    AppLogMatcher(std::wstring_view text, bool matchCase);

    /// True while there is nothing to look for; it is then in no line.
    bool IsEmpty() const { return m_text.empty(); }
    bool IsIn(std::wstring_view line) const { return !IsEmpty() && Find(line, 0) != std::wstring_view::npos; }
    /// From left to right, none over another.
    std::vector<Match> All(std::wstring_view line) const;

private:
    std::size_t Find(std::wstring_view line, std::size_t from) const;

    std::wstring m_text; ///< folded unless the case counts
    bool m_matchCase = false;
};

/// The next line that matches, then from the other end on.
/// @param from the line to look behind (step 1) or before (step -1), at last that line itself; -1 looks at
/// all from the end that the step begins at. @return -1 when none matches.
int NextAppLogMatch(int count, int from, int step, const std::function<bool(int)>& matches);

} // namespace kv
