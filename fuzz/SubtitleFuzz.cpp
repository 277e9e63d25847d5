// A subtitle file of the format FUZZ_FORMAT. Whatever was read and loses nothing when it is written comes
// back.
#include "Require.h"
#include "subtitles/Subtitles.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr auto format = titler::SubtitleFormat::FUZZ_FORMAT;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const titler::SubtitleFile file = titler::ReadSubtitles(bytes, format);
    const auto lines = static_cast<std::size_t>(
        std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; }));
    std::vector<titler::SubtitleRow> rows;
    std::size_t before = 0;
    for (const titler::Cue& cue : file.cues) {
        Require(cue.line > before && cue.line <= lines + 1 && cue.in >= 0 && cue.out >= 0);
        before = cue.line;
        rows.push_back({cue.in, cue.out, cue.text, false, cue.settings, cue.identifier, format});
    }
    before = 0;
    for (const titler::CueFault& fault : file.faults) {
        Require(fault.line >= before && fault.line <= lines + 1);
        before = fault.line;
    }
    const bool losesNothing = titler::SubtitleLosses(rows, format, file.head).empty();
    const std::string written = titler::WriteSubtitles(rows, format, file.head);
    const titler::SubtitleFile again = titler::ReadSubtitles(written, format);
    Require(again.head.blocks == file.head.blocks && again.notes == 0);
    Require(again.cues.size() == rows.size() && again.faults.empty());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Require(again.cues[i].in == rows[i].in && again.cues[i].out == rows[i].out);
        Require(again.cues[i].identifier == rows[i].identifier);
        // WebVTT has no settings in braces: they move behind the times.
        if (format == titler::SubtitleFormat::WebVtt && rows[i].text.find("{\\") != std::string::npos)
            continue;
        Require(again.cues[i].settings == rows[i].settings);
        Require(!losesNothing || again.cues[i].text == rows[i].text);
    }
    return 0;
}
