#include "chrome/CaptionTexts.h"

#include "KvPlatform.h"

#include <QFontMetrics>
#include <QPainter>

#include <memory>

namespace kv {

namespace {

QList<QTextLayout::FormatRange> TakeMarkers(QString& text)
{
    QList<QTextLayout::FormatRange> underlined;
    QString label;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&') {
            if (++i == text.size())
                break;
            if (text[i] != u'&') {
                QTextLayout::FormatRange range{static_cast<int>(label.size()), 1, {}};
                range.format.setFontUnderline(true);
                underlined.push_back(range);
            }
        }
        label += text[i];
    }
    text = label;
    return underlined;
}

std::unique_ptr<QTextLayout> Shape(QString text, bool hasMarkers, const QFont& font)
{
    QList<QTextLayout::FormatRange> underlined;
    if (hasMarkers)
        underlined = TakeMarkers(text);
    auto layout = std::make_unique<QTextLayout>(text.replace(u'\n', u' '), font);
    layout->setCacheEnabled(true);
    layout->setFormats(underlined);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LayoutDirectionAuto); // each text's own, whatever the program's
    layout->setTextOption(option);
    layout->beginLayout();
    if (QTextLine line = layout->createLine(); line.isValid())
        line.setLineWidth(line.naturalTextWidth());
    layout->endLayout();
    return layout;
}

} // namespace

void CaptionTexts::UseFont(const QFont& font)
{
    if (m_font == font)
        return;
    m_font = font;
    m_layouts.clear();
    m_longWidth = -1;
}

const QTextLayout& CaptionTexts::Shaped(const QString& text, bool hasMarkers)
{
    const QString key = QChar(hasMarkers ? u'&' : u' ') + text;
    if (const QTextLayout* known = m_layouts.object(key))
        return *known;
    QTextLayout* layout = Shape(text, hasMarkers, m_font).release();
    m_layouts.insert(key, layout);
    return *layout;
}

void CaptionTexts::Draw(QPainter& painter, const CRect& place, const QString& text, bool hasMarkers)
{
    UseFont(painter.font());
    const QTextLayout& layout = Shaped(text, hasMarkers);
    const int above = (place.Height() - qRound(layout.boundingRect().height())) / 2;
    layout.draw(&painter, QPointF(place.left, place.top + above));
}

void CaptionTexts::DrawCut(QPainter& painter, const CRect& place, const QString& text)
{
    if (text.isEmpty() || place.IsRectEmpty())
        return;
    UseFont(painter.font());
    if (m_longWidth != place.Width() || m_long != text) {
        m_long = text;
        m_longWidth = place.Width();
        m_cut = painter.fontMetrics().elidedText(text, Qt::ElideMiddle, place.Width());
    }
    Draw(painter, place, m_cut, false);
}

} // namespace kv
