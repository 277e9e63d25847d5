#include "subtitles/SubtitlePicture.h"

#include "subtitles/SubtitleText.h"
#include "title/Coverage.h"
#include "title/TitleRenderer.h"

#include <QPainter>
#include <QRegularExpression>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace titler {
namespace {

constexpr double kTextHeight = 5;   // percent of the frame's
constexpr double kLineHeight = 1.2; // of the text's
constexpr double kEdge = 0.05;      // of the frame: the title-safe line
// What keeps white letters apart from a white picture. Of the frame's height.
constexpr double kRimReach = 0.006;
constexpr double kShadowReach = 0.016;
constexpr double kShadowOffset = 0.002;
constexpr QRgb kRim = qRgba(0, 0, 0, 0xE0);
constexpr QRgb kShadow = qRgba(0, 0, 0, 0x90);

/// What the tags that are open say.
struct Style
{
    int italic = 0;
    int bold = 0;
    int underline = 0;
    std::vector<QColor> colours;
};

void Apply(Style& style, const QString& tag)
{
    static const QRegularExpression parts(QStringLiteral(R"(^<(/?)(\w+)(?:.*\bcolor\s*=\s*["']?([#\w]+))?)"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = parts.match(tag);
    const QString name = match.captured(2).toLower();
    const bool isEnd = !match.captured(1).isEmpty();
    if (name == u"font") {
        if (!isEnd)
            style.colours.emplace_back(match.captured(3)); // one that is none changes nothing
        else if (!style.colours.empty())
            style.colours.pop_back();
        return;
    }
    for (const auto& [letter, count] :
         {std::pair{u"i", &style.italic}, {u"b", &style.bold}, {u"u", &style.underline}})
        if (name == letter)
            *count = std::max(0, *count + (isEnd ? -1 : 1));
}

QTextCharFormat FormatOf(const Style& style, const SubtitleLook& look)
{
    QTextCharFormat format;
    format.setFontItalic(look.italic || style.italic > 0);
    format.setFontWeight(style.bold > 0 ? QFont::Bold : QFont::Normal);
    format.setFontUnderline(style.underline > 0);
    const auto colour = std::find_if(style.colours.rbegin(), style.colours.rend(),
                                     [](const QColor& c) { return c.isValid(); });
    format.setForeground(colour != style.colours.rend() ? *colour : QColor(Qt::white));
    return format;
}

struct Line
{
    QString text;
    QList<QTextLayout::FormatRange> formats;
};

std::vector<Line> LinesOf(const Subtitle& subtitle, const SubtitleLook& look)
{
    std::vector<Line> lines(1);
    Style style;
    const auto add = [&](const QString& text) {
        const QStringList parts = text.split(u'\n');
        for (qsizetype i = 0; i < parts.size(); ++i) {
            if (i > 0)
                lines.emplace_back();
            Line& line = lines.back();
            line.formats << QTextLayout::FormatRange{
                static_cast<int>(line.text.size()), static_cast<int>(parts[i].size()), FormatOf(style, look)};
            line.text += parts[i];
        }
    };
    qsizetype at = 0;
    for (const Markup& mark : MarkupOf(subtitle.text)) {
        add(subtitle.text.mid(at, mark.begin - at));
        if (subtitle.text[mark.begin] == u'<')
            Apply(style, subtitle.text.mid(mark.begin, mark.end - mark.begin));
        at = mark.end;
    }
    add(subtitle.text.mid(at));
    return lines;
}

Qt::Alignment AlignmentOf(int column)
{
    return Qt::AlignAbsolute | (column < 0 ? Qt::AlignLeft : column > 0 ? Qt::AlignRight : Qt::AlignHCenter);
}

// In the frame's own pixels.
QFont FontOf(const Title& title, double percent, QSizeF frame)
{
    QFont font(title.fontFamily.isEmpty() ? DefaultFontFamily() : title.fontFamily);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(frame.height() * percent / 100))));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

// Lays a line out within the title-safe width, from a height on. @return the height behind it.
double LayOut(QTextLayout& layout, Qt::Alignment alignment, QSizeF frame, double height)
{
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
        row.setLineWidth(frame.width() * (1 - 2 * kEdge));
        row.setPosition({0, height});
        height += row.height();
    }
    layout.endLayout();
    return height;
}

