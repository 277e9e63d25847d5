#include "chrome/CaptionPainter.h"

#include "chrome/CaptionLayout.h"
#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QPainter>

namespace kv {

namespace {

// The device pixels that the client area covers.
QSize DeviceSize(const Graphics& graphics, const QRect& client)
{
    return graphics.deviceTransform().mapRect(DevicePixels(graphics).Snapped(client)).size().toSize();
}

QPixmap MakeBackground(const CRect& client, QSize size, const QColor& below, int growth)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(below.red(), below.green(), below.blue()));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(size.width()) / client.Width(),
                  static_cast<double>(size.height()) / client.Height());
    KvGuiRes::LoadImageW(L"ribbontitlebar_bk").Draw(painter, QRectF(QRect(client)));
    painter.setRenderHint(QPainter::Antialiasing, false);
    const DevicePixels pixels(painter);
    const auto [upper, lower] = SeparatorLines(client, growth);
    painter.fillRect(pixels.Snapped(QRect(upper)),
                     SkinColour(L"keRibbonTitleBarSeperatorTopColor", 0xFF18181Au));
    painter.fillRect(pixels.Snapped(QRect(lower)),
                     SkinColour(L"keRibbonTitleBarSeperatorBtmColor", 0xFF46464Cu));
    painter.end();
    return QPixmap::fromImage(std::move(image));
}

} // namespace

void CaptionPainter::DrawBackground(Graphics& graphics, const CRect& client, const QColor& below, int growth)
{
    const QSize size = DeviceSize(graphics, client);
    if (client.IsRectEmpty() || size.isEmpty())
        return;
    if (m_background.size() != size || m_below != below || m_growth != growth) {
        m_background = MakeBackground(client, size, below, growth);
        m_below = below;
        m_growth = growth;
    }
    graphics.drawPixmap(DevicePixels(graphics).Snapped(QRect(client)), m_background, m_background.rect());
}

} // namespace kv
