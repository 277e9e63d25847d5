// The toolkit's table interfaces for a control whose accessible parts are cells. No cell becomes an object
// before somebody asks for it.
#pragma once

#include "platform/AccessibleParts.h"

#include <functional>
#include <optional>
#include <vector>

namespace kv {

/// What a control tells of the table that its parts form. Rows are those that are shown, from 0.
class AccessibleTable
{
public:
    using Key = AccessibleParts::Key;
    struct Cell
    {
        int row; ///< -1 for a header
        int column;
    };

    virtual ~AccessibleTable() = default;
    virtual int RowCount() const = 0;
    virtual int ColumnCount() const = 0;
    /// @param cell within the table. @return nothing for a header that is not there.
    virtual std::optional<Key> CellKey(Cell cell) const = 0;
    /// Nothing for a key that is not in use.
    virtual std::optional<Cell> FindCell(Key key) const = 0;
    virtual bool IsSelected(int row) const = 0;
    virtual std::vector<int> SelectedRows() const = 0;
    virtual int SelectedCount() const = 0;
    virtual std::vector<int> RowsInView() const = 0;
    virtual void SelectRow(int row, bool select) = 0;
};

/// How the adapters get at the interface of a cell.
using AccessiblePartGetter = std::function<QAccessibleInterface*(AccessibleParts::Key key)>;

/// The table's side.
class AccessibleTableAdapter : public QAccessibleTableInterface
{
public:
    AccessibleTableAdapter(AccessibleTable& table, AccessiblePartGetter part);

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return m_table.SelectedCount(); }
    int columnCount() const override { return m_table.ColumnCount(); }
    int rowCount() const override { return m_table.RowCount(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return IsRow(row) && m_table.IsSelected(row); }
    bool selectRow(int row) override { return Select(row, true); }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override { return Select(row, false); }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    bool IsRow(int row) const { return row >= 0 && row < m_table.RowCount(); }
    bool IsColumn(int column) const { return column >= 0 && column < m_table.ColumnCount(); }
    QAccessibleInterface* Part(AccessibleTable::Cell cell) const;
    bool Select(int row, bool select);

    AccessibleTable& m_table;
    const AccessiblePartGetter m_part;
};

/// A cell's side.
class AccessibleCellAdapter : public QAccessibleTableCellInterface
{
public:
    AccessibleCellAdapter(const AccessibleTable& table, AccessibleParts::Key key, AccessiblePartGetter part,
                          QAccessibleInterface& container);

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return Place().column; }
    int rowIndex() const override { return Place().row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return &m_container; }

private:
    AccessibleTable::Cell Place() const;

    const AccessibleTable& m_table;
    const AccessibleParts::Key m_key;
    const AccessiblePartGetter m_part;
    QAccessibleInterface& m_container;
};

} // namespace kv
