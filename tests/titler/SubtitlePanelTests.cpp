// The workspace of subtitles in titler, and the log.
#include "KvAppLogListCtrl.h"
#include "log/LogPanel.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "title/CanvasView.h"
#include "window/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <gtest/gtest.h>
#include <thread>

using namespace titler;

namespace {

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
    void OpenCell(const QString& typed) // of the current row's text, and types over it
    {
        Press(Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_TRUE(list.IsEditing());
        QTest::keyClicks(editor, typed);
    }
    void SetRate(EKvFrameRate rate)
    {
        window.Project().Edit(EditKind::Single, "rate", [&](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, rate, kKvScanProgressive, 1280, 720});
        });
    }
    QAction* Command(const QString& name)
    {
        for (QAction* command : panel.Commands())
            if (command != nullptr && command->text().remove(u'&').startsWith(name))
                return command;
        return nullptr;
    }
    // Answers the questions to come, one after the other; the last one is cancelled unless it was accepted.
    void Answer(QStringList answers, QString* label = nullptr)
    {
        QTimer::singleShot(0, &window, [=] {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            for (const QString& typed : answers) {
                dialog->setTextValue(typed);
                dialog->accept();
                if (!dialog->isVisible())
                    return;
            }
            if (label != nullptr)
                *label = dialog->labelText();
            dialog->reject();
        });
    }
    void Shift(const QString& by)
    {
        Answer({by});
        Command("Shift")->trigger();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window)) << "its keys work again";
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
    SubtitleList& list = panel.List();
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

TEST_F(SubtitleWindow, AddsSplitsAndMergesWithoutLosingTimes)
{
    ASSERT_TRUE(Import(kThree));
    Select(0);
    window.Time().Seek(80);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Row(1), "80-100 ") << "up to the next row";
    window.Time().Seek(200);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Row(3), "200-250 ") << "two seconds";
    ASSERT_TRUE(list.IsEditing());
    QTest::keyClicks(QApplication::focusWidget(), "typed");
    window.Time().Seek(10);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Row(0), "10-25 ") << "before all that begin later";
    EXPECT_EQ(Row(4), "200-250 typed");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemCount(), 4);
    list.ModifyItem(1, L"one two", nullptr, nullptr, nullptr);
    list.SetTimeCode(1, 7, 0);
    Select(1);
    Press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(Row(1), "-1-7 one") << "a time that cannot be parted stays";
    EXPECT_EQ(Row(2), "-1--1 two");
    const Lines before = Rows();
    list.SetSelItem({0, 2});
    Press(Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(Rows(), before);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains("row 1 and row 3"));
    Press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemCount(), 6) << "the current row, though two are selected";
}

TEST_F(SubtitleWindow, AddsToRowsWithoutTimesBehindTheCurrentOne)
{
    ASSERT_TRUE(Import("one\ntwo\nthree\n", "in.txt"));
    Select(1);
    window.Time().Seek(25);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Rows(), (Lines{"-1--1 one", "-1--1 two", "25-75 ", "-1--1 three"}));
    list.SetSelItem(3);
    window.Time().Seek(5);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Row(2), "5-25 ") << "before what has a time";
}

TEST_F(SubtitleWindow, ShiftsTheSelectionAndAsksAgain)
{
    Command("Shift")->trigger(); // there is nothing to ask about
    ASSERT_TRUE(Import(kThree));
    Select(0);
    QString label;
    Answer({"soon", "-1:05"}, &label); // the second one is before the first frame
    Command("Shift")->trigger();
    EXPECT_TRUE(label.contains("row 1")) << label.toStdString();
    EXPECT_EQ(Row(0), "25-75 Hello there\nfriend");
    Answer({"soon", "+10"});
    Command("Shift")->trigger();
    EXPECT_EQ(Rows(), (Lines{"35-85 Hello there\nfriend", "110-160 \u4f60\u597d"}));
    list.InserItem(-1, L"third", 200, 210, nullptr);
    list.SetSelItem({1, 2});
    Answer({"+1"});
    Command("Shift")->trigger();
    EXPECT_EQ(Rows(), (Lines{"35-85 Hello there\nfriend", "111-161 \u4f60\u597d", "201-211 third"}));
}

