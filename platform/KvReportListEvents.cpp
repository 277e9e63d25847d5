// The report list's input: mouse, wheel and keys become selection, scrolling and column widths.
#include "platform/KvReportListImpl.h"

#include <QApplication>
#include <QCursor>

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kScrollTimer = 1;
constexpr int kScrollPeriod = 40; // milliseconds
constexpr int kLinesPerNotch = 3;
constexpr UINT kControlA = 1;

} // namespace

void CKvReportListCtrl::Impl::SelectFromAnchor(int line)
{
    if (!IsLine(anchor))
        anchor = line;
    rows.ClearSelection();
    rows.SelectShown(std::min(anchor, line), std::max(anchor, line));
}

void CKvReportListCtrl::Impl::ClickLine(int line, Qt::KeyboardModifiers modifiers)
{
    current = line;
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        SelectFromAnchor(line);
    } else if (modifiers.testFlag(Qt::ControlModifier)) {
        anchor = line;
        rows.Select(line, line, !rows.Row(line).selected);
    } else {
        anchor = line;
        rows.ClearSelection();
        rows.Select(line, line, true);
    }
    TellSelection();
}

void CKvReportListCtrl::Impl::MoveCurrent(int line, Qt::KeyboardModifiers modifiers)
{
    if (!IsLine(line) || !rows.Row(line).shown)
        return;
    current = line;
    const QPointer<CKvReportListCtrl> self(&list);
    ScrollByUser(scrollX, OffsetOf(line));
    if (!self)
        return;
    line = current; // who hears of the scrolling may move it
    if (line < 0)
        return;
    if (modifiers.testFlag(Qt::ControlModifier) && !modifiers.testFlag(Qt::ShiftModifier)) {
        RequestFrame();
        return;
    }
    ClickLine(line, modifiers & Qt::ShiftModifier);
}

// The line a view's height away, at least the next one.
int CKvReportListCtrl::Impl::PageFrom(int line, int direction) const
{
    const std::int64_t height = layout.cells.Height();
    const std::int64_t top = rows.TopOf(line);
    const int page = direction > 0 ? rows.LineAt(top + height) : rows.LineAt(top - height);
    const int next = list.NextShownRow(line, direction);
    if (next < 0)
        return line;
    return direction > 0 ? std::max(page, next) : std::min(page, next);
}

void CKvReportListCtrl::Impl::DragSelectionTo(CPoint point)
{
    const CRect& cells = layout.cells;
    const int y = std::clamp(point.y, cells.top, std::max(cells.top, cells.bottom - 1));
    const int line = rows.LineAt(scrollY + y - cells.top);
    if (line < 0 || line == current)
        return;
    current = line;
    SelectFromAnchor(line);
    TellSelection();
}

void CKvReportListCtrl::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    Impl& impl = *m_impl;
    const QPointer<CKvReportListCtrl> self(this);
    if (impl.editor) {
        EndEdit(1);
        if (!self || IsEditing())
            return;
    }
    setFocus(Qt::MouseFocusReason);
    if (!self || HasCapture())
        return;
    impl.dragStart = point;
    if (impl.layout.header.PtInRect(point)) {
        const int x = point.x + impl.scrollX;
        const int edge = impl.layout.EdgeAt(x);
        impl.drag = edge >= 0 ? Impl::Drag::kEdge : Impl::Drag::kHeader;
        impl.dragColumn = edge >= 0 ? edge : impl.layout.ColumnAt(x);
        impl.dragColumns = impl.columns;
        impl.dragLayout = impl.layout;
        SetCapture();
        return;
    }
    int line = -1;
    int column = -1;
    if (!HitTest(point, line, column)) {
        if (impl.layout.cells.PtInRect(point) && modifiers == Qt::NoModifier &&
            impl.rows.SelectedCount() > 0) {
            impl.rows.ClearSelection();
            impl.TellSelection();
        }
        return;
    }
    if (column >= 0)
        impl.currentColumn = column;
    impl.dragLine = line;
    SetCapture();
    const bool isPlain = !(modifiers & (Qt::ShiftModifier | Qt::ControlModifier));
    impl.drag = isPlain && impl.rows.Row(line).selected ? Impl::Drag::kRow : Impl::Drag::kSelect;
    if (impl.drag == Impl::Drag::kRow) {
        impl.current = line; // the others stay selected until it is plain that nothing is dragged
        impl.RequestFrame();
        return;
    }
    SetTimer(kScrollTimer, kScrollPeriod);
    impl.ClickLine(line, modifiers);
}

