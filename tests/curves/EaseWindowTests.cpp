// What the user does to the ease curve window, and what the host hears of it.
#include "KvParamBezierWnd.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>

namespace {

class TestWnd : public CKvParamBezierWnd
{
public:
    using CKvParamBezierWnd::CKvParamBezierWnd;
    using CKvParamBezierWnd::HasCapture;
    using CKvParamBezierWnd::ToolTipAt;
    using CKvParamBezierWnd::WantsShortcut;
};

constexpr double kCurve[8] = {10, 0, 15, 0, 25, 2, 30, 2};

// Writes down every call: "set4" is SetCurve with kind 4, "hist" UndoChanged.
class Host : public IKvParamBezierInfo, public IKvParamBezierCtrlCallback
{
public:
    int GetCurve(double points[8], double& low, double& high, std::uint32_t& l, std::uint32_t& k) override
    {
        std::copy_n(given, 8, points);
        low = minimum;
        high = maximum;
        l = lock;
        k = 3;
        Hear("get");
        return result;
    }
    int SetCurve(const double points[8], std::uint32_t l, std::uint32_t kind) override
    {
        std::copy_n(points, 8, set);
        EXPECT_EQ(l, lock);
        Hear("set" + std::to_string(kind));
        return 1;
    }
    int ApplyLinear() override { return Hear("linear"); }
    int GetSpeedUpCurve(double* outX, double*, double* inX, double* inY) override
    {
        *outX = 0.5;
        *inX = 0.25;
        *inY = -1;
        return Hear("up");
    }
    int GetSpeedDownCurve(double* outX, double*, double*, double*) override
    {
        *outX = std::numeric_limits<double>::quiet_NaN();
        return Hear("down");
    }
    int GetSmoothCurve(double*, double*, double*, double*) override { return Hear("smooth"), 0; }
    int UndoChanged() override { return Hear("hist"); }

    int Hear(const std::string& call)
    {
        heard += (heard.empty() ? "" : " ") + call;
        if (onCall)
            onCall(call);
        return 1;
    }

