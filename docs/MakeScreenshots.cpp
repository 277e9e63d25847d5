// Renders the pictures of the documentation: kv_screenshots DIR. Needs no display.
//
// A picture at 150 % needs a program that runs at 150 %: for each series of pictures the program starts
// itself anew.
#include "KvGradientCtrl.h"
#include "Pictures.h"
#include "media/MediaPanel.h"
#include "pages/PageStrip.h"
#include "subtitles/SubtitlePanel.h"
#include "window/CommandLine.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Skin.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPixmap>
#include <QProcess>
#include <QStyle>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

using namespace titler;

namespace {

/// What is rendered in one start of the program.
struct Series
{
    const char* scale;
    Theme theme;
    const char* language;
    const char* ending;                // of the names of the files
    std::span<const char* const> only; // nothing: all pictures
};

constexpr const char* kOfBothThemes[] = {
    "app-log",     "buttons",   "character-map", "colour-map",     "colour-panel",  "ease",
    "ease-dialog", "gradient",  "find-replace",  "keyframe-strip", "layouts",       "menu-bar",
    "number-edit", "quad",      "scroll-bar",    "report-list",    "subtitle-list", "swatches",
    "text-list",   "title-bar", "titler"};
constexpr const char* kOfOtherLanguages[] = {"titler", "titler-subtitles"};
constexpr Series kSeries[] = {{"1", Theme::Dark, "en", "", {}},
                              {"1.5", Theme::Dark, "en", "-150", {}},
                              {"1", Theme::Light, "en", "-light", kOfBothThemes},
                              {"1", Theme::Dark, "de", "-de", kOfOtherLanguages},
                              {"1", Theme::Dark, "ja", "-ja", kOfOtherLanguages}};
constexpr int kMargin = 16;
constexpr QSize kGradientSize(520, 84);
constexpr int kTitlerFrame = 15;     // the title is on its way in
constexpr int kSubtitleFrame = 2000; // in the second subtitle
constexpr int kLongestWait = 30000;  // milliseconds

bool SaveTitler(const Pictures& pictures)
{
    MainWindow window;
    ProjectError error;
    if (!window.Project().Open(QStringLiteral(TITLER_SAMPLES "/sample.ktitle"), error))
        return false;
    window.resize(Options().windowSize);
    window.show();
    QEventLoop wait;
    QObject::connect(&window.Media(), &MediaPanel::Ready, &wait, &QEventLoop::quit);
    QTimer::singleShot(kLongestWait, &wait, &QEventLoop::quit);
    window.Media().OpenFolder(QStringLiteral(TITLER_SAMPLES "/media"));
    wait.exec();
    window.Project().Select(window.Project().Selection().WithStop(2));
    window.Time().Seek(kTitlerFrame);
    auto& list = *window.findChild<QTreeView*>(QStringLiteral("media"));
    list.expand(list.model()->index(0, 0));
    const auto save = [&](Workspace workspace, const char* name) {
        window.Show(workspace);
        QApplication::processEvents(); // what a new workspace lays out after it is shown
        while (window.Pages().IsBusy())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return pictures.Save(window, name);
    };
    if (!save(Workspace::Design, "titler-design") || !save(Workspace::Clips, "titler-clips") ||
        !save(Workspace::Rules, "titler-rules") || !save(Workspace::Animate, "titler"))
        return false;
    // Last: subtitles make the project as long as they are.
    QDir::setCurrent(QStringLiteral(TITLER_SAMPLES)); // the pictures show the file as it was named
    if (!window.Subtitles().Import(QStringLiteral("subtitles.srt")))
        return false;
    window.Time().Seek(kSubtitleFrame);
    return save(Workspace::Subtitles, "titler-subtitles") && save(Workspace::Log, "titler-log");
}

/// A gradient control on a dark ground, and the mouse that works on it.
class GradientScene
{
public:
    GradientScene()
    {
        m_window.resize(kGradientSize + QSize(2 * kMargin, 2 * kMargin));
        m_control.setGeometry(QRect(QPoint(kMargin, kMargin), kGradientSize));
        m_control.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &m_window, 1001);
        const SKvCGGradientKey stops[] = {{0xFF2A1B5E, 0.0f, 0.5f},
                                          {0xFFD1345B, 0.36f, 0.5f},
                                          {0xFFFFB347, 0.68f, 0.5f},
                                          {0x30FFF3D6, 1.0f, 0.6f}};
        m_control.SetData(static_cast<int>(std::size(stops)), stops);
        m_control.SetSelectedKey(1);
        m_window.show();
    }

    CKvGradientCtrl& Control() { return m_control; }
    QWidget& Window() { return m_window; }
    int XOf(double position) { return 4 + static_cast<int>((m_control.width() - 9) * position); }

