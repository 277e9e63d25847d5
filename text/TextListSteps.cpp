// The steps of undo.
#include "KvGuiRes.h"
#include "text/ListTexts.h"
#include "text/TextListImpl.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

template <typename Changes>
std::vector<std::uint64_t> KeysOf(const Changes& changes)
{
    std::vector<std::uint64_t> keys;
    keys.reserve(changes.size());
    for (const auto& change : changes)
        keys.push_back(change.key);
    return keys;
}

} // namespace

CKvTextListBase::Impl::Step::Step(Impl& impl, UINT text)
    : Step(impl, KvToQString(KvGuiRes::LoadStringW(text)))
{
}

CKvTextListBase::Impl::Step::Step(Impl& impl, const QString& name)
    : QUndoCommand(name)
    , m_list(&impl.list)
    , m_epoch(impl.epoch)
    , m_before(impl.Remember())
    , m_contentBefore(impl.content)
{
}

void CKvTextListBase::Impl::Step::undo()
{
    Run(false);
}

void CKvTextListBase::Impl::Step::redo()
{
    Run(true);
}

void CKvTextListBase::Impl::Step::Run(bool forward)
{
    const QPointer<CKvTextListBase> list = m_list;
    if (!list || list->m_impl->epoch != m_epoch) {
        setObsolete(true);
        return;
    }
    Impl& impl = *list->m_impl;
    const bool isFirst = !m_after;
    ++impl.running;
    const std::vector<Key> selected = isFirst ? m_before.selected : impl.SelectedKeys();
    const bool isDone = DoHeld(impl, forward);
    setObsolete(!isDone);
    if (isDone && !(isFirst && IsSilentAtFirst())) {
        Notice notice = NoticeOf();
        notice.isSelectionOther = impl.SelectedKeys() != selected;
        impl.Tell(notice);
    }
    if (list)
        --impl.running;
}

bool CKvTextListBase::Impl::Step::DoHeld(Impl& impl, bool forward)
{
    const FrameHold hold(impl.list);
    const bool isFirst = !m_after;
    if (!(forward ? Do(impl) : Undo(impl)))
        return false;
    if (isFirst) {
        m_after = impl.Remember();
        m_contentAfter = ++impl.lastContent;
    } else {
        impl.Restore(forward ? *m_after : m_before);
    }
    impl.content = forward ? m_contentAfter : m_contentBefore;
    return true;
}

// Whether this step may become part of the other one, which came before. What the host has saved between them
// must remain to be come back to.
bool CKvTextListBase::Impl::Step::Continues(const Step& other) const
{
    return m_list && m_list == other.m_list && m_epoch == other.m_epoch &&
           m_list->m_impl->saved != other.m_contentAfter;
}

void CKvTextListBase::Impl::Step::TakeEndOf(const Step& other)
{
    m_after = other.m_after;
    m_contentAfter = other.m_contentAfter;
}

void CKvTextListBase::Impl::Step::Cancel()
{
    m_list->m_impl->content = m_contentBefore;
    setObsolete(true);
}

CKvTextListBase::Impl::CellStep::CellStep(Impl& impl, CellChange change, UINT text)
    : Step(impl, text)
    , m_change{std::move(change)}
{
}

int CKvTextListBase::Impl::CellStep::id() const
{
    return 0x4B7654; // no other program's, most likely
}

bool CKvTextListBase::Impl::CellStep::mergeWith(const QUndoCommand* other)
{
    const auto* later = dynamic_cast<const CellStep*>(other);
    if (!later || !later->Continues(*this))
        return false;
    CellChange& cell = m_change.front();
    const CellChange& next = later->m_change.front();
    if (cell.key != next.key || cell.column != next.column || cell.after != next.before)
        return false;
    cell.after = next.after;
    TakeEndOf(*later);
    if (cell.before == cell.after)
        Cancel();
    return true;
}

CKvTextListBase::Impl::Notice CKvTextListBase::Impl::CellStep::NoticeOf() const
{
    return {Notice::Kind::Cell, m_change.front().key, m_change.front().column};
}

CKvTextListBase::Impl::ReplaceStep::ReplaceStep(Impl& impl, std::deque<RowText> texts,
                                                std::function<void()> show)
    : Step(impl, kv::kReplaceStep)
    , m_texts(std::move(texts))
    , m_show(std::move(show))
{
}

// One string serves all rows, and each text its successor's: with very many of them allocations take most of
// the time.
bool CKvTextListBase::Impl::ReplaceStep::Do(Impl& impl)
{
    const std::vector<int> lines = impl.LinesOf(KeysOf(m_texts));
    CString present;
    bool isAny = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] < 0)
            continue;
        present = impl.list.ViewItemText(lines[i], 0);
        impl.list._SetCellValue(lines[i], 0, m_texts[i].text);
        m_texts[i].text.assign(present);
        isAny = true;
    }
    if (const auto show = std::exchange(m_show, {}))
        show();
    return isAny;
}

