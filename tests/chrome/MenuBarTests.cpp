// The ribbon menu bar: what its smart menu hears and in what order, where popups and tool windows stand, and
// what keys reach.
#include "CaptionFixture.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace {

class MenuBar : public testing::Test
{
protected:
    MenuBar()
    {
        top.resize(700, 300);
        edit.setGeometry(10, 200, 100, 24);
        file = menu.addMenu("&File");
        AddEntry(*file, "Open", 1)->setShortcut(QKeySequence("Ctrl+O"));
        file->addSeparator();
        AddEntry(*file->addMenu("Recent"), "a", 2)->setShortcut(QKeySequence("Ctrl+K, Ctrl+A"));
        menu.addSeparator();
        AddEntry(menu, "&Plain", 9)->setShortcut(QKeySequence("Ctrl+P"));
        AddEntry(*menu.addMenu("&quit"), "Now", 3);
        menu.addMenu("Hidden")->menuAction()->setVisible(false);
        AddEntry(*menu.addMenu("&View"), "Zoom", 4);
        bar = new CKvRibbonMenuBar;
        bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 30}, &top, 77);
        top.show();
        QApplication::setActiveWindow(&top); // the offscreen platform activates no window by itself
        edit.setFocus();
    }
    void Add(unsigned id = 7, IKvRibbonMenuBarSmartMenu* with = nullptr, QMenu* of = nullptr)
    {
        EXPECT_EQ(bar->BeginAddMenuBar(L"app", L"Titles", id, of ? of : &menu, with ? with : &smart), 1);
        EXPECT_EQ(bar->EndAddMenuBar(), 1);
        EXPECT_EQ(bar->ActiveMenuBar(id), 1);
        host.Heard();
    }
    // Where the popup of Alt+letter stands, in the bar's coordinates.
    QPoint PlaceOf(Qt::Key letter)
    {
        QPoint place;
        Then([&](QMenu& popup) {
            place = bar->mapFromGlobal(popup.pos());
            popup.close();
        });
        QTest::keyClick(&edit, letter, Qt::AltModifier);
        host.Heard();
        return place;
    }
    Host host;
    Host otherHost;
    MenuSmart smart{host};
    MenuSmart other{otherHost};
    QMenu menu;
    QMenu* file = nullptr;
    QWidget top;
    QLineEdit edit{&top};
    QPointer<CKvRibbonMenuBar> bar;
};

TEST_F(MenuBar, APopupIsAnnouncedUpdatedAndToldOf)
{
    EXPECT_EQ(bar->BeginAddMenuBar(L"app", L"Titles", 7, nullptr, &smart), 0) << "without a menu";
    ASSERT_EQ(bar->BeginAddMenuBar(L"app", L"Titles", 7, &menu, &smart), 1);
    EXPECT_EQ(smart.manager, static_cast<IKvRibbonMenuBarMgr*>(bar.data()));
    bar->EndAddMenuBar();
    bar->ActiveMenuBar(7);
    EXPECT_EQ(host.Heard(), "attach7");

    const QPoint place = PlaceOf(Qt::Key_F);
    const QImage closed = bar->grab().toImage();
    QImage open;
    Then([&](QMenu& popup) {
        open = bar->grab().toImage();
        QTest::keyClick(&popup, Qt::Key_Down);
        QTest::keyClick(&popup, Qt::Key_Return);
    });
    const QPoint item = place + QPoint(2, -5);
    QTest::mousePress(bar, Qt::LeftButton, {}, item);
    EXPECT_EQ(host.Heard(), "File: File?1 Recent?2 File. File!1") << "the separator is not passed";
    for (const QPoint edge : {place + QPoint(-1, -5), place + QPoint(3, 0)})
        EXPECT_NE(open.pixel(edge), closed.pixel(edge)) << "framed while open";
    EXPECT_EQ(bar->grab().toImage(), closed);

    Dismiss();
    QTest::mousePress(bar, Qt::LeftButton, {}, item);
    EXPECT_EQ(host.Heard(), "File: File?1 Recent?2 File.");

    Then([&](QMenu& popup) {
        QAction* recent = popup.actions()[2];
        popup.setActiveAction(recent);
        QTest::keyClick(&popup, Qt::Key_Right);
        QTest::keyClick(recent->menu(), Qt::Key_Return);
    });
    QTest::mousePress(bar, Qt::LeftButton, {}, item);
    EXPECT_EQ(host.Heard(), "File: File?1 Recent?2 File. File!2") << "told with the top-level sub-menu";
}

