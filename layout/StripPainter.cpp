#include "layout/StripPainter.h"

#include "layout/StripLayout.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"

#include <QFontMetricsF>

#include <array>
#include <cmath>
#include <cstdio>

namespace kv {

namespace {

constexpr int kMarkSize = 24;
constexpr double kFrameWidth = 0.8;
constexpr int kFocusInset = 2;
/// Of a part of a thumbnail that lies outside of the window; longer ones are cut off there.
constexpr int kOutside = 16;
constexpr double kDisabledOpacity = 0.45;
constexpr int kPlateAlpha = 176;
constexpr double kPlateRadius = 2;
constexpr double kPlateMargin = 2;
constexpr double kLightText = 128;

/// Dark behind light text and the other way round: a thumbnail may have any colour.
QColor PlateColour(const QColor& text)
{
    const double light = 0.299 * text.red() + 0.587 * text.green() + 0.114 * text.blue();
    const int level = light >= kLightText ? 0 : 255;
    return {level, level, level, kPlateAlpha};
}

void DrawOnPlate(Graphics& graphics, const QString& text, const QRectF& room, Qt::Alignment side,
                 const QColor& colour)
{
    const QFontMetricsF metrics(graphics.font());
    const double most = room.width() - 2 * kPlateMargin;
    if (most <= 0 || room.height() < metrics.height())
        return;
    const QString shown = metrics.elidedText(text, Qt::ElideRight, most);
    QRectF plate(0, 0, metrics.horizontalAdvance(shown) + 2 * kPlateMargin, metrics.height());
    if (side == Qt::AlignLeft)
        plate.moveTopLeft(room.topLeft());
    else
        plate.moveBottomRight(room.bottomRight());
    graphics.setPen(Qt::NoPen);
    graphics.setBrush(PlateColour(colour));
    graphics.drawRoundedRect(plate, kPlateRadius, kPlateRadius);
    graphics.setPen(colour);
    graphics.drawText(plate, Qt::AlignCenter | Qt::TextSingleLine, shown);
}

} // namespace

/// Where a thumbnail is drawn: on whole device pixels, each as large as the others.
struct StripPainter::Place
{
    Place(const Graphics& graphics, const CRect& client, const CRect& rect)
        : toLogical(graphics.deviceTransform().inverted())
        , whole(QPointF(graphics.deviceTransform().map(QPointF(rect.left, rect.top)).toPoint()),
                QSizeF(DeviceSize(graphics, {rect.Width(), rect.Height()})))
    {
        const QRectF window = graphics.deviceTransform().mapRect(
            QRectF(QRect(client).adjusted(-kOutside, -kOutside, kOutside, kOutside)));
        seen = whole & window;
    }

    QRectF Whole() const { return toLogical.mapRect(whole); }
    QRectF Seen() const { return toLogical.mapRect(seen); }
    /// The part of a picture of the whole that is seen.
    QRectF SeenOf(const QImage& picture) const
    {
        const double x = picture.width() / whole.width();
        const double y = picture.height() / whole.height();
        return {(seen.left() - whole.left()) * x, (seen.top() - whole.top()) * y, seen.width() * x,
                seen.height() * y};
    }
    bool IsCut() const { return seen != whole; }

