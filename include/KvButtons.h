/// @file
/// The base buttons: small children of a control or dialog that tell their parent of a click.
#pragma once

#include "KvPlatform.h"

#include <QAbstractButton>

#include <memory>

/// The high word of a WM_COMMAND's wParam when a button was clicked; the low word is the button's number.
inline constexpr UINT BN_CLICKED = 0;

KV_INTERFACES_BEGIN

/// A button that is a picture of the skin.
///
/// A click by mouse, by Space or by a screen reader sends the parent WM_COMMAND with
/// MAKEWPARAM(number, BN_CLICKED) and the button's address as lParam, then emits `clicked`; the parent may
/// delete the button meanwhile. A checkable button (`setCheckable`) tells screen readers whether it is
/// checked; a click does not change that, the owner does (`setChecked`, `UpdateBitmap`).
///
/// Pictures: the skin may have `<name>_disabled`, `<name>_pressed` and `<name>_hover` beside `<name>` (a
/// button is in one of these states only, in this order); such a picture is drawn as it is. Without it
/// `<name>` is drawn in the state's look: faint when disabled, on a plate of the colour
/// "keButtonPressedColor" or "keButtonHoverColor" when pressed or under the pointer. A picture is centred in
/// its own size, or shrunk when the button is smaller. The focus ring has the colour "keFocusColor"; it shows
/// unless the focus came by the mouse (so it does after a plain `setFocus()`), or once Space or an arrow was
/// pressed; only then Space is taken before the host's shortcuts.
class KV_API CKvBitmapButton : public QAbstractButton, public IKvGuiWnd
{
    Q_OBJECT
    /// Its number.
    Q_PROPERTY(uint itemId READ GetDlgCtrlID WRITE SetDlgCtrlID)
    /// The name of the picture; see `UpdateBitmap`.
    Q_PROPERTY(QString picture READ Picture WRITE SetPicture)
    /// The theme colour that fills it; see `SetBackgroundKey`.
    Q_PROPERTY(QString backgroundKey READ BackgroundKey WRITE SetBackgroundKeyText)

public:
    /// A button without a picture that is not created yet.
    CKvBitmapButton();
    /// A button that counts as created once it or what it is in is first shown. Tab reaches it.
    /// @param parent its parent; may be null.
    explicit CKvBitmapButton(QWidget* parent);
    ~CKvBitmapButton() override;

    /// Makes the button a child of `parent`.
    /// @param id its number. @param parent may be null. @param rect geometry in the parent's coordinates.
    /// @param style WS_VISIBLE shows it, WS_DISABLED disables it, WS_TABSTOP lets Tab reach it.
    /// @param imageName see `UpdateBitmap`.
    /// @param toolTip its tool tip and, unless `accessibleName` is set, its name; null for none.
    /// @return 1; 0 when it was created before.
    int CreateButton(UINT id, CWnd* parent, const CRect& rect, UINT style, const wchar_t* imageName,
                     const wchar_t* toolTip);
    /// Shows another picture. @param imageName null or a name that the skin does not have shows none.
    /// @return 1; 0 when the skin has no such picture.
    int UpdateBitmap(const wchar_t* imageName);
    /// @return the name of the picture, without a state's ending.
    std::wstring GetBitmapName() const;
    /// @return its number.
    UINT GetDlgCtrlID() const;
    /// @param id its number from now on.
    void SetDlgCtrlID(UINT id);
    /// @return true while the button has the focus and the ring shows it.
    bool IsFocusShown() const;
    /// Fills the button where no basic settings are given.
    /// @param key of a theme colour; empty or one that the skin does not have lets the parent show through.
    void SetBackgroundKey(const wchar_t* key);

    /// @param settings only the background is used.
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// @return where the picture stands, in client coordinates; an empty one shows none. The whole button
    /// unless overridden.
    virtual QRect PictureRoom() const;
    /// For a constructor with a parent. @param parent its parent; may be null.
    void CreateWhenShown(QWidget* parent);
    /// Does nothing: the checked state is the owner's.
    void nextCheckState() override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    QString Picture() const { return KvToQString(GetBitmapName()); }
    void SetPicture(const QString& name) { UpdateBitmap(KvFromQString(name).c_str()); }
    QString BackgroundKey() const;
    void SetBackgroundKeyText(const QString& key) { SetBackgroundKey(KvFromQString(key).c_str()); }

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

KV_INTERFACES_END

/// A picture button with a text: both side by side in the middle of the button, the text alone where there is
/// no room for both. The text is drawn in the widget's font and the text colours of the theme. It is the
/// accessible name where no tool tip and no `accessibleName` is set.
class KV_API CKvButton : public CKvBitmapButton
{
    Q_OBJECT
    /// See `SetWindowText`.
    Q_PROPERTY(QString text READ Text WRITE setText)

public:
    /// A button without a text that is not created yet.
    CKvButton();
    /// As that of `CKvBitmapButton`. @param parent its parent; may be null.
    explicit CKvButton(QWidget* parent);
    ~CKvButton() override;

