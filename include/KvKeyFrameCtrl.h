/// @file
/// The keyframe strip: four small buttons beside an animatable property.
#pragma once

#include "KvWnd.h"

/// The strip's buttons.
enum EKvKeyFrameButton : UINT
{
    kKvKeyFrameToggleButton = 15000,   ///< animation of the property on or off
    kKvKeyFrameOperatorButton = 15001, ///< add or remove the key at the current time
    kKvKeyFramePreviousButton = 15002, ///< to the key before
    kKvKeyFrameNextButton = 15003,     ///< to the key behind
};

/// Which button was clicked: the code of the strip's notifications.
enum EKvKeyFrameCode : std::int32_t
{
    kKvKeyFrameNoButton = -1, ///< WM_COMMAND came with another number than the four
    kKvKeyFrameToggle = 0,    ///< animation on or off
    kKvKeyFramePrevious = 1,  ///< to the key before
    kKvKeyFrameOperator = 2,  ///< add or remove the key
    kKvKeyFrameNext = 3,      ///< to the key behind
};

/// A strip 14 pixels thick: the animation toggle, then, shown only while that is on, the previous-key
/// button, the add/remove-key toggle and the next-key button, each 14 pixels long.
///
/// The strip keeps no keys. Each click is told to the parent: WM_NOTIFY, wParam the strip's number, lParam a
/// KvNotifyHeader with the strip, its number and an EKvKeyFrameCode; the toggles have flipped by then. The
/// parent answers by `SetKeyOperatorCheck` and the `Enable…` operations, and may delete the strip. Setters
/// are silent. Without a parent a click does nothing.
///
/// Enabling the strip enables all four buttons, also one that the parent had disabled; what an ancestor of
/// the strip does leaves each button as it was.
///
/// Keyboard: the strip is one stop for Tab; arrows walk the buttons that are shown and enabled and stop at
/// the ends, Space presses. The focus shows unless it came by the mouse; so it does after a plain
/// `setFocus()`. When the parent disables the button that has the focus, the focus goes to the other
/// navigation button; when that is disabled too, to the add/remove toggle, whose flip a second press takes
/// back; to the animation toggle only when the key buttons vanish.
///
/// Its background is that of the basic settings, or the theme colour "keKeyFrameBKColor" where the skin has
/// it; else the parent shows through. A skin's pictures are "animation_chk", "animation_uck", "opkey_chk",
/// "opkey_uck", "prekey", "nextkey", "prekey_verticle" and "nextkey_verticle", each with the states of
/// CKvBitmapButton.
class KV_API CKvKeyFrameCtrl : public CKvStatic
{
    Q_OBJECT
    /// Whether the strip runs from top to bottom; unlike `SetVerticle` it also turns one that was created.
    Q_PROPERTY(bool vertical READ IsVertical WRITE SetVertical)
    /// The animation toggle. What is set before `Create` counts from then on; the same of the three below.
    Q_PROPERTY(bool animated READ IsAnimated WRITE SetAnimated NOTIFY AnimatedEdited)
    /// The add/remove toggle: a key sits at the current time.
    Q_PROPERTY(bool hasKey READ HasKey WRITE SetHasKey NOTIFY KeyEdited)
    /// Whether the button to the key before is enabled.
    Q_PROPERTY(bool previousEnabled READ IsPreviousEnabled WRITE SetPreviousEnabled)
    /// Whether the button to the key behind is enabled.
    Q_PROPERTY(bool nextEnabled READ IsNextEnabled WRITE SetNextEnabled)

public:
    /// A strip that is not created yet, from left to right.
    CKvKeyFrameCtrl();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvKeyFrameCtrl(QWidget* parent);
    ~CKvKeyFrameCtrl() override;

