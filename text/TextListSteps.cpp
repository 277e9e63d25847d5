// The steps of undo.
#include "KvGuiRes.h"
#include "text/ListTexts.h"
#include "text/TextListImpl.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

template <typename Change>
std::vector<std::uint64_t> KeysOf(const std::vector<Change>& changes)
{
    std::vector<std::uint64_t> keys;
    keys.reserve(changes.size());
    for (const Change& change : changes)
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
    , m_content(impl.content)
    , m_before(impl.Remember())
    , m_wasModified(impl.isModified)
    , m_saves(impl.saves)
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
    if (!list || list->m_impl->content != m_content) {
        setObsolete(true);
        return;
    }
    Impl& impl = *list->m_impl;
    const bool isFirst = !m_after;
    ++impl.running;
    list->_PrivateEnableUpdate(0);
    const bool isDone = forward ? Do(impl) : Undo(impl);
    if (isDone && isFirst)
        m_after = impl.Remember();
    else if (isDone)
        impl.Restore(forward ? *m_after : m_before);
    if (isDone)
        impl.isModified = forward || m_wasModified || impl.saves != m_saves;
    list->_PrivateEnableUpdate(1);
    setObsolete(!isDone);
    if (isDone && !(isFirst && IsSilentAtFirst()))
        impl.Tell(NoticeOf());
    if (list)
        --impl.running;
}

// Whether this step may become part of the other one, which came before.
bool CKvTextListBase::Impl::Step::Continues(const Step& other) const
{
    return m_list == other.m_list && m_content == other.m_content && m_saves == other.m_saves;
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
    setObsolete(cell.before == cell.after);
    return true;
}

CKvTextListBase::Impl::Notice CKvTextListBase::Impl::CellStep::NoticeOf() const
{
    return {Notice::Kind::Cell, m_change.front().key, m_change.front().column};
}

CKvTextListBase::Impl::ReplaceStep::ReplaceStep(Impl& impl, std::vector<RowText> texts)
    : Step(impl, kv::kReplaceStep)
    , m_texts(std::move(texts))
{
}

// One string serves all rows: with very many of them allocations take most of the time.
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
        m_texts[i].text.swap(present);
        isAny = true;
    }
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
    for (std::size_t i = 0; i < m_set.rows.size(); ++i)
        m_set.places.push_back({before, line + static_cast<int>(i)});
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
    if (lines.empty())
        return false;
    std::sort(lines.begin(), lines.end());
    rows.clear();
    places = impl.PlacesOf(lines);
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
    // From the last row's place to the first one's, run by run, so that the places before stay true.
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lines[a] < lines[b]; });
    std::vector<Row> sorted;
    for (const std::size_t i : order)
        sorted.push_back(std::move(rows[i]));
    for (std::size_t end = sorted.size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 && lines[order[begin - 1]] == lines[order[begin]])
            --begin;
        impl.PutIn(lines[order[begin]], std::span(sorted).subspan(begin, end - begin));
        end = begin;
    }
    rows.assign(sorted.size(), {}); // only the keys are needed until the rows go again
    keys.clear();
    for (std::size_t i = 0; i < sorted.size(); ++i)
        keys.push_back(rows[i].key = sorted[i].key);
    lines = impl.LinesOf(keys);
    impl.SelectLines(lines);
    list.EnsureVisible(lines.back());
    list.EnsureVisible(lines.front());
    return true;
}

CKvTextListBase::Impl::HostStep::HostStep(Impl& impl, const CString& name) : Step(impl, KvToQString(name))
{
    const int count = impl.list.GetItemCount();
    for (int line = 0; line < count; ++line) {
        m_rows.push_back(impl.Snapshot(line));
        CStringArray& cells = m_cells.emplace_back();
        for (int column = 0; column < impl.list.GetColumnCount(); ++column)
            cells.push_back(impl.list._GetCellValue(line, column));
    }
}

bool CKvTextListBase::Impl::HostStep::Finish(Impl& impl)
{
    std::unordered_map<Key, std::size_t> before;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        before.emplace(m_rows[i].key, i);
    std::vector<bool> stays(m_rows.size());
    for (int line = 0; line < impl.list.GetItemCount(); ++line) {
        const Key key = impl.KeyAt(line);
        const auto old = before.find(key);
        if (old == before.end()) {
            m_inserted.rows.emplace_back().key = key;
            continue;
        }
        stays[old->second] = true;
        const CStringArray& cells = m_cells[old->second];
        for (int column = 0; column < static_cast<int>(cells.size()); ++column) {
            const CString& value = cells[static_cast<std::size_t>(column)];
            CString now = impl.list._GetCellValue(line, column);
            if (now != value)
                m_changes.push_back({key, column, value, std::move(now)});
        }
    }
    Key next = 0; // that stays
    for (std::size_t i = m_rows.size(); i-- > 0;) {
        if (stays[i]) {
            next = m_rows[i].key;
            continue;
        }
        m_removed.places.push_back({next, static_cast<int>(i)});
        m_removed.rows.push_back(std::move(m_rows[i]));
    }
    std::reverse(m_removed.places.begin(), m_removed.places.end());
    std::reverse(m_removed.rows.begin(), m_removed.rows.end());
    for (std::size_t i = 0; i < m_removed.places.size(); ++i)
        m_removed.places[i].line -= static_cast<int>(i);
    m_rows.clear();
    m_cells.clear();
    return !m_changes.empty() || !m_removed.rows.empty() || !m_inserted.rows.empty();
}

bool CKvTextListBase::Impl::HostStep::Do(Impl& impl)
{
    if (std::exchange(m_isDone, false))
        return true; // by the host himself
    bool isAny = impl.Apply(m_changes, &CellChange::after);
    isAny = (!m_removed.rows.empty() && m_removed.TakeOut(impl)) || isAny;
    return (!m_inserted.rows.empty() && m_inserted.PutIn(impl)) || isAny;
}

bool CKvTextListBase::Impl::HostStep::Undo(Impl& impl)
{
    bool isAny = !m_inserted.rows.empty() && m_inserted.TakeOut(impl);
    isAny = (!m_removed.rows.empty() && m_removed.PutIn(impl)) || isAny;
    return impl.Apply(m_changes, &CellChange::before) || isAny;
}

int CKvTextListBase::RunAsStep(const CString& name, const std::function<void()>& change)
{
    auto step = std::make_unique<Impl::HostStep>(*m_impl, name);
    const QPointer<CKvTextListBase> self(this);
    change();
    if (!self || !step->Finish(*m_impl))
        return 0;
    m_impl->Push(std::move(step));
    return 1;
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
