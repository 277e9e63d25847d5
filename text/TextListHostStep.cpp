// What the host does as one step of undo.
#include "text/TextListImpl.h"

#include <QScopeGuard>

#include <algorithm>
#include <list>
#include <utility>

CKvTextListBase::Impl::HostStep::HostStep(Impl& impl, const CString& name)
    : Step(impl, KvToQString(name))
    , m_firstNew(impl.list.GetNextRowId())
    , m_count(impl.list.GetItemCount())
{
}

void CKvTextListBase::Impl::HostStep::Touch(Impl& impl, int line)
{
    const Key key = impl.KeyAt(line);
    if (!m_touchedAt.emplace(key, m_touched.size()).second)
        return;
    Touched& touched = m_touched.emplace_back(Touched{impl.Snapshot(line), {}, line});
    for (int column = 0; column < impl.list.GetColumnCount(); ++column)
        touched.cells.push_back(impl.list._GetCellValue(line, column));
}

void CKvTextListBase::Impl::HostStep::Note(Impl& impl, int kind, std::span<const int> lines)
{
    m_isVoid = m_isVoid || kind == kKvReportAllRemoved;
    for (const int line : lines) {
        if (!IsNew(impl, line))
            Touch(impl, line);
    }
    if (kind != kKvReportRemoved)
        return;
    Key before = 0;
    int end = impl.list.GetItemCount();
    for (std::size_t i = lines.size(); i-- > 0; end = lines[i]) {
        if (lines[i] + 1 < end)
            before = impl.KeyAt(lines[i] + 1);
        m_gone.push_back(
            {impl.KeyAt(lines[i]), {before, lines[i] - static_cast<int>(i)}, IsNew(impl, lines[i])});
    }
}

void CKvTextListBase::Impl::HostStep::FindChanges(Impl& impl)
{
    for (Touched& touched : m_touched) {
        const Key key = touched.row.key;
        const int line = impl.KeyAt(touched.line) == key ? touched.line : impl.LineOf(key);
        for (int column = 0; line >= 0 && column < static_cast<int>(touched.cells.size()); ++column) {
            CString& value = touched.cells[static_cast<std::size_t>(column)];
            CString now = impl.list._GetCellValue(line, column);
            if (now != value)
                m_changes.push_back({key, column, std::move(value), std::move(now)});
        }
    }
}

/// The rows that went from before one that stays, in the order in which they stood.
struct CKvTextListBase::Impl::HostStep::Section
{
    std::vector<const Gone*> rows;
    Key before; ///< 0: the end
    int line = 0;
};

// The row before which one went may have gone itself, later. From the last one back each comes to stand where
// it stood.
std::vector<CKvTextListBase::Impl::HostStep::Section> CKvTextListBase::Impl::HostStep::SectionsOfGone() const
{
    struct Mark
    {
        const Gone* gone; ///< null for a row that stays
        Key key;
    };
    std::list<Mark> order;
    std::unordered_map<Key, std::list<Mark>::iterator> marks;
    for (auto gone = m_gone.rbegin(); gone != m_gone.rend(); ++gone) {
        const Key before = gone->place.before;
        auto mark = marks.find(before);
        if (mark == marks.end())
            mark = marks.emplace(before, order.insert(order.end(), {nullptr, before})).first;
        const auto at = order.insert(mark->second, {&*gone, gone->key});
        marks.emplace(gone->key, at);
    }
    std::vector<Section> sections;
    std::vector<const Gone*> rows;
    for (const Mark& mark : order) {
        if (mark.gone)
            rows.push_back(mark.gone);
        else
            sections.push_back({std::exchange(rows, {}), mark.key});
    }
    return sections;
}

// Undo takes the host's own rows out first: what stood before one of them goes before the next row that is
// none.
void CKvTextListBase::Impl::HostStep::FindRemoved(Impl& impl)
{
    std::vector<Section> sections = SectionsOfGone();
    std::vector<Key> marks;
    for (const Section& section : sections)
        marks.push_back(section.before);
    const std::vector<int> lines = impl.LinesOf(marks);
    const int count = impl.list.GetItemCount();
    for (std::size_t i = 0; i < sections.size(); ++i)
        sections[i].line = lines[i] < 0 ? count : lines[i];
    std::sort(sections.begin(), sections.end(),
              [](const Section& a, const Section& b) { return a.line < b.line; });
    Key next = 0;
    int end = count;
    for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
        int line = section->line;
        while (line < end && IsNew(impl, line))
            ++line;
        if (line < end)
            next = impl.KeyAt(line);
        section->before = next;
        end = section->line;
    }
    for (const Section& section : sections) {
        for (const Gone* gone : section.rows) {
            if (gone->isNew)
                continue;
            m_removed.places.push_back({section.before, gone->place.line});
            m_removed.rows.push_back(std::move(m_touched[m_touchedAt.at(gone->key)].row));
        }
    }
}

void CKvTextListBase::Impl::HostStep::FindInserted(Impl& impl)
{
    const int count = impl.list.GetItemCount();
    const auto gone = std::count_if(m_gone.begin(), m_gone.end(), [](const Gone& one) { return !one.isNew; });
    auto left = count - m_count + static_cast<int>(gone);
    for (int line = 0; line < count && left > 0; ++line) {
        if (!IsNew(impl, line))
            continue;
        m_inserted.rows.emplace_back().key = impl.KeyAt(line);
        --left;
    }
}

bool CKvTextListBase::Impl::HostStep::Finish(Impl& impl)
{
    if (m_isVoid)
        return false;
    FindChanges(impl);
    FindRemoved(impl);
    FindInserted(impl);
    m_touched = {};
    m_touchedAt = {};
    m_gone = {};
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
    if (m_impl->recording) {
        change();
        return 0;
    }
    auto step = std::make_unique<Impl::HostStep>(*m_impl, name);
    const QPointer<CKvTextListBase> self(this);
    {
        m_impl->recording = step.get();
        const auto end = qScopeGuard([&] {
            if (self)
                m_impl->recording = nullptr;
        });
        change();
    }
    if (!self || !step->Finish(*m_impl))
        return 0;
    m_impl->Push(std::move(step));
    return 1;
}

void CKvTextListBase::_OnItemsModifying(int kind, const int* lines, int count)
{
    if (m_impl->recording)
        m_impl->recording->Note(*m_impl, kind, {lines, static_cast<std::size_t>(count)});
}
