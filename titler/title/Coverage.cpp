#include "title/Coverage.h"

#include "title/PixelMath.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace titler {
namespace {

constexpr double kWidestReach = 32; // in pixels; beyond it the picture is made smaller

// The contours that reach into `frame`. The others cover nothing there, and a large title has many.
QPainterPath ContoursIn(const QRectF& frame, const QPainterPath& path)
{
    if (frame.contains(path.controlPointRect()))
        return path;
    QPainterPath inside;
    inside.setFillRule(path.fillRule());
    for (int begin = 0, end = 0; begin < path.elementCount(); begin = end) {
        QPainterPath contour;
        for (end = begin; end < path.elementCount() && (end == begin || !path.elementAt(end).isMoveTo());) {
            const QPainterPath::Element at = path.elementAt(end);
            if (at.isMoveTo())
                contour.moveTo(at);
            else if (at.isLineTo())
                contour.lineTo(at);
            else
                contour.cubicTo(at, path.elementAt(end + 1), path.elementAt(end + 2));
            end += at.isCurveTo() ? 3 : 1;
        }
        if (contour.controlPointRect().intersects(frame))
            inside.addPath(contour);
    }
    return inside;
}

// The average over a box of 2 × radius + 1, in 24 bits of fraction.
class BoxAverage
{
public:
    explicit BoxAverage(int radius)
        : m_part(((1u << 24) + static_cast<std::uint32_t>(radius)) /
                 (2u * static_cast<std::uint32_t>(radius) + 1u))
    {
    }
    uchar operator()(std::uint32_t sum) const
    {
        return static_cast<uchar>((sum * m_part + (1u << 23)) >> 24);
    }

private:
    std::uint32_t m_part;
};

// @param row with `radius` bytes of nothing before and behind its `count` ones.
void BoxRow(const uchar* row, uchar* out, int count, int radius)
{
    const BoxAverage average(radius);
    std::uint32_t sum = 0;
    for (int i = -radius; i < radius; ++i)
        sum += row[i];
    for (int i = 0; i < count; ++i) {
        sum += row[i + radius];
        out[i] = average(sum);
        sum -= row[i - radius];
    }
}

using Radii = std::array<int, 3>;

// Of three boxes that together spread so far.
Radii BoxRadii(int reach)
{
    reach = std::max(reach, 0);
    return {reach / 3, (reach + 1) / 3, (reach + 2) / 3};
}

void BlurRows(QImage& coverage, const Radii& radii)
{
    const int width = coverage.width();
    const auto margin = static_cast<std::size_t>(radii.back());
    std::vector<uchar> row(static_cast<std::size_t>(width) + 2 * margin);
    for (int y = 0; y < coverage.height(); ++y)
        for (const int radius : radii) {
            std::copy_n(coverage.constScanLine(y), width, row.data() + margin);
            BoxRow(row.data() + margin, coverage.scanLine(y), width, radius);
        }
}

void BoxColumns(const QImage& from, QImage& to, int radius)
{
    const BoxAverage average(radius);
    const auto width = static_cast<std::size_t>(from.width());
    std::vector<std::uint32_t> sums(width);
    const auto add = [&](int row) {
        if (row < from.height())
            std::transform(sums.begin(), sums.end(), from.constScanLine(row), sums.begin(), std::plus<>());
    };
    for (int row = 0; row < radius; ++row)
        add(row);
    for (int row = 0; row < from.height(); ++row) {
        add(row + radius);
        std::transform(sums.begin(), sums.end(), to.scanLine(row), average);
        if (row >= radius)
            std::transform(sums.begin(), sums.end(), from.constScanLine(row - radius), sums.begin(),
                           std::minus<>());
    }
}

// Between the pixels of a picture that was made smaller.
struct Between
{
    int first;     ///< the pixel before
    uint fraction; ///< of the way to the next one, 0 to 255
};

Between PlaceOf(int pixel, int halvings, int start)
{
    const int place = ((2 * pixel + 1) * 128 >> halvings) - 128 - start * 256;
    return {place >> 8, static_cast<uint>(place & 255)};
}

// @param low where `small` stands, in its own pixels.
QImage Enlarged(const QImage& small, QPoint low, int halvings, const QRect& area)
{
    QImage large(area.size(), QImage::Format_Grayscale8);
    if (large.isNull())
        return large;
    std::vector<uint> mixed(static_cast<std::size_t>(small.width()));
    for (int y = 0; y < area.height(); ++y) {
        const Between row = PlaceOf(area.top() + y, halvings, low.y());
        std::transform(small.constScanLine(row.first), small.constScanLine(row.first) + small.width(),
                       small.constScanLine(row.first + 1), mixed.begin(), [&](uint above, uint below) {
                           return above * (256 - row.fraction) + below * row.fraction;
                       });
        uchar* out = large.scanLine(y);
        for (int x = 0; x < area.width(); ++x) {
            const Between column = PlaceOf(area.left() + x, halvings, low.x());
            const uint* at = mixed.data() + column.first;
            out[x] =
                static_cast<uchar>((at[0] * (256 - column.fraction) + at[1] * column.fraction + 32768) >> 16);
        }
    }
    return large;
}

template <typename Blend>
void Draw(QImage& image, const Coverage& coverage, Blend blend)
{
    for (int y = 0; y < coverage.alpha.height(); ++y) {
        const uchar* row = coverage.alpha.constScanLine(y);
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(coverage.area.top() + y)) + coverage.area.left();
        const int count = coverage.alpha.width();
        for (int i = 0; (i = NextCovered(row, i, count)) < count; ++i)
            out[i] = blend(out[i], row[i]);
    }
}

} // namespace

