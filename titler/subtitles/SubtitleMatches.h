// Where a text stands in a row, found as the list's own search finds it: to show it.
#pragma once

#include <QRegularExpression>
#include <QString>

#include <vector>

namespace titler {

struct SubtitleQuery
{
    QString text;
    bool matchCase = false;
    bool wholeWords = false;
    bool isPattern = false; ///< a regular expression

    bool operator==(const SubtitleQuery&) const = default;
};

/// A part of a text, in UTF-16 units.
struct TextRange
{
    qsizetype begin;
    qsizetype end; ///< behind its last character

    bool operator==(const TextRange&) const = default;
};

class SubtitleMatches
{
public:
    explicit SubtitleMatches(const SubtitleQuery& query);

    /// What is wrong with the regular expression and at which character, in one sentence; empty when nothing
    /// is.
    QString Fault() const;
    /// From left to right, none over another, none empty. None for a bad expression or an empty text to find.
    std::vector<TextRange> In(const QString& text) const;

private:
    QRegularExpression m_pattern;
    bool m_wholeWords;
};

/// A part of a text with a little of what stands around it, in one line.
QString WithContext(const QString& text, const TextRange& part);

} // namespace titler
