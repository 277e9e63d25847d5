// The gradient control's three off-screen pictures and how they reach the screen.
#pragma once

#include "KvPlatform.h"

#include <QImage>

#include <array>
#include <functional>

namespace kv {

class DeviceGrid;
class GradientModel;
struct GradientLayout;
struct PixelView;

/// What the pictures show beside the stops.
struct GradientLook
{
    bool enabled = true;
    bool framed = true;       ///< orange frame: active or editing
    bool blinkPhase = false;  ///< false shows the selected marker in its contrast colour
    int draggedMidPoint = -1; ///< shown white
};

/// Draws a picture again only when it was invalidated, and composes the three.
class GradientPainter
{
public:
    enum Area
    {
        MidStrip,
        Palette,
        KeyStrip,
    };

    static CRect AreaRect(const GradientLayout& layout, Area area);

    void Invalidate(Area area) { m_valid[area] = false; }
    void InvalidateAll() { m_valid = {}; }
    /// Draws at the client area's origin, on whole device pixels.
    void Paint(Graphics& graphics, const GradientModel& model, const GradientLayout& layout,
               const GradientLook& look);

private:
    void Redraw(Area area, const GradientModel& model, const GradientLayout& layout,
                const GradientLook& look);

    std::array<QImage, 3> m_pictures;
    std::array<bool, 3> m_valid{};
    qreal m_ratio = 0;
};

/// The ratio of a painter's target, which need not be the screen's: a host may render the control into a
/// picture.
qreal PixelRatio(const Graphics& graphics);
/// The pixels of a picture of 32 bits.
PixelView PixelsOf(QImage& picture);

/// Draws something with a pixel loop into a rectangle of any painter, on whole device pixels.
void DrawSharply(Graphics& graphics, const QRect& rect,
                 const std::function<void(PixelView pixels, const DeviceGrid& grid)>& draw);

} // namespace kv
