// What is done to subtitles: the workspace's commands.
#include "KvDialog.h"
#include "edit/Document.h"
#include "subtitles/SubtitleFindBar.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"
#include "time/TransportBar.h"
#include "window/Commands.h"
#include "window/Texts.h"

#include <QAction>
#include <QInputDialog>
#include <QMenu>
#include <QUndoStack>

#include <algorithm>
#include <iterator>

namespace titler {
namespace {

constexpr double kNewRow = 2; // seconds

// A question that stays until its answer makes sense.
class Question : public QInputDialog
{
public:
    /// Says what is wrong with a text; nothing takes it.
    using Check = std::function<QString(const QString&)>;

    Question(QWidget* parent, UINT titleId, const QString& question, Check check)
        : QInputDialog(parent)
        , m_question(question)
        , m_check(std::move(check))
    {
        setWindowTitle(WithoutMnemonic(Text(titleId)).remove(QChar(0x2026)));
        setLabelText(question);
    }
    void done(int result) override
    {
        const QString fault = result == Accepted ? m_check(textValue()) : QString();
        if (fault.isEmpty())
            QInputDialog::done(result);
        else
            setLabelText(m_question + u'\n' + fault);
    }

private:
    QString m_question;
    Check m_check;
};

// Where a row stands by its time: behind the last one that begins no later, else before the first one that
// has a time; `otherwise` when none has.
int PlaceOf(const SubtitleList& list, DWORD in, int otherwise)
{
    int place = otherwise;
    for (int row = list.GetItemCount() - 1; row >= 0; --row) {
        const DWORD other = list.Times(row).in;
        if (other == kNoTime)
            continue;
        if (other <= in)
            return row + 1;
        place = row;
    }
    return place;
}

// The first in time behind a frame; kNoTime for none.
DWORD NextIn(const SubtitleList& list, DWORD frame)
{
    DWORD next = kNoTime;
    for (int row = 0; row < list.GetItemCount(); ++row) {
        const SubtitleTimes times = list.Times(row);
        if (times.in > frame)
            next = std::min(next, times.in);
    }
    return next;
}

} // namespace

void SubtitlePanel::BuildCommands()
{
    const auto onRows = [this](QAction* command) {
        m_onRows << command;
        return command;
    };
    AddCommand(kTextSubtitleImport, L"titler_tool_open", Qt::CTRL | Qt::Key_I, [this] { ChooseImport(); });
    AddCommand(kTextSubtitleExport, L"titler_tool_save", Qt::CTRL | Qt::SHIFT | Qt::Key_I,
               [this] { ChooseExport(); });
    m_commands << nullptr;
    AddCommand(kTextSubtitleAdd, L"titler_tool_rule_add", Qt::CTRL | Qt::SHIFT | Qt::Key_N,
               [this] { AddRow(); });
    onRows(AddCommand(kTextSubtitleRemove, L"titler_tool_rule_remove", Qt::CTRL | Qt::SHIFT | Qt::Key_Delete,
                      [this] { RemoveRows(); }));
    m_listMenu << nullptr;
    m_listMenu << onRows(
        AddCommand(kTextSubtitleSplit, L"titler_tool_split", Qt::CTRL | Qt::Key_K, [this] { SplitRow(); }));
    m_listMenu << onRows(
        AddCommand(kTextSubtitleMerge, L"titler_tool_merge", Qt::CTRL | Qt::Key_J, [this] { MergeRows(); }));
    m_commands << nullptr;
    m_listMenu << nullptr;
    m_listMenu << onRows(
        AddCommand(kTextSubtitleSetIn, L"titler_tool_setin", Qt::Key_I, [this] { SetTimeHere(true); }));
    m_listMenu << onRows(
        AddCommand(kTextSubtitleSetOut, L"titler_tool_setout", Qt::Key_O, [this] { SetTimeHere(false); }));
    m_listMenu << AddCommand(kTextSubtitleShift, L"titler_tool_shift", Qt::CTRL | Qt::SHIFT | Qt::Key_H,
                             [this] { ShiftRows(); });
    m_useRate = AddCommand(kTextSubtitleUseRate, nullptr, {}, [this] { UseProjectRate(); });
    m_commands << nullptr;
    AddCommand(kTextSubtitleFind, L"titler_tool_find", QKeySequence::Find, [this] { m_find->Open(); });
    AddCommand(kTextSubtitleReplace, nullptr, Qt::CTRL | Qt::Key_R, [this] { m_find->OpenReplacement(); });
    AddCommand(kTextSubtitleGoToRow, nullptr, Qt::CTRL | Qt::Key_G, [this] { AskForRow(); });
    m_listMenu << onRows(AddCommand(kTextSubtitleGoToTime, L"titler_tool_gototime", Qt::CTRL | Qt::Key_T,
                                    [this] { GoToTime(); }));
    AddCommand(kTextSubtitleNextFault, L"titler_tool_nextfault", Qt::CTRL | Qt::Key_F8,
               [this] { GoToFault(1); });
    AddCommand(kTextSubtitlePreviousFault, nullptr, Qt::CTRL | Qt::SHIFT | Qt::Key_F8,
               [this] { GoToFault(-1); });
    m_follow = AddCommand(kTextSubtitleFollow, L"titler_tool_follow", Qt::CTRL | Qt::SHIFT | Qt::Key_F,
                          [this] { Follow(); });
    m_follow->setCheckable(true);
    m_follow->setChecked(true);
    m_commands << nullptr;
    m_listMenu << nullptr;
    QAction* templates = BuildTemplates()->menuAction();
    m_commands << onRows(templates);
    m_listMenu << templates;
}

QAction* SubtitlePanel::AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                                   std::function<void()> run)
{
    m_commands << MakeCommand(nameId, icon, key, std::move(run));
    return m_commands.back();
}

