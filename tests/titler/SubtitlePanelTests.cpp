// The workspace of subtitles in titler, and the log.
#include "KvAppLogListCtrl.h"
#include "KvSubTitleTxtListEditor.h"
#include "log/LogPanel.h"
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "title/CanvasView.h"
#include "window/MainWindow.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>
#include <thread>

using namespace titler;

namespace {

TEST(SubtitleCheck, FindsNegativeOverlappingAndFastRows)
{
    const std::vector<TimedText> rows = {
        {0, 50, 10},    // 2 s: fine
        {100, 100, 1},  // no time at all
        {200, 250, 41}, // more than 20 a second
        {240, 300, 5},  // begins before the one above ends
        {-1, 20, 100},  {400, -1, 100},
    };
    EXPECT_EQ(CheckSubtitles(rows, 25),
              (std::vector<unsigned>{0, kSubtitleNegative, kSubtitleFast | kSubtitleOverlap, 0, 0, 0}));
    EXPECT_EQ(CheckSubtitles({{10, 60, 1}, {0, 20, 1}}, 25), (std::vector<unsigned>{0, kSubtitleOverlap}))
        << "whatever the order of the rows";
    EXPECT_TRUE(CheckSubtitles({}, 25).empty());
}

TEST(SubtitleText, SplitsAtTheNearestBreakAndReadsSteps)
{
    using Parts = std::pair<QString, QString>;
    EXPECT_EQ(SplitSubtitle("one\ntwo\nthree", 0.4), Parts("one", "two\nthree"));
    EXPECT_EQ(SplitSubtitle("one two three", 0.9), Parts("one two", "three"));
    EXPECT_EQ(SplitSubtitle("abcdef", 0.5), Parts("abc", "def"));
    EXPECT_EQ(SplitSubtitle(QString::fromUtf8("\U0001F469\u200D\U0001F4BB"), 0.5).first.size() % 5, 0)
        << "a character stays whole";
    EXPECT_EQ(SplitSubtitle("", 0.5), Parts("", ""));
    EXPECT_EQ(ShiftOf("+10", kKvFrameRate25), 10);
    EXPECT_EQ(ShiftOf(" -1:00 ", kKvFrameRate25), -25);
    EXPECT_EQ(ShiftOf("00:00:02:05", kKvFrameRate25), 55);
    EXPECT_EQ(ShiftOf("soon", kKvFrameRate25), std::nullopt);
    EXPECT_EQ(CutOf({10, 20}, 12), 12u);
    EXPECT_EQ(CutOf({10, 20}, 20), 15u) << "out is exclusive";
    EXPECT_EQ(CutOf({10, 11}, 10), kNoTime);
    EXPECT_EQ(CutOf({kNoTime, 20}, 12), kNoTime);
    EXPECT_EQ(MergedTimes({{kNoTime, 5}, {10, kNoTime}, {7, 9}}), (SubtitleTimes{7, 9}));
    EXPECT_EQ(MergedTimes({{}, {}}), SubtitleTimes());
    EXPECT_EQ(Shifted({10, kNoTime}, -10), (SubtitleTimes{0, kNoTime}));
    EXPECT_EQ(Shifted({10, 30}, -11), std::nullopt);
    EXPECT_EQ(Shifted({10, kNoTime - 1}, 1), std::nullopt);
    EXPECT_EQ(FrameAtRate(100, FrameRateOf(kKvFrameRate25), FrameRateOf(kKvFrameRate50)), 200u);
}

struct SubtitleWindow : testing::Test
{
    SubtitleWindow()
    {
        window.resize(780, 560);
        window.Project().Edit(EditKind::Single, "rate", [](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, kKvFrameRate25, kKvScanProgressive, 1920, 1080});
            project.duration = 1000;
        });
        window.Show(Workspace::Subtitles);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT) {
            asked << QString::fromStdWString(text);
            return answer;
        });
    }
    ~SubtitleWindow() override { KvSetMessageBoxHandler({}); }
    bool Import(const QByteArray& bytes, const char* name = "in.srt")
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        return panel.Import(file.fileName());
    }
    QByteArray Export(const char* name)
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(panel.Export(file.fileName()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    std::string Row(int row)
    {
        DWORD in = kNoTime;
        DWORD out = kNoTime;
        list.GetTimeCode(row, in, out);
        const QString text = QString::fromStdWString(list.GetItemText(row, kKvSubTitleText));
        const QString all = QStringLiteral("%1-%2 %3").arg(static_cast<int>(in)).arg(static_cast<int>(out));
        return all.arg(text).toStdString();
    }
    using Lines = std::vector<std::string>;
    Lines Rows()
    {
        Lines rows;
        for (int row = 0; row < list.GetItemCount(); ++row)
            rows.push_back(Row(row));
        return rows;
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list, static_cast<Qt::Key>(key), modifiers);
    }
    void Select(int row) // as the user does
    {
        list.setFocus();
        Press(Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            Press(Qt::Key_Down);
    }
    bool LogHas(const QString& text)
    {
        CKvAppLogListCtrl& log = window.Log().List();
        for (int line = 0; line < log.GetItemCount(); ++line)
            if (QString::fromStdWString(log.GetItemText(line, 3)).contains(text))
                return true;
        return false;
    }

    QTemporaryDir folder;
    MainWindow window;
    SubtitlePanel& panel = window.Subtitles();
    CKvSubTitleTxtListEditor& list = panel.List();
    QStringList asked;
    int answer = IDYES;
};

constexpr const char* kThree = "1\n00:00:01,000 --> 00:00:03,000\nHello there\nfriend\n\n"
                               "2\nnot a time\nlost\n\n"
                               "3\n00:00:04,000 --> 00:00:06,000\n\xe4\xbd\xa0\xe5\xa5\xbd\n\n";

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
    EXPECT_TRUE(asked[0].contains("row 3"));
    answer = IDYES;
    EXPECT_EQ(Export("out.srt").count("-->"), 2);
    EXPECT_FALSE(panel.Export(folder.filePath("none/out.srt")));
}

