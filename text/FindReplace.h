// Finding and replacing in any list of texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

/// A piece of a text, in wchar_ts.
struct TextSpan
{
    std::size_t start = 0;
    std::size_t length = 0;

    std::size_t End() const { return start + length; }
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

struct TextMatch
{
    int row = 0;
    TextSpan span;
    /// Where the search began that found it: a pattern may begin to match before what it gives as its match.
    std::size_t from = 0;

    friend bool operator==(const TextMatch& a, const TextMatch& b)
    {
        return a.row == b.row && a.span == b.span;
    }
};

/// The list that is searched. Rows count from 0; the engine asks for rows in range only.
class IFindTexts
{
public:
    virtual ~IFindTexts() = default;
    virtual int Count() = 0;
    /// Valid until the list is asked again.
    virtual std::wstring_view Text(int row) = 0;
    virtual void SetText(int row, std::wstring text) = 0;
    /// Asked when only selected rows are searched.
    virtual bool IsSelected(int row) = 0;
};

/// What a match is, where it is more than a text: a regular expression.
class ITextMatcher
{
public:
    virtual ~ITextMatcher() = default;
    /// The text that is searched from now on: a row's. It is there until the next call.
    virtual void Begin(std::wstring_view text) = 0;
    /// The first match that starts at or behind `from` (0 … size). What stands before `from` is its context.
    /// A match of no length is passed over.
    virtual std::optional<TextSpan> Find(std::size_t from) = 0;
    /// What takes the place of the match that Find gave last.
    /// @param replace the text to replace with, as the user typed it.
    virtual std::wstring Replacement(std::wstring_view replace) { return std::wstring(replace); }
    /// Whether the pattern is a bad or too costly one. The search then ends, and nothing counts as found.
    virtual bool HasFailed() { return false; }
};

struct FindQuery
{
    std::wstring find; ///< empty finds nothing, whatever the matcher says
    std::wstring replace;
    bool matchCase = false; ///< otherwise case is folded character by character
    bool wholeWords = false;
    bool selectedOnly = false;
    bool backwards = false;          ///< without a meaning when all are replaced
    ITextMatcher* matcher = nullptr; ///< finds instead of `find` and `matchCase`; null: they do
};

enum class FindMode : std::uint8_t
{
    Next = 0,           ///< find the next match
    ReplaceAndNext = 1, ///< replace the current match and find the next; without a valid one as Next
    ReplaceAll = 2
};

enum class FindResult : std::uint8_t
{
    Done = 0,
    DoneAfterWrapping = 1, ///< the match lies beyond an end of the list, or is the current one again
    NotFound = 2           ///< and nothing replaced
};

/// The search through a list, and the match it stands at. One at a time: matches of one text do not overlap.
class FindReplace
{
public:
    explicit FindReplace(IFindTexts& texts) : m_texts(texts) {}

    /// Next searches from `startRow`: behind the current match when that stands there (backwards: before it),
    /// else from the row's begin (its end); then through the other rows in turn, round the list's end, up to
    /// the current match itself. ReplaceAndNext replaces the current match wherever it stands, if the query
    /// still matches there, and searches on from the replacement, which is not searched itself. ReplaceAll
    /// takes all rows whatever the start, and each text once: a replacement that contains the find text ends.
    /// Texts are set after all of them were read, in ascending order, once a row.
    /// @param startRow −1 or a row out of range is row 0.
    FindResult Run(int startRow, FindMode mode, const FindQuery& query);

    /// The number of matches in all rows (with `selectedOnly` the selected ones).
    int Count(const FindQuery& query);

    /// The current match: what Run found last; nothing after NotFound and ReplaceAll.
    const std::optional<TextMatch>& Match() const { return m_match; }
    /// For whoever moves rows or the selection. A match that no longer fits does no harm.
    void SetMatch(const std::optional<TextMatch>& match) { m_match = match; }

    /// The replacements that the last Run made.
    int ReplacedCount() const { return m_replaced; }

private:
    class Search;

    FindResult RunNext(Search& search, int startRow);
    FindResult RunReplaceAndNext(Search& search, int startRow);
    FindResult RunReplaceAll(Search& search);

    IFindTexts& m_texts;
    std::optional<TextMatch> m_match;
    int m_replaced = 0;
};

} // namespace kv
