// The workspace of subtitles: files, the project, playback, and the log.
#include "SubtitleWindow.h"
#include "title/CanvasView.h"

#include <thread>

using namespace titler;

namespace {

TEST_F(SubtitleWindow, ImportsWhatIsSoundAndLogsTheRest)
{
    ASSERT_TRUE(Import(kThree));
    EXPECT_EQ(Rows(), (Lines{"25-75 Hello there\nfriend", "100-150 \u4f60\u597d"}));
    EXPECT_TRUE(LogHas("line 6")) << "the place of what was skipped";
    EXPECT_FALSE(panel.IsModified());
    const QByteArray written = Export("out.vtt");
    EXPECT_TRUE(written.startsWith("WEBVTT"));
    EXPECT_TRUE(asked.isEmpty());
    const Lines before = Rows();
    ASSERT_TRUE(panel.Import(folder.filePath("out.vtt")));
    EXPECT_EQ(Rows(), before);
    EXPECT_FALSE(panel.Import(folder.filePath("missing.srt")));
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(SubtitleWindow, AsksBeforeAFormatLosesSomething)
{
    ASSERT_TRUE(Import(kThree));
    list.InserItem(-1, L"no time", kNoTime, kNoTime, nullptr);
    answer = IDNO;
    EXPECT_FALSE(panel.Export(folder.filePath("out.srt")));
    EXPECT_FALSE(QFile::exists(folder.filePath("out.srt")));
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains("Row 3"));
    answer = IDYES;
    EXPECT_EQ(Export("out.srt").count("-->"), 2);
    EXPECT_FALSE(panel.Export(folder.filePath("none/out.srt")));
}

TEST_F(SubtitleWindow, TheRowAtThePlayHeadIsMarkedAndShown)
{
    ASSERT_TRUE(Import(kThree));
    Subtitle shown;
    QObject::connect(&panel, &SubtitlePanel::SubtitleShown,
                     [&](const Subtitle& subtitle) { shown = subtitle; });
    window.Time().Seek(110);
    EXPECT_EQ(list.GetPlayIndex(), 1);
    EXPECT_EQ(shown.text, "\u4f60\u597d");
    window.Time().Seek(150); // out is exclusive
    EXPECT_EQ(list.GetPlayIndex(), -1);
    EXPECT_EQ(shown.text, "");
}

TEST_F(SubtitleWindow, WhatIsTypedInAnOpenCellIsNeverLost)
{
    ASSERT_TRUE(Import(kThree));
    window.Project().Steps().setClean();
    Select(0);
    OpenCell("Good day");
    EXPECT_TRUE(Export("out.srt").contains("Good day"));
    EXPECT_FALSE(panel.IsModified());
    OpenCell("Good night");
    window.Show(Workspace::Log);
    EXPECT_EQ(Row(0), "25-75 Good night");
    window.Show(Workspace::Subtitles);
    Select(0);
    OpenCell("Good morning");
    answer = IDCANCEL;
    EXPECT_FALSE(window.close());
    EXPECT_EQ(Row(0), "25-75 Good morning");
    EXPECT_EQ(asked.size(), 1) << "it asks for the subtitles";
    Press(Qt::Key_Right); // the cell of the in time
    OpenCell("99:99");
    asked.clear();
    EXPECT_FALSE(window.close());
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains("Escape")) << asked[0].toStdString();
    EXPECT_FALSE(panel.Import(folder.filePath("out.srt"))) << "not over a cell that is open";
    EXPECT_TRUE(list.IsEditing());
}

TEST_F(SubtitleWindow, RowsKeepTheirRateAndMeetThePlayHeadByTime)
{
    ASSERT_TRUE(Import(kThree));
    Select(0);
    Press(Qt::Key_O); // a step that must survive
    const Lines edited = Rows();
    SetRate(kKvFrameRate50);
    EXPECT_EQ(Rows(), edited);
    window.Time().Seek(220); // 4.4 s
    EXPECT_EQ(list.GetPlayIndex(), 1);
    Select(1);
    Press(Qt::Key_I);
    EXPECT_EQ(Row(1), "110-150 \u4f60\u597d") << "frames of the rows' rate";
    EXPECT_EQ(list.GetPlayIndex(), 1) << "it plays from where its time was set";
    window.Time().Seek(0);
    Press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(window.Time().Frame(), 220);
    window.Project().New();
    EXPECT_EQ(Row(1), "110-150 \u4f60\u597d");
    EXPECT_TRUE(Export("out.srt").contains("00:00:04,400 --> 00:00:06,000"));
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Row(0), "25-75 Hello there\nfriend");

    SetRate(kKvFrameRate50);
    ASSERT_TRUE(Command("Use the project")->isEnabled());
    asked.clear();
    answer = IDNO;
    Command("Use the project")->trigger();
    EXPECT_EQ(asked.size(), 1) << "there are steps to redo";
    EXPECT_EQ(Row(0), "25-75 Hello there\nfriend");
    answer = IDYES;
    Command("Use the project")->trigger();
    EXPECT_EQ(Row(0), "50-150 Hello there\nfriend");
    EXPECT_FALSE(panel.Steps().canUndo());
    EXPECT_TRUE(panel.IsModified());
    EXPECT_FALSE(Command("Use the project")->isEnabled());
}

