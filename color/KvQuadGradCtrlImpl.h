// What stands behind the four-corner control: its state, and the user's edits.
#pragma once

#include "KvQuadGradCtrl.h"
#include "color/OffScreenPicture.h"
#include "color/QuadAccess.h"
#include "color/QuadLayout.h"
#include "color/QuadModel.h"

#include <array>
#include <functional>
#include <optional>

namespace kv {

/// The commands of the context menu.
enum QuadMenuCommand : UINT
{
    kQuadCopy = 20301,
    kQuadPaste = 20302,
    kQuadExchangeWithSelected = 20303,
    kQuadExchangeLeftAndRight = 20304,
    kQuadExchangeTopAndBottom = 20305,
    kQuadTurnClockwise = 20306,
    kQuadTurnCounterclockwise = 20307,
};

} // namespace kv

// Functions that notify may delete the control; nothing of it is touched afterwards.
struct CKvQuadGradCtrl::Impl : kv::QuadUser
{
    explicit Impl(CKvQuadGradCtrl& owner) : control(owner), access(owner, model, layout, *this) {}
    virtual ~Impl() = default;

    void Paint(Graphics& graphics);
    void RedrawAll();
    /// Selects a corner as a click does, and notifies when another one was selected.
    void SelectByUser(int corner);
    void FocusCorner(int corner) override;
    /// Rearranges the corners and emits `CornersChanged` when that did anything.
    void Edit(const std::function<bool(kv::QuadModel&)>& rule);
    void Paste(int corner);
    /// @param corner that the menu was opened on, or the selected one; -1 for none.
    void RunMenuCommand(UINT command, int corner);
    DWORD ColourOf(int corner) const { return model.Corners()[static_cast<std::size_t>(corner)]; }
    /// The corner that takes what is dropped at the point, or -1.
    int DropCorner(const QDropEvent& event) const;
    void DropOver(int corner);

    CKvQuadGradCtrl& control;
    kv::QuadModel model;
    kv::QuadLayout layout;
    std::array<kv::OffScreenPicture, kv::QuadModel::kCorners> corners;
    kv::OffScreenPicture palette;
    int dropTarget = -1;
    kv::QuadAccess access;
};
