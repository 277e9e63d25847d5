#include "edit/Document.h"
#include "export/FrameExport.h"
#include "export/FrameSequence.h"
#include "export/TerminalExport.h"
#include "gallery/Gallery.h"
#include "media/MediaPanel.h"
#include "pages/PageStrip.h"
#include "project/ProjectText.h"
#include "recovery/RecoveryFile.h"
#include "subtitles/SubtitlePanel.h"
#include "time/Transport.h"
#include "tour/Film.h"
#include "tour/Tour.h"
#include "window/CommandLine.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QIcon>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <optional>

using namespace titler;

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUsageError = 2;
constexpr int kInterrupted = 128;   // plus the signal's number, as a shell counts it
constexpr int kLongestWait = 60000; // milliseconds, for the media list of a screenshot

int Fail(int status, QString text)
{
    text.replace(QStringLiteral("\n\n"), QStringLiteral(" ")); // the paragraphs of a message box
    std::fprintf(stderr, "titler: %s\n", qUtf8Printable(text));
    return status;
}

bool HasDisplay()
{
#ifdef Q_OS_UNIX
#ifndef Q_OS_DARWIN
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#endif
#endif
    return true;
}

const Language& LanguageOf(const Options& options)
{
    return options.language != nullptr ? *options.language : SystemLanguage();
}

int FrameOf(const Options& options, const Project& project)
{
    return options.frame.value_or(MiddleFrame(project));
}

int ExportAnimation(const Options& options, const Project& project)
{
    FrameSequence sequence(project, {options.exportFrames, FrameName(options.project, project),
                                     options.range.value_or(WholeRange(project)), options.threads});
    const int signal = WatchExport(sequence);
    const QString written = QString::number(sequence.Written());
    const QString total = QString::number(sequence.Total());
    if (const QString fault = sequence.Fault(); !fault.isEmpty())
        return Fail(kFailed, Text(kTextExportStopped, {fault, written, total}));
    if (signal != 0)
        return Fail(kInterrupted + signal, Text(kTextExportCancelled, {written, total}));
    return kDone;
}

int ExportPictures(const Options& options)
{
    Document document;
    ProjectError error;
    if (!options.project.isEmpty() && !document.Open(options.project, error))
        return Fail(kFailed, ErrorText(options.project, error));
    document.ChoosePage(options.page - 1);
    const Project& project = document.Current();
    QString fault = PlaceFault(options, project);
    if (!fault.isEmpty())
        return Fail(kUsageError, fault);
    if (!options.exportFrame.isEmpty())
        fault = ExportFrame(project, options.exportFrame, FrameOf(options, project));
    if (!fault.isEmpty())
        return Fail(kFailed, Text(kTextCannotExport, {options.exportFrame, fault}));
    return options.exportFrames.isEmpty() ? kDone : ExportAnimation(options, project);
}

