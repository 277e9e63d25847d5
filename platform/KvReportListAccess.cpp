// The report list as a screen reader finds it: a table of cells.
#include "core/TextTables.h"
#include "platform/KvReportListImpl.h"

#include <algorithm>
#include <limits>

namespace {

// A cell's key is its line's number and its column; no line has the number 0, which stands for the header.
constexpr int kColumnBits = 16;

// The toolkit has no name for it; readers know this one from other lists.
const QString kEditAction = QStringLiteral("edit");

constexpr kv::AccessibleParts::Key CellKeyOf(std::uint64_t id, int column)
{
    return id << kColumnBits | static_cast<std::uint64_t>(column);
}

constexpr std::uint64_t IdOf(kv::AccessibleParts::Key key)
{
    return key >> kColumnBits;
}

constexpr int ColumnOf(kv::AccessibleParts::Key key)
{
    return static_cast<int>(key & ((1u << kColumnBits) - 1));
}

} // namespace

QString CKvReportListCtrl::Impl::ControlName() const
{
    const UINT text = list._GetNameText();
    return text == 0 ? QString() : KvToQString(kv::LoadText(text));
}

int CKvReportListCtrl::Impl::Count() const
{
    const std::int64_t count = (std::int64_t{RowCount()} + (hasHeader ? 1 : 0)) * ColumnCount();
    return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

kv::AccessibleParts::Key CKvReportListCtrl::Impl::KeyAt(int index) const
{
    const int row = index / ColumnCount() - (hasHeader ? 1 : 0);
    return CellKeyOf(row < 0 ? 0 : rows.Row(rows.ShownLine(row)).id, index % ColumnCount());
}

int CKvReportListCtrl::Impl::IndexOf(Key key) const
{
    const std::optional<Cell> cell = FindCell(key);
    return cell ? (cell->row + (hasHeader ? 1 : 0)) * ColumnCount() + cell->column : -1;
}

std::optional<CKvReportListCtrl::Impl::Key> CKvReportListCtrl::Impl::CellKey(Cell cell) const
{
    if (cell.row < 0)
        return hasHeader ? std::optional<Key>(CellKeyOf(0, cell.column)) : std::nullopt;
    return CellKeyOf(rows.Row(rows.ShownLine(cell.row)).id, cell.column);
}

std::optional<CKvReportListCtrl::Impl::Cell> CKvReportListCtrl::Impl::FindCell(Key key) const
{
    const int column = ColumnOf(key);
    if (!IsColumn(column))
        return std::nullopt;
    if (IdOf(key) == 0)
        return hasHeader ? std::optional<Cell>({-1, column}) : std::nullopt;
    const int line = rows.Find(IdOf(key));
    if (line < 0 || !rows.Row(line).shown)
        return std::nullopt;
    return Cell{rows.ShownBefore(line), column};
}

// What the derived list says of it, and the columns with their names; a list is read line by line, not cell
// by cell.
QString CKvReportListCtrl::Impl::RestOfLine(int line, int column) const
{
    QStringList texts;
    if (const CString own = list._GetItemDescription(line); !own.empty())
        texts += KvToQString(own);
    for (int other = 0; other < ColumnCount(); ++other) {
        const QString text = KvToQString(list._GetCellName(line, other));
        const QString header = KvToQString(columns.columns[static_cast<std::size_t>(other)].header);
        if (other != column && !text.isEmpty())
            texts += header.isEmpty() ? text : header + QStringLiteral(": ") + text;
    }
    return texts.join(QStringLiteral(", "));
}

kv::AccessiblePart CKvReportListCtrl::Impl::Describe(Key key) const
{
    kv::AccessiblePart part;
    const int column = ColumnOf(key);
    const int line = rows.Find(IdOf(key));
    if (line < 0) {
        part.role = QAccessible::ColumnHeader;
        part.name = KvToQString(list.GetHeaderText(column));
        part.rect = CellRect(QRect(layout.header), column) & QRect(layout.header);
        return part;
    }
    part.role = QAccessible::Cell;
    part.name = KvToQString(list._GetCellName(line, column));
    if (column == currentColumn)
        part.description = RestOfLine(line, column);
    part.editable = list._CanEditCell(line, column) != 0;
    part.rect = CellRect(line, column) & QRect(layout.cells);
    part.selectable = true;
    part.selected = rows.Row(line).selected;
    part.actions = {QAccessibleActionInterface::setFocusAction(), QAccessibleActionInterface::pressAction()};
    if (part.editable)
        part.actions += kEditAction;
    return part;
}

void CKvReportListCtrl::Impl::TellText(int line, int column)
{
    if (QAccessible::isActive() && IsCell(line, column))
        NameChanged(CellKeyOf(rows.Row(line).id, column));
}

std::optional<CKvReportListCtrl::Impl::Key> CKvReportListCtrl::Impl::FocusedPart() const
{
    if (!IsLine(current) || !rows.Row(current).shown || !IsColumn(currentColumn))
        return std::nullopt;
    return CellKeyOf(rows.Row(current).id, currentColumn);
}

void CKvReportListCtrl::Impl::DoAction(Key key, const QString& action)
{
    const QPointer<CKvReportListCtrl> self(&list);
    if (editor && (!list.EndEdit(1) || !self))
        return;
    list.setFocus();
    const int line = self ? rows.Find(IdOf(key)) : -1;
    if (line < 0)
        return;
    currentColumn = ColumnOf(key);
    if (action == QAccessibleActionInterface::setFocusAction()) {
        list.SetCurrentItem(line);
        Show(line);
        return;
    }
    ClickLine(line, Qt::NoModifier);
    if (self && action == kEditAction)
        list.EditCell(rows.Find(IdOf(key)), ColumnOf(key));
}

std::vector<int> CKvReportListCtrl::Impl::SelectedRows() const
{
    std::vector<int> lines;
    rows.SelectedLines(lines);
    std::erase_if(lines, [this](int line) { return !rows.Row(line).shown; });
    std::transform(lines.begin(), lines.end(), lines.begin(),
                   [this](int line) { return rows.ShownBefore(line); });
    return lines;
}

std::vector<int> CKvReportListCtrl::Impl::RowsInView() const
{
    std::vector<int> shown;
    for (const kv::ReportScreenLine& line : LinesInView())
        shown.push_back(rows.ShownBefore(line.line));
    return shown;
}

void CKvReportListCtrl::Impl::SelectRow(int row, bool select)
{
    const int line = rows.ShownLine(row);
    rows.Select(line, line, select);
    TellSelection();
}

CString CKvReportListCtrl::_GetCellName(int line, int column) const
{
    return CString(ViewItemText(line, column));
}
