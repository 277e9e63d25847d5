// The report list's in-place editing.
#include "platform/FontSheet.h"
#include "platform/KvReportListImpl.h"
#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"

#include <QSignalBlocker>
#include <QToolTip>

#include <algorithm>
#include <utility>

// In client coordinates, wherever it is.
QRect CKvReportListCtrl::Impl::EditorRect() const
{
    return {CellRect(editLine, editColumn).topLeft(), editor->size()};
}

// A palette is not enough: it does not count under a style sheet of the host's, and no more does a font. The
// letters are those of the cell.
void CKvReportListCtrl::Impl::StyleEditor()
{
    const QString sheet = QStringLiteral("QPlainTextEdit { background: %1; color: %2; border: 1px solid %3; "
                                         "border-radius: 0; padding: 0; margin: 0; %6 %7 "
                                         "selection-background-color: %4; selection-color: %5; }");
    editor->setFont(list.font());
    editor->setStyleSheet(sheet.arg(theme.back.name(), theme.text.name(), kv::FocusColour().name(),
                                    theme.selectedBack.name(), theme.selectedText.name(),
                                    QLatin1String(kv::kOwnSizes), kv::FontSheet(list.font())));
}

// @param text what it begins with.
void CKvReportListCtrl::Impl::OpenEditor(int line, int column, bool isMultiLine, const CString& text)
{
    editLine = line;
    editColumn = column;
    port = new QWidget(&list);
    kv::KeepOwnSizes(*port);
    kv::ReportEditorHooks hooks;
    hooks.changed = [this] {
        editor->setAccessibleDescription({}); // of the text that was refused
        list._UpdateTextWidth();
    };
    hooks.ended = [this](int key, bool shift) { EditorEnded(key, shift); };
    hooks.left = [this] { EditorLeft(); };
    hooks.replaces = [this](const QString& pasted) {
        return list._PasteReplacesCell(editLine, editColumn, KvFromQString(pasted)) != 0;
    };
    editor = new kv::ReportEditor(port, isMultiLine, std::move(hooks));
    StyleEditor();
    editor->setAccessibleName(KvToQString(columns.columns[static_cast<std::size_t>(column)].header));
    {
        const QSignalBlocker quiet(editor); // nobody has typed
        editor->setPlainText(KvToQString(text));
        editor->selectAll();
    }
    editBegin = list.GetOpenText(); // some characters do not come back as they went in
    const QPointer<CKvReportListCtrl> self(&list);
    const QPointer<QWidget> opened(port);
    list._UpdateTextWidth();
    if (!self || !opened || port != opened)
        return;
    port->show();
    editor->setFocus();
}

// To its text, and to its cell at least. @return whether its size changed.
bool CKvReportListCtrl::Impl::FitEditor()
{
    if (!IsEditorInLine())
        return false;
    editHeight = ShownHeight(editLine);
    const QSize size = editor->NaturalSize().expandedTo(CellRect(editLine, editColumn).size());
    const bool isChanged = size != editor->size();
    editor->resize(size);
    return isChanged;
}

void CKvReportListCtrl::Impl::PlaceEditor()
{
    if (!IsEditorInLine())
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
    LayOut();
    QMetaObject::invokeMethod(
        &list,
        [this] {
            if (!editor)
                list._OnEditClosed();
        },
        Qt::QueuedConnection);
    if (hadFocus)
        list.setFocus();
}

// After the editor of that cell ended: the next cell that can be edited, in this line or the one after. A
// host that is asked or told may move the line.
void CKvReportListCtrl::Impl::EditNext(int line, int column, int step)
{
    const QPointer<CKvReportListCtrl> self(&list);
    const int count = layout.ColumnCount();
    int cell = column + step;
    for (int lines = 0; lines < 2 && IsLine(line); ++lines) {
        const std::uint64_t id = rows.Row(line).id;
        for (; cell >= 0 && cell < count; cell += step) {
            const bool canEdit = list._CanEditCell(line, cell) != 0;
            if (!self || (line = rows.Find(id)) < 0)
                return;
            if (!canEdit)
                continue;
            ClickLine(line, Qt::NoModifier);
            if (self)
                list.EditCell(rows.Find(id), cell);
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
void CKvReportListCtrl::_OnEditClosed() {}

void CKvReportListCtrl::_UpdateTextWidth()
{
    Impl& impl = *m_impl;
    if (!impl.IsEditorInLine())
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
    // Whoever is asked or told may move the line, or delete the list.
    const auto isThere = [&] { return self && (line = FindRow(id)) >= 0; };
    if (!_CanEditCell(line, column) || !self || (IsEditing() && !EndEdit(1)) || !isThere())
        return 0;
    const bool isMultiLine = _IsMultiLineCell(line, column) != 0;
    if (!isThere())
        return 0;
    const CString text = _GetEditText(line, column);
    if (!isThere() || IsEditing() || !m_impl->IsCell(line, column))
        return 0;
    Impl& impl = *m_impl;
    impl.current = line;
    impl.currentColumn = column;
    impl.Show(line);
    impl.ScrollTo(static_cast<int>(kv::OffsetToShow(impl.scrollX, impl.layout.cells.Width(),
                                                    impl.layout.Left(column), impl.layout.Right(column))),
                  impl.scrollY);
    impl.OpenEditor(line, column, isMultiLine, text);
    return self && IsEditing() ? 1 : 0;
}

int CKvReportListCtrl::EndEdit(BOOL commit)
{
    Impl& impl = *m_impl;
    if (!impl.editor)
        return 1;
    const QPointer<kv::ReportEditor> open = impl.editor;
    const int column = impl.editColumn;
    const CString text = GetOpenText();
    CString why;
    const bool isChanged = text != impl.editBegin;
    const QPointer<CKvReportListCtrl> self(this);
    const bool isRefused = commit && isChanged && !_ValidateEdit(impl.editLine, column, text, why);
    if (!self)
        return 0;
    if (!open || impl.editor != open)
        return IsEditing() ? 0 : 1; // the check itself has ended it
    if (isRefused) {
        impl.editor->setAccessibleDescription(KvToQString(why));
        QToolTip::showText(mapToGlobal(impl.EditorRect().bottomLeft()), KvToQString(why), this);
        impl.editor->setFocus(); // keys in the list would go to what is behind the open cell
        return 0;
    }
    const std::uint64_t id = GetRowId(impl.editLine); // which follows its row
    impl.CloseEditor();
    if (!self)
        return 0;
    const int line = FindRow(id);
    if (!commit || line < 0)
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