void CKvReportListCtrl::OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point)
{
    Impl& impl = *m_impl;
    if (impl.layout.header.PtInRect(point)) {
        OnLButtonDown(modifiers, point);
        return;
    }
    const QPointer<CKvReportListCtrl> self(this);
    int line = -1;
    int column = -1;
    if ((impl.editor && !EndEdit(1)) || !self || !HitTest(point, line, column))
        return;
    const std::uint64_t id = GetRowId(line);
    if (!_OnActivate(line, column) && self && column >= 0)
        EditCell(FindRow(id), column);
}

void CKvReportListCtrl::OnMouseMove(Qt::KeyboardModifiers, CPoint point)
{
    Impl& impl = *m_impl;
    if (!HasCapture()) {
        const bool onEdge =
            impl.layout.header.PtInRect(point) && impl.layout.EdgeAt(point.x + impl.scrollX) >= 0;
        if (onEdge)
            setCursor(Qt::SplitHCursor);
        else
            unsetCursor();
        return;
    }
    switch (impl.drag) {
    case Impl::Drag::kEdge:
        impl.columns =
            kv::WithEdgeMoved(impl.dragColumns, impl.dragLayout, impl.dragColumn, point.x - impl.dragStart.x);
        impl.LayOut();
        break;
    case Impl::Drag::kSelect:
        impl.DragSelectionTo(point);
        break;
    case Impl::Drag::kRow: {
        const QPoint way = QPoint(point) - QPoint(impl.dragStart);
        if (way.manhattanLength() < QApplication::startDragDistance())
            break;
        int line = impl.dragLine;
        impl.drag = Impl::Drag::kNone;
        ReleaseCapture();
        const std::uint64_t id = GetRowId(line);
        const QPointer<CKvReportListCtrl> self(this);
        if (line < 0 || _BeginRowDrag(line) || !self || (line = FindRow(id)) < 0)
            break;
        impl.drag = Impl::Drag::kSelect;
        SetCapture();
        SetTimer(kScrollTimer, kScrollPeriod);
        impl.ClickLine(line, Qt::NoModifier);
        break;
    }
    default:
        break;
    }
}

void CKvReportListCtrl::OnLButtonUp(Qt::KeyboardModifiers, CPoint point)
{
    if (!HasCapture())
        return;
    ReleaseCapture();
    KillTimer(kScrollTimer);
    Impl& impl = *m_impl;
    const int line = std::exchange(impl.dragLine, -1);
    switch (std::exchange(impl.drag, Impl::Drag::kNone)) {
    case Impl::Drag::kRow:
        if (impl.IsLine(line))
            impl.ClickLine(line, Qt::NoModifier);
        break;
    case Impl::Drag::kHeader:
        if (impl.layout.header.PtInRect(point) && impl.dragColumn >= 0 &&
            impl.layout.ColumnAt(point.x + impl.scrollX) == impl.dragColumn)
            _OnHeaderClick(impl.dragColumn);
        break;
    default:
        break;
    }
}

void CKvReportListCtrl::OnRButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    const QPointer<CKvReportListCtrl> self(this);
    if (m_impl->editor) {
        EndEdit(1);
        if (!self || IsEditing())
            return;
    }
    setFocus(Qt::MouseFocusReason);
    int line = -1;
    int column = -1;
    if (!self || HasCapture() || !HitTest(point, line, column))
        return;
    if (column >= 0)
        m_impl->currentColumn = column;
    if (!m_impl->rows.Row(line).selected)
        m_impl->ClickLine(line, Qt::NoModifier);
}

void CKvReportListCtrl::OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point)
{
    Impl& impl = *m_impl;
    // Finer devices send parts of a notch; what is less than a pixel waits.
    impl.wheelRest += delta * kLinesPerNotch * impl.defaultHeight;
    const int pixels = impl.wheelRest / 120;
    impl.wheelRest -= pixels * 120;
    const bool isSideways = modifiers.testFlag(Qt::ShiftModifier) || impl.layout.verticalBar.IsRectEmpty();
    const bool hasScrolled = isSideways ? impl.ScrollByUser(impl.scrollX - pixels, impl.scrollY)
                                        : impl.ScrollByUser(impl.scrollX, impl.scrollY - pixels);
    if (!hasScrolled && pixels != 0)
        CKvWnd::OnMouseWheel(modifiers, delta, point); // on to what the list stands in
}

void CKvReportListCtrl::OnMouseLeave()
{
    if (!HasCapture())
        unsetCursor();
}

CPoint CKvReportListCtrl::ContextMenuPoint() const
{
    const QRect cells = m_impl->layout.cells;
    if (!m_impl->IsLine(m_impl->current))
        return cells.center();
    const QRect row = m_impl->RowRect(m_impl->current) & cells;
    return row.isEmpty() ? cells.center() : row.center();
}

