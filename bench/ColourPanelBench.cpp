// A whole step of a drag in the colour panel: the mouse event, the colour in all maps and numbers, their
// pictures on the screen and the parent's notification.
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"

#include <QApplication>
#include <QMouseEvent>

#include <benchmark/benchmark.h>
#include <utility>

namespace {

constexpr int kMap = 14023;
constexpr int kSlider = 14024;

void Send(QWidget& control, QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, control.mapToGlobal(at), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

/// The panel with a map of 256 x 256. @param state: the map's number, and whether the mode is HSB.
void PanelDragStep(benchmark::State& state)
{
    QWidget parent;
    int heard = 0;
    KvMessageSink sink(&parent, [&heard](UINT, WPARAM, LPARAM) -> LRESULT { return ++heard; });
    auto* panel = new CKvColorPanel; // the parent's
    panel->SetInitialMode(static_cast<int>(state.range(1)));
    panel->Create(&parent);
    panel->SetColor(0xB0D1345Bu);
    const QSize map = panel->GetDlgItem(kMap)->size();
    panel->resize(panel->size() + QSize(256, 256) - map);
    parent.resize(panel->size());
    panel->show();
    parent.show();
    QApplication::processEvents(); // a window paints only once it is exposed

    QWidget& dragged = *panel->GetDlgItem(static_cast<UINT>(state.range(0)));
    Send(dragged, QEvent::MouseButtonPress, {1, 1}, Qt::LeftButton);
    heard = 0;
    int place = 0;
    DWORD before = panel->GetColor();
    for (auto _ : state) {
        place = (place + 37) % 256;
        Send(dragged, QEvent::MouseMove, QPointF((place * 7) % 256, place), Qt::LeftButton);
        parent.repaint();
        if (std::exchange(before, panel->GetColor()) == panel->GetColor() && place != 0)
            state.SkipWithError("a step changed nothing");
    }
    if (heard != static_cast<int>(state.iterations()))
        state.SkipWithError("a step was not heard");
    Send(dragged, QEvent::MouseButtonRelease, {1, 1}, Qt::NoButton);
}
BENCHMARK(PanelDragStep)
    ->ArgNames({"map", "hsb"})
    ->Args({kMap, 0})
    ->Args({kMap, 1})
    ->Args({kSlider, 0})
    ->Args({kSlider, 1})
    ->Unit(benchmark::kMicrosecond);

} // namespace
