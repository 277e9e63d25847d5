// The lists of texts: find and replace.
#include "KvGuiRes.h"
#include "text/FindReplace.h"
#include "text/ListTexts.h"
#include "text/RegexMatcher.h"
#include "text/TextListImpl.h"

#include <utility>

/// Column 0 as the engine sees it. Texts that it sets are collected for one step of undo.
class CKvTextListBase::Impl::FindTexts : public kv::IFindTexts
{
public:
    explicit FindTexts(Impl& impl) : m_impl(impl) {}

    int Count() override { return m_impl.list.GetItemCount(); }
    std::wstring_view Text(int row) override
    {
        if (row == m_lastChanged)
            return m_changes.back().text;
        return m_impl.list.ViewItemText(row, 0);
    }
    void SetText(int row, std::wstring text) override
    {
        m_lastChanged = row;
        m_changes.push_back({m_impl.KeyAt(row), std::move(text)});
    }
    bool IsSelected(int row) override { return m_impl.list.IsItemSelected(row) != 0; }

    std::deque<RowText> TakeChanges() { return std::move(m_changes); }

private:
    Impl& m_impl;
    std::deque<RowText> m_changes; // grows without moving what it has
    int m_lastChanged = -1;
};

// @param matcher of the options' regular expression; lives as long as the query.
kv::FindQuery CKvTextListBase::Impl::QueryOf(const CString& find, bool matchCase,
                                             std::optional<kv::RegexMatcher>& matcher) const
{
    kv::FindQuery query;
    query.find = find;
    query.matchCase = matchCase;
    query.wholeWords = (findOptions & kKvFindWholeWords) != 0;
    query.selectedOnly = (findOptions & kKvFindSelectedRows) != 0;
    query.backwards = (findOptions & kKvFindBackwards) != 0;
    if ((findOptions & kKvFindRegularExpression) != 0)
        query.matcher = &matcher.emplace(find, matchCase);
    return query;
}

int CKvTextListBase::FindReplace(int startRow, int mode, const CString& find, const CString& replace,
                                 int matchCase)
{
    constexpr int kNotFound = static_cast<int>(kv::FindResult::NotFound);
    Impl& impl = *m_impl;
    impl.findError.clear();
    if (mode < 0 || mode > static_cast<int>(kv::FindMode::ReplaceAll))
        return kNotFound;
    std::optional<kv::RegexMatcher> matcher;
    kv::FindQuery query = impl.QueryOf(find, matchCase != 0, matcher);
    query.replace = replace;
    Impl::FindTexts texts(impl);
    kv::FindReplace engine(texts);
    if (const int row = FindRowKey(impl.matchKey); row >= 0) // the match has followed its row
        engine.SetMatch(kv::TextMatch{row, impl.match.span, impl.match.from});
    const kv::FindResult result = engine.Run(startRow, static_cast<kv::FindMode>(mode), query);
    if (matcher)
        impl.findError = matcher->Error();
    const std::optional<kv::TextMatch> match = engine.Match();
    impl.matchKey = match ? GetRowKey(match->row) : 0;
    impl.match = match.value_or(kv::TextMatch());
    const auto show = [&impl, match, selectedOnly = query.selectedOnly] {
        if (!match)
            return;
        // The selection that is searched stays.
        if (selectedOnly)
            impl.list.SetCurrentItem(match->row);
        else
            impl.list.SetSelItem(match->row);
        impl.list.EnsureVisible(match->row);
    };
    if (std::deque<Impl::RowText> changes = texts.TakeChanges(); !changes.empty())
        impl.Push(std::make_unique<Impl::ReplaceStep>(impl, std::move(changes), show));
    else
        show();
    return static_cast<int>(result);
}

int CKvTextListBase::CountMatches(const CString& find, int matchCase)
{
    std::optional<kv::RegexMatcher> matcher;
    const kv::FindQuery query = m_impl->QueryOf(find, matchCase != 0, matcher);
    Impl::FindTexts texts(*m_impl);
    const int count = kv::FindReplace(texts).Count(query);
    m_impl->findError = matcher ? matcher->Error() : CString();
    return count;
}

void CKvTextListBase::SetFindOptions(UINT options)
{
    m_impl->findOptions = options;
}

UINT CKvTextListBase::GetFindOptions() const
{
    return m_impl->findOptions;
}

CString CKvTextListBase::GetFindError() const
{
    return m_impl->findError;
}