    double given[8] = {};
    double minimum = 0;
    double maximum = 2;
    std::uint32_t lock = 0;
    int result = 1;
    double set[8] = {};
    std::string heard;
    std::function<void(const std::string&)> onCall;
};

// A window 470 × 240, so that the plot is (50, 20) to (450, 220): a pixel is 0.05 of time and 0.01 of value.
// The four points stand at (50, 220), (150, 220), (350, 20) and (450, 20).
class EaseWindow : public testing::Test
{
protected:
    EaseWindow() { Renew(); }
    void Renew(bool hasInfo = true)
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
    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers held = {})
    {
        pressed.setFlag(button, type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick);
        QMouseEvent event(type, at, window->mapToGlobal(at), button, pressed, held);
        QApplication::sendEvent(window, &event);
        last = at;
    }
    void Wheel(int delta)
    {
        QWheelEvent event(last, window->mapToGlobal(last), {}, {0, delta}, pressed, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(window, &event);
    }
    static void ShowModalWindow()
    {
        QWidget other;
        other.setWindowModality(Qt::ApplicationModal);
        other.show();
    }
    void Move(QPointF at, Qt::KeyboardModifiers held = {})
    {
        QMouseEvent event(QEvent::MouseMove, at, window->mapToGlobal(at), Qt::NoButton, pressed, held);
        QApplication::sendEvent(window, &event);
    }
    // Steps: L, Z and R press the left, middle and right button at a point, l, z and r release them; D is the
    // second press of a double click; M moves, C with Ctrl; N moves with no button; W turns the wheel; K is a
    // key, T types; V puts words on the clipboard; "!" forgets the calls so far; others as in the table.
    void Run(const char* steps)
    {
        for (const QString& step : QString(steps).split(' ', Qt::SkipEmptyParts)) {
            if (window)
                Do(step.front().toLatin1(), step.mid(1));
        }
    }
    void Do(char step, const QString& what)
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
    // What the host was told last.
    std::string Points() const
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
    QImage Picture(double ratio = 1) const
    {
        QImage picture(window->size() * ratio, QImage::Format_ARGB32);
        picture.setDevicePixelRatio(ratio);
        window->render(&picture);
        return picture;
    }

    struct Case
    {
        const char* name;
        const char* steps;
        const char* calls;
        const char* points = "10,0 15,0 25,2 30,2";
    };
    void Check(const std::vector<Case>& cases)
    {
        for (const Case& test : cases) {
            Renew();
            Run(test.steps);
            EXPECT_EQ(std::exchange(host.heard, {}), test.calls) << test.name;
            EXPECT_EQ(Points(), test.points) << test.name;
            EXPECT_FALSE(window->HasCapture()) << test.name;
        }
    }

    Host host;
    QWidget parent;
    QPointer<TestWnd> window;
    Qt::MouseButtons pressed;
    QPointF last{100, 100};
    bool keepsCurve = false;
};

TEST_F(EaseWindow, Drags)
{
    Check({
        {"press and release", "L150,220 l", "hist"},
        {"handle", "L150,220 M200,200 M250,120 l", "set4 set4 hist", "10,0 20,1 25,2 30,2"},
        {"a move that changes nothing", "L150,220 M150,220 l", "set4 hist"},
        {"exactly the right edge", "L150,220 M900,120 l", "set4 hist", "10,0 30,1 25,2 30,2"},
        {"free in y", "L150,220 M150,-180 l", "set4 hist", "10,0 15,4 25,2 30,2"},
        {"key, its handle along", "L450,20 M300,120 l", "set4 hist", "10,0 15,0 25,1 30,1"},
        {"key within the range", "L50,220 M50,900 M50,-900 l", "set4 set4 hist", "10,2 15,2 25,2 30,2"},
        {"Ctrl keeps the direction", "L150,220 C250,120 l", "set4 hist", "10,0 20,0 25,2 30,2"},
        {"nothing there", "L154,224 M200,100 l", ""},
        {"double click", "L150,220 l D150,220 M200,100 l", "hist"},
        {"escape", "L150,220 M250,120 KEsc M250,130 l", "set4 set3"},
        {"escape before a move", "L150,220 KEsc l", "set3"},
        {"escape after an edit", "L150,220 l L150,220 M250,120 KEsc l", "hist set4 set4"},
        {"other buttons' releases", "L150,220 R150,200 r M250,120 Z z l", "set4 hist", "10,0 20,1 25,2 30,2"},
        {"a second press", "L150,220 L350,20 M250,120 l", "set4 hist", "10,0 20,1 25,2 30,2"},
        {"capture lost", "L150,220 M250,120 H M300,120", "set4 hist", "10,0 20,1 25,2 30,2"},
        {"a modal window", "L150,220 O M300,120 l", "hist"},
        {"the button went up elsewhere", "L150,220 N250,120", "hist"},
        {"keys in a drag", "L150,220 KReturn KPgDown KUp K5 KTab KCtrl+Z KHome l", "hist"},
        {"undone in a drag", "L150,220 l L150,220 M250,120 U M300,120 l", "hist set4 set3"},
        {"a preset in a drag", "L450,20 M450,120 1 M300,50 l", "set4 linear hist", "10,0 15,0 25,1 30,1"},
        {"loaded in a drag", "L150,220 M250,120 A M300,120 l", "set4 get hist", "10,0 20,1 25,2 30,2"},
    });
    host.lock = 1;
    Check({
        {"locked: keys", "L50,220 M50,100 l L450,20 M450,100 l", ""},
        {"locked: handle rises", "L150,220 M150,-500 M250,300 M250,-500 l", "set4 set4 set4 hist",
         "10,0 20,2 25,2 30,2"},
        {"locked: walk", "KPgDown KRight KPgDown KLeft KPgDown KUp", "set4 hist set4 hist set4 hist",
         "10,0 15.05,0.01 24.95,2 30,2"},
    });
}

TEST_F(EaseWindow, ViewIsZoomedMovedAndReset)
{
    // The view shows in what a drag of a handle to the plot's top makes of its value.
    Check({
        {"wheel", "W-250 L150,187 M150,20 l", "set4 hist", "10,0 15,2.5 25,2 30,2"},
        {"wheel: at most twice the range", "W-9000 W-9000 L150,170 M150,20 l", "set4 hist",
         "10,0 15,3 25,2 30,2"},
        {"middle", "Z100,100 M100,-100 M100,350 z L150,187 M150,20 l", "set4 hist", "10,0 15,2.5 25,2 30,2"},
        {"right", "R100,100 M100,200 r L350,120 M350,20 l", "set4 hist", "10,0 15,0 25,3 30,2"},
        {"escape in a pan", "R100,100 M100,200 KEsc M100,300 r L350,20 M350,120 l", "set4 hist",
         "10,0 15,0 25,1 30,2"},
        {"escape in a zoom", "Z100,100 M100,350 KEsc z L350,20 M350,120 l", "set4 hist",
         "10,0 15,0 25,1 30,2"},
        {"double click", "R100,100 M100,200 r D100,100 l L350,20 M350,120 l", "set4 hist",
         "10,0 15,0 25,1 30,2"},
        {"no double click in a pan", "R100,100 M100,200 D100,100 r L350,120 M350,20 l", "set4 hist",
         "10,0 15,0 25,3 30,2"},
        {"Home", "W-250 KHome L350,20 M350,120 l", "set4 hist", "10,0 15,0 25,1 30,2"},
        {"load", "W-250 A L350,20 M350,120 l", "get hist set4 hist", "10,0 15,0 25,1 30,2"},
        {"no drag in a zoom", "Z100,100 L350,20 M350,120 l z", ""},
        {"no wheel in a drag", "L350,20 W-250 M350,120 l", "set4 hist", "10,0 15,0 25,1 30,2"},
    });
}

TEST_F(EaseWindow, Keyboard)
{
    Check({
        {"nothing selected", "KUp KRight T1 KReturn", ""},
        {"walk", "KPgDown KUp KPgDown KRight KPgDown KDown KPgDown KDown",
         "set4 hist set4 hist set4 hist set4 hist", "10,0.01 15.05,0.01 25,1.98 30,1.99"},
        {"round", "KPgDown KPgDown KPgDown KPgDown KPgDown KPgDown KLeft", "set4 hist",
         "10,0 14.95,0 25,2 30,2"},
        {"backwards", "KPgUp KPgUp KShift+Left", "set4 hist", "10,0 15,0 24.995,2 30,2"},
        {"a click selects", "L350,20 l KShift+Down", "hist set4 hist", "10,0 15,0 25,1.999 30,2"},
        {"a key keeps its time and range", "KPgDown KRight KDown KPgUp KUp KLeft", ""},
        {"typed place", "KPgUp KPgUp T20,1 KReturn", "set4 hist", "10,0 15,0 20,1 30,2"},
        {"typed value", "KPgDown KPgDown T-0.25 KReturn", "set4 hist", "10,0 15,-0.25 25,2 30,2"},
        {"typed beyond", "KPgUp T99,9 KReturn KPgUp T99,1 KReturn", "set4 hist", "10,0 15,0 30,1 30,2"},
        {"out at the far key", "L150,220 M450,120 l ! KRight KRight", "", "10,0 30,1 25,2 30,2"},
        {"taken back", "KPgDown KPgDown T12 KBackspace KReturn KReturn", "set4 hist", "10,0 15,1 25,2 30,2"},
        {"dropped", "KPgDown T1 KEsc T1 F KReturn", ""},
        {"mended", "KPgDown KPgDown T1,, KReturn KBackspace T3 KReturn", "set4 hist", "10,0 10,3 25,2 30,2"},
        {"typed what it is", "KPgDown KPgDown T15,0 KReturn", ""},
        {"undo and redo", "L450,20 M450,120 l ! KCtrl+Z KCtrl+Z KCtrl+Y KCtrl+Z KCtrl+Shift+Z",
         "set3 set4 set3 set4", "10,0 15,0 25,1 30,1"},
        {"copy and paste", "KCtrl+C L150,220 M250,120 l ! KCtrl+V", "set4 hist"},
        {"paste the same", "KCtrl+C KCtrl+V", ""},
        {"paste numbers", "V0.5,0.5_2,0.25 KCtrl+V", "set4 hist", "10,0 20,1 30,0.5 30,2"},
        {"paste something else", "Vlinear KCtrl+V", ""},
    });
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("linear"));
    Run("KCtrl+C");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("cubic-bezier(0.25, 0, 0.75, 1)"));
}

