// titler from its start to the first frame that shows the sample project, beside a program with an empty
// window of the same size: without a display, and in an X server of our own where there is one.
#include "ProgramStart.h"

#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int kStarts = 20; // of each program

void Compare(benchmark::State& state)
{
    const QTemporaryDir own; // neither settings nor unsaved work of the user
    qputenv("XDG_CONFIG_HOME", own.path().toUtf8());
    qputenv("XDG_DATA_HOME", own.path().toUtf8());
    CompareStarts(state, {"first_window_plain"},
                  {"titler", {TITLER_SAMPLES "/sample.ktitle", "--first-frame", "--size", "1920x1080"}});
}

void Offscreen(benchmark::State& state)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Compare(state);
}
BENCHMARK(Offscreen)->Iterations(kStarts)->UseManualTime()->Unit(benchmark::kMillisecond);

void Display(benchmark::State& state)
{
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1920x1080x24", "-nolisten", "tcp", "-noreset"});
    if (!server.waitForReadyRead()) {
        state.SkipWithError("no Xvfb");
        return;
    }
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    Compare(state);
    server.terminate();
    server.waitForFinished();
}
BENCHMARK(Display)->Iterations(kStarts)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
