// The base window: creation, events as handlers, capture, the two Ctrl keys.
#include "KvWnd.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class TestWnd : public CKvStatic
{
public:
    using CKvWnd::HasCapture;
    using CKvWnd::IsLeftControlDown;
    using CKvWnd::SetTimer;

    QStringList log;
    std::function<void(const QString&)> onLog;

protected:
    void Log(const QString& line)
    {
        log << line;
        if (onLog)
            onLog(line);
    }
    void OnLButtonDown(Qt::KeyboardModifiers, CPoint p) override
    {
        SetCapture();
        Log(QStringLiteral("down %1,%2").arg(p.x).arg(p.y));
    }
    void OnLButtonUp(Qt::KeyboardModifiers, CPoint) override
    {
        ReleaseCapture();
        Log(QStringLiteral("up"));
    }
    void OnMButtonUp(Qt::KeyboardModifiers, CPoint p) override
    {
        Log(QStringLiteral("middle up %1,%2").arg(p.x).arg(p.y));
    }
    void OnRButtonDown(Qt::KeyboardModifiers, CPoint p) override
    {
        SetCapture();
        Log(QStringLiteral("right %1,%2").arg(p.x).arg(p.y));
    }
    void OnRButtonUp(Qt::KeyboardModifiers, CPoint) override
    {
        ReleaseCapture();
        Log(QStringLiteral("right up"));
    }
    void OnMouseWheel(Qt::KeyboardModifiers, int delta, CPoint p) override
    {
        Log(QStringLiteral("wheel %1 at %2,%3").arg(delta).arg(p.x).arg(p.y));
    }
    void OnMouseMove(Qt::KeyboardModifiers, CPoint) override { Log(QStringLiteral("move")); }
    void OnCaptureChanged() override { Log(QStringLiteral("lost")); }
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers) override
    {
        Log(QStringLiteral("key %1").arg(key));
        return key == VK_DELETE;
    }
    BOOL OnChar(UINT character) override
    {
        Log(QStringLiteral("char %1").arg(character));
        return 1;
    }
    void OnEnable(BOOL enabled) override { Log(QStringLiteral("enable %1").arg(enabled)); }
    void OnTimer(UINT id) override { Log(QStringLiteral("timer %1").arg(id)); }
    void OnContextMenu(CPoint p) override { Log(QStringLiteral("menu %1,%2").arg(p.x).arg(p.y)); }
    CPoint ContextMenuPoint() const override { return {3, 4}; }
};

class Window : public testing::Test
{
protected:
    Window()
    {
        parent.resize(200, 100);
        window = new TestWnd;
        window->setGeometry(10, 20, 100, 50);
        window->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &parent, 42);
        parent.show();
        window->log.clear();
    }
    QStringList Take() { return std::exchange(window->log, {}); }
    QStringList TakeAll()
    {
        QCoreApplication::sendPostedEvents(window);
        return Take();
    }
    // Returns whether somebody took it; the parent does not.
    bool Mouse(QEvent::Type type, Qt::MouseButtons buttons, QPointF at = {5, 6},
               Qt::MouseButton which = Qt::LeftButton)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : which;
        QMouseEvent event(type, at, window->mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(window, &event);
        return event.isAccepted();
    }
    void Wheel(QPoint turned, Qt::KeyboardModifiers held = {})
    {
        const QPointF at(7.9, 8.1);
        QWheelEvent event(at, window->mapToGlobal(at), {}, turned, {}, held, Qt::NoScrollPhase, false);
        QApplication::sendEvent(window, &event);
    }

    QWidget parent;
    QPointer<TestWnd> window;
};

