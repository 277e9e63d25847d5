// What is done to a subtitle's text and times.
#pragma once

#include "project/TimeCode.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <utility>

namespace titler {

/// Parts a text at the line break, else the blank, that is nearest to that part of its length (0 to 1); the
/// break goes. A text without any is parted between two characters.
std::pair<QString, QString> SplitSubtitle(const QString& text, double part);

/// Reads a step in time: "+10" and "-10" are frames, "-1:00" is a second back; without a sign forwards.
/// @return frames; nothing for what is no time code.
std::optional<std::int64_t> ShiftOf(const QString& text, EKvFrameRate rate);

/// The frame that is shown at another rate when this one is.
DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to);

} // namespace titler