TEST_F(EaseWindow, TakesTheHostsKeysOnlyWhileNeeded)
{
    const auto wants = [&](UINT key) { return window->WantsShortcut(key, Qt::NoModifier, 0); };
    const auto check = [&](const char* steps, bool isTaken) {
        Run(steps);
        EXPECT_EQ(window->WantsShortcut('S', Qt::ControlModifier, 19), window->HasCapture())
            << "a host's shortcut: " << steps;
        for (const auto& [key, number] :
             {std::pair(VK_RETURN, Qt::Key_Return), {VK_ESCAPE, Qt::Key_Escape}}) {
            EXPECT_EQ(wants(key), isTaken) << steps;
            if (isTaken && key == VK_RETURN)
                continue;
            QKeyEvent event(QEvent::KeyPress, number, Qt::NoModifier);
            QApplication::sendEvent(window, &event);
            EXPECT_EQ(event.isAccepted(), isTaken) << steps;
        }
    };
    check("KPgDown", false);
    check("T1", true);
    check("KUp", false);
    check("L150,220", true);
    check("l R100,100", true);
    check("r L450,20 l", false);
    EXPECT_TRUE(wants(VK_UP) && window->WantsShortcut('Z', Qt::ControlModifier, 26));
    EXPECT_FALSE(wants(VK_BACK) || wants(VK_TAB));
    EXPECT_EQ(window->OnGetDlgCode() & DLGC_WANTTAB, 0u);
}

