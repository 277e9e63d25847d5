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

    void Begin(std::wstring_view text) override;
    std::optional<TextSpan> Find(std::size_t from) override;
    std::wstring Replacement(std::wstring_view replace) override;
    bool HasFailed() override { return !m_error.empty(); }
    /// Why nothing counts as found; empty while all is well.
    const std::wstring& Error() const { return m_error; }

private:
    /// The same place in both texts: the toolkit's has two units for a character beyond U+FFFF.
    struct Place
    {
        std::size_t own = 0;
        qsizetype copy = 0;
    };
    qsizetype ToCopy(std::size_t place);
    std::size_t FromCopy(qsizetype place);
    template <typename IsBefore>
    Place GoTo(IsBefore isBefore);

    QRegularExpression m_regex;
    std::wstring_view m_text;
    QString m_copy;                  ///< the toolkit's, and well-formed
    Place m_place;                   ///< the last one that was asked for: the next is near it
    QRegularExpressionMatch m_match; ///< the last one
    std::wstring m_error;
    std::chrono::nanoseconds m_slow{0}; ///< what slow matches took
};

} // namespace kv
