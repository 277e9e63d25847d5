#include "tests/curves/EaseWindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QTest>

#include <map>
#include <utility>

void EaseWindow::Renew(bool hasInfo)
{
    delete window;
    host.onCall = {};
    if (!keepsCurve)
        std::copy_n(kCurve, 8, host.given);
    std::copy_n(host.given, 8, host.set);
    window = new TestWnd(hasInfo ? &host : nullptr, &host);
    window->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, {0, 0, 470, 240}, &parent, 7);
    parent.resize(470, 240);
    parent.show();
    QApplication::setActiveWindow(&parent); // the offscreen platform activates no window by itself
    window->setFocus();
    pressed = {};
    EXPECT_EQ(std::exchange(host.heard, {}), hasInfo ? "get hist" : "hist");
}

void EaseWindow::Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers held)
{
    pressed.setFlag(button, type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick);
    QMouseEvent event(type, at, window->mapToGlobal(at), button, pressed, held);
    QApplication::sendEvent(window, &event);
    last = at;
}

void EaseWindow::Wheel(int delta)
{
    QWheelEvent event(last, window->mapToGlobal(last), {}, {0, delta}, pressed, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window, &event);
}

void EaseWindow::ShowModalWindow()
{
    QWidget other;
    other.setWindowModality(Qt::ApplicationModal);
    other.show();
}

void EaseWindow::Move(QPointF at, Qt::KeyboardModifiers held)
{
    QMouseEvent event(QEvent::MouseMove, at, window->mapToGlobal(at), Qt::NoButton, pressed, held);
    QApplication::sendEvent(window, &event);
}

void EaseWindow::Run(const char* steps)
{
    for (const QString& step : QString(steps).split(' ', Qt::SkipEmptyParts)) {
        if (window)
            Do(step.front().toLatin1(), step.mid(1));
    }
    if (window)
        QCoreApplication::sendPostedEvents(window); // the end of a gesture that lost the mouse
}

void EaseWindow::Do(char step, const QString& what)
{
    const QStringList parts = what.split(u',');
    const QPointF at = parts.size() == 2 ? QPointF(parts[0].toInt(), parts[1].toInt()) : last;
    const QKeyCombination key = QKeySequence(what)[0];
    const std::map<char, std::function<void()>> actions{
        {'L', [&] { Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton); }},
        {'l', [&] { Mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton); }},
        {'Z', [&] { Mouse(QEvent::MouseButtonPress, at, Qt::MiddleButton); }},
        {'z', [&] { Mouse(QEvent::MouseButtonRelease, at, Qt::MiddleButton); }},
        {'R', [&] { Mouse(QEvent::MouseButtonPress, at, Qt::RightButton); }},
        {'r', [&] { Mouse(QEvent::MouseButtonRelease, at, Qt::RightButton); }},
        {'D', [&] { Mouse(QEvent::MouseButtonDblClick, at, Qt::LeftButton); }},
        {'M', [&] { Move(at); }},
        {'C', [&] { Move(at, Qt::ControlModifier); }},
        {'N', [&] { pressed = {}, Move(at); }},
        {'W', [&] { Wheel(what.toInt()); }},
        {'K', [&] { QTest::keyClick(window.data(), key.key(), key.keyboardModifiers()); }},
        {'T', [&] { QTest::keyClicks(window.data(), what); }},
        {'V', [&] { QApplication::clipboard()->setText(QString(what).replace(u'_', u' ')); }},
        {'H', [&] { window->hide(); }},
        {'O', [&] { ShowModalWindow(); }},
        {'F', [&] { window->clearFocus(); }},
        {'A', [&] { window->Load(); }},
        {'U', [&] { window->Undo(); }},
        {'Y', [&] { window->Redo(); }},
        {'X', [&] { window->Revert(); }},
        {'1', [&] { window->ApplyLinear(); }},
        {'2', [&] { window->ApplySpeedUp(); }},
        {'3', [&] { window->ApplySpeedDown(); }},
        {'5', [&] { window->ApplySmooth(); }},
        {'!', [&] { host.heard.clear(); }},
    };
    actions.at(step)();
}

std::string EaseWindow::Points() const
{
    std::string text;
    for (int i = 0; i < 8; i += 2) {
        const QString point =
            QStringLiteral("%1,%2 ").arg(host.set[i], 0, 'g', 9).arg(host.set[i + 1], 0, 'g', 9);
        text += point.toStdString();
    }
    text.pop_back();
    return text;
}

QImage EaseWindow::Picture(double ratio) const
{
    QImage picture(window->size() * ratio, QImage::Format_ARGB32);
    picture.setDevicePixelRatio(ratio);
    window->render(&picture);
    return picture;
}

void EaseWindow::Check(const std::vector<Case>& cases)
{
    for (const Case& test : cases) {
        Renew();
        Run(test.steps);
        EXPECT_EQ(std::exchange(host.heard, {}), test.calls) << test.name;
        EXPECT_EQ(Points(), test.points) << test.name;
        EXPECT_FALSE(window->HasCapture()) << test.name;
    }
}