    /// @param text empty or null shows the picture alone. A "&" is drawn as it is.
    void SetWindowText(const wchar_t* text);
    /// The same, in place of the toolkit's. @param text empty shows the picture alone.
    void setText(const QString& text);
    /// @return the text.
    std::wstring GetWindowText() const;
    /// @param text the tool tip; empty or null for none.
    void SetToolTip(const wchar_t* text);
    QSize sizeHint() const override;

protected:
    QRect PictureRoom() const override;
    /// @return where the text stands, in client coordinates, centred vertically: beside the picture unless
    /// overridden.
    virtual QRect TextRoom() const;
    /// @return the text's colour just now: the theme's for the button's state unless overridden.
    virtual QColor TextColour() const;
    void paintEvent(QPaintEvent* event) override;

private:
    QString Text() const { return m_text; }

    QString m_text;
};

/// A picture button that is on or off, one of a group that its owner keeps: two pictures, "checked" and
/// "unchecked". A click sends what `CKvBitmapButton` sends and changes nothing; the owner calls `SetCheck`.
class KV_API CKvRadioBitmapButton : public CKvBitmapButton
{
    Q_OBJECT
    /// The one of the two pictures that is shown; not for forms.
    Q_PROPERTY(QString picture READ ShownPicture DESIGNABLE false STORED false)
    /// The name of the picture while it is off.
    Q_PROPERTY(QString uncheckedPicture READ UncheckedPicture WRITE SetUncheckedPicture)
    /// The name of the picture while it is on.
    Q_PROPERTY(QString checkedPicture READ CheckedPicture WRITE SetCheckedPicture)

public:
    /// A button that is not created yet, unchecked.
    CKvRadioBitmapButton();
    /// As that of `CKvBitmapButton`. @param parent its parent; may be null.
    explicit CKvRadioBitmapButton(QWidget* parent);
    ~CKvRadioBitmapButton() override;

    /// Takes the place of a dialog's item (geometry, number, turn of the Tab key), unchecked.
    /// @param id the item's number. @param parent the dialog. @param unchecked, checked see `UpdateBitmap`.
    /// @return 1; 0 when there is no such item or the button was created before.
    int SubClassButton(UINT id, CWnd* parent, const wchar_t* unchecked, const wchar_t* checked);
    /// Shows other pictures. @param unchecked, checked their names.
    /// @return 1; 0 when the skin does not have both.
    int UpdateBitmap(const wchar_t* unchecked, const wchar_t* checked);
    /// Silent. @param check 0 is off.
    void SetCheck(BOOL check);
    /// @return 1 or 0.
    BOOL GetCheck() const;
    /// Ends a scrub as a release does; what is left of the press does nothing.
    void EndScrub();
    /// @return true from the first `Scrubbed` until `ScrubEnded`.
    bool IsScrubbing() const;

Q_SIGNALS:
    /// A press of the left button that went beyond the toolkit's drag distance: no click follows.
    /// @param steps pixels to the right and upwards since the press.
    void Scrubbed(int steps);
    /// @param cancelled by Escape; losing the mouse ends a scrub as a release does, but from the event loop.
    void ScrubEnded(bool cancelled);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString ShownPicture() const { return KvToQString(GetBitmapName()); }
    QString UncheckedPicture() const { return KvToQString(m_unchecked); }
    void SetUncheckedPicture(const QString& name);
    QString CheckedPicture() const { return KvToQString(m_checked); }
    void SetCheckedPicture(const QString& name);
    struct Press;
    void ShowPicture();
    void StartScrub();
    void FinishScrub(bool cancelled);
    bool TellLoss();
    bool EndPress();

    std::wstring m_unchecked;
    std::wstring m_checked;
    std::unique_ptr<Press> m_press; ///< of the left button, until it is released
};
