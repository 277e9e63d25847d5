// How much shapes cover of each pixel, sharp or blurred. Pictures of coverage are Format_Grayscale8.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QTransform>

#include <optional>
#include <vector>

namespace titler {

/// Several paths, for one path of a long text takes several times as long to fill.
using Shapes = std::vector<QPainterPath>;

/// The pixels of the frame that the shapes may cover.
QRect AreaOf(const Shapes& shapes, const QTransform& toPixels, const QRect& frame);

/// The coverage of an area's pixels. @return a null image for an empty area, or when memory is short.
QImage CoverageOf(const Shapes& shapes, const QTransform& toPixels, const QRect& area);

/// The alpha of a picture of 32 bits a pixel. @return null when memory is short.
QImage AlphaOf(const QImage& image, const QRect& area);

/// Spreads coverage by `reach` pixels to both sides, across and down, nearly as a Gaussian of a third of it
/// does. What spreads beyond the picture is lost, and outside there is nothing.
/// @return false when memory is short.
bool Blur(QImage& coverage, QSize reach);

struct Coverage
{
    QRect area;   ///< in pixels of the frame
    QImage alpha; ///< as large as the area; null for an empty one
};

/// The shapes blurred within the frame, with what comes from outside of it. A wide blur is reckoned at a
/// fraction of the size, where it takes no longer than a narrow one.
/// @param reach in pixels, from 0. @return nothing when memory is short.
std::optional<Coverage> BlurredCoverage(const Shapes& shapes, const QTransform& toPixels, const QRect& frame,
                                        QSizeF reach);

/// Draws a colour through coverage, over or under what the image holds.
/// @param image Format_ARGB32_Premultiplied. @param colour premultiplied.
void DrawOver(QImage& image, const Coverage& coverage, QRgb colour);
void DrawUnder(QImage& image, const Coverage& coverage, QRgb colour);

/// Where the next covered pixel of a row is, for most of a frame is empty; `count` when there is none.
int NextCovered(const uchar* coverage, int from, int count);

} // namespace titler
