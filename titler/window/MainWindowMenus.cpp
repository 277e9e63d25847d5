#include "media/MediaPanel.h"
#include "media/RulesPanel.h"
#include "pages/PageCommands.h"
#include "subtitles/SubtitlePanel.h"
#include "time/TransportBar.h"
#include "title/CanvasView.h"
#include "title/TitleWorkspace.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Skin.h"
#include "window/Texts.h"
#include "window/VideoFormats.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>

#include <utility>

namespace titler {
QMenu& MainWindow::AddMenu(UINT nameId)
{
    return m_commands.AddMenu(nameId);
}

QAction* MainWindow::AddItem(QMenu& menu, UINT nameId, const QList<QKeySequence>& keys,
                             std::function<void()> run, const wchar_t* icon)
{
    QAction* action = menu.addAction(QString());
    NameCommand(*action, nameId);
    action->setShortcuts(keys);
    if (icon != nullptr)
        action->setIcon(SkinIcon(icon));
    connect(action, &QAction::triggered, this, std::move(run));
    return action;
}

void MainWindow::BuildMenus()
{
    BuildFileMenu();
    BuildEditMenu();
    BuildViewMenu();
    BuildProjectMenu();
    BuildPagesMenu();
    BuildPlaybackMenu();
    BuildSubtitlesMenu();
    BuildRulesMenu();
    AddCommands(kTextLogMenu, m_log->Commands(), Workspace::Log);
    AddItem(AddMenu(kTextHelpMenu), kTextAbout, {QKeySequence::HelpContents}, [this] { About(); });
    for (const std::unique_ptr<QMenu>& menu : m_commands.Menus())
        m_commands.Number(*menu);
}

void MainWindow::BuildFileMenu()
{
    QMenu& menu = AddMenu(kTextFileMenu);
    QAction* create = AddItem(
        menu, kTextNew, {QKeySequence::New}, [this] { New(); }, L"titler_tool_new");
    QAction* open = AddItem(
        menu, kTextOpen, {QKeySequence::Open}, [this] { ChooseProject(); }, L"titler_tool_open");
    menu.addSeparator();
    QAction* save = AddItem(
        menu, kTextSave, {QKeySequence::Save}, [this] { Save(); }, L"titler_tool_save");
    AddItem(menu, kTextSaveAs, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)}, [this] { SaveAs(); });
    menu.addSeparator();
    QAction* picture = AddItem(
        menu, kTextExportFrame, {QKeySequence(Qt::CTRL | Qt::Key_E)}, [this] { ChooseExport(); },
        L"titler_tool_export");
    QAction* pictures = AddItem(
        menu, kTextExportFrames, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E)},
        [this] { ChooseAnimationExport(); }, L"titler_tool_exportframes");
    QAction* folder = AddItem(
        menu, kTextOpenMedia, {QKeySequence(Qt::CTRL | Qt::Key_M)}, [this] { ChooseMedia(); },
        L"titler_tool_folder");
    QAction* rescan = AddItem(
        menu, kTextRescan, {QKeySequence(Qt::Key_F5)}, [this] { m_media->ScanAgain(); },
        L"titler_tool_rescan");
    menu.addSeparator();
    BuildRecentItems(menu);
    AddItem(menu, kTextStartPage, {}, [this] { ShowStart(); });
    menu.addSeparator();
    AddItem(menu, kTextQuit, {QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { close(); });

    ToolsOf(Workspace::Design) << create << open << save << nullptr << picture << nullptr;
    ToolsOf(Workspace::Animate) << open << save << nullptr << pictures << nullptr;
    ToolsOf(Workspace::Clips) << folder << rescan;
}

void MainWindow::BuildRecentItems(QMenu& menu)
{
    QMenu& recent = *menu.addMenu(QString());
    InEachLanguage(recent, [&recent] { recent.setTitle(Text(kTextRecentMenu)); });
    for (int i = 0; i < kMostRecentProjects; ++i)
        m_recent << AddItem(recent, kTextRecent, {}, [this, i] { OpenRecent(i); });
    m_noRecent = AddItem(recent, kTextNoRecent, {}, [] {});
    m_noRecent->setEnabled(false);
    ShowRecent();
}