void CKvReportListCtrl::OnTimer(UINT id)
{
    if (id != kScrollTimer) {
        CKvWnd::OnTimer(id);
        return;
    }
    Impl& impl = *m_impl;
    const CPoint point = mapFromGlobal(QCursor::pos());
    const int beyond = point.y < impl.layout.cells.top       ? point.y - impl.layout.cells.top
                       : point.y >= impl.layout.cells.bottom ? point.y - impl.layout.cells.bottom + 1
                                                             : 0;
    if (impl.drag != Impl::Drag::kSelect || beyond == 0)
        return;
    const QPointer<CKvReportListCtrl> self(this);
    impl.ScrollByUser(impl.scrollX, impl.scrollY + beyond);
    if (self)
        impl.DragSelectionTo(point);
}

void CKvReportListCtrl::OnCaptureChanged()
{
    KillTimer(kScrollTimer);
    Impl& impl = *m_impl;
    impl.dragLine = -1;
    if (std::exchange(impl.drag, Impl::Drag::kNone) != Impl::Drag::kEdge)
        return;
    impl.columns = impl.dragColumns;
    impl.LayOut();
}

BOOL CKvReportListCtrl::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    Impl& impl = *m_impl;
    const int count = impl.rows.Count();
    const int at = impl.current;
    const auto move = [&](int line) {
        impl.MoveCurrent(line, modifiers);
        return 1;
    };
    switch (key) {
    case VK_ESCAPE:
        if (impl.drag != Impl::Drag::kEdge)
            return 0;
        ReleaseCapture();
        OnCaptureChanged();
        return 1;
    case VK_UP:
        return move(at < 0 ? NextShownRow(-1, 1) : NextShownRow(at, -1));
    case VK_DOWN:
        return move(NextShownRow(at, 1));
    case VK_HOME:
        return move(NextShownRow(-1, 1));
    case VK_END:
        return move(NextShownRow(count, -1));
    case VK_PRIOR:
        return move(at < 0 ? NextShownRow(-1, 1) : impl.PageFrom(at, -1));
    case VK_NEXT:
        return move(at < 0 ? NextShownRow(-1, 1) : impl.PageFrom(at, 1));
    case VK_LEFT:
    case VK_RIGHT: {
        const int column = impl.currentColumn + (key == VK_LEFT ? -1 : 1);
        if (!impl.IsColumn(column))
            return 1;
        impl.currentColumn = column;
        impl.RequestFrame();
        impl.ScrollByUser(
            static_cast<int>(kv::OffsetToShow(impl.scrollX, impl.layout.cells.Width(),
                                              impl.layout.Left(column), impl.layout.Right(column))),
            impl.scrollY);
        return 1;
    }
    case VK_SPACE:
        if (impl.IsLine(at)) {
            if (modifiers.testFlag(Qt::ControlModifier) || !impl.rows.Row(at).selected)
                impl.ClickLine(at, Qt::ControlModifier);
        }
        return 1;
    case VK_RETURN:
        return impl.IsLine(at) ? _OnActivate(at, -1) : 0;
    case VK_F2:
        if (impl.IsLine(at))
            EditCell(at, impl.currentColumn);
        return 1;
    default:
        return 0;
    }
}

BOOL CKvReportListCtrl::OnChar(UINT character)
{
    if (character != kControlA)
        return 0;
    SelectAllShown();
    m_impl->TellSelection();
    return 1;
}

bool CKvReportListCtrl::WantsShortcut(UINT key, Qt::KeyboardModifiers, UINT character) const
{
    return character == kControlA || key == VK_F2 ||
           (key == VK_ESCAPE && m_impl->drag == Impl::Drag::kEdge) || (key >= VK_SPACE && key <= VK_DOWN);
}

void CKvReportListCtrl::OnSetFocus()
{
    m_impl->RequestFrame();
    m_impl->FocusChanged();
}

void CKvReportListCtrl::OnKillFocus()
{
    m_impl->RequestFrame();
}

void CKvReportListCtrl::OnEnable(BOOL enabled)
{
    const QPointer<CKvReportListCtrl> self(this);
    if (!enabled)
        EndEdit(0);
    if (self)
        m_impl->RequestWholeFrame();
}

void CKvReportListCtrl::OnSize(int, int)
{
    m_impl->LayOut();
}

void CKvReportListCtrl::OnSkinChanged()
{
    m_impl->LoadTheme();
    m_impl->RequestWholeFrame();
    QAccessibleEvent renamed(this, QAccessible::NameChanged); // in another language
    QAccessible::updateAccessibility(&renamed);
}

void CKvReportListCtrl::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) {
        if (m_impl->editor)
            m_impl->StyleEditor();
        kv::ScaleColumns(m_impl->columns, fontMetrics().horizontalAdvance(u'0'));
        m_impl->FontChanged();
    } else if (event->type() == QEvent::StyleChange) {
        m_impl->LayOut();
    }
    CKvWnd::changeEvent(event);
}