// What is being typed in a cell counts, whatever comes.
QAction* SubtitlePanel::MakeCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                                    std::function<void()> run)
{
    auto* command = new QAction(this);
    NameCommand(*command, nameId);
    command->setShortcut(key);
    if (icon != nullptr)
        command->setIcon(SkinIcon(icon));
    connect(command, &QAction::triggered, this, [this, run = std::move(run)] {
        if (Settle())
            run();
    });
    return command;
}

bool SubtitlePanel::Settle()
{
    if (m_list->Settle())
        return true;
    emit Reported(LogType::Error, Text(kTextSubtitleBadCell));
    return false;
}

void SubtitlePanel::Edit(const StepName& step, const std::function<void()>& change)
{
    const QString name = step.Text();
    m_stepNames.insert(name, step);
    m_list->RunAsStep(name.toStdWString(), change);
    OnRowsChanged();
}

void SubtitlePanel::SetTexts(const StepName& step, const std::vector<std::pair<int, QString>>& texts)
{
    std::vector<int> rows;
    for (const auto& [row, text] : texts)
        rows.push_back(row);
    Edit(StepOfRows(step, rows), [&] {
        for (const auto& [row, text] : texts)
            m_list->ModifyItem(row, text.toStdWString().c_str(), nullptr, nullptr, nullptr);
    });
}

void SubtitlePanel::ShowMatch(int row, const TextRange& range)
{
    m_list->GoTo(row);
    m_list->setFocus();
    OnSelectionChanged();
    m_list->ShowMatch(row, range);
}

void SubtitlePanel::AddRow()
{
    const DWORD in = PlayHead();
    const int row = PlaceOf(*m_list, in, Current() >= 0 ? Current() + 1 : m_list->GetItemCount());
    const auto length = static_cast<DWORD>(kNewRow * FrameRateOf(m_rate).PerSecond());
    const DWORD out = std::min(in + length, NextIn(*m_list, in));
    Edit(StepOfRows(kStepSubtitleAdd, {row}), [&] { m_list->InserItem(row, CString(), in, out, nullptr); });
    m_list->GoTo(row);
    m_list->setFocus();
    ShowCommands();
    m_list->EditCell(row, kKvSubTitleText);
}

void SubtitlePanel::RemoveRows()
{
    const std::vector<int> rows = SelectedRows();
    Edit(StepOfRows(kStepSubtitleRemove, rows), [&] {
        for (auto row = rows.rbegin(); row != rows.rend(); ++row)
            m_list->DeleteItem(*row);
    });
    m_list->SetSelItem(std::min(rows.front(), m_list->GetItemCount() - 1));
    ShowCommands();
}

