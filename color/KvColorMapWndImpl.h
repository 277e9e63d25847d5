// What stands behind a colour map: its colour, the user's edits and what they tell the parent.
#pragma once

#include "KvColorMapWnd.h"
#include "color/ColourMapAccess.h"
#include "color/ColourMapPainter.h"
#include "color/ColourPanelModel.h"
#include "core/WheelNotches.h"

#include <functional>
#include <optional>

// Functions that notify may delete the map; then nothing of it may be touched, and those with a result return
// false.
struct CKvColorMapWnd::Impl : kv::ColourMapUser
{
    explicit Impl(CKvColorMapWnd& owner);
    virtual ~Impl() = default;

    bool IsField() const { return type == kKvColorMapField; }
    /// The colour as if the place at a point had been picked.
    kv::ColourState ColourAt(CPoint point) const;

    /// Shows another colour; silent.
    void Show(const kv::ColourState& colour);
    /// Likewise for the owner, who decides what a drag is taken back to, except by answering a message.
    void Set(const kv::ColourState& colour);
    bool Begin();
    bool Notify(EKvColorPhase phase);
    /// Begins a drag by a press, or goes on with it.
    void DragTo(CPoint point);
    /// Ends a drag as a release does; does nothing without.
    bool EndDrag();
    void CancelDrag();
    /// Applies a rule and, when it did something, sends begin, continue and end.
    void EditOnce(const std::function<bool(kv::ColourPanelModel&)>& rule);
    void Step(int stepsX, int stepsY);
    /// @return false for a key that is none of the map's.
    bool RunKey(UINT key, Qt::KeyboardModifiers modifiers);

    kv::ColourMapShape Shape() const override;
    const kv::ColourState& Colour() const override { return model.Colour(); }
    void EnterValue(kv::ColourChannel channel, int value) override;

    CKvColorMapWnd& control;
    int type = kKvColorMapField;
    kv::ColourPanelModel model; ///< its mode and channel are the lock type
    DWORD told;                 ///< the colour that `ColorEdited` told last, or the host's since
    kv::ColourMapPainter painter;
    std::optional<kv::ColourState> dragFrom; ///< the colour before the press, or what the owner set since
    bool isNotifying = false;
    kv::WheelNotches wheel;
    kv::ColourMapAccess access;
};
