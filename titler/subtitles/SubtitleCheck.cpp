#include "subtitles/SubtitleCheck.h"

#include <algorithm>

namespace titler {

std::vector<unsigned> CheckSubtitles(const std::vector<TimedText>& rows, double framesPerSecond)
{
    std::vector<unsigned> faults(rows.size());
    std::vector<std::size_t> byIn;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const TimedText& row = rows[i];
        if (row.in < 0)
            continue;
        byIn.push_back(i);
        if (row.out < 0)
            continue;
        if (row.out <= row.in)
            faults[i] |= kSubtitleNegative;
        else if (row.characters * framesPerSecond > kReadingSpeed * static_cast<double>(row.out - row.in))
            faults[i] |= kSubtitleFast;
    }
    std::stable_sort(byIn.begin(), byIn.end(),
                     [&](std::size_t a, std::size_t b) { return rows[a].in < rows[b].in; });
    for (std::size_t i = 1; i < byIn.size(); ++i) {
        if (rows[byIn[i - 1]].out > rows[byIn[i]].in)
            faults[byIn[i - 1]] |= kSubtitleOverlap;
    }
    return faults;
}

} // namespace titler
