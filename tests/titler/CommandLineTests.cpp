#include "CommandLine.h"

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
};

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
    QStringList arguments = run.arguments;
    arguments.replaceInStrings("DIR", folder.path());
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
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
        Invocation{"NoDisplay", {kSample}, 2, "there is no display"},
        Invocation{"UnknownOption", {"--screenshot", "DIR/a.png", "--sise", "1x1"}, 2, "sise"},
        Invocation{"BadSize", {"--screenshot", "DIR/a.png", "--size", "12"}, 2, "\"12\" is no size"},
        Invocation{"TwoProjects", {"--screenshot", "DIR/a.png", "a", "b"}, 2, "\"b\" is one too many"},
        Invocation{
            "BrokenProject", {"--export-frame", "DIR/a.png", "DIR/broken.ktitle"}, 1, "Line 2, column"},
        Invocation{
            "MissingProject", {"--screenshot", "DIR/a.png", "DIR/missing.ktitle"}, 1, "missing.ktitle"},
        Invocation{
            "MissingMedia", {"--screenshot", "DIR/a.png", "--media", "DIR/none"}, 1, "none\" does not exist"},
        Invocation{"UnwritableFrame", {"--export-frame", "DIR/none/a.png", kSample}, 1, "none/a.png"},
        Invocation{"Picture", {"--screenshot", "DIR/a.png", "--export-frame", "DIR/b.png", kSample}, 0, ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Titler, WritesPicturesWithoutADisplay)
{
    QTemporaryDir folder;
    QProcess program;
    program.start(QStringLiteral(TITLER_PROGRAM),
                  {kSample, "--media", QStringLiteral(TITLER_SAMPLES "/media"), "--size", "1000x600",
                   "--screenshot", folder.filePath("window.png"), "--export-frame",
                   folder.filePath("frame.png")});
    ASSERT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_EQ(QImage(folder.filePath("window.png")).size(), QSize(1000, 600));
    EXPECT_EQ(QImage(folder.filePath("frame.png")).size(), QSize(1920, 1080));
}

} // namespace
} // namespace titler
