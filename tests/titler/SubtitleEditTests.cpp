// What is done to rows in the workspace of subtitles.
#include "SubtitleWindow.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>

using namespace titler;

namespace {

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
    EXPECT_TRUE(LogHas("Done: replace (subtitle 1)"));
    EXPECT_FALSE(LogHas("split subtitle 1 (")) << "it says so itself";
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
            EXPECT_EQ(own.size(), 7);
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

TEST_F(SubtitleWindow, TheListsOwnStepsSayToWhichRows)
{
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:00:02,000\none\n\n2\n00:00:03,000 --> 00:00:04,000\ntwo\n\n"
                       "3\n00:00:05,000 --> 00:00:06,000\nthree\n"));
    Select(1);
    OpenCell("other");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(LogHas("Done: edit text (subtitle 2)"));
    Select(1);
    Press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(LogHas("Done: move (subtitle 3)"));
    list.SetSelItem({0, 1});
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Done: cut (subtitles 1\u20132)"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Done: paste (subtitles 2\u20133)"));
    list.SetSelItem(0);
    Press(Qt::Key_Delete);
    EXPECT_TRUE(LogHas("Done: delete (subtitle 1)"));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(LogHas("Undone: delete (subtitle 1)"));
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_FALSE(LogHas("(subtitle 1) (")) << "once";
}

TEST_F(SubtitleWindow, TypingOverARowOpensItsCellWhichThenHasTheKeys)
{
    ASSERT_TRUE(Import(kThree));
    Select(0);
    QTest::keyClick(&list, 'H');
    ASSERT_TRUE(list.IsEditing());
    QTest::keyClicks(QApplication::focusWidget(), "io ");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Row(0), "25-75 Hio ");
    EXPECT_FALSE(window.Time().IsPlaying());
}

TEST_F(SubtitleWindow, RowsHaveAMenuAndTheHeaderHasNone)
{
    ASSERT_TRUE(Import(kThree));
    for (const int y : {5, 40}) {
        bool isOpen = false;
        QTimer::singleShot(0, &window, [&] {
            isOpen = QApplication::activePopupWidget() != nullptr;
            if (isOpen)
                QApplication::activePopupWidget()->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {20, y}, list.mapToGlobal(QPoint(20, y)));
        QApplication::sendEvent(&list, &event);
        QApplication::processEvents();
        EXPECT_EQ(isOpen, y > 30) << y;
    }
}

TEST_F(SubtitleWindow, GivesTheSelectedRowsATemplate)
{
    ASSERT_TRUE(Import(kThree));
    const auto name = [this](int row) { return list.GetItemText(row, kKvSubTitleTemplate); };
    const auto entries = [this] {
        QStringList texts;
        for (QAction* entry : Command("Template")->menu()->actions())
            if (entry->isVisible() && !entry->isSeparator())
                texts << entry->text() + (entry->isChecked() ? "*" : "");
        return texts;
    };
    const auto choose = [this](const QString& text) {
        for (QAction* entry : Command("Template")->menu()->actions())
            if (entry->text() == text)
                entry->trigger();
    };
    list.ModifyItem(1, nullptr, nullptr, nullptr, L"Sign & note");
    Select(0);
    list.SetSelItem({0, 1});
    choose("Voice");
    EXPECT_EQ(name(0) + name(1), L"VoiceVoice");
    EXPECT_TRUE(LogHas("template \u201cVoice\u201d of subtitles 1\u20132"));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(name(0) + name(1), L"Sign & note") << "one step";
    Select(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return entries().contains("Sign && note*"); }));
    EXPECT_EQ(entries(), (QStringList{"Bottom", "Top", "Voice", "Title", "Sign && note*", "&None"}));
    Press(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(name(1), L"Top");
    choose("&None");
    EXPECT_EQ(name(1), L"");
    EXPECT_TRUE(LogHas("no template for subtitle 2"));
    window.Show(Workspace::Log);
    for (QAction* entry : Command("Template")->menu()->actions())
        EXPECT_TRUE(entry->isSeparator() || !entry->isEnabled()) << "its key is another one there";
}

TEST(SubtitlesUnderAMenuBar, TheLogUndoesWhatIsWorkedOn)
{
    MainWindow window(MainWindow::Caption::Menus);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    SubtitleList& list = window.Subtitles().List();
    window.Project().Edit(EditKind::Single, "length", [](Project& project) { project.duration = 77; });
    window.Show(Workspace::Subtitles);
    list.RunAsStep(L"add", [&] { list.InserItem(-1, L"one", 0, 10, nullptr); });
    window.Show(Workspace::Log);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(window.Project().Current().duration, 77);
    QTest::keyClick(&window, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemCount(), 1);
    window.Show(Workspace::Design);
    window.Show(Workspace::Log);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemCount(), 1);
    EXPECT_NE(window.Project().Current().duration, 77);
}

} // namespace
