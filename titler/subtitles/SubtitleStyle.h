// How a subtitle looks: the templates that a row can name.
#pragma once

#include <QString>
#include <QStringList>

namespace titler {

/// A text with the name of its template.
struct Subtitle
{
    QString text;
    QString templateName;

    bool operator==(const Subtitle&) const = default;
};

/// The names of the templates; the first is taken for a name that is none of them.
QStringList SubtitleTemplates();

/// Remembers the names that they have in the present language: rows that were given one of them keep it.
void LearnTemplateNames();

/// The present name of the template that was given that name in this or another language; the same name
/// where it is none of them.
QString TemplateNamed(const QString& name);

/// Where and how a subtitle stands, by its template and by "{\\anN}" in its text.
struct SubtitleLook
{
    int side = 1;   ///< -1 at the top, 1 at the bottom, 0 in the middle
    int column = 0; ///< -1 at the left, 1 at the right, 0 in the middle
    bool italic = false;
    bool takesTitle = false; ///< font and gradient of the project's own title
};
SubtitleLook LookOf(const Subtitle& subtitle);

} // namespace titler
