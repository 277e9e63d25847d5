#include "text/CharMapPainter.h"

#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"

#include <algorithm>

namespace kv {

namespace {

constexpr double kPreviewMargin = 4;

std::uint16_t GlyphAt(const CharMapModel& model, int index)
{
    return model.Table()[static_cast<std::size_t>(index)].glyph;
}

/// A cell without its lines.
QRectF FaceOf(int cell)
{
    return QRectF(QRect(CharCellRect(cell))).adjusted(1, 1, 0, 0);
}

void DrawLines(Graphics& graphics)
{
    const DevicePixels pixels(graphics);
    const QColor colour = CharLineColour();
    for (int x = kCharOrigin; x <= kCharGridRight; x += kCharCellSide)
        graphics.fillRect(pixels.Column(x, kCharOrigin, kCharGridBottom), colour);
    for (int y = kCharOrigin; y <= kCharGridBottom; y += kCharCellSide) {
        const int end = y == kCharGridBottom ? kCharGridRight + 1 : kCharGridRight;
        graphics.fillRect(pixels.Row(kCharOrigin, end, y), colour);
    }
}

void DrawSelected(Graphics& graphics, const CharFace& face, const CharMapModel& model, int cell,
                  const CharMapLook& look)
{
    const DevicePixels pixels(graphics);
    const QRectF rect(QRect{CharCellRect(cell)});
    // From beyond the lines at the left and top to those at the right and bottom, as they are drawn.
    const double line = pixels.Hairline();
    const QRectF left = pixels.Column(rect.left(), rect.top(), rect.bottom());
    const QRectF top = pixels.Row(rect.left(), rect.right(), rect.top());
    const QRectF inside(
        QPointF(left.left() + line, top.top() + line),
        QPointF(pixels.Column(rect.right(), 0, 1).left(), pixels.Row(0, 1, rect.bottom()).top()));
    graphics.fillRect(inside, look.text);
    graphics.setPen(look.background);
    DrawCentredGlyph(graphics, face.Cells(), GlyphAt(model, model.Selected()), FaceOf(cell));
    if (look.focused)
        DrawFocusRing(graphics, rect.adjusted(0, 0, 1, 1));
}

void DrawPreview(Graphics& graphics, const CRect& client, const CharFace& face, const CharMapModel& model,
                 int cell, const CharMapLook& look)
{
    const QRectF rect(QRect{CharPreviewRect(cell, client.Size())});
    const QRectF room = DevicePixels(graphics).Snapped(rect);
    graphics.fillRect(room, look.text);
    graphics.fillRect(DevicePixels(graphics).Snapped(rect.adjusted(1, 1, -1, -1)), look.background);
    graphics.setPen(look.text);
    QRawFont font = face.Preview();
    const std::uint32_t glyph = GlyphAt(model, model.Selected());
    const QSizeF ink = font.boundingRect(glyph).size();
    const double most = kCharPreviewSide - 2 * kPreviewMargin;
    if (const double larger = std::max(ink.width(), ink.height()); larger > most)
        font.setPixelSize(font.pixelSize() * most / larger);
    const QRectF within = rect.adjusted(1, 1, -1, -1);
    QPointF origin = CentredOrigin(font, glyph, within);
    // What would reach beyond the box is centred by its ink.
    const QRectF drawn = font.boundingRect(glyph).translated(origin);
    if (!within.contains(drawn))
        origin += within.center() - drawn.center();
    DrawGlyphs(graphics, font, {glyph}, {origin});
}

} // namespace

CharMapLook CharLookOf(const SKvGuiBasicSettings* settings, bool enabled)
{
    CharMapLook look;
    if (settings) {
        look.background = QColor::fromRgba(settings->background);
        look.text = QColor::fromRgba(enabled ? settings->textColour : settings->disabledTextColour);
    } else {
        look.background = SkinColour(L"keWindowBKColor", 0xFF2B2B2Eu);
        look.text = enabled ? TextColour() : DisabledTextColour();
    }
    return look;
}

QColor CharLineColour()
{
    return {0x80, 0x80, 0x80};
}

void CharPage::Place(const QRawFont& font, const CharMapModel& model)
{
    m_glyphs.clear();
    m_origins.clear();
    m_large.clear();
    for (int cell = 0; cell < kCharCells; ++cell) {
        const int index = model.IndexAt(cell);
        if (index < 0)
            break;
        const std::uint32_t glyph = GlyphAt(model, index);
        const QRectF rect = FaceOf(cell);
        const QPointF origin = CentredOrigin(font, glyph, rect);
        if (!rect.contains(font.boundingRect(glyph).translated(origin))) {
            m_large.push_back(cell);
            continue;
        }
        m_glyphs.push_back(glyph);
        m_origins.push_back(origin);
    }
    m_first = model.First();
}

void CharPage::Draw(Graphics& graphics, const CharFace& face, const CharMapModel& model)
{
    if (m_first != model.First())
        Place(face.Cells(), model);
    DrawGlyphs(graphics, face.Cells(), m_glyphs, m_origins);
    for (const int cell : m_large) {
        if (const int index = model.IndexAt(cell); index >= 0)
            DrawCentredGlyph(graphics, face.Cells(), GlyphAt(model, index), FaceOf(cell));
    }
}

void DrawCharMap(Graphics& graphics, const CRect& client, const CharFace& face, const CharMapModel& model,
                 CharPage& page, const CharMapLook& look)
{
    graphics.fillRect(QRect(client), look.background);
    DrawLines(graphics);
    graphics.setPen(look.text);
    page.Draw(graphics, face, model);
    const int cell = model.CellOf(model.Selected());
    if (cell >= 0) {
        DrawSelected(graphics, face, model, cell, look);
        if (look.preview)
            DrawPreview(graphics, client, face, model, cell, look);
    } else if (look.focused) {
        DrawFocusRing(graphics, QRectF(QRect(client)));
    }
}

} // namespace kv
