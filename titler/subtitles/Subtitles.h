// Subtitle files: SubRip and WebVTT as cues, and cues as files. Pure: the standard library only.
//
// Texts are UTF-8 and keep their tags; times are milliseconds from the begin. What is broken costs its own
// cue and nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace titler {

enum class SubtitleFormat
{
    SubRip,
    WebVtt,
    PlainText ///< a row a line, without times
};

struct Cue
{
    std::int64_t in = 0;    ///< milliseconds, 0 or more; -1 in plain text
    std::int64_t out = 0;   ///< likewise; may lie before `in`, as the file has it
    std::string text;       ///< lines parted by "\n", without blank ones at its begin and end; may be empty
    std::string settings;   ///< what stands behind the times: positions, alignment, regions
    std::string identifier; ///< WebVTT's name of the cue; SubRip's numbers are not kept
    std::size_t line = 0;   ///< of its times, from 1; of its text in plain text
};

enum class CueFaultKind
{
    NoHeader, ///< a WebVTT file does not begin with "WEBVTT"; it is read nevertheless
    NoTimes,  ///< text without a line of times
    BadTimes  ///< a line of times that cannot be read
};

struct CueFault
{
    std::size_t line; ///< from 1
    CueFaultKind kind;
    friend bool operator==(const CueFault&, const CueFault&) = default;
};

/// What stands before a WebVTT file's cues.
struct SubtitleHead
{
    std::string title; ///< "WEBVTT" and what follows it up to the first empty line; may be empty
    std::vector<std::string> blocks; ///< style sheets and regions, wherever they stood; lines parted by "\n"

    /// Whether there is more to it than a file needs.
    bool SaysMore() const;
    friend bool operator==(const SubtitleHead&, const SubtitleHead&) = default;
};

struct SubtitleFile
{
    std::vector<Cue> cues;        ///< in the file's order
    std::vector<CueFault> faults; ///< what was skipped, by ascending lines
    SubtitleHead head;
    std::size_t notes = 0; ///< WebVTT's, which are skipped
};

/// A file's format by its begin: "WEBVTT", perhaps behind a byte order mark, is WebVTT, all else SubRip.
SubtitleFormat SubtitleFormatOf(std::string_view utf8);
/// The same for a file that says it is a plain text: without a line of times it is one.
SubtitleFormat SubtitleFormatOfText(std::string_view utf8);

/// Reads SubRip as it is met: any line ends, missing numbers and blank lines, "." for ",", no hours,
/// fractions of any length. A blank line inside a text belongs to it, unless a number or times, sound or not,
/// follow.
SubtitleFile ReadSubRip(std::string_view utf8);

/// Reads WebVTT. Character references are resolved; "," is taken for ".".
SubtitleFile ReadWebVtt(std::string_view utf8);

/// Reads lines. There is no byte order mark: it would be a character.
SubtitleFile ReadPlainText(std::string_view utf8);

SubtitleFile ReadSubtitles(std::string_view utf8, SubtitleFormat format);

/// What a file cannot carry.
enum class SubtitleLossKind
{
    NoTimes,     ///< the row has no in or no out time, and is left out
    Template,    ///< its template's name
    EdgeLines,   ///< blank lines at the begin or end of its text
    SpacedLines, ///< a line of spaces becomes an empty one
    Arrow,       ///< "-->" becomes "->" in a line that would be taken for times
    Settings,    ///< positions and alignment of another format
    Identifier,  ///< the cue's name; a number is none where the format has its own
    Times,       ///< plain text has none
    LineBreaks,  ///< they become blanks in plain text
    Markup,      ///< that the format does not know; plain text has none
    Title,       ///< what stands in the head behind "WEBVTT"
    Blocks,      ///< style sheets and regions
    Notes,       ///< of the file that is overwritten
    Skipped,     ///< places of that file which could not be read
    Replaced     ///< its characters which could not be read
};

struct SubtitleLoss
{
    SubtitleLossKind kind;
    std::size_t count;             ///< of rows, blocks, notes, places or characters
    std::vector<std::size_t> rows; ///< ascending; none for the head
};

struct SubtitleRow
{
    static constexpr std::int64_t kNoTime = -1;

    std::int64_t in = kNoTime; ///< milliseconds; below 0: none
    std::int64_t out = kNoTime;
    std::string text; ///< UTF-8; lines parted by "\n", "\r\n" or "\r"
    bool hasTemplate = false;
    std::string settings = {}; ///< as Cue has them; they mean something in `origin` only
    std::string identifier = {};
    SubtitleFormat origin = SubtitleFormat::SubRip; ///< in that format the row was read
};

/// The losses that writing these rows in that format brings, by kind; none: reading the file gives the rows'
/// texts, times, settings and names and the head again. (In WebVTT "{\\an8}" is a setting then.)
std::vector<SubtitleLoss> SubtitleLosses(const std::vector<SubtitleRow>& rows, SubtitleFormat format,
                                         const SubtitleHead& head = {});

/// The file's bytes, without a byte order mark, with "\n" as line end.
/// @param head for WebVTT.
std::string WriteSubtitles(const std::vector<SubtitleRow>& rows, SubtitleFormat format,
                           const SubtitleHead& head = {});

} // namespace titler
