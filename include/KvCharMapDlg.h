// The character map: every character of a font face, to be picked.
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
/// the grid's address as lParam, then emitted as a signal. Operations are silent.
class KV_API CKvCharMapPreviewWnd : public CKvStatic
{
    Q_OBJECT

public:
    CKvCharMapPreviewWnd();
    ~CKvCharMapPreviewWnd() override;

    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Takes colours from the skin and the characters of the face. `Create` calls it. @return 1.
    int Initialize();
    /// Shows another face, from its beginning. @param face a family; empty for the control's own font's.
    void SetFont(const CString& face);
    CString GetFont() const;
    /// Reads the face's characters anew: from the first one, with none selected. A space at the beginning is
    /// left out.
    void UpdateCodeTable();
    /// Repaints the grid.
    void DrawCharMap();
    /// Repaints the selected cell and its preview.
    void DrawSelected();
    /// Selects the character under a client point. @return 1; 0, with nothing changed, where there is none.
    int Select(CPoint point);

    /// @return how many characters there are.
    int GetCodeCount() const;
    /// @return the character at an index; 0 for an index that is none.
    DWORD GetCode(int index) const;
    /// @return the index of a character; -1 when the face lacks it.
    int FindCode(DWORD code) const;
    /// Selects by index and scrolls there; -1 selects none. @return 1 when another one is selected than
    /// before.
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
    /// Scrolls by the wheel, 120 a row, positive up; parts of a notch add up until the direction turns. Sends
    /// kKvCharScrolled.
    void ScrollWheel(int delta);

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    void SetGuiBasicSettings(SKvGuiBasicSettings* settings) override;

Q_SIGNALS:
    void CharSelected(quint32 code);
    void CharPicked(quint32 code);
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

private:
    /// The preview is hidden while the pointer is where it stands.
    void _UpdatePreviewPos(CPoint pointer);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
