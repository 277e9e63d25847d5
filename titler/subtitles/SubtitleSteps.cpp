// What the list does by itself: how its steps are named, and what copied rows bring along.
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "window/Texts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUndoStack>

#include <algorithm>
#include <utility>

namespace titler {

namespace {

constexpr UINT kListSteps =
    20110; // what the library's lists call their steps, from the first to the last one
constexpr UINT kLastListStep = 20119;

// All of some rows that the name of a step says.
struct RowRange
{
    explicit RowRange(const std::vector<int>& rows)
        : first(rows.front() + 1)
        , last(rows.back() + 1)
        , count(static_cast<int>(rows.size()))
    {
    }
    QString Named() const
    {
        if (count == 1)
            return Text(kTextSubtitleNamed, {QString::number(first)});
        return Text(last - first + 1 == count ? kTextSubtitlesNamed : kTextSubtitlesApart,
                    {QString::number(first), QString::number(last), QString::number(count)});
    }

    int first;
    int last;
    int count;
};

// The list's own name of a step, which it gives in the language of then.
StepName ListStep(const QString& name)
{
    for (UINT id = kListSteps; id <= kLastListStep; ++id)
        if (Text(id) == name)
            return id;
    return name;
}

} // namespace

QString NamedRows(const std::vector<int>& rows)
{
    return RowRange(rows).Named();
}

StepName StepOfRows(UINT textId, const std::vector<int>& rows, const QString& value)
{
    return [textId, range = RowRange(rows), value] { return Text(textId, {range.Named(), value}); };
}

StepName StepOfRows(const StepName& step, const std::vector<int>& rows)
{
    return [step, range = RowRange(rows)] { return Text(kTextStepOfRows, {step.Text(), range.Named()}); };
}

// The list names a step by what it does; log and menu also say to which rows. A step that comes back by redo
// has its name already.
void SubtitlePanel::NameStep()
{
    std::vector<int> rows = m_list->TakeTouchedRows();
    const int index = Steps().index();
    if (index == 0 || index < Steps().count())
        return;
    const QString given = Steps().text(index - 1);
    if (m_stepNames.contains(given))
        return;
    if (rows.empty())
        rows = SelectedRows(); // they moved
    if (rows.empty())
        return;
    const StepName name = StepOfRows(ListStep(given), rows);
    m_stepNames.insert(name.Text(), name);
    SetStepText(Steps(), index - 1, name.Text());
}

// Equal texts are of equal steps.
void SubtitlePanel::NameStepsAnew()
{
    QHash<QString, StepName> names;
    for (int i = 0; i < Steps().count(); ++i) {
        const auto known = m_stepNames.constFind(Steps().text(i));
        if (known == m_stepNames.cend())
            continue;
        const QString name = known->Text();
        names.insert(name, *known);
        SetStepText(Steps(), i, name);
    }
    m_stepNames = std::move(names);
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
