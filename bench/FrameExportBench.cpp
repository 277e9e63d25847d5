// Exporting titler's sample project at 1920 × 1080: whole frames in one and two threads, and what a frame
// costs: drawing it, and its PNG file beside the toolkit's own writer.
#include "export/FrameExport.h"
#include "export/FrameSequence.h"
#include "title/TitleRenderer.h"

#include <QColorSpace>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdlib>

using namespace titler;

namespace {

constexpr FrameRange kRange{0, 39}; // where the sample moves

Project Sample()
{
    ProjectError error;
    std::optional<Project> project = LoadProject(QStringLiteral(TITLER_SAMPLES "/sample.ktitle"), error);
    if (!project || project->video.width != 1920 || project->video.height != 1080)
        std::abort();
    return *project;
}

void Frames(benchmark::State& state)
{
    const Project project = Sample();
    const QTemporaryDir folder;
    const FrameTarget target{folder.path(), QStringLiteral("f"), kRange, static_cast<int>(state.range(0))};
    for (auto _ : state) {
        FrameSequence sequence(project, target);
        while (!sequence.Wait(1000)) {
        }
        if (sequence.Written() != kRange.Count())
            state.SkipWithError("not all frames were written");
    }
    state.counters["frames"] = benchmark::Counter(static_cast<double>(state.iterations()) * kRange.Count(),
                                                  benchmark::Counter::kIsRate);
}
BENCHMARK(Frames)->Arg(1)->Arg(2)->ArgName("threads")->UseRealTime()->Unit(benchmark::kMillisecond);

void Draw(benchmark::State& state)
{
    const Project project = Sample();
    const QSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)) * 9 / 16);
    TitleRenderer renderer;
    int frame = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(renderer.Render(project, kRange.first + frame, size));
        frame = (frame + 1) % kRange.Count();
    }
}
BENCHMARK(Draw)->Arg(1920)->Arg(960)->ArgName("width")->Unit(benchmark::kMillisecond);

using Writer = bool (*)(const QImage& image, const QString& file);

void WritePng(benchmark::State& state, Writer write)
{
    const QImage image = TitleRenderer().Render(Sample(), 74, {1920, 1080});
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("f.png"));
    for (auto _ : state)
        if (!write(image, file))
            state.SkipWithError("not written");
    QImage read(file);
    read.setColorSpace({}); // it takes part in a comparison
    if (read.convertToFormat(image.format()) != image)
        state.SkipWithError("the file holds another picture");
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}
BENCHMARK_CAPTURE(WritePng, ours, [](const QImage& image, const QString& file) {
    return SavePng(image, file).isEmpty();
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WritePng, QImageWriter, [](const QImage& image, const QString& file) {
    return QImageWriter(file, "png").write(image);
})->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
