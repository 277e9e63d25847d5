// The report list: rows of individual heights in columns under a header. What the log, the subtitle list and
// the text list are built upon.
#pragma once

#include "KvWnd.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

/// What changed, as `_OnNotifyItemModify` is told.
enum EKvReportModify : int
{
    kKvReportInserted = 1,
    kKvReportRemoved = 2,
    kKvReportAllRemoved = 3,
    kKvReportTextChanged = 4,
    kKvReportOrderChanged = 5,
};

/// Which of its colours a cell shows: disabled in a disabled list, else selected in a selected line.
enum EKvReportState : int
{
    kKvReportNormal = 0,
    kKvReportSelected = 1,
    kKvReportDisabled = 2,
};

/// How a text lies in its cell; always in the middle of the height.
enum EKvReportTextStyle : int
{
    kKvReportLeft = 0,
    kKvReportCentre = 1,
    kKvReportRight = 2,
};

/// How much of a cell stays free left and right of its text, in logical pixels.
inline constexpr int kKvReportTextMargin = 4;

/// A part of a cell's text that is drawn in colours of its own (0xAARRGGBB). Counted in the stored text.
struct KvReportMark
{
    std::size_t begin;
    std::size_t length;
    DWORD back;
    DWORD text;
};

/// One line as a filter sees it; valid during the call only.
class KV_API KvReportRow
{
public:
    /// Empty for a column that the line does not have.
    std::wstring_view Text(int column) const;
    /// What `SetItemData` gave the line, 0 before.
    std::uint64_t Data() const;
    /// In logical pixels.
    int Height() const;

private:
    friend class CKvReportListCtrl;
    explicit KvReportRow(const void* row) : m_row(row) {}
    const void* m_row;
};

/// A list of lines in columns. Lines and columns are counted from 0; sizes are logical pixels.
///
/// Every query answers as if all that was asked for had been laid out, selected and scrolled at once; the
/// screen follows once a frame. A line or column out of range is never an error: a query gives the result
/// that its comment names, an operation does nothing.
///
/// A line keeps its height, texts, colours, data, selection and number (`GetRowId`) wherever it moves. Lines
/// that are inserted or removed above the view leave what is in view where it is.
///
/// A right press selects the line under it, unless it is selected, before the context menu opens.
///
/// Keyboard: arrows, Page Up, Page Down, Home and End move the current line and select it; with Shift they
/// select from the anchor, with Ctrl they move alone. Ctrl+A selects all, Space the current line
/// (Ctrl+Space turns it over). F2 or a double click edits where the list lets it: Enter commits and goes to
/// the next line, Tab (Shift+Tab) commits and edits the next (previous) cell, Shift+Enter breaks the line
/// where the cell takes several, Escape cancels. Escape also undoes the dragging of a column edge.
///
/// A cell that loses the focus is committed, from the event loop; where its text is refused it stays open
/// and takes the focus back.
///
/// An open cell is cancelled when the list is disabled. When the list is destroyed, or its line goes, what
/// was typed in it is dropped.
///
/// A column is 20 to 32,767 wide, a line 1 to 32,767 high; what is given beyond that comes down to it.
///
/// The edge between two columns follows the pointer. Where the auto-sized column stands left of both, the
/// right one of the two gives way; else the left one alone changes its width. The edge behind the last
/// column can not be taken while an auto-sized column before it fills the width.
class KV_API CKvReportListCtrl : public CKvWnd
{
    Q_OBJECT

public:
    CKvReportListCtrl();
    ~CKvReportListCtrl() override;

    /// Creates the list. Tab always reaches it.
    /// @param style see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    virtual int Create(const CRect& rect, UINT style, CWnd* parent, DWORD id);

    // What the list holds.

    int GetItemCount() const;
    int GetColumnCount() const;
    /// Empty for a column out of range.
    CString GetHeaderText(int column) const;
    /// The stored text; empty out of range.
    CString GetItemText(int line, int column) const;
    /// 0 out of range.
    int GetItemHeight(int line) const;
    /// The width that the column has now; 0 out of range.
    int GetColumnWidth(int column) const;
    /// Sets a width, 20 at least; an auto-sized column keeps that width from then on.
    /// @return 1; 0 out of range.
    int SetColumnWidth(int column, int width);
    /// The cell's own colours (0xAARRGGBB). @param back, text may be null; a colour that the cell has not of
    /// its own is left alone. @return 1; 0 where it has neither, or out of range.
    virtual BOOL GetCellColors(int line, int column, DWORD* back, DWORD* text) const;
    /// The first line from `from` on whose whole text in that column is `text`, exact case; no wrap.
    /// @param from below 0 is 0. @return -1 when there is none.
    int FindItem(const wchar_t* text, int column, int from = 0) const;
    int FindItem(const CString& text, int column, int from = 0) const;

