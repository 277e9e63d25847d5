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

std::optional<std::int64_t> ShiftOf(const QString& text, EKvFrameRate rate)
{
    QString digits = text.trimmed();
    const bool isBack = digits.startsWith(u'-');
    if (isBack || digits.startsWith(u'+'))
        digits = digits.mid(1);
    // Nominal frames: a step has no labels that drop frame leaves out.
    FrameRate counted = FrameRateOf(rate);
    counted.dropFrame = false;
    const std::optional<int> frames = ParseTimeCode(digits, counted);
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    if (isNumber)
        return isBack ? -std::int64_t{number} : std::int64_t{number};
    if (!frames)
        return std::nullopt;
    return isBack ? -std::int64_t{*frames} : std::int64_t{*frames};
}

DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to)
{
    const double exact = static_cast<double>(frame) * to.PerSecond() / from.PerSecond();
    return static_cast<DWORD>(std::min(std::round(exact), 4294967294.0));
}

} // namespace titler
