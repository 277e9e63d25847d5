#include "color/GradientPainter.h"

#include "KvGradientCtrl.h"
#include "color/GradientBlend.h"
#include "color/GradientColour.h"
#include "color/GradientLayout.h"
#include "color/GradientModel.h"
#include "color/GradientRaster.h"
#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

namespace kv {

namespace {

constexpr std::uint32_t kBlackFrame = 0xFF000000u;
constexpr std::uint32_t kDefaultStripColour = 0xFF5A5A5Au;
constexpr std::uint32_t kMidPointColour = 0xFF808080u;
constexpr std::uint32_t kDefaultDraggedMidPointColour = 0xFFFFFFFFu;
constexpr std::uint32_t kBlinkOnDark = 0xFFC0C0C0u;
constexpr std::uint32_t kBlinkOnLight = 0xFF000000u;
/// The markers' base line is this far above the strip's bottom.
constexpr int kBelowBaseLine = 4;

std::uint32_t DraggedMidPointColour()
{
    return SkinColour(L"keGradientDraggedMidPointColor", kDefaultDraggedMidPointColour).rgba();
}

std::uint32_t FrameColour(const GradientLook& look)
{
    return look.framed ? qPremultiply(FocusColour().rgba()) : kBlackFrame;
}

std::uint32_t StripColour()
{
    return qPremultiply(SkinColour(L"keGradientStripColor", kDefaultStripColour).rgba());
}

void DrawMidStrip(PixelView picture, const DeviceGrid& grid, const GradientModel& model,
                  const GradientLayout& layout, const GradientLook& look)
{
    picture.Fill(0);
    for (const int key : {model.Selected(), model.Selected() + 1}) {
        if (!model.IsMidPointShown(key))
            continue;
        const auto column = [&](double place) { return layout.GetDisplayPos(place) - layout.client.left; };
        for (const float place : CKvGradientCtrl::m_fAttachPos)
            DrawTick(picture, grid, column(model.SegmentPlace(key, place)));
        DrawMidPointPointer(picture, grid, column(model.MidPointPlace(key)),
                            key == look.draggedMidPoint ? DraggedMidPointColour() : kMidPointColour);
    }
}

std::uint32_t MarkerColour(const SKvCGGradientKey& key, bool selected, const GradientLook& look)
{
    if (!selected || look.blinkPhase || !look.enabled)
        return DisplayColour(key.colour, look.enabled);
    const bool dark = RedOf(key.colour) + GreenOf(key.colour) + BlueOf(key.colour) < 255;
    return dark ? kBlinkOnDark : kBlinkOnLight;
}

void DrawKeyStrip(PixelView picture, const DeviceGrid& grid, const GradientModel& model,
                  const GradientLayout& layout, const GradientLook& look)
{
    picture.Fill(StripColour());
    const int baseLine = layout.keyStrip.Height() - kBelowBaseLine;
    int index = 0;
    for (const SKvCGGradientKey& key : model.Keys()) {
        DrawKeyPointer(picture, grid, layout.GetDisplayPos(key.position) - layout.client.left, baseLine,
                       MarkerColour(key, index == model.Selected(), look));
        ++index;
    }
}

} // namespace

qreal PixelRatio(const Graphics& graphics)
{
    const QTransform toDevice = graphics.deviceTransform();
    const bool evenlyScaled = toDevice.type() <= QTransform::TxScale && toDevice.m11() == toDevice.m22();
    return evenlyScaled && toDevice.m11() > 0 ? toDevice.m11() : graphics.device()->devicePixelRatioF();
}

PixelView PixelsOf(QImage& picture)
{
    return {reinterpret_cast<std::uint32_t*>(picture.bits()), picture.width(), picture.height(),
            picture.bytesPerLine() / 4};
}

CRect GradientPainter::AreaRect(const GradientLayout& layout, Area area)
{
    switch (area) {
    case MidStrip:
        return layout.midStrip;
    case Palette:
        return layout.palette;
    case KeyStrip:
        break;
    }
    return layout.keyStrip;
}

void GradientPainter::Paint(Graphics& graphics, const GradientModel& model, const GradientLayout& layout,
                            const GradientLook& look)
{
    const auto draw = [&](Area area, const OffScreenPicture::Draw& drawArea) {
        m_pictures[area].Paint(graphics, AreaRect(layout, area), drawArea);
    };
    draw(MidStrip,
         [&](PixelView pixels, const DeviceGrid& grid) { DrawMidStrip(pixels, grid, model, layout, look); });
    draw(Palette, [&](PixelView pixels, const DeviceGrid& grid) {
        DrawPalette(pixels, grid, layout.palette.Width(), MakeBlend(model.Keys(), look.enabled),
                    FrameColour(look));
    });
    draw(KeyStrip,
         [&](PixelView pixels, const DeviceGrid& grid) { DrawKeyStrip(pixels, grid, model, layout, look); });
}

void DrawSharply(Graphics& graphics, const QRect& rect,
                 const std::function<void(PixelView pixels, const DeviceGrid& grid)>& draw)
{
    const DeviceGrid grid(PixelRatio(graphics));
    QImage picture(grid.Length(rect.width()), grid.Length(rect.height()),
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(0);
    picture.setDevicePixelRatio(grid.Ratio());
    draw(PixelsOf(picture), grid);
    const DevicePixels devicePixels(graphics);
    graphics.drawImage(devicePixels.ToLogical(devicePixels.Nearest(rect.topLeft())), picture);
}

} // namespace kv
