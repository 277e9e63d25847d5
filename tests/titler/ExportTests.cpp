#include "export/ExportDialog.h"
#include "export/FrameExport.h"
#include "export/FrameSequence.h"
#include "project/Pages.h"
#include "title/TitleRenderer.h"

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <gtest/gtest.h>

namespace titler {
namespace {

constexpr int kLong = 60000; // milliseconds

Project MovingProject(int duration = 12)
{
    Project project = NewProject();
    project.video = {kKvAspectSquarePixel, kKvFrameRate25, kKvScanProgressive, 160, 90};
    project.title.text = "Title";
    project.duration = duration;
    project.title[Property::X].keys = {{0, -40, PresetEase(5)}, {11, 40}};
    project.title[Property::Opacity].keys = {{0, 0}, {11, 100}};
    return project;
}

QStringList FilesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

// The picture in a file without its colour space, which takes part in a comparison.
QImage PixelsOf(const QString& file)
{
    QImage image(file);
    image.setColorSpace({});
    return image;
}

// What stands in the folder is a part of the sequence, each picture as it is drawn on its own.
void ExpectWholeFrames(const FrameTarget& target, const Project& project, int count)
{
    EXPECT_EQ(FilesIn(target.folder).size(), count);
    int found = 0;
    for (int frame = target.range.first; frame <= target.range.last; ++frame) {
        const QImage image = PixelsOf(FrameFile(target, project, frame));
        if (image.isNull())
            continue;
        ++found;
        const QImage drawn = TitleRenderer().Render(project, frame, image.size());
        ASSERT_EQ(image.convertToFormat(drawn.format()), drawn) << frame;
    }
    EXPECT_EQ(found, count);
}

TEST(SavePng, KeepsEveryPixel)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("p.png");
    QImage image(256, 256, QImage::Format_ARGB32);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x)
            image.setPixel(x, y, qRgba(x, 255 - x, (x * y) % 256, y));
    const QImage drawn = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (const QImage& picture :
         {drawn, image.convertToFormat(QImage::Format_RGB32), drawn.copy(3, 3, 1, 7)}) {
        ASSERT_EQ(SavePng(picture, file), "");
        EXPECT_EQ(PixelsOf(file).convertToFormat(picture.format()), picture);
    }
    EXPECT_NE(SavePng({}, file), "");
    EXPECT_EQ(QImage(file).height(), 7); // the file before stays
    EXPECT_NE(SavePng(drawn, folder.filePath("missing/p.png")), "");
}

// Over an opaque background the file needs no alpha.
TEST(ExportFrame, HoldsTheBackground)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("p.png");
    Project project = NewProject();
    project.title.text = "Title";
    project.background.kind = PaintKind::FourCorner;
    ASSERT_EQ(ExportFrame(project, file, 0), "");
    const QImage drawn = TitleRenderer().RenderFrame(project, 0, {1920, 1080});
    EXPECT_FALSE(QImage(file).hasAlphaChannel());
    EXPECT_EQ(PixelsOf(file).convertToFormat(drawn.format()), drawn);
}

struct NameCase
{
    QString projectFile;
    int duration;
    int frame;
    const char* file;
    int pages = 1; ///< the last is the current one
};

TEST(FrameSequence, NamesSortByTime)
{
    for (const NameCase& c : {NameCase{"/a/my title.v2.ktitle", 150, 7, "out/my title.v2_0007.png"},
                              NameCase{"x.ktitle", 10000, 9999, "out/x_9999.png"},
                              NameCase{"x.ktitle", 10001, 7, "out/x_00007.png"},
                              NameCase{"", kLongestDuration, 0, "out/Untitled_000000.png"},
                              NameCase{"x.ktitle", 10, 7, "out/x_page2_0007.png", 2},
                              NameCase{"x.ktitle", 10, 7, "out/x_page10_0007.png", 10}}) {
        Project project = NewProject();
        project.duration = c.duration;
        while (PageCount(project) < c.pages)
            AddPage(project, NewPage());
        EXPECT_EQ(FrameFile({"out", FrameName(c.projectFile, project), {}}, project, c.frame), c.file);
    }
}

