#include "subtitles/SubtitlePanel.h"

#include "edit/Document.h"
#include "subtitles/SubtitleFindBar.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"
#include "time/TransportBar.h"
#include "title/CanvasView.h"
#include "window/Commands.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QUndoStack>
#include <QVBoxLayout>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace titler {
namespace {

constexpr DWORD kListId = 1001;
constexpr int kCheckAfter = 150; // milliseconds

std::int64_t FrameOf(DWORD time)
{
    return time == kNoTime ? -1 : static_cast<std::int64_t>(time);
}

} // namespace

SubtitlePanel::SubtitlePanel(Document& document, Transport& transport, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_transport(transport)
    , m_list(new SubtitleList)
    , m_find(new SubtitleFindBar(*m_list))
    , m_canvas(new CanvasView(document, transport))
    , m_summary(new QLabel)
    , m_faultText(new QLabel)
    , m_rate(document.Current().video.frameRate)
{
    BuildCommands();
    auto* parts = new QSplitter(this);
    auto* stage = new QWidget(parts);
    auto* column = new QVBoxLayout(stage);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_canvas, 1);
    auto* playback = new TransportBar(document, transport);
    for (QAction* command : playback->Commands())
        if (command != nullptr)
            GiveShortcutAway(*command); // the window's own answers it: two would be none
    column->addWidget(playback);
    parts->setChildrenCollapsible(false);
    parts->setHandleWidth(1);
    parts->insertWidget(0, BuildRows());
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 1);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(parts);
    FocusFirst(*this, *m_list);
    Connect();
    SetRate(m_rate);
    OnRowsChanged();
    InEachLanguage(*this, [this] {
        NameTemplates();
        NameStepsAnew();
        ShowFaults();
    });
}

// The list goes later, and its steps with it.
SubtitlePanel::~SubtitlePanel()
{
    Steps().disconnect(this);
    m_list->disconnect(this);
}

QWidget* SubtitlePanel::BuildRows()
{
    m_list->Create(CRect(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kListId);
    m_list->setMinimumWidth(60);
    m_summary->setProperty("role", "hint");
    m_faultText->setProperty("role", "fault");
    m_faultText->setMinimumHeight(m_faultText->fontMetrics().lineSpacing()); // the list does not jump
    m_faultText->setMinimumWidth(1);
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
    connect(m_list, &SubtitleList::RowsEdited, this, [this] {
        GiveCopiedSources();
        OnRowsChanged();
    });
    connect(m_list, &SubtitleList::RowsPickedUp, this, &SubtitlePanel::RememberCopied);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &SubtitlePanel::OnClipboardChanged);
    connect(m_list, &SubtitleList::TextEdited, this, &SubtitlePanel::OnRowsChanged);
    connect(m_list, &SubtitleList::CellTyped, this, &SubtitlePanel::CellTyped);
    connect(m_list, &SubtitleList::TimeCodeEdited, this, &SubtitlePanel::OnRowsChanged);
    connect(&Steps(), &QUndoStack::indexChanged, this, [this] {
        NameStep();
        LengthenProject();
        OnRowsChanged();
    });
    connect(m_list, &CKvReportListCtrl::SelectionEdited, this, &SubtitlePanel::OnSelectionChanged);
    connect(m_list, &CKvTextListBase::ContextMenuOpening, this, [this](QMenu* menu) { FillMenu(*menu); });
    connect(m_find, &SubtitleFindBar::Found, this, [this] {
        OnRowsChanged();
        ShowFaults();
    });
    connect(
        m_find, &SubtitleFindBar::Replaced, this, [this](const QString& what, const QString& by, int count) {
            emit Reported(LogType::Message, Text(kTextSubtitleReplaced, {what, by, QString::number(count)}));
        });
    connect(&m_transport, &Transport::FrameChanged, this, &SubtitlePanel::ShowPlaying);
    connect(&m_transport, &Transport::PlayingChanged, this, &SubtitlePanel::Follow);
    connect(&m_document, &Document::ProjectOpened, this, [this] { m_isOpened = true; });
    connect(&m_document, &Document::ProjectChanged, this, &SubtitlePanel::OnProjectChanged);
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

bool SubtitlePanel::HasTyped() const
{
    return m_list->Typed().has_value();
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
    const int row = m_list->GetCurrentItem();
    return row >= 0 ? row : m_list->GetLastSelItem();
}

DWORD SubtitlePanel::PlayHead() const
{
    return ShownAtRate(static_cast<DWORD>(m_transport.Frame()), m_transport.Rate(), FrameRateOf(m_rate));
}

// The current one where none is selected.

std::vector<int> SubtitlePanel::SelectedRows() const
{
    CArray<int, int> rows;
    if (m_list->GetAllSelItems(rows) == 0 && Current() >= 0)
        rows.push_back(Current());
    return {rows.begin(), rows.end()};
}

QString SubtitlePanel::RowText(int row) const
{
    CString text;
    m_list->GetString(row, text);
    return QString::fromStdWString(text);
}

void SubtitlePanel::SetRate(EKvFrameRate rate)
{
    m_rate = rate;
    m_list->SetTimecodeFormat(rate, FrameRateOf(rate).dropFrame);
}

// Rows and their steps keep the rate at which they were made.
void SubtitlePanel::OnProjectChanged()
{
    const EKvFrameRate rate = m_document.Current().video.frameRate;
    if (rate != m_rate && m_list->GetItemCount() == 0 && Steps().count() == 0)
        SetRate(rate);
    if (std::exchange(m_isOpened, false))
        LengthenProject();
    ShowCommands();
    ShowPlaying();
    ShowFaults();
}

void SubtitlePanel::LengthenProject()
{
    const FrameRate rate = FrameRateOf(m_rate);
    DWORD frames = 0;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = m_list->Times(row);
        if (times.in != kNoTime) // its frame is to be seen
            frames = std::max(frames, FirstAtRate(times.in, rate, m_transport.Rate()) + 1);
        if (times.out != kNoTime)
            frames = std::max(frames, FirstAtRate(times.out, rate, m_transport.Rate()));
    }
    const int duration = static_cast<int>(std::min<DWORD>(frames, kLongestDuration));
    if (duration <= m_document.Current().duration)
        return;
    m_document.Edit(EditKind::SubtitleLength, kStepSubtitleDuration,
                    [&](Project& project) { project.duration = duration; });
    emit Reported(LogType::Message, Text(kTextSubtitleLengthened, {TimeCode(duration, m_transport.Rate())}));
}

