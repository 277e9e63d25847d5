// The start page, and files that are dropped on the window.
#include "media/MediaPanel.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "title/CanvasView.h"
#include "window/EmptyHint.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/StartPage.h"
#include "window/Texts.h"
#include "window/VideoFormats.h"

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFile>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

using namespace titler;

namespace {

struct Start : testing::Test
{
    Start() : settings(folder.filePath("settings.json"))
    {
        for (const char* name : {"b.ktitle", "a.ktitle"}) {
            EXPECT_EQ(SaveProject(folder.filePath(name), NewProject()), "");
            settings.AddProject(folder.filePath(name));
        }
        settings.AddProject(folder.filePath("gone.ktitle"));
        window.resize(1000, 640);
        window.Remember(settings);
        window.ShowStart();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        KvSetMessageBoxHandler([this](HWND, const std::wstring&, UINT) {
            ++asked;
            return IDCANCEL;
        });
    }
    ~Start() override { KvSetMessageBoxHandler({}); }
    void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    bool HasTitle(const char* text) { return window.Project().Current().title.text == QLatin1String(text); }
    bool Drop(const QString& file)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter(QPoint(9, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        QDropEvent drop(QPoint(9, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &drop);
        QApplication::processEvents();
        return enter.isAccepted();
    }

    QTemporaryDir folder;
    Settings settings;
    MainWindow window;
    int asked = 0;
};

TEST_F(Start, TheFocusBeginsAtTheSampleWhichOpensAsACopy)
{
    EXPECT_TRUE(window.IsAtStart());
    Key(Qt::Key_Return);
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_TRUE(HasTitle("NORTHERN\nLIGHTS"));
    EXPECT_EQ(window.Project().FileName(), "");
    EXPECT_FALSE(window.Project().IsModified());
}

TEST_F(Start, EscapeBeginsWithAnEmptyTitleAndTypingWithThatText)
{
    Key(Qt::Key_Escape);
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_FALSE(window.Project().IsModified());
    window.ShowStart();
    window.findChild<StartPage*>()->findChild<QListWidget*>()->setFocus();
    Key(Qt::Key_A);
    EXPECT_FALSE(window.IsAtStart());
    Key(Qt::Key_B);
    EXPECT_TRUE(HasTitle("ab"));
    ProjectError error;
    window.Project().Open(QStringLiteral(TITLER_SAMPLES "/sample.ktitle"), error);
    window.ShowStart();
    Key(Qt::Key_C);
    EXPECT_TRUE(HasTitle("c"));
    EXPECT_TRUE(window.Project().FileName().isEmpty()) << "what was open is as it was";
}

TEST_F(Start, ANewProjectHasTheChosenFormat)
{
    auto& formats = *window.findChild<StartPage*>()->findChild<QComboBox*>();
    formats.setFocus();
    Key(Qt::Key_Down);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Return);
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_TRUE(IsSameFormat(window.Project().Current().video, VideoFormats()[1]));
    EXPECT_FALSE(window.Project().IsModified());
}

TEST_F(Start, RecentProjectsOpenAndThoseThatAreGoneCanBeRemoved)
{
    auto& list = *window.findChild<StartPage*>()->findChild<QListWidget*>();
    ASSERT_EQ(list.count(), 3);
    EXPECT_TRUE(list.item(0)->text().startsWith("gone.ktitle (missing)\n"));
    EXPECT_NE(list.item(0)->foreground(), list.item(1)->foreground());
    list.setFocus();
    Key(Qt::Key_Return); // it is not there: nothing happens
    EXPECT_TRUE(window.IsAtStart());
    EXPECT_EQ(asked, 0);
    Key(Qt::Key_Delete);
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(settings.projects.size(), 2);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_EQ(window.Project().FileName(), folder.filePath("b.ktitle"));
    window.ShowStart();
    EXPECT_TRUE(list.item(0)->text().startsWith("b.ktitle\n"));
    QTest::keyClick(&window, Qt::Key_F7);
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_EQ(window.Current(), Workspace::Animate);
}

TEST_F(Start, AFileThatIsDroppedOpens)
{
    EXPECT_TRUE(Drop(folder.filePath("a.ktitle")));
    EXPECT_EQ(window.Project().FileName(), folder.filePath("a.ktitle"));
    EXPECT_FALSE(window.IsAtStart());
    EXPECT_TRUE(Drop(QStringLiteral(TITLER_SAMPLES "/subtitles.srt")));
    EXPECT_EQ(window.Current(), Workspace::Subtitles);
    EXPECT_GT(window.Subtitles().List().GetItemCount(), 0);
    EXPECT_TRUE(Drop(QStringLiteral(TITLER_SAMPLES "/media")));
    EXPECT_EQ(window.Current(), Workspace::Clips);
    Drop(folder.filePath("picture.png")); // what it is not for is only said
    EXPECT_EQ(window.Current(), Workspace::Clips);
    window.Project().Edit(EditKind::Single, "text", [](Project& project) { project.title.text = "New"; });
    EXPECT_EQ(asked, 0);
    Drop(folder.filePath("b.ktitle"));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(HasTitle("New"));
}

TEST_F(Start, EmptyViewsSayHowToBegin)
{
    const auto hint = [&](UINT textId) {
        for (const EmptyHint* each : window.findChildren<EmptyHint*>())
            if (each->text() == Text(textId))
                return each->isVisible() && each->parentWidget()->rect().contains(each->geometry());
        return false;
    };
    Key(Qt::Key_Escape);
    EXPECT_FALSE(hint(kTextCanvasEmpty));
    window.Project().Edit(EditKind::Single, "text", [](Project& project) { project.title.text.clear(); });
    EXPECT_TRUE(hint(kTextCanvasEmpty));
    window.Show(Workspace::Subtitles);
    EXPECT_TRUE(hint(kTextSubtitlesNone));
    EXPECT_TRUE(window.Subtitles().Import(QStringLiteral(TITLER_SAMPLES "/subtitles.srt")));
    EXPECT_FALSE(hint(kTextSubtitlesNone));
}

} // namespace