TEST(FrameSequence, WritesTheSamePicturesInAnyNumberOfThreads)
{
    const Project project = MovingProject();
    for (const int threads : {1, 3, 0}) {
        QTemporaryDir folder;
        const FrameTarget target{folder.filePath("new"), "t", {2, 9}, threads};
        FrameSequence sequence(project, target);
        ASSERT_TRUE(sequence.Wait(kLong));
        EXPECT_EQ(sequence.Fault(), "");
        EXPECT_EQ(sequence.Written(), 8);
        ExpectWholeFrames(target, project, 8);
        EXPECT_EQ(ExistingFrames(target, project), 8);
        EXPECT_EQ(ExistingFrames({target.folder, "t", {0, 3}}, project), 2);
        EXPECT_EQ(ExistingFrames({target.folder, "T", {2, 9}}, project), 0);
    }
}

TEST(FrameSequence, AFaultNamesTheFileAndLeavesFinishedFrames)
{
    const Project project = MovingProject();
    QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("t_0005.png")); // a file cannot take its place
    const FrameTarget target{folder.path(), "t", {0, 11}, 2};
    FrameSequence sequence(project, target);
    ASSERT_TRUE(sequence.Wait(kLong));
    EXPECT_TRUE(sequence.Fault().contains("t_0005.png cannot be written: "))
        << sequence.Fault().toStdString();
    EXPECT_GE(sequence.Written(), 5);
    EXPECT_LT(sequence.Written(), 8);
    ExpectWholeFrames(target, project, sequence.Written());

    FrameSequence nowhere(project, {folder.filePath("none/none"), "t", {3, 11}});
    ASSERT_TRUE(nowhere.Wait(kLong));
    EXPECT_TRUE(nowhere.Fault().contains("t_0003.png")) << nowhere.Fault().toStdString();
    EXPECT_EQ(nowhere.Written(), 0);
}

TEST(FrameSequence, CancelsBetweenFrames)
{
    const Project project = MovingProject(100000);
    QTemporaryDir folder;
    const FrameTarget target{folder.path(), "t", WholeRange(project)};
    int written = 0;
    {
        FrameSequence sequence(project, target);
        while (sequence.Written() == 0)
            EXPECT_FALSE(sequence.Wait(1));
        sequence.Cancel();
        ASSERT_TRUE(sequence.Wait(kLong));
        EXPECT_EQ(sequence.Fault(), "");
        written = sequence.Written();
        EXPECT_LT(written, sequence.Total());
    }
    ExpectWholeFrames({target.folder, "t", {0, 999}}, project, written);
}

struct ProgramRun
{
    const char* name;
    const char* shell; ///< what comes before the program
    int status;
    const char* says;
};

// The system's own limits and signals reach the program through a shell.
TEST(FrameSequence, TheProgramEndsCleanly)
{
    for (const ProgramRun& c :
         {ProgramRun{"done", "", 0, ""},
          ProgramRun{"full disk", "trap '' XFSZ; ulimit -f 0; ", 1,
                     "t_0000.png cannot be written: File too large. 0 of 5 frames"},
          ProgramRun{"disk that fills up", "trap '' XFSZ; ulimit -f 1; ", 1,
                     ".png cannot be written: File too large. "},
          ProgramRun{"interrupted", "(sleep 1; kill -INT $$) & ", 128 + SIGINT, "Cancelled; "}}) {
        SCOPED_TRACE(c.name);
        QTemporaryDir folder;
        Project project = MovingProject(c.status > 1 ? 100000 : 5);
        project.video.width = 640; // its later pictures take more than a block, in any font
        project.video.height = 360;
        ASSERT_EQ(SaveProject(folder.filePath("t.ktitle"), project), "");
        const FrameTarget target{folder.filePath("out"), "t", {0, 99999}};
        QProcess program;
        program.start("bash", {"-c", QString(c.shell) + "exec \"$0\" \"$@\"", TITLER_PROGRAM,
                               folder.filePath("t.ktitle"), "--export-frames", target.folder});
        ASSERT_TRUE(program.waitForFinished(kLong));
        const QString said = program.readAllStandardError();
        EXPECT_EQ(program.exitCode(), c.status) << said.toStdString();
        EXPECT_TRUE(said.contains(c.says)) << said.toStdString();
        const int files = static_cast<int>(FilesIn(target.folder).size());
        EXPECT_EQ(files == 5, c.status == 0);
        EXPECT_EQ(ExistingFrames(target, project), files);
    }
}

