// The gradient control's three off-screen pictures and how they reach the screen.
#pragma once

#include "KvPlatform.h"
#include "color/OffScreenPicture.h"

#include <array>
#include <functional>

namespace kv {

class GradientModel;
struct GradientLayout;

/// What the pictures show beside the stops.
struct GradientLook
{
    bool enabled = true;
    bool framed = true;       ///< the frame marks the focus: active or editing
    bool blinkPhase = false;  ///< false shows the selected marker in its contrast colour
    int draggedMidPoint = -1; ///< shown in a colour of its own, white unless the theme has one
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

    void Invalidate(Area area) { m_pictures[area].Invalidate(); }
    void InvalidateAll()
    {
        for (OffScreenPicture& picture : m_pictures)
            picture.Invalidate();
    }
    /// Draws at the client area's origin, on whole device pixels.
    void Paint(Graphics& graphics, const GradientModel& model, const GradientLayout& layout,
               const GradientLook& look);

private:
    std::array<OffScreenPicture, 3> m_pictures;
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
