// Starts each example, uses it by the keyboard, and looks at what it shows. The program runs as a user would
// run it; a plugin of the toolkit's watches it (see Watcher.cpp).
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int kLongestRun = 15000; // milliseconds
constexpr int kFewestColours = 20; // of a window that draws anything
constexpr int kMostLines = 60;
constexpr int kMostLinesOfHost = 300; // of its three files together

struct Example
{
    const char* name;
    const char* keys; ///< pressed one by one, separated by blanks
    const char* text; ///< that a window shows then
};

void PrintTo(const Example& example, std::ostream* out)
{
    *out << example.name;
}

const Example kExamples[] = {
    {"Buttons", "Tab Space", "Button 1002"},
    {"CharacterMap", "Tab Space e Return", "U+0065 was picked"},
    {"ColourMap", "Right", "#"},
    {"ColourPanel", "Tab Right", "steps: 1"},
    {"EaseDialog", "Space PgDown PgDown Right Return", "kept"},
    {"EaseWindow", "PgDown PgDown Right", "handles (20.1"},
    {"FindReplace", "Ctrl+F f e r r y Return", "Line 1, places left: 2"},
    {"Gradient", "Right", "edited, ends: stop 1 of 3"},
    {"Host", "Right Ctrl+Z", "Step 0 of 1"},
    {"KeyFrames", "Space", "Not animated"},
    {"LayoutStrip", "Right", "Layout 2"},
    {"LogList", "Ctrl+A", "lines selected"},
    {"MenuBar", "Ctrl+K Ctrl+L", "Keys: 1, over and over"},
    {"NumberEdit", "Up", "Size, phase 2: 33"},
    {"QtBridges", "", "30000/1001"},
    {"QuadGradient", "Right", "top right: #247ba0"},
    {"ReportList", "Down F2 x Return", "Row 1 says x"},
    {"ScrollBar", "Right Right Left Right", "Code 1, frame 2"},
    {"SubtitleList", "F2 x Return", "Row 1 says: x"},
    {"Swatches", "Right Return", "picked a swatch"},
    {"TextList", "F2 x Return Ctrl+Z", "as it was"},
    {"TitleBar", "Alt+2", "Animate is shown"},
};

qsizetype LinesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : -1;
}

class Examples : public testing::TestWithParam<Example>
{
};

TEST_P(Examples, ShowWhatTheyAreTold)
{
    const QTemporaryDir folder;                                       // also for what a program keeps
    const QString keep = qEnvironmentVariable("KV_EXAMPLE_PICTURES"); // a folder, for an eye on them
    const QString file =
        QDir(keep.isEmpty() ? folder.path() : keep).filePath(QString("%1.png").arg(GetParam().name));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_PLUGIN_PATH", KV_WATCHER_PLUGINS);
    environment.insert("QT_QPA_GENERIC_PLUGINS", "KvWatcher");
    environment.insert("XDG_DATA_HOME", folder.path());
    environment.insert("XDG_CONFIG_HOME", folder.path());
    environment.insert("KV_WATCH_KEYS", GetParam().keys);
    environment.insert("KV_WATCH_TEXT", GetParam().text);
    environment.insert("KV_WATCH_PICTURE", file);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QDir(KV_EXAMPLE_PROGRAMS).filePath(GetParam().name), {});
    const bool ended = program.waitForFinished(kLongestRun);
    const std::string said = program.readAllStandardOutput().toStdString();
    ASSERT_TRUE(ended) << "it never shows the text " << GetParam().text << '\n' << said;
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_EQ(said.rfind("shown: ", 0), 0u) << "it ended without a window: " << said;

    const QImage picture(file);
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            colours << picture.pixel(x, y);
    EXPECT_GE(colours.size(), kFewestColours) << "nothing is drawn";
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(kExamples),
                         [](const auto& example) { return std::string(example.param.name); });

TEST(NamingExample, PrintsTheGroups)
{
    QProcess program;
    program.start(QDir(KV_EXAMPLE_PROGRAMS).filePath("NamingRules"), {});
    ASSERT_TRUE(program.waitForFinished(kLongestRun));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().endsWith("harbour.mxf: harbour_A1.wav harbour_A2.wav\n"));
}

TEST(ExampleFiles, AreShortTriedAndNamed)
{
    const QDir folder(KV_EXAMPLES);
    QFile readme(folder.filePath("README.md"));
    ASSERT_TRUE(readme.open(QIODevice::ReadOnly));
    const QByteArray page = readme.readAll();
    QSet<QString> tried{"NamingRules.cpp"};
    for (const Example& example : kExamples)
        tried << QString("%1.cpp").arg(example.name);
    const QStringList names = folder.entryList({"*.cpp"});
    EXPECT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        const qsizetype lines = LinesOf(folder.filePath(name));
        EXPECT_GT(lines, 0) << name.toStdString();
        EXPECT_LE(lines, kMostLines) << name.toStdString();
        EXPECT_TRUE(tried.contains(name)) << name.toStdString() << " is started by no test";
        EXPECT_TRUE(page.contains(name.toUtf8())) << name.toStdString() << " is not in README.md";
    }
    const QDir host(folder.filePath("host"));
    qsizetype ofHost = 0;
    for (const QString& name : host.entryList(QDir::Files)) {
        ofHost += LinesOf(host.filePath(name));
        EXPECT_TRUE(page.contains("host/" + name.toUtf8())) << name.toStdString() << " is not in README.md";
    }
    EXPECT_GT(ofHost, 0);
    EXPECT_LE(ofHost, kMostLinesOfHost);
    EXPECT_TRUE(page.contains(QByteArray::number(kMostLinesOfHost) + " lines")) << "README.md says otherwise";
}

} // namespace
