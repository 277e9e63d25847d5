// The frameless main window: dragged by its caption, resized by its edges, asked for its state. The offscreen
// platform refuses system moves, so all of it is done by hand here.
#include "KvWnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

class Caption : public CKvWnd
{
public:
    QStringList log;
    Caption() { setFixedHeight(40); }

protected:
    void OnLButtonDown(Qt::KeyboardModifiers, CPoint point) override
    {
        log << QStringLiteral("down");
        OnHitCaption(point);
    }
    void OnLButtonDblClk(Qt::KeyboardModifiers, CPoint) override { log << QStringLiteral("double"); }
    void OnLButtonUp(Qt::KeyboardModifiers, CPoint) override { log << QStringLiteral("up"); }
};

class TestFrame : public CKvFrameWnd
{
public:
    std::vector<int> requests;
    bool refuse = false;
    bool answersClose = false;
    int closeEvents = 0;

protected:
    BOOL OnShowStateRequest(int showCommand) override
    {
        requests.push_back(showCommand);
        return refuse ? 0 : 1;
    }
    BOOL OnWndMsg(UINT message, WPARAM w, LPARAM l, LRESULT* result) override
    {
        return message == WM_CLOSE ? answersClose : CKvFrameWnd::OnWndMsg(message, w, l, result);
    }
    void closeEvent(QCloseEvent* event) override
    {
        ++closeEvents;
        event->ignore();
    }
};

class Frame : public testing::Test
{
protected:
    Frame()
    {
        frame.setMenuWidget(caption);
        frame.setCentralWidget(new QWidget);
        frame.setGeometry(before);
        frame.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&frame));
    }

    // Screen points: the window moves under them.
    QPoint Local(QPoint screen) const { return screen - frame.geometry().topLeft(); }
    void Press(QPoint at) { QTest::mousePress(frame.windowHandle(), Qt::LeftButton, {}, Local(at)); }
    void Move(QPoint to)
    {
        QTest::mouseMove(frame.windowHandle(), Local(to));
        QCoreApplication::processEvents();
    }
    void Release(QPoint at) { QTest::mouseRelease(frame.windowHandle(), Qt::LeftButton, {}, Local(at)); }
    QRect Moved(QPoint by) const { return before.translated(by); }

    const QRect before{100, 120, 400, 300};
    const QPoint grip{200, 140};
    TestFrame frame;
    Caption* caption = new Caption;
};

TEST_F(Frame, FollowsItsCaptionFromTheDragDistanceOn)
{
    const int distance = QApplication::startDragDistance();
    Press(grip);
    Move(grip + QPoint(distance - 1, 0));
    EXPECT_EQ(frame.geometry(), before) << "a click of an unsteady hand";
    Move(grip + QPoint(distance, 0));
    EXPECT_EQ(frame.geometry(), Moved({distance, 0})) << "no lag";
    Move(grip + QPoint(-70, 33));
    Release(grip + QPoint(-70, 33));
    EXPECT_EQ(frame.geometry(), Moved({-70, 33}));
    Move(grip);
    EXPECT_EQ(frame.geometry(), Moved({-70, 33})) << "over";
    EXPECT_EQ(caption->log, QStringList({"down", "up"}));
}