TEST_F(SubtitleWindow, KeysEditRowsAndEachIsOneStepOfUndo)
{
    ASSERT_TRUE(Import(kThree));
    const Lines imported = Rows();
    Select(0);
    window.Time().Seek(50);
    Press(Qt::Key_K, Qt::ControlModifier); // split, at the play head
    EXPECT_EQ(Rows(), (Lines{"25-50 Hello there", "50-75 friend", imported[1]}));
    Select(1);
    Press(Qt::Key_J, Qt::ControlModifier); // merge with the next
    EXPECT_EQ(Row(1), "50-150 friend\n\u4f60\u597d");
    Select(0);
    window.Time().Seek(10);
    Press(Qt::Key_I);
    window.Time().Seek(40);
    Press(Qt::Key_O);
    EXPECT_EQ(Row(0), "10-40 Hello there");
    EXPECT_EQ(list.GetLastSelItem(), 1) << "the next row waits for its time";
    EXPECT_TRUE(panel.IsModified());
    for (int step = 0; step < 4; ++step)
        QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Rows(), imported);
    EXPECT_FALSE(panel.IsModified());
    EXPECT_TRUE(window.Project().Steps().canUndo()) << "the project's own steps are left alone";
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
    window.Project().Edit(EditKind::Single, "rate", [](Project& project) {
        SetVideoFormat(project, {kKvAspect16x9, kKvFrameRate50, kKvScanProgressive, 1280, 720});
    });
    EXPECT_EQ(Row(0), "50-150 Hello there\nfriend") << "the times stay";
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
    std::thread([] { qWarning("from another thread"); }).join();
    EXPECT_TRUE(LogHas("from another thread"));
    EXPECT_FALSE(window.OpenProject("/nowhere.ktitle"));
    EXPECT_TRUE(LogHas("nowhere.ktitle"));
    window.Say(QString(2000, u'x'));
    EXPECT_GE(window.Log().List().GetTypeCount(0), 4) << "a long text is several messages";
}

} // namespace
