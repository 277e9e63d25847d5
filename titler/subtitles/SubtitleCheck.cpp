#include "subtitles/SubtitleCheck.h"

#include <algorithm>

namespace titler {

std::vector<SubtitleFaults> CheckSubtitles(const std::vector<TimedText>& rows, double framesPerSecond)
{
    std::vector<SubtitleFaults> faults(rows.size());
    std::vector<std::size_t> byIn;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const TimedText& row = rows[i];
        if (row.characters == 0)
            faults[i].kinds |= kSubtitleEmpty;
        if (row.in < 0)
            continue;
        byIn.push_back(i);
        if (row.out < 0)
            continue;
        if (row.out <= row.in)
            faults[i].kinds |= kSubtitleNegative;
        else if (row.characters * framesPerSecond > kReadingSpeed * static_cast<double>(row.out - row.in))
            faults[i].kinds |= kSubtitleFast;
    }
    std::stable_sort(byIn.begin(), byIn.end(),
                     [&](std::size_t a, std::size_t b) { return rows[a].in < rows[b].in; });
    for (std::size_t i = 1; i < byIn.size(); ++i) {
        const TimedText& row = rows[byIn[i - 1]];
        const TimedText& next = rows[byIn[i]];
        if (row.out <= next.in)
            continue;
        const std::int64_t end = next.out > next.in ? std::min(row.out, next.out) : row.out;
        SubtitleFaults& found = faults[byIn[i - 1]];
        found.kinds |= kSubtitleOverlap;
        found.overlapped = static_cast<int>(byIn[i]);
        found.overlapSeconds = static_cast<double>(end - next.in) / framesPerSecond;
    }
    return faults;
}

} // namespace titler