void MainWindow::BuildEditMenu()
{
    QMenu& menu = AddMenu(kTextEditMenu);
    m_undo = AddItem(
        menu, kTextUndo, QKeySequence::keyBindings(QKeySequence::Undo), [this] { Undo(); },
        L"titler_tool_undo");
    m_redo = AddItem(
        menu, kTextRedo, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
        [this] { Redo(); }, L"titler_tool_redo");
    BuildTextItems(menu);
    for (const Workspace workspace :
         {Workspace::Design, Workspace::Animate, Workspace::Rules, Workspace::Subtitles, Workspace::Log})
        ToolsOf(workspace) << m_undo << m_redo << nullptr;
}

void MainWindow::BuildViewMenu()
{
    CanvasView& canvas = m_workspace->Canvas();
    QMenu& menu = AddMenu(kTextViewMenu);
    m_safeAreas = AddItem(
        menu, kTextSafeAreas, {QKeySequence(Qt::CTRL | Qt::Key_G)}, [] {}, L"titler_tool_safeareas");
    m_safeAreas->setCheckable(true);
    m_safeAreas->setChecked(canvas.ShowsSafeAreas());
    connect(m_safeAreas, &QAction::toggled, &canvas, &CanvasView::ShowSafeAreas);
    m_showPages = AddItem(menu, kTextShowPages, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)}, [] {});
    m_showPages->setCheckable(true);
    m_showPages->setChecked(true);
    connect(m_showPages, &QAction::toggled, m_workspace, &TitleWorkspace::ShowPages);
    menu.addSeparator();
    QAction* fit = AddItem(
        menu, kTextFit, {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { SeenCanvas().FitToWindow(); },
        L"titler_tool_fit");
    QAction* fullSize = AddItem(
        menu, kTextFullSize, {QKeySequence(Qt::CTRL | Qt::Key_1)}, [this] { SeenCanvas().SetZoom(1); },
        L"titler_tool_fullsize");
    QAction* zoomIn = AddItem(
        menu, kTextZoomIn, {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
        [this] { SeenCanvas().ZoomIn(); }, L"titler_tool_zoomin");
    QAction* zoomOut = AddItem(
        menu, kTextZoomOut, {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { SeenCanvas().ZoomOut(); },
        L"titler_tool_zoomout");
    m_zoomCommands << fit << fullSize << zoomIn << zoomOut;
    menu.addSeparator();
    BuildWorkspaceItems(menu);
    menu.addSeparator();
    BuildThemeItems(menu);
    BuildLanguageItems(menu);
    for (const Workspace workspace : {Workspace::Design, Workspace::Animate})
        ToolsOf(workspace) << fit << fullSize << zoomIn << zoomOut << nullptr << m_safeAreas;
}

void MainWindow::BuildWorkspaceItems(QMenu& menu)
{
    m_workspaces = new QActionGroup(this);
    for (const Workspace workspace : kWorkspaces) {
        const WorkspaceTraits& traits = TraitsOf(workspace);
        QAction* action =
            AddItem(menu, traits.textId, {QKeySequence(traits.key)}, [this, workspace] { Show(workspace); });
        action->setCheckable(true);
        action->setChecked(workspace == m_current);
        m_workspaces->addAction(action);
        InEachLanguage(*action, [action] {
            action->setToolTip(Text(kTextWorkspaceTip, {WithoutMnemonic(action->text())}));
            action->setStatusTip(action->toolTip());
        });
    }
}

void MainWindow::BuildThemeItems(QMenu& view)
{
    QMenu& menu = *view.addMenu(QString());
    InEachLanguage(menu, [&menu] { menu.setTitle(Text(kTextThemeMenu)); });
    auto* themes = new QActionGroup(this);
    for (const auto& [theme, textId] :
         {std::pair(Theme::Dark, kTextThemeDark), std::pair(Theme::Light, kTextThemeLight)}) {
        QAction* action = AddItem(menu, textId, {}, [this, chosen = theme] {
            ApplyTheme(*qApp, chosen);
            if (IsAtStart())
                ShowStart(); // its rows have colours of their own
        });
        action->setCheckable(true);
        action->setChecked(theme == CurrentTheme());
        themes->addAction(action);
    }
}

// Each under its own name, so that whoever cannot read the present one finds theirs.
void MainWindow::BuildLanguageItems(QMenu& menu)
{
    QMenu& languages = *menu.addMenu(QString());
    InEachLanguage(languages, [&languages] { languages.setTitle(Text(kTextLanguageMenu)); });
    auto* group = new QActionGroup(this);
    for (const Language& language : Languages()) {
        QAction* action = languages.addAction(QString::fromUtf8(language.name));
        action->setCheckable(true);
        group->addAction(action);
        InEachLanguage(*action, [action, &language] {
            action->setToolTip(Text(kTextLanguageTip));
            action->setStatusTip(action->toolTip());
            action->setChecked(&language == &CurrentLanguage());
        });
        // Later: the menu that it was chosen from is made anew.
        connect(
            action, &QAction::triggered, this, [this, &language] { TakeLanguage(language); },
            Qt::QueuedConnection);
    }
}

void MainWindow::TakeLanguage(const Language& language)
{
    ChooseLanguage(language);
    if (m_settings == nullptr)
        return;
    m_settings->language = QLatin1String(language.code);
    if (const QString fault = m_settings->Save(); !fault.isEmpty())
        Say(fault, LogType::Warning);
}

void MainWindow::BuildProjectMenu()
{
    QMenu& menu = AddMenu(kTextProjectMenu);
    m_formats = new QActionGroup(this);
    m_formats->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const SKvVideoResolution& format : VideoFormats()) {
        QAction* action = menu.addAction(QString());
        InEachLanguage(*action, [action, &format] {
            action->setText(FormatText(format));
            action->setToolTip(Text(kTextFormatTip));
            action->setStatusTip(action->toolTip());
        });
        action->setCheckable(true);
        m_formats->addAction(action);
        connect(action, &QAction::triggered, this, [this, format] {
            m_document.Edit(EditKind::Single, kStepFormat,
                            [&](auto& project) { SetVideoFormat(project, format); });
            ShowSteps();
        });
    }
}

void MainWindow::BuildPagesMenu()
{
    AddToMenu(AddMenu(kTextPagesMenu), m_workspace->CommandsOfPages().Commands());
}

void MainWindow::BuildPlaybackMenu()
{
    AddToMenu(AddMenu(kTextPlaybackMenu), m_workspace->Playback().Commands());
}

void MainWindow::BuildSubtitlesMenu()
{
    AddCommands(kTextSubtitlesMenu, m_subtitles->Commands(), Workspace::Subtitles);
}

void MainWindow::BuildRulesMenu()
{
    AddCommands(kTextRulesMenu, m_rulesPanel->Commands(), Workspace::Rules);
}

// A menu, and those of its commands that have a picture as tools.
void MainWindow::AddCommands(UINT menuId, const QList<QAction*>& commands, Workspace workspace)
{
    AddToMenu(AddMenu(menuId), commands);
    for (QAction* command : commands) {
        if (command == nullptr || !command->icon().isNull())
            ToolsOf(workspace) << command;
    }
}

// Rules and subtitles have their own steps: what is undone is what the user sees.
QUndoStack& MainWindow::Steps()
{
    if (m_current == Workspace::Rules)
        return m_rules.Steps();
    return AreSubtitles() ? m_subtitles->Steps() : m_document.Steps();
}

void MainWindow::Undo()
{
    CommitFields(*this);
    if (m_current == Workspace::Rules)
        m_rulesPanel->Undo();
    else if (&Steps() == &m_document.Steps())
        m_document.Undo();
    else
        Steps().undo();
}

void MainWindow::Redo()
{
    if (&Steps() == &m_document.Steps())
        m_document.Redo();
    else
        Steps().redo();
}

void MainWindow::ShowSteps()
{
    const auto show = [](QAction& action, bool possible, UINT nameId, UINT namedId, const QString& step) {
        action.setEnabled(possible);
        action.setText(possible && !step.isEmpty() ? Text(namedId, {step}) : Text(nameId));
    };
    const QUndoStack& steps = Steps();
    const bool isProject = &steps == &m_document.Steps();
    // A gesture that is under way is the step to undo, and nothing can be redone in it.
    const bool inRun = isProject && m_document.IsInRun();
    const bool inRefused = m_current == Workspace::Rules && m_rulesPanel->CanUndo();
    show(*m_undo, inRun || inRefused || steps.canUndo(), kTextUndo, kTextUndoNamed,
         inRun ? m_document.RunName() : steps.undoText());
    show(*m_redo, !inRun && steps.canRedo(), kTextRedo, kTextRedoNamed, steps.redoText());
    ShowFormats();
}

void MainWindow::ShowFormats()
{
    const QList<QAction*> formats = m_formats->actions();
    for (qsizetype i = 0; i < formats.size(); ++i)
        formats[i]->setChecked(
            IsSameFormat(VideoFormats()[static_cast<std::size_t>(i)], m_document.Current().video));
}

} // namespace titler
