/// @file
/// The base classes of the controls: CKvWnd turns the toolkit's events into the field's handlers.
#pragma once

#include "KvPlatform.h"

#include <QMainWindow>

#include <memory>

/// A window whose events arrive as `On…` handlers. Also a convenient parent: the messages of its children
/// arrive in `OnNotify` and `OnCommand`.
///
/// Life: construct, optionally give it a geometry, then `Create` it once. A control that is constructed with
/// a parent, as forms do it, creates itself when it or what it is in is first shown. One without may be
/// constructed and never created. Destroying the parent destroys its controls; a control on the stack or in a
/// member must die before its parent does.
///
/// Coordinates are logical pixels of the client area; drawing is sharp at any pixel ratio.
class KV_API CKvWnd : public QWidget
{
    Q_OBJECT
    /// The window's own number; 0 until it has one.
    Q_PROPERTY(uint itemId READ GetDlgCtrlID WRITE SetDlgCtrlID)

public:
    /// A window that is not created yet.
    CKvWnd();
    ~CKvWnd() override;

    /// Makes the window a child of `parent`, with that style and dialog item number.
    /// @param style WS_VISIBLE shows it, WS_DISABLED disables it, WS_TABSTOP lets Tab reach it.
    /// @param rect geometry in the parent's coordinates; an empty one keeps what was set before.
    /// @param parent null makes a window of its own. @param id the dialog item number.
    /// @return 1; 0 when it was created before.
    int CreateWnd(UINT style, const CRect& rect, CWnd* parent, DWORD id);
    /// @return 1 from a successful Create on.
    BOOL IsCreated() const;
    /// @return the window's own number; 0 until it has one.
    UINT GetDlgCtrlID() const;
    /// @param id the window's own number from now on.
    void SetDlgCtrlID(UINT id);
    /// @return the client rectangle: the whole widget, from (0, 0).
    CRect GetClientRect() const;
    /// @return which keys the control wants for itself (DLGC_…); also the answer to WM_GETDLGCODE. Tab leaves
    ///         the control unless it asks for it.
    virtual UINT OnGetDlgCode();

protected:
    /// For a constructor with a parent: makes the window its child, which creates itself when it or what it
    /// is in is first shown, unless somebody does before. What is set until then stays: place, size, number,
    /// whether it is hidden and enabled, focus policy. Tab reaches it if it takes the focus at all.
    /// @param parent null makes a window of its own.
    void CreateWhenShown(QWidget* parent);
    /// Calls the window's `Create` with its parent and number; `CreateWnd` then leaves all else as it is.
    /// @return what `Create` does.
    virtual int CreateSelf();
    ///@{
    /// A child's WM_NOTIFY or WM_COMMAND. @param wParam, lParam as the child sent them.
    /// @param result receives the child's answer. @return non-zero when handled.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result);
    ///@}
    /// Every message, before the two above. @param message WM_… @param wParam, lParam as it has them.
    /// @param result receives the sender's answer. @return non-zero when handled.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