// False when the list is still not complete.
bool WaitForMedia(MediaPanel& media)
{
    QEventLoop loop;
    QObject::connect(&media, &MediaPanel::Ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(kLongestWait, &loop, &QEventLoop::quit);
    if (media.IsBusy())
        loop.exec();
    return !media.IsBusy();
}

// Once they are seen, they are drawn in the background.
void WaitForPages(MainWindow& window)
{
    window.grab();
    while (window.Pages().IsBusy())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // each picture is one
}

// The workspace that was asked for; to play is to animate.
void ShowWorkspace(MainWindow& window, const Options& options)
{
    if (options.workspace)
        window.Show(*options.workspace);
    else if (options.play)
        window.Show(Workspace::Animate);
}

int TakeScreenshot(const Options& options)
{
    KvSetMessageBoxHandler([](HWND, const std::wstring& text, UINT) {
        Fail(kFailed, QString::fromStdWString(text)); // nobody is there to close a box
        return IDOK;
    });
    const QTemporaryDir swatches; // the user's own stay out of it
    KeepSwatches(swatches.path());
    MainWindow window(options.menuBar ? MainWindow::Caption::Menus : MainWindow::Caption::Tabs);
    ProjectError error;
    if (!options.project.isEmpty() && !window.Project().Open(options.project, error))
        return Fail(kFailed, ErrorText(options.project, error));
    window.Project().ChoosePage(options.page - 1);
    if (!options.rules.isEmpty()) {
        if (const QString fault = window.Rules().Load(options.rules); !fault.isEmpty())
            return Fail(kFailed, fault);
    }
    if (!options.media.isEmpty())
        window.Media().OpenFolder(options.media);
    if (!options.subtitles.isEmpty() && !window.Subtitles().Import(options.subtitles, options.encoding))
        return kFailed;
    window.Time().Seek(FrameOf(options, window.Project().Current()));
    window.setAttribute(Qt::WA_DontShowOnScreen);
    ShowWorkspace(window, options);
    window.resize(options.windowSize);
    window.show();
    if (!WaitForMedia(window.Media()))
        return Fail(kFailed, Text(kTextMediaUnfinished, {options.media}));
    QCoreApplication::processEvents();
    WaitForPages(window);
    const QString fault = SavePng(window.grab().toImage(), options.screenshot);
    return fault.isEmpty() ? kDone : Fail(kFailed, Text(kTextCannotExport, {options.screenshot, fault}));
}

int TakeTour(const Options& options)
{
    QString report;
    const QString fault = options.film.isEmpty() ? RunTour(options.tour, options.windowSize, report)
                                                 : RunFilm(options.film, options.windowSize, report);
    if (!fault.isEmpty())
        return Fail(kFailed, fault);
    std::printf("%s\n", qUtf8Printable(report));
    return kDone;
}

/// Tells the processor time and ends the program once a painting is through, from now on.
class FirstFrame : public QObject
{
public:
    FirstFrame() { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_isSeen) {
            m_isSeen = true;
            QTimer::singleShot(0, this, [] {
                std::printf("%.3f\n", 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
                std::fflush(stdout);
                QCoreApplication::exit(kDone); // nothing is closed, so nothing is kept
            });
        }
        return false;
    }

private:
    bool m_isSeen = false;
};

int RunWindow(const Options& options)
{
    Settings settings(options.settings.isEmpty() ? Settings::DefaultFile() : options.settings);
    QString fault = settings.Load();
    if (const Language* chosen = FindLanguage(settings.language); chosen != nullptr && !options.language)
        ChooseLanguage(*chosen);
    if (const QString unkept = KeepSwatches(settings.Folder()); fault.isEmpty())
        fault = unkept;
    if (const auto theme = options.theme ? options.theme : ThemeOf(settings.theme); theme)
        ApplyTheme(*qApp, *theme);
    MainWindow window(options.menuBar ? MainWindow::Caption::Menus : MainWindow::Caption::Tabs, settings.hsb);
    window.resize(options.windowSize);
    window.Remember(settings);
    window.KeepWork(RecoveryFile::DefaultFolder());
    const QString rules = options.rules.isEmpty() ? NamingRules::DefaultFile() : options.rules;
    if (const QString unread = window.Rules().Load(rules); fault.isEmpty())
        fault = unread;
    if (options.isSized) {
        window.setWindowState(Qt::WindowNoState); // a remembered one may be maximised
        window.resize(options.windowSize);
    }
    ShowWorkspace(window, options);
    if (options.NamesNothing())
        window.ShowStart();
    window.show();
    std::optional<FirstFrame> firstFrame;
    const auto openArguments = [&] {
        if (!options.media.isEmpty())
            window.Media().OpenFolder(options.media);
        const bool isRestored = window.OfferWork();
        if (!options.project.isEmpty() && !isRestored)
            window.OpenProject(options.project);
        for (const QString& file : {options.project, options.subtitles})
            if (isRestored && !file.isEmpty())
                window.Say(Text(kTextRestoredInstead, {file}), LogType::Warning);
        if (!options.subtitles.isEmpty() && !isRestored)
            window.Subtitles().Import(options.subtitles, options.encoding);
        window.Time().SetLoop(options.play);
        if (options.play) {
            window.Time().Seek(0);
            window.Time().Play();
        }
        if (!fault.isEmpty())
            window.Say(fault, LogType::Warning);
        if (options.firstFrame) {
            firstFrame.emplace();
            window.update(); // also where nothing was opened
        }
    };
    window.Log().TakeToolkitWarnings();
    if (!fault.isEmpty())
        std::fprintf(stderr, "titler: %s\n", qUtf8Printable(fault));
    // Once the window is in its place: a broken project brings up a message over it.
    QTimer::singleShot(0, &window, openArguments);
    return QApplication::exec();
}

// For an eye on all of the library's controls at once.
int ShowGallery(const Options& options)
{
    const QTemporaryDir swatches; // the user's own stay out of it
    KeepSwatches(swatches.path());
    Gallery gallery;
    gallery.resize(options.windowSize);
    if (options.screenshot.isEmpty()) {
        gallery.show();
        return QApplication::exec();
    }
    gallery.setAttribute(Qt::WA_DontShowOnScreen);
    gallery.show();
    QCoreApplication::processEvents();
    const QString fault = SavePng(gallery.Picture().toImage(), options.screenshot);
    return fault.isEmpty() ? kDone : Fail(kFailed, Text(kTextCannotExport, {options.screenshot, fault}));
}

int Run(int& argc, char** argv, const Options& options)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("titler"));
    ChooseLanguage(LanguageOf(options)); // again: the toolkit's texts belong to the application object
    if (options.OnlyPictures() && !options.gallery) {
        const int status = ExportPictures(options);
        if (status != kDone || options.screenshot.isEmpty())
            return status;
    }
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/titler/desktop/titler.svg")));
    QGuiApplication::setDesktopFileName(QStringLiteral("titler"));
    ApplyTheme(application, options.theme.value_or(Theme::Dark));
    if (options.ShowsItself())
        return TakeTour(options);
    if (options.gallery)
        return ShowGallery(options);
    return options.screenshot.isEmpty() ? RunWindow(options) : TakeScreenshot(options);
}

