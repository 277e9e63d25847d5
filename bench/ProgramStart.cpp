#include "ProgramStart.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace {

/// Milliseconds of a process until it says that its first frame is painted, and of these on a processor.
struct Start
{
    double time = 0;
    double cpuTime = 0;
};

// Nothing when the program does not say so.
std::optional<Start> StartProgram(const Program& program)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(QCoreApplication::applicationDirPath() + u'/' + program.name, program.arguments);
    if (!process.waitForReadyRead())
        return std::nullopt;
    const auto time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    if (!process.waitForFinished() || process.exitCode() != 0)
        return std::nullopt;
    return Start{time, process.readAll().trimmed().toDouble()};
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace

void CompareStarts(benchmark::State& state, const Program& plain, const Program& other)
{
    const Program* programs[] = {&plain, &other};
    std::vector<double> times[2];
    std::vector<double> cpuTimes[2];
    for (const Program* program : programs)
        StartProgram(*program); // reads the files
    for (auto _ : state) {
        for (std::size_t i = 0; i < 2; ++i) {
            const std::optional<Start> start = StartProgram(*programs[i]);
            if (!start) {
                state.SkipWithError("no window");
                return;
            }
            times[i].push_back(start->time);
            cpuTimes[i].push_back(start->cpuTime);
        }
        state.SetIterationTime(times[1].back() / 1000);
    }
    state.counters["plain"] = Median(times[0]);
    state.counters["other"] = Median(times[1]);
    state.counters["more"] = Median(times[1]) - Median(times[0]);
    state.counters["plain_cpu"] = Median(cpuTimes[0]);
    state.counters["other_cpu"] = Median(cpuTimes[1]);
    state.counters["more_cpu"] = Median(cpuTimes[1]) - Median(cpuTimes[0]);
}