TEST_F(Window, CreateKeepsGeometryAndHappensOnce)
{
    EXPECT_EQ(window->geometry(), QRect(10, 20, 100, 50));
    EXPECT_EQ(window->parentWidget(), &parent);
    EXPECT_EQ(window->GetDlgCtrlID(), 42u);
    EXPECT_EQ(KvGetDlgItem(&parent, 42), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(window->Create(WS_CHILD, &parent, 43), 0);
    EXPECT_EQ(KvSendMessage(window, WM_GETDLGCODE, 0, 0), 0);

    TestWnd moved;
    moved.move(7, 8);
    moved.Create(WS_CHILD | WS_VISIBLE, &parent, 44);
    EXPECT_EQ(moved.pos(), QPoint(7, 8));

    TestWnd other;
    other.setGeometry(1, 2, 3, 4);
    EXPECT_EQ(other.CreateWnd(WS_CHILD | WS_DISABLED, {5, 6, 25, 36}, &parent, 7), 1);
    EXPECT_EQ(other.geometry(), QRect(5, 6, 20, 30)) << "a rectangle that is not empty counts";
    EXPECT_FALSE(other.isVisible());
    EXPECT_FALSE(other.isEnabled());
    const TestWnd neverCreated;
}

TEST_F(Window, KeysArriveAsKeysThenCharacters)
{
    QTest::keyClick(window, Qt::Key_Delete);
    EXPECT_EQ(Take(), QStringList{"key 46"}) << "a used key types nothing";
    QTest::keyClick(window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Take(), (QStringList{"key 17", "key 67", "char 3"}));
    QTest::keyClick(window, '7');
    EXPECT_EQ(Take(), (QStringList{"key 55", "char 55"}));
    QKeyEvent other(QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier | Qt::AltModifier, "\x06");
    QApplication::sendEvent(window, &other);
    EXPECT_EQ(Take(), QStringList{"key 70"}) << "not what Ctrl+F means";
}

TEST_F(Window, CaptureIsLost)
{
    const auto press = [&] {
        Mouse(QEvent::MouseButtonPress, Qt::LeftButton);
        Take();
    };
    press();
    Mouse(QEvent::MouseMove, Qt::LeftButton);
    EXPECT_EQ(Take(), QStringList{"move"});
    Mouse(QEvent::MouseButtonRelease, Qt::NoButton);
    EXPECT_EQ(Take(), QStringList{"up"}) << "a release is no loss";

    press();
    Mouse(QEvent::MouseMove, Qt::NoButton);
    EXPECT_EQ(Take(), (QStringList{"lost", "move"})) << "a move without the button";

    press();
    QEvent ungrab(QEvent::UngrabMouse);
    QApplication::sendEvent(window, &ungrab);
    QApplication::sendEvent(window, &ungrab);
    EXPECT_EQ(TakeAll(), QStringList{"lost"}) << "told once";

    press();
    window->hide();
    EXPECT_EQ(TakeAll(), QStringList{"lost"}) << "hidden";
    window->show();

    press();
    parent.hide();
    EXPECT_EQ(TakeAll(), QStringList{"lost"}) << "hidden with its parent";
    parent.show();

    press();
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    EXPECT_EQ(TakeAll(), QStringList{"lost"}) << "a modal window opened";
    dialog.hide();

    press();
    parent.setEnabled(false);
    EXPECT_EQ(TakeAll(), (QStringList{"enable 0", "lost"})) << "disabled with its parent";
    parent.setEnabled(true);

    press();
    QEvent deactivate(QEvent::WindowDeactivate);
    QApplication::sendEvent(&parent, &deactivate);
    EXPECT_TRUE(TakeAll().contains("lost")) << "deactivated";

    press();
    QMenu menu;
    menu.addAction("x");
    menu.popup({0, 0});
    EXPECT_EQ(TakeAll(), QStringList{"lost"}) << "a popup opened";
    menu.close();

    press();
    Mouse(QEvent::MouseMove, Qt::LeftButton);
    QApplication::sendEvent(window, &ungrab);
    Mouse(QEvent::MouseMove, Qt::LeftButton);
    EXPECT_EQ(TakeAll(), (QStringList{"move", "lost", "move"})) << "before other input";
}

TEST_F(Window, OtherButtonsAndTheWheel)
{
    EXPECT_FALSE(Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, {5, 6}, Qt::MiddleButton))
        << "the default handler leaves it to the parent";
    EXPECT_TRUE(Mouse(QEvent::MouseButtonRelease, {}, {5.9, 6.9}, Qt::MiddleButton));
    EXPECT_EQ(Take(), QStringList{"middle up 5,6"});
    Wheel({0, 120});
    Wheel({120, 0});
    Wheel({-240, 0}, Qt::AltModifier); // how some platforms send a vertical turn with Alt
    EXPECT_EQ(Take(), (QStringList{"wheel 120 at 7,8", "wheel 0 at 7,8", "wheel -240 at 7,8"}));

    // A drag with the right button goes on whatever the others do, and ends with its own.
    const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
    Mouse(QEvent::MouseButtonPress, Qt::RightButton, {1, 2}, Qt::RightButton);
    Mouse(QEvent::MouseMove, Qt::RightButton);
    Mouse(QEvent::MouseButtonPress, Qt::RightButton | Qt::MiddleButton, {1, 2}, Qt::MiddleButton);
    Mouse(QEvent::MouseButtonRelease, Qt::RightButton, {3, 4}, Qt::MiddleButton);
    Mouse(QEvent::MouseMove, both);
    EXPECT_TRUE(window->HasCapture());
    Mouse(QEvent::MouseMove, Qt::LeftButton);
    EXPECT_FALSE(window->HasCapture());
    EXPECT_EQ(Take(), (QStringList{"right 1,2", "move", "middle up 3,4", "move", "lost", "move"}));

    Mouse(QEvent::MouseButtonDblClick, Qt::RightButton, {1, 2}, Qt::RightButton);
    Mouse(QEvent::MouseButtonRelease, {}, {1, 2}, Qt::RightButton);
    EXPECT_EQ(Take(), (QStringList{"right 1,2", "right up"})) << "quick presses are presses";
}

