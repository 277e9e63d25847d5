/// @file
/// Frame counts as time codes and back: "01:02:03:04", with drop frame "01:02:03;04".
#pragma once

#include "KvVideoFormat.h"

/// Time codes of hours, minutes, seconds and frames, 00:00:00:00 to the last frame of 23:59:59.
///
/// A second counts the whole frames of the rate: 24 at 23.976, 30 at 29.97, 60 at 59.94. Drop frame exists at
/// the latter two: so that the time code keeps to the clock, each minute except every tenth one has no frames
/// 00 and 01 (at 29.97) or 00 to 03 (at 59.94). At the other rates `dropFrame` is ignored.
struct KvTimecode
{
    /// The time code of a frame, counted from 0. Frames beyond a day begin again at 00:00:00:00.
    /// @param frame 0xFFFFFFFF is no time code. @param rate how frames are counted. @param dropFrame see
    /// above.
    /// @param text receives "HH:MM:SS:FF", with drop frame "HH:MM:SS;FF".
    /// @return false, with an empty text, for no time code and for a rate outside the table.
    KV_API static bool ToText(DWORD frame, EKvFrameRate rate, bool dropFrame, std::wstring& text);

    /// The frame that a time code names. Missing fields are the leading ones: "1:12" is one second and twelve
    /// frames. ":" and ";" are the same; digits without them are read in pairs from the right ("112"). White
    /// space around the text does not count.
    /// @param text what was typed. @param rate how frames are counted. @param dropFrame see above.
    /// @param frame receives the count from 0.
    /// @return false, with `frame` unchanged, for a text that is no time code, for one that cannot exist (25
    /// frames at 25, 60 seconds, 24 hours), for one that drop frame leaves out and for a rate outside the
    /// table.
    KV_API static bool FromText(const std::wstring& text, EKvFrameRate rate, bool dropFrame, DWORD& frame);
};
