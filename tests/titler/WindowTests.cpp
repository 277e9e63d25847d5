// The main window's caption: workspaces, commands and what it says of the document.
#include "KvButtons.h"
#include "KvColorMapWnd.h"
#include "KvGuiRes.h"
#include "edit/Document.h"
#include "media/MediaPanel.h"
#include "time/TransportBar.h"
#include "title/CanvasView.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <gtest/gtest.h>

using namespace titler;

namespace {

template <typename View>
bool IsShown(const MainWindow& window)
{
    const QList<View*> views = window.findChildren<View*>();
    return std::any_of(views.begin(), views.end(), [](const View* view) { return view->isVisible(); });
}

QStringList ShownTools(const MainWindow& window)
{
    QStringList names;
    for (const QToolButton* button : window.menuWidget()->findChildren<QToolButton*>())
        if (button->isVisible())
            names << button->accessibleName();
    return names;
}

std::wstring MaximizePicture(const MainWindow& window)
{
    return static_cast<CKvButton*>(KvGetDlgItem(window.menuWidget(), kKvCaptionMaximise))->GetBitmapName();
}

struct Window : testing::Test
{
    Window()
    {
        window.resize(1200, 700);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template <typename View>
    bool Shows()
    {
        return IsShown<View>(window);
    }
    MainWindow window;
};

TEST_F(Window, EachWorkspaceShowsItsViewsAndTools)
{
    struct Row
    {
        Qt::Key key;
        Workspace workspace;
        bool canvas;
        bool playback;
        bool media;
        const char* tool;
    };
    const Row rows[] = {{Qt::Key_F7, Workspace::Animate, true, true, false, "Undo"},
                        {Qt::Key_F8, Workspace::Clips, false, false, true, "Scan folder again"},
                        {Qt::Key_F9, Workspace::Rules, false, false, false, "Add a rule"},
                        {Qt::Key_F4, Workspace::Subtitles, true, true, false, "Set in time"},
                        {Qt::Key_F6, Workspace::Design, true, false, false, "Undo"}};
    for (const Row& row : rows) {
        QTest::keyClick(&window, row.key);
        EXPECT_EQ(window.Current(), row.workspace);
        EXPECT_EQ(Shows<CanvasView>(), row.canvas) << row.key;
        EXPECT_EQ(Shows<TransportBar>(), row.playback) << row.key;
        EXPECT_EQ(Shows<MediaPanel>(), row.media) << row.key;
        EXPECT_TRUE(ShownTools(window).contains(row.tool)) << ShownTools(window).join(',').toStdString();
    }
}

// Down the inspector, through every group of choices at the one that is checked.
TEST_F(Window, TabWalksThroughTheInspector)
{
    EXPECT_TRUE(qobject_cast<CanvasView*>(QApplication::focusWidget()))
        << "where a turned wheel edits nothing";
    QStringList there, back;
    const auto walk = [](Qt::Key key, QStringList& names, const auto& isAtEnd) {
        for (int i = 0; i < 20 && !isAtEnd(*QApplication::focusWidget()); ++i) {
            names << QApplication::focusWidget()->accessibleName();
            QTest::keyClick(QApplication::focusWidget(), key);
        }
    };
    walk(Qt::Key_Tab, there, [](const QWidget& at) { return qobject_cast<const CKvColorMapWnd*>(&at); });
    EXPECT_EQ(there.join(", ").toStdString(),
              "Canvas, Text, Font, Size, Bold, Italic, Centre, Text, Gradient, Gradient, Position, Angle");
    walk(Qt::Key_Backtab, back, [](const QWidget& at) { return qobject_cast<const CanvasView*>(&at); });
    EXPECT_EQ(back.join(", ").toStdString(),
              ", Angle, Position, Gradient, Gradient, Text, Centre, Italic, Bold, Size, Font, Text")
        << "from the map";
}

TEST_F(Window, AnApplicationComesBackWithItsTab)
{
    window.Show(Workspace::Animate);
    window.Show(Workspace::Clips);
    emit window.Bar()->TitleBarActivated(1); // as a choice in the switch window is told
    EXPECT_EQ(window.Current(), Workspace::Animate);
    EXPECT_TRUE(Shows<TransportBar>());
}

TEST_F(Window, TheApplicationMenuDoesWhatTheShortcutsDo)
{
    const auto undo = [&](bool enabled) -> UINT {
        const std::unique_ptr<QMenu> menu = KvGuiRes::CreateMenuByName(window.Bar()->MenuName().c_str());
        for (const QAction* part : menu->actions())
            for (const QAction* entry : part->menu()->actions())
                if (entry->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_Z)) {
                    EXPECT_EQ(entry->isEnabled(), enabled);
                    return entry->data().toUInt();
                }
        return 0;
    };
    const bool bold = window.Project().Current().title.bold;
    const auto change = [&] {
        window.Project().Edit(EditKind::Single, "bold", [&](auto& project) { project.title.bold = !bold; });
    };
    ASSERT_NE(undo(false), 0u);
    change();
    window.AllCommands().Trigger(undo(true));
    EXPECT_EQ(window.Project().Current().title.bold, bold);
    change();
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.Project().Current().title.bold, bold);
    EXPECT_FALSE(window.Project().Steps().canUndo());
    window.AllCommands().Trigger(0);
    window.AllCommands().Trigger(100000);
}