struct Dialog
{
    QTemporaryDir folder;
    ExportDialog dialog;
    QPushButton* start;
    QPushButton* cancel;

    explicit Dialog(const Project& project)
        : dialog(project, folder.filePath("t.ktitle"))
        , start(dialog.findChild<QPushButton*>("export"))
        , cancel(dialog.findChild<QPushButton*>("cancel"))
    {
        dialog.show();
    }
};

TEST(ExportDialog, ExportsAndClosesItself)
{
    const Project project = MovingProject();
    Dialog d(project);
    const QList<QSpinBox*> ends = d.dialog.findChildren<QSpinBox*>();
    ends[0]->setValue(9);
    ends[1]->setValue(4); // the first one goes along
    d.start->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.dialog.isHidden(); }, kLong));
    EXPECT_EQ(d.dialog.result(), QDialog::Accepted);
    ExpectWholeFrames({d.folder.filePath("t_frames"), "t", {4, 4}}, project, 1);
    EXPECT_TRUE(d.dialog.Report().contains("Exported 1 frames to ")) << d.dialog.Report().toStdString();
}

TEST(ExportDialog, CancelEndsTheExportFirstAndThenTheDialog)
{
    Dialog d(MovingProject(100000));
    d.start->click();
    EXPECT_FALSE(d.start->isEnabled());
    const auto hasFiles = [&] { return !FilesIn(d.folder.filePath("t_frames")).isEmpty(); };
    ASSERT_TRUE(QTest::qWaitFor(hasFiles, kLong)); // else the end may come before the first frame
    QTest::keyClick(&d.dialog, Qt::Key_Escape);
    EXPECT_TRUE(d.dialog.isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.start->isEnabled(); }, kLong));
    EXPECT_TRUE(hasFiles()); // what is finished stays
    d.cancel->click();
    EXPECT_TRUE(d.dialog.isHidden());
    EXPECT_EQ(d.dialog.result(), QDialog::Rejected);
}

TEST(ExportDialog, AsksBeforeItReplacesAndTellsOfAFault)
{
    std::vector<std::wstring> messages;
    KvSetMessageBoxHandler([&](HWND, const std::wstring& text, UINT style) {
        messages.push_back(text);
        if (style == (MB_OK | MB_ICONERROR))
            return IDOK;
        EXPECT_EQ(style & MB_DEFBUTTON2, MB_DEFBUTTON2) << "Enter replaces nothing";
        return IDNO;
    });
    Dialog d(MovingProject());
    ASSERT_TRUE(QDir(d.folder.path()).mkdir("t_frames"));
    QFile old(d.folder.filePath("t_frames/t_0003.png"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    d.start->click();
    EXPECT_TRUE(d.start->isEnabled()); // not begun
    d.dialog.findChild<QLineEdit*>()->setText(d.folder.filePath("no/no"));
    d.start->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return messages.size() > 1; }, kLong));
    KvSetMessageBoxHandler({});
    EXPECT_EQ(messages[0], L"1 of these pictures are there already. Replace them?");
    EXPECT_NE(messages[1].find(L"t_0000.png cannot be written"), std::wstring::npos);
    EXPECT_TRUE(d.dialog.isVisible());
    EXPECT_TRUE(d.start->isEnabled());
}

} // namespace
} // namespace titler
