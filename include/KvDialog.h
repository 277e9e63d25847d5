/// @file
/// The base of the dialogs: a window that is made from a template by number.
#pragma once

#include "KvPlatform.h"

#include <QDialog>

#include <memory>

KV_INTERFACES_BEGIN

/// A dialog made from a template of the library's tables: items, texts, positions in dialog units (a quarter
/// of the font's average letter width and an eighth of its height), the order of the Tab key.
///
/// Life: the object and its window are two things. `DoModal` makes the window, runs it and destroys it before
/// it returns, as often as it is called; `Create` makes a hidden one that stays until the dialog ends or
/// `DestroyWindow`. The object belongs to whoever made it, on the stack or on the heap, never to the parent:
/// when the parent dies, an open dialog is cancelled and its window destroyed. Any handler may delete the
/// object.
///
/// End: the first answer of an opening counts (`EndDialog`, to which `OnOK` and `OnCancel` lead; destroying
/// the window is Cancel), later ones are ignored. Without `DoModal` the answer destroys the window; hiding it
/// is no answer then. The toolkit's `exec` and `finished` give what `DoModal` gives, but `QDialog::Rejected`
/// for Cancel; `finished` does not come when the window is destroyed instead of answered.
///
/// A subclass that overrides `OnAnswer` or `DestroyWindow` calls `DestroyWindow` in its destructor: the
/// base's destructor would not reach the override any more.
///
/// Enter is `OnOK`, whichever button has the focus; Space presses that one. Escape and the close box are
/// `OnCancel`. The template's size is the smallest; in a larger window each item moves or grows as the
/// template says. Colours come from the skin, texts from the tables; changes of either reach an open dialog.
/// A text that is too long for its place is cut and shown whole as a tool tip.
///
/// Idle update: while the window is shown it gets WM_KICKIDLE (lParam: the count of calls since something
/// happened) after every burst of events and at least every 100 ms.
class KV_API CKvDialog : public QDialog, public IKvGuiWnd
{
    Q_OBJECT

public:
    /// @param templateNumber what `DoModal` opens. @param parent over whose window the dialog opens; may be
    /// null.
    explicit CKvDialog(UINT templateNumber = 0, CWnd* parent = nullptr);
    ~CKvDialog() override;

    /// Opens the dialog and waits until it ends.
    /// @return what `EndDialog` was given: 1 for OK, 2 for Cancel, which it also is when the application ends
    /// meanwhile or the dialog is deleted; -1, and nothing happens, when there is no such template, the
    /// window exists already or an earlier call has not returned.
    virtual int DoModal();
    /// Makes the window, hidden, without waiting; `show` shows it.
    /// @param templateNumber which one. @param parent may be null.
    /// @return 1; 0, and nothing happens, when there is no such template, the window exists already or
    /// `DoModal` has not returned; also 0 when a handler ended the dialog at once.
    int Create(UINT templateNumber, CWnd* parent);
    /// @return 1 while there is a window.
    BOOL IsCreated() const;
    /// Destroys the window and its items; the object stays. Cancels what has no answer, without `OnCancel`,
    /// and ends `DoModal`. @return 1; 0 without a window.
    virtual int DestroyWindow();
    /// Answers: `OnAnswer`, then the window is hidden; `DoModal` returns `result` as soon as the handler that
    /// called this is through. Does nothing when there is no window or an answer.
    /// @param result IDOK, IDCANCEL or one of the dialog's own.
    void EndDialog(int result);

    /// @return the window's own number; 0 until it has one.
    UINT GetDlgCtrlID() const;
    /// @param id its number. @return the item; null when there is none.
    HWND GetDlgItem(UINT id) const;
    /// @param units a rectangle in dialog units. @return the same in pixels of this dialog's font, rounded;
    ///        wider where a text of its language needs the room.
    CRect MapDialogRect(const CRect& units) const;
    /// Asks `OnCmdUpdateUI` for the state of every item.
    void UpdateDialogControls();

    // Handlers. Each may delete the dialog.
    /// The window and its items exist; not shown yet. @return 0 when the handler set the focus itself.
    virtual BOOL OnInitDialog();
    /// Enter, or the OK button: `EndDialog(IDOK)` unless overridden.
    virtual void OnOK();
    /// Escape, the close box, or the Cancel button: `EndDialog(IDCANCEL)` unless overridden.
    virtual void OnCancel();
    /// The dialog has its answer, once an opening and while the window still stands, however it ends.
    /// @param result OK is IDOK; take any other for Cancel.
    virtual void OnAnswer(int result);
    /// @param wParam unused. @param count as in WM_KICKIDLE.
    /// @return non-zero asks for another call before anything happens.
    virtual LRESULT OnKickIdle(WPARAM wParam, LPARAM count);
    /// Tells whether a command can be used now.
    /// @param command answer by `command->Enable` for the number `command->m_nID`.
    virtual void OnCmdUpdateUI(CCmdUI* command);

    /// Colours and font of a host's own instead of the skin's. @param settings see `IKvGuiWnd`.
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

    /// @return the template's size once there is a window, in logical pixels.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The toolkit's ways into and out of a dialog are the ones above.
    int exec() override;
    void accept() override;
    void reject() override;
    void done(int result) override;

protected:
    /// An item's WM_NOTIFY. @param wParam its number. @param lParam its record.
    /// @param result receives the answer. @return non-zero when handled.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// A button that was clicked. @param wParam the low word is its number, the high word 0.
    /// @param lParam the button. @param result receives the answer. @return non-zero when handled.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// Every message, before the two above. @param message WM_… @param wParam, lParam as it has them.
    /// @param result receives the answer. @return non-zero when handled.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// The skin or the texts changed.
    virtual void OnSkinChanged();

    /// Takes the answer without ending the dialog, which may be gone afterwards. @param result the answer.
    /// @return 1; 0 when there is no window or an answer.
    int TakeAnswer(int result);

    /// Puts a child of the dialog in the place of an item, with its number, position and turn of the Tab key;
    /// the item is deleted. @param id the item's number. @param control the child.
    /// @return 1; 0 when there is no such item.
    int ReplaceDlgItem(UINT id, QWidget* control);

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    friend class CKvColorPanel;        // paints its own ground
    friend class CKvRadioBitmapButton; // takes an item's place
    friend class KvGuiRes;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

KV_INTERFACES_END