    void Mouse(QEvent::Type type, int x, int y) { SendMouse(m_control, type, QPointF(x, y)); }

private:
    QWidget m_window;
    CKvGradientCtrl m_control; // dies before the window
};

bool SaveGradient(const Pictures& pictures, const char* name, const std::function<void(GradientScene&)>& act)
{
    GradientScene scene;
    act(scene);
    return pictures.Save(scene.Window(), name);
}

bool SaveGradients(const Pictures& pictures)
{
    const auto drag = [](GradientScene& scene, int from, int to, int y) {
        scene.Mouse(QEvent::MouseButtonPress, from, y);
        scene.Mouse(QEvent::MouseMove, (from + to) / 2, y);
        scene.Mouse(QEvent::MouseMove, to, y);
    };
    const int markers = kGradientSize.height() - 6;
    const int midPoints = 5;
    return SaveGradient(pictures, "gradient", [](GradientScene&) {}) &&
           SaveGradient(pictures, "gradient-without-focus",
                        [](auto& scene) { scene.Control().SetActive(0); }) &&
           SaveGradient(pictures, "gradient-disabled",
                        [](auto& scene) {
                            scene.Control().SetActive(0);
                            scene.Control().setEnabled(false);
                        }) &&
           SaveGradient(pictures, "gradient-dragging-stop",
                        [&](auto& scene) { drag(scene, scene.XOf(0.36), scene.XOf(0.5), markers); }) &&
           SaveGradient(pictures, "gradient-dragging-mid-point",
                        [&](auto& scene) { drag(scene, scene.XOf(0.52), scene.XOf(0.6), midPoints); });
}

/// The window of docs/first-window.md, of a host that has no theme.
bool SaveFirstWindow(const Pictures& pictures)
{
    QWidget window;
    window.setPalette(QApplication::style()->standardPalette());
    window.resize(420, 80);
    CKvGradientCtrl gradient;
    gradient.setGeometry(10, 10, 400, 60);
    gradient.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    const SKvCGGradientKey stops[] = {{0xFF2A1B5E, 0.0f, 0.5f}, {0xFFFFB347, 1.0f, 0.5f}};
    gradient.SetData(static_cast<int>(std::size(stops)), stops);
    window.show();
    QApplication::setActiveWindow(&window);
    return pictures.Save(window, "first-window");
}

int Render(const QString& folder, const Series& series)
{
    const Pictures pictures(QDir(folder).absolutePath(), series.ending, series.only);
    const QTemporaryDir swatches; // whatever the user has
    KeepSwatches(swatches.path());
    QCursor::setPos(0, 0); // over no button of a window that stands in the corner
    return SaveTitler(pictures) && SaveGradients(pictures) && SaveFirstWindow(pictures) &&
                   SaveColours(pictures) && SaveCurves(pictures) && SaveCaptions(pictures) &&
                   SaveAppLog(pictures) && SaveLists(pictures) && SaveColourPanel(pictures) &&
                   SaveLayouts(pictures) && SaveTextTools(pictures) && SaveParts(pictures)
               ? 0
               : 1;
}

} // namespace

Pictures::Pictures(const QString& folder, const char* ending, std::span<const char* const> only)
    : m_folder(folder)
    , m_ending(QLatin1String(ending))
    , m_only(only)
{
}

bool Pictures::Save(QWidget& widget, const char* name) const
{
    return Save(widget.grab(), name);
}

bool Pictures::Save(const QPixmap& picture, const char* name) const
{
    if (!m_only.empty() && std::ranges::find(m_only, std::string_view(name)) == m_only.end())
        return true;
    const QString file = m_folder.filePath(QLatin1String(name) + m_ending + QStringLiteral(".png"));
    // Opaque and as small as it gets: the pictures are kept with the sources.
    const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    const bool saved = image.save(file, "PNG", 0);
    std::fprintf(saved ? stdout : stderr, "%s%s\n", qPrintable(file), saved ? "" : " cannot be written");
    return saved;
}

DWORD InTheme(DWORD dark, DWORD light)
{
    return CurrentTheme() == Theme::Dark ? dark : light;
}

void SendMouse(QWidget& widget, QEvent::Type type, QPointF at)
{
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget.mapToGlobal(at), changed, held, {});
    QApplication::sendEvent(&widget, &event);
}

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: kv_screenshots DIR\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3) {
        const Series& series = kSeries[arguments[2].toUInt() % std::size(kSeries)];
        ChooseLanguage(*FindLanguage(QLatin1String(series.language)));
        ApplyTheme(application, series.theme);
        return Render(arguments[1], series);
    }
    for (std::size_t i = 0; i < std::size(kSeries); ++i) {
        qputenv("QT_SCALE_FACTOR", kSeries[i].scale);
        if (QProcess::execute(QApplication::applicationFilePath(), {arguments[1], QString::number(i)}) != 0)
            return 1;
    }
    return 0;
}
