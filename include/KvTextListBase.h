/// @file
/// What the subtitle list and the text list share: rows of texts that the user edits, with colours of their
/// own, undo, clipboard, and drag and drop.
#pragma once

#include "KvReportListCtrl.h"

#include <functional>
#include <memory>

class QMenu;
class QUndoStack;

/// Options of `CKvTextListBase::SetFindOptions`, to be joined by |.
enum EKvFindOption : UINT
{
    kKvFindWholeWords = 1,   ///< neither a letter nor a digit stands beside the match
    kKvFindSelectedRows = 2, ///< hits leave the selection as it is and become the current row
    kKvFindBackwards = 4,    ///< towards the beginning
    /// The text to find is a pattern in Perl's syntax; in the one to replace with, \0 … \9 stand for the
    /// match and its groups, \n for a line break, \\ for a backslash.
    kKvFindRegularExpression = 8,
};

/// A list whose column 0 holds a text a row. A text may have several lines; the list shows a mark for each
/// line break, and Shift+Enter breaks a line while a cell is open.
///
/// What the host does is silent and not undone. What the user does is one step of the undo stack: editing a
/// cell (edits of the same cell after one another are one step), cut, paste, delete, insert, move by drag or
/// key. A step knows its rows, not their indices: it finds them where the host has moved them meanwhile; once
/// they are gone it does nothing, and leaves the stack. Undo and redo bring selection and scroll position
/// back. `Ctrl+Z` and `Ctrl+Y` (`Ctrl+Shift+Z`) reach the stack while the list has the focus.
///
/// Further keys: Ctrl+X, C, V and Delete; Ctrl+Enter (Ctrl+Shift+Enter, Insert) inserts a row below (above)
/// and opens it; Alt+Up and Alt+Down move the selected rows. Paste puts the rows, one a line, below the
/// selection.
///
/// Selected rows can be dragged: within the list they move (with Ctrl they are copied), into another list of
/// the same class they move with all that belongs to them, anywhere else their texts are copied.
class KV_API CKvTextListBase : public CKvReportListCtrl
{
    Q_OBJECT

public:
    ~CKvTextListBase() override;

    /// @param line a row. @param text receives its text. @return 1; 0 out of range, `text` unchanged.
    int GetString(int line, CString& text) const;
    /// The first line of each selected row's text, ascending; while a cell is open, of the text that is
    /// selected in it. @param texts is emptied first. @return how many.
    int GetFirstLineTxtFocus(CStringArray& texts) const;

    /// The row's own background. @param line a row. @param normal, selected 0xAARRGGBB: while it is not
    /// selected, and while it is; null leaves that colour. @return 1; 0 out of range.
    int SetItemBkColor(int line, const DWORD* normal, const DWORD* selected);
    /// The same colours; those that the row has not of its own are the theme's. @param line a row.
    /// @param normal, selected receive 0xAARRGGBB; may be null. @return 1; 0 out of range, both unchanged.
    int GetItemBkColor(int line, DWORD* normal, DWORD* selected) const;
    /// The row's own colours while it is neither selected nor disabled, whatever it is now.
    /// @param line, column a cell. @param back, text receive 0xAARRGGBB; may be null.
    /// @return 1; 0 when it has none of its own, or out of range.
    BOOL GetCellColors(int line, int column, DWORD* back, DWORD* text) const override;

    /// @param line a row.
    /// @return its name: above 0, never used again, and its own again after undo; 0 out of range.
    std::uint64_t GetRowKey(int line) const;
    /// @param key a row's name. @return where it is; -1 when the row is gone.
    int FindRowKey(std::uint64_t key) const;

    /// Sorts by a column, stably: rows that are equal stay in their order, also when it descends. Texts
    /// compare without regard to case; rows keep all that is theirs. @param column which one.
    /// @param ascending 0 descends. @return 1; 0 for a column out of range.
    int SortItems(int column, BOOL ascending);

    /// Finds, or replaces, in the rows' texts. Starts in `startRow`, behind the current match when that
    /// stands there, and goes on round the end of the list up to the current match itself. A hit is selected
    /// and shown. What one call replaces is one step of undo and counts as a modification; no signal tells of
    /// it.
    /// @param startRow -1 or out of range: row 0.
    /// @param mode 0 finds the next match; 1 replaces the current match and finds the next one, without a
    ///        valid match as 0; 2 replaces all in all rows. A replacement is not searched again.
    /// @param find what is looked for. @param replace what takes its place.
    /// @param matchCase 0: case does not count (simple folding, character by character).
    /// @return 0 done; 1 done, beyond the end of the list; 2 nothing found and nothing replaced, also for an
    ///         empty text to find and another mode.
    int FindReplace(int startRow, int mode, const CString& find, const CString& replace, int matchCase);
    /// How many matches there are. The current match stays. @param find, matchCase as above.
    /// @return 0 also for an empty text.
    int CountMatches(const CString& find, int matchCase);
    /// For the searches to come; none at first. @param options EKvFindOption.
    void SetFindOptions(UINT options);
    /// @return EKvFindOption.
    UINT GetFindOptions() const;
    /// @return why the last search could not use its regular expression, in words for the user; empty when it
    /// could.
    CString GetFindError() const;

