// What both caption bars do: their records, buttons and the frame, the caption's clicks, hover, tool tips,
// the skin; and what a host may do meanwhile.
#include "CaptionFixture.h"
#include "KvGuiRes.h"
#include "KvWnd.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QFile>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QToolTip>

#include <memory>

namespace {

constexpr QPoint kFree(500, 14); ///< a free place of the caption band

class HostFrame : public CKvFrameWnd
{
public:
    bool agrees = true;
    bool answersClose = false;
    int closed = 0;
    std::vector<int> asked;

protected:
    BOOL OnShowStateRequest(int showCommand) override
    {
        asked.push_back(showCommand);
        return agrees ? 1 : 0;
    }
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        return (message == WM_CLOSE && answersClose) ||
               CKvFrameWnd::OnWndMsg(message, wParam, lParam, result);
    }
    void closeEvent(QCloseEvent* event) override
    {
        ++closed;
        event->ignore();
    }
};

/// What the bar was asked to paint, in its coordinates.
class PaintWatcher : public QObject
{
public:
    explicit PaintWatcher(QWidget& bar) { bar.installEventFilter(this); }
    QRegion Take()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_region, {});
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QRegion m_region;
};

/// A bar of one of the two kinds in a frame of 900 × 300, with the items "One", "Two" and "Three".
class CaptionBar : public testing::TestWithParam<bool>
{
protected:
    CaptionBar()
    {
        menu = std::make_unique<QMenu>();
        for (const char* name : {"One", "Two", "Three"})
            AddEntry(*menu->addMenu(name), "x", 5);
        KvGuiRes::RegisterMenu(L"bars", [] {
            auto popup = std::make_unique<QMenu>();
            AddEntry(*popup, "x", 5);
            return popup;
        });
        titleSmart.menu = L"bars";
        Put();
        frame.resize(900, 300);
        frame.show();
        QApplication::setActiveWindow(&frame);
    }
    ~CaptionBar() override
    {
        host.onCall = nullptr;
        delete bar.data();
        KvGuiRes::SetSkinFolder(nullptr);
        KvGuiRes::RegisterMenu(L"bars", nullptr);
    }

