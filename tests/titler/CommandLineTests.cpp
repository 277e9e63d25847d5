#include "window/CommandLine.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace titler {
namespace {

struct Invocation
{
    const char* name;
    QStringList arguments; ///< "DIR" stands for a fresh folder
    int status;
    const char* output; ///< part of what is said on standard error, or on standard output when done
    QString display = {};
};

void PrintTo(const Invocation& c, std::ostream* out)
{
    *out << c.name;
}

class Program : public testing::TestWithParam<Invocation>
{
};

TEST_P(Program, AnswersItsArguments)
{
    const Invocation& run = GetParam();
    QTemporaryDir folder;
    QFile broken(folder.filePath("broken.ktitle"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\"version\": 1,\n oops}");
    broken.close();
    QFile subtitles(folder.filePath("code.srt"));
    ASSERT_TRUE(subtitles.open(QIODevice::WriteOnly));
    subtitles.write("1\n00:00:01,000 --> 00:00:02,000\nD\xE9j\xE0\n");
    subtitles.close();
    QStringList arguments = run.arguments;
    arguments.replaceInStrings("DIR", folder.path());
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    if (!run.display.isEmpty())
        environment.insert("DISPLAY", run.display);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(TITLER_PROGRAM), arguments);
    ASSERT_TRUE(program.waitForFinished(60000));
    const QString said = run.status == 0 ? program.readAllStandardOutput() : program.readAllStandardError();
    EXPECT_EQ(program.exitCode(), run.status) << said.toStdString();
    EXPECT_TRUE(said.contains(run.output)) << said.toStdString();
}

const QString kSample = QStringLiteral(TITLER_SAMPLES "/sample.ktitle");

INSTANTIATE_TEST_SUITE_P(
    Titler, Program,
    testing::Values(
        Invocation{"Help", {"--help"}, 0, "--export-frame <OUT.png>"},
        Invocation{"Version", {"--version"}, 0, "titler " KV_VERSION "\n"},
        Invocation{"TourWithMore", {"--selftest-tour", "DIR/t", "--play"}, 2, "takes no other options"},
        Invocation{"AnimationWithMore", {"--selftest-animation", "DIR/t", "a.ktitle"}, 2, "takes no other"},
        Invocation{"EmptyTour", {"--selftest-tour", ""}, 2, "--selftest-tour needs a value"},
        Invocation{
            "FirstFrameOfNoWindow", {"--first-frame", "--screenshot", "DIR/a.png"}, 2, "needs a window"},
        Invocation{"UnknownTheme", {"--theme", "blue"}, 2, "dark and light"},
        Invocation{"UnknownWorkspace", {"--workspace", "nowhere"}, 2, "design, animate, clips"},
        Invocation{"HelpWithADeadDisplay", {"--help"}, 0, "--export-frame <OUT.png>", ":987"},
        Invocation{"NoDisplay", {kSample}, 2, "there is no display"},
        Invocation{"UnknownOptionWithoutADisplay", {"--nope"}, 2, "nope"},
        Invocation{"EmptyScreenshot", {"--screenshot", ""}, 2, "--screenshot needs a value"},
        Invocation{"EmptyFrame", {"--export-frame="}, 2, "--export-frame needs a value"},
        Invocation{"EmptyMedia", {"--media", "", "--screenshot", "DIR/a.png"}, 2, "--media needs a value"},
        Invocation{"EmptyProject", {"--screenshot", "DIR/a.png", ""}, 2, "project's name is empty"},
        Invocation{"OtherEnding", {"--export-frame", "DIR/o.xyz"}, 2, "o.xyz\" does not end with .png"},
        Invocation{"TooSmall", {"--screenshot", "DIR/a.png", "--size", "100x100"}, 2, "from 320x320 to"},
        Invocation{"UnknownOption", {"--screenshot", "DIR/a.png", "--sise", "1x1"}, 2, "sise"},
        Invocation{"BadSize", {"--screenshot", "DIR/a.png", "--size", "12"}, 2, "\"12\" is no size"},
        Invocation{"TwoProjects", {"--screenshot", "DIR/a.png", "a", "b"}, 2, "\"b\" is one too many"},
        Invocation{"BrokenProject",
                   {"--export-frame", "DIR/a.png", "DIR/broken.ktitle"},
                   1,
                   "cannot be opened. Line 2, column"},
        Invocation{
            "MissingProject", {"--screenshot", "DIR/a.png", "DIR/missing.ktitle"}, 1, "missing.ktitle"},
        Invocation{
            "MissingMedia", {"--screenshot", "DIR/a.png", "--media", "DIR/none"}, 1, "none\" does not exist"},
        Invocation{"NoRange",
                   {"--export-frames", "DIR/f", "--range", "1-2-3"},
                   2,
                   "\"1-2-3\" is no range: expected FIRST-LAST, two frames from 0 to 999999"},
        Invocation{"NegativeRange", {"--export-frames", "DIR/f", "--range", "-1-5"}, 2, "is no range"},
        Invocation{"ReversedRange",
                   {"--export-frames", "DIR/f", "--range", "9-3"},
                   2,
                   "\"9-3\" ends before it begins"},
        Invocation{"RangeBeyondTheProject",
                   {"--export-frames", "DIR/f", "--range", "140-150"},
                   2,
                   "the project has no frame 150: its last one is 149"},
        Invocation{
            "FrameBeyondTheProject", {"--screenshot", "DIR/a.png", "--frame", "150"}, 2, "no frame 150"},
        Invocation{"PageBeyondTheProject",
                   {"--export-frame", "DIR/a.png", "--page", "2"},
                   2,
                   "the project has no page 2: its last one is 1"},
        Invocation{"NoPage",
                   {"--export-frames", "DIR/f", "--page", "0"},
                   2,
                   "expected a whole number from 1 to 1000"},
        Invocation{"PageAlone", {"--page", "1"}, 2, "--page goes with"},
        Invocation{"RangeAlone", {"--range", "1-2"}, 2, "--range goes with --export-frames DIR"},
        Invocation{
            "NoThreads", {"--export-frames", "DIR/f", "--threads", "0"}, 2, "whole number from 1 to 256"},
        Invocation{"FrameAlone", {"--export-frames", "DIR/f", "--frame", "1"}, 2, "--frame goes with"},
        Invocation{"NoFrame", {"--export-frame", "DIR/a.png", "--frame", "+1"}, 2, "\"+1\" is no frame"},
        Invocation{"EmptyFrames", {"--export-frames", ""}, 2, "--export-frames needs a value"},
        Invocation{"UnwritableFrames",
                   {"--export-frames", "DIR/none/none", "--range", "5-6"},
                   1,
                   "Untitled_0005.png cannot be written"},
        Invocation{"Frames", {"--export-frames", "DIR/f", "--range", "5-6", "--threads", "2"}, 0, "", ":987"},
        Invocation{"UncertainSubtitles",
                   {"--subtitles", "DIR/code.srt", "--screenshot", "DIR/a.png"},
                   1,
                   "perhaps as windows-1252. Name the encoding with --encoding."},
        Invocation{"UncertainSubtitlesInAWindow", {"--subtitles", "DIR/code.srt"}, 1, "--encoding", ":987"},
        Invocation{"SubtitlesInAnEncoding",
                   {"--subtitles", "DIR/code.srt", "--encoding", "windows-1251", "--screenshot", "DIR/a.png"},
                   0,
                   ""},
        Invocation{"UnknownEncoding",
                   {"--subtitles", "DIR/code.srt", "--encoding", "klingon", "--screenshot", "DIR/a.png"},
                   1,
                   "klingon"},
        Invocation{"EncodingAlone", {"--encoding", "UTF-8"}, 2, "--encoding goes with --subtitles"},
        Invocation{"UnwritableFrame", {"--export-frame", "DIR/none/a.png", kSample}, 1, "none/a.png"},
        Invocation{
            "Picture", {"--screenshot", "DIR/a.png", "--export-frame", "DIR/b.png", kSample}, 0, "", ":987"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Titler, PicturesHaveTheSizeAskedForOnAnyPlatform)
{
    QTemporaryDir folder;
    QImage title;
    for (const char* platform : {"offscreen", "minimal"}) {
        const QSize size = title.isNull() ? QSize(1000, 600) : QSize(320, 320);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", platform);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TITLER_PROGRAM),
                      {kSample, "--media", QStringLiteral(TITLER_SAMPLES "/media"), "--size",
                       QStringLiteral("%1x%2").arg(size.width()).arg(size.height()), "--screenshot",
                       folder.filePath("window.png"), "--export-frame", folder.filePath("frame.png")});
        ASSERT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        EXPECT_EQ(QImage(folder.filePath("window.png")).size(), size);
        const QImage frame(folder.filePath("frame.png"));
        EXPECT_EQ(frame.size(), QSize(1920, 1080));
        EXPECT_TRUE(title.isNull() || frame == title) << "boxes for letters on " << platform;
        title = frame;
    }
}

TEST(Titler, TheFirstFrameEndsTheProgram)
{
    QTemporaryDir folder; // for what a program with a window keeps
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", folder.path());
    environment.insert("XDG_DATA_HOME", folder.path());
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(TITLER_PROGRAM), {kSample, "--first-frame"});
    ASSERT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_GT(program.readAllStandardOutput().trimmed().toDouble(), 0);
}

} // namespace
} // namespace titler
