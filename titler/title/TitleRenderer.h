// Draws a title. The canvas and the exported frames come from here, so that they show the same.
#pragma once

#include "title/Coverage.h"
#include "title/PaintSampler.h"

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

/// Keeps outlines, coverage and colours from call to call, so that only what changed is done anew: the
/// colours while one of them is dragged or a title fades, the coverage while it moves. One renderer belongs
/// to one thread at a time; several may work side by side.
class TitleRenderer
{
public:
    /// The title with its outline and shadow over nothing.
    /// @param frame the time, also between frames.
    /// @param size the whole frame's size in pixels; the frame is scaled to it.
    /// @return Format_ARGB32_Premultiplied; a null image when memory is short.
    QImage Render(const Project& project, double frame, QSize size)
    {
        return Render(project, frame, size, QRect({}, size));
    }
    /// Only a part of it. @param part in pixels of that size. @return an image as large as the part.
    QImage Render(const Project& project, double frame, QSize size, const QRect& part);
    /// The title over the project's background: what is exported.
    /// @return likewise, but Format_RGB32 over an opaque background.
    QImage RenderFrame(const Project& project, double frame, QSize size);

private:
    /// What the letters at rest depend on.
    struct Text
    {
        QString text;
        QString family;
        double size = 0;
        bool bold = false;
        bool italic = false;
        TextAlign align = TextAlign::Centre;
        QSizeF frame;

        bool operator==(const Text&) const = default;
    };
    /// At rest, in display space.
    struct Letters
    {
        Text text;
        double stroke = 0; ///< the pen's width: the outline's outer half and as much within the letters
        Shapes lines;
        Shapes withOutline; ///< the lines, and what is stroked around them
        QRectF bounds;      ///< of the lines
    };
    struct Place
    {
        QTransform toPixels; ///< from the letters at rest
        QSize size;          ///< of the picture

        bool operator==(const Place&) const = default;
    };
    struct Mask
    {
        Place place;
        QRect area;      ///< what the text covers, in pixels of the picture
        QImage letters;  ///< coverage, as large as `area`
        QImage outlined; ///< of the letters with their outline; null without one
    };
    struct Shadow
    {
        Place place;
        QPointF offset;
        QSizeF reach; ///< of its edge, in pixels
        Coverage coverage;
    };
    struct Background
    {
        Paint paint;
        QSizeF display;
        QImage picture;
    };

    void UpdateLetters(const Title& title, QSizeF frame);
    bool UpdateMask(const Place& place);
    bool UpdateShadow(const TextShadow& shadow, const Place& place, QSizeF scale);
    void ColourRow(int y, QRgb outline, QRgb* out);
    bool Draw(const Project& project, double frame, QSize size, QPoint start, QImage& image);

    Letters m_letters;
    Mask m_mask;
    Shadow m_shadow;
    PaintSampler m_fill;
    Background m_background;
    std::vector<QRgb> m_row;
};

} // namespace titler
