// The report list's in-place editing.
#include "platform/KvReportListImpl.h"
#include "platform/SkinColours.h"

#include <QToolTip>

#include <algorithm>
#include <utility>

// In client coordinates, wherever it is.
QRect CKvReportListCtrl::Impl::EditorRect() const
{
    return {CellRect(editLine, editColumn).topLeft(), editor->size()};
}

void CKvReportListCtrl::Impl::OpenEditor(int line, int column)
{
    editLine = line;
    editColumn = column;
    port = new QWidget(&list);
    kv::ReportEditorHooks hooks;
    hooks.changed = [this] {
        editor->setAccessibleDescription({}); // of the text that was refused
        list._UpdateTextWidth();
    };
    hooks.ended = [this](int key, bool shift) { EditorEnded(key, shift); };
    hooks.left = [this] { EditorLeft(); };
    hooks.replaces = [this](const QString& text) {
        return list._PasteReplacesCell(editLine, editColumn, KvFromQString(text)) != 0;
    };
    editor = new kv::ReportEditor(port, list._IsMultiLineCell(line, column) != 0, std::move(hooks));
    editor->setFont(list.font());
    QPalette palette = editor->palette();
    palette.setColor(QPalette::Base, theme.back);
    palette.setColor(QPalette::WindowText, kv::FocusColour()); // of its frame
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::Highlight, theme.selectedBack);
    palette.setColor(QPalette::HighlightedText, theme.selectedText);
    editor->setPalette(palette);
    editor->setAccessibleName(KvToQString(columns.columns[static_cast<std::size_t>(column)].header));
    editor->setPlainText(KvToQString(list._GetEditText(line, column)));
    editBegin = list.GetOpenText(); // some characters do not come back as they went in
    editor->selectAll();
    list._UpdateTextWidth();
    port->show();
    editor->setFocus();
}

// To its text, and to its cell at least. @return whether its size changed.
bool CKvReportListCtrl::Impl::FitEditor()
{
    if (!editor || !IsLine(editLine))
        return false;
    const QSize size = editor->NaturalSize().expandedTo(CellRect(editLine, editColumn).size());
    const bool isChanged = size != editor->size();
    editor->resize(size);
    return isChanged;
}

void CKvReportListCtrl::Impl::PlaceEditor()
{
    if (!editor || !IsLine(editLine))
        return;
    const QRect place = EditorRect();
    const QRect inView = place & QRect(layout.cells);
    port->setVisible(!inView.isEmpty() && rows.Row(editLine).shown);
    port->setGeometry(inView);
    editor->move(place.topLeft() - inView.topLeft());
}

// Scrolls by the overshoot where the caret comes closer than the margin to an edge of the cells' area.
void CKvReportListCtrl::Impl::ShowCaret()
{
    const QRect caret = editor->cursorRect().translated(EditorRect().topLeft() + editor->viewport()->pos());
    const CRect& cells = layout.cells;
    int x = scrollX;
    std::int64_t y = scrollY;
    if (caret.x() + kReportCaretMargin > cells.right)
        x += caret.x() + kReportCaretMargin - cells.right;
    else if (caret.x() - kReportCaretMargin < cells.left)
        x -= cells.left - (caret.x() - kReportCaretMargin);
    if (caret.bottom() >= cells.bottom)
        y += caret.bottom() + 1 - cells.bottom;
    else if (caret.top() < cells.top)
        y -= cells.top - caret.top();
    ScrollTo(x, y);
}

// Without a word; nothing of the typed text is kept.
void CKvReportListCtrl::Impl::CloseEditor()
{
    if (!port)
        return;
    const bool hadFocus = editor && editor->hasFocus();
    editLine = -1;
    editColumn = -1;
    if (editor)
        editor->LetGo();
    QWidget* old = port;
    port = nullptr;
    editor = nullptr;
    old->hide();
    old->deleteLater(); // it may be what called
    if (hadFocus)
        list.setFocus();
    LayOut();
}

// After the editor of that cell ended: the next cell that can be edited, in this line or the one after.
void CKvReportListCtrl::Impl::EditNext(int line, int column, int step)
{
    const int count = layout.ColumnCount();
    int cell = column + step;
    for (int lines = 0; lines < 2 && IsLine(line); ++lines) {
        for (; cell >= 0 && cell < count; cell += step) {
            if (!list._CanEditCell(line, cell))
                continue;
            const QPointer<CKvReportListCtrl> self(&list);
            ClickLine(line, Qt::NoModifier);
            if (self)
                list.EditCell(line, cell);
            return;
        }
        line = list.NextShownRow(line, step);
        cell = step > 0 ? 0 : count - 1;
    }
}

