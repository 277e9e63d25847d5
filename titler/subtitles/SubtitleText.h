// What is done to a subtitle's text and times.
#pragma once

#include "project/TimeCode.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace titler {

/// No time code, as the list has it.
inline constexpr DWORD kNoTime = 0xFFFFFFFF;

/// A row's time codes, frames.
struct SubtitleTimes
{
    DWORD in = kNoTime;
    DWORD out = kNoTime;

    bool operator==(const SubtitleTimes&) const = default;
};

/// Where a row is parted: at the play head where that is within its time, else in the middle of it.
/// @return kNoTime for a row without a time that could be parted.
DWORD CutOf(const SubtitleTimes& times, DWORD playHead);
/// Which part of the row's time lies before a cut; half of it without one.
double PartBefore(const SubtitleTimes& times, DWORD cut);
/// From the first in time to the last out time.
SubtitleTimes MergedTimes(const std::vector<SubtitleTimes>& rows);
/// The times moved by so many frames; what is none stays so.
/// @return nothing where a time would come before frame 0 or beyond the last frame that a row can hold.
std::optional<SubtitleTimes> Shifted(const SubtitleTimes& times, std::int64_t frames);

/// Parts a text at the line break, else the blank, that is nearest to that part of its length (0 to 1); the
/// break goes. A text without any is parted between two characters.
std::pair<QString, QString> SplitSubtitle(const QString& text, double part);

/// Reads a step in time: "+10" and "-10" are frames, "-1:00" is a second back; without a sign forwards.
/// @return frames; nothing for what is no time code.
std::optional<std::int64_t> ShiftOf(const QString& text, EKvFrameRate rate);

/// The frame that is shown at another rate when this one is.
DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to);

} // namespace titler