TEST_F(EaseWindow, HistoryAndPresets)
{
    Check({
        {"linear", "1", "linear hist"},
        {"speed-up", "2", "up hist"},
        {"undo and redo it", "2 U Y", "up hist set3 set2", "10,0 20,0 25,1 30,2"},
        {"not a number", "3 U", "down"},
        {"the host has none", "5 U", "smooth"},
        {"ends of the history", "U Y", ""},
        {"revert", "1 2 X Y Y Y", "linear hist up hist set3 set1 set2", "10,0 20,0 25,1 30,2"},
        {"revert when there", "X", "set3"},
        {"an edit drops what was undone", "1 U L150,220 l Y", "linear hist set3 hist"},
    });
    EXPECT_TRUE(window->CanUndo() && !window->CanRedo());
    Renew();
    Run("2 L350,20 M350,120");
    CKvParamBezierWnd::SCurveInfo info{};
    EXPECT_EQ(window->GetCurveInfo(info), 1);
    const double record[] = {info.startX, info.startY, info.outX, info.outY,
                             info.inX,    info.inY,    info.endX, info.endY};
    EXPECT_EQ(std::vector(record, std::end(record)), (std::vector<double>{10, 0, 10, 0, -5, -1, 30, 2}));
    EXPECT_EQ(info.kind, 2u) << "the drag has not ended";
}

TEST_F(EaseWindow, HostMayLoadInSetCurve)
{
    host.onCall = [this](const std::string& call) {
        if (call == "set4")
            window->Load();
    };
    Run("KPgDown KUp");
    EXPECT_EQ(host.heard, "set4 get hist") << "once for a history without the edit";
    EXPECT_FALSE(window->CanUndo());
}