/// @param text what is wrong with them, or what they ask to be told.
std::optional<Options> ReadArguments(int& argc, char** argv, QString& text)
{
    const QCoreApplication application(argc, argv); // a QApplication would already look for a display
    const QStringList arguments = QCoreApplication::arguments();
    const Language* named = LanguageNamedIn(arguments);
    ChooseLanguage(named != nullptr ? *named : SystemLanguage()); // in which a fault is told, too
    const std::optional<Options> options = ParseCommandLine(arguments, text);
    if (options && options->OnlyTells())
        text = options->help ? HelpText() : QStringLiteral("titler " KV_VERSION "\n");
    return options;
}

int Tell(const QString& text)
{
    if (std::fputs(qUtf8Printable(text), stdout) < 0 || std::fflush(stdout) != 0)
        return Fail(kFailed, qt_error_string());
    return kDone;
}

} // namespace

int main(int argc, char** argv)
{
    QString text;
    const std::optional<Options> options = ReadArguments(argc, argv, text);
    if (!options)
        return Fail(kUsageError, text);
    if (options->OnlyTells())
        return Tell(text);
    if (!options->media.isEmpty() && !QDir(options->media).exists())
        return Fail(kFailed, Text(kTextNoSuchFolder, {options->media}));
    // Before a window is there that could ask.
    if (!options->subtitles.isEmpty()) {
        const QString unsure = SubtitleEncodingFault(options->subtitles, options->encoding);
        if (!unsure.isEmpty())
            return Fail(kFailed, unsure);
    }
    // Whatever is set: other platforms without a display have no fonts, and boxes would stand for letters.
    if (options->OnlyPictures() || options->ShowsItself())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!HasDisplay())
        return Fail(kUsageError, Text(kTextNoDisplay));
    return Run(argc, argv, *options);
}
