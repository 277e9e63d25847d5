// A font face as a character grid uses it: its code table, and its glyphs by index.
#pragma once

#include "text/CodeTable.h"

#include <QPainter>
#include <QRawFont>
#include <QString>

namespace kv {

/// The regular, upright, normal-width face of a family. Empty when the family is not installed: no other one
/// takes its place, neither here nor for a single glyph.
class CharFace
{
public:
    /// The size of the em square in a cell and in the preview, in logical pixels.
    static constexpr double kCellSize = 16;
    static constexpr double kPreviewSize = 48;

    CharFace() = default;
    explicit CharFace(const QString& family);

    /// False for a family that is not installed.
    bool IsThere() const { return m_cells.isValid(); }
    CodeTable ReadTable() const;
    const QRawFont& Cells() const { return m_cells; }
    const QRawFont& Preview() const { return m_preview; }

private:
    QRawFont m_cells;
    QRawFont m_preview;
};

/// Where the origin of a glyph lies so that its line stands in the middle of a rectangle. A glyph that takes
/// no room of its own, such as a combining mark, is centred by its ink; one that would reach beyond the
/// rectangle, as in fonts with tall lines, is moved inside as far as it has room there.
QPointF CentredOrigin(const QRawFont& font, std::uint32_t glyph, const QRectF& rect);
/// Draws one glyph so, in the painter's pen, cut off at the rectangle.
void DrawCentredGlyph(QPainter& painter, const QRawFont& font, std::uint32_t glyph, const QRectF& rect);
/// Draws glyphs from the font alone, in the painter's pen.
void DrawGlyphs(QPainter& painter, const QRawFont& font, const QVector<quint32>& glyphs,
                const QVector<QPointF>& origins);

} // namespace kv
