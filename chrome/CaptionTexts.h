// The texts of a caption strip as they were shaped last: shaping costs far more than drawing.
#pragma once

#include "KvTypes.h"

#include <QCache>
#include <QFont>
#include <QString>
#include <QTextLayout>

namespace kv {

class CaptionTexts
{
public:
    /// A text of one line at the left of its place and centred vertically, in the painter's font and pen.
    /// @param hasMarkers a "&" underlines the character behind it and is not drawn.
    void Draw(QPainter& painter, const CRect& place, const QString& text, bool hasMarkers);
    /// Likewise, cut with an ellipsis at its right where it is too long.
    void DrawCut(QPainter& painter, const CRect& place, const QString& text);

private:
    const QTextLayout& Shaped(const QString& text, bool hasMarkers);
    void UseFont(const QFont& font);

    QCache<QString, QTextLayout> m_layouts; ///< by the text, behind a letter that tells of markers
    QFont m_font;                           ///< of all of them
    QString m_long;                         ///< the text that was cut last
    int m_longWidth = -1;                   ///< to that width
    QString m_cut;
};

} // namespace kv
