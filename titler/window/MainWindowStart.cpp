// The start page, and files that are dropped on the window.
#include "media/MediaPanel.h"
#include "media/RulesPanel.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "title/CanvasView.h"
#include "title/TextInspector.h"
#include "title/TitleWorkspace.h"
#include "window/EmptyHint.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/StartPage.h"
#include "window/Texts.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QUrl>

#include <utility>

namespace titler {
namespace {

constexpr const char* kSample = ":/titler/samples/sample.ktitle";

// The one file of a drop; empty for anything else.
QString DroppedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

} // namespace

void MainWindow::BuildStart()
{
    m_start = new StartPage(m_pages);
    m_pages->addWidget(m_start);
    setAcceptDrops(true);
    connect(m_start, &StartPage::SampleWanted, this, &MainWindow::BeginSample);
    connect(m_start, &StartPage::OpenWanted, this, &MainWindow::ChooseProject);
    connect(m_start, &StartPage::NewWanted, this, &MainWindow::BeginFormat);
    connect(m_start, &StartPage::ProjectWanted, this, [this](const QString& file) {
        if (MayLeave())
            OpenProject(file);
    });
    connect(m_start, &StartPage::RemoveWanted, this, &MainWindow::RemoveRecent);
    connect(m_start, &StartPage::Left, this, &MainWindow::LeaveStart);
    connect(m_start, &StartPage::Typed, this, [this](const QString& text) {
        if (!m_document.IsUntouched()) {
            if (!MayLeave())
                return;
            m_document.New();
        }
        Show(Workspace::Design);
        QPlainTextEdit& field = m_workspace->Texts().Field();
        field.setFocus();
        field.selectAll();
        field.insertPlainText(text);
    });
    // Whatever is done is about the workspace.
    connect(&m_document, &Document::ProjectChanged, this, &MainWindow::LeaveStart);

    auto* noTitle = new EmptyHint(*m_workspace->Canvas().viewport(), kTextCanvasEmpty);
    const auto showTitle = [this, noTitle] {
        noTitle->setVisible(m_document.Current().title.text.isEmpty());
    };
    connect(&m_document, &Document::ProjectChanged, noTitle, showTitle);
    auto* noRows = new EmptyHint(m_subtitles->List(), kTextSubtitlesNone);
    const auto showRows = [this, noRows] { noRows->setVisible(m_subtitles->List().GetItemCount() == 0); };
    connect(m_subtitles, &SubtitlePanel::StepsChanged, noRows, showRows);
    showRows();
}

bool MainWindow::IsAtStart() const
{
    return m_pages->currentWidget() == m_start;
}

void MainWindow::ShowStart()
{
    Settle();
    m_start->ShowProjects(m_settings != nullptr ? m_settings->projects : QStringList());
    m_pages->setCurrentWidget(m_start);
    m_start->setFocus();
}

void MainWindow::LeaveStart()
{
    if (!IsAtStart())
        return;
    m_pages->setCurrentWidget(PageOf(m_current));
    m_pages->currentWidget()->setFocus();
}

QWidget* MainWindow::PageOf(Workspace workspace) const
{
    switch (workspace) {
    case Workspace::Clips:
        return m_media;
    case Workspace::Rules:
        return m_rulesPanel;
    case Workspace::Subtitles:
        return m_subtitles;
    case Workspace::Log:
        return m_log;
    default:
        return m_workspace;
    }
}

// A copy: the sample itself is not the user's to change.
void MainWindow::BeginSample()
{
    ProjectError error;
    std::optional<titler::Project> sample = LoadProject(QLatin1String(kSample), error);
    if (!sample || !MayLeave())
        return;
    m_document.Begin(std::move(*sample), {}, false);
    m_transport.Seek(MiddleFrame(m_document.Current()));
    Show(Workspace::Design);
}

void MainWindow::BeginFormat(const SKvVideoResolution& format)
{
    if (!MayLeave())
        return;
    titler::Project project = FirstProject();
    SetVideoFormat(project, format);
    m_document.Begin(std::move(project), {}, false);
    m_transport.Seek(MiddleFrame(m_document.Current()));
    Show(Workspace::Design);
}

void MainWindow::RemoveRecent(const QString& file)
{
    KeepProject(file, false);
    m_start->ShowProjects(m_settings != nullptr ? m_settings->projects : QStringList());
}

void MainWindow::OpenAny(const QString& file)
{
    const QString ending = QFileInfo(file).suffix().toLower();
    if (QFileInfo(file).isDir()) {
        Show(Workspace::Clips);
        Media().OpenFolder(file);
    } else if (ending == QLatin1String("ktitle")) {
        if (MayLeave())
            OpenProject(file);
    } else if (ending == QLatin1String("srt") || ending == QLatin1String("vtt") ||
               ending == QLatin1String("txt")) {
        Show(Workspace::Subtitles);
        if (m_subtitles->MayLeave())
            m_subtitles->Import(file);
    } else {
        Say(Text(kTextNoSuchKind, {QDir::toNativeSeparators(file)}), LogType::Warning);
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DroppedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

// Once the program that gave the file has its answer: a question may come up.
void MainWindow::dropEvent(QDropEvent* event)
{
    const QString file = DroppedFile(*event->mimeData());
    event->acceptProposedAction();
    QMetaObject::invokeMethod(
        this, [this, file] { OpenAny(file); }, Qt::QueuedConnection);
}

} // namespace titler