TEST_F(Window, ATabThatIsPressedOpensItsWorkspace)
{
    window.Bar()->ActiveRibbonItem(1, L"Animate"); // by a program: silent
    EXPECT_EQ(window.Current(), Workspace::Design);
    emit window.Bar()->RibbonItemSelected(1, QStringLiteral("Animate"));
    EXPECT_EQ(window.Current(), Workspace::Animate);
}

TEST(MenuBarWindow, ItsMenusAndShortcutsDoTheSame)
{
    MainWindow window(MainWindow::Caption::Menus);
    window.resize(780, 560);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_F7);
    EXPECT_EQ(window.Current(), Workspace::Animate);
    EXPECT_TRUE(IsShown<TransportBar>(window));
    EXPECT_TRUE(ShownTools(window).contains("Export frames…"));
    EXPECT_FALSE(ShownTools(window).contains("New"));
    const bool bold = window.Project().Current().title.bold;
    for (const bool value : {!bold, bold, !bold})
        window.Project().Edit(EditKind::Single, "bold", [&](auto& project) { project.title.bold = value; });
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.Project().Steps().index(), 2); // once
    QTest::keyClick(&window, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(window.Project().Steps().index(), 3);
    QTest::keyClick(&window, Qt::Key_Y, Qt::ControlModifier); // nothing to redo
    EXPECT_EQ(window.Project().Steps().index(), 3);
    window.showMaximized();
    EXPECT_TRUE(QTest::qWaitFor([&] { return MaximizePicture(window) == L"wndrestore"; }));
    window.showNormal();
    EXPECT_TRUE(QTest::qWaitFor([&] { return MaximizePicture(window) == L"wndmaxmize"; }));
}

