// Draws a title. The canvas and the exported frame come from here, so that they show the same.
#pragma once

#include "Project.h"

#include <QImage>
#include <QPainterPath>

namespace titler {

/// The family that a title without one gets: the first of a few good ones that is installed.
QString DefaultFontFamily();

/// The outline of a title's text in display space (square pixels, `DisplaySize` large).
QPainterPath TitlePath(const Title& title, QSizeF frame);

/// Keeps the text's coverage from call to call, so that only the colours are done anew while a gradient is
/// dragged.
class TitleRenderer
{
public:
    /// The title over nothing.
    /// @param size the whole frame's size in pixels; the frame is scaled to it.
    /// @return Format_ARGB32_Premultiplied; a null image when memory is short.
    QImage Render(const Project& project, QSize size);

private:
    struct Mask
    {
        Title title; ///< whose text this is
        QSizeF display;
        QSize size;
        QImage coverage; ///< Format_Grayscale8, as large as `area`
        QRect area;      ///< what the text covers, in pixels of the frame
        QRectF outline;  ///< the path's bounds, in display space
    };

    void UpdateMask(const Project& project, QSize size);

    Mask m_mask;
};

} // namespace titler
