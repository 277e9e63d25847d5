// Draws a title. The canvas and the exported frames come from here, so that they show the same.
#pragma once

#include "project/Project.h"

#include <QImage>
#include <QPainterPath>
#include <QTransform>

namespace titler {

/// The family that a title without one gets: the first of a few good ones that is installed.
QString DefaultFontFamily();

/// The outline of a title's text in display space (square pixels, `DisplaySize` large), at rest.
QPainterPath TitlePath(const Title& title, QSizeF frame);

/// The same line by line.
std::vector<QPainterPath> TitleLines(const Title& title, QSizeF frame);

/// How position, scale and rotation move the outline, within display space.
/// @param values as `ValuesAt` gives them. @param outline the bounds of the outline at rest.
QTransform TitleMotion(const std::array<double, kProperties>& values, const QRectF& outline, QSizeF frame);

/// Keeps outline, coverage and colours from call to call, so that only what changed is done anew: the colours
/// while a gradient is dragged or a title fades, the coverage while it moves. One renderer belongs to one
/// thread at a time; several may work side by side.
class TitleRenderer
{
public:
    /// The title over nothing.
    /// @param frame the time, also between frames.
    /// @param size the whole frame's size in pixels; the frame is scaled to it.
    /// @return Format_ARGB32_Premultiplied; a null image when memory is short.
    QImage Render(const Project& project, double frame, QSize size);

private:
    /// What the outline at rest depends on.
    struct Letters
    {
        QString text;
        QString family;
        double size = 0;
        bool bold = false;
        bool italic = false;
        TextAlign align = TextAlign::Centre;
        QSizeF frame;

        bool operator==(const Letters&) const = default;
    };
    struct Outline
    {
        Letters letters;
        std::vector<QPainterPath> lines; ///< one path of a long text takes several times as long to fill
        QRectF bounds;
    };
    struct Mask
    {
        QTransform toPixels; ///< from the outline at rest
        QSize size;
        QImage coverage; ///< Format_Grayscale8, as large as `area`
        QRect area;      ///< what the text covers, in pixels of the frame
    };
    struct Colours
    {
        GradientStops stops;
        double opacity = 0;
        std::vector<QRgb> table;
    };

    void UpdateOutline(const Title& title, QSizeF frame);
    bool UpdateMask(const QTransform& toPixels, QImage& canvas);
    void UpdateColours(const GradientStops& stops, double opacity);

    Outline m_outline;
    Mask m_mask;
    Colours m_colours;
};

} // namespace titler
