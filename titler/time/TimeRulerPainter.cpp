#include "time/TimeRulerPainter.h"

#include "edit/PropertyText.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

constexpr double kMajorTick = 9;
constexpr double kMinorTick = 4;
constexpr double kHead = 5; // half the width of the playhead's head
constexpr double kLabelGap = 6;
constexpr int kNameLeft = 9;
constexpr int kThumb = 3; // height of the mark that shows which part is seen

class Drawing
{
public:
    Drawing(QPainter& painter, const QRect& client, const TimeLayout& layout, const TimeRulerLook& look,
            const Skin& skin)
        : m_painter(painter)
        , m_client(client)
        , m_layout(layout)
        , m_look(look)
        , m_skin(skin)
        , m_pixel(1 / painter.device()->devicePixelRatioF())
    {
    }

    void DrawGround();
    void DrawTicks();
    void DrawLanes();
    void DrawPlayhead();
    void DrawThumb();
    void DrawFocus();

private:
    // The left edge of the display's pixel in which a place lies.
    double OnPixel(double at) const { return std::floor(at / m_pixel) * m_pixel; }
    void Column(double x, double top, double bottom, const QColor& colour)
    {
        m_painter.fillRect(QRectF(OnPixel(x), top, m_pixel, bottom - top), colour);
    }
    void DrawLane(int lane);
    void DrawMarker(QPointF centre, const QColor& colour, bool outlined = true);
    void DrawMarkers(const KeyList& keys, double y);
    bool IsInView(double frame) const
    {
        return frame >= m_layout.view.first - 1 && frame <= m_layout.view.first + m_layout.view.span + 1;
    }

    QPainter& m_painter;
    QRect m_client;
    const TimeLayout& m_layout;
    const TimeRulerLook& m_look;
    const Skin& m_skin;
    double m_pixel;
};

void Drawing::DrawGround()
{
    m_painter.fillRect(m_client, m_skin.canvas);
    m_painter.fillRect(QRectF(0, 0, m_client.width(), TimeLayout::kRuler), m_skin.window);
    m_painter.fillRect(QRectF(0, TimeLayout::kRuler - m_pixel, m_client.width(), m_pixel), m_skin.border);
}

void Drawing::DrawTicks()
{
    const QFontMetricsF metrics(m_painter.font());
    const double label = metrics.horizontalAdvance(TimeCode(m_look.lastFrame, m_look.rate));
    const double bottom = TimeLayout::kRuler - m_pixel;
    double free = 0; // to the right of the labels so far
    m_painter.save();
    m_painter.setLayoutDirection(Qt::LeftToRight); // a time code's parts change places otherwise
    for (const TimeTick& tick : m_layout.Ticks(m_look.rate, label)) {
        const double x = m_layout.ToX(tick.frame);
        Column(x, bottom - (tick.major ? kMajorTick : kMinorTick), bottom, m_skin.dimText);
        if (!tick.major)
            continue;
        Column(x, TimeLayout::kRuler, m_client.height(), m_skin.window);
        const QString text = TimeCode(tick.frame, m_look.rate);
        const double width = metrics.horizontalAdvance(text);
        // The outermost labels stay whole.
        const double from = std::clamp(x - width / 2, 2.0, std::max(2.0, m_client.width() - width - 2));
        if (from < free)
            continue;
        free = from + width + kLabelGap;
        m_painter.setPen(m_skin.dimText);
        m_painter.drawText(QPointF(std::round(from), metrics.ascent() + 2), text);
    }
    m_painter.restore();
}

void Drawing::DrawMarker(QPointF centre, const QColor& colour, bool outlined)
{
    constexpr double r = TimeLayout::kMarker;
    const QPointF corners[] = {{centre.x(), centre.y() - r},
                               {centre.x() + r, centre.y()},
                               {centre.x(), centre.y() + r},
                               {centre.x() - r, centre.y()}};
    m_painter.setBrush(colour);
    m_painter.setPen(outlined ? QPen(m_skin.canvas, 1) : QPen(Qt::NoPen));
    m_painter.drawConvexPolygon(corners, 4);
}

// One for a column of pixels; of a crowd no outline takes away the neighbour.
void Drawing::DrawMarkers(const KeyList& keys, double y)
{
    const auto isBefore = [](const Key& key, double frame) { return key.frame < frame; };
    auto key = std::lower_bound(keys.begin(), keys.end(), m_layout.view.first - 1, isBefore);
    double before = -1e9;
    for (; key != keys.end() && IsInView(key->frame); ++key) {
        const double x = m_layout.ToX(key->frame);
        if (OnPixel(x) == OnPixel(before))
            continue;
        DrawMarker({x, y}, m_skin.key, x - before > TimeLayout::kMarker);
        before = x;
    }
}

