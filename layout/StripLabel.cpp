#include "layout/StripLabel.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace kv {

namespace {

constexpr int kPlateAlpha = 176;
constexpr double kPlateRadius = 2;
constexpr double kPlateMargin = 2;
constexpr double kEdge = 1; ///< to the thumbnail's edges
constexpr double kLightText = 128;

/// Dark behind light text and the other way round: a thumbnail may have any colour.
QColor PlateColour(const QColor& text)
{
    const double light = 0.299 * text.red() + 0.587 * text.green() + 0.114 * text.blue();
    const int level = light >= kLightText ? 0 : 255;
    return {level, level, level, kPlateAlpha};
}

} // namespace

QImage MakeStripLabel(const QString& text, const ThumbStyle& style)
{
    const QFontMetricsF metrics(style.font);
    const QSizeF thumb = QSizeF(style.thumb) / style.ratio;
    const double most = thumb.width() - 2 * (kEdge + kPlateMargin);
    if (text.isEmpty() || most <= 0 || thumb.height() - 2 * kEdge < metrics.height())
        return {};
    const QString shown = metrics.elidedText(text, Qt::ElideRight, most);
    const QSizeF size(metrics.horizontalAdvance(shown) + 2 * kPlateMargin, metrics.height());
    QImage label(static_cast<int>(std::ceil(size.width() * style.ratio)),
                 static_cast<int>(std::ceil(size.height() * style.ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    label.setDevicePixelRatio(style.ratio);
    label.fill(Qt::transparent);
    const QRectF plate(QPointF(0, 0), QSizeF(label.size()) / style.ratio);
    QPainter painter(&label);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PlateColour(style.text));
    painter.drawRoundedRect(plate, kPlateRadius, kPlateRadius);
    painter.setFont(style.font);
    painter.setPen(style.text);
    painter.drawText(plate, Qt::AlignCenter | Qt::TextSingleLine, shown);
    return label;
}

} // namespace kv
