// The strip of pages: what its user does, and its pictures that come from threads.
#include "edit/PageSteps.h"
#include "pages/PageStrip.h"
#include "project/Pages.h"
#include "title/TitleWorkspace.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace titler {
namespace {

constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kControlShift = Qt::ControlModifier | Qt::ShiftModifier;

// Pages with one letter each, each of a colour of its own; the first is the current one.
Project Made(int count)
{
    Project project = NewProject();
    for (int index = 0; index < count; ++index) {
        Page page = NewPage();
        page.title.text = QChar(u'a' + index % 26);
        page.background.kind = PaintKind::Solid;
        page.background.colour = 0xFF004000u + static_cast<DWORD>(index % 200) * 0x010001u;
        if (index == 0)
            static_cast<Page&>(project) = page;
        else
            AddPage(project, page);
    }
    ChoosePage(project, 0);
    return project;
}

struct StripOfPages : testing::Test
{
    StripOfPages()
    {
        window.resize(790, 700);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void Begin(int count)
    {
        window.Project().Begin(Made(count), {}, false);
        Draw();
    }
    const Project& Now() { return window.Project().Current(); }
    // "a[b]c": b is the current one.
    std::string Shown()
    {
        QString shown;
        for (int i = 0; i < PageCount(Now()); ++i) {
            const QString& text = PageAt(Now(), i).title.text;
            shown += i == Now().pageIndex ? u'[' + text + u']' : text;
        }
        return shown.toStdString();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Press(QPoint at) { QTest::mousePress(&strip, Qt::LeftButton, {}, at); }
    void Release(QPoint at) { QTest::mouseRelease(&strip, Qt::LeftButton, {}, at); }
    // A point in a thumbnail, as parts of its width and height.
    QPoint In(int page, double x, double y = 0.5)
    {
        const QRect place = strip.PlaceOf(page);
        return place.topLeft() + QPointF(place.width() * x, place.height() * y).toPoint();
    }
    // The strip with all the pictures that are to come.
    QImage Draw()
    {
        strip.grab();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !strip.IsBusy(); }, 60000));
        return strip.grab().toImage();
    }
    // Below the letter, beside the labels.
    QRgb Colour(int page) { return Draw().pixel(In(page, 0.1, 0.6)); }
    QAction& Command(UINT nameId)
    {
        for (const std::unique_ptr<QMenu>& menu : window.AllCommands().Menus())
            for (QAction* command : menu->actions())
                if (command->text() == Text(nameId))
                    return *command;
        ADD_FAILURE() << nameId;
        return none;
    }

    QAction none;
    MainWindow window;
    PageStrip& strip = window.Pages();
};

TEST_F(StripOfPages, AClickShowsAPageWithOneMessage)
{
    Begin(4);
    QList<WPARAM> heard;
    KvMessageSink sink(strip.parentWidget(), [&](UINT message, WPARAM wParam, LPARAM lParam) {
        EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(&strip));
        if (message == WM_COMMAND)
            heard << wParam;
        return std::optional<LRESULT>();
    });
    for (QDoubleSpinBox* field : window.findChildren<QDoubleSpinBox*>())
        if (field->accessibleName() == Text(kTextSize).remove(u'&')) {
            field->setFocus();
            field->findChild<QLineEdit*>()->selectAll();
        }
    QTest::keyClicks(QApplication::focusWidget(), "33");
    Press(In(2, 0.5, 0.9));
    Release(In(2, 0.5, 0.9));
    EXPECT_EQ(Shown(), "ab[c]d");
    EXPECT_EQ(heard, QList<WPARAM>{MAKEWPARAM(strip.GetDlgCtrlID(), 1)});
    EXPECT_EQ(PageAt(Now(), 0).title.fontSize, 33) << "what was typed for the page before";
    EXPECT_NE(Now().title.fontSize, 33);
    EXPECT_EQ(window.Project().Steps().count(), 1) << "to choose a page is no step";
    QTest::keyClick(&strip, Qt::Key_Left);
    EXPECT_EQ(Shown(), "a[b]cd");
    EXPECT_EQ(heard.size(), 2);
}

TEST_F(StripOfPages, EachCommandIsAStepThatUndoShows)
{
    const struct
    {
        int page;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* after;
        int steps = 1;
    } rows[] = {
        {1, Qt::Key_N, kControlShift, "ab[Title]c"},   {1, Qt::Key_D, kControl, "ab[b]c"},
        {1, Qt::Key_Delete, kControlShift, "a[c]"},    {1, Qt::Key_PageUp, kControlShift, "[b]ac"},
        {1, Qt::Key_PageDown, kControlShift, "ac[b]"}, {2, Qt::Key_PageDown, kControlShift, "ab[c]", 0},
        {1, Qt::Key_PageUp, kControl, "[a]bc", 0},     {1, Qt::Key_PageDown, kControl, "ab[c]", 0},
        {0, Qt::Key_PageUp, kControl, "[a]bc", 0}};
    for (QWidget* focus : {static_cast<QWidget*>(&strip), QApplication::focusWidget()}) {
        for (const auto& row : rows) {
            window.Project().Begin(Made(3), {}, false);
            window.Project().ChoosePage(row.page);
            const std::string before = Shown();
            focus->setFocus();
            Key(row.key, row.modifiers);
            EXPECT_EQ(Shown(), row.after) << row.key;
            EXPECT_EQ(window.Project().Steps().count(), row.steps) << row.after;
            if (row.steps == 0)
                continue;
            window.Project().ChoosePage(0);
            Key(Qt::Key_Z, kControl);
            EXPECT_EQ(Shown(), before) << row.after;
            EXPECT_EQ(strip.GetFocusIndex(), row.page);
        }
    }
}

