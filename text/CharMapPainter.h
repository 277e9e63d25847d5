// How a character grid looks.
#pragma once

#include "KvPlatform.h"
#include "text/CharFace.h"
#include "text/CharMapModel.h"

#include <QCache>
#include <QPixmap>

namespace kv {

struct CharMapLook
{
    QColor background;
    QColor text;
    bool focused = false;
    bool preview = false; ///< the selected character is shown enlarged beside its cell
};

/// The look of the theme, or of a host's settings, which may be null.
CharMapLook CharLookOf(const SKvGuiBasicSettings* settings, bool enabled);
/// The lines between cells.
QColor CharLineColour();

/// The rows of a grid, each kept as a picture until the look changes or others need the room: scrolling draws
/// what is new, and a repaint draws no glyph but the selected one.
class CharRows
{
public:
    void Invalidate() { m_pictures.clear(); }
    /// Draws the glyphs of the page over the background.
    void Draw(Graphics& graphics, const CharFace& face, const CharMapModel& model, const CharMapLook& look);

private:
    static constexpr int kBudget = 8 << 20; // bytes

    QPixmap Picture(const CharFace& face, const CharMapModel& model, int row);

    QCache<int, QPixmap> m_pictures{kBudget};
    double m_ratio = 0;
    QColor m_background;
    QColor m_text;
};

void DrawCharMap(Graphics& graphics, const CRect& client, const CharFace& face, const CharMapModel& model,
                 CharRows& rows, const CharMapLook& look);

} // namespace kv