int NextCovered(const uchar* coverage, int from, int count)
{
    std::uint64_t eight = 0;
    while (from + 8 <= count && (std::memcpy(&eight, coverage + from, 8), eight == 0))
        from += 8;
    while (from < count && coverage[from] == 0)
        ++from;
    return from;
}

QRect AreaOf(const Shapes& shapes, const QTransform& toPixels, const QRect& frame)
{
    QRectF covered;
    for (const QPainterPath& shape : shapes)
        if (!shape.isEmpty())
            covered |= toPixels.map(shape).controlPointRect() & QRectF(frame);
    return covered.toAlignedRect();
}

QImage CoverageOf(const Shapes& shapes, const QTransform& toPixels, const QRect& area)
{
    if (area.isEmpty())
        return {};
    QImage canvas(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return canvas;
    canvas.fill(Qt::transparent);
    const QTransform toArea = toPixels * QTransform::fromTranslate(-area.left(), -area.top());
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const QPainterPath& shape : shapes)
        painter.fillPath(ContoursIn(canvas.rect(), toArea.map(shape)), Qt::white);
    painter.end();
    return AlphaOf(canvas, canvas.rect());
}

QImage AlphaOf(const QImage& image, const QRect& area)
{
    QImage alpha(area.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < alpha.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(image.constScanLine(area.top() + y)) + area.left();
        std::transform(from, from + area.width(), alpha.scanLine(y),
                       [](QRgb pixel) { return static_cast<uchar>(qAlpha(pixel)); });
    }
    return alpha;
}

// Three boxes one after another, along the rows and along the columns.
bool Blur(QImage& coverage, QSize reach)
{
    BlurRows(coverage, BoxRadii(reach.width()));
    if (reach.height() <= 0)
        return true;
    QImage other(coverage.size(), coverage.format());
    if (other.isNull())
        return coverage.isNull();
    for (const int radius : BoxRadii(reach.height())) {
        BoxColumns(coverage, other, radius);
        coverage.swap(other);
    }
    return true;
}

std::optional<Coverage> BlurredCoverage(const Shapes& shapes, const QTransform& toPixels, const QRect& frame,
                                        QSizeF reach)
{
    const int across = static_cast<int>(std::ceil(reach.width()));
    const int down = static_cast<int>(std::ceil(reach.height()));
    const QRect source = AreaOf(shapes, toPixels, frame.adjusted(-across, -down, across, down));
    const QRect area = source.isEmpty() ? QRect() : source.adjusted(-across, -down, across, down) & frame;
    if (area.isEmpty())
        return Coverage();
    int halvings = 0;
    for (; std::max(reach.width(), reach.height()) > kWidestReach; reach /= 2)
        ++halvings;
    const double part = std::ldexp(1.0, -halvings);
    // Three boxes are wider than their reach by a pixel each, which here is larger.
    const QSizeF beyond = QSizeF(1.5, 1.5) * (1 - part);
    const QSize lowReach = (reach - beyond).toSize().expandedTo({0, 0});
    const QPoint margin(lowReach.width() + 2, lowReach.height() + 2);
    const auto lowered = [&](QPoint at) { return QPoint(at.x() >> halvings, at.y() >> halvings); };
    const QRect low(lowered(area.topLeft()) - margin, lowered(area.bottomRight()) + margin);
    QImage small = CoverageOf(shapes, toPixels * QTransform::fromScale(part, part), low);
    if (small.isNull() || !Blur(small, lowReach))
        return std::nullopt;
    QImage alpha = halvings == 0 ? small.copy(area.translated(-low.topLeft()))
                                 : Enlarged(small, low.topLeft(), halvings, area);
    if (alpha.isNull())
        return std::nullopt;
    return Coverage{area, std::move(alpha)};
}

void DrawOver(QImage& image, const Coverage& coverage, QRgb colour)
{
    Draw(image, coverage, [&](QRgb pixel, uint covered) { return Over(Covered(colour, covered), pixel); });
}

void DrawUnder(QImage& image, const Coverage& coverage, QRgb colour)
{
    Draw(image, coverage, [&](QRgb pixel, uint covered) { return Over(pixel, Covered(colour, covered)); });
}

} // namespace titler