TEST_F(Frame, EscapeBringsItBack)
{
    Press(grip);
    Move(grip + QPoint(50, 50));
    QTest::keyClick(frame.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(frame.geometry(), before);
    Move(grip + QPoint(80, 80));
    EXPECT_EQ(frame.geometry(), before);
    Release(grip);
}

TEST_F(Frame, ADragEndsWithoutItsRelease)
{
    Press(grip);
    Move(grip + QPoint(30, 0));
    QTest::mousePress(frame.windowHandle(), Qt::RightButton, {}, Local(grip + QPoint(30, 0)));
    Move(grip + QPoint(90, 0));
    EXPECT_EQ(frame.geometry(), Moved({30, 0})) << "another button went down";
    QTest::mouseRelease(frame.windowHandle(), Qt::RightButton, {}, Local(grip));
    Release(grip);

    Press(grip + QPoint(30, 0));
    QMenu popup(&frame);
    popup.addAction(QStringLiteral("entry"));
    popup.popup(grip + QPoint(0, 300));
    Move(grip + QPoint(90, 0));
    popup.close();
    Move(grip + QPoint(95, 0));
    EXPECT_EQ(frame.geometry(), Moved({30, 0})) << "a popup opened";
    Release(grip);
}

TEST_F(Frame, ADoubleClickByAnUnsteadyHandIsNotAMove)
{
    const QPoint wobble(2, 1);
    Press(grip);
    Move(grip + wobble);
    Release(grip + wobble);
    QTest::mouseDClick(frame.windowHandle(), Qt::LeftButton, {}, Local(grip + wobble));
    EXPECT_EQ(frame.geometry(), before);
    EXPECT_TRUE(caption->log.contains(QStringLiteral("double")));
}

TEST_F(Frame, AMaximisedOneIsRestoredUnderThePointer)
{
    frame.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame.width() > before.width(); }));
    const QRect maximised = frame.geometry();
    EXPECT_EQ(maximised, frame.screen()->availableGeometry());
    EXPECT_TRUE(frame.contentsMargins().isNull()) << "no line around a maximised window";
    const QPoint point(maximised.left() + maximised.width() * 3 / 4, maximised.top() + 15);

    frame.refuse = true;
    Press(point);
    Move(point + QPoint(0, 40));
    Release(point + QPoint(0, 40));
    EXPECT_EQ(frame.geometry(), maximised) << "the frame refuses";
    frame.refuse = false;

    Press(point);
    Move(point + QPoint(0, 40));
    EXPECT_FALSE(frame.isMaximized());
    EXPECT_EQ(frame.size(), before.size());
    const QPoint inside = point + QPoint(0, 40) - frame.pos();
    EXPECT_NEAR(inside.x(), before.width() * 3 / 4, 1) << "at the same part of the width";
    EXPECT_EQ(inside.y(), 15);
    QTest::keyClick(frame.windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(frame.isMaximized()) << "Escape brings that back, too";
    Release(point);
    frame.showNormal();
    EXPECT_TRUE(QTest::qWaitFor([&] { return frame.geometry() == before; })) << "to where it was";
}

TEST_F(Frame, EdgesResizeIt)
{
    const QSize smallest = frame.minimumSize();
    EXPECT_GT(smallest.width(), 0);
    const QPoint corner = before.bottomRight() - QPoint(2, 2);
    const QPoint top(before.center().x(), before.top() + 3);
    const QPoint left(before.left() + 2, before.center().y());
    QRect shrunk = before;
    shrunk.setLeft(before.right() + 1 - smallest.width());
    const struct
    {
        const char* what;
        QPoint from;
        QPoint travel;
        QRect after;
        Qt::CursorShape pointer;
    } rows[] = {
        {"corner", corner, {-5, -6}, before.adjusted(0, 0, -5, -6), Qt::SizeFDiagCursor},
        {"top", top, {9, -7}, before.adjusted(0, -7, 0, 0), Qt::SizeVerCursor},
        {"left, to the smallest", left, {900, 0}, shrunk, Qt::SizeHorCursor},
    };
    for (const auto& row : rows) {
        frame.setGeometry(before);
        Move(row.from);
        EXPECT_EQ(frame.windowHandle()->cursor().shape(), row.pointer) << row.what;
        Press(row.from);
        Move(row.from + row.travel);
        Release(row.from + row.travel);
        EXPECT_EQ(frame.geometry(), row.after) << row.what;
    }
    Move(frame.geometry().center());
    EXPECT_EQ(frame.windowHandle()->cursor().shape(), Qt::ArrowCursor) << "off the border again";
    EXPECT_EQ(caption->log, QStringList()) << "the presses were the border's";
}

