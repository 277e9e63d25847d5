#include "window/MainWindow.h"

#include "KvVideoFormat.h"
#include "media/MediaPanel.h"
#include "media/RulesPanel.h"
#include "pages/PageCommands.h"
#include "recovery/Autosave.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "text/TextTools.h"
#include "title/AnimationInspector.h"
#include "title/CanvasView.h"
#include "title/TitleWorkspace.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Settings.h"
#include "window/Skin.h"
#include "window/Texts.h"
#include "window/VideoFormats.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QActionGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>

#include <cmath>

namespace titler {

MainWindow::MainWindow(Caption caption, bool hsb)
    : m_pages(new QStackedWidget(this))
    , m_workspace(new TitleWorkspace(m_document, m_transport, hsb, m_pages))
    , m_media(new MediaPanel(m_rules, m_pages))
    , m_rulesPanel(new RulesPanel(m_rules, m_pages))
    , m_subtitles(new SubtitlePanel(m_document, m_transport, m_pages))
    , m_log(new LogPanel(m_pages))
    , m_video(new QLabel)
    , m_audio(new QLabel)
    , m_zoom(new QLabel)
{
    m_pages->addWidget(m_workspace);
    for (QWidget* page : std::initializer_list<QWidget*>{m_media, m_rulesPanel, m_subtitles, m_log}) {
        page->setProperty("role", "panel");
        page->setAttribute(Qt::WA_StyledBackground);
        m_pages->addWidget(page);
    }
    setCentralWidget(m_pages);
    m_workspace->setFocus();
    BuildStart();
    BuildMenus();
    BuildBar(caption);
    BuildStatusLine();
    connect(&m_document, &Document::FileChanged, this, &MainWindow::ShowFile);
    connect(&m_document, &Document::ProjectChanged, this, &MainWindow::ShowFormat);
    connect(&m_document.Steps(), &QUndoStack::indexChanged, this, &MainWindow::ShowSteps);
    connect(&m_workspace->Animation(), &AnimationInspector::Refused, this,
            [this](const QString& reason) { Say(reason, LogType::Warning); });
    connect(&m_workspace->Canvas(), &CanvasView::ZoomChanged, this, &MainWindow::ShowZoom);
    connect(&m_subtitles->Canvas(), &CanvasView::ZoomChanged, this, &MainWindow::ShowZoom);
    connect(m_pages, &QStackedWidget::currentChanged, this, &MainWindow::ShowZoom);
    connect(m_media, &MediaPanel::FolderWanted, this, &MainWindow::ChooseMedia);
    connect(&m_rules, &NamingRules::SaveFailed, this,
            [this](const QString& fault) { Say(fault, LogType::Warning); });
    connect(m_rulesPanel, &RulesPanel::UndoChanged, this, &MainWindow::ShowSteps);
    connect(m_subtitles, &SubtitlePanel::StepsChanged, this, &MainWindow::ShowSteps);
    connect(m_subtitles, &SubtitlePanel::StepsChanged, this, &MainWindow::ShowFile);
    connect(&m_subtitles->Steps(), &QUndoStack::indexChanged, this,
            [this] { LogStep(m_subtitles->Steps(), m_loggedSubtitleStep); });
    connect(m_subtitles, &SubtitlePanel::Reported, this, &MainWindow::Report);
    connect(m_log, &LogPanel::Reported, this, &MainWindow::Report);
    connect(m_subtitles, &SubtitlePanel::SubtitleShown, &m_workspace->Canvas(), &CanvasView::ShowSubtitle);
    connect(&m_document.Steps(), &QUndoStack::indexChanged, this,
            [this] { LogStep(m_document.Steps(), m_loggedStep); });
    connect(m_media, &MediaPanel::Ready, this, [this] { m_log->Add(LogType::Message, m_media->Summary()); });
    InEachLanguage(*this, [this] {
        ShowFile();
        ShowFormat();
        ShowZoom();
        ShowSteps();
        ShowRecent();
    });
}

// The views go before the document: a drag that is under way ends with them and still tells the document. The
// bar goes before the commands of its menu; what the document says of its own end is for nobody.
MainWindow::~MainWindow()
{
    m_autosave.reset();
    m_text.reset();
    m_document.disconnect(this);
    m_document.Steps().disconnect(this);
    m_subtitles->disconnect(this);
    m_pages->disconnect(this);
    m_subtitles->Steps().disconnect(this);
    delete m_bar;
    delete m_menuBar;
    delete m_workspace;
    delete m_rulesPanel;
    delete m_subtitles;
    delete m_log;
}

PageStrip& MainWindow::Pages()
{
    return m_workspace->Pages();
}

void MainWindow::BuildBar(Caption caption)
{
    if (caption == Caption::Menus) {
        m_menuBar = new ApplicationMenuBar(*this, m_commands, m_tools);
        setMenuWidget(m_menuBar);
        return;
    }
    m_bar = new ApplicationBar(*this, m_commands, m_tools);
    setMenuWidget(m_bar);
    connect(m_bar, &ApplicationBar::WorkspaceChosen, this, &MainWindow::ShowPage);
}

void MainWindow::Show(Workspace workspace)
{
    if (m_bar != nullptr)
        m_bar->Select(workspace);
    ShowPage(workspace);
}

void MainWindow::ShowPage(Workspace workspace)
{
    unsigned application = TraitsOf(workspace).application;
    if (application == kEvery)
        application = m_bar != nullptr ? m_bar->Active() : m_application;
    if (workspace == m_current && application == m_application) {
        LeaveStart();
        return;
    }
    Settle();
    m_current = workspace;
    m_application = application;
    m_workspaces->actions()[static_cast<int>(workspace)]->setChecked(true);
    const bool areTitles = TraitsOf(workspace).application == kTitles;
    m_safeAreas->setEnabled(areTitles);                  // its key is another one elsewhere
    m_workspace->CommandsOfPages().SetActive(areTitles); // likewise
    if (m_menuBar != nullptr)
        m_menuBar->ShowTools(workspace);
    if (areTitles)
        m_workspace->Show(workspace == Workspace::Design ? TitleTask::Design : TitleTask::Animate);
    m_pages->setCurrentWidget(PageOf(workspace));
    m_pages->currentWidget()->setFocus(); // its proxy: what the workspace is about
    ShowSteps();
    ShowFile();
}

void MainWindow::BuildStatusLine()
{
    for (const auto& [label, tipId] :
         {std::pair(m_zoom, kTextZoomTip), std::pair(m_video, kTextVideoFormatTip),
          std::pair(m_audio, kTextAudioFormatTip)}) {
        InEachLanguage(*label, [label = label, tipId = tipId] {
            label->setToolTip(Text(tipId));
            label->setAccessibleDescription(label->toolTip());
        });
        label->setMinimumWidth(1); // cut in a small window
        statusBar()->addPermanentWidget(label);
    }
    statusBar()->setSizeGripEnabled(false);
}

void MainWindow::ShowFile()
{
    const bool areSubtitles = AreSubtitles();
    const QString& file = areSubtitles ? m_subtitles->FileName() : m_document.FileName();
    const bool isModified = areSubtitles ? m_subtitles->IsModified() : m_document.IsModified();
    const QString name = file.isEmpty() ? Text(kTextUntitled) : QFileInfo(file).fileName();
    setWindowTitle(Text(kTextWindowTitle, {name, Text(kTextTitler)}));
    setWindowModified(isModified);
    const QString shown = isModified ? Text(kTextCaptionModified, {name}) : name;
    if (m_bar != nullptr)
        m_bar->ShowDocument(shown);
    if (m_menuBar != nullptr)
        m_menuBar->ShowDocument(shown);
}

void MainWindow::ShowFormat()
{
    m_video->setText(FormatText(m_document.Current().video));
    std::wstring text;
    KvGetAudioFormatString(m_document.Current().audio, text);
    m_audio->setText(QString::fromStdWString(text));
    ShowSteps();
}

void MainWindow::ShowZoom()
{
    const QWidget* page = m_pages->currentWidget();
    const bool hasCanvas = page == m_workspace || page == m_subtitles;
    const double percent = SeenCanvas().Zoom() * 100;
    m_zoom->setText(hasCanvas ? Text(kTextZoom, {QString::number(std::lround(percent))}) : QString());
    for (QAction* command : m_zoomCommands)
        command->setEnabled(hasCanvas);
}

CanvasView& MainWindow::SeenCanvas()
{
    return m_pages->currentWidget() == m_subtitles ? m_subtitles->Canvas() : m_workspace->Canvas();
}

void MainWindow::Say(const QString& text, LogType type)
{
    statusBar()->showMessage(text, kMessageTime);
    m_log->Add(type, text);
}

void MainWindow::Report(LogType type, const QString& text)
{
    if (type == LogType::Error)
        ShowError(text);
    else
        Say(text, type);
}

// Steps that became part of one another keep the index, and are told once.
void MainWindow::LogStep(const QUndoStack& steps, int& logged)
{
    const int index = steps.index();
    if (index > logged)
        m_log->Add(LogType::Message, Text(kTextStepDone, {steps.text(index - 1)}));
    else if (index < logged && index < steps.count())
        m_log->Add(LogType::Message, Text(kTextStepUndone, {steps.text(index)}));
    logged = index;
}

void MainWindow::ShowError(const QString& text)
{
    m_log->Add(LogType::Error, text);
    KvMessageBox(this, text.toStdWString(), MB_OK | MB_ICONERROR);
}

void MainWindow::Settle()
{
    CommitFields(*this);
    m_subtitles->List().Settle(); // what is refused stays open, and is spoken of where it matters
    m_document.EndRun();
}

// Space plays, except where the focus has its own use for it: a text field has kept it for itself already.
bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const QWidget* focus = focusWidget();
        const bool isWanted = qobject_cast<const QAbstractButton*>(focus) != nullptr ||
                              qobject_cast<const QComboBox*>(focus) != nullptr ||
                              qobject_cast<const QAbstractItemView*>(focus) != nullptr;
        if (key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier && isWanted) {
            event->accept();
            return true;
        }
    }
    return CKvFrameWnd::event(event);
}

