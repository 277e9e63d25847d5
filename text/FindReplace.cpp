#include "text/FindReplace.h"

#include "core/CodePoints.h"
#include "core/FoldedText.h"
#include "text/NonWordTable.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <limits>
#include <utility>

namespace kv {
namespace {

constexpr std::size_t kEndOfText = std::numeric_limits<std::size_t>::max();

bool IsWordCharacter(char32_t character)
{
    const auto* range = std::upper_bound(std::begin(kNonWords), std::end(kNonWords), character,
                                         [](char32_t c, const CodePointRange& r) { return c < r.first; });
    return range == std::begin(kNonWords) || character > std::prev(range)->last;
}

/// Whether a word goes on over the border before `at`.
bool IsInsideWord(std::wstring_view text, std::size_t at)
{
    if (at == 0 || at >= text.size())
        return false;
    std::size_t before = at - 1;
    if (before > 0 && NextCodePoint(text, before - 1).length > 1)
        --before;
    return IsWordCharacter(NextCodePoint(text, before).value) &&
           IsWordCharacter(NextCodePoint(text, at).value);
}

/// The text itself, or its case folding.
class LiteralMatcher final : public ITextMatcher
{
public:
    LiteralMatcher(const std::wstring& find, bool matchCase)
        : m_find(matchCase ? find : FoldText(find))
        , m_matchCase(matchCase)
    {
    }

    void Begin(std::wstring_view text) override { m_text = text; }

    std::optional<TextSpan> Find(std::size_t from) override
    {
        const std::size_t at = m_matchCase ? m_text.find(m_find, from) : FindFolded(m_text, m_find, from);
        return at == m_text.npos ? std::nullopt : std::optional(TextSpan{at, m_find.size()});
    }

private:
    std::wstring m_find;
    bool m_matchCase;
    std::wstring_view m_text;
};

} // namespace

/// One query over the list.
class FindReplace::Search
{
public:
    Search(IFindTexts& texts, const FindQuery& query)
        : m_texts(texts)
        , m_query(query)
        , m_literal(query.find, query.matchCase)
        , m_matcher(query.matcher ? *query.matcher : m_literal)
        , m_count(texts.Count())
    {
    }

    int RowCount() const { return m_count; }
    bool HasFailed() const { return m_matcher.HasFailed(); }
    bool Backwards() const { return m_query.backwards; }
    bool TakesRow(int row) const { return !m_query.selectedOnly || m_texts.IsSelected(row); }

    /// A row's text, which the matcher has then.
    std::wstring_view Begin(int row) const
    {
        const std::wstring_view text = m_texts.Text(row);
        m_matcher.Begin(text);
        return text;
    }

    /// In the text that was begun.
    std::optional<TextSpan> FirstIn(std::wstring_view text, std::size_t from) const
    {
        while (from < text.size()) {
            const std::optional<TextSpan> hit = m_matcher.Find(from);
            // A matcher is the host's: what it says may lie anywhere.
            if (!hit || hit->start < from || hit->start >= text.size() ||
                hit->length > text.size() - hit->start)
                break;
            if (hit->length > 0 && (!m_query.wholeWords || IsWholeWord(text, *hit)))
                return hit;
            from = hit->start + NextCodePoint(text, hit->start).length;
        }
        return std::nullopt;
    }

    /// The first match of a row that starts in [from, before).
    std::optional<TextMatch> FirstOf(int row, std::size_t from, std::size_t before) const
    {
        if (!TakesRow(row))
            return std::nullopt;
        const std::optional<TextSpan> hit = FirstIn(Begin(row), from);
        return hit && hit->start < before ? std::optional(TextMatch{row, *hit, from}) : std::nullopt;
    }

    /// The last match of a row that starts at or behind `from` and ends at or before `end`.
    std::optional<TextMatch> LastOf(int row, std::size_t from, std::size_t end) const
    {
        std::optional<TextMatch> last;
        if (!TakesRow(row))
            return last;
        const std::wstring_view text = Begin(row);
        std::size_t begin = 0;
        for (auto hit = FirstIn(text, 0); hit && hit->End() <= end; hit = FirstIn(text, begin)) {
            if (hit->start >= from)
                last = TextMatch{row, *hit, begin};
            begin = hit->End();
        }
        return last;
    }

    /// From a place in a row through all the others and back to it.
    /// @param before the place in front of which the searched part of the row ends, when the search comes
    /// back
    /// @param behind the place from which on the row is searched at first
    /// @param wrapped receives whether the match lies beyond an end of the list
    std::optional<TextMatch> Round(int startRow, std::size_t before, std::size_t behind, bool& wrapped) const
    {
        wrapped = false;
        std::optional<TextMatch> match =
            Backwards() ? LastOf(startRow, 0, before) : FirstOf(startRow, behind, kEndOfText);
        for (int i = 1; i < m_count && !match && !HasFailed(); ++i) {
            const int row = Backwards() ? (startRow - i + m_count) % m_count : (startRow + i) % m_count;
            wrapped = Backwards() ? row > startRow : row < startRow;
            match = Backwards() ? LastOf(row, 0, kEndOfText) : FirstOf(row, 0, kEndOfText);
        }
        if (!match && !HasFailed()) {
            wrapped = true;
            match = Backwards() ? LastOf(startRow, behind, kEndOfText) : FirstOf(startRow, 0, before);
        }
        return HasFailed() ? std::nullopt : match;
    }