TEST_F(Frame, TheBorderWinsOverChildrenAndIsGoneWhileMaximised)
{
    auto* child = new Caption;
    child->winId(); // has a window of its own
    frame.setCentralWidget(child);
    QCoreApplication::processEvents();
    QWindow* own = child->windowHandle();
    ASSERT_NE(own, nullptr);
    const QPoint edge(frame.width() - 3, 200);
    QTest::mousePress(own, Qt::LeftButton, {}, child->mapFrom(&frame, edge));
    QTest::mouseRelease(own, Qt::LeftButton, {}, child->mapFrom(&frame, edge));
    EXPECT_EQ(child->log, QStringList());

    frame.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame.width() > before.width(); }));
    const QPoint outer(frame.width() - 3, 200);
    QTest::mousePress(own, Qt::LeftButton, {}, child->mapFrom(&frame, outer));
    QTest::mouseRelease(own, Qt::LeftButton, {}, child->mapFrom(&frame, outer));
    EXPECT_EQ(child->log, QStringList({"down", "up"}));
}

TEST_F(Frame, ItsGeometryIsRemembered)
{
    frame.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame.width() > before.width(); }));
    const QByteArray saved = frame.saveGeometry();
    TestFrame other;
    EXPECT_TRUE(other.restoreGeometry(saved));
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    EXPECT_TRUE(other.isMaximized());
    EXPECT_TRUE(other.contentsMargins().isNull());
    EXPECT_EQ(other.normalGeometry(), before);
}

// Opens the system menu, by its key where no point is given, and chooses an entry (0 dismisses it).
// @return its entries, "-" before one that is disabled.
QStringList WithSystemMenu(CKvFrameWnd& frame, UINT choose, const QPoint* at = nullptr)
{
    QStringList entries;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &frame, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        poll.stop();
        for (QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            entries << (action->isEnabled() ? QString() : QStringLiteral("-")) +
                           action->text().section(QLatin1Char('\t'), 0, 0);
            if (action->data().toUInt() == choose)
                menu->setActiveAction(action);
        }
        QTest::keyClick(menu, choose != 0 ? Qt::Key_Return : Qt::Key_Escape);
    });
    poll.start(1);
    if (at)
        frame.OpenSystemMenu(*at);
    else if (frame.activateWindow(); QTest::qWaitForWindowActive(&frame))
        QTest::keyClick(&frame, Qt::Key_Space, Qt::AltModifier);
    return entries;
}

TEST_F(Frame, SystemMenuFitsTheState)
{
    const QStringList normal{"-Restore", "Minimize", "Maximize", "Close"};
    const QStringList zoomed{"Restore", "Minimize", "-Maximize", "Close"};
    EXPECT_EQ(WithSystemMenu(frame, 0), normal) << "Alt+Space";
    EXPECT_EQ(WithSystemMenu(frame, 32824, &grip), normal);
    EXPECT_TRUE(frame.isMaximized());
    EXPECT_EQ(WithSystemMenu(frame, 32822), zoomed);
    EXPECT_FALSE(frame.isMaximized());
    frame.refuse = true;
    WithSystemMenu(frame, 32823);
    EXPECT_FALSE(frame.isMinimized()) << "refused";
    EXPECT_EQ(frame.requests, std::vector<int>({3, 1, 2}));
    EXPECT_EQ(frame.RequestShowState(7), 0) << "no such state";

    frame.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    frame.show();
    EXPECT_EQ(WithSystemMenu(frame, 32826), QStringList{"Close"});
    EXPECT_EQ(frame.closeEvents, 1);
    frame.answersClose = true;
    WithSystemMenu(frame, 32826);
    EXPECT_EQ(frame.closeEvents, 1) << "the host answered WM_CLOSE itself";
}

} // namespace