    /// Creates the strip with its buttons at the geometry set before, and from then on 14 pixels thick; the
    /// animation toggle is unchecked, the add/remove toggle checked. A null parent makes a window of its own.
    /// Another thickness that a host sets afterwards is undone: at once, or, of a hidden strip, when it is
    /// shown. A smallest or largest one that it sets, before or afterwards, stays; the buttons are as thick.
    /// The property `vertical` turns the limits with the strip.
    ///
    /// Mind the order, here and through a pointer to the base class: the number comes first, the style last.
    /// @param id, parent see `CKvWnd::CreateWnd`. @param style likewise; Tab reaches the buttons also without
    /// WS_TABSTOP.
    /// @return 1; 0, with nothing changed, when it was created before.
    int Create(UINT id, CWnd* parent, DWORD style) override;
    /// Before `Create` only. @param vertical not 0 lays the strip out from top to bottom.
    /// @return 1; 0, with nothing changed, when it was created before.
    int SetVerticle(BOOL vertical);

    // States. Each setter returns 1; 0, with nothing changed, before `Create`.

    /// The animation toggle; shows or hides the three key buttons. @param check 0 is off. @return see above.
    int SetToggleCheck(BOOL check);
    /// @return 1 or 0.
    BOOL GetToggleCheck() const;
    /// The add/remove toggle: checked while a key sits at the current time. Each click flips it.
    /// @param check 0 is off. @return see above.
    int SetKeyOperatorCheck(BOOL check);
    /// @return 1 or 0.
    BOOL GetKeyOperatorCheck() const;
    /// @param enable 0 disables the button to the key before. @return see above.
    int EnablePreviousKeyCtrl(BOOL enable);
    /// @param enable 0 disables the button to the key behind. @return see above.
    int EnableNextKeyCtrl(BOOL enable);

    /// Passes the settings on to every child that takes them. @param settings see `IKvGuiWnd`.
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    /// As the toolkit's, but `OnEnable` hears of it at once also while an ancestor is disabled. Called as a
    /// QWidget's it is heard in that case when the ancestor is enabled. @param enabled false disables it.
    void setEnabled(bool enabled);
    /// The contrary. @param disabled true disables it.
    void setDisabled(bool disabled);

Q_SIGNALS:
    /// After each message to the parent. @param code an EKvKeyFrameCode.
    void KeyFrameClicked(int code);
    /// The user flipped the animation toggle, after the message. @param animated what it says now.
    void AnimatedEdited(bool animated);
    /// The user flipped the add/remove toggle, after the message. @param hasKey what it says now.
    void KeyEdited(bool hasKey);

protected:
    int CreateSelf() override;
    // The steps that the strip is made of.

    /// Fixes the thickness, lays the buttons out and creates them; `Create` calls it.
    /// @return 1; 0 once they are there.
    int _Initialize();
    /// Unchecks the animation toggle and gives every button the picture of its state.
    /// @return 1; 0 before `Create`.
    int _UpdateControl();
    /// @param show 0 hides the three key buttons. @return 1; 0 before `Create`.
    int _ShowKeyFrameControl(BOOL show);
    /// Enables or disables all four buttons. Called when the strip itself is enabled or disabled.
    /// @param enabled 1 or 0.
    void OnEnable(BOOL enabled) override;
    /// Paints the background around the buttons that are shown. @return 1; 0 when there is none to paint.
    /// @param graphics the painter.
    virtual BOOL OnEraseBkgnd(Graphics& graphics);
    /// Flips the toggle concerned and tells the parent. The strip may be gone afterwards.
    /// @param id the button's number.
    virtual void OnBtnClickControl(UINT id);

    void OnSize(int width, int height) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnPaint(Graphics& graphics) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSkinChanged() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool IsVertical() const;
    void SetVertical(bool vertical);
    bool IsAnimated() const;
    void SetAnimated(bool animated);
    bool HasKey() const;
    void SetHasKey(bool hasKey);
    bool IsPreviousEnabled() const;
    void SetPreviousEnabled(bool enabled);
    bool IsNextEnabled() const;
    void SetNextEnabled(bool enabled);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
