// A whole step of a drag on the gradient control at 1,900 pixels: the mouse event, the model, the three
// pictures on the screen and the parent's notification.
#include "KvGradientCtrl.h"

#include <QApplication>
#include <QMouseEvent>

#include <benchmark/benchmark.h>
#include <vector>

namespace {

constexpr int kWidth = 1900;
constexpr int kHeight = 63;

class CountingCtrl : public CKvGradientCtrl
{
public:
    int paints = 0;

protected:
    void OnPaint(Graphics& graphics) override
    {
        ++paints;
        CKvGradientCtrl::OnPaint(graphics);
    }
};

void Send(QWidget& control, QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, control.mapToGlobal(at), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

void DragStep(benchmark::State& state)
{
    QWidget parent;
    parent.resize(kWidth, kHeight);
    int heard = 0;
    KvMessageSink sink(&parent, [&heard](UINT, WPARAM, LPARAM) -> LRESULT { return ++heard; });
    auto* control = new CountingCtrl;
    control->setGeometry(0, 0, kWidth, kHeight);
    control->Create(WS_CHILD | WS_VISIBLE, &parent, 1);
    const auto count = static_cast<int>(state.range(0));
    std::vector<SKvCGGradientKey> stops;
    for (int i = 0; i < count; ++i) {
        const auto share = static_cast<float>(i) / static_cast<float>(count - 1);
        stops.push_back({0x80000000u + static_cast<std::uint32_t>(i) * 0x070503u, share, 0.5f});
    }
    control->SetData(count, stops.data());
    parent.show();
    QApplication::processEvents(); // a window paints only once it is exposed

    Send(*control, QEvent::MouseButtonPress, {4, 55}, Qt::LeftButton);
    // Back and forth over half the bar, past many stops.
    int x = 0;
    heard = 0;
    control->paints = 0;
    for (auto _ : state) {
        x = (x + 37) % (kWidth / 2);
        Send(*control, QEvent::MouseMove, QPointF(x, 55), Qt::LeftButton);
        parent.repaint();
    }
    const auto steps = static_cast<int>(state.iterations());
    if (heard != steps || control->paints != steps)
        state.SkipWithError("a step was not heard or not painted");
    Send(*control, QEvent::MouseButtonRelease, QPointF(x, 55), Qt::NoButton);
}
BENCHMARK(DragStep)->Arg(4)->Arg(255)->Unit(benchmark::kMicrosecond);

} // namespace
