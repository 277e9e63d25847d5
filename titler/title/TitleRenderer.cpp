#include "title/TitleRenderer.h"

#include "title/GradientTable.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace titler {
namespace {

constexpr int kTableSize = 4096;
// Text that is aligned to a side stands on the title-safe line.
constexpr double kSideMargin = 0.05;

QFont FontOf(const Title& title, double height)
{
    QFont font(title.fontFamily.isEmpty() ? DefaultFontFamily() : title.fontFamily);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(height * title.fontSize / 100))));
    font.setBold(title.bold);
    font.setItalic(title.italic);
    font.setHintingPreference(QFont::PreferNoHinting); // the same shape at every size
    return font;
}

double LineStart(TextAlign align, double frame, double line)
{
    switch (align) {
    case TextAlign::Left:
        return frame * kSideMargin;
    case TextAlign::Right:
        return frame * (1 - kSideMargin) - line;
    case TextAlign::Centre:
        break;
    }
    return (frame - line) / 2;
}

// The place along the gradient of a pixel, in table entries: affine in the pixel's coordinates.
struct GradientRun
{
    double perColumn;
    double perRow;
    double origin; ///< of the middle of pixel (0, 0)
};

// The gradient lies on the text at rest and moves along with it.
// @param toOutline from a pixel to the outline at rest.
GradientRun RunOf(double angle, double offset, const QRectF& outline, const QTransform& toOutline)
{
    const double radians = angle * std::numbers::pi / 180;
    const double dx = std::cos(radians);
    const double dy = std::sin(radians);
    const double length = std::abs(outline.width() * dx) + std::abs(outline.height() * dy);
    const double entries = length > 0 ? (kTableSize - 1) / length : 0.0;
    const QPointF centre = outline.center();
    const double middle = (0.5 - offset) * (kTableSize - 1);
    const auto along = [&](double x, double y) { return entries * (x * dx + y * dy); };
    const QPointF first = toOutline.map(QPointF(0.5, 0.5));
    return {along(toOutline.m11(), toOutline.m12()), along(toOutline.m21(), toOutline.m22()),
            middle + along(first.x() - centre.x(), first.y() - centre.y())};
}

bool IsSame(const GradientStops& a, const GradientStops& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& s, const auto& t) {
        return s.colour == t.colour && s.position == t.position && s.midPoint == t.midPoint;
    });
}

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

// A premultiplied colour times coverage, each channel rounded.
QRgb Covered(QRgb colour, uint coverage)
{
    const auto scaled = [&](int channel) {
        const uint product = static_cast<uint>(channel) * coverage + 128;
        return static_cast<int>((product + (product >> 8)) >> 8);
    };
    return qRgba(scaled(qRed(colour)), scaled(qGreen(colour)), scaled(qBlue(colour)), scaled(qAlpha(colour)));
}

// Where the next covered pixel of a row is; most of a frame is empty.
int NextCovered(const uchar* coverage, int from, int count)
{
    std::uint64_t eight = 0;
    while (from + 8 <= count && (std::memcpy(&eight, coverage + from, 8), eight == 0))
        from += 8;
    while (from < count && coverage[from] == 0)
        ++from;
    return from;
}

void ColourRow(const uchar* coverage, QRgb* out, int count, double place, double step,
               const std::vector<QRgb>& table)
{
    for (int i = 0; (i = NextCovered(coverage, i, count)) < count;)
        for (; i < count && coverage[i] != 0; ++i) {
            const double entry = std::clamp(place + step * i + 0.5, 0.0, kTableSize - 1.0);
            const QRgb colour = table[static_cast<std::size_t>(entry)];
            out[i] = coverage[i] == 255 ? colour : Covered(colour, coverage[i]);
        }
}

// The alpha of an area, 8 bits a pixel; a null image when memory is short.
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

} // namespace

QString DefaultFontFamily()
{
    static const QString family = [] {
        const QStringList installed = QFontDatabase::families();
        for (const char* name : {"Inter", "Source Sans 3", "Noto Sans", "Open Sans", "DejaVu Sans"})
            if (installed.contains(QLatin1String(name)))
                return QString(QLatin1String(name));
        return QFont().family();
    }();
    return family;
}

