#include "subtitles/CueLines.h"
#include "subtitles/Subtitles.h"
#include "subtitles/VttText.h"

#include <algorithm>
#include <iterator>

namespace titler {
namespace {

using Lines = std::vector<CueLine>;

Lines LinesOf(std::string_view text)
{
    Lines lines;
    // An empty last line has no end that the reader would see.
    const bool endsWithBreak = !text.empty() && (text.back() == '\n' || text.back() == '\r');
    // A byte order mark is a character here.
    CueLineReader reader(text, ByteOrderMark::IsText);
    for (CueLine line; reader.Next(line);)
        lines.push_back(line);
    if (endsWithBreak || text.empty())
        lines.emplace_back();
    return lines;
}

bool HasTimes(const SubtitleRow& row)
{
    return row.in >= 0 && row.out >= 0;
}

bool Loses(const SubtitleRow& row, const Lines& lines, SubtitleLossKind kind, SubtitleFormat format)
{
    const std::span<const CueLine> inner = InnerLines(lines);
    switch (kind) {
    case SubtitleLossKind::NoTimes:
        return !HasTimes(row);
    case SubtitleLossKind::Template:
        return row.hasTemplate;
    case SubtitleLossKind::EdgeLines:
        return inner.size() < lines.size() && !row.text.empty();
    case SubtitleLossKind::SpacedLines:
        return std::any_of(inner.begin(), inner.end(),
                           [](const CueLine& l) { return !l.text.empty() && IsBlank(l.text); });
    case SubtitleLossKind::Arrow:
        return format == SubtitleFormat::SubRip &&
               std::any_of(inner.begin(), inner.end(),
                           [](const CueLine& l) { return IsMeantForTimes(l.text); });
    }
    return false;
}

void AppendNumber(std::string& out, std::int64_t number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    out.append(width - std::min(width, digits.size()), '0');
    out += digits;
}

void AppendTime(std::string& out, std::int64_t time, char decimalSign)
{
    AppendNumber(out, time / 3600000, 2);
    out += ':';
    AppendNumber(out, time / 60000 % 60, 2);
    out += ':';
    AppendNumber(out, time / 1000 % 60, 2);
    out += decimalSign;
    AppendNumber(out, time % 1000, 3);
}

/// Arrows that would make times of the line get a single dash.
void AppendSubRipLine(std::string& out, std::string_view line)
{
    if (!IsMeantForTimes(line)) {
        out += line;
        return;
    }
    const std::size_t begin = out.size();
    for (const char c : line) {
        while (c == '>' && out.size() >= begin + 2 && out.compare(out.size() - 2, 2, "--") == 0)
            out.pop_back();
        out += c;
    }
}

} // namespace

std::vector<SubtitleLoss> SubtitleLosses(const std::vector<SubtitleRow>& rows, SubtitleFormat format)
{
    constexpr SubtitleLossKind kinds[] = {SubtitleLossKind::NoTimes, SubtitleLossKind::Template,
                                          SubtitleLossKind::EdgeLines, SubtitleLossKind::SpacedLines,
                                          SubtitleLossKind::Arrow};
    std::vector<SubtitleLoss> losses(std::size(kinds));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const Lines lines = LinesOf(rows[row].text);
        for (std::size_t i = 0; i < std::size(kinds); ++i) {
            losses[i].kind = kinds[i];
            if (Loses(rows[row], lines, kinds[i], format))
                losses[i].rows.push_back(row);
        }
    }
    std::erase_if(losses, [](const SubtitleLoss& loss) { return loss.rows.empty(); });
    return losses;
}

std::string WriteSubtitles(const std::vector<SubtitleRow>& rows, SubtitleFormat format)
{
    const bool isVtt = format == SubtitleFormat::WebVtt;
    std::string out = isVtt ? "WEBVTT\n\n" : "";
    std::int64_t number = 0;
    for (const SubtitleRow& row : rows) {
        if (!HasTimes(row))
            continue;
        if (!isVtt)
            out += std::to_string(++number) + '\n';
        AppendTime(out, row.in, isVtt ? '.' : ',');
        (out += ' ').append(kArrow) += ' ';
        AppendTime(out, row.out, isVtt ? '.' : ',');
        out += '\n';
        const Lines lines = LinesOf(row.text);
        for (const CueLine& line : InnerLines(lines)) {
            // An empty line would end the cue.
            if (IsBlank(line.text))
                out += ' ';
            else if (isVtt)
                AppendVttText(out, line.text);
            else
                AppendSubRipLine(out, line.text);
            out += '\n';
        }
        out += '\n';
    }
    return out;
}

} // namespace titler
