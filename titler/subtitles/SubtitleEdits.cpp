// What is done to subtitles: the workspace's commands.
#include "edit/Document.h"
#include "subtitles/SubtitleFindBar.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"
#include "time/TransportBar.h"
#include "window/Texts.h"

#include <QAction>
#include <QInputDialog>
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
        setWindowTitle(Text(titleId).remove(u'&').remove(QChar(0x2026)));
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
    int key = Qt::Key_1;
    for (const QString& name : SubtitleTemplates()) {
        QAction* use = AddCommand(kTextSubtitleTemplate, nullptr, Qt::ALT | static_cast<Qt::Key>(key++),
                                  [this, name] { UseTemplate(name); });
        use->setText(Text(kTextSubtitleTemplate, {name}));
        m_listMenu << onRows(use);
    }
}

// What is being typed in a cell counts, whatever comes.
QAction* SubtitlePanel::AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                                   std::function<void()> run)
{
    auto* command = new QAction(Text(nameId), this);
    command->setToolTip(Text(nameId + 1));
    command->setStatusTip(Text(nameId + 1));
    command->setShortcut(key);
    if (icon != nullptr)
        command->setIcon(SkinIcon(icon));
    connect(command, &QAction::triggered, this, [this, run = std::move(run)] {
        if (Settle())
            run();
    });
    m_commands << command;
    return command;
}

bool SubtitlePanel::Settle()
{
    if (m_list->Settle())
        return true;
    emit Reported(LogType::Error, Text(kTextSubtitleBadCell));
    return false;
}

void SubtitlePanel::Edit(UINT stepId, const std::function<void()>& change)
{
    m_list->RunAsStep(Text(stepId).toStdWString(), change);
    OnRowsChanged();
}

void SubtitlePanel::AddRow()
{
    const int row = Current() >= 0 ? Current() + 1 : m_list->GetItemCount();
    const DWORD in = PlayHead();
    const auto length = static_cast<DWORD>(kNewRow * FrameRateOf(m_rate).PerSecond());
    const DWORD out = std::min(in + length, NextIn(*m_list, in));
    Edit(kStepSubtitleAdd, [&] { m_list->InserItem(row, CString(), in, out, nullptr); });
    m_list->GoTo(row);
    m_list->setFocus();
    ShowCommands();
}

void SubtitlePanel::RemoveRows()
{
    const std::vector<int> rows = SelectedRows();
    Edit(kStepSubtitleRemove, [&] {
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
    Edit(kStepSubtitleSplit, [&, before = first.toStdWString(), behind = second.toStdWString()] {
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
    Edit(kStepSubtitleMerge, [&, text = texts.join(u'\n').toStdWString()] {
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
    Edit(in ? kStepSubtitleIn : kStepSubtitleOut, [&] { m_list->SetTimeCode(row, PlayHead(), in ? 1 : 0); });
    if (!in && row + 1 < m_list->GetItemCount())
        m_list->GoTo(row + 1);
    ShowCommands();
    ShowFaults();
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
    Edit(kStepSubtitleShift, [&] {
        for (std::size_t i = 0; i < rows.size(); ++i)
            m_list->SetTimes(rows[i], shifted[i]);
    });
}

void SubtitlePanel::UseTemplate(const QString& name)
{
    Edit(kStepSubtitleTemplate, [&, text = name.toStdWString()] {
        for (const int row : SelectedRows()) {
            const SubtitleTimes times = m_list->Times(row);
            m_list->ModifyItem(row, nullptr, &times.in, &times.out, text.c_str());
        }
    });
}

// The steps hold frames of the rate before.
void SubtitlePanel::UseProjectRate()
{
    const FrameRate from = FrameRateOf(m_rate);
    const FrameRate to = m_transport.Rate();
    const auto moved = [&](DWORD frame) { return frame == kNoTime ? frame : FrameAtRate(frame, from, to); };
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = m_list->Times(row);
        m_list->SetTimes(row, {moved(times.in), moved(times.out)});
    }
    SetRate(m_document.Current().video.frameRate);
    Steps().clear();
    Steps().resetClean(); // the file has the times of the other rate
    emit Reported(LogType::Message, Text(kTextSubtitleRateUsed, {RateText(from), RateText(to)}));
    OnRowsChanged();
}

void SubtitlePanel::AskForRow()
{
    const int count = m_list->GetItemCount();
    if (count == 0)
        return;
    bool isGiven = false;
    const int row = QInputDialog::getInt(this, Text(kTextSubtitleGoToRow).remove(u'&').remove(QChar(0x2026)),
                                         Text(kTextSubtitleWhichRow, {QString::number(count)}),
                                         std::max(Current(), 0) + 1, 1, count, 1, &isGiven);
    if (!isGiven)
        return;
    m_list->GoTo(row - 1);
    m_list->setFocus();
    ShowCommands();
    ShowFaults();
}

void SubtitlePanel::GoToTime()
{
    const SubtitleTimes times = m_list->Times(Current());
    const DWORD time = times.in != kNoTime ? times.in : times.out;
    if (time == kNoTime)
        return;
    const DWORD frame = FirstAtRate(time, FrameRateOf(m_rate), m_transport.Rate());
    m_transport.Seek(static_cast<int>(std::min<DWORD>(frame, static_cast<DWORD>(m_transport.LastFrame()))));
}

// Round the end of the list.
void SubtitlePanel::GoToFault(int step)
{
    Check();
    const int count = m_list->GetItemCount();
    int row = Current() < 0 ? (step > 0 ? -1 : count) : Current();
    for (int i = 0; i < count; ++i) {
        row = (row + step + count) % count;
        if (m_faults[static_cast<std::size_t>(row)] == 0)
            continue;
        m_list->GoTo(row);
        ShowCommands();
        ShowFaults();
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
