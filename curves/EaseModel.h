// The ease curve window's values and every rule about them: limits of a drag, undo, presets. No pixels, no
// events.
#pragma once

#include "curves/EaseCurve.h"
#include "curves/EaseView.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace kv {

/// What of a key a drag grabs; the numbers are the field's.
enum class EasePart
{
    InHandle = 0,
    OutHandle = 1,
    Key = 2,
    InTangent = 3,  ///< the line from the key to its in handle
    OutTangent = 4, ///< the line from the key to its out handle
};

struct EaseHit
{
    int key = 0; ///< 0 start, 1 end
    EasePart part = EasePart::Key;
    double t = 1; ///< where on the tangent line, 0 at the key, 1 at the handle
};

/// The point that a hit moves; nothing for what is not there, as an in tangent at the start key, or for a
/// place on a tangent line that leads nowhere.
std::optional<EaseHandle> HandleOf(const EaseHit& hit);

/// The key that a point belongs to: itself or a handle's.
EaseHandle KeyOf(EaseHandle handle);

/// The values that a point may be dragged to: a key the range of values, a handle the rise when the curve is
/// locked, else all.
EaseRange ValueLimits(const EaseCurve& curve, EaseHandle handle);

/// What a preset asks for: tangents, x as a fraction of the segment's width, y as a value offset.
struct EasePreset
{
    double outX = 0;
    double outY = 0;
    double inX = 0; ///< leftwards
    double inY = 0;
};

/// A user's edits obey the limits below; what the host loads or a preset asks for stands as it is. Undo,
/// Redo, Revert and presets drop a drag that is under way; single moves are refused in one.
///
/// Absolute values are kept in double precision beside the key records, so that what nobody edited goes back
/// to the host as it came.
class EaseModel
{
public:
    EaseModel();
    ~EaseModel();
    EaseModel(const EaseModel&) = delete;
    EaseModel& operator=(const EaseModel&) = delete;

    /// Takes a curve over and begins the history with it; drops a drag.
    void Load(const EaseCurve& curve);
    /// As it was loaded.
    const EaseCurve& Loaded() const;
    /// As it is now; `kind` is that of the current record.
    const EaseCurve& Curve() const;
    /// As the current record has it, also in a drag.
    EaseCurve Recorded() const;
    /// False for a curve that is not sensible: every edit below then does nothing, nor do undo and redo.
    bool IsEditable() const;
    /// The two key records in single precision, from which the path is drawn and hits are tested. They stand
    /// relative to Origin(), so that they are as exact far away from 0 as they are there. Always finite: of a
    /// curve that is not sensible, what is not a number is 0 and what is too large the largest.
    IKvBezierCurve2D& Keys();
    /// To be added to what the keys say: the start key as it was loaded; 0 for a curve that is not sensible.
    SKvCurvePoint Origin() const;

    /// @return false when nothing can be grabbed there: not editable, no such key or part, a key while the
    /// curve is locked, or in a drag.
    bool BeginDrag(const EaseHit& hit);
    const std::optional<EaseHit>& Drag() const;
    /// A key stays within the range of values, a handle within the segment and, when locked, the rise; a
    /// tangent line led past the segment's far end keeps its direction. The handle of a key goes along.
    /// @param mouse in curve space; what is not finite or leads beyond single precision is ignored.
    /// @param keepDirection a tangent changes its length only, as far as the limits allow.
    void DragTo(SKvCurvePoint mouse, bool keepDirection);
    /// Adds a record of kind kKvEaseDrawn, also when nothing moved.
    void EndDrag();
    /// The curve is as it was when the drag began; no record.
    void CancelDrag();

    bool CanUndo() const;
    bool CanRedo() const;
    // Each returns false when there was nothing to do; there is always a first record to revert to.
    bool Undo();
    bool Redo();
    bool Revert();

    /// Sets both tangents and adds a record of that kind. @return false when not editable or when the preset
    /// is not finite or beyond single precision.
    bool ApplyPreset(std::uint32_t kind, const EasePreset& preset);

    /// False for keys while the curve is locked.
    bool CanMove(EaseHandle handle) const;
    /// Moves a point within the limits of a drag, x and y each for itself, and adds a record. A coordinate
    /// that is asked to be what it is stays so, also beyond its limit. @return false, and no record, when
    /// that changes nothing.
    bool Move(EaseHandle handle, SKvCurvePoint to);
    /// Moves both handles within their limits and adds one record. @return false when that changes nothing.
    bool MoveHandles(SKvCurvePoint out, SKvCurvePoint in);

    std::size_t RecordCount() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace kv