    static bool IsTitleBar() { return GetParam(); }
    void Make()
    {
        title = IsTitleBar() ? new CKvRibbonTitlebar : nullptr;
        menuBar = IsTitleBar() ? nullptr : new CKvRibbonMenuBar;
        bar = IsTitleBar() ? static_cast<CKvCaptionBar*>(title) : menuBar;
        if (title)
            QObject::connect(
                title, &CKvRibbonTitlebar::RibbonItemSelected, &frame,
                [this](quint32, const QString& name) { host.Note("item" + name.toStdString()); });
    }
    void CreateBar()
    {
        EXPECT_EQ(bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 900, 30}, &frame, 77), 1);
        if (bar)
            frame.setMenuWidget(bar);
    }
    void Put()
    {
        Make();
        CreateBar();
        Add(1, nullptr, false);
        Activate(1);
    }

    // --- The two bars' operations of one meaning.
    int Begin(unsigned id, bool withSmart = true)
    {
        return title ? title->BeginAddTitleBar(L"key", L"Button", nullptr, id,
                                               withSmart ? &titleSmart : nullptr)
                     : menuBar->BeginAddMenuBar(L"key", L"Button", id, menu.get(),
                                                withSmart ? &menuSmart : nullptr);
    }
    // The title bar's one is that of the tab "One".
    int AddTool(Tool* tool)
    {
        return title  ? title->AddRibbonItem(L"One", tool, tool, 0)
               : tool ? menuBar->AddMenuBarToolWnd(tool, tool)
                      : 1;
    }
    int AddAdvanced(Tool* tool)
    {
        return title ? title->RegisterAdvToolWnd(tool, tool, nullptr, nullptr)
                     : menuBar->RegisterAdvToolWnd(tool, tool, nullptr, nullptr);
    }
    int End()
    {
        if (!title)
            return menuBar->EndAddMenuBar();
        return title->EndAddTitleBar();
    }
    void AddTabs()
    {
        for (const wchar_t* name : {L"Two", L"Three"}) {
            if (title)
                title->AddRibbonItem(name, nullptr, nullptr, 0);
        }
    }
    void Add(unsigned id, Tool* tool = nullptr, bool withSmart = true)
    {
        EXPECT_EQ(Begin(id, withSmart), 1);
        EXPECT_EQ(AddTool(tool), 1);
        AddTabs();
        EXPECT_EQ(End(), 1);
    }
    int Activate(unsigned id) { return title ? title->ActiveTitleBar(id, 1) : menuBar->ActiveMenuBar(id); }
    int Remove(unsigned id) { return title ? title->RemoveTitleBar(id) : menuBar->RemoveMenuBar(id); }
    int SetSysTitle(unsigned id, const wchar_t* text)
    {
        return title ? title->SetSysTitle(id, text) : menuBar->SetSysTitle(id, text);
    }
    int SetDocTitle(unsigned id, const wchar_t* text)
    {
        return title ? title->SetDocTitle(id, text) : menuBar->SetDocTitle(id, text);
    }

    std::wstring MaximisePicture() const { return Button(bar, kKvCaptionMaximise).GetBitmapName(); }
    static QRect ItemRect(int index, const QFontMetrics& metrics)
    {
        return ItemPlace(metrics, "Button", QStringList{"One", "Two", "Three"}.mid(0, index + 1));
    }
    void Move(QPoint point, Qt::MouseButtons buttons = Qt::NoButton) const
    {
        QMouseEvent move(QEvent::MouseMove, point, bar->mapToGlobal(point), Qt::NoButton, buttons, {});
        QApplication::sendEvent(bar, &move);
    }
    // What a tool tip at that place says.
    static QString TipAt(QWidget& widget, QPoint point)
    {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        QHelpEvent help(QEvent::ToolTip, point, widget.mapToGlobal(point));
        QApplication::sendEvent(&widget, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    bool HasColour(const QRect& place, QRgb colour) const
    {
        const QImage picture = bar->grab(place).toImage();
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                if (picture.pixel(x, y) == colour)
                    return true;
            }
        }
        return false;
    }

    Host host;
    TitleSmart titleSmart{host};
    MenuSmart menuSmart{host};
    std::unique_ptr<QMenu> menu;
    HostFrame frame;
    QPointer<CKvCaptionBar> bar;
    CKvRibbonTitlebar* title = nullptr;
    CKvRibbonMenuBar* menuBar = nullptr;
};

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

// --- Looks ---

TEST_P(CaptionBar, OnlyWhatChangesIsRepainted)
{
    const QRect one = ItemRect(0, bar->fontMetrics());
    const QRect two = ItemRect(1, bar->fontMetrics());
    PaintWatcher watcher(*bar);
    watcher.Take();
    const QImage before = bar->grab().toImage();
    watcher.Take();
    Move(two.center());
    const QRect changed = watcher.Take().boundingRect();
    EXPECT_TRUE(changed.contains(two) && two.adjusted(-3, -1, 3, 1).contains(changed));
    EXPECT_NE(bar->grab(two).toImage(), before.copy(two));
    watcher.Take();
    Move(two.topLeft());
    EXPECT_TRUE(watcher.Take().isEmpty()) << "it is hovered already";
    Move(one.center(), Qt::LeftButton);
    EXPECT_TRUE(watcher.Take().isEmpty()) << "not while the left button is down";

    const auto leave = [&](bool toChild) {
        Move(two.center());
        QEvent event(toChild ? QEvent::Enter : QEvent::Leave);
        QApplication::sendEvent(toChild ? static_cast<QWidget*>(&Button(bar, kKvCaptionMenu)) : bar, &event);
        return bar->grab(two).toImage() == before.copy(two);
    };
    EXPECT_TRUE(leave(false));
    EXPECT_TRUE(leave(true)) << "the pointer went to a button at once";
    watcher.Take();
    Move(one.center());
    EXPECT_EQ(watcher.Take().isEmpty(), IsTitleBar()) << "a selected tab looks the same";

    SetSysTitle(1, L"New");
    const QRect label = watcher.Take().boundingRect();
    EXPECT_TRUE(label.contains(kFree) && label.left() > ItemRect(2, bar->fontMetrics()).right());
    Add(2);
    watcher.Take();
    SetDocTitle(2, L"other");
    EXPECT_TRUE(watcher.Take().isEmpty()) << "another record's";
}

