#include "subtitles/CueLines.h"
#include "subtitles/SubtitleMarkup.h"
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

/// Plain text that was read as such keeps what only resembles markup.
bool HasMarkup(const SubtitleRow& row)
{
    return row.origin != SubtitleFormat::PlainText && WithoutMarkup(row.text) != row.text;
}

bool LosesInPlainText(const SubtitleRow& row, SubtitleLossKind kind)
{
    switch (kind) {
    case SubtitleLossKind::Template:
        return row.hasTemplate;
    case SubtitleLossKind::Settings:
        return !row.settings.empty();
    case SubtitleLossKind::Identifier:
        return !row.identifier.empty() && !IsNumber(row.identifier);
    case SubtitleLossKind::Times:
        return row.in >= 0 || row.out >= 0;
    case SubtitleLossKind::LineBreaks:
        return row.text.find_first_of("\n\r") != row.text.npos;
    case SubtitleLossKind::Markup:
        return HasMarkup(row);
    default:
        return false;
    }
}

bool Loses(const SubtitleRow& row, const WrittenText& written, const Lines& lines, SubtitleLossKind kind,
           SubtitleFormat format)
{
    if (format == SubtitleFormat::PlainText)
        return LosesInPlainText(row, kind);
    const std::span<const CueLine> inner = InnerLines(lines);
    switch (kind) {
    case SubtitleLossKind::NoTimes:
        return !HasTimes(row);
    case SubtitleLossKind::Template:
        return row.hasTemplate;
    case SubtitleLossKind::Settings:
        return !row.settings.empty() && row.origin != format;
    case SubtitleLossKind::Identifier:
        return !row.identifier.empty() && format == SubtitleFormat::SubRip && !IsNumber(row.identifier);
    case SubtitleLossKind::EdgeLines:
        return inner.size() < lines.size() && !written.text.empty();
    case SubtitleLossKind::SpacedLines:
        return std::any_of(inner.begin(), inner.end(),
                           [](const CueLine& l) { return !l.text.empty() && IsBlank(l.text); });
    case SubtitleLossKind::Arrow:
        return format == SubtitleFormat::SubRip &&
               std::any_of(inner.begin(), inner.end(),
                           [](const CueLine& l) { return IsMeantForTimes(l.text); });
    case SubtitleLossKind::Markup:
        return written.loses;
    default:
        return false;
    }
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

void AppendCue(std::string& out, const SubtitleRow& row, bool isVtt)
{
    if (isVtt && !row.identifier.empty())
        (out += row.identifier) += '\n';
    AppendTime(out, row.in, isVtt ? '.' : ',');
    (out += ' ').append(kArrow) += ' ';
    AppendTime(out, row.out, isVtt ? '.' : ',');
    const WrittenText written = MarkupIn(row, isVtt ? SubtitleFormat::WebVtt : SubtitleFormat::SubRip);
    if (!written.settings.empty())
        (out += ' ') += written.settings;
    out += '\n';
    const Lines lines = LinesOf(written.text);
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

std::string WritePlainText(const std::vector<SubtitleRow>& rows)
{
    std::string out;
    for (const SubtitleRow& row : rows) {
        const std::string text = HasMarkup(row) ? WithoutMarkup(row.text) : row.text;
        const Lines lines = LinesOf(text);
        for (const CueLine& line : lines)
            (out += &line == &lines.front() ? "" : " ") += line.text;
        out += '\n';
    }
    return out;
}

} // namespace

std::vector<SubtitleLoss> SubtitleLosses(const std::vector<SubtitleRow>& rows, SubtitleFormat format,
                                         const SubtitleHead& head)
{
    using enum SubtitleLossKind;
    constexpr SubtitleLossKind kinds[] = {NoTimes,  Template,   EdgeLines, SpacedLines, Arrow,
                                          Settings, Identifier, Times,     LineBreaks,  Markup};
    std::vector<SubtitleLoss> losses(std::size(kinds));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const WrittenText written = MarkupIn(rows[row], format);
        const Lines lines = LinesOf(written.text);
        for (std::size_t i = 0; i < std::size(kinds); ++i) {
            losses[i].kind = kinds[i];
            if (Loses(rows[row], written, lines, kinds[i], format))
                losses[i].rows.push_back(row);
        }
    }
    for (SubtitleLoss& loss : losses)
        loss.count = loss.rows.size();
    if (format != SubtitleFormat::WebVtt) {
        losses.push_back({Title, head.SaysMore() ? 1u : 0u, {}});
        losses.push_back({Blocks, head.blocks.size(), {}});
    }
    std::erase_if(losses, [](const SubtitleLoss& loss) { return loss.count == 0; });
    return losses;
}

std::string WriteSubtitles(const std::vector<SubtitleRow>& rows, SubtitleFormat format,
                           const SubtitleHead& head)
{
    if (format == SubtitleFormat::PlainText)
        return WritePlainText(rows);
    const bool isVtt = format == SubtitleFormat::WebVtt;
    std::string out;
    if (isVtt) {
        out = (head.title.empty() ? "WEBVTT" : head.title) + "\n\n";
        for (const std::string& block : head.blocks)
            out += block + "\n\n";
    }
    std::int64_t number = 0;
    for (const SubtitleRow& row : rows) {
        if (!HasTimes(row))
            continue;
        if (!isVtt)
            out += std::to_string(++number) + '\n';
        AppendCue(out, row, isVtt);
    }
    return out;
}

} // namespace titler
