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
    Key before = 0; // the next row that stays, none of the host's own
    int end = impl.list.GetItemCount();
    for (std::size_t i = lines.size(); i-- > 0; end = lines[i]) {
        int next = lines[i] + 1;
        while (next < end && IsNew(impl, next))
            ++next;
        if (next < end)
            before = impl.KeyAt(next);
        if (!IsNew(impl, lines[i]))
            m_gone.push_back({impl.KeyAt(lines[i]), {before, lines[i] - static_cast<int>(i)}});
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

// The row before which one went may have gone itself, later. From the last one back each comes to stand where
// it stood.
void CKvTextListBase::Impl::HostStep::FindRemoved()
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
    Key before = 0;
    for (auto mark = order.rbegin(); mark != order.rend(); ++mark) {
        if (!mark->gone) {
            before = mark->key;
            continue;
        }
        m_removed.places.push_back({before, mark->gone->place.line});
        m_removed.rows.push_back(std::move(m_touched[m_touchedAt.at(mark->key)].row));
    }
    std::reverse(m_removed.places.begin(), m_removed.places.end());
    std::reverse(m_removed.rows.begin(), m_removed.rows.end());
}

void CKvTextListBase::Impl::HostStep::FindInserted(Impl& impl)
{
    const int count = impl.list.GetItemCount();
    auto left = static_cast<std::size_t>(count - m_count) + m_gone.size();
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
    FindRemoved();
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

// Steps of the user's within the host's keep what they do themselves.
void CKvTextListBase::_OnItemsModifying(int kind, const int* lines, int count)
{
    if (m_impl->recording && m_impl->running == 0)
        m_impl->recording->Note(*m_impl, kind, {lines, static_cast<std::size_t>(count)});
}
