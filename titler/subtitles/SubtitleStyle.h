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
