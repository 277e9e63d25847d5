// The lists of texts: keys, menu and clipboard.
#include "KvMenu.h"
#include "text/ListTexts.h"
#include "text/TextLines.h"
#include "text/TextListImpl.h"

#include <QClipboard>
#include <QDataStream>
#include <QGuiApplication>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace {

// Ctrl+A … Ctrl+Z arrive as 1 … 26.
constexpr UINT kControlC = 3;
constexpr UINT kControlV = 22;
constexpr UINT kControlX = 24;
constexpr UINT kControlY = 25;
constexpr UINT kControlZ = 26;

constexpr quint32 kFormatMark = 0x4B565231; ///< the format's first version

QByteArray RowBytes(const CStringArray& texts, std::uint64_t data, int height, const kv::RowColours& colours)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    QStringList strings;
    for (const CString& text : texts)
        strings += KvToQString(text);
    stream << strings << quint64{data} << qint32{height};
    for (std::size_t i = 0; i < kv::kRowColourCount; ++i) {
        const auto colour = colours.Get(static_cast<kv::RowColour>(i));
        stream << colour.has_value() << quint32{colour.value_or(0)};
    }
    return bytes;
}

// Whether a key inserts a row, and where.
enum class InsertKey
{
    None,
    Above,
    Below
};
InsertKey InsertKeyOf(UINT key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = modifiers & ~Qt::KeypadModifier;
    if (key == VK_INSERT && held == Qt::NoModifier)
        return InsertKey::Above;
    if (key != VK_RETURN || !held.testFlag(Qt::ControlModifier))
        return InsertKey::None;
    return held.testFlag(Qt::ShiftModifier) ? InsertKey::Above : InsertKey::Below;
}

bool IsMoveKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    return (key == VK_UP || key == VK_DOWN) && (modifiers & ~Qt::KeypadModifier) == Qt::AltModifier;
}

} // namespace

std::unique_ptr<QMimeData> CKvTextListBase::Impl::SelectionAsMime() const
{
    auto mime = std::make_unique<QMimeData>();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    CArray<int, int> lines;
    list.GetSelItems(lines);
    stream << kFormatMark << static_cast<quint32>(lines.size());
    for (const int line : lines) {
        const Row row = Snapshot(line);
        stream << RowBytes(row.texts, row.data, row.height, row.colours);
    }
    mime->setData(QLatin1String(list._GetRowFormat()), bytes);
    mime->setText(KvToQString(kv::JoinLines(list.GetSelectedTexts())));
    return mime;
}

bool CKvTextListBase::Impl::IsOwnFormat(const QMimeData& data) const
{
    return data.hasFormat(QLatin1String(list._GetRowFormat()));
}

bool CKvTextListBase::Impl::CanTake(const QMimeData* data) const
{
    return data && (IsOwnFormat(*data) || data->hasText());
}

