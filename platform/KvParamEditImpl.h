// What stands behind the number edit: its line of text, the user's edits and what they tell the parent.
#pragma once

#include "KvParamEdit.h"
#include "platform/NumberEntry.h"

#include <QLineEdit>

#include <optional>

class QContextMenuEvent;
class QKeyEvent;

// Functions that notify return false when the edit is gone afterwards; then nothing of it may be touched.
struct CKvParamEdit::Impl
{
    explicit Impl(CKvParamEdit& owner) : control(owner), line(new QLineEdit(&owner)) {}
    void ShowNumber();
    bool Notify(EKvColorPhase phase);
    bool Send(const kv::NumberRun& run);
    bool Commit();
    bool CommitOnLeaving();
    bool SendTakingBack(const kv::NumberRun& run);
    void StepBy(int steps);
    /// Digits go into the line; another text is the owner's, if it knows it.
    void Paste();
    void OnTyped();
    bool Forward(QEvent& event);
    void OnEdited();
    void OpenMenu(QContextMenuEvent& event);
    /// @return true for a key that the edit used; it may be gone then.
    bool RunKey(const QKeyEvent& key);
    bool TakesBeforeShortcuts(const QKeyEvent& key) const;
    void ApplyLook();

    CKvParamEdit& control;
    QLineEdit* line;
    kv::NumberEntry entry;
    bool isTakingBack = false;
    bool isForwarding = false;   ///< an event is with the line
    bool isEdited = false;       ///< and has changed its text
    std::optional<CPoint> press; ///< of a drag on the border
    int wheel = 0;               ///< what is left of the last notch
};
