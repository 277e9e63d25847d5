// The report list's private part: what the handlers, the drawing and the editing share.
#pragma once

#include "KvReportListCtrl.h"
#include "platform/AccessibleTable.h"
#include "platform/ReportEditor.h"
#include "platform/ReportLayout.h"
#include "platform/ReportObserver.h"
#include "platform/ReportScreen.h"
#include "platform/ReportView.h"
#include "platform/SkinBar.h"

#include <QFontMetricsF>
#include <QPointer>
#include <QRegion>

#include <algorithm>
#include <optional>

inline constexpr int kReportCaretMargin = 5; ///< how far the caret stays from the edges of the cells' area

struct CKvReportListCtrl::Impl : kv::AccessibleParts, kv::AccessibleTable, kv::ReportView
{
    using Key = kv::AccessibleParts::Key;
    /// What the pointer is dragging.
    enum class Drag
    {
        kNone,
        kEdge,   ///< a column's right edge
        kHeader, ///< pressed on a header, to be clicked
        kSelect, ///< the selection
        kRow,    ///< a selected line: becomes a drag and drop, or a plain click
    };
    struct Theme
    {
        QColor back, text, disabledText, selectedBack, selectedText, header, grid;
        void Load();
    };

    explicit Impl(CKvReportListCtrl& control);
    void LoadTheme();

    // Places.
    bool IsLine(int line) const { return line >= 0 && line < rows.Count(); }
    bool IsColumn(int column) const { return column >= 0 && column < layout.ColumnCount(); }
    bool IsCell(int line, int column) const { return IsLine(line) && IsColumn(column); }
    QRect RowRect(int line) const; ///< over the width of the cells; may lie outside of them
    QRect CellRect(int line, int column) const;
    QRect CellRect(const QRect& row, int column) const;
    /// After a change of columns, size or the editor.
    void LayOut();
    int TextHeight() const;
    void FontChanged();
    kv::ReportLayout LaidOut() const;
    int ShownHeight(int line) const { return rows.Row(line).shown ? rows.Row(line).height : 0; }
    bool IsEditorInLine() const { return editor && IsLine(editLine); }
    /// Where the open editor ends, content y; 0 without one.
    std::int64_t EditorBottom() const;
    /// After a change of the rows' heights or number: keeps scroll limits and bars up to date.
    void RowsResized();
    void ScrollTo(int x, std::int64_t y);
    void Show(int line);
    std::int64_t OffsetOf(int line) const;
    bool ScrollsTo(int x, std::int64_t y);
    bool ScrollByUser(int x, std::int64_t y); ///< false: there is nothing that way
    void ScrollByBar(int x, std::int64_t y);

    // The frame.
    void RequestFrame();
    void RequestWholeFrame();
    /// After a change of the selection.
    void RequestSelectionFrame();
    void Frame();
    void SyncBars();
    /// Moves and invalidates on the screen what differs from the picture of the last frame.
    void UpdateScreen();
    int ScreenUnit() const;
    std::vector<kv::ReportScreenLine> LinesInView() const;
    int Look(int line) const;
    void RepaintRow(int line);

    // Rows.
    /// @param height 0 takes the default.
    kv::ReportRow NewRow(std::span<const std::wstring_view> texts, int height) const;
    std::vector<kv::ReportRow> NewRows(const std::vector<CStringArray>& texts, int height) const;
    /// Changes what a line holds, by which the filter may show it or not.
    template <typename Change>
    void Refill(int line, Change change)
    {
        const int shown = rows.ShownCount();
        change();
        RepaintRow(line);
        if (rows.ShownCount() != shown)
            RowsResized();
    }
    bool Inserting(int line, int count); ///< false: it has deleted the list
    void Inserted(int line, int count);
    void Removed(const CArray<int, int>& lines, int kind);
    void Notify(int kind, const CArray<int, int>& lines);
    void NotifyText(int line, int column);
    // Observers hear before the rows change, and after the derived list has.
    // A slot of a model's may delete it, another one or the list, for which all of these return false.
    template <typename Tell>
    bool TellObservers(Tell tell)
    {
        if (observers.empty())
            return true; // as with most lists, at each of a million rows
        const QPointer<CKvReportListCtrl> self(&list);
        for (kv::ReportObserver* observer : std::vector(observers)) {
            if (self && std::find(observers.begin(), observers.end(), observer) != observers.end())
                tell(*observer);
        }
        return !self.isNull();
    }
    bool TellChanging(int kind, std::span<const int> lines)
    {
        return TellObservers([&](kv::ReportObserver& observer) { observer.Changing(kind, lines); });
    }
    /// To a screen reader: the cell's text, and so its name, is another one.
    void TellText(int line, int column);
    bool TellChanged(int kind, std::span<const int> lines)
    {
        return TellObservers([&](kv::ReportObserver& observer) { observer.Changed(kind, lines); });
    }

