// What the user does to the ease curve window, and what the host hears of it.
#include "tests/curves/EaseWindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

#include <cstring>
#include <limits>
#include <utility>

namespace {

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

} // namespace
