// What both caption bars do: their buttons and the frame, the caption's clicks, hover, tool tips, the skin.
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"
#include "KvWnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QFile>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include <functional>
#include <gtest/gtest.h>
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
        for (const char* name : {"One", "Two", "Three"})
            menu.addMenu(name)->addAction("x");
        Put(IsTitleBar());
        frame.resize(900, 300);
        frame.show();
        QApplication::setActiveWindow(&frame);
    }
    ~CaptionBar() override { KvGuiRes::SetSkinFolder(nullptr); }

    static bool IsTitleBar() { return GetParam(); }
    void Put(bool titleBar)
    {
        if (titleBar) {
            title = new CKvRibbonTitlebar;
            bar = title;
        } else {
            menuBar = new CKvRibbonMenuBar;
            bar = menuBar;
        }
        EXPECT_EQ(bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 900, 30}, &frame, 77), 1);
        frame.setMenuWidget(bar);
        if (titleBar) {
            title->BeginAddTitleBar(L"key", L"Button", nullptr, 1, nullptr);
            for (const wchar_t* name : {L"One", L"Two", L"Three"})
                title->AddRibbonItem(name, nullptr, nullptr, 0);
            title->EndAddTitleBar();
            title->ActiveTitleBar(1, 1);
        } else {
            menuBar->BeginAddMenuBar(L"key", L"Button", 1, &menu, nullptr);
            menuBar->EndAddMenuBar();
            menuBar->ActiveMenuBar(1);
        }
    }
    void SetDocTitle(const wchar_t* text)
    {
        if (IsTitleBar())
            title->SetDocTitle(1, text);
        else
            menuBar->SetDocTitle(1, text);
    }
    void SetSysTitle(const wchar_t* text)
    {
        if (IsTitleBar())
            title->SetSysTitle(1, text);
        else
            menuBar->SetSysTitle(1, text);
    }

    CKvButton& Button(UINT id) const { return *static_cast<CKvButton*>(KvGetDlgItem(bar, id)); }
    std::wstring MaximisePicture() const { return Button(kKvCaptionMaximise).GetBitmapName(); }
    // The place of an item's text box, from the texts before it.
    QRect ItemRect(int index, const QFontMetrics& metrics) const
    {
        int left = 4 + metrics.horizontalAdvance("Button") + 30;
        const QStringList names{"One", "Two", "Three"};
        for (int i = 0; i < index; ++i)
            left += metrics.horizontalAdvance(names[i]) + 10;
        return {left, 21 - metrics.height(), metrics.horizontalAdvance(names[index]), metrics.height()};
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
    // Runs within the event loop of the popup that opens next.
    void Then(std::function<void(QMenu&)> act)
    {
        QMetaObject::invokeMethod(
            &frame,
            [act] {
                auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                ASSERT_TRUE(popup) << "no popup opened";
                act(*popup);
            },
            Qt::QueuedConnection);
    }

    QMenu menu;
    HostFrame frame;
    QPointer<CKvCaptionBar> bar;
    CKvRibbonTitlebar* title = nullptr;
    CKvRibbonMenuBar* menuBar = nullptr;
};

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
            EXPECT_EQ(Button(row.id).geometry(), QRect(right - 34, 0, 34, 22)) << row.tip;
            EXPECT_EQ(Button(row.id).GetBitmapName(), row.picture);
            EXPECT_EQ(Button(row.id).toolTip().toStdString(), row.tip);
            right -= 34;
        }
    }
    EXPECT_EQ(Button(kKvCaptionApplication).GetWindowText(), L"Button");
    EXPECT_EQ(Button(kKvCaptionApplication).x(), 4);
}

TEST_P(CaptionBar, ButtonsChangeTheFrameUnlessItRefuses)
{
    Button(kKvCaptionMaximise).click();
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndrestore");
    EXPECT_EQ(Button(kKvCaptionMaximise).toolTip(), "Restore");
    frame.agrees = false;
    Button(kKvCaptionMaximise).click();
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndrestore");
    frame.agrees = true;
    KvSendMessage(bar, WM_COMMAND, MAKEWPARAM(kKvCaptionMaximise, BN_CLICKED), 0);
    EXPECT_FALSE(frame.isMaximized());
    EXPECT_EQ(MaximisePicture(), L"wndmaxmize");
    Button(kKvCaptionMinimise).click();
    EXPECT_TRUE(frame.isMinimized());
    EXPECT_EQ(frame.asked, (std::vector<int>{3, 1, 1, 2}));
    // By somebody else: only the title bar looks at the frame itself.
    frame.showMaximized();
    EXPECT_EQ(MaximisePicture(), IsTitleBar() ? L"wndrestore" : L"wndmaxmize");
    delete bar;
    Put(IsTitleBar());
    EXPECT_EQ(MaximisePicture(), IsTitleBar() ? L"wndrestore" : L"wndmaxmize");
}