void SubtitlePanel::OnSelectionChanged()
{
    m_find->ForgetResult();
    ShowCommands();
    ShowFaults();
}

void SubtitlePanel::OnRowsChanged()
{
    m_find->ForgetResult();
    m_list->TakeTouchedRows(); // no step's, or one's that is named
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
    for (QAction* command : m_templates)
        command->setEnabled(isShown && hasRow);
    CheckTemplate();
    m_useRate->setEnabled(isShown && m_rate != m_document.Current().video.frameRate);
}

void SubtitlePanel::FillMenu(QMenu& menu)
{
    ShowCommands();
    AddToMenu(menu, m_listMenu);
}

void SubtitlePanel::ShowPlaying()
{
    const int row = m_list->FindPlayIndex(PlayHead());
    if (row != m_list->GetPlayIndex())
        m_list->SetPlayIndex(row);
    const Subtitle shown =
        row < 0 ? Subtitle()
                : Subtitle{WithTags(RowText(row)),
                           QString::fromStdWString(m_list->GetItemText(row, kKvSubTitleTemplate))};
    emit SubtitleShown(shown);
}

void SubtitlePanel::Check()
{
    std::vector<TimedText> rows;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        const SubtitleTimes times = m_list->Times(row);
        rows.push_back(
            {FrameOf(times.in), FrameOf(times.out), CharactersOf(PlainSubtitle(RowText(row)).trimmed())});
    }
    m_faults = CheckSubtitles(rows, FrameRateOf(m_rate).PerSecond());
    std::unordered_map<std::uint64_t, SubtitleFaults> signs;
    for (std::size_t row = 0; row < m_faults.size(); ++row)
        if (m_faults[row].kinds != 0)
            signs.emplace(m_list->GetRowKey(static_cast<int>(row)), m_faults[row]);
    m_list->SetFaults(std::move(signs));
    ShowFaults();
    ShowTemplates();
}

void SubtitlePanel::ShowFaults()
{
    const auto faulty = std::count_if(m_faults.begin(), m_faults.end(),
                                      [](const SubtitleFaults& faults) { return faults.kinds != 0; });
    const QString counted =
        Text(kTextSubtitleSummary, {QString::number(m_list->GetItemCount()), QString::number(faulty)});
    const bool isOwnRate = m_rate != m_document.Current().video.frameRate;
    m_summary->setText(isOwnRate ? Text(kTextSubtitleSummaryRate, {counted, RateText(FrameRateOf(m_rate))})
                                 : counted);
    const auto row = static_cast<std::size_t>(std::max(Current(), 0));
    const bool isKnown = Current() >= 0 && row < m_faults.size();
    m_faultText->setText(isKnown ? FaultTexts(m_faults[row]).join(u' ') : QString());
    m_faultText->setToolTip(PlainTip(m_faultText->text()));
}

} // namespace titler
