#include "text/CharFace.h"

#include "core/CodePoints.h"

#include <QFont>
#include <QFontDatabase>
#include <QGlyphRun>

#include <algorithm>

namespace kv {

namespace {

// The toolkit answers with another family where one is missing, so the list decides. It names the foundry
// where a family comes from several.
bool IsInstalled(const QString& family)
{
    const QStringList families = QFontDatabase::families();
    return !family.isEmpty() && std::any_of(families.begin(), families.end(), [&family](const QString& one) {
        return one.startsWith(family, Qt::CaseInsensitive) &&
               (one.size() == family.size() || QStringView(one).sliced(family.size()).startsWith(u" ["));
    });
}

// Asked for the normal width, the toolkit widens the glyphs of a family that has narrow faces alone; asked
// for none, it may choose a narrow face of a family that has both.
QRawFont LoadFace(const QString& family, double size)
{
    QFont font;
    font.setFamilies({family});
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    font.setPixelSize(static_cast<int>(size));
    font.setStyleStrategy(QFont::NoFontMerging);
    QRawFont natural = QRawFont::fromFont(font);
    font.setStretch(QFont::Unstretched);
    QRawFont normal = QRawFont::fromFont(font);
    return normal.fontTable("name") == natural.fontTable("name") ? natural : normal;
}

// Of a face without the tables of OpenType, such as a Type 1 font: by the map that the font engine makes of
// its glyphs' names. It reports control codes that the face lacks.
CodeTable ReadByEngine(const QRawFont& font)
{
    constexpr int kBlock = 0x100;
    constexpr int kEnd = 0xFFFF;
    CodeTable table;
    QVector<QChar> codes(kBlock);
    QVector<quint32> glyphs(2 * kBlock);
    for (int begin = 0; begin < kEnd; begin += kBlock) {
        if (IsSurrogate(static_cast<char32_t>(begin)))
            continue;
        for (int i = 0; i < kBlock; ++i)
            codes[i] = QChar(static_cast<char16_t>(begin + i));
        int count = static_cast<int>(glyphs.size());
        if (!font.glyphIndexesForChars(codes.constData(), kBlock, glyphs.data(), &count) || count != kBlock)
            continue;
        for (int i = 0; i < kBlock && begin + i < kEnd; ++i) {
            if (glyphs[i] != 0 && codes[i].category() != QChar::Other_Control)
                table.push_back({static_cast<char16_t>(begin + i), static_cast<std::uint16_t>(glyphs[i])});
        }
    }
    return table;
}

/// How far begin … end must move to lie between two places; to their middle where it is longer.
double WayInto(double begin, double end, double from, double to)
{
    if (end - begin > to - from)
        return (from + to - begin - end) / 2;
    return begin < from ? from - begin : end > to ? to - end : 0;
}

} // namespace

CharFace::CharFace(const QString& family)
{
    if (!IsInstalled(family))
        return;
    m_cells = LoadFace(family, kCellSize);
    m_preview = LoadFace(family, kPreviewSize);
}

CodeTable CharFace::ReadTable() const
{
    if (!m_cells.isValid())
        return {};
    constexpr qsizetype kGlyphCountEnd = 6;
    const QByteArray profile = m_cells.fontTable("maxp");
    const QByteArray map = m_cells.fontTable("cmap");
    if (profile.isEmpty() && map.isEmpty())
        return ReadByEngine(m_cells);
    if (profile.size() < kGlyphCountEnd)
        return {};
    const auto byte = [&profile](qsizetype at) { return static_cast<std::uint8_t>(profile[at]); };
    const std::uint32_t glyphs = static_cast<std::uint32_t>(byte(4) << 8 | byte(5));
    return ReadCodeTable(
        {reinterpret_cast<const std::uint8_t*>(map.constData()), static_cast<std::size_t>(map.size())},
        glyphs);
}

QPointF CentredOrigin(const QRawFont& font, std::uint32_t glyph, const QRectF& rect)
{
    QPointF advance;
    font.advancesForGlyphIndexes(&glyph, &advance, 1);
    const QRectF ink = font.boundingRect(glyph);
    const double baseline = rect.center().y() + (font.ascent() - font.descent()) / 2;
    const double left = advance.x() > 0 ? -advance.x() / 2 : -ink.center().x();
    const QPointF origin(rect.center().x() + left, baseline);
    return origin +
           QPointF(WayInto(ink.left() + origin.x(), ink.right() + origin.x(), rect.left(), rect.right()),
                   WayInto(ink.top() + origin.y(), ink.bottom() + origin.y(), rect.top(), rect.bottom()));
}

void DrawGlyphs(QPainter& painter, const QRawFont& font, const QVector<quint32>& glyphs,
                const QVector<QPointF>& origins)
{
    if (glyphs.isEmpty())
        return;
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(origins);
    painter.drawGlyphRun({}, run);
}

void DrawCentredGlyph(QPainter& painter, const QRawFont& font, std::uint32_t glyph, const QRectF& rect)
{
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    DrawGlyphs(painter, font, {glyph}, {CentredOrigin(font, glyph, rect)});
    painter.restore();
}

} // namespace kv