    // Events. Points are client coordinates. A handler may delete the window.
    /// @param graphics the painter, in client coordinates; ready to draw.
    virtual void OnPaint(Graphics& graphics);
    /// After `Create` only; of a hidden window when it is shown. @param width, height of the client area.
    virtual void OnSize(int width, int height);
    ///@{
    /// A button or the pointer. @param modifiers the keys that are down. @param point client coordinates.
    virtual void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point);
    /// The second press of a double click; a press unless overridden.
    /// @param modifiers the keys that are down. @param point client coordinates.
    virtual void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnMButtonDown(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnMButtonUp(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnRButtonDown(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnRButtonUp(Qt::KeyboardModifiers modifiers, CPoint point);
    virtual void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point);
    ///@}
    /// The wheel. @param modifiers the keys that are down. @param point client coordinates.
    /// @param delta 120 per notch, positive away from the user; finer devices send parts of it.
    virtual void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point);
    /// The pointer left the window.
    virtual void OnMouseLeave();
    /// @param point client coordinates of the click, or those of `ContextMenuPoint` for the menu key.
    virtual void OnContextMenu(CPoint point);
    /// @return where the menu key opens the context menu, in client coordinates; the centre unless
    /// overridden.
    virtual CPoint ContextMenuPoint() const;
    /// @param key a virtual key (VK_…), or 0 for a key that has none here.
    /// @param modifiers the keys that are down beside it.
    /// @return non-zero when the key was used; else it goes on to the parent.
    virtual BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers);
    /// @param character the UTF-16 unit; Ctrl+A to Ctrl+Z arrive as 1 to 26.
    /// @return non-zero when the character was used.
    virtual BOOL OnChar(UINT character);
    /// @param key, modifiers as in `OnKeyDown`. @param character as in `OnChar`; 0 when the key has none.
    /// @return true for a key that the focused control takes before the host's shortcuts see it.
    virtual bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const;
    ///@{
    /// The keyboard focus came, or goes.
    virtual void OnSetFocus();
    virtual void OnKillFocus();
    ///@}
    /// Enabled or disabled, also by an ancestor. @param enabled 1 or 0.
    virtual void OnEnable(BOOL enabled);
    /// A period of a timer is over. @param id the number that `SetTimer` was given.
    virtual void OnTimer(UINT id);
    /// The mouse was taken away in a drag: a popup or modal window opened, or the window was hidden,
    /// disabled or deactivated. It comes from the event loop, after the call that took it away, or before the
    /// window's next input. `ReleaseCapture` does not call it.
    virtual void OnCaptureChanged();
    /// The skin, the texts or the language changed: look keys, images and texts up again. What a host set by
    /// a setter stays. The window is repainted afterwards.
    virtual void OnSkinChanged();
    /// Drags the frame (`window()`) from that client point as a caption would: once the pointer has gone the
    /// toolkit's drag distance with the button still down. A maximised frame is restored under the pointer.
    /// @param point client coordinates.
    virtual void OnHitCaption(CPoint point);
    /// @param point client coordinates. @param area receives where the text holds.
    /// @return the tool tip at the point; empty shows none.
    virtual QString ToolTipAt(CPoint point, CRect& area) const;

    /// Starts (or restarts) a timer. @param id the control's own number. @param milliseconds its period.
    void SetTimer(UINT id, int milliseconds);
    /// Stops a timer; one that does not run is ignored. @param id its number.
    void KillTimer(UINT id);
    /// Begins a drag with the button that went down last: mouse moves and the button-up come here until
    /// `ReleaseCapture`.
    void SetCapture();
    /// Ends the drag; nothing without one.
    void ReleaseCapture();
    /// @return true in a drag that `SetCapture` began.
    bool HasCapture() const;
    /// @return true while a left Ctrl key is down; a Ctrl press that is not known as the right one counts as
    /// left, also one that only the modifiers of the latest event tell of.
    bool IsLeftControlDown() const;

    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class KvGuiRes;
    void LoseCapture();
    bool TellLoss();
    template <typename Handler>
    void Dispatch(QEvent* event, Handler handler);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

KV_INTERFACES_BEGIN

/// A control that shows something and takes its colours and font from the host or the theme.
class KV_API CKvStatic : public CKvWnd, public IKvGuiWnd
{
    Q_OBJECT

public:
    /// A control that is not created yet.
    CKvStatic();
    ~CKvStatic() override;

    /// @param style, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    virtual int Create(UINT style, CWnd* parent, DWORD id);

    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

protected:
    int CreateSelf() override;
    /// @return what the host gave, or null.
    const SKvGuiBasicSettings* GuiBasicSettings() const;

private:
    SKvGuiBasicSettings* m_settings = nullptr;
};

KV_INTERFACES_END

/// What a child that stands in for a frame's caption tells it. Never deleted through this interface.
class KV_API IKvFrameCaption
{
public:
    /// Whether a point in the frame's resize border is the caption's all the same; its own hit test then
    /// decides what happens there. @param point in the caption's client coordinates. @return true when it is.
    virtual bool TakesBorderAt(CPoint point) const = 0;
    /// @return below which row the system menu opens, in the caption's client coordinates.
    virtual int CaptionBottom() const = 0;

protected:
    ~IKvFrameCaption() = default;
};

/// A frameless main window whose caption is drawn by its own bar, put at the top by `setMenuWidget` (or by a
/// layout of the host's): resize borders of 6 pixels, 4 at the top, none while it is maximised; a system menu
/// on Alt+Space; the right geometry when maximised and restored; a smallest size unless the host sets one.
///
/// While it is neither maximised nor on the full screen a line of one pixel runs around it: the contents
/// margins are the frame's own.
class KV_API CKvFrameWnd : public QMainWindow
{
    Q_OBJECT

public:
    /// A frame without a caption bar; hidden.
    CKvFrameWnd();
    ~CKvFrameWnd() override;

    /// Changes the show state unless `OnShowStateRequest` refuses. @param showCommand 1 restores, 2
    /// minimises, 3 maximises. @return 1; 0 when it refused.
    int RequestShowState(int showCommand);
    /// Opens the system menu (Restore, Minimize, Maximize, Close) and does what is chosen.
    /// @param screen a point in screen coordinates.
    void OpenSystemMenu(CPoint screen);

protected:
    /// A button, a double click or a menu wants another show state. @param showCommand 1 normal, 2 minimised,
    /// 3 maximised. @return 0 refuses.
    virtual BOOL OnShowStateRequest(int showCommand);
    ///@{
    /// A child's WM_NOTIFY or WM_COMMAND. @param wParam, lParam as the child sent them.
    /// @param result receives the child's answer. @return non-zero when handled.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result);
    ///@}
    /// Every message, before the two above. @param message WM_… @param wParam, lParam as it has them.
    /// @param result receives the sender's answer. @return non-zero when handled.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
