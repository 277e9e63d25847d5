#include "color/KvQuadGradCtrlImpl.h"

#include "color/CellLines.h"
#include "color/ColourDrag.h"
#include "color/GradientRaster.h"
#include "color/QuadRaster.h"
#include "platform/ColourClipboard.h"
#include "platform/FocusRing.h"

#include <QDropEvent>
#include <QPointer>

#include <utility>

void CKvQuadGradCtrl::Impl::Paint(Graphics& graphics)
{
    const bool enabled = control.isEnabled();
    palette.Paint(graphics, layout.palette, [&](kv::PixelView pixels, const kv::DeviceGrid& grid) {
        kv::DrawQuadPalette(pixels, grid, layout.palette.Size(), model.Corners(), enabled);
    });
    for (int corner = 0; corner < kv::QuadModel::kCorners; ++corner) {
        const auto at = static_cast<std::size_t>(corner);
        const CRect& rect = layout.corners[at];
        corners[at].Paint(graphics, rect, [&](kv::PixelView pixels, const kv::DeviceGrid& grid) {
            kv::DrawQuadCorner(pixels, grid, rect.Size(), ColourOf(corner), corner == model.Selected(),
                               enabled);
        });
    }
    if (control.hasFocus() && enabled) {
        const int selected = model.Selected();
        kv::DrawFocusRing(graphics, QRect(selected < 0 ? layout.palette
                                                       : layout.corners[static_cast<std::size_t>(selected)]));
    }
    if (dropTarget >= 0)
        kv::DrawDropMark(graphics, layout.corners[static_cast<std::size_t>(dropTarget)]);
}

void CKvQuadGradCtrl::Impl::RedrawAll()
{
    control.DrawPalette();
    control.DrawAllControls();
    access.Update();
}

void CKvQuadGradCtrl::Impl::SelectByUser(int corner)
{
    const int before = model.Selected();
    if (!model.Select(corner))
        return;
    control.DrawControl(before);
    control.DrawControl(corner);
    control.DrawPalette();
    access.Update();
    const QPointer<CKvQuadGradCtrl> alive(&control);
    KvNotifyHeader record{&control, 0, ColourOf(corner)};
    KvSendMessage(control.parentWidget(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&record));
    if (alive && model.Selected() >= 0) // the parent may have selected another one, or none
        emit alive->CornerSelected(model.Selected());
}

void CKvQuadGradCtrl::Impl::FocusCorner(int corner)
{
    const QPointer<CKvQuadGradCtrl> alive(&control);
    control.setFocus(Qt::OtherFocusReason);
    if (alive)
        SelectByUser(corner);
}

void CKvQuadGradCtrl::Impl::Edit(const std::function<bool(kv::QuadModel&)>& rule)
{
    if (!rule(model))
        return;
    RedrawAll();
    emit control.CornersChanged();
}

void CKvQuadGradCtrl::Impl::Paste(int corner)
{
    if (const std::optional<std::uint32_t> colour = kv::ClipboardColour())
        Edit([&](kv::QuadModel& quad) { return quad.SetCorner(corner, *colour); });
}

void CKvQuadGradCtrl::Impl::RunMenuCommand(UINT command, int corner)
{
    switch (command) {
    case kv::kQuadCopy:
        if (corner >= 0)
            kv::CopyColour(ColourOf(corner));
        break;
    case kv::kQuadPaste:
        Paste(corner);
        break;
    case kv::kQuadExchangeWithSelected:
        Edit([&](kv::QuadModel& quad) { return quad.Exchange(quad.Selected(), corner); });
        break;
    case kv::kQuadExchangeLeftAndRight:
        Edit([](kv::QuadModel& quad) { return quad.ExchangeLeftAndRight(); });
        break;
    case kv::kQuadExchangeTopAndBottom:
        Edit([](kv::QuadModel& quad) { return quad.ExchangeTopAndBottom(); });
        break;
    case kv::kQuadTurnClockwise:
        Edit([](kv::QuadModel& quad) { return quad.TurnClockwise(); });
        break;
    case kv::kQuadTurnCounterclockwise:
        Edit([](kv::QuadModel& quad) { return quad.TurnCounterclockwise(); });
        break;
    default:
        break;
    }
}

int CKvQuadGradCtrl::Impl::DropCorner(const QDropEvent& event) const
{
    const bool takes = control.isEnabled() && event.possibleActions().testFlag(Qt::CopyAction) &&
                       kv::DroppedColour(event.mimeData());
    return takes ? layout.HitCorner(kv::PixelOf(event)) : -1;
}

void CKvQuadGradCtrl::Impl::DropOver(int corner)
{
    if (std::exchange(dropTarget, corner) != corner)
        control.update();
}