TEST_P(CaptionBar, CloseGoesToWhoAnswers)
{
    Button(kKvCaptionClose).click();
    EXPECT_EQ(frame.closed, 1);
    frame.answersClose = true;
    Button(kKvCaptionClose).click();
    EXPECT_EQ(frame.closed, 1);
    EXPECT_EQ(KvSendMessage(bar, WM_COMMAND, MAKEWPARAM(10005, BN_CLICKED), 0), 0);
}

TEST_P(CaptionBar, DoubleClicksActWhereAPressDrags)
{
    const QRect two = ItemRect(1, bar->fontMetrics());
    const struct
    {
        const char* what;
        QPoint point;
        bool acts;
    } rows[] = {{"free place", kFree, true},
                {"last row of the band", {kFree.x(), 24}, true},
                {"above the band", {kFree.x(), 3}, false},
                {"below the band", {kFree.x(), 25}, false},
                {"below an item", {two.center().x(), 22}, true}};
    for (const auto& row : rows) {
        QTest::mouseDClick(bar, Qt::LeftButton, {}, row.point);
        EXPECT_EQ(frame.isMaximized(), row.acts) << row.what;
        EXPECT_EQ(MaximisePicture(), row.acts ? L"wndrestore" : L"wndmaxmize") << row.what;
        if (row.acts)
            QTest::mouseDClick(bar, Qt::LeftButton, {}, row.point);
        EXPECT_FALSE(frame.isMaximized());
    }
    frame.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    frame.show();
    QTest::mouseDClick(bar, Qt::LeftButton, {}, kFree);
    EXPECT_FALSE(frame.isMaximized());
}

TEST_P(CaptionBar, TheApplicationMenuDoesWhatTheButtonsDo)
{
    QPoint place;
    Then([&](QMenu& popup) {
        place = popup.pos();
        popup.close();
    });
    CKvButton& button = Button(kKvCaptionApplication);
    button.click();
    EXPECT_EQ(place, button.mapToGlobal(QPoint(0, button.height())));
    EXPECT_TRUE(frame.asked.empty());

    const struct
    {
        UINT command;
        int asked;
    } rows[] = {{32824, 3}, {32822, 1}, {32823, 2}};
    for (const auto& row : rows) {
        Then([&](QMenu& popup) {
            for (QAction* action : popup.actions()) {
                if (action->data().toUInt() == row.command)
                    popup.setActiveAction(action);
            }
            QTest::keyClick(&popup, Qt::Key_Return);
        });
        button.click();
        EXPECT_EQ(frame.asked, std::vector<int>{row.asked});
        frame.asked.clear();
    }
}

TEST_P(CaptionBar, ARightClickOnTheCaptionOpensTheSystemMenu)
{
    bool opened = false;
    const auto clickAt = [&](QPoint point) {
        opened = false;
        QMetaObject::invokeMethod(
            &frame,
            [&] {
                if (QWidget* popup = QApplication::activePopupWidget()) {
                    opened = true;
                    popup->close();
                }
            },
            Qt::QueuedConnection);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, bar->mapToGlobal(point));
        QApplication::sendEvent(bar, &event);
        QCoreApplication::processEvents();
        return opened;
    };
    EXPECT_TRUE(clickAt(kFree));
    EXPECT_FALSE(clickAt(ItemRect(0, bar->fontMetrics()).center()));
    EXPECT_FALSE(clickAt({kFree.x(), 50}));
}

TEST_P(CaptionBar, HoverRepaintsOnlyTheItemsThatChange)
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
        QApplication::sendEvent(toChild ? static_cast<QWidget*>(&Button(kKvCaptionMenu)) : bar, &event);
        return bar->grab(two).toImage() == before.copy(two);
    };
    EXPECT_TRUE(leave(false));
    EXPECT_TRUE(leave(true)) << "the pointer went to a button at once";
}

TEST_P(CaptionBar, NoTextShowsThroughAButton)
{
    const auto ground = [this] {
        QImage image(bar->size(), QImage::Format_RGB32);
        bar->render(&image, {}, {}, {});
        return image.copy(Button(kKvCaptionClose).geometry());
    };
    bar->resize(ItemRect(1, bar->fontMetrics()).center().x() + 20, bar->height());
    const QImage below = ground();
    Button(kKvCaptionClose).hide();
    EXPECT_NE(ground(), below) << "an item is there";
    Button(kKvCaptionClose).show();
    if (IsTitleBar())
        title->RemoveTitleBar(1);
    else
        menuBar->RemoveMenuBar(1);
    EXPECT_EQ(ground(), below);
}

