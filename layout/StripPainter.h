// How a layout strip looks.
#pragma once

#include "KvGuiRes.h"
#include "layout/ThumbCache.h"

#include <QColor>
#include <QFont>

namespace kv {

enum class StripFrame
{
    Normal,
    Hovered,
    Selected
};

/// What decides how a strip looks, but for its layouts.
struct StripLook
{
    QColor background;
    QColor text;
    QFont font;
    bool enabled = true;
};

/// One thumbnail with all that belongs to it.
struct StripCell
{
    CRect rect; ///< client coordinates, also far outside of the window
    int index;
    StripFrame frame = StripFrame::Normal;
    bool focused = false;
};

class StripPainter
{
public:
    StripPainter() { LoadSkin(); }

    void LoadSkin();
    /// In what style thumbnails of a size are kept for the painter's target.
    static ThumbStyle StyleFor(const Graphics& graphics, const CRect& thumb, const StripLook& look);

    void DrawBackground(Graphics& graphics, const CRect& client, const StripLook& look) const;
    /// The line around the window, over its outer pixel.
    void DrawBorder(Graphics& graphics, const CRect& client) const;
    void DrawCell(Graphics& graphics, const CRect& client, const StripCell& cell, const StripThumb& thumb,
                  const StripLook& look) const;

private:
    struct Place;
    void DrawShadow(Graphics& graphics, const Place& place) const;
    void DrawFrame(Graphics& graphics, const Place& place, StripFrame frame) const;

    QColor m_frames[3]; ///< by StripFrame
    QColor m_border;
    QColor m_empty;
    KvSkinImage m_shadow;
};

} // namespace kv