TEST_P(CaptionBar, NoTextShowsThroughAButton)
{
    const auto ground = [this] {
        QImage image(bar->size(), QImage::Format_RGB32);
        bar->render(&image, {}, {}, {});
        return image.copy(Button(bar, kKvCaptionClose).geometry());
    };
    bar->resize(ItemRect(1, bar->fontMetrics()).center().x() + 20, bar->height());
    const QImage below = ground();
    Button(bar, kKvCaptionClose).hide();
    EXPECT_NE(ground(), below) << "an item is there";
    Button(bar, kKvCaptionClose).show();
    Remove(1);
    EXPECT_EQ(ground(), below);
}

TEST_P(CaptionBar, TheTitlesTipTellsWhatIsCut)
{
    const QPoint point(ItemRect(2, bar->fontMetrics()).right() + 160, 14);
    EXPECT_EQ(TipAt(*bar, point), "") << "all of it is seen";
    SetDocTitle(1, std::wstring(200, L'd').c_str());
    const QString product = IsTitleBar() ? "Kolva" : "Mirabo-";
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd'));
    SetSysTitle(1, L"New");
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd')) << "not renewed by this one";
    SetDocTitle(1, std::wstring(201, L'd').c_str());
    EXPECT_EQ(TipAt(*bar, point), "New" + QString(201, 'd'));
    EXPECT_EQ(TipAt(*bar, point + QPoint(0, 40)), "");
}

TEST_P(CaptionBar, TheButtonsLabelIsLevelWithTheItemsAndTheTitleIsCentred)
{
    for (const int size : {9, 12, 14}) { // pixels
        SKvGuiBasicSettings settings{0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF, bar->font()};
        settings.font.setPixelSize(size);
        bar->SetGuiBasicSettings(&settings);
        SetSysTitle(1, L"One");
        SetDocTitle(1, L"");
        frame.resize(901 + size, 300); // lays out
        const QImage picture = bar->grab().toImage();
        const auto lowest = [&](const QRect& room) {
            int y = room.bottom();
            const auto isDark = [&](int x) { return qGray(picture.pixel(x, y)) < 128; };
            for (; y > room.top(); --y) {
                int x = room.left();
                while (x <= room.right() && isDark(x))
                    ++x;
                if (x <= room.right())
                    break;
            }
            return y;
        };
        const QFontMetrics metrics(settings.font);
        const QRect one = ItemRect(0, metrics);
        const int titleLeft = ItemRect(2, metrics).right() + 1 + (IsTitleBar() ? 100 : 150);
        const QRect room(titleLeft, 2, metrics.horizontalAdvance("One"), 21);
        EXPECT_EQ(lowest(Button(bar, kKvCaptionApplication).geometry()), lowest(one)) << size;
        // A font's odd height goes either way.
        EXPECT_NEAR(lowest(room) - room.top() - (room.height() - one.height()) / 2.0, lowest(one) - one.top(),
                    1)
            << size;
        bar->SetGuiBasicSettings(nullptr);
    }
}

TEST_P(CaptionBar, OnlyTheTitleBarColoursItsTips)
{
    CKvButton& button = Button(bar, kKvCaptionClose);
    EXPECT_EQ(TipAt(button, button.rect().center()), "Close");
    DWORD text = 0;
    ASSERT_EQ(KvGuiRes::LoadColor(L"keButtonTipsText", text), 1);
    EXPECT_EQ(button.styleSheet().contains("color: " + QColor::fromRgb(text).name()), IsTitleBar());
}

TEST_P(CaptionBar, ANewSkinKeepsTheHeightOfBarsThatLive)
{
    EXPECT_EQ(bar->height(), 96);
    QTemporaryDir folder;
    QFile file(folder.filePath("ribbontitlebar_bk.svg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='50'>"
               "<rect width='8' height='50' fill='#ff0000'/></svg>");
    file.close();
    ASSERT_EQ(KvGuiRes::SetSkinFolder(KvFromQString(folder.path()).c_str()), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->height(), 96);
    EXPECT_TRUE(HasColour({kFree.x(), 95, 1, 1}, qRgb(255, 0, 0))) << "stretched";
    delete bar;
    Put();
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->height(), 50);
}

