// The main window: files, menus and the status line around a workspace.
#pragma once

#include "KvWnd.h"
#include "edit/Document.h"
#include "log/LogPanel.h"
#include "media/NamingRules.h"
#include "time/Transport.h"
#include "window/ApplicationBar.h"
#include "window/ApplicationMenuBar.h"
#include "window/Commands.h"

#include <QKeySequence>

#include <functional>

class QAction;
class QActionGroup;
class QLabel;
class QStackedWidget;

namespace titler {

class Autosave;
class CanvasView;
struct Language;
class MediaPanel;
class PageStrip;
class RulesPanel;
class Settings;
class StartPage;
class SubtitlePanel;
class TextTools;
class TitleWorkspace;

inline constexpr int kMessageTime = 6000; // milliseconds, in the status line

class MainWindow : public CKvFrameWnd
{
    Q_OBJECT

public:
    /// The two forms of its caption.
    enum class Caption
    {
        Tabs,  ///< a ribbon title bar
        Menus, ///< a ribbon menu bar
    };
    /// @param hsb the mode in which the colour panel begins.
    explicit MainWindow(Caption caption = Caption::Tabs, bool hsb = false);
    ~MainWindow() override;

    Document& Project() { return m_document; }
    Transport& Time() { return m_transport; }
    MediaPanel& Media() { return *m_media; }
    NamingRules& Rules() { return m_rules; }
    SubtitlePanel& Subtitles() { return *m_subtitles; }
    PageStrip& Pages();
    LogPanel& Log() { return *m_log; }
    Commands& AllCommands() { return m_commands; }
    Workspace Current() const { return m_current; }
    /// Null in the other form.
    ApplicationBar* Bar() { return m_bar; }
    void Show(Workspace workspace);
    /// Takes place, state, workspace and recent projects from the settings, and keeps them there from now on.
    /// @param settings must outlive the window.
    void Remember(Settings& settings);
    /// Keeps what is unsaved in that folder, for a start after a crash. An empty name: it does not.
    void KeepWork(const QString& folder);
    /// Offers what other runs have left there. @return true when some of it is restored.
    bool OfferWork();
    /// What to begin with, in the place of the workspace.
    void ShowStart();
    bool IsAtStart() const;
    /// A project, subtitles or a folder of media, after a question where something else would go.
    void OpenAny(const QString& file);
    /// Says something in the status line, and in the log.
    void Say(const QString& text, LogType type = LogType::Message);
    /// Says what is wrong in a message box. @return false when the file could not be opened.
    bool OpenProject(const QString& file);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildMenus();
    void BuildFileMenu();
    void BuildEditMenu();
    void BuildTextItems(QMenu& menu);
    void BuildViewMenu();
    void BuildProjectMenu();
    void BuildPagesMenu();
    void BuildPlaybackMenu();
    void BuildSubtitlesMenu();
    void BuildRulesMenu();
    void AddCommands(UINT menuId, const QList<QAction*>& commands, Workspace workspace);
    void BuildWorkspaceItems(QMenu& menu);
    void BuildThemeItems(QMenu& view);
    void BuildLanguageItems(QMenu& menu);
    void TakeLanguage(const Language& language);
    void BuildRecentItems(QMenu& menu);
    void ShowRecent();
    void OpenRecent(int index);
    void KeepProject(const QString& file, bool isThere);
    /// What the character map has, into the settings.
    void KeepCharacters();
    void BuildStart();
    void LeaveStart();
    /// Where the workspace stands in `m_pages`.
    QWidget* PageOf(Workspace workspace) const;
    void BeginSample();
    void BeginFormat(const SKvVideoResolution& format);
    void RemoveRecent(const QString& file);
    void BuildBar(Caption caption);
    void ShowPage(Workspace workspace);
    QList<QAction*>& ToolsOf(Workspace workspace) { return m_tools[static_cast<std::size_t>(workspace)]; }
    QMenu& AddMenu(UINT nameId);
    QAction* AddItem(QMenu& menu, UINT nameId, const QList<QKeySequence>& keys, std::function<void()> run,
                     const wchar_t* icon = nullptr);
    void BuildStatusLine();
    void ShowFile();
    void ShowFormat();
    void ShowZoom();
    CanvasView& SeenCanvas();
    void ShowSteps();
    void ShowFormats();
    QUndoStack& Steps(); ///< of what the workspace shows
    /// Whether file and steps are the subtitles'; else they are the project's or the rules'.
    bool AreSubtitles() const;
    void Undo();
    void Redo();
    void LogStep(const QUndoStack& steps, int& logged);
    void Report(LogType type, const QString& text);
    void ShowError(const QString& text);

    /// Takes what is typed or dragged right now: what follows is about the whole project.
    void Settle();
    /// Asks when there are unsaved changes. @return false when the user wants to stay.
    bool HasLengthAlone();
    bool MayLeave();
    void New();
    void ChooseProject();
    /// What the workspace is about: the project or the subtitles.
    void Save();
    void SaveAs();
    bool SaveProject();
    bool SaveProjectAs();
    bool SaveTo(const QString& file);
    void ChooseExport();
    void ChooseAnimationExport();
    void ChooseMedia();
    void About();

    Document m_document;
    Transport m_transport{m_document};
    NamingRules m_rules;
    QStackedWidget* m_pages; ///< its pages are built within it: each change of a parent styles all children
    TitleWorkspace* m_workspace;
    MediaPanel* m_media;
    RulesPanel* m_rulesPanel;
    SubtitlePanel* m_subtitles;
    LogPanel* m_log;
    StartPage* m_start = nullptr;
    Commands m_commands{*this};
    ApplicationBar* m_bar = nullptr; ///< one of the two
    ApplicationMenuBar* m_menuBar = nullptr;
    Workspace m_current = Workspace::Design;
    unsigned m_application = kTitles; ///< in which it is shown; without tabs, that of the one before the log
    WorkspaceTools m_tools;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_safeAreas = nullptr;
    QList<QAction*> m_zoomCommands;
    QAction* m_showPages = nullptr;
    QActionGroup* m_formats = nullptr;
    QActionGroup* m_workspaces = nullptr;
    int m_loggedStep = 0;          ///< the index of the document's steps that the log has told of
    int m_loggedSubtitleStep = 0;  ///< likewise of the subtitles'
    QList<QAction*> m_recent;      ///< hidden where the list is shorter
    QAction* m_noRecent = nullptr; ///< stands in an empty list
    Settings* m_settings = nullptr;
    QString m_recoveryFolder;
    std::unique_ptr<Autosave> m_autosave;
    std::unique_ptr<TextTools> m_text;
    QLabel* m_video;
    QLabel* m_audio;
    QLabel* m_zoom;
};

} // namespace titler
