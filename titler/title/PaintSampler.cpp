#include "title/PaintSampler.h"

#include "KvQuadGradCtrl.h"
#include "title/GradientTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace titler {
namespace {

constexpr int kTableSize = 4096;
// Of the four corners' square. From a corner to the middle a channel has 255 steps at most: one for a pixel.
constexpr int kSide = 512;

DWORD WithOpacity(DWORD colour, double opacity)
{
    const auto alpha = static_cast<DWORD>(std::lround(static_cast<double>(colour >> 24) * opacity));
    return (colour & 0x00FFFFFFu) | alpha << 24;
}

QImage CornerSquare(const CornerColours& corners, double opacity)
{
    CornerColours faded;
    std::transform(corners.begin(), corners.end(), faded.begin(),
                   [&](DWORD colour) { return WithOpacity(colour, opacity); });
    QImage square(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    KvFillQuadGradient(square, CRect(0, 0, kSide, kSide), faded.data());
    return square;
}

} // namespace

QRgb PremultipliedColour(DWORD colour, double opacity)
{
    return qPremultiply(WithOpacity(colour, opacity));
}

void PaintSampler::SetPaint(const Paint& paint, double opacity)
{
    if (m_opacity == opacity && LooksSame(m_paint, paint))
        return;
    m_paint = paint;
    m_opacity = opacity;
    if (paint.kind == PaintKind::FourCorner)
        m_corners = CornerSquare(paint.corners, opacity);
    else if (paint.kind == PaintKind::Gradient)
        m_table = GradientTable(paint.stops, kTableSize, opacity);
    else
        m_table = {PremultipliedColour(paint.colour, opacity)};
}

// @param perPixel how the place grows with a step within the bounds. @param middle the place at their centre.
PaintSampler::Run PaintSampler::RunOf(QPointF perPixel, const QRectF& bounds, const QTransform& toBounds,
                                      double middle)
{
    const auto along = [&](double x, double y) { return x * perPixel.x() + y * perPixel.y(); };
    const QPointF first = toBounds.map(QPointF(0.5, 0.5)) - bounds.center();
    return {along(toBounds.m11(), toBounds.m12()), along(toBounds.m21(), toBounds.m22()),
            middle + along(first.x(), first.y())};
}

void PaintSampler::SetPlace(const QRectF& bounds, const QTransform& toBounds, double offset)
{
    if (m_paint.kind == PaintKind::FourCorner) {
        const auto part = [](double length) { return length > 0 ? kSide / length : 0.0; };
        m_along = RunOf({part(bounds.width()), 0}, bounds, toBounds, kSide / 2.0);
        m_down = RunOf({0, part(bounds.height())}, bounds, toBounds, kSide / 2.0);
    } else {
        const double radians = m_paint.angle * std::numbers::pi / 180;
        const QPointF direction(std::cos(radians), std::sin(radians));
        const double length =
            std::abs(bounds.width() * direction.x()) + std::abs(bounds.height() * direction.y());
        const double entries = length > 0 ? (kTableSize - 1) / length : 0.0;
        m_along = RunOf(direction * entries, bounds, toBounds, (0.5 - offset) * (kTableSize - 1));
    }
}

void PaintSampler::Sample(int x, int y, int count, QRgb* out) const
{
    switch (m_paint.kind) {
    case PaintKind::Gradient:
        SampleGradient(x, y, count, out);
        break;
    case PaintKind::FourCorner:
        SampleCorners(x, y, count, out);
        break;
    case PaintKind::Solid:
    case PaintKind::None:
        std::fill_n(out, count, m_table.front());
        break;
    }
}

void PaintSampler::SampleGradient(int x, int y, int count, QRgb* out) const
{
    const double place = m_along.At(x, y) + 0.5;
    const double step = m_along.perColumn;
    for (int i = 0; i < count; ++i)
        out[i] = m_table[static_cast<std::size_t>(std::clamp(place + step * i, 0.0, kTableSize - 1.0))];
}

void PaintSampler::SampleCorners(int x, int y, int count, QRgb* out) const
{
    const auto* pixels = reinterpret_cast<const QRgb*>(m_corners.constBits());
    const double along = m_along.At(x, y) + 0.5;
    const double down = m_down.At(x, y) + 0.5;
    const auto at = [](double place) { return static_cast<int>(std::clamp(place, 0.0, kSide - 1.0)); };
    for (int i = 0; i < count; ++i)
        out[i] = pixels[at(down + m_down.perColumn * i) * kSide + at(along + m_along.perColumn * i)];
}

bool IsOpaque(const Paint& paint)
{
    const auto isOpaque = [](DWORD colour) { return colour >> 24 == 255; };
    switch (paint.kind) {
    case PaintKind::None:
        return false;
    case PaintKind::Solid:
        return isOpaque(paint.colour);
    case PaintKind::FourCorner:
        return std::all_of(paint.corners.begin(), paint.corners.end(), isOpaque);
    case PaintKind::Gradient:
        break;
    }
    return std::all_of(paint.stops.begin(), paint.stops.end(),
                       [&](const SKvCGGradientKey& stop) { return isOpaque(stop.colour); });
}

QImage PaintedImage(const Paint& paint, QSize size, const QRect& area, QSizeF shape)
{
    QImage image(size, IsOpaque(paint) ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    if (paint.kind == PaintKind::FourCorner) {
        if (image.hasAlphaChannel())
            image.fill(Qt::transparent);
        KvFillQuadGradient(image, CRect(area), paint.corners.data());
        return image;
    }
    PaintSampler sampler;
    sampler.SetPaint(paint, 1);
    sampler.SetPlace({QPointF(), shape},
                     QTransform::fromTranslate(-area.left(), -area.top()) *
                         QTransform::fromScale(shape.width() / area.width(), shape.height() / area.height()),
                     0);
    for (int y = 0; y < size.height(); ++y)
        sampler.Sample(0, y, size.width(), reinterpret_cast<QRgb*>(image.scanLine(y)));
    return image;
}

} // namespace titler
