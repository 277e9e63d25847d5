// Draws what the two caption bars have in common.
#pragma once

#include "KvGuiRes.h"
#include "KvTypes.h"

#include <QColor>
#include <QPixmap>
#include <QString>

namespace kv {

class CaptionPainter
{
public:
    /// The skin's picture over the whole client area and the centre separator.
    /// @param below shows through the picture. @param growth see `CaptionGrowth`.
    void DrawBackground(Graphics& graphics, const CRect& client, const QColor& below, int growth);
    /// The skin changed.
    void Forget() { m_background = {}; }

private:
    QPixmap m_background; ///< as it was drawn last
    QColor m_below;
    int m_growth = 0;
};

} // namespace kv