TEST_P(CaptionBar, TheTitlesTipTellsWhatIsCut)
{
    const QPoint point(ItemRect(2, bar->fontMetrics()).right() + 160, 14);
    EXPECT_EQ(TipAt(*bar, point), "") << "all of it is seen";
    SetDocTitle(std::wstring(200, L'd').c_str());
    const QString product = IsTitleBar() ? "Kolva" : "Mirabo-";
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd'));
    SetSysTitle(L"New");
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd')) << "not renewed by this one";
    SetDocTitle(std::wstring(201, L'd').c_str());
    EXPECT_EQ(TipAt(*bar, point), "New" + QString(201, 'd'));
    EXPECT_EQ(TipAt(*bar, point + QPoint(0, 40)), "");
}

TEST_P(CaptionBar, AllLabelsStandOnOneLine)
{
    for (const int size : {9, 12, 14}) { // pixels
        SKvGuiBasicSettings settings{0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF, bar->font()};
        settings.font.setPixelSize(size);
        bar->SetGuiBasicSettings(&settings);
        SetSysTitle(L"One");
        SetDocTitle(L"");
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
        const QRect last = ItemRect(2, metrics);
        const int titleLeft = last.right() + 1 + (IsTitleBar() ? 100 : 150);
        const int line = lowest(ItemRect(0, metrics));
        EXPECT_EQ(lowest(Button(kKvCaptionApplication).geometry()), line) << size;
        EXPECT_EQ(lowest({titleLeft, 2, metrics.horizontalAdvance("One"), 21}), line) << size;
        bar->SetGuiBasicSettings(nullptr);
    }
}

TEST_P(CaptionBar, OnlyTheTitleBarColoursItsTips)
{
    CKvButton& button = Button(kKvCaptionClose);
    EXPECT_EQ(TipAt(button, button.rect().center()), "Close");
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.begin(), windows.end(),
                                  [](QWidget* window) { return window->inherits("QTipLabel"); });
    ASSERT_NE(tip, windows.end());
    DWORD text = 0;
    ASSERT_EQ(KvGuiRes::LoadColor(L"keButtonTipsText", text), 1);
    EXPECT_EQ((*tip)->palette().color(QPalette::ToolTipText) == QColor::fromRgb(text), IsTitleBar());
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
    const QImage picture = bar->grab().toImage();
    EXPECT_EQ(picture.pixel(kFree.x(), 95), qRgb(255, 0, 0)) << "stretched";
    delete bar;
    Put(IsTitleBar());
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->height(), 50);
}

TEST_P(CaptionBar, TheHostsFontAndColoursAreUsed)
{
    SKvGuiBasicSettings settings{0xFF102030u, 0xFF00FF00u, 0xFF000000u, bar->font()};
    settings.font.setPixelSize(16);
    settings.font.setBold(true);
    const QRect before = ItemRect(2, bar->fontMetrics());
    bar->SetGuiBasicSettings(&settings);
    const QRect three = ItemRect(2, QFontMetrics(settings.font));
    ASSERT_GT(three.right(), before.right());
    const QImage picture = bar->grab(three).toImage();
    bool isGreen = false;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y)
            isGreen = isGreen || picture.pixel(x, y) == qRgb(0, 255, 0);
    }
    EXPECT_TRUE(isGreen);
    PaintWatcher watcher(*bar);
    watcher.Take();
    Move(three.topRight());
    EXPECT_TRUE(watcher.Take().boundingRect().contains(three)) << "the item is as wide as it is drawn";
    bar->SetGuiBasicSettings(nullptr);
    EXPECT_NE(bar->grab(three).toImage(), picture);
}

TEST_P(CaptionBar, TheFramesEdgesReachIntoTheStrip)
{
    Move({2, 60});
    EXPECT_EQ(bar->cursor().shape(), Qt::SizeHorCursor);
    Move({kFree.x(), 2});
    EXPECT_EQ(bar->cursor().shape(), Qt::SizeVerCursor);
    Move(kFree);
    EXPECT_EQ(bar->cursor().shape(), Qt::ArrowCursor);
    frame.showMaximized();
    Move({2, 60});
    EXPECT_EQ(bar->cursor().shape(), Qt::ArrowCursor);
}

INSTANTIATE_TEST_SUITE_P(Both, CaptionBar, testing::Bool(),
                         [](const auto& row) { return row.param ? "TitleBar" : "MenuBar"; });

} // namespace
