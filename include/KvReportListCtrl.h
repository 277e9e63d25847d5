/// @file
/// The report list: rows of individual heights in columns under a header. What the log, the subtitle list and
/// the text list are built upon.
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
    kKvReportInserted = 1,     ///< lines came
    kKvReportRemoved = 2,      ///< lines went
    kKvReportAllRemoved = 3,   ///< all lines went
    kKvReportTextChanged = 4,  ///< a cell's text
    kKvReportOrderChanged = 5, ///< the lines were sorted
};

/// Which of its colours a cell shows: disabled in a disabled list, else selected in a selected line.
enum EKvReportState : int
{
    kKvReportNormal = 0,   ///< neither of the others
    kKvReportSelected = 1, ///< in a selected line
    kKvReportDisabled = 2, ///< in a disabled list
};

/// How a text lies in its cell; always in the middle of the height.
enum EKvReportTextStyle : int
{
    kKvReportLeft = 0,   ///< at the left edge
    kKvReportCentre = 1, ///< in the middle
    kKvReportRight = 2,  ///< at the right edge
};

/// How much of a cell stays free left and right of its text, in logical pixels.
inline constexpr int kKvReportTextMargin = 4;

/// A part of a cell's text that is drawn in colours of its own (0xAARRGGBB). Counted in the stored text.
struct KvReportMark
{
    std::size_t begin;  ///< the first character
    std::size_t length; ///< how many
    DWORD back;         ///< behind it
    DWORD text;         ///< of the characters
};

/// One line as a filter sees it; valid during the call only.
class KV_API KvReportRow
{
public:
    /// @param column any. @return the text; empty for a column that the line does not have.
    std::wstring_view Text(int column) const;
    /// @return what `SetItemData` gave the line, 0 before.
    std::uint64_t Data() const;
    /// @return its height in logical pixels.
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
    /// Lines between the cells.
    Q_PROPERTY(bool gridLines READ HasGridLines WRITE ShowGridLines)

public:
    /// A control that is not created yet.
    CKvReportListCtrl();
    ~CKvReportListCtrl() override;

    /// Creates the list. Tab always reaches it.
    /// @param rect, style, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    virtual int Create(const CRect& rect, UINT style, CWnd* parent, DWORD id);

    // What the list holds.

    /// @return how many lines there are.
    int GetItemCount() const;
    /// @return how many columns there are.
    int GetColumnCount() const;
    /// @param column any. @return empty for one out of range.
    CString GetHeaderText(int column) const;
    /// @param line, column a cell. @return the stored text; empty out of range.
    CString GetItemText(int line, int column) const;
    /// @param line any. @return 0 out of range.
    int GetItemHeight(int line) const;
    /// @param column any. @return the width that it has now; 0 out of range.
    int GetColumnWidth(int column) const;
    /// An auto-sized column keeps that width from then on. @param column any. @param width 20 at least.
    /// @return 1; 0 out of range.
    int SetColumnWidth(int column, int width);
    /// The cell's own colours. @param line, column a cell.
    /// @param back, text receive 0xAARRGGBB, and are left alone where it has none of its own; may be null.
    /// @return 1; 0 where it has neither, or out of range.
    virtual BOOL GetCellColors(int line, int column, DWORD* back, DWORD* text) const;
    ///@{
    /// The first line whose whole text in a column is the same, exact case; no wrap. @param text the text.
    /// @param column any. @param from the first to look at; below 0 is 0. @return -1 when there is none.
    int FindItem(const wchar_t* text, int column, int from = 0) const;
    int FindItem(const CString& text, int column, int from = 0) const;
    ///@}

    // The selection. It follows its lines. Setters are silent.

    ///@{
    /// @param lines receives the selected lines alone, ascending. @return how many.
    int GetSelItems(CArray<int, int>& lines) const;
    int GetAllSelItems(CArray<int, int>& lines) const;
    ///@}
    /// @param line any. @return 1; 0 also out of range.
    BOOL IsItemSelected(int line) const;
    /// @return how many lines are selected.
    int GetSelCount() const;
    /// @return the highest selected line; -1 when none is.
    int GetLastSelItem() const;
    /// Selects a line alone and makes it the current one. Does not scroll.
    /// @param line -1 clears the selection, another one out of range changes nothing.
    void SetSelItem(int line);
    /// Selects lines alone; the last one becomes current. @param lines those out of range are left out.
    void SetSelItem(const CArray<int, int>& lines);

    // What is in view. Hidden lines (see `SetRowFilter`) are never in view.

