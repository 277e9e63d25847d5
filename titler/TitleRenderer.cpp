#include "TitleRenderer.h"

#include "GradientTable.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

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

GradientRun RunOf(const Title& title, const QRectF& outline, double scaleX, double scaleY)
{
    const double angle = title.gradientAngle * std::numbers::pi / 180;
    const double dx = std::cos(angle);
    const double dy = std::sin(angle);
    const double length = std::abs(outline.width() * dx) + std::abs(outline.height() * dy);
    const double entries = length > 0 ? (kTableSize - 1) / length : 0.0;
    const QPointF centre = outline.center();
    const double middle = (0.5 - title[Property::GradientOffset].value) * (kTableSize - 1);
    const GradientRun run{entries * dx / scaleX, entries * dy / scaleY, 0};
    return {run.perColumn, run.perRow,
            middle - entries * (centre.x() * dx + centre.y() * dy) + (run.perColumn + run.perRow) / 2};
}

bool HasSameOutline(const Title& a, const Title& b)
{
    const auto fields = [](const Title& t) {
        return std::tie(t.text, t.fontFamily, t.fontSize, t.bold, t.italic, t.align);
    };
    return fields(a) == fields(b);
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

void ColourRow(const uchar* coverage, QRgb* out, int count, double place, double step,
               const std::vector<QRgb>& table)
{
    for (int i = 0; i < count; ++i, place += step) {
        if (coverage[i] == 0)
            continue;
        const double entry = std::clamp(place + 0.5, 0.0, static_cast<double>(kTableSize - 1));
        const QRgb colour = table[static_cast<std::size_t>(entry)];
        out[i] = coverage[i] == 255 ? colour : Covered(colour, coverage[i]);
    }
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

QPainterPath TitlePath(const Title& title, QSizeF frame)
{
    const QFont font = FontOf(title, frame.height());
    const QFontMetricsF metrics(font);
    const QStringList lines = title.text.split(u'\n');
    const double block = metrics.height() + metrics.lineSpacing() * static_cast<double>(lines.size() - 1);
    double baseline = (frame.height() - block) / 2 + metrics.ascent();
    QPainterPath path;
    path.setFillRule(Qt::WindingFill); // overlapping outlines of one glyph stay filled
    for (QString line : lines) {
        line.replace(u'\t', u' ');
        path.addText(LineStart(title.align, frame.width(), metrics.horizontalAdvance(line)), baseline, font,
                     line);
        baseline += metrics.lineSpacing();
    }
    return path;
}

void TitleRenderer::UpdateMask(const Project& project, QSize size)
{
    const Title& title = project.title;
    const QSizeF display = DisplaySize(project.video);
    if (m_mask.size == size && m_mask.display == display && HasSameOutline(m_mask.title, title))
        return;
    const QPainterPath path = TitlePath(title, display);
    const QTransform scale =
        QTransform::fromScale(size.width() / display.width(), size.height() / display.height());
    const QRectF covered = scale.mapRect(path.boundingRect());
    m_mask = {title,
              display,
              size,
              {},
              covered.toAlignedRect().intersected(QRect(QPoint(), size)),
              path.boundingRect()};
    if (m_mask.area.isEmpty())
        return;
    m_mask.coverage = QImage(m_mask.area.size(), QImage::Format_Grayscale8);
    if (m_mask.coverage.isNull())
        return;
    m_mask.coverage.fill(Qt::black);
    QPainter painter(&m_mask.coverage);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-m_mask.area.topLeft());
    painter.fillPath(scale.map(path), Qt::white);
}

QImage TitleRenderer::Render(const Project& project, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    UpdateMask(project, size);
    if (m_mask.coverage.isNull())
        return image;
    const QSizeF display = DisplaySize(project.video);
    const GradientRun run = RunOf(project.title, m_mask.outline, size.width() / display.width(),
                                  size.height() / display.height());
    const std::vector<QRgb> table = GradientTable(project.title.stops, kTableSize);
    const QRect area = m_mask.area;
    for (int y = 0; y < area.height(); ++y) {
        const int row = area.top() + y;
        ColourRow(m_mask.coverage.constScanLine(y),
                  reinterpret_cast<QRgb*>(image.scanLine(row)) + area.left(), area.width(),
                  run.origin + run.perColumn * area.left() + run.perRow * row, run.perColumn, table);
    }
    return image;
}

} // namespace titler
