#include "layout/StripPainter.h"

#include "layout/StripLayout.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

constexpr int kMarkSize = 24;
constexpr double kFrameWidth = 0.8;
constexpr int kFocusInset = 2;
/// Of a part of a thumbnail that lies outside of the window; longer ones are cut off there.
constexpr int kOutside = 16;
constexpr int kDisabledVeil = 140; // alpha

QSize DeviceSize(const Graphics& graphics, QSize size)
{
    const QTransform& toDevice = graphics.deviceTransform();
    return {static_cast<int>(std::lround(size.width() * toDevice.m11())),
            static_cast<int>(std::lround(size.height() * toDevice.m22()))};
}

/// The picture's own pixels, from a corner between device pixels on.
void DrawPixels(Graphics& graphics, const QPointF& corner, const QImage& picture)
{
    const DevicePixels pixels(graphics);
    graphics.drawImage(pixels.ToLogical(pixels.Nearest(corner)), picture);
}

/// Mark, number and name; the name alone where large letters leave no room for both.
void DrawLabels(Graphics& graphics, const QRectF& rect, const StripThumb& thumb)
{
    if (!thumb.mark.isNull())
        DrawPixels(graphics, {rect.right() - kMarkSize - 1, rect.top() + 1}, thumb.mark);
    const QRectF number(rect.topLeft() + QPointF(1, 1), thumb.number.deviceIndependentSize());
    QRectF title({}, thumb.title.deviceIndependentSize());
    title.moveBottomRight(rect.bottomRight() - QPointF(1, 1));
    if (!thumb.number.isNull() && !number.intersects(title))
        DrawPixels(graphics, number.topLeft(), thumb.number);
    if (!thumb.title.isNull())
        DrawPixels(graphics, title.topLeft(), thumb.title);
}

} // namespace

/// Where a thumbnail is drawn: on whole device pixels, each as large as the others.
struct StripPainter::Place
{
    Place(const Graphics& graphics, const CRect& client, const CRect& rect)
        : toLogical(graphics.deviceTransform().inverted())
        , ratio(graphics.deviceTransform().m11())
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
    double ratio; ///< device pixels in a logical one
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

ThumbStyle StripPainter::StyleFor(const Graphics& graphics, const CRect& thumb, const StripLook& look)
{
    return {DeviceSize(graphics, {thumb.Width(), thumb.Height()}),
            DeviceSize(graphics, {kMarkSize, kMarkSize}), graphics.deviceTransform().m11(), look.font,
            look.text};
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
    // Of a thumbnail that is longer than the window the shadow would be a picture beyond measure.
    if (!m_shadow.IsNull() && cell.rect.Width() <= client.Width() && cell.rect.Height() <= client.Height())
        DrawShadow(graphics, place);
    if (place.seen.isEmpty())
        return;
    // A picture of the largest size is kept smaller than its thumbnail.
    const bool isStretched = place.IsCut() || thumb.picture.size() != place.whole.size().toSize();
    if (thumb.picture.isNull() || isStretched)
        graphics.fillRect(place.Seen(), thumb.isThere ? QColor(Qt::black) : m_empty);
    if (!thumb.picture.isNull() && isStretched)
        graphics.drawImage(place.Seen(), thumb.picture, place.SeenOf(thumb.picture));
    else if (!thumb.picture.isNull())
        graphics.drawImage(place.Whole().topLeft(), thumb.picture);
    // Under the texts, which are read through no line.
    if (cell.focused)
        DrawFocusRing(graphics, place.Seen().adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset));
    if (thumb.isThere)
        DrawLabels(graphics, place.Whole(), thumb);
    DrawFrame(graphics, place, cell.frame);
    if (!look.enabled) {
        QColor veil = look.background;
        veil.setAlpha(kDisabledVeil);
        graphics.fillRect(place.Seen(), veil);
    }
}

// Only what the thumbnail leaves uncovered.
void StripPainter::DrawShadow(Graphics& graphics, const Place& place) const
{
    const QSize size = place.whole.size().toSize();
    const double ratio = place.ratio;
    const double by = std::round(StripLayout::kShadow * ratio);
    const QPixmap shadow = m_shadow.Pixmap(size, 1);
    const auto draw = [&](const QRectF& part) {
        graphics.drawPixmap(place.toLogical.mapRect(part.translated(place.whole.topLeft() + QPointF(by, by))),
                            shadow, part);
    };
    const double right = std::min<double>(by, size.width());
    const double below = std::min<double>(by, size.height());
    draw({0, size.height() - below, static_cast<double>(size.width()), below});
    draw({size.width() - right, 0, right, size.height() - below});
}

void StripPainter::DrawFrame(Graphics& graphics, const Place& place, StripFrame frame) const
{
    QColor colour = m_frames[static_cast<std::size_t>(frame)];
    const double width = kFrameWidth * place.ratio;
    const auto fill = [&](double left, double top, double right, double bottom) {
        graphics.fillRect(place.toLogical.mapRect(QRectF(QPointF(left, top), QPointF(right, bottom))),
                          colour);
    };
    const QRectF& seen = place.seen;
    if (width <= 1) { // a line within one pixel: less of the colour, and no outline to fill
        colour.setAlphaF(static_cast<float>(colour.alphaF() * width));
        fill(seen.left(), seen.top(), seen.right(), seen.top() + 1);
        fill(seen.left(), seen.bottom() - 1, seen.right(), seen.bottom());
        fill(seen.left(), seen.top() + 1, seen.left() + 1, seen.bottom() - 1);
        fill(seen.right() - 1, seen.top() + 1, seen.right(), seen.bottom() - 1);
        return;
    }
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.setPen(QPen(colour, kFrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    graphics.setBrush(Qt::NoBrush);
    graphics.drawRect(place.toLogical.mapRect(seen.adjusted(0.5, 0.5, -0.5, -0.5)));
    graphics.restore();
}

} // namespace kv
