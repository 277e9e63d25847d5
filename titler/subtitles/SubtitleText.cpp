#include "subtitles/SubtitleText.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

// The place of the break that is nearest to `wanted`; -1 for none.
qsizetype NearestOf(const QString& text, QChar wantedBreak, qsizetype wanted)
{
    qsizetype nearest = -1;
    for (qsizetype at = text.indexOf(wantedBreak); at >= 0; at = text.indexOf(wantedBreak, at + 1)) {
        if (nearest < 0 || std::abs(at - wanted) < std::abs(nearest - wanted))
            nearest = at;
    }
    return nearest;
}

} // namespace

std::pair<QString, QString> SplitSubtitle(const QString& text, double part)
{
    const auto wanted = static_cast<qsizetype>(std::lround(static_cast<double>(text.size()) * part));
    for (const QChar breaks : {QChar(u'\n'), QChar(u' ')}) {
        const qsizetype at = NearestOf(text, breaks, wanted);
        if (at >= 0)
            return {text.left(at), text.mid(at + 1)};
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    characters.setPosition(wanted);
    const qsizetype at =
        characters.isAtBoundary() ? wanted : std::max<qsizetype>(characters.toNextBoundary(), 0);
    return {text.left(at), text.mid(at)};
}

DWORD CutOf(const SubtitleTimes& times, DWORD playHead)
{
    if (times.in == kNoTime || times.out == kNoTime || times.out < times.in + 2)
        return kNoTime;
    const bool isWithin = playHead > times.in && playHead < times.out;
    return isWithin ? playHead : times.in + (times.out - times.in) / 2;
}

double PartBefore(const SubtitleTimes& times, DWORD cut)
{
    if (cut == kNoTime)
        return 0.5;
    return static_cast<double>(cut - times.in) / static_cast<double>(times.out - times.in);
}

SubtitleTimes MergedTimes(const std::vector<SubtitleTimes>& rows)
{
    SubtitleTimes whole;
    for (const SubtitleTimes& row : rows) {
        whole.in = std::min(whole.in, row.in); // none is above all
        if (row.out != kNoTime)
            whole.out = whole.out == kNoTime ? row.out : std::max(whole.out, row.out);
    }
    return whole;
}

std::optional<SubtitleTimes> Shifted(const SubtitleTimes& times, std::int64_t frames)
{
    SubtitleTimes shifted = times;
    for (DWORD* time : {&shifted.in, &shifted.out}) {
        if (*time == kNoTime)
            continue;
        const std::int64_t moved = *time + frames;
        if (moved < 0 || moved >= kNoTime)
            return std::nullopt;
        *time = static_cast<DWORD>(moved);
    }
    return shifted;
}

std::optional<std::int64_t> ShiftOf(const QString& text, EKvFrameRate rate)
{
    QString digits = text.trimmed();
    const bool isBack = digits.startsWith(u'-');
    if (isBack || digits.startsWith(u'+'))
        digits = digits.mid(1);
    bool isNumber = false;
    std::int64_t frames = digits.toInt(&isNumber);
    if (!isNumber) {
        FrameRate counted = FrameRateOf(rate);
        counted.dropFrame = false; // a step has no labels that drop frame leaves out
        const std::optional<int> read = ParseTimeCode(digits, counted);
        if (!read)
            return std::nullopt;
        frames = *read;
    }
    return isBack ? -frames : frames;
}

DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to)
{
    const double exact = static_cast<double>(frame) * to.PerSecond() / from.PerSecond();
    return static_cast<DWORD>(std::min(std::round(exact), 4294967294.0));
}

} // namespace titler
