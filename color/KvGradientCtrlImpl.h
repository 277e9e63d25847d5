// What stands behind the gradient control: its state, and the user's edits with what they tell the parent.
#pragma once

#include "KvGradientCtrl.h"
#include "color/GradientAccess.h"
#include "color/GradientLayout.h"
#include "color/GradientModel.h"
#include "color/GradientPainter.h"
#include "color/PercentEntry.h"

#include <functional>
#include <optional>

namespace kv {

inline constexpr UINT kGradientBlinkTimer = 1;

/// The commands of the context menu.
enum GradientMenuCommand : UINT
{
    kGradientCopy = 32772,
    kGradientPaste = 32774,
    kGradientCut = 32775,
    kGradientDelete = 32776,
    kGradientReverse = 32778,
    kGradientReflect = 32780,
    kGradientSameSpace = 32784,
    kGradientExchangeBefore = 32785,
    kGradientExchangeAfter = 32787,
    kGradientReset = 32789,
};

/// A drag between button-down and button-up.
struct GradientDrag
{
    enum Kind
    {
        Stop,
        MidPoint,
    };

    Kind kind;
    CPoint start;
    float startValue;     ///< the stop's position or the mid point
    int midPoint;         ///< the stop whose mid point is dragged; -1 in a drag of a stop
    GradientStops before; ///< stops and selection before the press
};

} // namespace kv

// Functions that notify may delete the control; then nothing of it may be touched, and those with a result
// return false.
struct CKvGradientCtrl::Impl : kv::GradientUser
{
    explicit Impl(CKvGradientCtrl& owner);
    virtual ~Impl() = default;

    kv::GradientLook Look() const;
    void Redraw(kv::GradientPainter::Area area);
    /// Redraws the three areas and tells screen readers what is different.
    void RedrawAll();

    bool Notify(EKvGradientEvent event, EKvGradientPhase phase, SKvCGGradientKey* key = nullptr);
    /// Begins a change run or goes on with it.
    bool NotifyChange();
    /// Ends a drag, applies a rule and, when it did something, redraws and sends begin, continue and end.
    /// @return what the rule returned; the control may be gone.
    bool EditOnce(const std::function<bool(kv::GradientModel&)>& rule);

    /// Selects a stop; silent.
    void Select(int index);
    void SelectKey(int index);
    /// Adds a stop and opens a change run of which the parent is yet to hear.
    void AddSilently(float position);
    void AddKeyAt(float position);
    /// Asked later, the result says whether the control lives and the stop that is selected now is still
    /// there, in its place and selected: in its handlers the host may do anything.
    std::function<bool()> WatchSelection();
    void Cut();
    bool Paste(std::uint32_t colour);

    void PressStop(CPoint point);
    void PressMidPoint(CPoint point);
    void BeginDrag(kv::GradientDrag::Kind kind, CPoint point, float value, int midPoint);
    void DragTo(CPoint point);
    void DragMidPointTo(CPoint point);
    /// Drops digits that are typed and ends a drag as a button-up does; does nothing without.
    bool EndInput();
    /// Takes the drag back: the selection and, when anything was changed, the stops are as before the press.
    void CancelDrag();

    /// @return false for a key that is none of the control's.
    bool RunKey(UINT key, Qt::KeyboardModifiers modifiers);
    void SelectByKey(int index);
    void PlaceStop(int stop, double position) override;
    void SetMidPoint(int stop, float midPoint) override;
    void FocusStop(int stop) override;
    void TypePercent(UINT character);
    /// @return false for a key that means nothing to a pending entry.
    bool RunEntryKey(UINT key);
    void ShowEntry();
    void DropEntry();

    /// @param byKey the menu was opened by the menu key, for the selected stop.
    void RunMenuCommand(UINT command, CPoint point, bool byKey);
    void PasteAt(CPoint point, bool byKey);

    CKvGradientCtrl& control;
    kv::GradientModel model;
    kv::GradientLayout layout;
    kv::GradientPainter painter;
    std::optional<kv::GradientDrag> drag;
    bool blinkPhase = false;
    int toldStop = -1; ///< the selected stop that `StopSelected` told last, or the host's since
    bool active = true;
    bool editing = false;
    bool changing = false; ///< a change run is open
    kv::PercentEntry entry;
    bool menuByKey = false;             ///< the menu that opens next is the menu key's
    Qt::KeyboardModifiers keyModifiers; ///< of the key whose character comes next
    kv::GradientAccess access;
};