struct Remembered : testing::Test
{
    QString Path(const char* name) { return folder.filePath(QLatin1String(name)); }
    void Write(const char* name, const QByteArray& bytes)
    {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray Read(const char* name)
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
};

TEST_F(Remembered, TheNextWindowIsWhereTheLastOneWas)
{
    Write("s.json", R"({"future": [1], "workspace": "nowhere", "projects": ["", 3, "/a", "/a"]})");
    QSize size;
    {
        Settings settings(Path("s.json"));
        EXPECT_EQ(settings.Load(), "");
        EXPECT_EQ(settings.projects, QStringList("/a"));
        MainWindow window;
        window.resize(780, 560); // fits the offscreen platform's screen
        window.Remember(settings);
        EXPECT_EQ(window.Current(), Workspace::Design);
        window.show();
        window.Show(Workspace::Clips);
        EXPECT_TRUE(window.OpenProject(QStringLiteral(TITLER_SAMPLES "/sample.ktitle")));
        size = window.size();
        EXPECT_TRUE(window.close());
    }
    Settings settings(Path("s.json"));
    EXPECT_EQ(settings.Load(), "");
    EXPECT_TRUE(Read("s.json").contains("future"));
    EXPECT_EQ(settings.projects.size(), 2);
    MainWindow window;
    window.Remember(settings);
    EXPECT_EQ(window.Current(), Workspace::Clips);
    EXPECT_EQ(window.size(), size);
}

TEST_F(Remembered, TheThemeIsTheOneOfTheLastTime)
{
    {
        Settings settings(Path("s.json"));
        MainWindow window;
        window.Remember(settings);
        window.show();
        const QColor dark = LoadSkin().window;
        for (const auto& menu : window.AllCommands().Menus())
            for (QAction* action : menu->findChildren<QAction*>())
                if (action->text() == Text(kTextThemeLight))
                    action->trigger();
        EXPECT_EQ(CurrentTheme(), Theme::Light);
        EXPECT_GT(LoadSkin().window.lightness(), dark.lightness());
        EXPECT_EQ(window.palette().color(QPalette::Window), LoadSkin().window);
        EXPECT_TRUE(window.close());
        KvGuiRes::SetSkinFolder(nullptr);
        qApp->setStyleSheet({});
        qApp->setPalette({});
    }
    Settings settings(Path("s.json"));
    EXPECT_EQ(settings.Load(), "");
    EXPECT_EQ(ThemeOf(settings.theme), Theme::Light);
}

TEST_F(Remembered, SettingsAreOnlyWrittenWhenTheyAreOthers)
{
    Settings settings(Path("s.json"));
    settings.AddProject("/a.ktitle");
    EXPECT_EQ(settings.Save(), "");
    const QDateTime old = QDateTime::currentDateTime().addDays(-1);
    QFile file(Path("s.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(old, QFileDevice::FileModificationTime));
    file.close();
    settings.AddProject("/a.ktitle");
    EXPECT_EQ(settings.Save(), "");
    EXPECT_LT(QFileInfo(Path("s.json")).lastModified(), old.addSecs(60));
    settings.AddProject("/b.ktitle");
    EXPECT_EQ(settings.Save(), "");
    EXPECT_GT(QFileInfo(Path("s.json")).lastModified(), old.addSecs(60));
}

TEST_F(Remembered, TwoProgramsLoseNoProjectOfEachOther)
{
    Settings first(Path("s.json"));
    Settings second(Path("s.json"));
    for (Settings* settings : {&first, &second})
        EXPECT_EQ(settings->Load(), "");
    first.AddProject("/a");
    EXPECT_EQ(first.Save(), "");
    second.AddProject("/b");
    EXPECT_EQ(second.Save(), "");
    EXPECT_EQ(second.projects, (QStringList{"/b", "/a"}));
    second.DropProject("/a");
    EXPECT_EQ(second.Save(), "");
    EXPECT_EQ(second.projects, QStringList("/b"));
}

TEST_F(Remembered, ABrokenFileIsKeptAside)
{
    Write("s.json", "{broken");
    Settings settings(Path("s.json"));
    EXPECT_TRUE(settings.Load().contains("s.json.bak"));
    EXPECT_EQ(settings.Save(), "");
    EXPECT_EQ(Read("s.json.bak"), "{broken");
    EXPECT_EQ(Settings(Path("s.json")).Load(), "");
    EXPECT_EQ(Settings(Path("missing.json")).Load(), "");
    Settings folderOnly(folder.path()); // cannot be read, so it must not be replaced either
    EXPECT_FALSE(folderOnly.Load().isEmpty());
    EXPECT_EQ(folderOnly.Save(), "");
    ASSERT_TRUE(QDir(folder.path()).mkpath("t.json.bak/full")); // what is broken cannot be kept here
    Write("t.json", "{broken");
    Settings unkept(Path("t.json"));
    EXPECT_FALSE(unkept.Load().isEmpty());
    EXPECT_EQ(unkept.Save(), "");
    EXPECT_EQ(Read("t.json"), "{broken");
    Write("file", "");
    EXPECT_NE(Settings(Path("file/s.json")).Save(), "");
}

TEST_F(Remembered, RecentProjectsStandInTheMenuLatestFirst)
{
    Settings settings(Path("s.json"));
    for (int i = 0; i < 12; ++i)
        settings.AddProject(Path(QByteArray::number(i).constData()));
    settings.AddProject(Path("7"));
    EXPECT_EQ(settings.projects.size(), kMostRecentProjects);
    MainWindow window;
    const auto entries = [&] {
        QStringList texts;
        const std::unique_ptr<QMenu> menu = KvGuiRes::CreateMenuByName(window.Bar()->MenuName().c_str());
        for (const QAction* part : menu->actions().first()->menu()->actions())
            for (const QAction* entry : part->menu() != nullptr ? part->menu()->actions() : QList<QAction*>())
                if (entry->isVisible())
                    texts << entry->text();
        return texts;
    };
    EXPECT_EQ(entries(), QStringList("No projects yet"));
    window.Remember(settings);
    EXPECT_EQ(entries().size(), kMostRecentProjects);
    EXPECT_EQ(entries().first(), "&1 7");
    KvSetMessageBoxHandler([](HWND, const std::wstring&, UINT) { return IDOK; });
    EXPECT_FALSE(window.OpenProject(Path("7"))); // is not there any more
    KvSetMessageBoxHandler({});
    EXPECT_EQ(entries().first(), "&1 11");
}

} // namespace
