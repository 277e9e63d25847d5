/// @file
/// The character map: every character of a font face, to be picked.
#pragma once

#include "KvDialog.h"
#include "KvWnd.h"

#include <memory>

/// Notification codes of the grid: the high word of a WM_COMMAND's wParam.
enum EKvCharMapCode : UINT
{
    kKvCharSelected = 1, ///< the user selected a character
    kKvCharPicked = 2,   ///< double click or Enter: the selected character is to be used
    kKvCharScrolled = 3, ///< the user's wheel or selection scrolled the grid
};

/// A grid of 20 columns by 10 rows of cells of 24 × 24 pixels, from (12, 12) on, that shows the characters of
/// one font face: 200 at a time, in the order of their codes, without those above U+FFFF. Its window is best
/// 504 × 264 (`sizeHint`).
///
/// The characters are those of the face's own character map, drawn by the face's own glyphs; a face that is
/// not installed leaves the grid empty. Of a family it is the regular, upright, normal-width face.
///
/// A press on a character selects it, and dragging it out gives its text; a double click or Enter picks it;
/// arrows, Page Up and Down, Home and End move the selection; Ctrl+C copies it; the wheel scrolls a row a
/// notch. A press elsewhere does nothing. The selected cell is inverted, and an enlarged preview stands
/// beside it except while the pointer is where it stands.
///
/// Each of a user's actions is sent to the parent as WM_COMMAND, with MAKEWPARAM(number, EKvCharMapCode) and
/// the grid's address as lParam, then emitted as a signal. Operations but `ScrollWheel` are silent.
class KV_API CKvCharMapPreviewWnd : public CKvStatic
{
    Q_OBJECT
    /// The family whose characters it shows; empty for the control's own font's.
    Q_PROPERTY(QString face READ Face WRITE SetFace)

public:
    /// A grid that is not created yet.
    CKvCharMapPreviewWnd();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvCharMapPreviewWnd(QWidget* parent);
    ~CKvCharMapPreviewWnd() override;

    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Takes colours from the skin and the characters of the face. `Create` calls it. @return 1.
    int Initialize();
    /// Shows another face, from its beginning. @param face a family; empty for the control's own font's.
    void SetFont(const CString& face);
    /// @return the family in force.
    CString GetFont() const;
    /// Reads the face's characters anew: from the first one, with none selected. A space at the beginning is
    /// left out.
    void UpdateCodeTable();
    /// Repaints the grid.
    void DrawCharMap();
    /// Repaints the selected cell and its preview.
    void DrawSelected();
    /// Selects the character under a point. @param point client coordinates.
    /// @return 1; 0, with nothing changed, where there is none.
    int Select(CPoint point);

    /// @return how many characters there are.
    int GetCodeCount() const;
    /// @param index 0 … count - 1. @return the character there; 0 for an index that is none.
    DWORD GetCode(int index) const;
    /// @param code a character. @return its index; -1 when the face lacks it.
    int FindCode(DWORD code) const;
    /// Selects by index and scrolls there. @param index -1 selects none.
    /// @return 1 when another one is selected than before.
    int SetSelected(int index);
    /// @return the index, or -1.
    int GetSelected() const;
    /// Scrolls. @param index is brought down to a multiple of 20 and into 0 … GetLastFirst(). @return 1 when
    /// the grid shows other characters than before.
    int SetFirst(int index);
    /// @return the index of the first visible character.
    int GetFirst() const;
    /// @return the largest first index: max(0, (ceil(count ÷ 20) - 10) × 20).
    int GetLastFirst() const;
    /// Scrolls by the wheel; parts of a notch add up until the direction turns. Sends kKvCharScrolled.
    /// @param delta 120 a row, positive up.
    void ScrollWheel(int delta);

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

Q_SIGNALS:
    /// After each kKvCharSelected. @param code the character.
    void CharSelected(quint32 code);
    /// After each kKvCharPicked. @param code the character.
    void CharPicked(quint32 code);
    /// After each kKvCharScrolled. @param first the index of the first visible character.
    void Scrolled(int first);
    /// The menu key, or a right click on a character, which is selected then. @param screen in screen
    /// coordinates.
    void MenuRequested(QPoint screen);

protected:
    void OnPaint(Graphics& graphics) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    void OnMouseLeave() override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    void changeEvent(QEvent* event) override;

private:
    QString Face() const;
    void SetFace(const QString& face) { SetFont(KvFromQString(face)); }
    /// The preview is hidden while the pointer is where it stands.
    void _UpdatePreviewPos(CPoint pointer);