    QTransform toLogical;
    QRectF whole; ///< device pixels, as is `seen`
    QRectF seen;
};

void StripPainter::LoadSkin()
{
    m_frames[0] = SkinColour(L"keLayoutViewUnitFrameColorNormal", 0xFF686870u);
    m_frames[1] = SkinColour(L"keLayoutViewUnitFrameColorHover", 0xFFFFFFFFu);
    m_frames[2] = SkinColour(L"keLayoutViewUnitFrameColorSelect", 0xFF7EC4FFu);
    m_border = SkinColour(L"keLayoutViewWndFrameColor", 0xFF46464Bu);
    m_empty = SkinColour(L"keLayoutViewUnitBackgroundColor", 0xFF1F1F22u);
    m_shadow = KvGuiRes::LoadImageW(L"layoutshadow.png");
}

QSize StripPainter::DeviceSize(const Graphics& graphics, QSize size)
{
    const QTransform& toDevice = graphics.deviceTransform();
    return {static_cast<int>(std::lround(size.width() * toDevice.m11())),
            static_cast<int>(std::lround(size.height() * toDevice.m22()))};
}

QSize StripPainter::DeviceMarkSize(const Graphics& graphics)
{
    return DeviceSize(graphics, {kMarkSize, kMarkSize});
}

void StripPainter::DrawBackground(Graphics& graphics, const CRect& client, const StripLook& look) const
{
    graphics.fillRect(QRect(client), look.background);
}

void StripPainter::DrawBorder(Graphics& graphics, const CRect& client) const
{
    const DevicePixels pixels(graphics);
    const double line = pixels.Hairline();
    const QRectF edge = pixels.Snapped(QRect(client));
    graphics.fillRect(QRectF(edge.left(), edge.top(), edge.width(), line), m_border);
    graphics.fillRect(QRectF(edge.left(), edge.bottom() - line, edge.width(), line), m_border);
    graphics.fillRect(QRectF(edge.left(), edge.top(), line, edge.height()), m_border);
    graphics.fillRect(QRectF(edge.right() - line, edge.top(), line, edge.height()), m_border);
}

void StripPainter::DrawCell(Graphics& graphics, const CRect& client, const StripCell& cell,
                            const StripThumb& thumb, const StripLook& look) const
{
    const Place place(graphics, client, cell.rect);
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.setOpacity(look.enabled ? 1.0 : kDisabledOpacity);
    // Of a thumbnail that is longer than the window the shadow would be a picture beyond measure.
    if (!m_shadow.IsNull() && cell.rect.Width() <= client.Width() && cell.rect.Height() <= client.Height())
        DrawSkinPicture(graphics, m_shadow,
                        place.Whole().translated(StripLayout::kShadow, StripLayout::kShadow));
    if (!place.seen.isEmpty()) {
        graphics.fillRect(place.Seen(), thumb.isThere ? QColor(Qt::black) : m_empty);
        if (!thumb.picture.isNull()) {
            graphics.setRenderHint(QPainter::SmoothPixmapTransform, place.IsCut());
            graphics.drawImage(place.Seen(), thumb.picture, place.SeenOf(thumb.picture));
        }
        if (thumb.isThere) {
            const QRectF rect = place.Whole();
            if (!thumb.mark.isNull())
                graphics.drawImage(DevicePixels(graphics).Snapped(QRectF(
                                       rect.right() - kMarkSize - 1, rect.top() + 1, kMarkSize, kMarkSize)),
                                   thumb.mark);
            std::array<char, 16> label{};
            std::snprintf(label.data(), label.size(), "%04d", cell.index);
            const QRectF room = rect.adjusted(1, 1, -1, -1);
            graphics.setFont(look.font);
            DrawOnPlate(graphics, QLatin1String(label.data()), room, Qt::AlignLeft, look.text);
            if (!thumb.name.isEmpty())
                DrawOnPlate(graphics, thumb.name, room, Qt::AlignRight, look.text);
        }
        DrawFrame(graphics, place, cell.frame);
        if (cell.focused)
            DrawFocusRing(graphics,
                          place.Seen().adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset));
    }
    graphics.restore();
}

void StripPainter::DrawFrame(Graphics& graphics, const Place& place, StripFrame frame) const
{
    const QRectF lines = place.toLogical.mapRect(place.seen.adjusted(0.5, 0.5, -0.5, -0.5));
    graphics.setPen(QPen(m_frames[static_cast<std::size_t>(frame)], kFrameWidth, Qt::SolidLine, Qt::SquareCap,
                         Qt::MiterJoin));
    graphics.setBrush(Qt::NoBrush);
    graphics.drawRect(lines);
}

} // namespace kv
