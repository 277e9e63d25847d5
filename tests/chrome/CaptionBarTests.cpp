// What both caption bars do: their records, buttons and the frame, the caption's clicks; and what a host may
// do meanwhile.
#include "CaptionBarFixture.h"

#include <QContextMenuEvent>

namespace {

// --- Records ---

TEST_P(CaptionBar, UnknownAndUnfinishedOnesChangeNothing)
{
    EXPECT_EQ(AddTool(new Tool(bar, host, "t")) + AddAdvanced(nullptr) + End(), 0) << "none was begun";
    Begin(2);
    Begin(3);
    EXPECT_EQ(host.Heard(), "attach2 detach release attach3") << "the unfinished one is dropped";
    EXPECT_EQ(Activate(3) + Remove(3) + SetSysTitle(3, L"x") + SetDocTitle(3, L"x"), 0) << "not ended yet";
    menu->clear();
    Begin(4);
    host.Heard();
    EXPECT_EQ(End(), 0) << "without items";
    EXPECT_EQ(host.Heard(), "detach release");
    EXPECT_EQ(SetDocTitle(1, std::wstring(5000, L'x').c_str()) + SetSysTitle(1, nullptr), 2);
    EXPECT_EQ(Remove(1), 1);
    EXPECT_EQ(Remove(1), 0);
}

TEST_P(CaptionBar, WhatIsDoneBeforeCreateIsSeenAfterwards)
{
    delete bar.data();
    Make();
    auto* tool = new Tool(bar, host, "t");
    Add(7, tool);
    Activate(7);
    if (title) {
        title->ShowAppBtn(kKvAppBtnCloseOnly);
    } else {
        menuBar->ShowAllAppBtn(0);
        menuBar->ShowAppMenuBtn(1);
    }
    CreateBar();
    const QRect one = ItemRect(0, bar->fontMetrics());
    const CKvButton& button = Button(bar, kKvCaptionApplication);
    EXPECT_EQ(button.GetWindowText(), L"Button");
    EXPECT_EQ(button.GetBitmapName(), L"key");
    EXPECT_EQ(button.geometry().right() + 1, one.left() - 30 + (IsTitleBar() ? 20 : 10));
    EXPECT_EQ(Button(bar, kKvCaptionClose).isVisible(), IsTitleBar());
    EXPECT_EQ(Button(bar, kKvCaptionMenu).isVisible(), !IsTitleBar());
    EXPECT_FALSE(Button(bar, kKvCaptionMinimise).isVisible());
    EXPECT_TRUE(tool->isVisible());
    EXPECT_EQ(tool->pos(), QPoint(0, 27));
}

TEST_P(CaptionBar, AToolWindowOfTwoStaysWhileEitherIsActive)
{
    auto* tool = new Tool(bar, host, "t");
    Add(2, tool);
    Activate(2);
    Add(3, tool);
    EXPECT_TRUE(tool->isVisible()) << "the second one does not hide it";
    Activate(3);
    EXPECT_TRUE(tool->isVisible());
    Remove(2);
    EXPECT_TRUE(tool->isVisible());
    Activate(1);
    EXPECT_FALSE(tool->isVisible());
    Activate(3);
    delete tool;
    EXPECT_EQ(Remove(3), 1);
}

struct Meanwhile
{
    const char* when; ///< what is heard; "popup" and "hide" of a menu
    const char* what; ///< "remove", "delete", "activate" another one, or destroy the "menus"
    const char* heard = "detach release";
    bool menuBar = true;
    bool titleBar = true;
};

const Meanwhile kMeanwhile[] = {
    {"attach2", "remove"},
    {"attach2", "delete"},
    {"told:t", "remove"},
    {"told:t", "delete"},
    {"told:a", "remove"},
    {"told:a", "delete"},
    {"placed", "remove"},
    {"placed", "delete"},
    {"popup", "remove"},
    {"popup", "delete"},
    {"detach", "remove", "release"},
    {"detach", "delete", "release"},
    {"itemTwo", "remove", "detach release", false},
    {"itemTwo", "delete", "detach release", false},
    {"name", "remove", "detach release", false},
    {"name", "delete", "detach release", false},
    {"Two:", "remove", "detach release", true, false},
    {"Two:", "delete", "detach release", true, false},
    {"Two:", "activate", "Two?5 Two. detach release", true, false},
    {"Two:", "menus", ". detach release", true, false},
    {"Two?5", "remove", "detach release", true, false},
    {"Two?5", "delete", "detach release", true, false},
    {"Two?5", "menus", ". detach release", true, false},
    {"popup", "activate", "Two. detach release", true, false},
    {"popup", "menus", ". detach release", true, false},
    {"hide", "remove", "detach release", true, false},
    {"hide", "delete", "detach release", true, false},
    {"Two.", "remove", "detach release", true, false},
    {"Two.", "delete", "detach release", true, false},
};

// A record's life from its registration to its removal, until the host acts; nothing but the end is told
// then.
TEST_P(CaptionBar, TheHostMayDoAnythingMeanwhile)
{
    for (const Meanwhile& row : kMeanwhile) {
        if (!(IsTitleBar() ? row.titleBar : row.menuBar))
            continue;
        const std::string when = row.when;
        const std::string what = row.what;
        SCOPED_TRACE(when + ": " + what);
        delete bar.data();
        menu = std::make_unique<QMenu>();
        AddEntry(*menu->addMenu("One"), "x", 5);
        AddEntry(*menu->addMenu("Two"), "x", 5);
        Put();
        bool acted = false;
        const auto act = [&] {
            if (std::exchange(acted, true))
                return;
            host.Heard();
            if (what == "remove" && Remove(2) == 0)
                Begin(9, false); // drops the one under construction
            else if (what == "delete")
                delete bar.data();
            else if (what == "activate")
                Activate(1);
            else if (what == "menus")
                menu.reset();
        };
        const auto withPopup = [&](const std::function<void()>& open) {
            const auto meet = [&] {
                QPointer<QMenu> popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                if (popup && when == "hide") {
                    QObject::connect(popup, &QMenu::aboutToHide, &frame, act);
                    Activate(1); // hides it
                } else if (popup && when == "popup") {
                    act();
                }
                if (popup)
                    popup->close();
            };
            QMetaObject::invokeMethod(qApp, meet, Qt::QueuedConnection);
            open();
            QCoreApplication::processEvents(); // where none opened
        };
        const auto press = [&] {
            QTest::mousePress(bar, Qt::LeftButton, {}, ItemRect(1, bar->fontMetrics()).center());
        };
        // The toolkit does not bear that a window dies while it is moved, as a child of the bar would.
        QWidget* parent = when == "placed" ? static_cast<QWidget*>(&frame) : bar;
        auto* tool = new Tool(parent, host, "t");
        auto* advanced = new Tool(bar, host, "a", {30, 30});
        const std::function<void()> life[] = {
            [&] { Begin(2); },
            [&] { AddTool(tool); },
            [&] { AddTabs(); },
            [&] { AddAdvanced(advanced); },
            [&] { End(); },
            [&] { Activate(2); },
            [&] {
                tool->setGeometry(7, 60, 9, 9);
                tool->tellsPlaces = true;
                bar->SetGuiBasicSettings(nullptr);
            },
            [&] { IsTitleBar() ? press() : withPopup(press); },
            [&] {
                if (IsTitleBar())
                    withPopup([&] { Button(bar, kKvCaptionMenu).click(); });
            },
            [&] { Remove(2); },
        };
        host.onCallOf = when;
        host.onCall = act;
        for (const std::function<void()>& step : life) {
            if (!acted)
                step();
        }
        EXPECT_TRUE(acted);
        host.onCall = nullptr;
        if (bar)
            Remove(2);
        EXPECT_EQ(host.Heard(), row.heard);
    }
}

TEST_P(CaptionBar, AThousandItems)
{
    menu->clear();
    Begin(2);
    for (int i = 0; i < 1000; ++i) {
        const QString text = QString(200, 'x') + QChar('A' + i % 26);
        if (title)
            title->AddRibbonItem(KvFromQString(text).c_str(), nullptr, nullptr, 0);
        else
            menu->addMenu(text);
    }
    if (menuBar) // its items are the menu's entries of then
        Begin(2);
    End();
    Activate(2);
    bar->grab();
    menu.reset();
    bar->grab();
    QTest::mousePress(bar, Qt::LeftButton, {}, ItemRect(0, bar->fontMetrics()).center());
    host.Heard();
    EXPECT_EQ(Remove(2), 1);
    EXPECT_EQ(host.Heard(), "detach release");
}

// --- Buttons and the frame ---

TEST_P(CaptionBar, ButtonsStandAtTheRightAndSayWhatTheyDo)
{
    const struct
    {
        UINT id;
        const wchar_t* picture;
        const char* tip;
    } rows[] = {{kKvCaptionClose, L"wndclose", "Close"},
                {kKvCaptionMaximise, L"wndmaxmize", "Maximize"},
                {kKvCaptionMinimise, L"wndminmize", "Minimize"},
                {kKvCaptionMenu, L"wndappmenu", "AppMenu"}};
    for (const int width : {900, 500}) {
        bar->resize(width, bar->height());
        int right = width - 4;
        for (const auto& row : rows) {
            const CKvButton& button = Button(bar, row.id);
            EXPECT_EQ(button.geometry(), QRect(right - 34, 0, 34, 22)) << row.tip;
            EXPECT_EQ(button.GetBitmapName(), row.picture);
            EXPECT_EQ(button.toolTip().toStdString(), row.tip);
            right -= 34;
        }
    }
}

TEST_P(CaptionBar, ButtonsChangeTheFrameUnlessItRefuses)
{
    CKvButton& maximise = Button(bar, kKvCaptionMaximise);
    maximise.click();
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndrestore");
    EXPECT_EQ(maximise.toolTip(), "Restore");
    frame.agrees = false;
    maximise.click();
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndrestore");
    frame.agrees = true;
    KvSendMessage(bar, WM_COMMAND, MAKEWPARAM(kKvCaptionMaximise, BN_CLICKED), 0);
    EXPECT_FALSE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndmaxmize");
    Button(bar, kKvCaptionMinimise).click();
    EXPECT_TRUE(frame.isMinimized());
    EXPECT_EQ(frame.asked, (std::vector<int>{3, 1, 1, 2}));
    // By somebody else: only the title bar looks at the frame itself.
    const std::wstring seen = IsTitleBar() ? L"wndrestore" : L"wndmaxmize";
    frame.showMaximized();
    EXPECT_EQ(MaximisePicture(), seen);
    delete bar;
    Put();
    EXPECT_EQ(MaximisePicture(), seen);
}

TEST_P(CaptionBar, CloseGoesToWhoAnswers)
{
    Button(bar, kKvCaptionClose).click();
    EXPECT_EQ(frame.closed, 1);
    frame.answersClose = true;
    Button(bar, kKvCaptionClose).click();
    EXPECT_EQ(frame.closed, 1);
    EXPECT_EQ(KvSendMessage(bar, WM_COMMAND, MAKEWPARAM(10005, BN_CLICKED), 0), 0);
}

TEST_P(CaptionBar, TheApplicationMenuDoesWhatTheButtonsDo)
{
    QPoint place;
    Then([&](QMenu& popup) { place = popup.pos(); });
    CKvButton& button = Button(bar, kKvCaptionApplication);
    button.click();
    EXPECT_EQ(place, button.mapToGlobal(QPoint(0, button.height())));
    EXPECT_TRUE(frame.asked.empty());
    const std::pair<UINT, int> rows[] = {{32824, 3}, {32822, 1}, {32823, 2}};
    for (const auto& [command, asked] : rows) {
        Then([command = command](QMenu& popup) { Choose(popup, command); });
        button.click();
        EXPECT_EQ(std::exchange(frame.asked, {}), std::vector<int>{asked});
    }
}

// What lies where is the hit test's; here is what each kind of click makes of it.
TEST_P(CaptionBar, ClicksOnTheCaptionAndNextToIt)
{
    const QPoint item = ItemRect(1, bar->fontMetrics()).center();
    bool opened = false;
    const auto rightClick = [&](QPoint point) {
        const auto close = [&] {
            QWidget* popup = QApplication::activePopupWidget();
            opened = popup && popup->close();
        };
        QMetaObject::invokeMethod(&frame, close, Qt::QueuedConnection);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, bar->mapToGlobal(point));
        QApplication::sendEvent(bar, &event);
        QCoreApplication::processEvents();
        return opened;
    };
    EXPECT_TRUE(rightClick(kFree));
    EXPECT_FALSE(rightClick(item));

    QTest::mouseDClick(bar, Qt::LeftButton, {}, {kFree.x(), 25});
    EXPECT_FALSE(frame.isMaximized());
    QTest::mouseDClick(bar, Qt::LeftButton, {}, kFree);
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndrestore");
    Move({2, 60});
    EXPECT_EQ(bar->cursor().shape(), Qt::ArrowCursor) << "a maximised frame has no edges";
    QTest::mouseDClick(bar, Qt::LeftButton, {}, kFree);
    EXPECT_FALSE(frame.isMaximized());
    Move({2, 60});
    EXPECT_EQ(bar->cursor().shape(), Qt::SizeHorCursor);
    Move(kFree);
    EXPECT_EQ(bar->cursor().shape(), Qt::ArrowCursor);
    frame.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    frame.show();
    QTest::mouseDClick(bar, Qt::LeftButton, {}, kFree);
    EXPECT_FALSE(frame.isMaximized());
}

INSTANTIATE_TEST_SUITE_P(Both, CaptionBar, testing::Bool(),
                         [](const auto& row) { return row.param ? "TitleBar" : "MenuBar"; });

} // namespace