    /// Whether the query still matches there. It is what the matcher has found last then.
    bool IsValid(const TextMatch& match) const
    {
        if (match.row < 0 || match.row >= m_count || !TakesRow(match.row))
            return false;
        const std::wstring_view text = Begin(match.row);
        return (FirstIn(text, match.from) == match.span || FirstIn(text, match.span.start) == match.span) &&
               !HasFailed();
    }

    /// A row's text with that match, a valid one, replaced.
    /// @param length receives the replacement's length.
    std::wstring Replaced(const TextMatch& match, std::size_t& length) const
    {
        const std::wstring_view text = m_texts.Text(match.row);
        const std::wstring replacement = m_matcher.Replacement(m_query.replace);
        length = replacement.size();
        std::wstring out(text.substr(0, match.span.start));
        out += replacement;
        out += text.substr(match.span.End());
        return out;
    }

    /// A row's text with all its matches replaced. @return their number.
    int ReplaceAllIn(int row, std::wstring& out) const
    {
        const std::wstring_view text = Begin(row);
        int count = 0;
        std::size_t copied = 0;
        for (auto hit = FirstIn(text, 0); hit; hit = FirstIn(text, hit->End()), ++count) {
            if (count == 0)
                out.reserve(text.size() + m_query.replace.size()); // mostly all that it takes
            out += text.substr(copied, hit->start - copied);
            if (m_query.matcher)
                out += m_matcher.Replacement(m_query.replace);
            else
                out += m_query.replace;
            copied = hit->End();
        }
        if (count > 0)
            out += text.substr(copied);
        return count;
    }

private:
    static bool IsWholeWord(std::wstring_view text, TextSpan hit)
    {
        return !IsInsideWord(text, hit.start) && !IsInsideWord(text, hit.End());
    }

    IFindTexts& m_texts;
    const FindQuery& m_query;
    LiteralMatcher m_literal;
    ITextMatcher& m_matcher;
    int m_count;
};

FindResult FindReplace::Run(int startRow, FindMode mode, const FindQuery& query)
{
    m_replaced = 0;
    Search search(m_texts, query);
    FindResult result = FindResult::NotFound;
    if (!query.find.empty() && search.RowCount() > 0) {
        const int row = startRow >= 0 && startRow < search.RowCount() ? startRow : 0;
        if (mode == FindMode::Next)
            result = RunNext(search, row);
        else if (mode == FindMode::ReplaceAndNext)
            result = RunReplaceAndNext(search, row);
        else if (mode == FindMode::ReplaceAll)
            result = RunReplaceAll(search);
    }
    if (result == FindResult::NotFound)
        m_match.reset();
    return result;
}

FindResult FindReplace::RunNext(Search& search, int startRow)
{
    std::size_t before = search.Backwards() ? kEndOfText : 0;
    std::size_t behind = before;
    if (m_match && m_match->row == startRow) {
        // Up to and including the match itself, which is the last to be found again.
        before = search.Backwards() ? m_match->span.start : m_match->span.End();
        behind = before;
    }
    bool wrapped = false;
    m_match = search.Round(startRow, before, behind, wrapped);
    if (!m_match)
        return FindResult::NotFound;
    return wrapped ? FindResult::DoneAfterWrapping : FindResult::Done;
}

FindResult FindReplace::RunReplaceAndNext(Search& search, int startRow)
{
    if (!m_match || !search.IsValid(*m_match))
        return RunNext(search, startRow);
    const TextMatch match = *m_match;
    std::size_t length = 0;
    std::wstring text = search.Replaced(match, length);
    m_texts.SetText(match.row, std::move(text));
    m_replaced = 1;
    bool wrapped = false;
    m_match = search.Round(match.row, match.span.start, match.span.start + length, wrapped);
    return m_match && wrapped ? FindResult::DoneAfterWrapping : FindResult::Done;
}

FindResult FindReplace::RunReplaceAll(Search& search)
{
    std::deque<std::pair<int, std::wstring>> changes; // grows without moving what it has
    int replaced = 0;
    for (int row = 0; row < search.RowCount() && !search.HasFailed(); ++row) {
        if (!search.TakesRow(row))
            continue;
        std::wstring out;
        if (const int count = search.ReplaceAllIn(row, out); count > 0) {
            changes.emplace_back(row, std::move(out));
            replaced += count;
        }
    }
    m_match.reset();
    if (search.HasFailed() || changes.empty())
        return FindResult::NotFound;
    m_replaced = replaced;
    for (auto& [row, text] : changes)
        m_texts.SetText(row, std::move(text));
    return FindResult::Done;
}

int FindReplace::Count(const FindQuery& query)
{
    const Search search(m_texts, query);
    int count = 0;
    for (int row = 0; row < search.RowCount() && !query.find.empty() && !search.HasFailed(); ++row) {
        if (!search.TakesRow(row))
            continue;
        const std::wstring_view text = search.Begin(row);
        for (auto hit = search.FirstIn(text, 0); hit; hit = search.FirstIn(text, hit->End()))
            ++count;
    }
    return search.HasFailed() ? 0 : count;
}

} // namespace kv