    // The selection. It follows its lines. Setters are silent.

    /// Replaces `lines` by the selected lines, ascending. @return how many.
    int GetSelItems(CArray<int, int>& lines) const;
    /// The same under the name that the text lists have it.
    int GetAllSelItems(CArray<int, int>& lines) const;
    BOOL IsItemSelected(int line) const;
    /// How many lines are selected.
    int GetSelCount() const;
    /// The highest selected line; -1 when none is.
    int GetLastSelItem() const;
    /// Selects that line alone and makes it the current one; -1 clears the selection, another line out of
    /// range changes nothing. Does not scroll.
    void SetSelItem(int line);
    /// Selects those lines alone; those out of range are left out. The last one becomes the current line.
    void SetSelItem(const CArray<int, int>& lines);

    // What is in view. Hidden lines (see `SetRowFilter`) are never in view.

    /// The first line that is wholly or partly in view; 0 when none is.
    int GetTopIndex() const;
    /// How many lines are wholly in view.
    int GetVisibleCount() const;

    /// Lines between the cells; on at first.
    void ShowGridLines(BOOL show);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user changed the selection.
    void SelectionEdited();

protected:
    /// Keeps the screen as it is for as long as it lives; they nest. Queries answer truly all the same.
    class FrameHold
    {
    public:
        explicit FrameHold(CKvReportListCtrl& list) : m_list(list) { m_list._PrivateEnableUpdate(0); }
        ~FrameHold() { m_list._PrivateEnableUpdate(1); }
        FrameHold(const FrameHold&) = delete;
        FrameHold& operator=(const FrameHold&) = delete;

    private:
        CKvReportListCtrl& m_list;
    };

    /// A public query of lines or selection, or a setter of the selection, is about to look at the lines. A
    /// derived list whose lines come late brings them up to date here; never called from within the base
    /// list's own work.
    virtual void _BeforeQuery() const;

    // Columns.

    /// Adds a column at the right. @param width 20 at least. @return its number.
    int InsertColumn(const wchar_t* header, int width);
    void SetHeaderText(int column, const wchar_t* header);
    /// Lets the column take what the others leave of the width for cells, but not less than `minimum`; -1
    /// turns it off. One column at a time; ends when that column's width is set by host or user.
    void SetAutoSizeColumn(int column, int minimum = 40);
    /// Shows or hides the header (24 high); shown at first.
    void ShowHeader(BOOL show);
    /// Keeps that much free below cells and scroll bars, for a child of the derived list's; 0 at first.
    void SetFooterHeight(int height);

    // Lines. Each operation changes the lines, then calls `_OnNotifyItemModify` once, then returns.

