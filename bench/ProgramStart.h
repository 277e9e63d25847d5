// How long programs take from their start until they say that their first frame is painted.
#pragma once

#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

struct Program
{
    QString name; ///< beside this one
    QStringList arguments = {};
};

/// Starts the two in turn, so that both meet the machine's other work, once an iteration after one start each
/// that only reads the files. Each has to print how many milliseconds of CPU time it took when its frame is
/// painted, and to end. The iteration's time is that of `other`; the counters are medians in milliseconds:
/// `plain`, `other`, `more`, and the same as CPU time.
void CompareStarts(benchmark::State& state, const Program& plain, const Program& other);
