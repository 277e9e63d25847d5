// How long keeping unsaved work holds the window's thread, with many subtitles.
#include "edit/Document.h"
#include "recovery/Autosave.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "time/Transport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>

using namespace titler;

namespace {

constexpr int kQuiet = 400;                   // milliseconds, until what an edit brings about is done
constexpr AutosavePace kPace{kQuiet + 50, 0}; // after that

double CpuMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Panel
{
    explicit Panel(int rows)
    {
        for (int i = 0; i < rows; ++i) {
            const auto in = static_cast<DWORD>(i * 60);
            subtitles.List().InserItem(-1, L"I thought we never should have sailed north at dawn", in,
                                       in + 40, L"Lower Third");
        }
    }

    Document document;
    Transport transport{document};
    SubtitlePanel subtitles{document, transport};
};

void Wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// What is unsaved is kept once, in a file of its own. Of the turns of the event loop meanwhile the longest
/// is the iteration's time.
class Keeping
{
public:
    explicit Keeping(Panel& panel) : m_autosave(panel.document, panel.subtitles, m_folder.path(), kPace)
    {
        QObject::connect(&m_autosave, &Autosave::Kept, [this] { m_isKept = true; });
    }
    void Run(benchmark::State& state)
    {
        Wait(kQuiet);
        double longest = 0;
        double longestCpu = 0;
        for (m_isKept = false; !m_isKept;) {
            QElapsedTimer timer;
            timer.start();
            const double cpuBegin = CpuMilliseconds();
            QCoreApplication::processEvents();
            longest = std::max(longest, static_cast<double>(timer.nsecsElapsed()) / 1e9);
            longestCpu = std::max(longestCpu, CpuMilliseconds() - cpuBegin);
        }
        state.SetIterationTime(longest);
        double& longestOfAll = state.counters["longest"].value;
        longestOfAll = std::max(longestOfAll, longest * 1000);
        double& longestCpuOfAll = state.counters["longest_cpu"].value;
        longestCpuOfAll = std::max(longestCpuOfAll, longestCpu);
    }

private:
    QTemporaryDir m_folder;
    Autosave m_autosave;
    bool m_isKept = false;
};

void EditTitle(Panel& panel)
{
    panel.document.Edit(EditKind::Single, "title", [](Project& project) { project.title.text += "x"; });
}

// Nothing was kept before.
void AllRows(benchmark::State& state)
{
    for (auto _ : state) {
        Panel panel(static_cast<int>(state.range(0)));
        Keeping keeping(panel);
        EditTitle(panel);
        keeping.Run(state);
    }
}
BENCHMARK(AllRows)->Arg(10'000)->Arg(100'000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

// One row is another one since the last time.
void OneRow(benchmark::State& state)
{
    Panel panel(static_cast<int>(state.range(0)));
    Keeping keeping(panel);
    EditTitle(panel);
    Wait(3 * kQuiet);
    DWORD time = 0;
    for (auto _ : state) {
        panel.subtitles.List().SetTimeCode(static_cast<int>(state.range(0)) / 2, ++time, 1);
        emit panel.subtitles.StepsChanged();
        keeping.Run(state);
    }
}
BENCHMARK(OneRow)->Arg(10'000)->Arg(100'000)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