void Drawing::DrawLane(int lane)
{
    const Property property = m_look.lanes[static_cast<std::size_t>(lane)];
    const KeyList& keys = m_look.properties[static_cast<std::size_t>(property)].keys;
    const double y = m_layout.Lane(lane).center().y();
    m_painter.setRenderHint(QPainter::Antialiasing);
    const double from = std::max(m_layout.ToX(keys.front().frame), m_layout.left);
    const double to = std::min(m_layout.ToX(keys.back().frame), m_layout.right);
    if (from < to)
        m_painter.fillRect(QRectF(from, y - 1, to - from, 2), m_skin.border);
    DrawMarkers(keys, y);
    const int current = KeyAt(m_look.properties[static_cast<std::size_t>(property)], m_look.frame);
    const int hovered = m_look.hovered && m_look.hovered->first == property ? m_look.hovered->second : -1;
    for (const auto& [index, colour] : {std::pair(current, m_skin.accent), std::pair(hovered, m_skin.text)}) {
        if (index < 0 || index >= keys.size())
            continue;
        const int frame = keys[index].frame;
        if (IsInView(frame))
            DrawMarker({m_layout.ToX(frame), y}, colour);
    }
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

void Drawing::DrawLanes()
{
    if (m_look.lanes.empty()) {
        m_painter.setPen(m_skin.dimText);
        m_painter.drawText(m_layout.lanes, Qt::AlignCenter, Text(kTextNoKeys));
        return;
    }
    const bool hasNames = m_layout.names > 0 && m_layout.laneCount == static_cast<int>(m_look.lanes.size());
    m_painter.setPen(m_skin.dimText);
    for (int lane = 0; lane < m_layout.laneCount && hasNames; ++lane) {
        const QRectF row = m_layout.Lane(lane);
        const QString name = PropertyName(m_look.lanes[static_cast<std::size_t>(lane)]);
        const QRectF place(kNameLeft, row.top(), m_layout.names - kNameLeft, row.height());
        m_painter.drawText(place, Qt::AlignVCenter,
                           QFontMetricsF(m_painter.font()).elidedText(name, Qt::ElideRight, place.width()));
    }
    m_painter.save();
    // A marker at either end is seen whole, one that was scrolled out is not.
    m_painter.setClipRect(m_layout.lanes.adjusted(-TimeLayout::kMarker - 1, 0, TimeLayout::kMarker + 1, 0),
                          Qt::IntersectClip);
    for (int lane = 0; lane < static_cast<int>(m_look.lanes.size()); ++lane)
        DrawLane(lane);
    m_painter.restore();
}

void Drawing::DrawPlayhead()
{
    const double x = m_layout.ToX(m_look.frame);
    if (x < m_layout.left - 0.5 || x > m_layout.right + 0.5)
        return;
    const double line = OnPixel(x);
    Column(x, TimeLayout::kRuler - kHead, m_client.height(), m_skin.playhead);
    const double middle = line + m_pixel / 2;
    const double top = TimeLayout::kRuler - 2 * kHead - 3;
    const QPointF head[] = {{middle - kHead, top},
                            {middle + kHead, top},
                            {middle + kHead, top + kHead},
                            {middle, top + 2 * kHead},
                            {middle - kHead, top + kHead}};
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(m_skin.playhead);
    m_painter.drawConvexPolygon(head, 5);
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

void Drawing::DrawThumb()
{
    const double whole = std::max(1, m_look.lastFrame);
    if (m_layout.view.span >= whole)
        return;
    const double width = m_layout.right - m_layout.left;
    m_painter.fillRect(QRectF(m_layout.left + m_layout.view.first / whole * width, m_client.height() - kThumb,
                              m_layout.view.span / whole * width, kThumb),
                       m_skin.dimText);
}

void Drawing::DrawFocus()
{
    if (!m_look.hasFocus)
        return;
    m_painter.setPen(m_skin.accent);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(m_client.adjusted(0, 0, -1, -1));
}

} // namespace

QFont TimeRulerFont(const QFont& font)
{
    QFont small = font;
    small.setPointSizeF(font.pointSizeF() * 0.85);
    return small;
}

int TimeRulerNamesWidth(const QFont& font)
{
    const QFontMetricsF metrics(font);
    double width = 0;
    for (int i = 0; i < kProperties; ++i)
        width = std::max(width, metrics.horizontalAdvance(PropertyName(static_cast<Property>(i))));
    return 2 * kNameLeft + static_cast<int>(std::ceil(width));
}

void DrawTimeRuler(QPainter& painter, const QRect& client, const TimeLayout& layout,
                   const TimeRulerLook& look, const Skin& skin)
{
    Drawing drawing(painter, client, layout, look, skin);
    drawing.DrawGround();
    drawing.DrawTicks();
    drawing.DrawLanes();
    drawing.DrawPlayhead();
    drawing.DrawThumb();
    drawing.DrawFocus();
}

} // namespace titler
