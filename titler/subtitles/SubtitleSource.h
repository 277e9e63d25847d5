// What a list of subtitles does not show of the file that its rows came from.
#pragma once

#include "subtitles/Subtitles.h"
#include "subtitles/TextEncoding.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace titler {

struct SubtitleSource
{
    /// Of a row, by the list's key for it: a row that undo brings back has it again.
    struct Row
    {
        std::int64_t in = SubtitleRow::kNoTime; ///< milliseconds, which are finer than the list's frames
        std::int64_t out = SubtitleRow::kNoTime;
        std::string settings = {};
        std::string identifier = {};
    };

    SubtitleFormat format = SubtitleFormat::SubRip;
    SubtitleHead head = {};
    std::vector<SubtitleLoss> unread = {}; ///< what is in the file and has no place here
    TextForm form = {};
    std::unordered_map<std::uint64_t, Row> rows = {};

    /// A row that was split off stands where the other does; its name and its times are its own.
    void ShareSettings(std::uint64_t from, std::uint64_t to)
    {
        if (const auto row = rows.find(from); row != rows.end() && !row->second.settings.empty()) {
            const std::string settings = row->second.settings; // a new row moves the others
            rows[to].settings = settings;
        }
    }
};

} // namespace titler