    /// @return the stack that the user's steps go to.
    QUndoStack* GetUndoStack() const;
    /// Uses a host's stack from now on. @param stack null brings the list's own one back. Steps that were
    /// done stay where they are. The stack may die before the list, and the list before the stack.
    void SetUndoStack(QUndoStack* stack);

    /// Makes one step of undo of what the host does to rows: rows that `change` inserts and removes, and
    /// cells that it gives other values. Silent, like the operations themselves, until the step is undone;
    /// counts as a modification. Takes time and memory for the rows that are touched, not for all. Other
    /// orders of rows are no part of the step. Removing everything at once (`EmptyAll`, `ResetContent`) voids
    /// it, whatever else `change` does: nothing comes onto the stack. A call from within `change` belongs to
    /// the outer one's step, and so does `FindReplace`.
    /// @param name what the stack shows. @param change is called once. @return 1; 0 when there is no step:
    /// nothing changed, or it is void,
    ///        or an outer one's.
    int RunAsStep(const CString& name, const std::function<void()>& change);

Q_SIGNALS:
    /// The user changed a text, also by undo. After the change, once. @param row the row.
    void TextEdited(int row);
    /// The user inserted, removed or moved rows, or changed several at once by undo. After the change, once.
    void RowsEdited();
    /// The context menu is about to open, with the list's own entries. A handler may add entries, which run
    /// themselves (`QAction::triggered`) once the menu is closed; those that are the menu's children go with
    /// it. @param menu the menu.
    void ContextMenuOpening(QMenu* menu);

protected:
    CKvTextListBase();

    // What the list keeps for a row's cells, for undo, clipboard and drag. Column 0 is the text.

    /// @return the name under which rows are put on the clipboard and dragged with all that is theirs.
    virtual const char* _GetRowFormat() const = 0;
    /// @param line, column a cell. @return what undo keeps of it; the stored text unless overridden.
    virtual CString _GetCellValue(int line, int column) const;
    /// The contrary. @param line, column a cell. @param value what `_GetCellValue` gave.
    virtual void _SetCellValue(int line, int column, const CString& value);
    /// @param line, column a cell. @param text what was committed.
    /// @return the value that it gives the cell; the text itself unless overridden.
    virtual CString _ReadCellValue(int line, int column, const CString& text) const;
    /// Tells the host that the user changed a cell; `TextEdited` unless overridden.
    /// @param line, column the cell.
    virtual void _TellCellEdited(int line, int column);
    /// A row came back with its texts and data; texts that depend on more than that are made anew here.
    /// @param line the row.
    virtual void _UpdateRowTexts(int line);
    /// @param line, column a cell.
    /// @return what it is sorted by, compared character by character; the text in lower case unless
    /// overridden.
    virtual CString _GetSortKey(int line, int column) const;
    /// @param column the cell's. @return the step's name for `GetUndoStack()`, as the number of a text.
    virtual UINT _GetEditStepText(int column) const;
    /// @return the number of the text that names the list.
    UINT _GetNameText() const override = 0;

    // For operations of the host. Silent.

    /// Removes rows for good; a step of the user can not bring them back. @param lines in any order.
    void RemoveLines(const CArray<int, int>& lines);
    /// Removes all of them for good.
    void RemoveAllLines();
    /// @return the selected text of the open cell, or the texts of the selected rows.
    CStringArray GetFocusTexts() const;
    /// @return the texts of the selected rows.
    CStringArray GetSelectedTexts() const;
    ///@{
    /// Text colours, as `SetItemBkColor` has the backgrounds. @param line a row.
    /// @param normal, selected, disabled 0xAARRGGBB; may be null.
    void SetRowTextColors(int line, const DWORD* normal, const DWORD* selected, const DWORD* disabled);
    void GetRowTextColors(int line, DWORD* normal, DWORD* selected, DWORD* disabled) const;
    ///@}
    /// @return whether what the user has made of the rows differs from what it was at
    /// `SetUserModified(false)`, the beginning at first: coming back to that by undo, redo or a contrary edit
    /// is no change.
    bool IsUserModified() const;
    /// @param modified what `IsUserModified` says from now on.
    void SetUserModified(bool modified);

    BOOL _GetItemBKColor(int line, int column, int state, DWORD& colour) override;
    BOOL _GetItemTextColor(int line, int column, int state, DWORD& colour) override;
    BOOL _CanEditCell(int line, int column) override;
    BOOL _IsMultiLineCell(int line, int column) override;
    void _CommitEdit(int line, int column, const CString& text) override;
    void _OnItemsModifying(int kind, const int* lines, int count) override;
    BOOL _BeginRowDrag(int line) override;

    void OnPaint(Graphics& graphics) override;
    void OnContextMenu(CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnTimer(UINT id) override;
    void OnSkinChanged() override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
