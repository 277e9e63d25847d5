// Regular expressions for the search through a list.
#pragma once

#include "KvPlatform.h"
#include "text/FindReplace.h"

#include <QRegularExpression>

#include <chrono>

namespace kv {

/// Perl's syntax; letters, digits and borders of words are Unicode's, "^" and "$" also stand at the breaks
/// inside a text. In the text to replace with, \0 … \9 stand for what was found and its groups, \n for a line
/// break and \\ for a backslash.
///
/// A pattern is too costly when one match takes more steps than the toolkit allows, or when slow matches,
/// those of a millisecond and more, take a second together.
class RegexMatcher final : public ITextMatcher
{
public:
    RegexMatcher(const std::wstring& pattern, bool matchCase);

    std::optional<TextSpan> Find(std::wstring_view text, std::size_t from) override;
    std::wstring Replacement(std::wstring_view text, TextSpan match, std::wstring_view replace) override;
    bool HasFailed() override { return !m_error.empty(); }
    /// Why nothing counts as found; empty while all is well.
    const std::wstring& Error() const { return m_error; }

private:
    QRegularExpressionMatch MatchAt(std::wstring_view text, std::size_t from);
    /// Places in the toolkit's text, which has two units for a character beyond U+FFFF, and back.
    qsizetype ToQt(std::size_t place) const;
    std::size_t FromQt(qsizetype place) const;

    QRegularExpression m_regex;
    std::wstring m_text; ///< the last one, and the toolkit's copy
    QString m_copy;
    std::wstring m_error;
    std::chrono::nanoseconds m_slow{0}; ///< what slow matches took
};

} // namespace kv