// A row without a time to part keeps all that it has.
void SubtitlePanel::SplitRow()
{
    const int row = Current();
    const SubtitleTimes times = m_list->Times(row);
    const DWORD cut = CutOf(times, PlayHead());
    const auto [first, second] = SplitSubtitle(RowText(row), PartBefore(times, cut));
    const CString name = m_list->GetItemText(row, kKvSubTitleTemplate);
    const bool isParted = cut != kNoTime;
    Edit(StepOfRows(kStepSubtitleSplit, {row}),
         [&, before = first.toStdWString(), behind = second.toStdWString()] {
             m_list->ModifyItem(row, before.c_str(), &times.in, isParted ? &cut : &times.out, nullptr);
             m_list->InserItem(row + 1, behind, cut, isParted ? times.out : kNoTime, name.c_str());
         });
    m_source.ShareSettings(m_list->GetRowKey(row), m_list->GetRowKey(row + 1));
}

// The selected rows, or the selected one and the next.
void SubtitlePanel::MergeRows()
{
    std::vector<int> rows = SelectedRows();
    if (rows.size() == 1)
        rows.push_back(rows.front() + 1);
    if (rows.back() >= m_list->GetItemCount())
        return;
    const auto gap = std::adjacent_find(rows.begin(), rows.end(), [](int a, int b) { return b != a + 1; });
    if (gap != rows.end()) {
        emit Reported(LogType::Error,
                      Text(kTextSubtitleNotNeighbours,
                           {QString::number(*gap + 1), QString::number(*std::next(gap) + 1)}));
        return;
    }
    QStringList texts;
    std::vector<SubtitleTimes> times;
    for (const int row : rows) {
        texts << RowText(row);
        times.push_back(m_list->Times(row));
    }
    const SubtitleTimes whole = MergedTimes(times);
    Edit(StepOfRows(kStepSubtitleMerge, rows), [&, text = texts.join(u'\n').toStdWString()] {
        m_list->ModifyItem(rows.front(), text.c_str(), &whole.in, &whole.out, nullptr);
        for (auto row = rows.rbegin(); *row != rows.front(); ++row)
            m_list->DeleteItem(*row);
    });
    m_list->SetSelItem(rows.front());
}

// After an out time the next row is waiting for its in time.
void SubtitlePanel::SetTimeHere(bool in)
{
    const int row = Current();
    const DWORD time = PlayHead();
    const QString said = TimeCode(static_cast<int>(time), FrameRateOf(m_rate));
    Edit(StepOfRows(in ? kStepSubtitleIn : kStepSubtitleOut, {row}, said),
         [&] { m_list->SetTimeCode(row, time, in ? 1 : 0); });
    if (!in && row + 1 < m_list->GetItemCount())
        m_list->GoTo(row + 1);
    OnSelectionChanged();
}

// The selected rows when there are several, else all.
void SubtitlePanel::ShiftRows()
{
    std::vector<int> rows = SelectedRows();
    const bool isSelection = rows.size() > 1;
    if (!isSelection) {
        rows.clear();
        for (int row = 0; row < m_list->GetItemCount(); ++row)
            rows.push_back(row);
    }
    if (rows.empty())
        return;
    std::vector<SubtitleTimes> shifted;
    const auto check = [&](const QString& typed) {
        const std::optional<std::int64_t> by = ShiftOf(typed, m_rate);
        if (!by)
            return Text(kTextSubtitleBadShift, {typed});
        shifted.clear();
        for (const int row : rows) {
            const std::optional<SubtitleTimes> times = Shifted(m_list->Times(row), *by);
            if (!times)
                return Text(kTextSubtitleShiftedOut, {QString::number(row + 1)});
            shifted.push_back(*times);
        }
        return QString();
    };
    const QString which = isSelection ? Text(kTextSubtitleShiftSelected, {QString::number(rows.size())})
                                      : Text(kTextSubtitleShiftAll);
    Question question(this, kTextSubtitleShift, which + u'\n' + Text(kTextSubtitleShiftBy), check);
    question.setTextValue(QStringLiteral("+00:00:00:00"));
    if (question.exec() != QDialog::Accepted)
        return;
    Edit(StepOfRows(kStepSubtitleShift, rows, question.textValue().trimmed()), [&] {
        for (std::size_t i = 0; i < rows.size(); ++i)
            m_list->SetTimes(rows[i], shifted[i]);
    });
}