    /// The height of a line for which none is given; 24 at first. Lines that are there keep theirs.
    void SetDefaultItemHeight(int height);
    /// Inserts a line before `line`. @param line 0 … count, or -1 for the end. @param texts one a column;
    /// missing ones are empty. @param height 0 takes the default. @return its index; -1 out of range.
    int InsertRow(int line, std::initializer_list<std::wstring_view> texts, int height = 0);
    /// Inserts several at once. @return the first one's index; -1 out of range or when there is none.
    int InsertRows(int line, const std::vector<CStringArray>& rows, int height = 0);
    /// Inserts each of them at a place of its own, in one pass and one notification.
    /// @param lines where they stand then: one a row, ascending, each once. @return how many; 0, with
    /// nothing changed, for lines that are no such places.
    int InsertRows(const CArray<int, int>& lines, const std::vector<CStringArray>& rows, int height = 0);
    /// Removes `count` lines from `line` on; those beyond the end do not count. An open editor in one of
    /// them is dropped. @return how many went.
    int RemoveRows(int line, int count = 1);
    /// Removes those lines, in one notification. @param lines in any order; doubles count once.
    int RemoveRows(const CArray<int, int>& lines);
    /// Tells of kind 3, also on an empty list.
    void RemoveAllRows();
    /// Puts the lines into another order. @param order a permutation: the line that is to come to place i
    /// stands at order[i] now. @return 1; 0, with nothing changed, when it is none.
    int SortRows(const CArray<int, int>& order);
    /// @return 1; 0 out of range. Setting the same text tells nothing and gives 1.
    int SetItemText(int line, int column, const CString& text);
    /// The stored text without a copy; valid until the line's texts or the lines change. Empty out of range.
    std::wstring_view ViewItemText(int line, int column) const;
    int SetItemHeight(int line, int height);
    /// The cell's own colours; a null one is left as it is. Tells nothing.
    int SetCellColors(int line, int column, const DWORD* back, const DWORD* text);
    /// The cell shows the list's colours again.
    int ClearCellColors(int line, int column);
    /// 64 bits of the derived list's own, 0 at first.
    std::uint64_t GetItemData(int line) const;
    int SetItemData(int line, std::uint64_t value);
    /// The line's number: above 0, never used again; 0 out of range.
    std::uint64_t GetRowId(int line) const;
    /// The number that the next new line gets; those that are there have smaller ones.
    std::uint64_t GetNextRowId() const;
    /// Where the line with that number is; -1 when it is gone. Quick; the first call after a sort makes an
    /// index in one pass over the lines.
    int FindRow(std::uint64_t id) const;

