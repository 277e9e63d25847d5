// Markup in a subtitle's text, and what becomes of it in another format.
#pragma once

#include "subtitles/Subtitles.h"

#include <string>
#include <string_view>

namespace titler {

/// The text without tags, times of words and settings in braces: "<i>", "</c>", "<00:01.000>", "{\\an8}".
std::string WithoutMarkup(std::string_view text);

struct WrittenText
{
    std::string text;
    std::string settings; ///< to stand behind the times
    bool loses = false;   ///< markup that the format does not know was taken out
};

/// A row's text and settings as that format, SubRip or WebVTT, has them. In the format that they were read in
/// they stay, but for settings in braces, which WebVTT does not know; and a plain text has no markup.
/// SubRip's "{\\anN}" becomes WebVTT's settings; other settings mean nothing in the other format.
WrittenText MarkupIn(const SubtitleRow& row, SubtitleFormat format);

} // namespace titler
