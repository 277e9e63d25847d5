#include "subtitles/SubtitleText.h"

#include <QRegularExpression>
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

bool IsLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

QString TagName(const QString& text, const Markup& tag)
{
    qsizetype begin = tag.begin + 1;
    if (text[begin] == u'/')
        ++begin;
    qsizetype end = begin;
    while (text[end].isLetterOrNumber())
        ++end;
    return text.mid(begin, end - begin);
}

// What the part before a place lacks at its end, and the part behind it at its begin.
struct OpenMarkup
{
    QString closing;
    QString opening;
};

OpenMarkup OpenAt(const QString& text, const std::vector<Markup>& markup, qsizetype place)
{
    OpenMarkup open;
    std::vector<Markup> tags;
    for (const Markup& mark : markup) {
        if (mark.begin >= place)
            break;
        if (text[mark.begin] == u'{') {
            open.opening += text.mid(mark.begin, mark.end - mark.begin); // it holds for all that follows
        } else if (text[mark.begin + 1] != u'/') {
            tags.push_back(mark);
        } else {
            const auto found = std::find_if(tags.rbegin(), tags.rend(), [&](const Markup& tag) {
                return TagName(text, tag).compare(TagName(text, mark), Qt::CaseInsensitive) == 0;
            });
            if (found != tags.rend())
                tags.erase(std::next(found).base());
        }
    }
    for (const Markup& tag : tags) {
        open.opening += text.mid(tag.begin, tag.end - tag.begin);
        open.closing.prepend(QStringLiteral("</%1>").arg(TagName(text, tag)));
    }
    return open;
}

// Where the first part ends and the second begins; never within markup.
std::pair<qsizetype, qsizetype> CutPlace(const QString& text, const std::vector<Markup>& markup, double part)
{
    QString plain;
    std::vector<qsizetype> places; // in `text`, of each character of `plain`
    auto mark = markup.begin();
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (mark != markup.end() && at == mark->begin) {
            at = (mark++)->end - 1;
            continue;
        }
        plain += text[at];
        places.push_back(at);
    }
    const auto placeOf = [&](qsizetype at) { return places[static_cast<std::size_t>(at)]; };
    const auto wanted = static_cast<qsizetype>(std::lround(static_cast<double>(plain.size()) * part));
    for (const QChar breaks : {QChar(u'\n'), QChar(u' ')}) {
        const qsizetype at = NearestOf(plain, breaks, wanted);
        if (at >= 0)
            return {placeOf(at), placeOf(at) + 1};
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, plain);
    characters.setPosition(wanted);
    const qsizetype at =
        characters.isAtBoundary() ? wanted : std::max<qsizetype>(characters.toNextBoundary(), 0);
    const qsizetype place = at < plain.size() ? placeOf(at) : text.size();
    return {place, place};
}

std::uint64_t Numerator(const FrameRate& from, const FrameRate& to)
{
    return static_cast<std::uint64_t>(to.numerator) * static_cast<std::uint64_t>(from.denominator);
}

DWORD Frame(std::uint64_t frame)
{
    return static_cast<DWORD>(std::min<std::uint64_t>(frame, kNoTime - 1));
}

} // namespace

std::vector<Markup> MarkupOf(const QString& text)
{
    std::vector<Markup> found;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar open = text[at];
        if (open != u'<' && open != u'{')
            continue;
        const QChar close = open == u'<' ? u'>' : u'}';
        const qsizetype first = at + (open == u'<' && text.mid(at + 1, 1) == u"/" ? 2 : 1);
        if (first >= text.size() || !(open == u'<' ? IsLetter(text[first]) : text[first] == u'\\'))
            continue;
        qsizetype end = first;
        while (end < text.size() && text[end] != open && text[end] != close && text[end] != u'\n')
            ++end;
        if (end == text.size() || text[end] != close)
            continue;
        found.push_back({at, end + 1});
        at = end;
    }
    return found;
}

QString WithTags(const QString& text)
{
    static const QRegularExpression style(QStringLiteral(R"(^\{\\([ibu])([01]?)\}$)"));
    const std::vector<Markup> markup = MarkupOf(text);
    QString tagged = text;
    for (auto mark = markup.rbegin(); mark != markup.rend(); ++mark) {
        const qsizetype length = mark->end - mark->begin;
        const QRegularExpressionMatch match = style.match(text.mid(mark->begin, length));
        if (match.hasMatch())
            tagged.replace(mark->begin, length,
                           (match.captured(2) == u"1" ? QStringLiteral("<%1>") : QStringLiteral("</%1>"))
                               .arg(match.captured(1)));
    }
    return tagged;
}

QString PlainSubtitle(const QString& text)
{
    const std::vector<Markup> markup = MarkupOf(text);
    QString plain = text;
    for (auto mark = markup.rbegin(); mark != markup.rend(); ++mark)
        plain.remove(mark->begin, mark->end - mark->begin);
    return plain;
}

int CharactersOf(const QString& text)
{
    const QString plain = PlainSubtitle(text);
    const auto isRead = [](QChar c) { return c != u'\n' && c != u'\r' && c != QChar::LineSeparator; };
    constexpr char16_t firstMark = 0x300; // nothing below it joins the letter before it
    if (std::all_of(plain.begin(), plain.end(), [](QChar c) { return c < firstMark; }))
        return static_cast<int>(std::count_if(plain.begin(), plain.end(), isRead));
    int characters = 0;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, plain);
    for (qsizetype at = 0; at >= 0 && at < plain.size(); at = finder.toNextBoundary())
        characters += isRead(plain[at]) ? 1 : 0;
    return characters;
}

std::pair<QString, QString> SplitSubtitle(const QString& text, double part)
{
    const std::vector<Markup> markup = MarkupOf(text);
    const auto [end, begin] = CutPlace(text, markup, part);
    const OpenMarkup open = OpenAt(text, markup, end);
    return {text.left(end) + open.closing, open.opening + text.mid(begin)};
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
        const FrameRate wanted = FrameRateOf(rate);
        FrameRate counted = wanted;
        counted.dropFrame = false; // a step has no labels that drop frame leaves out
        const std::optional<int> read = ParseTimeCode(digits, counted);
        if (!read)
            return std::nullopt;
        frames = *read;
        if (wanted.dropFrame) // its labels go by the clock
            frames =
                FrameAtMilliseconds(*read / wanted.nominal * qint64{1000}, wanted) + *read % wanted.nominal;
    }
    return isBack ? -frames : frames;
}

// In whole numbers: 32 bits times two rates stay within 64.
DWORD FrameAtRate(DWORD frame, const FrameRate& from, const FrameRate& to)
{
    const std::uint64_t divisor = Numerator(to, from);
    return Frame((2 * std::uint64_t{frame} * Numerator(from, to) + divisor) / (2 * divisor));
}

DWORD ShownAtRate(DWORD frame, const FrameRate& from, const FrameRate& to)
{
    return Frame(frame * Numerator(from, to) / Numerator(to, from));
}

DWORD FirstAtRate(DWORD frame, const FrameRate& from, const FrameRate& to)
{
    const std::uint64_t divisor = Numerator(to, from);
    return Frame((frame * Numerator(from, to) + divisor - 1) / divisor);
}

QString RateText(const FrameRate& rate)
{
    return QString::number(rate.PerSecond(), 'g', 5);
}

} // namespace titler
