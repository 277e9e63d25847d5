/// @file
/// A number that is typed, stepped or scrubbed.
#pragma once

#include "KvWnd.h"

#include <memory>

/// Sent to the parent with WM_NOTIFY; wParam is the edit's dialog item number. Its code is
/// kKvColorNotifyCode.
struct KvParamEditRecord
{
    KvNotifyHeader hdr; ///< hwndFrom: the edit; idFrom: its number
    std::int32_t phase; ///< an EKvColorPhase
};

/// A whole number in a range. Setters are silent.
///
/// Typing: digits act at once while they are in the range; the first change of a typing begins a run, further
/// ones continue it, Enter, leaving the edit or Escape ends it. A value beyond the range can be typed and is
/// clamped when the typing ends. Escape restores the number as it was when the typing began. An edit that is
/// hidden ends its typing, one that is disabled ends it with the number in force, both from the event loop.
/// Arrows and the wheel step, Page Up and Down step by ten; each is a one-shot edit, which sends all three
/// phases. The wheel is the edit's while it has the focus, else its parent's. A step at the end of the range
/// changes and sends nothing. A vertical or horizontal drag on the border scrubs: right or up raises, a step
/// for each pixel since the press, once it is beyond the toolkit's drag distance. The parent may delete the
/// edit in its handler.
class KV_API CKvParamEdit : public CKvWnd
{
    Q_OBJECT
    /// The least number; one above the greatest takes that along.
    Q_PROPERTY(int minimum READ GetMinimum WRITE SetMinimum)
    /// The greatest number; one below the least takes that along.
    Q_PROPERTY(int maximum READ GetMaximum WRITE SetMaximum)
    /// Of arrows and wheel.
    Q_PROPERTY(int step READ GetStep WRITE SetStep)
    /// The number in force.
    Q_PROPERTY(int value READ GetValue WRITE SetValue NOTIFY ValueEdited)
    /// What the number is called: its tool tip and accessible name.
    Q_PROPERTY(QString label READ Label WRITE SetLabelText)

public:
    /// 0 in 0 … 255, in steps of 1; not created yet.
    CKvParamEdit();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvParamEdit(QWidget* parent);
    ~CKvParamEdit() override;

    /// @param style, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    int Create(UINT style, CWnd* parent, DWORD id);
    /// Shows the number, clamped, in place of what is being typed. A run that is open stays open until the
    /// user ends it. @param value the number.
    void SetValue(int value);
    /// @return the number in force: a typed one that is out of the range counts once it is clamped.
    int GetValue() const;
    /// The number is clamped to the new range. A range whose end is below its start is turned round.
    /// @param minimum, maximum both belong to it.
    void SetValueRange(int minimum, int maximum);
    /// @return the least number.
    int GetMinimum() const;
    /// @return the greatest one.
    int GetMaximum() const;
    /// @param step of arrows and wheel, at least 1.
    void SetStep(int step);
    /// @return the step.
    int GetStep() const;
    /// What a user does who enters a number at once, without typing: a one-shot edit. @param value clamped.
    void EnterValue(int value);
    /// @param text what the number is called: its tool tip and accessible name.
    void SetLabel(const wchar_t* text);
    /// @return true from the first key of a typing until it ends.
    bool IsTyping() const;
    /// Ends a typing as Enter does.
    void EndTyping();
    /// Ends a typing with the number in force; a run that is open is ended, none is begun.
    void StopTyping();
    /// @return true during the message that takes a typing or a scrub back.
    bool IsTakingBack() const;

    /// A scrub that another control leads (a channel's button) begins; nothing while the edit is disabled.
    void BeginScrub();
    /// The first step that changes the number begins the run. @param steps since `BeginScrub`, of either
    /// sign.
    void Scrub(int steps);
    /// @param cancel restores the number as it was at the beginning.
    void EndScrub(bool cancel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Before the first change of a run. An owner of several controls ends the runs of the others here; the
    /// change counts from the number that it leaves.
    void RunBeginning();
    /// After each message to the parent. @param phase an EKvColorPhase.
    void ValueChanged(int phase);
    /// The user's number is another one, after the message that says so. @param value it.
    void ValueEdited(int value);
    /// What the clipboard holds was pasted and is no number. The edit ignores it, a typing goes on; its owner
    /// may know it.
    void ForeignPasted();

protected:
    int CreateSelf() override;
    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    void OnCaptureChanged() override;
    void OnEnable(BOOL enabled) override;
    void OnSkinChanged() override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void SetMinimum(int minimum);
    void SetMaximum(int maximum);
    QString Label() const { return accessibleName(); }
    void SetLabelText(const QString& label);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
