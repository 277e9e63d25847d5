// The colours of a paint, pixel by pixel.
#pragma once

#include "project/Project.h"

#include <QImage>
#include <QRectF>
#include <QTransform>

#include <vector>

namespace titler {

/// Keeps what a paint's colours are looked up in from call to call.
class PaintSampler
{
public:
    /// @param paint of a kind other than None. @param opacity 0 to 1; the colours' alpha is multiplied by it.
    void SetPaint(const Paint& paint, double opacity);
    /// @param bounds what the paint lies on. @param toBounds from a pixel to there. @param offset of a
    /// gradient, along its direction, as a fraction of its length.
    void SetPlace(const QRectF& bounds, const QTransform& toBounds, double offset);
    /// The colours of `count` pixels of a row, premultiplied. Outside of the bounds they are as at their
    /// edge.
    void Sample(int x, int y, int count, QRgb* out) const;

private:
    /// A place in the table, or along one side of the four corners' picture: affine in the pixel's
    /// coordinates.
    struct Run
    {
        double perColumn = 0;
        double perRow = 0;
        double origin = 0; ///< of the middle of pixel (0, 0)

        double At(int x, int y) const { return origin + perColumn * x + perRow * y; }
    };
    static Run RunOf(QPointF perPixel, const QRectF& bounds, const QTransform& toBounds, double middle);
    void SampleGradient(int x, int y, int count, QRgb* out) const;
    void SampleCorners(int x, int y, int count, QRgb* out) const;

    Paint m_paint;
    double m_opacity = -1;
    std::vector<QRgb> m_table; ///< one colour for a solid paint
    QImage m_corners;          ///< the four-corner gradient as a square
    Run m_along;
    Run m_down; ///< FourCorner only
};

/// @param opacity 0 to 1; the colour's alpha is multiplied by it.
QRgb PremultipliedColour(DWORD colour, double opacity);

/// True when no colour of the paint is translucent.
bool IsOpaque(const Paint& paint);

/// A picture filled with a part of a painted area.
/// @param paint of a kind other than None. @param area the whole, in the picture's pixels; it holds the
/// picture. @param shape the area's size in square pixels: angles are those on the screen.
/// @return Format_RGB32 for an opaque paint, else Format_ARGB32_Premultiplied; null when memory is short.
QImage PaintedImage(const Paint& paint, QSize size, const QRect& area, QSizeF shape);

} // namespace titler