    // Selection by the user.
    void MoveCurrent(int line, Qt::KeyboardModifiers modifiers);
    void ClickLine(int line, Qt::KeyboardModifiers modifiers);
    void DragSelectionTo(CPoint point);
    void SelectFromAnchor(int line);
    void TellSelection();
    int PageFrom(int line, int direction) const;

    // Editing.
    void OpenEditor(int line, int column, bool isMultiLine, const CString& text);
    QRect EditorRect() const;
    void StyleEditor();
    bool FitEditor();
    void PlaceEditor();
    void ShowCaret();
    void CloseEditor();
    void EditorEnded(int key, bool shift);
    void EditorLeft();
    void EditNext(int line, int column, int step);

    // Drawing.
    void DrawHeader(QPainter& painter);
    void DrawRow(QPainter& painter, int line, const QRect& row);
    int State(int line) const;
    QColor Colour(int line, int column, bool isBack) const;

    // The cells as a screen reader finds them: those of the header, then the lines that are shown.
    QString ControlName() const override;
    int Count() const override;
    Key KeyAt(int index) const override;
    int IndexOf(Key key) const override;
    kv::AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;
    kv::AccessibleTable* Table() override { return this; }
    int RowCount() const override { return rows.ShownCount(); }
    int ColumnCount() const override { return layout.ColumnCount(); }
    std::optional<Key> CellKey(Cell cell) const override;
    std::optional<Cell> FindCell(Key key) const override;
    bool IsSelected(int row) const override { return rows.Row(rows.ShownLine(row)).selected; }
    std::vector<int> SelectedRows() const override;
    int SelectedCount() const override { return rows.SelectedShownCount(); }
    std::vector<int> RowsInView() const override;
    void SelectRow(int row, bool select) override;
    QString RestOfLine(int line, int column) const;

    CKvReportListCtrl& list;
    kv::ReportColumns columns;
    kv::ReportLayout layout;
    bool hasHeader = true;
    bool hasGrid = true;
    int textStyle = kKvReportLeft;
    int defaultHeight = kv::kReportHeaderHeight;
    bool isHeightHosts = false; ///< the host has set it: the font does not count
    int footer = 0;             ///< free below cells and bars
    int barExtent = 0;          ///< how thick a scroll bar is
    Theme theme;

    int scrollX = 0;
    int currentColumn = 0;

    Drag drag = Drag::kNone;
    CPoint dragStart;
    int dragColumn = -1;
    kv::ReportColumns dragColumns; ///< before an edge was dragged
    kv::ReportLayout dragLayout;
    int wheelRest = 0;

    QScrollBar* verticalBar;
    QScrollBar* horizontalBar;
    kv::SkinBar verticalColours{*verticalBar};
    kv::SkinBar horizontalColours{*horizontalBar};
    QPointer<QWidget> port; ///< shows the part of the editor that is in view
    QPointer<kv::ReportEditor> editor;
    int editColumn = -1;
    int editHeight = 0; ///< of its line, when the editor was fitted to it
    CString editBegin;

    CArray<int, int> lineOfText; ///< see `NotifyText`
    std::vector<kv::ReportObserver*> observers;
    int suspended = 0;
    bool frameAsked = false;
    bool frameDue = false;       ///< something changed while suspended
    bool rowsChanged = false;    ///< since a screen reader was told
    bool isSelectionDue = false; ///< to be told to it
    int shownTold = 0;           ///< how many lines it was told of
    bool isSyncing = false;
    QRegion dirty; ///< what is being painted
    kv::ReportScreen screen;
    /// The cell that is being drawn, and its place.
    struct
    {
        int line = -1;
        int column = -1;
        QRect rect;
    } drawn;
};