TEST_F(SubtitleWindow, FaultsAreSaidOfTheCurrentRowAndFound)
{
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:00:02,000\nfine\n\n"
                       "2\n00:00:04,000 --> 00:00:03,000\nodd\n\n"
                       "3\n00:00:05,000 --> 00:00:08,000\nfine\n\n"
                       "4\n00:00:07,000 --> 00:00:09,000\nover\n\n"));
    const auto fault = [&] {
        for (QLabel* label : panel.findChildren<QLabel*>())
            if (label->property("role") == "fault")
                return label->text();
        return QString();
    };
    Select(0);
    EXPECT_EQ(fault(), "");
    const QPoint place = panel.List().mapTo(&panel, QPoint());
    const int height = list.height();
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1);
    EXPECT_TRUE(fault().contains("before it begins"));
    EXPECT_EQ(list.height(), height) << "the list does not jump";
    EXPECT_EQ(panel.List().mapTo(&panel, QPoint()), place);
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 2);
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1) << "round the end";
    Press(Qt::Key_F8, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(list.GetCurrentItem(), 2);
    Press(Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "o");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(list.GetCurrentItem(), 3);
    EXPECT_EQ(fault(), "");
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1) << "backwards";
    EXPECT_NE(fault(), "");
}

TEST_F(SubtitleWindow, EveryStepIsLogged)
{
    ASSERT_TRUE(Import(kThree));
    Select(0);
    Press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Done: split subtitle 1"));
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Undone: split subtitle 1"));
    Shift(" +10 ");
    EXPECT_TRUE(LogHas("Done: shift subtitles 1\u20132 by +10"));
    Select(0);
    window.Time().Seek(50);
    Press(Qt::Key_I);
    EXPECT_TRUE(LogHas("Done: in time of subtitle 1: 00:00:02:00"));
    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "e");
    for (QPushButton* button : panel.findChildren<QPushButton*>())
        if (button->text().remove(u'&') == "Replace all")
            button->click();
    EXPECT_TRUE(LogHas("\u201ce\u201d replaced by \u201c\u201d, in all: 4"));
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    window.Show(Workspace::Log);
    EXPECT_TRUE(window.windowTitle().startsWith("in.srt")) << "the log serves what is worked on";
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Undone: in time of subtitle 1: 00:00:02:00"));
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(panel.IsModified());
    window.Show(Workspace::Design);
    window.Show(Workspace::Log);
    EXPECT_FALSE(window.windowTitle().startsWith("in.srt"));
    emit window.Bar()->TitleBarActivated(kSubtitles); // comes back with its log
    EXPECT_TRUE(window.windowTitle().startsWith("in.srt"));
    window.Show(Workspace::Design);
    answer = IDCANCEL;
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(LogHas("New project"));
    window.Project().Steps().setClean();
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("New project"));
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

TEST_F(SubtitleWindow, TheListsMenuHasTheCommandsOfRows)
{
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:00:02,000\none\n\n2\n00:00:03,000 --> 00:00:04,000\ntwo\n"));
    list.SetSelItem(CArray<int, int>{0, 1});
    const int commands = static_cast<int>(panel.Commands().size());
    for (int round = 0; round < 2; ++round) { // what a menu has taken in stays the panel's
        QTimer::singleShot(0, &window, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            QStringList own;
            for (QAction* action : menu->actions()) {
                if (panel.Commands().contains(action) && !action->isSeparator())
                    own << action->text();
            }
            EXPECT_EQ(own.size(), 10);
            EXPECT_FALSE(own.filter("Merge").isEmpty()) << own.join(", ").toStdString();
            for (QAction* action : menu->actions())
                if (round == 1 && action->text().contains("Merge"))
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {20, 40}, list.mapToGlobal(QPoint(20, 40)));
        QApplication::sendEvent(&list, &event);
    }
    EXPECT_EQ(list.GetItemCount(), 1);
    EXPECT_EQ(panel.Commands().size(), commands);
}

} // namespace
