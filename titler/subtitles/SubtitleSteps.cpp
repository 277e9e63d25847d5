// What the list does by itself: how its steps are named, and what copied rows bring along.
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "window/Texts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUndoStack>

#include <algorithm>

namespace titler {

QString NamedRows(const std::vector<int>& rows)
{
    const QString first = QString::number(rows.front() + 1);
    const QString last = QString::number(rows.back() + 1);
    const auto count = static_cast<int>(rows.size());
    if (count == 1)
        return Text(kTextSubtitleNamed, {first});
    const bool areNeighbours = rows.back() - rows.front() + 1 == count;
    return Text(areNeighbours ? kTextSubtitlesNamed : kTextSubtitlesApart,
                {first, last, QString::number(count)});
}

// The list names a step by what it does; log and menu also say to which rows. A step that comes back by redo
// has its name already.
void SubtitlePanel::NameStep()
{
    std::vector<int> rows = m_list->TakeTouchedRows();
    const int index = Steps().index();
    if (index == 0 || index < Steps().count())
        return;
    // Read-only so that nobody changes what a step does; its name is no part of that.
    auto* step = const_cast<QUndoCommand*>(Steps().command(index - 1));
    if (m_stepNames.contains(step->text()))
        return;
    if (rows.empty())
        rows = SelectedRows(); // they moved
    if (rows.empty())
        return;
    const QString name = Text(kTextStepOfRows, {step->text(), NamedRows(rows)});
    m_stepNames.insert(name);
    step->setText(name);
}

SubtitlePanel::CopiedRow SubtitlePanel::CopyOf(int row) const
{
    CopiedRow copy;
    for (int column = 0; column < m_list->GetColumnCount(); ++column)
        copy.cells.push_back(m_list->GetItemText(row, column));
    return copy;
}

void SubtitlePanel::OnClipboardChanged()
{
    const QMimeData* rows = QGuiApplication::clipboard()->mimeData();
    if (rows != nullptr && rows->hasFormat(m_list->RowFormat()))
        RememberCopied(); // rows of another program are told apart by their cells
}

void SubtitlePanel::RememberCopied()
{
    CArray<int, int> rows;
    m_list->GetSelItems(rows);
    m_copied.clear();
    m_copiedFormat = m_source.format;
    for (const int row : rows) {
        CopiedRow& copy = m_copied.emplace_back(CopyOf(row));
        if (const auto found = m_source.rows.find(m_list->GetRowKey(row)); found != m_source.rows.end())
            copy.source = found->second;
    }
}

// Rows that are pasted or dropped are selected then, and new.
void SubtitlePanel::GiveCopiedSources()
{
    CArray<int, int> rows;
    m_list->GetSelItems(rows);
    const auto isCopy = [this](int row, const CopiedRow& copy) {
        return !m_source.rows.contains(m_list->GetRowKey(row)) && CopyOf(row).cells == copy.cells;
    };
    if (m_copiedFormat != m_source.format || // positions mean something in their format only
        !std::equal(rows.begin(), rows.end(), m_copied.begin(), m_copied.end(), isCopy))
        return;
    for (std::size_t i = 0; i < m_copied.size(); ++i)
        m_source.rows[m_list->GetRowKey(rows[i])] = m_copied[i].source;
}

} // namespace titler
