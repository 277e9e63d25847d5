#include "platform/AccessibleTable.h"

#include <utility>

namespace kv {

AccessibleTableAdapter::AccessibleTableAdapter(AccessibleTable& table, AccessiblePartGetter part)
    : m_table(table)
    , m_part(std::move(part))
{
}

QAccessibleInterface* AccessibleTableAdapter::Part(AccessibleTable::Cell cell) const
{
    const std::optional<AccessibleParts::Key> key = m_table.CellKey(cell);
    return key ? m_part(*key) : nullptr;
}

QAccessibleInterface* AccessibleTableAdapter::cellAt(int row, int column) const
{
    return IsRow(row) && IsColumn(column) ? Part({row, column}) : nullptr;
}

int AccessibleTableAdapter::selectedCellCount() const
{
    return selectedRowCount() * columnCount();
}

// Those in view: with all rows of a long list selected there would be millions.
QList<QAccessibleInterface*> AccessibleTableAdapter::selectedCells() const
{
    QList<QAccessibleInterface*> cells;
    for (const int row : m_table.RowsInView()) {
        for (int column = 0; m_table.IsSelected(row) && column < columnCount(); ++column)
            cells += cellAt(row, column);
    }
    return cells;
}

QString AccessibleTableAdapter::columnDescription(int column) const
{
    QAccessibleInterface* header = IsColumn(column) ? Part({-1, column}) : nullptr;
    return header ? header->text(QAccessible::Name) : QString();
}

QList<int> AccessibleTableAdapter::selectedRows() const
{
    const std::vector<int> rows = m_table.SelectedRows();
    return {rows.begin(), rows.end()};
}

bool AccessibleTableAdapter::Select(int row, bool select)
{
    if (!IsRow(row))
        return false;
    m_table.SelectRow(row, select);
    return true;
}

AccessibleCellAdapter::AccessibleCellAdapter(const AccessibleTable& table, AccessibleParts::Key key,
                                             AccessiblePartGetter part, QAccessibleInterface& container)
    : m_table(table)
    , m_key(key)
    , m_part(std::move(part))
    , m_container(container)
{
}

AccessibleTable::Cell AccessibleCellAdapter::Place() const
{
    return m_table.FindCell(m_key).value_or(AccessibleTable::Cell{-1, -1});
}

bool AccessibleCellAdapter::isSelected() const
{
    const int row = Place().row;
    return row >= 0 && m_table.IsSelected(row);
}

QList<QAccessibleInterface*> AccessibleCellAdapter::columnHeaderCells() const
{
    const AccessibleTable::Cell place = Place();
    const auto header = place.row >= 0 ? m_table.CellKey({-1, place.column}) : std::nullopt;
    return header ? QList<QAccessibleInterface*>{m_part(*header)} : QList<QAccessibleInterface*>();
}

} // namespace kv
