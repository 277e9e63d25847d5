// A step of a drag of titler's colours in a project of 3840 × 2160: the edit of the document, the picture and
// the canvas on the screen. The peer draws the same frame with QPainter at the project's size.
#include "edit/Document.h"
#include "time/Transport.h"
#include "title/CanvasView.h"
#include "title/TitleRenderer.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <functional>

using namespace titler;

namespace {

constexpr QSize kFrame(3840, 2160);
constexpr QSize kCanvas(1500, 870);

Project LargeProject()
{
    Project project = NewProject();
    project.video.width = kFrame.width();
    project.video.height = kFrame.height();
    project.title.text = QStringLiteral("NORTHERN\nLIGHTS");
    project.title.fontSize = 20;
    project.title.outline.on = true;
    project.title.shadow.on = true;
    project.background.kind = PaintKind::Gradient;
    project.background.angle = 0;
    return project;
}

using Step = std::function<void(Project&, DWORD)>;

void DragStep(benchmark::State& state, const Step& step)
{
    Document document;
    Transport transport(document);
    document.Edit(EditKind::Single, {}, [](Project& project) { project = LargeProject(); });
    CanvasView canvas(document, transport);
    canvas.resize(kCanvas);
    if (state.range(0) != 0)
        canvas.SetZoom(static_cast<double>(state.range(0)) / 100);
    canvas.show();
    QApplication::processEvents();
    document.BeginRun({});
    DWORD number = 0;
    const auto draw = [&] {
        ++number;
        document.UpdateRun([&](Project& project) { step(project, 0xFF000000u | number * 0x030507u); });
        canvas.viewport()->repaint();
    };
    draw();
    for (auto _ : state)
        draw();
    document.CancelRun();
}

void Zooms(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(0)->Arg(100)->ArgName("zoom")->Unit(benchmark::kMillisecond);
}

void SetStop(Paint& paint, DWORD colour)
{
    GradientStops stops = paint.stops;
    stops.front().colour = colour;
    SetStops(paint, stops);
}

BENCHMARK_CAPTURE(DragStep, BackgroundCorner, [](Project& project, DWORD colour) {
    project.background.kind = PaintKind::FourCorner;
    project.background.corners[1] = colour;
})->Apply(Zooms);
BENCHMARK_CAPTURE(DragStep, BackgroundStop, [](Project& project, DWORD colour) {
    SetStop(project.background, colour);
})->Apply(Zooms);
BENCHMARK_CAPTURE(DragStep, TextStop, [](Project& project, DWORD colour) {
    SetStop(project.title.fill, colour);
})->Apply(Zooms);
BENCHMARK_CAPTURE(DragStep, TextCorner, [](Project& project, DWORD colour) {
    project.title.fill.kind = PaintKind::FourCorner;
    project.title.fill.corners[1] = colour;
})->Apply(Zooms);
BENCHMARK_CAPTURE(DragStep, ShadowColour, [](Project& project, DWORD colour) {
    project.title.shadow.colour = colour;
})->Apply(Zooms);

QLinearGradient Across(const QRectF& bounds, const GradientStops& stops)
{
    QLinearGradient gradient(bounds.left(), 0, bounds.right(), 0);
    for (const SKvCGGradientKey& stop : stops)
        gradient.setColorAt(static_cast<double>(stop.position), QColor::fromRgba(stop.colour));
    return gradient;
}

QImage PainterFrame(const Project& project, const QPainterPath& title)
{
    QImage frame(kFrame, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(frame.rect(), Across(frame.rect(), project.background.stops));
    painter.fillPath(title, Across(title.boundingRect(), project.title.fill.stops));
    return frame;
}

// Without outline and shadow, from an outline of the text that is there already.
void PainterStep(benchmark::State& state)
{
    Project project = LargeProject();
    project.title.outline.on = project.title.shadow.on = false;
    const QPainterPath title = TitlePath(project.title, kFrame);
    const QRgb ours = TitleRenderer().RenderFrame(project, 0, kFrame).pixel(kFrame.width() / 4, 10);
    const QRgb peer = PainterFrame(project, title).pixel(kFrame.width() / 4, 10);
    if (std::abs(qRed(ours) - qRed(peer)) > 2 || std::abs(qBlue(ours) - qBlue(peer)) > 2)
        state.SkipWithError("the peer draws another picture");
    QImage canvas(kCanvas, QImage::Format_RGB32);
    DWORD number = 0;
    for (auto _ : state) {
        SetStop(project.background, 0xFF000000u | ++number * 0x030507u);
        QPainter painter(&canvas);
        painter.drawImage(canvas.rect(), PainterFrame(project, title));
    }
}
BENCHMARK(PainterStep)->Unit(benchmark::kMillisecond);

// What blurring a shadow anew costs, for example while its text moves.
void MovedShadow(benchmark::State& state)
{
    Project project = LargeProject();
    project.title.shadow.blur = static_cast<double>(state.range(0)) / 10;
    TitleRenderer renderer;
    const QSize size(1920, 1080);
    for (auto _ : state) {
        project.title.shadow.x = project.title.shadow.x > 1 ? 0 : project.title.shadow.x + 0.1;
        benchmark::DoNotOptimize(renderer.Render(project, 0, size));
    }
}
BENCHMARK(MovedShadow)->Arg(0)->Arg(5)->Arg(20)->Arg(100)->ArgName("blur10")->Unit(benchmark::kMillisecond);

} // namespace
