#include "color/KvSolidColorTemplateImpl.h"

#include "color/ColourDrag.h"
#include "color/GradientPainter.h"
#include "color/GradientRaster.h"

#include <QApplication>
#include <QDropEvent>
#include <QPointer>

#include <algorithm>
#include <utility>

using kv::SwatchCell;

namespace {

std::vector<CKvSolidColorTemplate*>& LiveGrids()
{
    static std::vector<CKvSolidColorTemplate*> grids;
    return grids;
}

std::optional<kv::ArrowKey> ArrowOf(UINT key)
{
    switch (key) {
    case VK_LEFT:
        return kv::ArrowKey::Left;
    case VK_UP:
        return kv::ArrowKey::Up;
    case VK_RIGHT:
        return kv::ArrowKey::Right;
    case VK_DOWN:
        return kv::ArrowKey::Down;
    default:
        return std::nullopt;
    }
}

} // namespace

CKvSolidColorTemplate::Impl::Impl(CKvSolidColorTemplate& owner)
    : control(owner)
    , access(owner, Store(), layout, *this)
{
    LiveGrids().push_back(&owner);
}

CKvSolidColorTemplate::Impl::~Impl()
{
    std::erase(LiveGrids(), &control);
}

kv::SwatchStore& CKvSolidColorTemplate::Impl::Store()
{
    static kv::SwatchStore store;
    return store;
}

CString& CKvSolidColorTemplate::Impl::Folder()
{
    static CString folder;
    return folder;
}

std::wstring CKvSolidColorTemplate::Impl::File()
{
    return GetSystemFolder() + L"/KvSolidColorTemplate.ini";
}

void CKvSolidColorTemplate::Impl::SwatchesReplaced()
{
    // A copy: what hears of a change may make and delete grids.
    for (const QPointer<CKvSolidColorTemplate>& grid :
         std::vector<QPointer<CKvSolidColorTemplate>>(LiveGrids().begin(), LiveGrids().end())) {
        if (!grid)
            continue;
        grid->DrawPalette();
        kv::SwatchAccess& access = grid->m_impl->access;
        access.PartsChanged();
        for (int index = 0; QAccessible::isActive() && index < Store().Count(); ++index)
            access.SwatchChanged(index);
        access.UpdateFocus();
    }
}

void CKvSolidColorTemplate::Impl::SwatchChanged(int index)
{
    for (const QPointer<CKvSolidColorTemplate>& grid :
         std::vector<QPointer<CKvSolidColorTemplate>>(LiveGrids().begin(), LiveGrids().end())) {
        if (!grid)
            continue;
        grid->DrawPalette();
        grid->m_impl->access.SwatchChanged(index);
    }
}

void CKvSolidColorTemplate::Impl::Keep(int index, DWORD colour)
{
    if (!Store().SetColour(index, colour))
        return;
    Store().Write(File());
    SwatchChanged(index);
}

SwatchCell CKvSolidColorTemplate::Impl::CurrentCell() const
{
    const bool isThere = current && (current->kind == SwatchCell::Kind::Alpha ||
                                     current->index < layout.ShownSwatches(Store().Count()));
    return isThere ? *current : layout.First(Store().Count());
}

std::optional<SwatchCell> CKvSolidColorTemplate::Impl::HitTest(CPoint point) const
{
    return layout.HitTest(point, Store().Count());
}

DWORD CKvSolidColorTemplate::Impl::ColourOf(const SwatchCell& cell) const
{
    const auto index = static_cast<std::size_t>(cell.index);
    return cell.kind == SwatchCell::Kind::Alpha ? kv::kFixedAlphaColours[index] : Store().Colours()[index];
}

kv::SwatchLook CKvSolidColorTemplate::Impl::Look() const
{
    // What the user pointed at may be gone since: other swatches, another layout.
    const auto there = [this](const std::optional<SwatchCell>& cell) {
        const bool isShown = cell && (cell->kind == SwatchCell::Kind::Alpha ||
                                      cell->index < layout.ShownSwatches(Store().Count()));
        return isShown ? cell : std::nullopt;
    };
    kv::SwatchLook look;
    look.enabled = control.isEnabled();
    if (!look.enabled)
        return look;
    look.hovered = press ? std::nullopt : there(hovered);
    look.pressed = press && press->isOver ? there(press->cell) : std::nullopt;
    look.dropTarget = there(dropTarget);
    if (control.hasFocus())
        look.focused = CurrentCell();
    return look;
}

void CKvSolidColorTemplate::Impl::DrawCellAtRest(Graphics& graphics, const SwatchCell& cell) const
{
    const CRect rect = layout.RectOf(cell);
    if (rect.IsRectEmpty())
        return;
    // From the grid's corner on, where its checkerboard begins; nothing but the cell is drawn.
    kv::DrawSharply(graphics, {0, 0, rect.right, rect.bottom},
                    [&](kv::PixelView pixels, const kv::DeviceGrid& grid) {
                        if (cell.kind == SwatchCell::Kind::Alpha)
                            kv::DrawAlphaSwatch(pixels, grid, rect, cell.index, control.isEnabled());
                        else
                            kv::DrawSwatch(pixels, grid, rect, ColourOf(cell), control.isEnabled());
                    });
}

