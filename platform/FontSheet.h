// The font of a part that has a style sheet of its own.
#pragma once

#include <QFont>
#include <QStringList>

namespace kv {

/// For the style sheet of a part: the font that the control gives it, whatever a host's sheet says of the
/// letters of its kind. The part's own font has to be set, too, for what a sheet cannot say.
inline QString FontSheet(const QFont& font)
{
    QStringList families;
    for (QString family : font.families())
        families += QLatin1Char('"') + family.remove(QLatin1Char('"')) + QLatin1Char('"');
    const QString family = families.isEmpty()
                               ? QString()
                               : QStringLiteral("font-family: %1; ").arg(families.join(QLatin1Char(',')));
    const QString size = font.pointSizeF() > 0 ? QString::number(font.pointSizeF()) + QStringLiteral("pt")
                                               : QString::number(font.pixelSize()) + QStringLiteral("px");
    QStringList lines;
    if (font.underline())
        lines += QStringLiteral("underline");
    if (font.overline())
        lines += QStringLiteral("overline");
    if (font.strikeOut())
        lines += QStringLiteral("line-through");
    return family + QStringLiteral("font-size: %1; font-weight: %2; font-style: %3; text-decoration: %4;")
                        .arg(size, QString::number(font.weight()),
                             font.italic() ? QStringLiteral("italic") : QStringLiteral("normal"),
                             lines.isEmpty() ? QStringLiteral("none") : lines.join(QLatin1Char(' ')));
}

} // namespace kv