void CKvReportListCtrl::Impl::EditorEnded(int key, bool shift)
{
    const QPointer<CKvReportListCtrl> self(&list);
    const std::uint64_t id = list.GetRowId(editLine);
    const int column = editColumn;
    if (!list.EndEdit(key != Qt::Key_Escape) || !self || key == Qt::Key_Escape)
        return;
    const int line = rows.Find(id); // the commit may have moved it
    if (line < 0)
        return;
    if (key == Qt::Key_Tab)
        EditNext(line, column, shift ? -1 : 1);
    else
        MoveCurrent(list.NextShownRow(line, 1), Qt::NoModifier);
}

// Commits once the toolkit is done with moving the focus: it would go on with a list that a handler of the
// host's has deleted.
void CKvReportListCtrl::Impl::EditorLeft()
{
    QMetaObject::invokeMethod(
        &list,
        [this, left = editor] {
            if (left && left == editor && !left->hasFocus())
                list.EndEdit(1);
        },
        Qt::QueuedConnection);
}

BOOL CKvReportListCtrl::_CanEditCell(int, int)
{
    return 0;
}

BOOL CKvReportListCtrl::_IsMultiLineCell(int, int)
{
    return 0;
}

CString CKvReportListCtrl::_GetEditText(int line, int column)
{
    return CString(ViewItemText(line, column));
}

BOOL CKvReportListCtrl::_PasteReplacesCell(int, int, const CString&)
{
    return 0;
}

BOOL CKvReportListCtrl::_ValidateEdit(int, int, const CString&, CString&)
{
    return 1;
}

void CKvReportListCtrl::_CommitEdit(int line, int column, const CString& text)
{
    SetItemText(line, column, text);
}

void CKvReportListCtrl::_CancelEdit(int, int) {}

void CKvReportListCtrl::_UpdateTextWidth()
{
    Impl& impl = *m_impl;
    if (!impl.editor || !impl.IsLine(impl.editLine))
        return;
    impl.LayOut();
    impl.ShowCaret();
    impl.PlaceEditor();
}

int CKvReportListCtrl::EditCell(int line, int column)
{
    const QPointer<CKvReportListCtrl> self(this);
    if (!m_impl->IsCell(line, column) || !IsRowShown(line) || !isEnabled())
        return 0;
    const std::uint64_t id = GetRowId(line);
    if (!_CanEditCell(line, column) || !self)
        return 0;
    if (IsEditing() && (!EndEdit(1) || !self))
        return 0;
    line = FindRow(id);
    if (line < 0)
        return 0;
    Impl& impl = *m_impl;
    impl.current = line;
    impl.currentColumn = column;
    impl.Show(line);
    impl.ScrollTo(static_cast<int>(kv::OffsetToShow(impl.scrollX, impl.layout.cells.Width(),
                                                    impl.layout.Left(column), impl.layout.Right(column))),
                  impl.scrollY);
    impl.OpenEditor(line, column);
    return 1;
}

int CKvReportListCtrl::EndEdit(BOOL commit)
{
    Impl& impl = *m_impl;
    if (!impl.editor)
        return 1;
    const int line = impl.editLine;
    const int column = impl.editColumn;
    const CString text = GetOpenText();
    CString why;
    const bool isChanged = text != impl.editBegin;
    const QPointer<CKvReportListCtrl> self(this);
    const bool isRefused = commit && isChanged && !_ValidateEdit(line, column, text, why);
    if (!self)
        return 0;
    if (!impl.editor)
        return 1; // the check itself has ended it
    if (isRefused) {
        impl.editor->setAccessibleDescription(KvToQString(why));
        QToolTip::showText(mapToGlobal(impl.EditorRect().bottomLeft()), KvToQString(why), this);
        impl.editor->setFocus(); // keys in the list would go to what is behind the open cell
        return 0;
    }
    impl.CloseEditor();
    if (!commit)
        _CancelEdit(line, column);
    else if (isChanged)
        _CommitEdit(line, column, text);
    return 1;
}

BOOL CKvReportListCtrl::IsEditing() const
{
    return m_impl->editor ? 1 : 0;
}

int CKvReportListCtrl::GetEditLine() const
{
    return m_impl->editLine;
}

int CKvReportListCtrl::GetEditColumn() const
{
    return m_impl->editColumn;
}

CString CKvReportListCtrl::GetOpenText() const
{
    if (!m_impl->editor)
        return {};
    // Not as plain text, which turns no-break spaces into blanks.
    QString text = m_impl->editor->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return KvFromQString(text);
}

CString CKvReportListCtrl::GetOpenSelection() const
{
    if (!m_impl->editor)
        return {};
    QString text = m_impl->editor->textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return KvFromQString(text);
}
