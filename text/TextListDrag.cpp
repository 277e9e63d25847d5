// The lists of texts: dragging rows.
#include "text/ListTexts.h"
#include "text/TextListImpl.h"

#include <QDrag>
#include <QDragEnterEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kDropTimer = 101;
constexpr int kDropPeriod = 40; ///< milliseconds
constexpr int kEdge = 16;       ///< so near to an end of the view a drag scrolls

} // namespace

BOOL CKvTextListBase::_BeginRowDrag(int)
{
    auto* drag = new QDrag(this); // the toolkit deletes it
    drag->setMimeData(m_impl->SelectionAsMime().release());
    m_impl->movedInside = false;
    const QPointer<CKvTextListBase> self(this);
    m_impl->dragged = m_impl->SelectedKeys();
    QPointer<QObject> target; // what is dropped may make the host delete it
    connect(drag, &QDrag::targetChanged, this, [&target](QObject* now) { target = now; });
    const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    if (!self)
        return 1;
    // Only a list of the same class took all that belongs to the rows.
    const auto* taker = qobject_cast<CKvTextListBase*>(target.data());
    if (action != Qt::MoveAction || m_impl->movedInside || !taker || taker == this ||
        qstrcmp(taker->_GetRowFormat(), _GetRowFormat()) != 0)
        return 1;
    if (const CArray<int, int> lines = m_impl->DraggedLines(); !lines.empty())
        m_impl->Push(std::make_unique<Impl::RowsStep>(*m_impl, lines, kv::kMoveStep));
    return 1;
}

// The rows that were picked up, wherever they are and whatever is selected now; ascending.
CArray<int, int> CKvTextListBase::Impl::DraggedLines() const
{
    std::vector<int> lines = LinesOf(dragged);
    std::erase(lines, -1);
    std::sort(lines.begin(), lines.end());
    return lines;
}

// Before which line rows that are dropped at that height come.
int CKvTextListBase::Impl::DropLineAt(int y) const
{
    int line = -1;
    int column = -1;
    const CRect cells = list.GetCellsRect();
    y = std::clamp(y, cells.top, std::max(cells.top, cells.bottom - 1));
    if (!list.HitTest({cells.left, y}, line, column))
        return list.GetItemCount();
    const CRect cell = list.GetCellRect(line, 0);
    return 2 * y >= cell.top + cell.bottom ? line + 1 : line;
}

int CKvTextListBase::Impl::DropLineY(int line) const
{
    const int count = list.GetItemCount();
    if (count == 0)
        return list.GetCellsRect().top;
    return line < count ? list.GetCellRect(line, 0).top : list.GetCellRect(count - 1, 0).bottom;
}

void CKvTextListBase::Impl::ShowDropLine(int line)
{
    if (std::exchange(dropLine, line) == line)
        return;
    list.UpdateCells();
    if (line < 0) {
        dropScroll = 0;
        list.KillTimer(kDropTimer);
    }
}

// Moves only between lists of one class: another place would not keep all that belongs to the rows.
Qt::DropAction CKvTextListBase::Impl::ActionFor(const QDropEvent& event) const
{
    const bool canMove = IsOwnFormat(*event.mimeData()) && event.possibleActions().testFlag(Qt::MoveAction) &&
                         qobject_cast<CKvTextListBase*>(event.source());
    return canMove && !event.modifiers().testFlag(Qt::ControlModifier) ? Qt::MoveAction : Qt::CopyAction;
}

void CKvTextListBase::Impl::DragTo(QDragMoveEvent& event)
{
    if (!CanTake(event.mimeData()) || !list.isEnabled()) {
        ShowDropLine(-1);
        event.ignore();
        return;
    }
    event.setDropAction(ActionFor(event));
    event.accept();
    const int y = event.position().toPoint().y();
    const CRect cells = list.GetCellsRect();
    dropScroll = y < cells.top + kEdge ? y - cells.top - kEdge : std::max(0, y - cells.bottom + kEdge);
    if (dropScroll != 0)
        list.SetTimer(kDropTimer, kDropPeriod);
    else
        list.KillTimer(kDropTimer);
    ShowDropLine(DropLineAt(y));
}

void CKvTextListBase::OnTimer(UINT id)
{
    if (id != kDropTimer) {
        CKvReportListCtrl::OnTimer(id);
        return;
    }
    const CPoint offset = GetScrollOffset();
    SetScrollOffset({offset.x, offset.y + m_impl->dropScroll});
    const QPointer<CKvTextListBase> self(this);
    if (GetScrollOffset().y != offset.y)
        _OnUserScroll();
    if (!self)
        return;
    const CRect cells = GetCellsRect();
    m_impl->ShowDropLine(m_impl->DropLineAt(m_impl->dropScroll < 0 ? cells.top : cells.bottom));
}

void CKvTextListBase::dragEnterEvent(QDragEnterEvent* event)
{
    m_impl->DragTo(*event);
}

void CKvTextListBase::dragMoveEvent(QDragMoveEvent* event)
{
    m_impl->DragTo(*event);
}

void CKvTextListBase::dragLeaveEvent(QDragLeaveEvent*)
{
    m_impl->ShowDropLine(-1);
}

void CKvTextListBase::dropEvent(QDropEvent* event)
{
    Impl& impl = *m_impl;
    const int line = impl.DropLineAt(event->position().toPoint().y());
    impl.ShowDropLine(-1);
    if (!impl.CanTake(event->mimeData()) || !isEnabled()) {
        event->ignore();
        return;
    }
    const bool isMove = impl.ActionFor(*event) == Qt::MoveAction;
    event->setDropAction(isMove ? Qt::MoveAction : Qt::CopyAction);
    event->accept();
    if (isMove && event->source() == this) {
        impl.movedInside = true;
        impl.MoveRows(impl.DraggedLines(), line, kv::kMoveStep);
        return;
    }
    impl.InsertRows(line, impl.RowsOf(*event->mimeData()), kv::kDropStep);
}

void CKvTextListBase::OnPaint(Graphics& graphics)
{
    CKvReportListCtrl::OnPaint(graphics);
    if (m_impl->dropLine < 0)
        return;
    const QRect cells = GetCellsRect();
    const int y = std::min(m_impl->DropLineY(m_impl->dropLine), cells.bottom());
    graphics.setClipRect(cells);
    graphics.fillRect(QRect(cells.left(), y - 1, cells.width(), 2), m_impl->theme.drop);
    graphics.setClipping(false);
}
