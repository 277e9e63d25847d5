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

// As in a strip of the usual height, and what the strip has grown by its own part is stretched.
void DrawPicture(QPainter& painter, const CRect& client, int growth)
{
    const KvSkinImage picture = KvGuiRes::LoadImageW(L"ribbontitlebar_bk");
    QRectF whole = QRect(client);
    if (growth == 0) {
        picture.Draw(painter, whole);
        return;
    }
    whole.setBottom(whole.bottom() - growth);
    const int edge = SeparatorLines(client, growth)[1].bottom;
    const int strip = edge - client.top;
    const DevicePixels pixels(painter);
    painter.save();
    painter.setClipRect(pixels.Snapped(QRect(client.left, client.top, client.Width(), strip)));
    painter.translate(0, client.top);
    painter.scale(1, static_cast<double>(strip) / (strip - growth));
    painter.translate(0, -client.top);
    picture.Draw(painter, whole);
    painter.restore();
    painter.save();
    painter.setClipRect(pixels.Snapped(QRect(client.left, edge, client.Width(), client.bottom - edge)));
    picture.Draw(painter, whole.translated(0, growth));
    painter.restore();
}

QPixmap MakeBackground(const CRect& client, QSize size, const QColor& below, int growth)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(below.red(), below.green(), below.blue()));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(size.width()) / client.Width(),
                  static_cast<double>(size.height()) / client.Height());
    DrawPicture(painter, client, growth);
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
