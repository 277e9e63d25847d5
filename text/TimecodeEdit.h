// What a user types into a time code's cell.
#pragma once

#include "KvVideoFormat.h"

#include <string>
#include <string_view>

namespace kv {

/// The value of a cell without a time code.
inline constexpr std::uint32_t kNoTimecode = 0xFFFFFFFF;

/// How frames are shown. The offset is added for display only; the sum begins again after a day.
struct TimecodeFormat
{
    EKvFrameRate rate = kKvFrameRate25; ///< one of the table
    bool dropFrame = false;
    std::uint32_t offset = 0;
};

/// The text of a cell; empty for kNoTimecode.
std::wstring TimecodeText(std::uint32_t frame, const TimecodeFormat& format);

/// Why a typed text is refused, as numbers of the string table.
inline constexpr std::uint32_t kNoTimecodeText = 20150;         ///< it is no time code
inline constexpr std::uint32_t kImpossibleTimecodeText = 20151; ///< a field is too large
inline constexpr std::uint32_t kLeftOutTimecodeText = 20152;    ///< drop frame has no such label
inline constexpr std::uint32_t kOutOfRangeTimecodeText = 20153; ///< a step leads below 0 or too far

struct TimecodeEntry
{
    std::uint32_t frame;   ///< the cell's new value; the present one when the text is refused
    std::uint32_t refusal; ///< one of the texts above; 0 when the text is accepted
};

/// Reads a typed or pasted text.
/// - The cell's own text keeps the value, also one beyond a day; an empty one gives kNoTimecode.
/// - "1:02:03:04", "1020304": the frame that is shown so, 0 … a day − 1.
/// - "+100", "-1:00": so many frames, seconds … after or before the present value, 0 for an empty cell. A
///   number alone is frames; fields count whole frames of the rate and may be larger than a label's; the
///   result lies in 0 … 0xFFFFFFFE.
/// @param present the cell's value, or kNoTimecode.
TimecodeEntry ReadTimecodeEntry(std::wstring_view text, std::uint32_t present, const TimecodeFormat& format);

/// Whether a text has all four fields: pasted, it replaces a cell's text instead of being inserted.
bool IsWholeTimecode(std::wstring_view text);

} // namespace kv