CKvTextListBase::Impl::Notice CKvTextListBase::Impl::ReplaceStep::NoticeOf() const
{
    if (m_texts.size() > 1)
        return {Notice::Kind::Rows};
    return {Notice::Kind::Cell, m_texts.front().key, 0};
}

bool CKvTextListBase::Impl::Apply(const std::vector<CellChange>& changes, CString CellChange::*value)
{
    const std::vector<int> lines = LinesOf(KeysOf(changes));
    bool isAny = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] < 0)
            continue;
        list._SetCellValue(lines[i], changes[i].column, changes[i].*value);
        isAny = true;
    }
    return isAny;
}

CKvTextListBase::Impl::RowsStep::RowsStep(Impl& impl, int line, std::vector<Row> rows, UINT text)
    : Step(impl, text)
    , m_inserts(true)
    , m_set{std::move(rows), {}}
{
    const Key before = line < impl.list.GetItemCount() ? impl.KeyAt(line) : 0;
    m_set.places.assign(m_set.rows.size(), {before, line});
}

CKvTextListBase::Impl::RowsStep::RowsStep(Impl& impl, const CArray<int, int>& lines, UINT text)
    : Step(impl, text)
    , m_inserts(false)
{
    std::transform(lines.begin(), lines.end(), std::back_inserter(m_set.rows), [&](int line) {
        Row row;
        row.key = impl.KeyAt(line);
        return row;
    });
}

bool CKvTextListBase::Impl::RowSet::TakeOut(Impl& impl)
{
    std::vector<Key> keys;
    for (const Row& row : rows)
        keys.push_back(row.key);
    std::vector<int> lines = impl.LinesOf(keys);
    std::erase(lines, -1);
    std::sort(lines.begin(), lines.end());
    rows.clear(); // those that the host has removed meanwhile are gone for good
    places = impl.PlacesOf(lines);
    if (lines.empty())
        return false;
    for (const int line : lines)
        rows.push_back(impl.Snapshot(line));
    impl.Remove(lines);
    const int next = std::min(lines.front(), impl.list.GetItemCount() - 1);
    impl.list.SetSelItem(next);
    impl.list.EnsureVisible(next);
    return true;
}

bool CKvTextListBase::Impl::RowSet::PutIn(Impl& impl)
{
    if (rows.empty())
        return false;
    CKvTextListBase& list = impl.list;
    std::vector<Key> keys;
    for (const Place& place : places)
        keys.push_back(place.before);
    std::vector<int> lines = impl.LinesOf(keys);
    const int count = list.GetItemCount();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (keys[i] == 0)
            lines[i] = count;
        else if (lines[i] < 0)
            lines[i] = std::min(places[i].line, count);
    }
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lines[a] < lines[b]; });
    std::vector<Row> sorted;
    CArray<int, int> put;
    for (const std::size_t i : order) {
        put.push_back(lines[i] + static_cast<int>(sorted.size()));
        sorted.push_back(std::move(rows[i]));
    }
    impl.PutIn(put, sorted);
    rows.assign(sorted.size(), {}); // only the keys are needed until the rows go again
    for (std::size_t i = 0; i < sorted.size(); ++i)
        rows[i].key = sorted[i].key;
    impl.SelectLines(put);
    list.EnsureVisible(put.back());
    list.EnsureVisible(put.front());
    return true;
}

CKvTextListBase::Impl::MoveStep::MoveStep(Impl& impl, const CArray<int, int>& lines, int before, UINT text)
    : Step(impl, text)
    , m_from(impl.PlacesOf(lines))
{
    for (const int line : lines)
        m_keys.push_back(impl.KeyAt(line));
    // A row that moves itself is no mark.
    while (std::binary_search(lines.begin(), lines.end(), before))
        ++before;
    const Key mark = before < impl.list.GetItemCount() ? impl.KeyAt(before) : 0;
    m_to.assign(lines.size(), {mark, before});
}

bool CKvTextListBase::Impl::MoveStep::Do(Impl& impl)
{
    if (!Arrange(impl, m_to))
        return false;
    const std::vector<int> lines = impl.LinesOf(m_keys);
    impl.list.EnsureVisible(lines.back());
    impl.list.EnsureVisible(lines.front());
    return true;
}

bool CKvTextListBase::Impl::MoveStep::Arrange(Impl& impl, const std::vector<Place>& places)
{
    std::vector<Key> marks;
    for (const Place& place : places)
        marks.push_back(place.before);
    const std::vector<int> lines = impl.LinesOf(m_keys);
    const std::vector<int> before = impl.LinesOf(marks);
    const int count = impl.list.GetItemCount();
    std::vector<kv::RowPlacing> placings;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] >= 0)
            placings.push_back({lines[i], marks[i] == 0    ? count
                                          : before[i] >= 0 ? before[i]
                                                           : std::min(places[i].line, count)});
    }
    if (placings.empty())
        return false;
    impl.list.SortRows(kv::ArrangedOrder(count, placings));
    return true;
}