// Rows of the list's own format, else one a line of the text; none for what cannot be read.
std::vector<CKvTextListBase::Impl::Row> CKvTextListBase::Impl::RowsOf(const QMimeData& data) const
{
    std::vector<Row> rows;
    if (!IsOwnFormat(data)) {
        for (CString& text : kv::SplitLines(KvFromQString(data.text())))
            rows.emplace_back().texts = {std::move(text)};
        return rows;
    }
    QDataStream stream(data.data(QLatin1String(list._GetRowFormat())));
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 mark = 0;
    quint32 count = 0;
    stream >> mark >> count;
    for (quint32 i = 0; mark == kFormatMark && i < count; ++i) {
        QByteArray bytes;
        stream >> bytes;
        if (stream.status() != QDataStream::Ok)
            break;
        QDataStream fields(bytes);
        fields.setVersion(QDataStream::Qt_6_0);
        QStringList texts;
        quint64 rowData = 0;
        qint32 height = 0;
        fields >> texts >> rowData >> height;
        Row row;
        for (const QString& text : std::as_const(texts))
            row.texts.push_back(KvFromQString(text));
        row.data = rowData;
        row.height = std::clamp(height, 0, 10'000);
        for (std::size_t which = 0; which < kv::kRowColourCount; ++which) {
            bool isOwn = false;
            quint32 colour = 0;
            fields >> isOwn >> colour;
            if (isOwn)
                row.colours.Set(static_cast<kv::RowColour>(which), colour);
        }
        if (fields.status() == QDataStream::Ok)
            rows.push_back(std::move(row));
    }
    return rows;
}

void CKvTextListBase::Impl::Copy()
{
    if (list.GetSelCount() > 0)
        QGuiApplication::clipboard()->setMimeData(SelectionAsMime().release());
}

void CKvTextListBase::Impl::Cut()
{
    Copy();
    RemoveSelected(kv::kCutStep);
}

int CKvTextListBase::Impl::LineBelowSelection() const
{
    const int last = list.GetLastSelItem();
    return last < 0 ? list.GetItemCount() : last + 1;
}

void CKvTextListBase::Impl::Paste()
{
    if (const QMimeData* data = QGuiApplication::clipboard()->mimeData(); CanTake(data))
        InsertRows(LineBelowSelection(), RowsOf(*data), kv::kPasteStep);
}

// A new row above or below the selection, opened.
void CKvTextListBase::Impl::InsertEmpty(bool below)
{
    CArray<int, int> lines;
    list.GetSelItems(lines);
    const int line = below || lines.empty() ? LineBelowSelection() : lines.front();
    const QPointer<CKvTextListBase> self(&list);
    InsertRows(line, std::vector<Row>(1), kv::kInsertStep);
    if (self && list.GetSelCount() == 1)
        list.EditCell(list.GetCurrentItem(), 0);
}

void CKvTextListBase::Impl::MoveSelectedBy(int step)
{
    CArray<int, int> lines;
    list.GetSelItems(lines);
    if (lines.empty())
        return;
    const int before = step < 0 ? lines.front() - 1 : lines.back() + 2;
    MoveRows(lines, std::clamp(before, 0, list.GetItemCount()), kv::kMoveStep);
}

bool CKvTextListBase::Impl::IsCommandEnabled(UINT command) const
{
    switch (command) {
    case kv::kListCut:
    case kv::kListCopy:
    case kv::kListDelete:
        return list.GetSelCount() > 0;
    case kv::kListPaste:
        return CanTake(QGuiApplication::clipboard()->mimeData());
    case kv::kListSelectAll:
        return list.GetShownCount() > 0;
    default:
        return true;
    }
}

void CKvTextListBase::Impl::RunCommand(UINT command)
{
    switch (command) {
    case kv::kListCut:
        Cut();
        break;
    case kv::kListCopy:
        Copy();
        break;
    case kv::kListPaste:
        Paste();
        break;
    case kv::kListDelete:
        RemoveSelected(kv::kDeleteStep);
        break;
    case kv::kListSelectAll:
        list.SelectAllShown();
        Q_EMIT list.SelectionEdited();
        break;
    case kv::kListInsertAbove:
        InsertEmpty(false);
        break;
    case kv::kListInsertBelow:
        InsertEmpty(true);
        break;
    default:
        break;
    }
}

void CKvTextListBase::OnContextMenu(CPoint point)
{
    const QPointer<CKvTextListBase> self(this);
    CKvMenu menu;
    if (IsEditing() || !menu.LoadMenu(kv::kListMenu))
        return;
    for (UINT command = kv::kListCut; command <= kv::kListInsertBelow; ++command)
        menu.EnableMenuItem(command, m_impl->IsCommandEnabled(command));
    Q_EMIT ContextMenuOpening(menu.GetHandle());
    if (!self)
        return;
    const UINT command = menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, mapToGlobal(point), this);
    if (self)
        m_impl->RunCommand(command);
}

BOOL CKvTextListBase::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (IsMoveKey(key, modifiers))
        m_impl->MoveSelectedBy(key == VK_UP ? -1 : 1);
    else if (const InsertKey insert = InsertKeyOf(key, modifiers); insert != InsertKey::None)
        m_impl->InsertEmpty(insert == InsertKey::Below);
    else if (key == VK_DELETE && (modifiers & ~Qt::KeypadModifier) == Qt::NoModifier)
        m_impl->RemoveSelected(kv::kDeleteStep);
    else if (key == 'Z' && modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        m_impl->Run(&QUndoStack::redo, &QUndoStack::canRedo);
    else
        return CKvReportListCtrl::OnKeyDown(key, modifiers);
    return 1;
}

BOOL CKvTextListBase::OnChar(UINT character)
{
    switch (character) {
    case kControlC:
        m_impl->Copy();
        return 1;
    case kControlV:
        m_impl->Paste();
        return 1;
    case kControlX:
        m_impl->Cut();
        return 1;
    case kControlY:
        m_impl->Run(&QUndoStack::redo, &QUndoStack::canRedo);
        return 1;
    case kControlZ:
        m_impl->Run(&QUndoStack::undo, &QUndoStack::canUndo);
        return 1;
    default:
        return CKvReportListCtrl::OnChar(character);
    }
}

bool CKvTextListBase::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return character == kControlC || character == kControlV || character == kControlX ||
           character == kControlY || character == kControlZ || key == VK_DELETE ||
           InsertKeyOf(key, modifiers) != InsertKey::None ||
           CKvReportListCtrl::WantsShortcut(key, modifiers, character);
}
