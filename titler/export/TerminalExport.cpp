#include "export/TerminalExport.h"

#include "export/FrameSequence.h"
#include "window/Texts.h"

#include <atomic>
#include <csignal>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace titler {
namespace {

constexpr int kPace = 100; // milliseconds between two looks

std::atomic<int> interruption = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void Interrupt(int signal)
{
    interruption = signal;
    std::signal(signal, SIG_DFL);
}

bool IsTerminal()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

void Count(const FrameSequence& sequence)
{
    const QString text =
        Text(kTextFramesDone, {QString::number(sequence.Written()), QString::number(sequence.Total())});
    std::fprintf(stderr, "\r%s", qUtf8Printable(text));
    std::fflush(stderr);
}

} // namespace

int WatchExport(FrameSequence& sequence)
{
    interruption = 0;
    std::signal(SIGINT, Interrupt);
    std::signal(SIGTERM, Interrupt);
    const bool counts = IsTerminal();
    for (bool ended = false; !ended;) {
        ended = sequence.Wait(kPace);
        if (interruption != 0)
            sequence.Cancel();
        if (counts)
            Count(sequence);
    }
    if (counts)
        std::fputc('\n', stderr);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    return interruption;
}

} // namespace titler