TEST_F(Window, HandlersMayDeleteTheWindow)
{
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"down", [&] { Mouse(QEvent::MouseButtonPress, Qt::LeftButton); }},
        {"key", [&] { QTest::keyClick(window.data(), Qt::Key_A); }},
        {"char", [&] { QTest::keyClick(window.data(), Qt::Key_A); }},
        {"lost",
         [&] {
             Mouse(QEvent::MouseButtonPress, Qt::LeftButton);
             Mouse(QEvent::MouseMove, Qt::NoButton);
         }},
        {"lost",
         [&] {
             Mouse(QEvent::MouseButtonPress, Qt::LeftButton);
             window->hide();
         }},
        {"lost",
         [&] {
             Mouse(QEvent::MouseButtonPress, Qt::LeftButton);
             parent.hide();
             parent.show();
         }},
        {"enable", [&] { window->setEnabled(false); }},
        {"timer",
         [&] {
             window->SetTimer(1, 0);
             while (window)
                 QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
         }},
    };
    for (const auto& [prefix, act] : cases) {
        if (!window) {
            window = new TestWnd;
            window->Create(WS_CHILD | WS_VISIBLE, &parent, 1);
            window->resize(50, 50);
        }
        window->onLog = [&, start = QString(prefix)](const QString& line) {
            if (line.startsWith(start))
                delete window;
        };
        act();
        if (window)
            QCoreApplication::sendPostedEvents(window);
        EXPECT_FALSE(window) << prefix;
    }
}

TEST_F(Window, DyingParentIsNotToldOfTheLoss)
{
    auto host = std::make_unique<QWidget>();
    QStringList heard;
    auto* child = new TestWnd;
    child->onLog = [&](const QString& line) { heard << line; };
    child->Create(WS_CHILD | WS_VISIBLE, host.get(), 1);
    host->show();
    QTest::mousePress(child, Qt::LeftButton);
    ASSERT_TRUE(child->HasCapture());
    heard.clear();
    host.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, QStringList{});
}

TEST_F(Window, NestedEventDoesNotUndoAHandledOne)
{
    int parentPresses = 0;
    struct Counter : QObject
    {
        int& presses;
        explicit Counter(int& count) : presses(count) {}
        bool eventFilter(QObject*, QEvent* event) override
        {
            presses += event->type() == QEvent::MouseButtonPress ? 1 : 0;
            return false;
        }
    } counter(parentPresses);
    parent.installEventFilter(&counter);
    class Nesting : public CKvWnd
    {
        void OnLButtonDown(Qt::KeyboardModifiers, CPoint) override
        {
            QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), mapToGlobal(QPointF(1, 1)), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(this, &move);
        }
    } nesting;
    nesting.CreateWnd(WS_CHILD | WS_VISIBLE, {0, 0, 20, 20}, &parent, 2);
    QTest::mousePress(&nesting, Qt::LeftButton);
    EXPECT_EQ(parentPresses, 0);
}

TEST_F(Window, MenuKeyOpensAtTheControlsOwnPoint)
{
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {50, 25}, window->mapToGlobal(QPoint(50, 25)));
    QApplication::sendEvent(window, &byKey);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {7, 8}, window->mapToGlobal(QPoint(7, 8)));
    QApplication::sendEvent(window, &byMouse);
    EXPECT_EQ(Take(), (QStringList{"menu 3,4", "menu 7,8"}));
}

TEST_F(Window, LeftControlIsToldFromTheRightOne)
{
    const auto send = [&](QEvent::Type type, quint32 scanCode, quint32 nativeKey) {
        QKeyEvent event(type, Qt::Key_Control, Qt::NoModifier, scanCode, nativeKey, 0);
        QApplication::sendEvent(window, &event);
    };
    constexpr quint32 leftScan = 37;
    constexpr quint32 rightScan = 105;
    constexpr quint32 keysymLeft = 0xFFE3;
    constexpr quint32 keysymRight = 0xFFE4;
    EXPECT_FALSE(window->IsLeftControlDown());
    send(QEvent::KeyPress, rightScan, keysymRight);
    EXPECT_FALSE(window->IsLeftControlDown());
    send(QEvent::KeyPress, leftScan, keysymLeft);
    EXPECT_TRUE(window->IsLeftControlDown());
    send(QEvent::KeyRelease, rightScan, keysymRight);
    EXPECT_TRUE(window->IsLeftControlDown());
    send(QEvent::KeyRelease, leftScan, keysymLeft);
    EXPECT_FALSE(window->IsLeftControlDown());
    send(QEvent::KeyPress, 0, 0);
    EXPECT_TRUE(window->IsLeftControlDown()) << "an unknown Ctrl counts as left";
    send(QEvent::KeyRelease, 0, 0);
    EXPECT_FALSE(window->IsLeftControlDown());
}

} // namespace
