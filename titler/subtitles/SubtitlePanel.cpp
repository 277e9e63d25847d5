#include "subtitles/SubtitlePanel.h"

#include "KvSubTitleTxtListEditor.h"
#include "KvTimecode.h"
#include "edit/Document.h"
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitleFindBar.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"
#include "time/TransportBar.h"
#include "title/CanvasView.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QAction>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QUndoStack>
#include <QVBoxLayout>

#include <algorithm>

namespace titler {
namespace {

constexpr DWORD kListId = 1001;
constexpr DWORD kFaultColour = 0xFF5A3B1E; ///< behind a row that something is wrong with
constexpr int kCheckAfter = 150;           // milliseconds
constexpr double kNewRow = 2;              // seconds
constexpr std::pair<unsigned, UINT> kFaultTexts[] = {{kSubtitleNegative, kTextSubtitleNegative},
                                                     {kSubtitleOverlap, kTextSubtitleOverlap},
                                                     {kSubtitleFast, kTextSubtitleFast}};

SubtitleTimes TimesOf(const CKvSubTitleTxtListEditor& list, int row)
{
    SubtitleTimes times;
    list.GetTimeCode(row, times.in, times.out);
    return times;
}

void SetTimes(CKvSubTitleTxtListEditor& list, int row, const SubtitleTimes& times)
{
    list.SetTimeCode(row, times.in, 1);
    list.SetTimeCode(row, times.out, 0);
}

std::int64_t FrameOf(DWORD time)
{
    return time == kNoTime ? -1 : static_cast<std::int64_t>(time);
}

int CharactersOf(const QString& text)
{
    const QString plain = PlainSubtitle(text);
    return static_cast<int>(plain.size() - plain.count(u'\n'));
}

} // namespace

SubtitlePanel::SubtitlePanel(Document& document, Transport& transport)
    : m_document(document)
    , m_transport(transport)
    , m_list(new CKvSubTitleTxtListEditor)
    , m_find(new SubtitleFindBar(*m_list))
    , m_canvas(new CanvasView(document, transport))
    , m_summary(new QLabel)
    , m_faultText(new QLabel)
    , m_rate(document.Current().video.frameRate)
{
    BuildCommands();
    auto* stage = new QWidget;
    auto* column = new QVBoxLayout(stage);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_canvas, 1);
    column->addWidget(new TransportBar(document, transport));
    auto* parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->setHandleWidth(1);
    parts->addWidget(BuildRows());
    parts->addWidget(stage);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 1);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(parts);
    setFocusProxy(m_list);
    Connect();
    OnFormat();
    OnRowsChanged();
}

// The list goes later, and its steps with it.
SubtitlePanel::~SubtitlePanel()
{
    Steps().disconnect(this);
    m_list->disconnect(this);
}

void SubtitlePanel::BuildCommands()
{
    AddCommand(kTextSubtitleImport, L"titler_tool_open", Qt::CTRL | Qt::Key_I, [this] { ChooseImport(); });
    AddCommand(kTextSubtitleExport, L"titler_tool_save", Qt::CTRL | Qt::SHIFT | Qt::Key_I,
               [this] { ChooseExport(); });
    m_commands << nullptr;
    AddCommand(kTextSubtitleAdd, L"titler_tool_rule_add", Qt::CTRL | Qt::SHIFT | Qt::Key_Return,
               [this] { AddRow(); });
    m_onRows << AddCommand(kTextSubtitleRemove, L"titler_tool_rule_remove",
                           Qt::CTRL | Qt::SHIFT | Qt::Key_Delete, [this] { RemoveRows(); });
    m_onRows << AddCommand(kTextSubtitleSplit, L"titler_tool_split", Qt::CTRL | Qt::Key_K,
                           [this] { SplitRow(); });
    m_onRows << AddCommand(kTextSubtitleMerge, L"titler_tool_merge", Qt::CTRL | Qt::Key_J,
                           [this] { MergeRows(); });
    m_commands << nullptr;
    m_onRows << AddCommand(kTextSubtitleSetIn, L"titler_tool_setin", Qt::Key_I,
                           [this] { SetTimeHere(true); });
    m_onRows << AddCommand(kTextSubtitleSetOut, L"titler_tool_setout", Qt::Key_O,
                           [this] { SetTimeHere(false); });
    AddCommand(kTextSubtitleShift, nullptr, {}, [this] { ShiftAll(); });
    m_commands << nullptr;
    AddCommand(kTextSubtitleFind, nullptr, QKeySequence::Find, [this] { m_find->Open(); });
    QAction* follow = AddCommand(kTextSubtitleFollow, nullptr, {}, [] {});
    follow->setCheckable(true);
    connect(follow, &QAction::toggled, this, [this](bool on) { m_list->SetFollowPlayback(on); });
    follow->setChecked(true);
    m_commands << nullptr;
    for (const QString& name : SubtitleTemplates()) {
        QAction* use = AddCommand(kTextSubtitleTemplate, nullptr, {}, [this, name] { UseTemplate(name); });
        use->setText(Text(kTextSubtitleTemplate, {name}));
        m_onRows << use;
    }
}