TEST_F(StripOfPages, WhatCannotBeDoneSaysWhy)
{
    Begin(1);
    EXPECT_FALSE(Command(kTextPageDelete).isEnabled());
    EXPECT_EQ(Command(kTextPageDelete).toolTip(), Text(kTextOnlyPage));
    Key(Qt::Key_Delete, kControlShift);
    EXPECT_EQ(Shown(), "[a]");
    Key(Qt::Key_N, kControlShift);
    EXPECT_TRUE(Command(kTextPageDelete).isEnabled());
    EXPECT_EQ(Command(kTextPageDelete).toolTip(), Text(kTextPageDelete + 1));
    Begin(kMostPages);
    EXPECT_FALSE(Command(kTextPageAdd).isEnabled());
    EXPECT_TRUE(Command(kTextPageAdd).toolTip().contains("1000"));
    // Their keys are the rows' in another application, and Ctrl+Shift+Delete is the log's.
    Begin(2);
    KvSetMessageBoxHandler([](HWND, const std::wstring&, UINT) { return IDNO; });
    for (const Workspace workspace : {Workspace::Subtitles, Workspace::Rules, Workspace::Log}) {
        window.Show(workspace);
        EXPECT_FALSE(strip.isVisible());
        EXPECT_FALSE(Command(kTextPageDelete).isEnabled());
        Key(Qt::Key_Delete, kControlShift);
        EXPECT_EQ(Shown(), "[a]b");
    }
    KvSetMessageBoxHandler({});
}

TEST_F(StripOfPages, ADraggedPageIsDroppedBetweenOthers)
{
    const struct
    {
        int from;
        int to;
        double x; ///< in the thumbnail at which the drag ends
        const char* after;
    } rows[] = {{0, 2, 0.8, "bc[a]d"}, {0, 2, 0.2, "b[a]cd"}, {3, 0, 0.2, "[d]abc"}, {1, 3, 0.9, "acd[b]"},
                {1, 0, 0.8, "a[b]cd"}, {1, 2, 0.2, "a[b]cd"}, {2, 2, 0.9, "ab[c]d"}};
    for (const bool isDropped : {true, false})
        for (const auto& row : rows) {
            Begin(4);
            Press(In(row.from, 0.5, 0.85)); // also where the strip itself would be dragged
            const std::string before = Shown();
            QTest::mouseMove(&strip, In(row.to, 0.5));
            QTest::mouseMove(&strip, In(row.to, row.x));
            EXPECT_TRUE(strip.IsDragging());
            Draw();
            if (!isDropped)
                QTest::keyClick(&strip, Qt::Key_Escape);
            Release(In(row.to, row.x));
            EXPECT_FALSE(strip.IsDragging());
            EXPECT_EQ(Shown(), isDropped ? row.after : before);
            EXPECT_EQ(window.Project().Steps().count(), Shown() == before ? 0 : 1);
        }
}

TEST_F(StripOfPages, ADragEndsWhenThePagesChangeUnderIt)
{
    Begin(3);
    Press(In(0, 0.5));
    QTest::mouseMove(&strip, In(2, 0.9));
    ASSERT_TRUE(strip.IsDragging());
    DeletePage(window.Project());
    EXPECT_FALSE(strip.IsDragging());
    Release(In(1, 0.9));
    EXPECT_EQ(Shown(), "[b]c");
}

TEST_F(StripOfPages, ADragHeldAtAnEndScrolls)
{
    Begin(26);
    const QPoint end(strip.width() - 5, 30);
    Press(In(1, 0.5));
    QTest::mouseMove(&strip, In(2, 0.5));
    QTest::mouseMove(&strip, end);
    const auto isAtEnd = [&] {
        return strip.rect().contains(strip.PlaceOf(25).topRight()) && !strip.PlaceOf(25).isEmpty();
    };
    EXPECT_TRUE(QTest::qWaitFor(isAtEnd, 60000));
    Release(end);
    EXPECT_EQ(Now().title.text, "b");
    EXPECT_EQ(Now().pageIndex, 25);
    EXPECT_FALSE(strip.PlaceOf(25).isEmpty());
}

