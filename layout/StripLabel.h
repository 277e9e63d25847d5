// The texts on thumbnails, drawn once.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSize>

namespace kv {

/// What the pixels of a thumbnail depend on beside the layout itself. Sizes are in device pixels.
struct ThumbStyle
{
    QSize thumb;
    QSize mark;
    qreal ratio = 1; ///< device pixels in a logical one
    QFont font;
    QColor text;

    friend bool operator==(const ThumbStyle&, const ThumbStyle&) = default;
};

/// A text on a plate on which it can be read over any picture, cut to the thumbnail's width; null where the
/// thumbnail has no room for it.
QImage MakeStripLabel(const QString& text, const ThumbStyle& style);

} // namespace kv