// The steps hold frames of the rate before, and go. A time that is still the file's own stays so.
void SubtitlePanel::UseProjectRate()
{
    const FrameRate from = FrameRateOf(m_rate);
    const FrameRate to = m_transport.Rate();
    if (Steps().count() > 0 && KvMessageBox(this, Text(kTextSubtitleStepsGo, {RateText(to)}).toStdWString(),
                                            MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES)
        return;
    const bool wasModified = IsModified();
    const std::vector<SubtitleRow> before = Rows();
    const auto moved = [&](DWORD frame, std::int64_t original) {
        if (frame == kNoTime)
            return frame;
        const bool isOwn = original >= 0 && FrameAtMilliseconds(original, from) == frame;
        return isOwn ? FrameAtMilliseconds(original, to) : FrameAtRate(frame, from, to);
    };
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = m_list->Times(row);
        const auto found = m_source.rows.find(m_list->GetRowKey(row));
        const SubtitleSource::Row source =
            found == m_source.rows.end() ? SubtitleSource::Row() : found->second;
        m_list->SetTimes(row, {moved(times.in, source.in), moved(times.out, source.out)});
    }
    SetRate(m_document.Current().video.frameRate);
    Steps().clear();
    const auto hasSameTimes = [](const SubtitleRow& a, const SubtitleRow& b) {
        return a.in == b.in && a.out == b.out;
    };
    const std::vector<SubtitleRow> after = Rows();
    if (wasModified || !std::equal(before.begin(), before.end(), after.begin(), after.end(), hasSameTimes))
        Steps().resetClean(); // the file has other times
    emit Reported(LogType::Message, Text(kTextSubtitleRateUsed, {RateText(from), RateText(to)}));
    OnRowsChanged();
}

void SubtitlePanel::AskForRow()
{
    const int count = m_list->GetItemCount();
    if (count == 0)
        return;
    bool isGiven = false;
    const int row =
        QInputDialog::getInt(this, WithoutMnemonic(Text(kTextSubtitleGoToRow)).remove(QChar(0x2026)),
                             Text(kTextSubtitleWhichRow, {QString::number(count)}),
                             std::max(Current(), 0) + 1, 1, count, 1, &isGiven);
    if (!isGiven)
        return;
    m_list->GoTo(row - 1);
    m_list->setFocus();
    OnSelectionChanged();
}

void SubtitlePanel::GoToTime()
{
    const SubtitleTimes times = m_list->Times(Current());
    const DWORD time = times.in != kNoTime ? times.in : times.out;
    if (time == kNoTime)
        return;
    LengthenProject(); // it may be shorter again by its own undo
    const DWORD frame = FirstAtRate(time, FrameRateOf(m_rate), m_transport.Rate());
    const auto last = static_cast<DWORD>(m_transport.LastFrame());
    m_transport.Seek(static_cast<int>(std::min(frame, last)));
    if (frame > last && times.in != kNoTime)
        emit Reported(LogType::Warning,
                      Text(kTextSubtitleBeyond, {TimeCode(m_transport.LastFrame(), m_transport.Rate())}));
}

// Round the end of the list.
void SubtitlePanel::GoToFault(int step)
{
    Check();
    const int count = m_list->GetItemCount();
    int row = Current() < 0 ? (step > 0 ? -1 : count) : Current();
    for (int i = 0; i < count; ++i) {
        row = (row + step + count) % count;
        if (m_faults[static_cast<std::size_t>(row)].kinds == 0)
            continue;
        m_list->GoTo(row);
        OnSelectionChanged();
        return;
    }
    emit Reported(LogType::Message, Text(kTextSubtitleNoFault));
}

// An edit at rest does not move the list.
void SubtitlePanel::Follow()
{
    m_list->SetFollowPlayback(m_follow->isChecked() && m_transport.IsPlaying());
}

} // namespace titler