TEST_F(StripOfPages, OnlyWhatChangedIsDrawnAgain)
{
    Begin(4);
    Document& document = window.Project();
    int before = strip.Thumbs().DrawnCount();
    const auto drawn = [&] {
        Draw();
        return strip.Thumbs().DrawnCount() - std::exchange(before, strip.Thumbs().DrawnCount());
    };
    EXPECT_EQ(Colour(1), 0xFF014001u);
    document.ChoosePage(1);
    EXPECT_EQ(drawn(), 0) << "another page is shown";
    document.Edit(EditKind::Single, "", [](Project& project) { project.background.colour = 0xFFC00000u; });
    EXPECT_EQ(drawn(), 1);
    EXPECT_EQ(Colour(1), 0xFFC00000u);
    DuplicatePage(document);
    EXPECT_EQ(drawn(), 0);
    EXPECT_EQ(Colour(2), 0xFFC00000u);
    MovePage(document, 0);
    EXPECT_EQ(drawn(), 0);
    EXPECT_EQ(Colour(0), 0xFFC00000u);
    EXPECT_EQ(Colour(1), 0xFF004000u);
    document.Undo();
    document.Undo();
    EXPECT_EQ(drawn(), 0) << "the pages of before";
    document.Undo();
    EXPECT_EQ(drawn(), 1);
    EXPECT_EQ(Colour(1), 0xFF014001u);
    document.Edit(EditKind::Duration, "", [](Project& project) { project.duration = 500; });
    EXPECT_EQ(drawn(), 0) << "nothing moves";
    document.Edit(EditKind::Single, "", [](Project& project) { project.title.text = "\n  Other\n"; });
    EXPECT_EQ(drawn(), 1);
    const int width = strip.PlaceOf(0).width();
    document.Edit(EditKind::Single, "", [](Project& project) {
        SetVideoFormat(project, {kKvAspect4x3, kKvFrameRate25, kKvScanUpperFirst, 720, 576});
    });
    EXPECT_EQ(drawn(), 4);
    EXPECT_LT(strip.PlaceOf(0).width(), width);
}

TEST_F(StripOfPages, APageBesideTheViewIsDrawnInItsSize)
{
    Begin(30);
    QWheelEvent wheel({60, 40}, strip.mapToGlobal(QPointF(60, 40)), {}, {0, -120}, {}, {}, {}, false);
    QApplication::sendEvent(&strip, &wheel);
    Draw();
    ASSERT_TRUE(strip.PlaceOf(0).isEmpty()); // its shadow reaches into view
    window.Project().Edit(EditKind::Single, "", [](Project& project) {
        SetVideoFormat(project, {kKvAspect4x3, kKvFrameRate25, kKvScanUpperFirst, 720, 576});
    });
    Draw();
    QTest::keyClick(&strip, Qt::Key_Home, Qt::ControlModifier);
    Draw();
    EXPECT_EQ(Colour(0), 0xFF004000u);
}

TEST_F(StripOfPages, APageThatPassesItsTwinIsShownThere)
{
    Begin(1);
    DuplicatePage(window.Project());
    ASSERT_EQ(Shown(), "a[a]");
    MovePage(window.Project(), 0);
    EXPECT_EQ(Shown(), "[a]a");
    EXPECT_EQ(window.Project().Steps().count(), 1) << "nothing to undo";
    Key(Qt::Key_PageDown, kControlShift);
    EXPECT_EQ(Shown(), "a[a]") << "the commands know where it is";
}

// The last look wins, however the threads end.
TEST_F(StripOfPages, LatePicturesOfWhatWasThereBeforeAreDropped)
{
    Begin(6);
    for (int i = 1; i <= 40; ++i) {
        window.Project().Edit(EditKind::ColourStep, "", [i](Project& project) {
            project.background.colour = 0xFF000000u + static_cast<DWORD>(i);
            project.title.shadow.on = true;
        });
        strip.grab();
        if (i % 7 == 0)
            QCoreApplication::processEvents();
    }
    EXPECT_EQ(Colour(0), 0xFF000028u);
    EXPECT_EQ(Colour(1), 0xFF014001u);
}

TEST(PagesAtTheEnd, AWindowMayCloseWhilePagesAreDrawn)
{
    for (int round = 0; round < 5; ++round) {
        MainWindow window;
        window.resize(1200, 700);
        window.show();
        Project project = Made(400);
        project.title.shadow.on = true;
        window.Project().Begin(std::move(project), {}, false);
        for (int page = 0; page <= round * 90; page += 10) {
            window.Project().ChoosePage(page);
            window.Pages().grab();
        }
        EXPECT_TRUE(window.Pages().IsBusy());
        if (round % 2 == 1)
            QCoreApplication::processEvents();
    }
}

TEST(PagesAtTheEnd, TheSettingsKeepWhetherTheyAreShown)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("s.json");
    for (const bool isShown : {true, false}) {
        Settings settings(file);
        EXPECT_EQ(settings.Load(), "");
        EXPECT_EQ(settings.pages, isShown);
        MainWindow window;
        window.resize(780, 560);
        window.Remember(settings);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_EQ(window.Pages().isVisible(), isShown);
        QTest::keyClick(&window, Qt::Key_P, kControlShift);
        EXPECT_EQ(window.Pages().isVisible(), !isShown);
        EXPECT_TRUE(window.close());
    }
}

} // namespace
} // namespace titler