TEST_F(SubtitleWindow, ALongFileLengthensTheProject)
{
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:01:40,000\nlong\n\n"));
    EXPECT_EQ(window.Project().Current().duration, 2500);
    window.Project().Undo();
    EXPECT_EQ(window.Project().Current().duration, 1000);
    EXPECT_EQ(list.GetItemCount(), 1);
}

TEST_F(SubtitleWindow, TheLengthOfSubtitlesAloneIsNothingToAskFor)
{
    window.Project().New();
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:01:40,000\nlong\n\n"));
    EXPECT_TRUE(window.Project().Steps().canUndo());
    answer = IDCANCEL;
    window.Project().Edit(EditKind::Single, "text", [](Project& project) { project.title.text = "more"; });
    EXPECT_FALSE(window.close());
    EXPECT_EQ(asked.size(), 1);
    window.Project().Undo();
    EXPECT_TRUE(window.close());
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(SubtitleWindow, AnotherRateKeepsTheFilesOwnTimes)
{
    const QByteArray bytes = "1\n00:00:01,013 --> 00:00:02,987\nA\n\n";
    ASSERT_TRUE(Import(bytes));
    SetRate(kKvFrameRate59_94);
    Command("Use the project")->trigger();
    EXPECT_TRUE(asked.isEmpty()) << "there was no step";
    EXPECT_EQ(Row(0), "61-179 A") << "of 59.94: nearer to the times than what 25 frames a second show";
    EXPECT_FALSE(panel.IsModified());
    EXPECT_EQ(Export("in.srt"), bytes);
}

TEST_F(SubtitleWindow, RowsBeyondTheProjectLengthenIt)
{
    const auto duration = [this] { return window.Project().Current().duration; };
    ASSERT_TRUE(Import(kThree));
    Shift("+40:00");
    EXPECT_EQ(duration(), 1150);
    window.Project().Undo();
    EXPECT_EQ(duration(), 1000);
    Select(1);
    Press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(window.Time().Frame(), 1100);
    EXPECT_EQ(duration(), 1150);
    window.Project().New();
    SetRate(kKvFrameRate25);
    EXPECT_EQ(duration(), 1150) << "another project, as at import";
    Select(0);
    list.SetTimeCode(1, 1149, 1);
    list.SetTimeCode(1, kNoTime, 0);
    Shift("+1");
    EXPECT_EQ(duration(), 1151) << "the frame at which a row without an end begins";
}

TEST_F(SubtitleWindow, SavesTheSubtitlesWhileTheyAreShown)
{
    ASSERT_TRUE(Import(kThree));
    EXPECT_TRUE(window.windowTitle().startsWith("in.srt")) << window.windowTitle().toStdString();
    Select(0);
    Press(Qt::Key_Delete);
    EXPECT_TRUE(window.isWindowModified());
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(panel.IsModified());
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_TRUE(window.Project().IsModified()) << "it is another file";
    QFile saved(folder.filePath("in.srt"));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_FALSE(saved.readAll().contains("Hello"));
    window.Show(Workspace::Design);
    EXPECT_FALSE(window.windowTitle().startsWith("in.srt"));
}

TEST_F(SubtitleWindow, PlaybackHasItsKeysAndFollowsOnlyWhileItRuns)
{
    QByteArray many;
    for (int i = 0; i < 30; ++i)
        many += QByteArray::number(i + 1) + "\n00:00:" + QByteArray::number(i + 10) +
                ",000 --> 00:00:" + QByteArray::number(i + 10) + ",500\nrow\n\n";
    ASSERT_TRUE(Import(many));
    Select(0);
    window.Time().Seek(39 * 25); // the last row, far below
    EXPECT_EQ(list.GetPlayIndex(), 29);
    EXPECT_EQ(list.GetTopIndex(), 0);
    Press(Qt::Key_I);
    EXPECT_EQ(list.GetTopIndex(), 0) << "an edit does not move the list";
    Press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(window.Time().Frame(), 39 * 25 - 1);
    window.Time().Seek(39 * 25 + 1);
    Press(Qt::Key_Space);
    EXPECT_TRUE(window.Time().IsPlaying());
    EXPECT_GT(list.GetTopIndex(), 0);
    Press(Qt::Key_Space);
    EXPECT_FALSE(window.Time().IsPlaying());
    Select(0);
    OpenCell("a b");
    EXPECT_FALSE(window.Time().IsPlaying()) << "a blank";
}

TEST_F(SubtitleWindow, AsksBeforeChangedRowsAreLost)
{
    ASSERT_TRUE(Import(kThree));
    window.Project().Steps().clear();
    window.Project().New();
    Select(0);
    Press(Qt::Key_Delete);
    ASSERT_TRUE(panel.IsModified());
    answer = IDCANCEL;
    EXPECT_FALSE(window.close());
    answer = IDNO;
    EXPECT_TRUE(window.close());
}

TEST_F(SubtitleWindow, TheLogTakesStepsErrorsAndWhateverTheToolkitSays)
{
    window.Log().TakeToolkitWarnings();
    EXPECT_TRUE(LogHas("rate"));
    std::thread([] { qWarning("said by a worker"); }).join();
    EXPECT_TRUE(LogHas("said by a worker"));
    EXPECT_FALSE(window.OpenProject("/nowhere.ktitle"));
    EXPECT_TRUE(LogHas("nowhere.ktitle"));
    window.Say(QString(2000, u'x'));
    EXPECT_GE(window.Log().List().GetTypeCount(0), 4) << "a long text is several messages";
}

} // namespace