// The title bar sees for itself; the menu bar is told.
void MainWindow::changeEvent(QEvent* event)
{
    CKvFrameWnd::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && m_menuBar != nullptr)
        m_menuBar->UpdateRestoreMaxStatus(isMaximized() ? SIZE_MAXIMIZED : SIZE_RESTORED);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(MayLeave() && m_subtitles->MayLeave());
    if (!event->isAccepted())
        return;
    if (const QString fault = m_rules.Save(); !fault.isEmpty())
        ShowError(fault);
    if (m_settings == nullptr)
        return;
    m_settings->geometry = saveGeometry();
    m_settings->workspace = QLatin1String(TraitsOf(m_current).name);
    m_settings->hsb = m_workspace->IsHsb();
    m_settings->pages = m_showPages->isChecked();
    m_settings->theme = ThemeName(CurrentTheme());
    KeepCharacters();
    if (const QString fault = m_settings->Save(); !fault.isEmpty())
        ShowError(fault);
}

void MainWindow::Remember(Settings& settings)
{
    m_settings = &settings;
    restoreGeometry(settings.geometry); // nothing happens where it is none
    m_showPages->setChecked(settings.pages);
    if (const std::optional<Workspace> workspace = WorkspaceOf(settings.workspace))
        Show(*workspace);
    m_text->Characters().SetKept(settings.recentCharacters, settings.favouriteCharacters);
    ShowRecent();
}

void MainWindow::ChooseMedia()
{
    const QString folder = QFileDialog::getExistingDirectory(this, Text(kTextMediaChooseFolder));
    if (!folder.isEmpty())
        Media().OpenFolder(folder);
}

void MainWindow::About()
{
    KvMessageBox(this, Text(kTextAboutText).toStdWString(), MB_OK | MB_ICONINFORMATION);
}

} // namespace titler
