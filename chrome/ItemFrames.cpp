#include "chrome/ItemFrames.h"

#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QPainter>
#include <QPainterPath>

namespace kv {
namespace {

constexpr double kOuterPen = 1.8;
constexpr int kOuterSide = 1; // of the outer frame beside the tab
constexpr int kOuterTop = 2;
constexpr int kOuterBottom = 4;

// Through pixel centres.
void StrokeOuterFrame(Graphics& graphics, const QPainterPath& path)
{
    QPen pen(CaptionFrameColour(), kOuterPen);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.strokePath(path.translated(0.5, 0.5), pen);
    graphics.restore();
}

} // namespace

void DrawTabFrame(Graphics& graphics, const CRect& tab)
{
    const QColor dark = SkinColour(L"keRibbonTitleBarTabFrameDarkColor", 0xFF1C1C1Fu);
    const DevicePixels pixels(graphics);
    graphics.fillRect(pixels.Column(tab.left, tab.top, tab.bottom + 1), dark);
    graphics.fillRect(pixels.Row(tab.left, tab.right + 1, tab.top), dark);
    graphics.fillRect(pixels.Column(tab.right, tab.top, tab.bottom + 1), dark);

    QPainterPath path(QPointF(tab.left - kOuterSide, tab.bottom + kOuterBottom));
    path.lineTo(tab.left - kOuterSide, tab.top - kOuterTop);
    path.lineTo(tab.right + kOuterSide, tab.top - kOuterTop);
    path.lineTo(tab.right + kOuterSide, tab.bottom + kOuterBottom);
    StrokeOuterFrame(graphics, path);
}

void DrawOpenItemFrame(Graphics& graphics, const CRect& item)
{
    QPainterPath path;
    path.addRect(item.left - 1, item.top - 1, item.Width() + 2, item.Height() + 2);
    StrokeOuterFrame(graphics, path);
}

} // namespace kv
