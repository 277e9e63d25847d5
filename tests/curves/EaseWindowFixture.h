// An ease curve window in a host that writes down what it hears, driven by steps in short words.
#pragma once

#include "KvParamBezierWnd.h"

#include <QImage>
#include <QPointer>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

class TestWnd : public CKvParamBezierWnd
{
public:
    using CKvParamBezierWnd::CKvParamBezierWnd;
    using CKvParamBezierWnd::HasCapture;
    using CKvParamBezierWnd::ToolTipAt;
    using CKvParamBezierWnd::WantsShortcut;
};

inline constexpr double kCurve[8] = {10, 0, 15, 0, 25, 2, 30, 2};

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
    void Renew(bool hasInfo = true);
    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers held = {});
    void Wheel(int delta);
    static void ShowModalWindow();
    void Move(QPointF at, Qt::KeyboardModifiers held = {});
    // Steps: L, Z and R press the left, middle and right button at a point, l, z and r release them; D is the
    // second press of a double click; M moves, C with Ctrl; N moves with no button; W turns the wheel; K is a
    // key, T types; V puts words on the clipboard; "!" forgets the calls so far; others as in `Do`.
    void Run(const char* steps);
    void Do(char step, const QString& what);
    // What the host was told last.
    std::string Points() const;
    QImage Picture(double ratio = 1) const;

    struct Case
    {
        const char* name;
        const char* steps;
        const char* calls;
        const char* points = "10,0 15,0 25,2 30,2";
    };
    void Check(const std::vector<Case>& cases);

    Host host;
    QWidget parent;
    QPointer<TestWnd> window;
    Qt::MouseButtons pressed;
    QPointF last{100, 100};
    bool keepsCurve = false;
};
