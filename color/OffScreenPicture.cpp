#include "color/OffScreenPicture.h"

#include "color/GradientPainter.h"
#include "color/GradientRaster.h"
#include "platform/DevicePixels.h"

#include <utility>

namespace kv {

void OffScreenPicture::Paint(Graphics& graphics, const CRect& rect, const Draw& draw)
{
    const DeviceGrid grid(PixelRatio(graphics));
    const QSize size(grid.Edge(rect.right) - grid.Edge(rect.left),
                     grid.Edge(rect.bottom) - grid.Edge(rect.top));
    if (size.isEmpty())
        return;
    const bool fits = m_picture.size() == size && m_picture.devicePixelRatio() == grid.Ratio();
    if (!std::exchange(m_valid, true) || !fits) {
        if (m_picture.size() != size)
            m_picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
        m_picture.setDevicePixelRatio(grid.Ratio());
        draw(PixelsOf(m_picture), grid);
    }
    // The client area may begin between two device pixels: its pictures all move to the nearest one together.
    const DevicePixels devicePixels(graphics);
    const QPoint origin = devicePixels.Nearest({0, 0});
    graphics.drawImage(devicePixels.ToLogical(origin + QPoint(grid.Edge(rect.left), grid.Edge(rect.top))),
                       m_picture);
}

} // namespace kv