    /// @return the first line that is wholly or partly in view; 0 when none is.
    int GetTopIndex() const;
    /// @return how many lines are wholly in view.
    int GetVisibleCount() const;

    /// Lines between the cells; on at first. @param show 0 is off.
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
        /// @param list must outlive it.
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
    int CreateSelf() override;

    // Columns.

    /// Adds a column at the right. @param header its header. @param width 20 at least. @return its number.
    int InsertColumn(const wchar_t* header, int width);
    /// Adds a column whose width grows with the list's font until host or user set one.
    /// @param header its header. @param width in a font of usual size and in smaller ones, 20 at least.
    /// @return its number.
    int _InsertGrowingColumn(const wchar_t* header, int width);
    /// @param column one out of range is ignored. @param header null is empty.
    void SetHeaderText(int column, const wchar_t* header);
    /// Lets a column take what the others leave of the width for cells. One column at a time; ends when that
    /// column's width is set by host or user. @param column -1 turns it off.
    /// @param minimum not less than that.
    void SetAutoSizeColumn(int column, int minimum = 40);
    /// The header (24 high, higher where the font needs it); shown at first. @param show 0 hides it.
    void ShowHeader(BOOL show);
    /// Keeps some room free below cells and scroll bars, for a child of the derived list's.
    /// @param height 0 at first.
    void SetFooterHeight(int height);

    // Lines. Each operation changes the lines, then calls `_OnNotifyItemModify` once, then returns.

    /// For lines for which none is given; those that are there keep theirs. Until it is set the height is 24,
    /// more where the font needs it, and lines without one of their own follow the font.
    /// @param height at least 1.
    void SetDefaultItemHeight(int height);
    /// @return the height that the next line without one gets.
    int GetDefaultItemHeight() const;
    /// @return the height that a line needs in the list's font, at least 24.
    int _TextHeight() const;
    /// Inserts a line before `line`. @param line 0 … count, or -1 for the end. @param texts one a column;
    /// missing ones are empty. @param height 0 takes the default. @return its index; -1 out of range.
    int InsertRow(int line, std::initializer_list<std::wstring_view> texts, int height = 0);
    /// Inserts several at once. @param line 0 … count, or -1 for the end. @param rows texts, one a column.
    /// @param height 0 takes the default.
    /// @return the first one's index; -1 out of range or when there is none.
    int InsertRows(int line, const std::vector<CStringArray>& rows, int height = 0);
    /// Inserts each of them at a place of its own, in one pass and one notification.
    /// @param lines where they stand then: one a row, ascending, each once. @param rows, height as above.
    /// @return how many; 0, with nothing changed, for lines that are no such places.
    int InsertRows(const CArray<int, int>& lines, const std::vector<CStringArray>& rows, int height = 0);
    /// Removes lines; an open editor in one of them is dropped.
    /// @param line the first. @param count those beyond the end do not count. @return how many went.
    int RemoveRows(int line, int count = 1);
    /// Removes lines in one notification. @param lines in any order, doubles count once. @return how many.
    int RemoveRows(const CArray<int, int>& lines);
    /// Tells of kind 3, also on an empty list.
    void RemoveAllRows();
    /// Puts the lines into another order. @param order a permutation: the line that is to come to place i
    /// stands at order[i] now. @return 1; 0, with nothing changed, when it is none.
    int SortRows(const CArray<int, int>& order);
    /// The same text tells nothing. @param line, column a cell. @param text any. @return 1; 0 out of range.
    int SetItemText(int line, int column, const CString& text);
    /// The stored text without a copy; valid until the line's texts or the lines change.
    /// @param line, column a cell. @return empty out of range.
    std::wstring_view ViewItemText(int line, int column) const;
    /// @param line any. @param height see the class. @return 1; 0 out of range, and for a height below 1.
    int SetItemHeight(int line, int height);
    /// The cell's own colours. @param line, column a cell. @param back, text null leaves it as it is.
    /// @return 1; 0 out of range.
    int SetCellColors(int line, int column, const DWORD* back, const DWORD* text);
    /// The cell shows the list's colours again. @param line, column a cell. @return 1; 0 out of range.
    int ClearCellColors(int line, int column);
    /// @param line any. @return 64 bits of the derived list's own, 0 at first and out of range.
    std::uint64_t GetItemData(int line) const;
    /// Tells of kind 4. @param line any. @param value any. @return 1; 0 out of range.
    int SetItemData(int line, std::uint64_t value);
    /// @param line any. @return the line's number: above 0, never used again; 0 out of range.
    std::uint64_t GetRowId(int line) const;
    /// @return the number that the next new line gets; those that are there have smaller ones.
    std::uint64_t GetNextRowId() const;
    /// Quick; the first call after a sort makes an index in one pass over the lines.
    /// @param id a line's number. @return where the line is; -1 when it is gone.
    int FindRow(std::uint64_t id) const;

