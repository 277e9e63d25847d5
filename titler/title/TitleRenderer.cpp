#include "title/TitleRenderer.h"

#include "title/PixelMath.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPathStroker>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

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

void TitleRenderer::UpdateLetters(const Title& title, QSizeF frame)
{
    const double stroke = title.outline.on ? 2 * title.outline.width / 100 * frame.height() : 0;
    const Text text{title.text,   title.fontFamily, title.fontSize, title.bold,
                    title.italic, title.align,      frame};
    const bool isSameText = m_letters.text == text;
    if (isSameText && m_letters.stroke == stroke)
        return;
    if (!isSameText) {
        m_letters = {text, 0, TitleLines(title, frame), {}, {}};
        for (const QPainterPath& line : m_letters.lines)
            m_letters.bounds |= line.boundingRect();
    }
    m_letters.stroke = stroke;
    m_letters.withOutline = m_letters.lines;
    if (stroke > 0) {
        QPainterPathStroker stroker{QPen(Qt::black, stroke, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin)};
        for (const QPainterPath& line : m_letters.lines) {
            m_letters.withOutline.push_back(stroker.createStroke(line));
            m_letters.withOutline.back().setFillRule(Qt::WindingFill);
        }
    }
    m_mask = {};
    m_shadow = {};
}

// @return false when memory is short.
bool TitleRenderer::UpdateMask(const Place& place)
{
    if (m_mask.place == place)
        return true;
    const QRect frame({}, place.size);
    const bool isOutlined = m_letters.stroke > 0;
    const QRect area = AreaOf(isOutlined ? m_letters.withOutline : m_letters.lines, place.toPixels, frame);
    m_mask = {};
    QImage letters = CoverageOf(m_letters.lines, place.toPixels, area);
    QImage outlined = isOutlined ? CoverageOf(m_letters.withOutline, place.toPixels, area) : QImage();
    if (!area.isEmpty() && (letters.isNull() || outlined.isNull() == isOutlined))
        return false;
    m_mask = {place, area, std::move(letters), std::move(outlined)};
    return true;
}

// The shadow lies on the text at rest and moves along with it.
// @param scale how many pixels a step within the frame at rest is, across and down.
bool TitleRenderer::UpdateShadow(const TextShadow& shadow, const Place& place, QSizeF scale)
{
    const double height = m_letters.text.frame.height() / 100;
    const QPointF offset(shadow.x * height, shadow.y * height);
    const QSizeF reach = scale * (shadow.blur * height);
    if (m_shadow.place == place && m_shadow.offset == offset && m_shadow.reach == reach)
        return true;
    m_shadow = {};
    std::optional<Coverage> coverage = BlurredCoverage(
        m_letters.withOutline, QTransform::fromTranslate(offset.x(), offset.y()) * place.toPixels,
        QRect({}, place.size), reach);
    if (!coverage)
        return false;
    m_shadow = {place, offset, reach, std::move(*coverage)};
    return true;
}

// Fill and outline share the pixels between them: what of a pixel the outlined letters cover beyond the
// letters gets the outline's colour. To draw one over the other would let the lower one shine through at the
// edges.
void TitleRenderer::ColourRow(int y, QRgb outline, QRgb* out)
{
    const QRect& area = m_mask.area;
    const int count = area.width();
    const uchar* letters = m_mask.letters.constScanLine(y);
    const uchar* outlined = m_mask.outlined.isNull() ? letters : m_mask.outlined.constScanLine(y);
    for (int begin = 0, end = 0; (begin = NextCovered(outlined, end, count)) < count;) {
        for (end = begin; end < count && outlined[end] != 0;)
            ++end;
        m_fill.Sample(area.left() + begin, area.top() + y, end - begin, m_row.data());
        for (int i = begin; i < end; ++i) {
            const QRgb fill = m_row[static_cast<std::size_t>(i - begin)];
            const uint beyond = outlined[i] > letters[i] ? outlined[i] - uint(letters[i]) : 0;
            const QRgb colour =
                letters[i] == 255 ? fill : Covered(fill, letters[i]) + Covered(outline, beyond);
            out[i] = qAlpha(colour) == 255 ? colour : Over(colour, out[i]);
        }
    }
}

// @param start which pixel of the frame, that is so large, the image begins with.
// @return false when memory is short.
bool TitleRenderer::Draw(const Project& project, double frame, QSize size, QPoint start, QImage& image)
{
    const Title& title = project.title;
    const std::array<double, kProperties> values = ValuesAt(title.properties, frame);
    const auto value = [&](Property property) { return values[static_cast<std::size_t>(property)]; };
    const QSizeF display = DisplaySize(project.video);
    UpdateLetters(title, display);
    const QSizeF scale(size.width() / display.width(), size.height() / display.height());
    const Place place{TitleMotion(values, m_letters.bounds, display) *
                          QTransform::fromScale(scale.width(), scale.height()) *
                          QTransform::fromTranslate(-start.x(), -start.y()),
                      image.size()};
    bool isVisible = false;
    const QTransform toLetters = place.toPixels.inverted(&isVisible);
    const double opacity = value(Property::Opacity) / 100;
    if (!isVisible || opacity <= 0)
        return true;
    if (title.shadow.on) {
        if (!UpdateShadow(title.shadow, place, scale * (value(Property::Scale) / 100)))
            return false;
        DrawOver(image, m_shadow.coverage, PremultipliedColour(title.shadow.colour, opacity));
    }
    if (!UpdateMask(place))
        return false;
    m_fill.SetPaint(title.fill, opacity);
    m_fill.SetPlace(m_letters.bounds, toLetters, value(Property::GradientOffset));
    m_row.resize(static_cast<std::size_t>(m_mask.area.width()));
    const QRgb outline = PremultipliedColour(title.outline.colour, opacity);
    for (int y = 0; y < m_mask.area.height(); ++y)
        ColourRow(y, outline,
                  reinterpret_cast<QRgb*>(image.scanLine(m_mask.area.top() + y)) + m_mask.area.left());
    return true;
}

QImage TitleRenderer::Render(const Project& project, double frame, QSize size, const QRect& part)
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    return Draw(project, frame, size, part.topLeft(), image) ? image : QImage();
}

QImage TitleRenderer::RenderFrame(const Project& project, double frame, QSize size)
{
    const Paint& paint = project.background;
    if (paint.kind == PaintKind::None)
        return Render(project, frame, size);
    const QSizeF display = DisplaySize(project.video);
    if (m_background.picture.size() != size || m_background.display != display ||
        !LooksSame(m_background.paint, paint))
        m_background = {paint, display, PaintedImage(paint, size, QRect({}, size), display)};
    QImage image = m_background.picture.copy();
    return !image.isNull() && Draw(project, frame, size, {}, image) ? image : QImage();
}

} // namespace titler
