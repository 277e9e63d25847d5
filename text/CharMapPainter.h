// How a character grid looks.
#pragma once

#include "KvPlatform.h"
#include "text/CharFace.h"
#include "text/CharMapModel.h"

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

/// The glyphs of a page, placed; kept until another page is shown.
class CharPage
{
public:
    void Invalidate() { m_first = -1; }
    void Draw(Graphics& graphics, const CharFace& face, const CharMapModel& model);

private:
    void Place(const QRawFont& font, const CharMapModel& model);

    int m_first = -1;
    QVector<quint32> m_glyphs;
    QVector<QPointF> m_origins;
    QVector<int> m_large; ///< cells whose glyph is cut off
};

void DrawCharMap(Graphics& graphics, const CRect& client, const CharFace& face, const CharMapModel& model,
                 CharPage& page, const CharMapLook& look);

} // namespace kv
