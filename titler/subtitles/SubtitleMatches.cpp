#include "subtitles/SubtitleMatches.h"

#include "window/Texts.h"

#include <algorithm>

namespace titler {
namespace {

constexpr qsizetype kContext = 12; // characters on each side
constexpr QChar kEllipsis = QChar(0x2026);

bool IsOfWord(char32_t c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c) ||
           QChar::category(c) == QChar::Punctuation_Connector;
}

char32_t CharacterAt(const QString& text, qsizetype at)
{
    const QChar unit = text[at];
    const bool isPair = unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(unit, text[at + 1]) : unit.unicode();
}

char32_t CharacterBefore(const QString& text, qsizetype at)
{
    const bool isPair = at > 1 && text[at - 1].isLowSurrogate() && text[at - 2].isHighSurrogate();
    return CharacterAt(text, at - (isPair ? 2 : 1));
}

// Whether a word goes on over that place.
bool IsInsideWord(const QString& text, qsizetype at)
{
    return at > 0 && at < text.size() && IsOfWord(CharacterBefore(text, at)) &&
           IsOfWord(CharacterAt(text, at));
}

} // namespace

SubtitleMatches::SubtitleMatches(const SubtitleQuery& query)
    : m_pattern(query.isPattern ? query.text : QRegularExpression::escape(query.text),
                QRegularExpression::UseUnicodePropertiesOption | QRegularExpression::MultilineOption |
                    (query.matchCase ? QRegularExpression::NoPatternOption
                                     : QRegularExpression::CaseInsensitiveOption))
    , m_wholeWords(query.wholeWords)
{
}

QString SubtitleMatches::Fault() const
{
    if (m_pattern.isValid())
        return {};
    const QString text = m_pattern.pattern();
    const qsizetype place = m_pattern.patternErrorOffset();
    if (place >= text.size())
        return Text(kTextPatternEnds, {m_pattern.errorString()});
    const auto character = static_cast<qsizetype>(text.left(place).toUcs4().size()) + 1;
    return Text(kTextPatternWrong,
                {QString::number(character), text.mid(place, text[place].isHighSurrogate() ? 2 : 1),
                 m_pattern.errorString()});
}

std::vector<TextRange> SubtitleMatches::In(const QString& text) const
{
    std::vector<TextRange> found;
    if (!m_pattern.isValid() || m_pattern.pattern().isEmpty())
        return found;
    for (qsizetype from = 0; from < text.size();) {
        const QRegularExpressionMatch match = m_pattern.match(text, from);
        if (!match.hasMatch() || match.capturedStart() >= text.size())
            break;
        const TextRange range{match.capturedStart(), match.capturedEnd()};
        const bool counts =
            range.begin < range.end &&
            (!m_wholeWords || !(IsInsideWord(text, range.begin) || IsInsideWord(text, range.end)));
        if (counts)
            found.push_back(range);
        from = counts ? range.end : range.begin + (text[range.begin].isHighSurrogate() ? 2 : 1);
    }
    return found;
}

QString WithContext(const QString& text, const TextRange& part)
{
    const qsizetype begin = std::max<qsizetype>(0, part.begin - kContext);
    const qsizetype end = std::min(text.size(), part.end + kContext);
    const QString shown = text.mid(begin, end - begin).simplified();
    return (begin > 0 ? QString(kEllipsis) : QString()) + shown +
           (end < text.size() ? QString(kEllipsis) : QString());
}

} // namespace titler
