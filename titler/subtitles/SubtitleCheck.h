// What is wrong with subtitles.
#pragma once

#include <cstdint>
#include <vector>

namespace titler {

/// One subtitle as the checks see it. Frames; nothing where there is no time code.
struct TimedText
{
    std::int64_t in = -1; ///< -1: none
    std::int64_t out = -1;
    int characters = 0; ///< without line breaks and markup; 0: there is nothing to read
};

/// What to mark a row with; several may hold.
enum SubtitleFault : unsigned
{
    kSubtitleNegative = 1, ///< it ends before it begins, or when it begins
    kSubtitleOverlap = 2,  ///< another one begins before it ends
    kSubtitleFast = 4,     ///< too many characters in a second
    kSubtitleEmpty = 8,    ///< nothing to read
};

struct SubtitleFaults
{
    unsigned kinds = 0;        ///< SubtitleFault, joined by |
    int overlapped = -1;       ///< of kSubtitleOverlap: the other row
    double overlapSeconds = 0; ///< how long both stand

    bool operator==(const SubtitleFaults&) const = default;
};

/// The most characters that are read in a second.
inline constexpr double kReadingSpeed = 20;

/// The faults of each row. Rows may stand in any order; of two that overlap the earlier one is marked.
/// @param framesPerSecond above 0.
std::vector<SubtitleFaults> CheckSubtitles(const std::vector<TimedText>& rows, double framesPerSecond);

} // namespace titler