TEST_F(MenuBar, ItemsStandInTheirRow)
{
    Add();
    const QPoint first = PlaceOf(Qt::Key_F);
    const QPoint last = PlaceOf(Qt::Key_V);
    EXPECT_EQ(first.y(), 22) << "one below the row's bottom, 4 above the band's";
    EXPECT_EQ(last.y(), 22);
    // Hidden entries and separators take no room, entries without a sub-menu do.
    const QFontMetrics metrics(bar->font());
    const int between = metrics.horizontalAdvance("File") + metrics.horizontalAdvance("Plain") +
                        metrics.horizontalAdvance("quit") + 3 * 10;
    EXPECT_NEAR(last.x() - first.x(), between, 3) << "a text's width may be rounded up";
    const QRect button = Button(bar, kKvCaptionApplication).geometry();
    EXPECT_EQ(button.left(), 4);
    EXPECT_EQ(button.top(), 0) << "4 above the band";
    EXPECT_EQ(first.x(), button.left() + button.width() - 10 + 30);
}

TEST_F(MenuBar, KeysThatOpenPopups)
{
    Add();
    const struct
    {
        const char* what;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* opened;
        quint32 place = 0; // of the key "F" on a keyboard of X11: 41
    } rows[] = {
        {"Alt and the letter", Qt::Key_F, Qt::AltModifier, "File: File?1 Recent?2 File."},
        {"with Shift, too", Qt::Key_V, Qt::AltModifier | Qt::ShiftModifier, "View: View?4 View."},
        {"no Alt", Qt::Key_F, {}, ""},
        {"Ctrl+Alt types", Qt::Key_F, Qt::AltModifier | Qt::ControlModifier, ""},
        {"a lower-case mnemonic", Qt::Key_Q, Qt::AltModifier, ""},
        {"F2 has that letter's number", Qt::Key_F2, Qt::AltModifier, ""},
        {"an entry without a sub-menu", Qt::Key_P, Qt::AltModifier, ""},
        {"the keypad types", Qt::Key_V, Qt::AltModifier | Qt::KeypadModifier, ""},
#ifdef Q_OS_LINUX
        {"a Russian keyboard", Qt::Key(0x410), Qt::AltModifier, "File: File?1 Recent?2 File.", 41},
        {"a Latin letter at another place", Qt::Key_U, Qt::AltModifier, "", 41},
#endif
    };
    for (const auto& row : rows) {
        struct Counter : QObject // the message goes on to whoever has the focus
        {
            int key = 0;
            int presses = 0;
            bool eventFilter(QObject*, QEvent* event) override
            {
                presses += event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == key;
                return false;
            }
        } counter;
        counter.key = row.key;
        edit.installEventFilter(&counter);
        if (*row.opened)
            Dismiss();
        // The override that the test library sends knows no place.
        QKeyEvent override(QEvent::ShortcutOverride, row.key, row.modifiers, row.place, 0, 0);
        if (row.place != 0)
            QApplication::sendEvent(&edit, &override);
        QTest::simulateEvent(&edit, true, row.key, row.modifiers, {}, false);
        EXPECT_EQ(host.Heard(), row.opened) << row.what;
        EXPECT_EQ(counter.presses, 1) << row.what;
    }
    bar->hide();
    QTest::keyClick(&edit, Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(host.Heard(), "") << "a hidden bar";
    bar->show();
    bar->RemoveMenuBar(7);
    host.Heard();
    QTest::keyClick(&edit, Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(host.Heard(), "");
}

TEST_F(MenuBar, AnOpenPopupGivesWayToItsNeighbours)
{
    Add();
    const QPoint view = PlaceOf(Qt::Key_V);
    std::vector<std::string> titles;
    Then([&](QMenu& popup) {
        QTest::keyClick(&popup, Qt::Key_Left); // round the end, and over the entry that opens nothing
        Then([&](QMenu& second) {
            titles.push_back(second.title().toStdString());
            QTest::keyClick(&second, Qt::Key_Right);
            Then([&](QMenu& third) {
                titles.push_back(third.title().toStdString());
                QTest::mouseMove(&third, third.mapFromGlobal(bar->mapToGlobal(view + QPoint(2, -5))));
                Dismiss();
            });
        });
    });
    QTest::keyClick(&edit, Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(titles, (std::vector<std::string>{"&View", "&File"}));
    EXPECT_EQ(host.Heard(), "File: File?1 Recent?2 File. View: View?4 View. File: File?1 Recent?2 File. "
                            "View: View?4 View.");
}

TEST_F(MenuBar, ColoursFollowThePointer)
{
    Add();
    const QPoint item = PlaceOf(Qt::Key_F) + QPoint(2, -5);
    QTest::mouseMove(&top, QPoint(300, 250));
    const QImage plain = bar->grab().toImage();
    QMouseEvent move(QEvent::MouseMove, item, bar->mapToGlobal(item), Qt::NoButton, {}, {});
    QApplication::sendEvent(bar, &move);
    EXPECT_NE(bar->grab().toImage(), plain);
    Then([&](QMenu& popup) {
        QTest::mouseMove(&popup, popup.mapFromGlobal(top.mapToGlobal(QPoint(400, 250))));
        popup.close();
    });
    QTest::mousePress(bar, Qt::LeftButton, {}, item);
    EXPECT_EQ(bar->grab().toImage(), plain) << "dismissed with the pointer elsewhere";
    file->menuAction()->setEnabled(false);
    EXPECT_NE(bar->grab().toImage(), plain) << "a disabled entry looks so";
}

TEST_F(MenuBar, ShortcutsOfEntries)
{
    Add();
    QAction* open = file->actions().front();
    const auto press = [&] { QTest::keyClick(&edit, Qt::Key_O, Qt::ControlModifier); };
    press();
    EXPECT_EQ(host.Heard(), "File?1 File!1");
    smart.enable[1] = false;
    press();
    EXPECT_EQ(host.Heard(), "File?1") << "the update disabled it";
    smart.enable[1] = true;
    press();
    EXPECT_EQ(host.Heard(), "File?1 File!1") << "the update enabled what the last one had disabled";
    QTest::keyClick(&edit, Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(host.Heard(), "Recent?2 File!2");
    QTest::keyClick(&edit, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(host.Heard(), "?9 !9") << "an entry of the top level";
    {
        QWidget frame; // with the same menu
        CKvRibbonMenuBar second;
        second.Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 30}, &frame, 78);
        second.BeginAddMenuBar(L"app", L"Titles", 1, &menu, &other);
        second.EndAddMenuBar();
        second.ActiveMenuBar(1);
        frame.show();
        QApplication::setActiveWindow(&top);
        press();
        EXPECT_EQ(host.Heard(), "File?1 File!1");
        EXPECT_EQ(otherHost.Heard(), "attach1") << "the key was another window's";
        second.setParent(nullptr);
    }
    otherHost.Heard();
    open->trigger();
    EXPECT_EQ(host.Heard(), "") << "the host's own doing";
    top.addAction(open); // the host knows the entry elsewhere, too
    press();
    EXPECT_EQ(host.Heard(), "File?1 File!1");
    Add(8, &other);
    press();
    EXPECT_EQ(host.Heard(), "") << "another menu bar is active";
    EXPECT_EQ(otherHost.Heard(), "attach8 File?1 File!1");
}

TEST_F(MenuBar, ToolWindowsStandBesideEachOther)
{
    auto* tool = new Tool(bar, host, "t", {100, 40});
    auto* right = new Tool(bar, host, "x", {50, 30});
    EXPECT_EQ(bar->AddMenuBarToolWnd(tool, tool), 0) << "none is under construction";
    bar->BeginAddMenuBar(L"app", L"Titles", 7, &menu, &smart);
    EXPECT_EQ(bar->AddMenuBarToolWnd(nullptr, tool), 0);
    EXPECT_EQ(bar->AddMenuBarToolWnd(tool, nullptr), 0);
    EXPECT_EQ(bar->AddMenuBarToolWnd(tool, tool), 1);
    EXPECT_EQ(bar->RegisterAdvToolWnd(right, right, nullptr, nullptr), 1);
    bar->EndAddMenuBar();
    EXPECT_TRUE(tool->isHidden() && right->isHidden());
    bar->ActiveMenuBar(7);
    EXPECT_TRUE(tool->isVisible() && right->isVisible());
    EXPECT_EQ(tool->manager, static_cast<IKvRibbonMenuBarMgr*>(bar.data()));
    EXPECT_EQ(right->manager, tool->manager);
    EXPECT_EQ(tool->geometry(), QRect(0, 27, 100, 40));
    EXPECT_EQ(right->geometry(), QRect(650, 27, 50, 30));
    Add(8, &other);
    EXPECT_TRUE(tool->isHidden() && right->isHidden());
    delete tool; // while registered
    bar->ActiveMenuBar(7);
    bar->UpdateMenuBarWindow();
    EXPECT_TRUE(right->isVisible());
    bar->RemoveMenuBar(7);
    EXPECT_TRUE(right->isHidden());
}

TEST_F(MenuBar, WindowButtonsAndTheirMenus)
{
    EXPECT_EQ(bar->UpdateRestoreMaxStatus(2), 1);
    EXPECT_EQ(Button(bar, kKvCaptionMaximise).GetBitmapName(), L"wndrestore");
    EXPECT_EQ(bar->UpdateRestoreMaxStatus(1), 0);
    EXPECT_EQ(Button(bar, kKvCaptionMaximise).GetBitmapName(), L"wndrestore");
    EXPECT_EQ(bar->UpdateRestoreMaxStatus(0), 1);
    EXPECT_EQ(Button(bar, kKvCaptionMaximise).GetBitmapName(), L"wndmaxmize");

    QMenu system;
    AddEntry(system, "About", 40);
    std::vector<unsigned> told;
    const auto callback = [](unsigned command, void* context) {
        static_cast<std::vector<unsigned>*>(context)->push_back(command);
    };
    EXPECT_EQ(bar->SetAppBtnMenu(&system, callback, &told), 0) << "none is under construction";
    bar->BeginAddMenuBar(L"app", L"Titles", 7, &menu, &smart);
    EXPECT_EQ(bar->SetAppBtnMenu(nullptr, callback, &told), 0);
    EXPECT_EQ(bar->SetAppBtnMenu(&system, nullptr, &told), 0);
    EXPECT_EQ(bar->SetAppBtnMenu(&system, callback, &told), 1);
    bar->EndAddMenuBar();
    bar->ActiveMenuBar(7);
    QPoint place;
    Then([&](QMenu& popup) {
        place = popup.pos();
        Choose(popup, 40);
    });
    Button(bar, kKvCaptionMenu).click();
    EXPECT_EQ(told, std::vector<unsigned>{40});
    const CKvButton& button = Button(bar, kKvCaptionMenu);
    EXPECT_EQ(place, button.mapToGlobal(QPoint(0, button.height() + 1)));
    Dismiss();
    Button(bar, kKvCaptionMenu).click();
    EXPECT_EQ(told.size(), 1u) << "nothing for a dismissed menu";

    QStringList entries;
    Then([&](QMenu& popup) {
        for (const QAction* action : popup.actions())
            entries << action->data().toString() + (action->isEnabled() ? "" : "-");
    });
    Button(bar, kKvCaptionApplication).click();
    EXPECT_EQ(entries.join(' ').toStdString(), "32822- 32823 32824  32826");

    bar->ShowAppMenuBtn(0);
    EXPECT_TRUE(Button(bar, kKvCaptionMenu).isHidden() && !Button(bar, kKvCaptionClose).isHidden());
    bar->ShowAllAppBtn(0);
    EXPECT_TRUE(Button(bar, kKvCaptionClose).isHidden());
    bar->ShowAllAppBtn(1);
    EXPECT_FALSE(Button(bar, kKvCaptionMenu).isHidden());
}

} // namespace