    /// Rows changed. @param kind an EKvReportModify. @param rows ascending: 1 where the new ones are now; 2
    /// where the removed ones were; 3 empty; 4 the one whose text changed; 5 the permutation, as `SortRows`
    /// has it. @param column of kind 4, else -1. An override may change further texts, colours and heights,
    /// but not the lines.
    virtual void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column);

    /// Lines are about to change: to get another text or other data (kind 4), to go (2), all to go (3).
    /// @param lines ascending, `count` of them; none of kind 3. An override may read the list, not change it.
    virtual void _OnItemsModifying(int kind, const int* lines, int count);

    // Selection and view by the derived list. Silent.

    void SelectRange(int first, int last, BOOL select);
    /// Selects all lines that the filter shows, and those alone.
    void SelectAllShown();
    /// The line that has the keyboard's focus; -1 for none. It follows its line.
    int GetCurrentItem() const;
    /// Makes it the current line, and the anchor of Shift; -1 for none. Does not scroll, nor select.
    void SetCurrentItem(int line);
    /// The column at which F2 opens an editor; 0 at first.
    int GetCurrentColumn() const;
    /// Scrolls by the least so that the whole line is in view, its top where it is higher than the view. A
    /// hidden line does nothing.
    void EnsureVisible(int line);
    /// True when the last line that is shown ends in view, and in an empty list.
    BOOL IsEndInView() const;
    /// How far the lines are scrolled, 0 … 2,147,483,647: beyond that `y` says no more, and only
    /// `EnsureVisible` scrolls there. `SetScrollOffset` takes what is possible of it.
    CPoint GetScrollOffset() const;
    void SetScrollOffset(CPoint offset);
    /// 0 keeps the screen as it is until a matching 1; they nest. Queries answer truly all the same.
    void _PrivateEnableUpdate(int enable);
    /// Repaints all cells, or one line, in the next frame.
    void UpdateCells();
    void UpdateLine(int line);

    // The filter.

    /// Shows the lines for which `accepts` is true, new and changed ones likewise; an empty function shows
    /// all. Selection and top line stay where they are; when the top line becomes hidden, the next one shown
    /// takes its place.
    void SetRowFilter(std::function<bool(const KvReportRow&)> accepts);
    BOOL IsRowShown(int line) const;
    int GetShownCount() const;
    /// How many of the lines shown are selected.
    int GetShownSelCount() const;
    /// The nearest line shown behind (step 1) or before (step -1) `line`, which may be -1 or the count; -1
    /// when there is none.
    int NextShownRow(int line, int step) const;

    // Places, in client coordinates.

    /// The cell's rectangle wherever it is, also outside of the view; empty for a hidden or unknown one.
    CRect GetCellRect(int line, int column) const;
    /// The line and column under a point of the cells. @param line, column -1 where there is none.
    /// @return 1 when there is a line.
    BOOL HitTest(CPoint point, int& line, int& column) const;
    /// The area of the cells, without header and scroll bars.
    CRect GetCellsRect() const;

    // Drawing.

    /// Draws what a cell holds over its background: the text, with a mark for each line break, cut with an
    /// ellipsis. The painter is clipped to `GetCellRect(line, column)`.
    virtual void DrawItem(Graphics* graphics, int line, int column);
    /// The same into another rectangle, in another font.
    /// @param marks ascending, none over another. What is cut off is marked at the ellipsis.
    void DrawCellText(Graphics* graphics, const CRect& rect, int line, int column, const QFont& font,
                      const std::vector<KvReportMark>& marks = {});
    /// @return an EKvReportTextStyle; the list's own (`SetTextStyle`) unless overridden.
    virtual int _GetColumnTextStyle(int line, int column);
    void SetTextStyle(int style);
    /// The colours of a cell in that state (an EKvReportState); column -1 is the rest of the line, beside the
    /// columns. @return 1 with `colour` set; 0 takes the
    /// theme's. Unless overridden: in the normal state the cell's own, in the others none.
    virtual BOOL _GetItemBKColor(int line, int column, int state, DWORD& colour);
    virtual BOOL _GetItemTextColor(int line, int column, int state, DWORD& colour);
    /// The list's text colour, enabled or disabled, for content that follows no cell.
    DWORD GetListTextColor() const;

    /// What a screen reader is told of a line beside its texts and states ("plays"); nothing unless
    /// overridden.
    virtual CString _GetItemDescription(int line) const;
    /// What a screen reader calls a cell; the stored text unless overridden.
    virtual CString _GetCellName(int line, int column) const;

    // In-place editing. The texts of a cell are checked and stored by the derived list.

    /// Whether the user may edit that cell; no unless overridden.
    virtual BOOL _CanEditCell(int line, int column);
    /// Whether Shift+Enter breaks the line there; no unless overridden. Where not, breaks of a pasted text
    /// become blanks.
    virtual BOOL _IsMultiLineCell(int line, int column);
    /// The text that the editor begins with; the stored one unless overridden.
    virtual CString _GetEditText(int line, int column);
    /// A text is about to be pasted into the open editor. @return 1 when it is to replace the whole text.
    virtual BOOL _PasteReplacesCell(int line, int column, const CString& pasted);
    /// @return 1; 0 refuses: the cell stays open, with the focus, and a tool tip shows `why`.
    virtual BOOL _ValidateEdit(int line, int column, const CString& text, CString& why);
    /// The user committed a text that differs from the one that the editor began with; stores it unless
    /// overridden. The editor is closed by then. An override may change lines, notify, and delete the list.
    virtual void _CommitEdit(int line, int column, const CString& text);
    /// The user cancelled, or the line went while its cell was open (then -1).
    virtual void _CancelEdit(int line, int column);
    /// No cell is open any more, whatever came of its text. From the event loop, so that it may scroll: what
    /// closed the cell is over.
    virtual void _OnEditClosed();
    /// The text in the open editor changed, or its caret moved: fits the editor to its text and scrolls so
    /// that the caret stays 5 pixels inside of the cells' area.
    virtual void _UpdateTextWidth();

    /// Opens the editor in a cell where `_CanEditCell` lets it, scrolled into view; one that is open is
    /// committed before. @return 1 when it is open.
    int EditCell(int line, int column);
    /// Ends the editing. @param commit 0 cancels. @return 1; 0 when the text was refused.
    int EndEdit(BOOL commit);
    BOOL IsEditing() const;
    /// The cell that is open; -1 when none is. It follows its line.
    int GetEditLine() const;
    int GetEditColumn() const;
    /// The text in the open editor, and the part of it that is selected; empty without one.
    CString GetOpenText() const;
    CString GetOpenSelection() const;

    // What the user does; nothing unless overridden.

    /// A header was clicked, not dragged.
    virtual void _OnHeaderClick(int column);
    /// The user scrolled: by wheel, bar (then from the event loop) or key, or by dragging beyond the view.
    /// Only when the list moved. An override may delete the list.
    virtual void _OnUserScroll();
    /// A selected line is dragged. @return 1 when a drag and drop was done; 0 drags the selection on.
    virtual BOOL _BeginRowDrag(int line);
    /// A double click on a cell, or Enter on the current line (column -1); the double click edits otherwise.
    /// @return 1 when used.
    virtual BOOL _OnActivate(int line, int column);

    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnRButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    void OnMouseLeave() override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnTimer(UINT id) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class KvReportListModel;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