// A title has no lines but those of its text.
QString Wrapped(const QString& text, const QFont& font, QSizeF frame)
{
    QStringList rows;
    for (const QString& line : text.split(u'\n')) {
        QTextLayout layout(line, font);
        LayOut(layout, Qt::AlignLeft, frame, 0);
        for (int i = 0; i < layout.lineCount(); ++i)
            rows << line.mid(layout.lineAt(i).textStart(), layout.lineAt(i).textLength()).trimmed();
    }
    return rows.join(u'\n');
}

// The letters' coverage in a place, spread. @param times coverage counts so often, up to the whole pixel.
Coverage Spread(const QImage& image, const QRect& area, QPoint offset, int reach, int times)
{
    const QRect placed = area & image.rect() & image.rect().translated(offset);
    QImage alpha = AlphaOf(image, placed.translated(-offset));
    if (!Blur(alpha, {reach, reach}))
        return {};
    for (int y = 0; y < alpha.height(); ++y)
        std::transform(alpha.scanLine(y), alpha.scanLine(y) + alpha.width(), alpha.scanLine(y),
                       [&](int covered) { return static_cast<uchar>(std::min(255, covered * times)); });
    return {placed, alpha};
}

// A thin dark rim and a soft shadow under the letters.
void Underlay(QImage& image, const QRect& letters)
{
    const auto pixels = [&](double part) {
        return std::max(1, static_cast<int>(std::lround(image.height() * part)));
    };
    const int shadow = pixels(kShadowReach);
    const QRect area = letters.adjusted(-2 * shadow, -2 * shadow, 2 * shadow, 2 * shadow);
    DrawUnder(image, Spread(image, area, {}, pixels(kRimReach), 4), kRim);
    const int offset = pixels(kShadowOffset);
    DrawUnder(image, Spread(image, area, {offset, offset}, shadow, 1), kShadow);
}

// In the look of the project's title, at rest.
QImage TitlePicture(const Project& project, const Subtitle& subtitle, const SubtitleLook& look, QSize size)
{
    Project shown;
    shown.video = project.video;
    Title& title = shown.title;
    title = project.title;
    title.properties = StillProperties();
    title.align = look.column < 0 ? TextAlign::Left : look.column > 0 ? TextAlign::Right : TextAlign::Centre;
    const QSizeF frame = DisplaySize(project.video);
    QFont font = FontOf(title, title.fontSize, frame);
    font.setBold(title.bold);
    font.setItalic(title.italic);
    title.text = Wrapped(PlainSubtitle(subtitle.text), font, frame);
    const auto lines = static_cast<double>(title.text.count(u'\n'));
    const double block = title.fontSize * (1 + kLineHeight * lines);
    title[Property::Y].value = look.side * (50 - 100 * kEdge - block / 2);
    return TitleRenderer().Render(shown, 0, size);
}

} // namespace

QImage SubtitlePicture(const Project& project, const Subtitle& subtitle, QSize size)
{
    const SubtitleLook look = LookOf(subtitle);
    if (look.takesTitle)
        return TitlePicture(project, subtitle, look, size);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    const QSizeF frame = DisplaySize(project.video);
    const QFont font = FontOf(project.title, kTextHeight, frame);
    std::vector<std::unique_ptr<QTextLayout>> layouts;
    double height = 0;
    for (const Line& line : LinesOf(subtitle, look)) {
        auto layout = std::make_unique<QTextLayout>(line.text, font);
        layout->setFormats(line.formats);
        height = LayOut(*layout, AlignmentOf(look.column), frame, height);
        layouts.push_back(std::move(layout));
    }
    const double edge = frame.height() * kEdge;
    const double room = frame.height() - 2 * edge - height;
    const QPointF place(frame.width() * kEdge, edge + room * (look.side + 1) / 2);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(size.width() / frame.width(), size.height() / frame.height());
    QRectF letters;
    for (const std::unique_ptr<QTextLayout>& layout : layouts) {
        layout->draw(&painter, place);
        letters |= layout->boundingRect().translated(place);
    }
    letters = painter.transform().mapRect(letters);
    painter.end();
    Underlay(image, letters.toAlignedRect());
    return image;
}

} // namespace titler