QAction* SubtitlePanel::AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                                   std::function<void()> run)
{
    auto* command = new QAction(Text(nameId), this);
    command->setToolTip(Text(nameId + 1));
    command->setStatusTip(Text(nameId + 1));
    command->setShortcut(key);
    if (icon != nullptr)
        command->setIcon(SkinIcon(icon));
    connect(command, &QAction::triggered, this, std::move(run));
    m_commands << command;
    return command;
}

QWidget* SubtitlePanel::BuildRows()
{
    m_list->Create(CRect(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kListId);
    m_list->setMinimumWidth(60);
    m_list->InserItem(-1, CString(), kNoTime, kNoTime, nullptr);
    m_list->GetItemBkColor(0, &m_plain, nullptr);
    m_list->EmptyAll();
    m_summary->setProperty("role", "hint");
    m_faultText->setProperty("role", "fault");
    m_faultText->setWordWrap(true);
    auto* top = new QHBoxLayout;
    top->addWidget(Heading(kTextTabSubtitles));
    top->addStretch();
    top->addWidget(m_summary);
    auto* side = new QWidget;
    side->setProperty("role", "panel");
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_list, 1);
    column->addWidget(m_faultText);
    column->addWidget(m_find);
    return side;
}

void SubtitlePanel::Connect()
{
    m_check.setSingleShot(true);
    m_check.setInterval(kCheckAfter);
    connect(&m_check, &QTimer::timeout, this, &SubtitlePanel::Check);
    connect(m_list, &CKvSubTitleTxtListEditor::RowsEdited, this, &SubtitlePanel::OnRowsChanged);
    connect(m_list, &CKvSubTitleTxtListEditor::TextEdited, this, &SubtitlePanel::OnRowsChanged);
    connect(m_list, &CKvSubTitleTxtListEditor::TimeCodeEdited, this, &SubtitlePanel::OnRowsChanged);
    connect(&Steps(), &QUndoStack::indexChanged, this, &SubtitlePanel::OnRowsChanged);
    connect(m_list, &CKvReportListCtrl::SelectionEdited, this, [this] {
        ShowCommands();
        ShowFaults();
    });
    connect(&m_transport, &Transport::FrameChanged, this, &SubtitlePanel::ShowPlaying);
    connect(&m_document, &Document::ProjectChanged, this, &SubtitlePanel::OnFormat);
    connect(this, &SubtitlePanel::SubtitleShown, m_canvas, &CanvasView::ShowSubtitle);
}

QUndoStack& SubtitlePanel::Steps() const
{
    return *m_list->GetUndoStack();
}

bool SubtitlePanel::IsModified() const
{
    return !Steps().isClean();
}

void SubtitlePanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    ShowCommands();
}

void SubtitlePanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    ShowCommands();
}

// --- What is shown ---

int SubtitlePanel::Current() const
{
    return m_list->GetLastSelItem();
}

std::vector<int> SubtitlePanel::SelectedRows() const
{
    CArray<int, int> rows;
    m_list->GetAllSelItems(rows);
    return {rows.begin(), rows.end()};
}

QString SubtitlePanel::RowText(int row) const
{
    CString text;
    m_list->GetString(row, text);
    return QString::fromStdWString(text);
}

// Frames stay with their times when the project gets another frame rate.
void SubtitlePanel::OnFormat()
{
    const EKvFrameRate rate = m_document.Current().video.frameRate;
    m_list->SetTimecodeFormat(rate, FrameRateOf(rate).dropFrame);
    if (rate == m_rate)
        return;
    const auto moved = [&](DWORD frame) {
        return frame == kNoTime ? frame : FrameAtRate(frame, FrameRateOf(m_rate), FrameRateOf(rate));
    };
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = TimesOf(*m_list, row);
        SetTimes(*m_list, row, {moved(times.in), moved(times.out)});
    }
    m_rate = rate;
    OnRowsChanged();
}

void SubtitlePanel::OnRowsChanged()
{
    m_check.start();
    ShowCommands();
    ShowPlaying();
    emit StepsChanged();
}

void SubtitlePanel::ShowCommands()
{
    const bool isShown = isVisible();
    const bool hasRow = Current() >= 0;
    for (QAction* command : m_commands)
        if (command != nullptr)
            command->setEnabled(isShown && (hasRow || !m_onRows.contains(command)));
}

void SubtitlePanel::ShowPlaying()
{
    const int row = m_list->FindPlayIndex(static_cast<DWORD>(m_transport.Frame()));
    m_list->SetPlayIndex(row);
    const Subtitle shown =
        row < 0
            ? Subtitle()
            : Subtitle{RowText(row), QString::fromStdWString(m_list->GetItemText(row, kKvSubTitleTemplate))};
    emit SubtitleShown(shown);
}

