// The skin's pictures as painters want them.
#pragma once

#include "KvGuiRes.h"
#include "platform/DevicePixels.h"

namespace kv {

/// Draws a picture at its place from a pixmap that is kept: on whole device pixels, sharp at any pixel ratio.
inline void DrawSkinPicture(QPainter& painter, const KvSkinImage& picture, const QRectF& place)
{
    const QRectF target = DevicePixels(painter).Snapped(place);
    const QSize size = painter.deviceTransform().mapRect(target).size().toSize();
    const QPixmap pixmap = picture.Pixmap(size, 1);
    if (!pixmap.isNull())
        painter.drawPixmap(target, pixmap, pixmap.rect());
}

} // namespace kv