void CKvSolidColorTemplate::Impl::SetCurrent(const SwatchCell& cell)
{
    current = cell;
    control.update();
    access.UpdateFocus();
}

void CKvSolidColorTemplate::Impl::HoverAt(const std::optional<SwatchCell>& cell)
{
    if (std::exchange(hovered, cell) != cell)
        control.update();
}

void CKvSolidColorTemplate::Impl::DropOver(const std::optional<SwatchCell>& cell)
{
    if (std::exchange(dropTarget, cell) != cell)
        control.update();
}

void CKvSolidColorTemplate::Impl::PickCell(const SwatchCell& cell)
{
    const int index = cell.kind == SwatchCell::Kind::Alpha ? cell.index : -1;
    const DWORD colour = ColourOf(cell);
    const QPointer<CKvSolidColorTemplate> alive(&control);
    if (Notify(index, colour, 1))
        emit alive->CellPicked(index, colour);
}

void CKvSolidColorTemplate::Impl::FocusCell(const SwatchCell& cell)
{
    const QPointer<CKvSolidColorTemplate> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (alive)
        SetCurrent(cell);
}

void CKvSolidColorTemplate::Impl::RequestStore(int swatch)
{
    if (swatch >= Store().Count())
        return;
    const DWORD colour = ColourOf({SwatchCell::Kind::Swatch, swatch});
    const QPointer<CKvSolidColorTemplate> alive(&control);
    if (Notify(swatch, colour, 0))
        emit alive->CellStoreRequested(swatch, colour);
    // The swatches outlive the grid.
    Store().Write(File());
}

/// @return false when the grid is gone afterwards.
bool CKvSolidColorTemplate::Impl::Notify(int index, DWORD colour, int store)
{
    const QPointer<CKvSolidColorTemplate> alive(&control);
    const UINT id = control.GetDlgCtrlID();
    KvSwatchNotifyRecord record{{&control, id, kKvColorNotifyCode}, index, &colour, store};
    KvSendMessage(control.parentWidget(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
    return !alive.isNull();
}

void CKvSolidColorTemplate::Impl::Press(const SwatchCell& cell, CPoint point)
{
    press = kv::SwatchPress{cell, point, true};
    control.SetCapture();
    SetCurrent(cell);
}

void CKvSolidColorTemplate::Impl::MoveTo(CPoint point)
{
    const std::optional<SwatchCell> cell = HitTest(point);
    HoverAt(cell);
    if (!press)
        return;
    const bool isOver = cell == press->cell;
    if (std::exchange(press->isOver, isOver) != isOver)
        control.update();
    const int distance = (QPoint(point) - QPoint(press->start)).manhattanLength();
    if (isOver || press->cell.kind == SwatchCell::Kind::Alpha || distance < QApplication::startDragDistance())
        return;
    // Not within the mouse event: the toolkit runs the drag in a loop of its own, in which the host may do
    // anything, and a release that comes first is no drop.
    QMetaObject::invokeMethod(
        &control, [this] { BeginDrag(); }, Qt::QueuedConnection);
}

void CKvSolidColorTemplate::Impl::DropPress()
{
    press.reset();
    control.ReleaseCapture();
    control.update();
}

void CKvSolidColorTemplate::Impl::BeginDrag()
{
    if (!press || press->isOver || press->cell.index >= Store().Count())
        return;
    const DWORD colour = ColourOf(press->cell);
    DropPress();
    HoverAt(std::nullopt);
    kv::DragColour(control, colour);
}

bool CKvSolidColorTemplate::Impl::Walk(UINT key)
{
    const int count = Store().Count();
    if (const std::optional<kv::ArrowKey> arrow = ArrowOf(key))
        SetCurrent(layout.Neighbour(CurrentCell(), *arrow, count));
    else if (key == VK_HOME)
        SetCurrent(layout.First(count));
    else if (key == VK_END)
        SetCurrent(kv::SwatchLayout::Last());
    else
        return false;
    return true;
}

void CKvSolidColorTemplate::Impl::RunMenuCommand(UINT command, const SwatchCell& cell)
{
    if (command == kv::kSwatchResetAll)
        control.InitialData(1);
    else if (command == kv::kSwatchSaveCurrent && cell.kind == SwatchCell::Kind::Swatch)
        RequestStore(cell.index);
}

std::optional<SwatchCell> CKvSolidColorTemplate::Impl::DropCell(const QDropEvent& event) const
{
    const std::optional<SwatchCell> cell = HitTest(kv::PixelOf(event));
    const bool takes = control.isEnabled() && cell && cell->kind == SwatchCell::Kind::Swatch &&
                       event.possibleActions().testFlag(Qt::CopyAction) &&
                       kv::DroppedColour(event.mimeData());
    return takes ? cell : std::nullopt;
}
