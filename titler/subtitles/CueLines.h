// The lines of a subtitle file, and the times in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace titler {

struct SubtitleFile;

struct CueLine
{
    std::string_view text;  ///< without its end
    std::size_t number = 0; ///< from 1
};

enum class ByteOrderMark
{
    IsSkipped,
    IsText
};

/// Goes through the lines, which end with "\n", "\r\n" or "\r".
class CueLineReader
{
public:
    explicit CueLineReader(std::string_view bytes, ByteOrderMark mark = ByteOrderMark::IsSkipped);

    /// @return false, at the end.
    bool Next(CueLine& line);

private:
    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::size_t m_number = 0;
    // The next ends from m_at on: a file without the one or the other is searched for it once.
    std::size_t m_nextLf = 0;
    std::size_t m_nextCr = 0;
};

struct CueTimes
{
    std::int64_t in;
    std::int64_t out;
    std::string_view settings;
};

/// "00:00:01,000 --> 00:00:02,000 settings": hours may be missing or have up to nine digits, minutes and
/// seconds are below 60, "." is as good as ",", a fraction may be missing and may have any number of digits.
std::optional<CueTimes> ParseCueTimes(std::string_view line);

/// Begins a cue at a line of times, or says that they cannot be read. @return false for the latter.
bool AddCue(SubtitleFile& file, const CueLine& line);

/// Whether a line is meant for times, sound or not: a number, perhaps negative, and a colon before an arrow.
bool IsMeantForTimes(std::string_view line);
/// Whether a line without an arrow stands where times were meant: a time, and "->" or another time behind it.
bool ResemblesTimes(std::string_view line);

/// Whether it has nothing but spaces and tabs.
bool IsBlank(std::string_view line);
/// Whether it has a number, and spaces around it at most.
bool IsNumber(std::string_view line);
/// Without spaces and tabs around it.
std::string_view Trimmed(std::string_view line);

/// Without blank lines at begin and end.
std::span<const CueLine> InnerLines(std::span<const CueLine> lines);

/// The lines as one text: parted by "\n", lines of spaces empty.
std::string JoinedText(std::span<const CueLine> lines);

inline constexpr std::string_view kArrow = "-->";
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace titler