TEST_P(CaptionBar, TheHostsFontAndColoursAreUsed)
{
    constexpr QRgb green = qRgb(0, 255, 0);
    SKvGuiBasicSettings settings{0xFF102030u, 0xFF00FF00u, 0xFF000000u, bar->font()};
    settings.font.setPixelSize(16);
    settings.font.setBold(true);
    const QRect before = ItemRect(2, bar->fontMetrics());
    bar->SetGuiBasicSettings(&settings);
    const QRect three = ItemRect(2, QFontMetrics(settings.font));
    const QRect button = Button(bar, kKvCaptionApplication).geometry();
    ASSERT_GT(three.right(), before.right());
    EXPECT_TRUE(HasColour(three, green));
    EXPECT_TRUE(HasColour(button, green));
    Move(three.topRight());
    EXPECT_FALSE(HasColour(three, green)) << "the theme's colour is legible on a dark background";
    settings.background = 0xFFFFFFFFu;
    settings.textColour = 0xFF008000u;
    bar->SetGuiBasicSettings(&settings);
    EXPECT_TRUE(HasColour(three, qRgb(0, 128, 0))) << "on a light one it is not";
    bar->SetGuiBasicSettings(nullptr);
    EXPECT_FALSE(HasColour(button, qRgb(0, 128, 0)) || HasColour(before, qRgb(0, 128, 0)));
}

TEST_P(CaptionBar, LargeLettersHaveTheirRoom)
{
    Tool tool(bar, host, "tool");
    Add(2, &tool);
    Activate(2);
    Remove(1);
    const auto settle = [] { QCoreApplication::processEvents(); };
    settle();
    const QSize hint = bar->sizeHint();
    const int toolTop = tool.y();
    EXPECT_EQ(hint.height(), 96);
    EXPECT_EQ(bar->minimumSizeHint(), QSize(240, 96));
    EXPECT_EQ(toolTop, 27);
    const auto isTitleWhole = [&](int width) {
        bar->resize(width, bar->height());
        return TipAt(*bar, {Button(bar, kKvCaptionMenu).x() - 55, 14}).isEmpty();
    };
    EXPECT_TRUE(isTitleWhole(hint.width()));
    EXPECT_FALSE(isTitleWhole(hint.width() - 1));
    SetDocTitle(2, L"a much longer name of a document");
    EXPECT_TRUE(isTitleWhole(bar->sizeHint().width()));
    SetDocTitle(2, L"Untitled");
    EXPECT_EQ(bar->sizeHint(), hint);

    QFont large = frame.font();
    large.setPixelSize(40);
    frame.setFont(large);
    settle();
    const int growth = QFontMetrics(large).height() - 21;
    EXPECT_EQ(bar->height(), 96 + growth);
    EXPECT_EQ(bar->sizeHint().height(), 96 + growth);
    EXPECT_TRUE(isTitleWhole(bar->sizeHint().width()));
    EXPECT_FALSE(isTitleWhole(bar->sizeHint().width() - 1));
    EXPECT_EQ(tool.y(), toolTop + growth);
    EXPECT_GE(Button(bar, kKvCaptionApplication).height(), QFontMetrics(large).height());
    EXPECT_EQ(Button(bar, kKvCaptionApplication).font().pixelSize(), 40);
    const QImage picture = bar->grab(ItemRect(2, QFontMetrics(large))).toImage();
    const auto isPlain = [&picture](int y) {
        for (int x = 1; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) > qGray(picture.pixel(0, 0)) + 40)
                return false;
        }
        return true;
    };
    EXPECT_TRUE(isPlain(0) && isPlain(picture.height() - 1)) << "nothing is cut";
    EXPECT_FALSE(isPlain(picture.height() / 2));

    bar->resize(bar->width(), 150); // of the host's own
    SKvGuiBasicSettings settings{0xFF102030u, 0xFF00FF00u, 0xFF000000u, QFont()};
    bar->SetGuiBasicSettings(&settings);
    EXPECT_EQ(tool.y(), toolTop);
    EXPECT_EQ(bar->height(), 150);
    bar->SetGuiBasicSettings(nullptr);
    frame.setFont({});
    settle();
    EXPECT_EQ(bar->height(), 96);
    EXPECT_EQ(bar->sizeHint(), hint);
}

INSTANTIATE_TEST_SUITE_P(Both, CaptionBar, testing::Bool(),
                         [](const auto& row) { return row.param ? "TitleBar" : "MenuBar"; });

} // namespace
