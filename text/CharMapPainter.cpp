#include "text/CharMapPainter.h"

#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"

#include <algorithm>
#include <cmath>

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

/// Draws the glyphs of a row of the table, the first cell's corner at (0, 0), in the painter's pen.
void DrawRow(Graphics& graphics, const QRawFont& font, const CharMapModel& model, int row)
{
    QVector<quint32> glyphs;
    QVector<QPointF> origins;
    const int begin = row * kCharColumns;
    const int end = std::min(begin + kCharColumns, model.Count());
    for (int index = begin; index < end; ++index) {
        const std::uint32_t glyph = GlyphAt(model, index);
        const QRectF cell((index - begin) * kCharCellSide + 1, 1, kCharCellSide - 1, kCharCellSide - 1);
        const QPointF origin = CentredOrigin(font, glyph, cell);
        if (!cell.contains(font.boundingRect(glyph).translated(origin))) {
            DrawCentredGlyph(graphics, font, glyph, cell);
            continue;
        }
        glyphs.push_back(glyph);
        origins.push_back(origin);
    }
    DrawGlyphs(graphics, font, glyphs, origins);
}

/// Whether every cell's corner falls on a corner between device pixels, so that a picture of a row can be
/// copied.
bool StandsOnPixels(const Graphics& graphics)
{
    const QTransform& device = graphics.deviceTransform();
    const auto isWhole = [](double place) { return std::abs(place - std::round(place)) < 1e-6; };
    const QPointF origin = device.map(QPointF(kCharOrigin, kCharOrigin));
    return device.m11() == device.m22() && device.type() <= QTransform::TxScale && device.m11() > 0 &&
           isWhole(origin.x()) && isWhole(origin.y()) && isWhole(device.m11() * kCharCellSide);
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
    DrawGlyphs(graphics, font, {glyph}, {CentredOrigin(font, glyph, rect.adjusted(1, 1, -1, -1))});
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

QPixmap CharRows::Picture(const CharFace& face, const CharMapModel& model, int row)
{
    if (const QPixmap* picture = m_pictures.object(row))
        return *picture;
    const QSizeF size = QSizeF(kCharColumns * kCharCellSide, kCharCellSide) * m_ratio;
    QPixmap picture(size.toSize());
    picture.setDevicePixelRatio(m_ratio);
    picture.fill(m_background);
    QPainter painter(&picture);
    painter.setPen(m_text);
    DrawRow(painter, face.Cells(), model, row);
    painter.end();
    m_pictures.insert(row, new QPixmap(picture), picture.width() * picture.height() * 4);
    return picture;
}

void CharRows::Draw(Graphics& graphics, const CharFace& face, const CharMapModel& model,
                    const CharMapLook& look)
{
    const double ratio = graphics.deviceTransform().m11();
    if (m_ratio != ratio || m_background != look.background || m_text != look.text) {
        m_pictures.clear();
        m_ratio = ratio;
        m_background = look.background;
        m_text = look.text;
    }
    const int first = model.First() / kCharColumns;
    const bool isWhole = StandsOnPixels(graphics);
    for (int row = 0; row < kCharRows && model.IndexAt(row * kCharColumns) >= 0; ++row) {
        const QPointF origin(kCharOrigin, kCharOrigin + row * kCharCellSide);
        if (isWhole) {
            graphics.drawPixmap(origin, Picture(face, model, first + row));
        } else {
            graphics.save();
            graphics.translate(origin);
            DrawRow(graphics, face.Cells(), model, first + row);
            graphics.restore();
        }
    }
}

void DrawCharMap(Graphics& graphics, const CRect& client, const CharFace& face, const CharMapModel& model,
                 CharRows& rows, const CharMapLook& look)
{
    graphics.fillRect(QRect(client), look.background);
    graphics.setPen(look.text);
    rows.Draw(graphics, face, model, look);
    DrawLines(graphics);
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