TEST_F(EaseWindow, CurvesThatMakeNoSenseAreShownOnly)
{
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    const struct
    {
        const char* name;
        int place; // of the points, then minimum and maximum
        double value;
    } rows[] = {{"empty segment", 6, 10},   {"reversed segment", 6, 9},       {"empty range", 9, 0},
                {"reversed range", 9, -1},  {"not a number", 3, kNotANumber}, {"infinite time", 0, kInfinite},
                {"beyond single", 5, 1e39}, {"infinite range", 9, kInfinite}, {"width lost", 0, 30 - 1e-45}};
    keepsCurve = true;
    for (const auto& row : rows) {
        std::copy_n(kCurve, 8, host.given);
        host.minimum = 0;
        host.maximum = 2;
        (row.place < 8 ? host.given[row.place] : row.place == 8 ? host.minimum : host.maximum) = row.value;
        Renew();
        window->SetFrameLength(0.04);
        window->ShowSpeed(1);
        window->ShowInitialCurve(1);
        Run("L150,220 M200,100 l L450,20 M450,90 l KPgDown KUp T1 KReturn V0,0,1,1 KCtrl+V KCtrl+Z");
        Run("U Y X 1 2 3 5 W120 Z50,50 M60,90 z R50,50 M60,90 r KHome");
        EXPECT_EQ(std::exchange(host.heard, {}), "") << row.name;
        const QImage picture = Picture();
        EXPECT_EQ(picture.pixel(3, 3), 0xFF505050u) << row.name;
        EXPECT_EQ(picture.pixel(200, 25), 0xFF646464u) << row.name;
        EXPECT_EQ(picture.pixel(50, 100), 0xFFA0A0A0u) << row.name;
    }
    host.minimum = 0;
    host.maximum = 2;
    keepsCurve = false;
    const char* edits = "L50,220 M50,100 l KPgDown KUp U X 1 2 KCtrl+V W120 R50,50 M60,90 r";
    Renew(false);
    Run(edits);
    EXPECT_EQ(std::exchange(host.heard, {}), "") << "no info object";
    host.result = 0;
    Renew();
    Run(edits);
    EXPECT_EQ(std::exchange(host.heard, {}), "") << "it gave no curve";
    host.result = 1;
    window->Load();
    Run("L150,220 l");
    EXPECT_EQ(host.heard, "get hist hist") << "until it gives one";
}

TEST_F(EaseWindow, HostMayDeleteTheWindowInEveryCall)
{
    const std::pair<const char*, const char*> rows[] = {
        {"set4", "L150,220 M250,120 M260,120 l"},
        {"set3", "L150,220 KEsc l"},
        {"hist", "L150,220 M250,120 l KUp"},
        {"hist", "L150,220 H"},
        {"set4", "KPgDown KUp KUp"},
        {"hist", "KPgDown T1 KReturn"},
        {"set4", "V0,0,1,1 KCtrl+V"},
        {"set3", "1 U"},
        {"set3", "1 KCtrl+Z"},
        {"set3", "X"},
        {"hist", "1"},
        {"linear", "1"},
        {"up", "2"},
        {"get", "A"},
        {"hist", "A"},
        {"CurveChanged", "L150,220 M250,120 M260,120 l"},
        {"CurveChanged", "KPgDown KUp KUp"},
        {"CurveChanged", "1 U"},
        {"HistoryChanged", "L150,220 M250,120 l KUp"},
        {"HistoryChanged", "1"},
        {"HistoryChanged", "A"},
    };
    const auto die = [this] { delete window; };
    for (const auto& [call, steps] : rows) {
        Renew();
        const std::string deadly = call;
        host.onCall = [&](const std::string& heard) {
            if (heard == deadly)
                die();
        };
        if (deadly == "CurveChanged")
            QObject::connect(window, &CKvParamBezierWnd::CurveChanged, die);
        if (deadly == "HistoryChanged")
            QObject::connect(window, &CKvParamBezierWnd::HistoryChanged, die);
        Run(steps);
        EXPECT_FALSE(window) << call << " in " << steps;
        host.heard.clear();
    }
}

