#include "color/ColourMapPainter.h"

#include "KvColorMapWnd.h"
#include "color/ColourFieldRaster.h"
#include "color/ColourMapLayout.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"

#include <algorithm>

namespace kv {

namespace {

constexpr qreal kMarkRadius = 4.5;
constexpr qreal kMarkReach = kMarkRadius + 2; ///< with its lines
constexpr int kBarHalf = 2;                   ///< a slider's mark reaches this far above and below its row

/// White between black, so that it is seen on every colour.
void DrawFieldMark(Graphics& graphics, QPointF centre)
{
    graphics.setBrush(Qt::NoBrush);
    for (const auto& [radius, colour] :
         {std::pair(kMarkRadius + 1, Qt::black), std::pair(kMarkRadius - 1, Qt::black),
          std::pair(kMarkRadius, Qt::white)}) {
        graphics.setPen(QPen(colour, 1.25));
        graphics.drawEllipse(centre, radius, radius);
    }
}

/// The mark shows whole, also where black, white and pure colours are: at the edges.
QPointF KeptInside(QPointF centre, const QRect& client)
{
    const QRectF all(client);
    const QRectF room = all.adjusted(kMarkReach, kMarkReach, -kMarkReach, -kMarkReach);
    const auto keep = [](qreal at, qreal low, qreal high) {
        return low < high ? std::clamp(at, low, high) : (low + high) / 2;
    };
    return {keep(centre.x(), room.left(), room.right()), keep(centre.y(), room.top(), room.bottom())};
}

void DrawSliderMark(Graphics& graphics, const QRect& client, int row)
{
    const DevicePixels pixels(graphics);
    const int top =
        std::clamp(row - kBarHalf, client.top(), std::max(client.top(), client.bottom() - 2 * kBarHalf));
    const QRectF outer = pixels.Snapped(QRectF(client.left(), top, client.width(), 2 * kBarHalf + 1));
    const qreal line = pixels.Hairline();
    const auto frame = [&](qreal inset, Qt::GlobalColor colour) {
        const QRectF rect = outer.adjusted(inset, inset, -inset, -inset);
        QPainterPath path;
        path.addRect(rect);
        path.addRect(rect.adjusted(line, line, -line, -line));
        graphics.fillPath(path, colour);
    };
    frame(0, Qt::black);
    frame(line, Qt::white);
}

/// A dark line inside the ring: it stands out from colours like its own.
void DrawFocus(Graphics& graphics, const QRect& client)
{
    const qreal line = DevicePixels(graphics).Hairline();
    const QRectF inner = QRectF(client).adjusted(line, line, -line, -line);
    graphics.setBrush(Qt::NoBrush);
    graphics.setPen(QPen(Qt::black, line));
    graphics.drawRect(inner.adjusted(line / 2, line / 2, -line / 2, -line / 2));
    DrawFocusRing(graphics, client);
}

void DrawPixels(PixelView pixels, const DeviceGrid& grid, const ColourMapShape& shape,
                const ColourState& colour)
{
    const CSize size = shape.client.Size();
    if (shape.type == kKvColorMapField)
        DrawColourField(pixels, grid, size, shape.lock, colour);
    else if (shape.type == kKvColorMapSlider)
        DrawColourSlider(pixels, grid, size, shape.lock, colour);
    else
        DrawAlphaSlider(pixels, grid, size, colour);
}

} // namespace

std::optional<ColourChannel> ChannelToTheRight(const ColourMapShape& shape)
{
    if (shape.type != kKvColorMapField)
        return std::nullopt;
    return AxesOf(shape.lock).x;
}

ColourChannel ChannelUpwards(const ColourMapShape& shape)
{
    if (shape.type == kKvColorMapField)
        return AxesOf(shape.lock).y;
    return shape.type == kKvColorMapSlider ? SliderChannel(shape.lock) : ColourChannel::Alpha;
}

bool ColourMapPainter::IsPictureOf(const ColourMapShape& shape, const ColourState& colour) const
{
    if (shape != m_shape)
        return false;
    if (shape.type != kKvColorMapField)
        return colour == m_colour;
    // A field shows every value of two channels; moving in it changes nothing but the mark.
    const ColourChannel locked = LockedChannel(shape.lock);
    return colour.Place(locked) == m_colour.Place(locked);
}

void ColourMapPainter::Paint(Graphics& graphics, const ColourMapShape& shape, const ColourState& colour,
                             bool enabled, bool focused)
{
    if (!IsPictureOf(shape, colour))
        m_picture.Invalidate();
    m_shape = shape;
    m_colour = colour;
    graphics.setOpacity(enabled ? 1 : kDisabledOpacity);
    m_picture.Paint(graphics, shape.client, [&](PixelView pixels, const DeviceGrid& grid) {
        DrawPixels(pixels, grid, shape, colour);
    });
    const auto right = ChannelToTheRight(shape);
    const ColourPlace place{right ? colour.Place(*right) : 0, colour.Place(ChannelUpwards(shape))};
    const CPoint at = PointOf(shape.client, place);
    graphics.setRenderHint(QPainter::Antialiasing);
    if (focused && enabled)
        DrawFocus(graphics, shape.client);
    if (right)
        DrawFieldMark(graphics, KeptInside(QPointF(at.x + 0.5, at.y + 0.5), shape.client));
    else
        DrawSliderMark(graphics, shape.client, at.y);
    graphics.setOpacity(1);
}

} // namespace kv