std::vector<QPainterPath> TitleLines(const Title& title, QSizeF frame)
{
    const QFont font = FontOf(title, frame.height());
    const QFontMetricsF metrics(font);
    const QStringList lines = title.text.split(u'\n');
    const double block = metrics.height() + metrics.lineSpacing() * static_cast<double>(lines.size() - 1);
    double baseline = (frame.height() - block) / 2 + metrics.ascent();
    std::vector<QPainterPath> paths;
    for (QString line : lines) {
        QPainterPath& path = paths.emplace_back();
        path.setFillRule(Qt::WindingFill); // overlapping outlines of one glyph stay filled
        line.replace(u'\t', u' ');
        path.addText(LineStart(title.align, frame.width(), metrics.horizontalAdvance(line)), baseline, font,
                     line);
        baseline += metrics.lineSpacing();
    }
    return paths;
}

QPainterPath TitlePath(const Title& title, QSizeF frame)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QPainterPath& line : TitleLines(title, frame))
        path.addPath(line);
    return path;
}

QTransform TitleMotion(const std::array<double, kProperties>& values, const QRectF& outline, QSizeF frame)
{
    const auto value = [&](Property property) { return values[static_cast<std::size_t>(property)]; };
    const QPointF centre = outline.center();
    const double scale = value(Property::Scale) / 100;
    QTransform motion;
    motion.translate(centre.x() + frame.width() * value(Property::X) / 100,
                     centre.y() + frame.height() * value(Property::Y) / 100);
    motion.rotate(value(Property::Rotation));
    motion.scale(scale, scale);
    motion.translate(-centre.x(), -centre.y());
    return motion;
}

void TitleRenderer::UpdateOutline(const Title& title, QSizeF frame)
{
    const Letters letters{title.text,   title.fontFamily, title.fontSize, title.bold,
                          title.italic, title.align,      frame};
    if (m_outline.letters == letters)
        return;
    m_outline = {letters, TitleLines(title, frame), {}};
    for (const QPainterPath& line : m_outline.lines)
        m_outline.bounds |= line.boundingRect();
    m_mask = {};
}

// Fills the outline into `canvas`, which is empty and gets its colours afterwards.
// @return false when memory is short.
bool TitleRenderer::UpdateMask(const QTransform& toPixels, QImage& canvas)
{
    if (m_mask.size == canvas.size() && m_mask.toPixels == toPixels)
        return true;
    m_mask = {};
    const QRectF frame(canvas.rect());
    QRectF covered;
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const QPainterPath& line : m_outline.lines) {
        const QPainterPath path = ContoursIn(frame, toPixels.map(line));
        painter.fillPath(path, Qt::white);
        covered |= path.controlPointRect() & frame;
    }
    painter.end();
    const QRect area = covered.toAlignedRect();
    const QImage coverage = area.isEmpty() ? QImage() : AlphaOf(canvas, area);
    if (coverage.isNull() && !area.isEmpty())
        return false;
    m_mask = {toPixels, canvas.size(), coverage, area};
    return true;
}

void TitleRenderer::UpdateColours(const GradientStops& stops, double opacity)
{
    if (m_colours.opacity == opacity && IsSame(m_colours.stops, stops))
        return;
    m_colours = {stops, opacity, GradientTable(stops, kTableSize, opacity)};
}

QImage TitleRenderer::Render(const Project& project, double frame, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    const Title& title = project.title;
    const std::array<double, kProperties> values = ValuesAt(title.properties, frame);
    const auto value = [&](Property property) { return values[static_cast<std::size_t>(property)]; };
    const QSizeF display = DisplaySize(project.video);
    UpdateOutline(title, display);
    const QTransform toPixels =
        TitleMotion(values, m_outline.bounds, display) *
        QTransform::fromScale(size.width() / display.width(), size.height() / display.height());
    bool isVisible = false;
    const QTransform toOutline = toPixels.inverted(&isVisible);
    if (!isVisible || value(Property::Opacity) <= 0)
        return image;
    if (!UpdateMask(toPixels, image))
        return {};
    UpdateColours(title.fill.stops, value(Property::Opacity) / 100);
    const GradientRun run =
        RunOf(title.fill.angle, value(Property::GradientOffset), m_outline.bounds, toOutline);
    const QRect area = m_mask.area;
    for (int y = 0; y < area.height(); ++y) {
        const int row = area.top() + y;
        ColourRow(m_mask.coverage.constScanLine(y),
                  reinterpret_cast<QRgb*>(image.scanLine(row)) + area.left(), area.width(),
                  run.origin + run.perColumn * area.left() + run.perRow * row, run.perColumn,
                  m_colours.table);
    }
    return image;
}

} // namespace titler