TEST_F(EaseWindow, WhatWasNotEditedGoesBackToTheLastBit)
{
    keepsCurve = true;
    const double precise[8] = {0.1 + 0.2,   1 / 3.0,   5 / 7.0,         0.1,
                               86400.7 / 7, 2 - 1e-15, 20000 + 1 / 3.0, 5 / 3.0};
    std::copy_n(precise, 8, host.given);
    Renew();
    const auto same = [&](int from, int to) {
        return std::memcmp(host.set + from, precise + from,
                           sizeof(double) * static_cast<std::size_t>(to - from)) == 0;
    };
    Run("KPgDown KPgDown KUp");
    EXPECT_TRUE(same(0, 3) && !same(3, 4) && same(4, 8));
    Run("KCtrl+Z");
    EXPECT_TRUE(same(0, 8));
    Run("KPgDown KPgDown KUp X");
    EXPECT_TRUE(same(0, 8));
    Run("L450,53 M450,100");
    EXPECT_TRUE(same(0, 4) && same(4, 5) && !same(5, 6) && same(6, 7) && !same(7, 8));
    Run("KEsc");
    EXPECT_TRUE(same(0, 8));
}

TEST_F(EaseWindow, DrawsOnWholeDevicePixels)
{
    window->clearFocus();
    struct Row
    {
        const char* name;
        int x, y; // in device pixels
        QRgb colour;
    };
    const auto check = [&](double ratio, const std::vector<Row>& rows) {
        const QImage picture = Picture(ratio);
        for (const Row& row : rows)
            EXPECT_EQ(QString::number(picture.pixel(row.x, row.y), 16), QString::number(row.colour, 16))
                << row.name << " at " << ratio;
    };
    // Grid lines stand at 0.2, 0.4 … of 0 … 2: every 20 pixels.
    check(1, {{"ground", 469, 239, 0xFF505050},
              {"plot", 60, 25, 0xFF646464},
              {"its last pixel", 449, 30, 0xFF646464},
              {"beyond it", 450, 40, 0xFF505050},
              {"grid at 1.4", 60, 80, 0xFF808080},
              {"above", 60, 79, 0xFF646464},
              {"below", 60, 81, 0xFF646464},
              {"axis", 50, 150, 0xFFA0A0A0},
              {"axis", 250, 220, 0xFFA0A0A0},
              {"curve", 249, 120, 0xFFFF0000},
              {"key", 449, 20, 0xFFFFFFFF},
              {"handle", 150, 220, 0xFF00FF00},
              {"tangent", 100, 220, 0xFFFFFFFF},
              {"not blurred", 100, 221, 0xFF505050}});
    check(1.5, {{"grid at 1.3", 90, 120, 0xFF808080},
                {"above", 90, 119, 0xFF646464},
                {"below", 90, 121, 0xFF646464},
                {"axis", 75, 225, 0xFFA0A0A0},
                {"curve", 375, 180, 0xFFFF0000},
                {"handle", 225, 330, 0xFF00FF00}});
    check(2, {{"grid at 1.4", 120, 160, 0xFF808080},
              {"second row", 120, 161, 0xFF808080},
              {"below", 120, 162, 0xFF646464}});
    Run("W-250"); // 2.5 … -0.5: the range's edges come into view
    check(1, {{"maximum", 100, 53, 0xFFA0A0A0}, {"minimum", 300, 186, 0xFFA0A0A0}});
    Run("KHome L450,20 M450,120");
    check(1, {{"box beside the key", 467, 96, 0xFFC8C8C8}, {"key", 449, 120, 0xFFFFFFFF}});
    Run("l");
    window->setFocus();
    check(1, {{"focus", 0, 100, 0xFFFFA500}, {"selected", 443, 120, 0xFFFFA500}});
}

TEST_F(EaseWindow, DrawsToThePixelAlsoFarFromNothing)
{
    keepsCurve = true;
    host.minimum = 1e8 + 0.5;
    host.maximum = 1e8 + 1.5;
    for (int i = 0; i < 8; i += 2) {
        host.given[i] = 36000.02 + (kCurve[i] - 10) * 0.002;
        host.given[i + 1] = host.minimum + kCurve[i + 1] / 2;
    }
    Renew();
    const QImage picture = Picture();
    EXPECT_EQ(picture.pixel(50, 220), 0xFFFFFFFFu);
    EXPECT_EQ(picture.pixel(150, 220), 0xFF00FF00u);
    EXPECT_EQ(picture.pixel(249, 120), 0xFFFF0000u);
    EXPECT_EQ(picture.pixel(449, 20), 0xFFFFFFFFu);
}

