// The numbers of a time code, and the frames that carry them.
#pragma once

#include "KvVideoFormat.h"

#include <array>
#include <optional>
#include <string_view>

namespace kv {

/// How a rate counts. All zero for a rate outside the table.
struct TimecodeCount
{
    std::uint32_t nominal; ///< frames that a second of the time code counts
    std::uint32_t dropped; ///< numbers that a minute leaves out, unless it is a tenth one

    std::uint32_t FramesOfTenMinutes() const { return 600 * nominal - 9 * dropped; }
    std::uint32_t FramesOfDay() const { return 144 * FramesOfTenMinutes(); }
};
TimecodeCount CountOfTimecode(EKvFrameRate rate, bool dropFrame);

/// Hours, minutes, seconds and frames.
using TimecodeFields = std::array<std::uint32_t, 4>;

/// The text without white space around it.
std::wstring_view TrimTimecode(std::wstring_view text);

/// The numbers of one or two digits between ":" or ";", or pairs of digits from the right; missing ones are
/// the leading ones, and 0. @return nothing for any other text. The numbers may be impossible ones.
std::optional<TimecodeFields> FieldsOfTimecode(std::wstring_view trimmed);

enum class TimecodeFault
{
    None,
    NoTimecode, ///< the text is none at all
    Impossible, ///< a field is too large
    LeftOut     ///< drop frame has no such label
};

struct TimecodeFrame
{
    std::uint32_t frame; ///< 0 … a day − 1; meaningless with a fault
    TimecodeFault fault;
};
/// The frame that a label names. `count.nominal` is above 0.
TimecodeFrame FrameOfTimecode(std::wstring_view text, TimecodeCount count);

} // namespace kv