    friend class CKvCharMapDlg;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

KV_INTERFACES_BEGIN

/// Receives what is picked. Never deleted through this interface: it has no virtual destructor.
class IKvCmdTarget
{
public:
    /// @param id KvCharMapCommand. @param character the picked one, a UTF-16 unit. The operation
    /// may delete the dialog. @param zero 0. @return not looked at.
    virtual int OnCommand(unsigned /*id*/, WPARAM /*character*/, LPARAM /*zero*/) { return 0; }
};

KV_INTERFACES_END

/// The command that a picked character is sent with.
inline constexpr unsigned KvCharMapCommand = 20440;

inline constexpr UINT kKvCharMapGrid = 20001;      ///< an item of the dialog: the grid
inline constexpr UINT kKvCharMapScrollBar = 20002; ///< its scroll bar
inline constexpr UINT kKvCharMapStatus = 20003;    ///< a label: code and name of the selected character
inline constexpr UINT kKvCharMapSearch = 20004;    ///< an edit

/// "Character Map", modeless: the grid with a scroll bar, a search box, the selected character's code and
/// name, the characters used last, favourites, and a line to collect several characters and copy them at
/// once. `Create` makes it hidden and `show` shows it; Escape and the close box hide it, and everything in it
/// stays until the window is destroyed.
///
/// A pick (double click or Enter on a character, the Insert button, Enter in the search box) is sent to the
/// command target once, then emitted. The search box selects the first match as one types: by the character
/// itself, by its code (`E9`, `U+E9`, `0xE9`) or by words of its name in any order; F3 goes to the next
/// match. Without a match the selection stays and the box says so; Enter there then does nothing. In the grid
/// and in the two rows Space collects the selected character and Ctrl+C copies it; Ctrl+D makes it a
/// favourite or takes that back, wherever the focus is. What is picked, collected, copied or dragged out
/// becomes the newest of the characters used last, unless it was taken from their row.
class KV_API CKvCharMapDlg : public CKvDialog
{
    Q_OBJECT

public:
    /// A dialog without a window.
    CKvCharMapDlg();
    ~CKvCharMapDlg() override;

    /// Makes the window, hidden. @param parent may be null. @param target may be null; it must outlive the
    /// window.
    /// @return see `CKvDialog::Create`.
    int Create(CWnd* parent, IKvCmdTarget* target);
    /// Shows the characters of a face, from the first one on. @param face a family; empty for the dialog's
    /// own.
    void SetFont(const CString& face);
    /// @return the family in force.
    CString GetFont() const;

    /// Scrolls the grid. @param code SB_…; @param position for SB_THUMBTRACK and SB_THUMBPOSITION the row
    /// that comes first. A line is one row, a page ten.
    void OnVScroll(UINT code, UINT position);
    /// Scrolls the grid a row a notch. @param delta 120 a notch, positive away from the user; parts add up
    /// until the direction turns. @param point unused. @return 1; 0 without a window.
    BOOL OnMouseWheel(short delta, CPoint point);

    /// @return the grid; null without a window.
    CKvCharMapPreviewWnd* GetGrid() const;
    // What a host may keep from run to run.
    /// Silent. @param characters at most 20, newest first; those that no grid shows are left out.
    void SetRecent(const CString& characters);
    /// @return the characters used last, newest first.
    CString GetRecent() const;
    /// Silent. @param characters at most 20, in the order of their adding; the rest as above.
    void SetFavorites(const CString& characters);
    /// @return the favourites, in the order of their adding.
    CString GetFavorites() const;
    /// @return what is in the line of collected characters.
    CString GetCollected() const;

    int DestroyWindow() override;
    BOOL OnInitDialog() override;
    /// What the Insert button does.
    void OnOK() override;
    /// Hides the dialog.
    void OnCancel() override;
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

Q_SIGNALS:
    /// After the command. @param code the character.
    void CharPicked(quint32 code);
    /// The user changed the favourites.
    void FavoritesChanged();

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnSkinChanged() override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void WatchGrid();

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
