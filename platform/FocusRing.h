// The ring that shows where the focus is: the same around a button and around a painted part.
#pragma once

#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QPainterPath>

namespace kv {

inline constexpr qreal kFocusRingRadius = 2.5;

/// Draws it just inside the rectangle, a logical pixel thick, on whole device pixels.
inline void DrawFocusRing(QPainter& painter, const QRectF& room)
{
    const qreal ratio = painter.deviceTransform().m11();
    const qreal width = std::max(1.0, std::round(ratio)) / ratio;
    const qreal inner = kFocusRingRadius - width;
    const QRectF outer = DevicePixels(painter).Snapped(room);
    if (outer.width() < 2 * width || outer.height() < 2 * width)
        return; // a part that there is no room for
    QPainterPath ring;
    ring.addRoundedRect(outer, kFocusRingRadius, kFocusRingRadius);
    ring.addRoundedRect(outer.adjusted(width, width, -width, -width), inner, inner);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(ring, FocusColour());
    painter.restore();
}

} // namespace kv