    /// Rows changed. @param kind an EKvReportModify. @param rows ascending: 1 where the new ones are now; 2
    /// where the removed ones were; 3 empty; 4 the one whose text changed; 5 the permutation, as `SortRows`
    /// has it. @param column of kind 4, else -1. An override may change further texts, colours and heights,
    /// but not the lines.
    virtual void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column);

    /// Lines are about to change; an override may read the list, not change it.
    /// @param kind 4 to get another text or other data, 2 to go, 3 all to go. @param lines ascending.
    /// @param count of them; none of kind 3.
    virtual void _OnItemsModifying(int kind, const int* lines, int count);

    // Selection and view by the derived list. Silent.

    /// @param first, last both belong to it, as far as they exist. @param select 0 takes them out.
    void SelectRange(int first, int last, BOOL select);
    /// Selects all lines that the filter shows, and those alone.
    void SelectAllShown();
    /// @return the line that has the keyboard's focus; -1 for none. It follows its line.
    int GetCurrentItem() const;
    /// Makes a line current, and the anchor of Shift; no scrolling, no selecting. @param line -1 for none.
    void SetCurrentItem(int line);
    /// @return the column at which F2 opens an editor; 0 at first.
    int GetCurrentColumn() const;
    /// Scrolls by the least so that the whole line is in view, its top where it is higher than the view.
    /// @param line a hidden one does nothing.
    void EnsureVisible(int line);
    /// @return 1 when the last line that is shown ends in view, and in an empty list.
    BOOL IsEndInView() const;
    /// @return how far the lines are scrolled, 0 … 2,147,483,647: beyond that `y` says no more, and only
    /// `EnsureVisible` scrolls there.
    CPoint GetScrollOffset() const;
    /// @param offset brought into the range.
    void SetScrollOffset(CPoint offset);
    /// @param enable 0 keeps the screen as it is until a matching 1; they nest. Queries answer truly.
    void _PrivateEnableUpdate(int enable);
    /// Repaints all cells in the next frame.
    void UpdateCells();
    /// Repaints one line in the next frame. @param line one out of range is ignored.
    void UpdateLine(int line);

    // The filter.

    /// Shows some lines, new and changed ones likewise. Selection and top line stay where they are; when the
    /// top line becomes hidden, the next one shown takes its place. @param accepts empty shows all.
    void SetRowFilter(std::function<bool(const KvReportRow&)> accepts);
    /// @param line any. @return 1; 0 also out of range.
    BOOL IsRowShown(int line) const;
    /// @return how many lines are shown.
    int GetShownCount() const;
    /// @return how many of the lines shown are selected.
    int GetShownSelCount() const;
    /// @param line may be -1 or the count. @param step 1 or -1.
    /// @return the nearest line shown behind or before it; -1 when there is none.
    int NextShownRow(int line, int step) const;

    // Places, in client coordinates.

    /// @param line, column a cell.
    /// @return its rectangle wherever it is, also outside of the view; empty for a hidden or unknown one.
    CRect GetCellRect(int line, int column) const;
    /// @param point of the cells. @param line, column receive what is under it; -1 where there is none.
    /// @return 1 when there is a line.
    BOOL HitTest(CPoint point, int& line, int& column) const;
    /// @return the area of the cells, without header and scroll bars.
    CRect GetCellsRect() const;

    // Drawing.

    /// Draws what a cell holds over its background: the text, with a mark for each line break, cut with an
    /// ellipsis. @param graphics clipped to `GetCellRect(line, column)`. @param line, column the cell.
    virtual void DrawItem(Graphics* graphics, int line, int column);
    /// The same elsewhere. @param graphics the painter. @param rect, font where and how.
    /// @param line, column the cell.
    /// @param marks ascending, none over another. What is cut off is marked at the ellipsis.
    void DrawCellText(Graphics* graphics, const CRect& rect, int line, int column, const QFont& font,
                      const std::vector<KvReportMark>& marks = {});
    /// @param line, column a cell.
    /// @return an EKvReportTextStyle; the list's own (`SetTextStyle`) unless overridden.
    virtual int _GetColumnTextStyle(int line, int column);
    /// @param style an EKvReportTextStyle, for the whole list; left at first.
    void SetTextStyle(int style);
    ///@{
    /// A colour of a cell. @param line, column a cell; column -1 is the rest of the line, beside the columns.
    /// @param state an EKvReportState. @param colour receives 0xAARRGGBB. @return 1; 0 takes the theme's.
    /// Unless overridden: in the normal state the cell's own, in the others none.
    virtual BOOL _GetItemBKColor(int line, int column, int state, DWORD& colour);
    virtual BOOL _GetItemTextColor(int line, int column, int state, DWORD& colour);
    ///@}
    /// @return the list's text colour, enabled or disabled, for content that follows no cell.
    DWORD GetListTextColor() const;

    /// @return what a screen reader calls the list where its accessible name is empty, as the number of a
    /// text; 0, for none, unless overridden.
    virtual UINT _GetNameText() const;
    /// @param line a line. @return what a screen reader is told of it beside its texts and states ("plays");
    /// nothing unless overridden.
    virtual CString _GetItemDescription(int line) const;
    /// @param line, column a cell. @return what a screen reader calls it; the stored text unless overridden.
    virtual CString _GetCellName(int line, int column) const;

    // In-place editing. The texts of a cell are checked and stored by the derived list.

    /// @param line, column a cell. @return whether the user may edit it; 0 unless overridden.
    virtual BOOL _CanEditCell(int line, int column);
    /// @param line, column a cell. @return whether Shift+Enter breaks the line there; 0 unless overridden.
    /// Where not, breaks of a pasted text become blanks.
    virtual BOOL _IsMultiLineCell(int line, int column);
    /// @param line, column a cell. @return what the editor begins with; the stored text unless overridden.
    virtual CString _GetEditText(int line, int column);
    /// @param line, column the open cell. @param pasted what is about to be pasted.
    /// @return 1 when it is to replace the whole text; 0 unless overridden.
    virtual BOOL _PasteReplacesCell(int line, int column, const CString& pasted);
    /// @param line, column the open cell. @param text what is to be committed.
    /// @param why receives the reason.
    /// @return 1; 0 refuses: the cell stays open, with the focus, and a tool tip shows `why`.
    virtual BOOL _ValidateEdit(int line, int column, const CString& text, CString& why);
    /// The user committed a text that differs from the one that the editor began with; stores it unless
    /// overridden. The editor is closed by then. An override may change lines, notify, and delete the list.
    /// @param line, column the cell. @param text the text.
    virtual void _CommitEdit(int line, int column, const CString& text);
    /// The user cancelled. @param line, column the cell; -1 when the line went while it was open.
    virtual void _CancelEdit(int line, int column);
    /// No cell is open any more, whatever came of its text. From the event loop, so that it may scroll: what
    /// closed the cell is over.
    virtual void _OnEditClosed();
    /// The text in the open editor changed, or its caret moved: fits the editor to its text and scrolls so
    /// that the caret stays 5 pixels inside of the cells' area.
    virtual void _UpdateTextWidth();

    /// Opens the editor where `_CanEditCell` lets it, scrolled into view; commits one that is open.
    /// @param line, column a cell. @return 1 when it is open.
    int EditCell(int line, int column);
    /// Ends the editing. @param commit 0 cancels. @return 1; 0 when the text was refused.
    int EndEdit(BOOL commit);
    /// @return 1 while a cell is open.
    BOOL IsEditing() const;
    ///@{
    /// @return the line or column of the open cell, which follows its line; -1 when none is.
    int GetEditLine() const;
    int GetEditColumn() const;
    ///@}
    ///@{
    /// @return the text in the open editor, or the part of it that is selected; empty without one.
    CString GetOpenText() const;
    CString GetOpenSelection() const;
    ///@}

    // What the user does; nothing unless overridden.

    /// A header was clicked, not dragged. @param column its column.
    virtual void _OnHeaderClick(int column);
    /// The user scrolled: by wheel, bar (then from the event loop) or key, or by dragging beyond the view.
    /// Only when the list moved. An override may delete the list.
    virtual void _OnUserScroll();
    /// A selected line is dragged. @param line it.
    /// @return 1: drag and drop was done; 0 drags the selection on.
    virtual BOOL _BeginRowDrag(int line);
    /// A double click on a cell, or Enter on the current line; the double click edits otherwise.
    /// @param line, column the cell; column -1 by Enter. @return 1 when used.
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
    bool HasGridLines() const;
    friend class CKvTextListBase;
    friend class KvReportListModel;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
