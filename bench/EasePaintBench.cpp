// The ease curve window at 800 × 400: painting it, and a whole step of a drag with a long history behind it.
#include "KvParamBezierWnd.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 400;
constexpr QPointF kHandle{232.5, 380}; // of the start key, in pixels

class Host : public IKvParamBezierInfo, public IKvParamBezierCtrlCallback
{
public:
    int GetCurve(double points[8], double& minimum, double& maximum, std::uint32_t& lock,
                 std::uint32_t& kind) override
    {
        constexpr double ease[8] = {0, 0, 0.25, 0, 0.75, 1, 1, 1};
        std::copy_n(ease, 8, points);
        minimum = 0;
        maximum = 1;
        lock = 0;
        kind = 4;
        return 1;
    }
    int SetCurve(const double[8], std::uint32_t, std::uint32_t) override { return ++heard; }
    int UndoChanged() override { return ++records; }

    int heard = 0;
    int records = 0;
};

struct Window
{
    explicit Window(bool withAll = false)
    {
        parent.resize(kWidth, kHeight);
        curve.Create(WS_CHILD | WS_VISIBLE, {0, 0, kWidth, kHeight}, &parent, 1);
        curve.ShowSpeed(withAll ? 1 : 0);
        curve.ShowInitialCurve(withAll ? 1 : 0);
        curve.SetFrameLength(withAll ? 0.01 : 0);
        parent.show();
        QApplication::processEvents(); // a window paints only once it is exposed
    }
    void Send(QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, curve.mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(&curve, &event);
    }

    Host host;
    QWidget parent;
    CKvParamBezierWnd curve{&host, &host};
};

void Paint(benchmark::State& state, bool withAll)
{
    Window window(withAll);
    QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        window.curve.render(&picture);
    const QRgb middle = picture.pixel(415, 200);
    if (!withAll && (qRed(middle) < 0xC0 || qGreen(middle) > 0x40))
        state.SkipWithError("the curve was not painted");
}
BENCHMARK_CAPTURE(Paint, plain, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Paint, with_frames_speed_and_ghost, true)->Unit(benchmark::kMicrosecond);

void DragStep(benchmark::State& state)
{
    Window window;
    const auto records = static_cast<int>(state.range(0));
    while (window.host.records < records) {
        window.Send(QEvent::MouseButtonPress, kHandle, Qt::LeftButton);
        window.Send(QEvent::MouseButtonRelease, kHandle, Qt::NoButton);
    }
    window.Send(QEvent::MouseButtonPress, kHandle, Qt::LeftButton);
    int x = 0;
    window.host.heard = 0;
    for (auto _ : state) {
        x = (x + 37) % 700;
        window.Send(QEvent::MouseMove, {50.0 + x, 300}, Qt::LeftButton);
        window.parent.repaint();
    }
    if (window.host.heard != static_cast<int>(state.iterations()) || window.host.records != records)
        state.SkipWithError("a step was not heard");
    window.Send(QEvent::MouseButtonRelease, {50.0 + x, 300}, Qt::NoButton);
}
BENCHMARK(DragStep)->Arg(1)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
