// A subtitle's time codes, as its row and its undo steps keep them. Pure.
#pragma once

#include "text/TimecodeEdit.h"

#include <cstdint>
#include <string>

namespace kv {

/// Frame counts, or kNoTimecode.
struct SubtitleTimes
{
    std::uint32_t in = kNoTimecode;
    std::uint32_t out = kNoTimecode;

    friend bool operator==(const SubtitleTimes&, const SubtitleTimes&) = default;
};

/// In 64 bits; 0, what a new row has, for a subtitle without time codes.
constexpr std::uint64_t PackTimes(const SubtitleTimes& times)
{
    return std::uint64_t{~times.in} << 32 | std::uint64_t{~times.out};
}
constexpr SubtitleTimes UnpackTimes(std::uint64_t packed)
{
    return {~static_cast<std::uint32_t>(packed >> 32), ~static_cast<std::uint32_t>(packed)};
}

/// In decimal; empty for none.
inline std::wstring FrameValue(std::uint32_t frame)
{
    return frame == kNoTimecode ? std::wstring() : std::to_wstring(frame);
}
/// @param value from FrameValue.
inline std::uint32_t FrameOfValue(const std::wstring& value)
{
    return value.empty() ? kNoTimecode : static_cast<std::uint32_t>(std::stoul(value));
}

/// Compares as the frames do, none last.
inline std::wstring FrameSortKey(std::uint32_t frame)
{
    return {static_cast<wchar_t>(frame >> 16), static_cast<wchar_t>(frame & 0xFFFFu)};
}

} // namespace kv
