// What stands behind the number edit: its line of text, the user's edits and what they tell the parent.
#pragma once

#include "KvParamEdit.h"
#include "core/WheelNotches.h"
#include "platform/NumberEntry.h"

#include <QLineEdit>

#include <functional>
#include <optional>

class QKeyEvent;

// Functions that notify return false when the edit is gone afterwards; then nothing of it may be touched.
struct CKvParamEdit::Impl
{
    explicit Impl(CKvParamEdit& owner) : control(owner), line(new QLineEdit(&owner)) {}
    void ShowNumber();
    /// The same when the host set it.
    void ShowHostsNumber();
    /// Tells a screen reader of a number that it has not heard yet.
    void TellNumber();
    bool Notify(EKvColorPhase phase);
    bool Send(const kv::NumberRun& run);
    bool Commit();
    bool CommitOnLeaving();
    /// Ends from the event loop what is open in an edit that lost the focus, or was hidden or disabled: the
    /// toolkit is still at work on it.
    void EndLater();
    /// A change of the number. The owner is told before one that begins a run.
    /// @return what it has to tell; nothing when the edit is gone.
    std::optional<kv::NumberRun> Change(const std::function<kv::NumberRun(kv::NumberEntry&)>& change);
    /// A one-shot edit.
    void ChangeOnce(const std::function<kv::NumberRun(kv::NumberEntry&)>& change);
    bool SendTakingBack(const kv::NumberRun& run);
    void StepBy(int steps);
    /// An act on the line; what it changed is taken afterwards, when a handler may delete the line.
    void WithLine(const std::function<void()>& act);
    /// Digits go into the line; another text is the owner's, if it knows it.
    void Paste();
    void OnTyped();
    void OnEdited();
    void OpenMenu(CPoint screen);
    /// @return true for a key that the edit used; it may be gone then.
    bool RunKey(const QKeyEvent& key);
    bool TakesBeforeShortcuts(const QKeyEvent& key) const;
    void ApplyLook();

    CKvParamEdit& control;
    QLineEdit* line;
    kv::NumberEntry entry;
    bool isTakingBack = false;
    bool isNotifying = false;
    bool isActing = false;       ///< the line is at work
    bool isEdited = false;       ///< and has changed its text
    std::optional<CPoint> press; ///< of a drag on the border
    kv::WheelNotches wheel;
    int told = 0;     ///< the number that a screen reader heard last
    int notified = 0; ///< the number that `ValueEdited` told last, or the host's since
};