void SubtitlePanel::Check()
{
    std::vector<TimedText> rows;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = TimesOf(*m_list, row);
        rows.push_back({FrameOf(times.in), FrameOf(times.out), CharactersOf(RowText(row))});
    }
    m_faults = CheckSubtitles(rows, FrameRateOf(m_rate).PerSecond());
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const DWORD wanted = m_faults[static_cast<std::size_t>(row)] != 0 ? kFaultColour : m_plain;
        DWORD colour = 0;
        m_list->GetItemBkColor(row, &colour, nullptr);
        if (colour != wanted)
            m_list->SetItemBkColor(row, &wanted, nullptr);
    }
    ShowFaults();
}

void SubtitlePanel::ShowFaults()
{
    const auto faulty = std::count_if(m_faults.begin(), m_faults.end(), [](unsigned f) { return f != 0; });
    m_summary->setText(
        Text(kTextSubtitleSummary, {QString::number(m_list->GetItemCount()), QString::number(faulty)}));
    const auto row = static_cast<std::size_t>(std::max(Current(), 0));
    const unsigned faults = Current() >= 0 && row < m_faults.size() ? m_faults[row] : 0;
    QStringList reasons;
    for (const auto& [fault, textId] : kFaultTexts)
        if ((faults & fault) != 0)
            reasons << Text(textId);
    m_faultText->setText(reasons.join(u' '));
    m_faultText->setVisible(!reasons.isEmpty());
}

// --- What is done to rows ---

void SubtitlePanel::Edit(UINT stepId, const std::function<void()>& change)
{
    m_list->RunAsStep(Text(stepId).toStdWString(), change);
    OnRowsChanged();
}

void SubtitlePanel::AddRow()
{
    const int row = Current() >= 0 ? Current() + 1 : m_list->GetItemCount();
    const auto in = static_cast<DWORD>(m_transport.Frame());
    const auto length = static_cast<DWORD>(kNewRow * FrameRateOf(m_rate).PerSecond());
    Edit(kStepSubtitleAdd, [&] { m_list->InserItem(row, CString(), in, in + length, nullptr); });
    m_list->SetSelItem(row);
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

void SubtitlePanel::SplitRow()
{
    const int row = Current();
    const SubtitleTimes times = TimesOf(*m_list, row);
    const DWORD cut = CutOf(times, static_cast<DWORD>(m_transport.Frame()));
    const auto [first, second] = SplitSubtitle(RowText(row), PartBefore(times, cut));
    const CString name = m_list->GetItemText(row, kKvSubTitleTemplate);
    Edit(kStepSubtitleSplit, [&, before = first.toStdWString(), behind = second.toStdWString()] {
        const DWORD out = cut == kNoTime ? kNoTime : times.out;
        m_list->ModifyItem(row, before.c_str(), &times.in, &cut, nullptr);
        m_list->InserItem(row + 1, behind, cut, out, name.c_str());
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
    QStringList texts;
    std::vector<SubtitleTimes> times;
    for (const int row : rows) {
        texts << RowText(row);
        times.push_back(TimesOf(*m_list, row));
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
    const auto here = static_cast<DWORD>(m_transport.Frame());
    Edit(in ? kStepSubtitleIn : kStepSubtitleOut, [&] { m_list->SetTimeCode(row, here, in ? 1 : 0); });
    if (!in && row + 1 < m_list->GetItemCount())
        m_list->SetSelItem(row + 1);
    ShowFaults();
}

void SubtitlePanel::ShiftAll()
{
    bool isGiven = false;
    const QString typed =
        QInputDialog::getText(this, Text(kTextSubtitleShift).remove(u'&'), Text(kTextSubtitleShiftBy),
                              QLineEdit::Normal, QStringLiteral("+00:00:00:00"), &isGiven);
    if (!isGiven)
        return;
    const std::optional<std::int64_t> by = ShiftOf(typed, m_rate);
    if (!by) {
        emit Reported(LogType::Error, Text(kTextSubtitleBadShift, {typed}));
        return;
    }
    std::vector<SubtitleTimes> rows;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const std::optional<SubtitleTimes> shifted = Shifted(TimesOf(*m_list, row), *by);
        if (!shifted) {
            emit Reported(LogType::Error, Text(kTextSubtitleShiftedOut, {QString::number(row + 1)}));
            return;
        }
        rows.push_back(*shifted);
    }
    Edit(kStepSubtitleShift, [&] {
        for (std::size_t row = 0; row < rows.size(); ++row)
            SetTimes(*m_list, static_cast<int>(row), rows[row]);
    });
}

void SubtitlePanel::UseTemplate(const QString& name)
{
    Edit(kStepSubtitleTemplate, [&, text = name.toStdWString()] {
        for (const int row : SelectedRows()) {
            const SubtitleTimes times = TimesOf(*m_list, row);
            m_list->ModifyItem(row, nullptr, &times.in, &times.out, text.c_str());
        }
    });
}

} // namespace titler
