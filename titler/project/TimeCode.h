// Frames as time codes, and frame rates as exact fractions.
#pragma once

#include "KvVideoFormat.h"

#include <QString>

#include <optional>

namespace titler {

/// Frames per second.
struct FrameRate
{
    int numerator;
    int denominator;
    int nominal;    ///< frames that a second of the time code counts
    bool dropFrame; ///< the time code leaves numbers out, so that it keeps to the clock
    EKvFrameRate rate;

    double PerSecond() const { return static_cast<double>(numerator) / denominator; }
};
/// @return 25 frames per second for a rate outside the table.
FrameRate FrameRateOf(EKvFrameRate rate);

/// The frame that is shown that long after frame 0; rounded down, exact for any time. Negative times are 0.
qint64 FrameAtTime(qint64 nanoseconds, const FrameRate& rate);
/// The first time at which that frame is shown.
qint64 TimeOfFrame(qint64 frame, const FrameRate& rate);

/// The frame that begins nearest to that time, 0 … 2^32 − 2: what a file's times mean. Negative times are 0.
quint32 FrameAtMilliseconds(qint64 milliseconds, const FrameRate& rate);
/// A time for a file, rounded down: a player that shows the file changes with this very frame, not with the
/// next. FrameAtMilliseconds gives the frame again.
qint64 MillisecondsOfFrame(quint32 frame, const FrameRate& rate);

/// "00:00:01:12"; with drop frame "00:00:01;12". Hours go on beyond 99.
QString TimeCode(int frame, const FrameRate& rate);

/// Reads what a user types: "1:12" and "1.12" are one second and twelve frames, as are the digits "112" that
/// are read in pairs from the right. A number that drop frame leaves out is the frame that follows.
/// @return nothing for what is no time code, or lies beyond the frames that an int counts.
std::optional<int> ParseTimeCode(const QString& text, const FrameRate& rate);

/// The frame that carries the time code of `label` counted frames: hours, minutes, seconds and frames without
/// gaps. A number that drop frame leaves out is the frame that follows.
qint64 FrameOfLabel(qint64 label, const FrameRate& rate);

} // namespace titler
