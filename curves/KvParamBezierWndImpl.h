// What stands behind the ease curve window: its state, and the user's edits with what they tell the host.
#pragma once

#include "KvParamBezierWnd.h"
#include "curves/EaseAccess.h"
#include "curves/EaseKeys.h"
#include "curves/EasePainter.h"
#include "curves/EaseText.h"

#include <functional>
#include <optional>

namespace kv {

/// What the mouse does between a button-down and its button-up; one at a time.
enum class EaseGesture
{
    None,
    Drag, ///< of a handle, a key or a tangent line, with the left button
    Zoom, ///< with the middle button
    Pan,  ///< with the right button
};

} // namespace kv

// After a function that tells the host the window may be gone; then nothing of it may be touched.
struct CKvParamBezierWnd::Impl final : kv::EaseUser
{
    Impl(CKvParamBezierWnd& owner, IKvParamBezierInfo* infoObject,
         IKvParamBezierCtrlCallback* callbackObject);

    bool CanEdit() const { return isRead && model.IsEditable(); }
    kv::EaseLook Look() const;
    std::optional<kv::EaseHit> HitTest(CPoint point);
    void Redraw();
    void LoadSkin();

    /// @return false when the window is gone.
    bool SendCurve(std::uint32_t kind);
    void TellHistory();
    void Load();
    /// Goes to another record; @return 1 when there was one.
    int GoTo(bool (kv::EaseModel::*step)());
    using PresetQuery = int (IKvParamBezierInfo::*)(double*, double*, double*, double*);
    /// @param query null asks for the linear one.
    int ApplyPreset(std::uint32_t kind, PresetQuery query);
    /// An edit by key, typed or pasted: one record.
    void Edit(const std::function<bool(kv::EaseModel&)>& rule);

    void Press(CPoint point);
    void BeginViewGesture(kv::EaseGesture kind, CPoint point);
    /// @return false when no gesture is under way.
    bool MoveGesture(CPoint point, Qt::KeyboardModifiers modifiers);
    void DragTo(CPoint point, bool keepDirection);
    /// As the button-up does.
    void EndGesture();
    void CancelGesture();
    /// The model has dropped the drag.
    void DropDrag();
    void SetView(const kv::EaseRange& range);
    void ResetView();
    void Hover(std::optional<CPoint> point);

    /// @return false for a key that is none of the window's.
    bool RunKey(UINT key, Qt::KeyboardModifiers modifiers);
    bool IsOwnKey(UINT key, Qt::KeyboardModifiers modifiers) const;
    bool CanRun(std::optional<kv::EaseCommand> command) const;
    /// @return false for one that cannot be run.
    bool Run(kv::EaseCommand command);
    void Select(std::optional<kv::EaseHandle> handle);
    void SelectStep(int step);
    /// In pixels of the present view.
    void MoveSelected(double right, double up);
    /// @return false for a key that means nothing to a pending entry.
    bool RunEntryKey(UINT key);
    void DropEntry();
    /// True for a character that goes into the entry.
    bool IsTyped(UINT character, Qt::KeyboardModifiers modifiers) const;

    const kv::EaseCurve& Curve() const override { return model.Curve(); }
    kv::EaseLayout Layout() const override;
    bool CanMove(kv::EaseHandle handle) const override { return isRead && model.CanMove(handle); }
    std::optional<kv::EaseHandle> Selected() const override { return selected; }
    void PlaceHandle(kv::EaseHandle handle, SKvCurvePoint place) override;
    void FocusHandle(kv::EaseHandle handle) override;

    CKvParamBezierWnd& control;
    IKvParamBezierInfo* info;
    IKvParamBezierCtrlCallback* callback;
    kv::EaseModel model;
    unsigned loads = 0;
    bool isRead = false; ///< the curve is the info object's, not the default one
    kv::EaseRange view;
    kv::EaseGesture gesture = kv::EaseGesture::None;
    kv::EaseRange startView; ///< of a zoom or pan
    CPoint startPoint;
    std::optional<CPoint> pointer; ///< where the mouse is, within the plot
    std::optional<kv::EaseHandle> selected;
    kv::EaseEntry entry;
    Qt::KeyboardModifiers keyModifiers; ///< of the key whose character comes next
    double frameLength = 0;
    bool showSpeed = false;
    bool showInitialCurve = false;
    kv::EaseColours colours;
    kv::EaseAccess access;
};