TEST_F(EaseWindow, FarHandlesStayOutOfTheMargins)
{
    keepsCurve = true;
    host.maximum = 1;
    for (const double far : {1e3, 1e12, 3e38}) {
        const double curves[][8] = {{0, 0, 0.5, far, 0.5, -far, 1, 1},
                                    {0, 0, -far, 0.5, far, 0.5, 1, 1},
                                    {0, -far, 0.25, -far, 0.75, far, 1, far}};
        for (const auto& curve : curves) {
            std::copy_n(curve, 8, host.given);
            Renew();
            window->ShowSpeed(1);
            window->ShowInitialCurve(1);
            window->SetFrameLength(0.1);
            const QImage picture = Picture();
            int reds[2] = {}; // outside the plot, within it
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    const QRgb pixel = picture.pixel(x, y);
                    if (qRed(pixel) >= 200 && qGreen(pixel) <= 60)
                        ++reds[QRect(50, 20, 400, 200).contains(x, y)];
                }
            }
            EXPECT_EQ(reds[0], 0) << far;
            EXPECT_TRUE(reds[1] > 150 || far > 1e15) << far; // beyond, only rounding is left of the curve
        }
    }
}

TEST_F(EaseWindow, ShowsFramesSpeedAndTheInitialCurve)
{
    Run("1"); // a straight line from (50, 220) to (450, 20)
    const auto at = [&](int x, int y) { return Picture().pixel(x, y); };
    const QRgb plain[] = {at(250, 120), at(275, 107), at(253, 153), at(140, 188)};
    window->SetFrameLength(0.1);
    EXPECT_EQ(at(250, 120), plain[0]) << "two pixels apart";
    window->SetFrameLength(2.5);
    EXPECT_NE(at(250, 120), plain[0]) << "fifty pixels apart";
    EXPECT_EQ(at(275, 107), plain[1]) << "between two";
    window->ShowSpeed(1);
    EXPECT_NE(at(253, 153), plain[2]) << "the average at a third";
    window->ShowInitialCurve(1);
    EXPECT_NE(at(140, 188), plain[3]);
    window->SetFrameLength(0);
    window->ShowSpeed(0);
    window->ShowInitialCurve(0);
    EXPECT_EQ(at(250, 120), plain[0]);
    EXPECT_EQ(at(253, 153), plain[2]);
    EXPECT_EQ(at(140, 188), plain[3]);
}

TEST_F(EaseWindow, HandlesAreAccessible)
{
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(window);
    ASSERT_EQ(access->childCount(), 4);
    EXPECT_EQ(access->text(QAccessible::Name), QStringLiteral("Ease curve"));
    QAccessibleInterface* out = access->child(1);
    EXPECT_EQ(out->text(QAccessible::Name), QStringLiteral("Start key's handle"));
    EXPECT_EQ(out->text(QAccessible::Description), QStringLiteral("Time 15.00, value 0.00"));
    EXPECT_EQ(out->rect(), QRect(window->mapToGlobal(QPoint(146, 216)), QSize(8, 8)));
    out->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(out->state().focused && out->state().selected);
    EXPECT_EQ(access->focusChild(), out);
    out->valueInterface()->setCurrentValue(0.5);
    EXPECT_EQ(Points(), "10,0 15,0.5 25,2 30,2");
    out->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(Points(), "10,0 15,0.52 25,2 30,2");
    EXPECT_EQ(std::exchange(host.heard, {}), "set4 hist set4 hist");
    CRect area;
    EXPECT_EQ(window->ToolTipAt({150, 168}, area),
              QStringLiteral("Start key's handle: time 15.00, value 0.52"));
    EXPECT_EQ(window->ToolTipAt({250, 30}, area), QString());

    host.lock = 1;
    window->Load();
    EXPECT_EQ(access->child(0)->actionInterface(), nullptr) << "a locked key";
    EXPECT_EQ(access->child(1)->valueInterface()->minimumValue().toDouble(), 0);
    host.maximum = -1;
    window->Load();
    EXPECT_EQ(access->childCount(), 0);
    host.heard.clear();
}

} // namespace
