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

/// Where markup stands in a text: tags in angle brackets, and settings in braces that begin with "\\".
struct Markup
{
    qsizetype begin;
    qsizetype end; ///< behind its last character

    bool operator==(const Markup&) const = default;
};
std::vector<Markup> MarkupOf(const QString& text);
/// "{\\i1}", "{\\b1}", "{\\u1}" and their ends as tags; all else stays.
QString WithTags(const QString& text);
/// The text as it is read: without markup.
QString PlainSubtitle(const QString& text);
/// How many characters are read, as a reader counts them: whatever belongs to a letter is one with it. Line
/// breaks do not count.
int CharactersOf(const QString& text);

/// Parts a text at the line break, else the blank, that is nearest to that part of its length (0 to 1); the
/// break goes. A text without any is parted between two characters. Markup stays whole: tags that are open
/// there are closed in the first part and opened again in the second, which has the settings in braces, too.
std::pair<QString, QString> SplitSubtitle(const QString& text, double part);

/// Reads a step in time: "+10" and "-10" are frames, "-1:00" is a second back; without a sign forwards.
/// Hours, minutes and seconds are those that labels count: with drop frame the clock's, to the nearest frame.
/// @return frames; nothing for what is no time code.
std::optional<std::int64_t> ShiftOf(const QString& text, EKvFrameRate rate);

/// The frame at another rate that begins nearest to where this one begins.
DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to);
/// The frame at another rate that is shown when this one begins.
DWORD ShownAtRate(DWORD frame, const FrameRate& from, const FrameRate& to);
/// The first frame at another rate that begins no earlier than this one.
DWORD FirstAtRate(DWORD frame, const FrameRate& from, const FrameRate& to);
/// "25", "29.97".
QString RateText(const FrameRate& rate);

} // namespace titler
