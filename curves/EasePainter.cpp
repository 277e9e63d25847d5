#include "curves/EasePainter.h"

#include "core/Text.h"
#include "curves/EasePath.h"
#include "curves/EaseWords.h"
#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QTextOption>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr int kVeil = 0xA0; ///< of the ground, over a disabled window

constexpr int kFontPoints = 8;
constexpr double kLabelGap = 6;
constexpr double kAxisOverhang = 10; // beyond the plot, so that no key hides the arrow head
constexpr double kArrowBack = 5;
constexpr double kArrowAside = 3;
constexpr double kCurveWidth = 2;
constexpr double kKeyRadius = 4;
constexpr double kHandleRadius = 3.5;
constexpr double kSelectedRadius = 6.5;
constexpr double kMarkRadius = 1.5;
constexpr int kValueDigits = 4;

QPointF Point(const SKvCurvePoint& point)
{
    return {point.x, point.y};
}

EaseBox BoxOf(const CRect& rect, double room)
{
    return {rect.left - room, rect.top - room, rect.right + room, rect.bottom + room};
}

class Painter
{
public:
    Painter(Graphics& graphics, EaseModel& model, const EaseLayout& layout, const EaseLook& look)
        : m_graphics(graphics)
        , m_pixels(graphics)
        , m_model(model)
        , m_layout(layout)
        , m_look(look)
        , m_colours(look.colours)
        // Values and the grid over them make sense also where the segment does not.
        , m_values(layout.client, 0, 1, layout.view)
        , m_plot(m_pixels.Snapped(QRectF(QRect(layout.plot))))
        , m_origin(model.Origin())
    {
        QFont font = graphics.font();
        font.setPointSize(kFontPoints);
        graphics.setFont(font);
    }

    void Draw();

private:
    void Fill(const QRectF& rect, QRgb colour) { m_graphics.fillRect(rect, QColor::fromRgba(colour)); }
    void SetPen(QRgb colour, double width)
    {
        m_graphics.setPen(QPen(QColor::fromRgba(colour), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
        m_graphics.setBrush(Qt::NoBrush);
    }
    void SetBrush(QRgb colour)
    {
        m_graphics.setPen(Qt::NoPen);
        m_graphics.setBrush(QColor::fromRgba(colour));
    }
    bool IsCurveShown() const { return m_layout.IsMapped() && m_model.IsEditable(); }

    void DrawGrid();
    void DrawLabel(double y, const QString& text);
    void DrawRangeEdges();
    void DrawAxes();
    void DrawLines(const std::vector<EasePolyline>& lines, QRgb colour, double width);
    EasePoints ToPixels(const EasePoints& points) const;
    void DrawCurves();
    void DrawFrameMarks();
    void DrawKeys();
    void DrawTangent(const SKvCurvePoint& key, const SKvCurvePoint& handle);
    void DrawHandle(EaseHandle handle, const SKvCurvePoint& at);
    void DrawBox(const SKvCurvePoint& at, const QString& text);
    void DrawBoxes();
    void DrawPlace();
    void DrawFocus();

    Graphics& m_graphics;
    const DevicePixels m_pixels;
    EaseModel& m_model;
    const EaseLayout& m_layout;
    const EaseLook& m_look;
    const EaseColours& m_colours;
    const EaseLayout m_values;
    const QRectF m_plot;
    const SKvCurvePoint m_origin; // of the keys
    EasePoints m_handles;         // in pixels
};

void Painter::Draw()
{
    const QRectF client(QRect(m_layout.client));
    Fill(client, m_colours.ground);
    if (!m_layout.plot.IsRectEmpty()) {
        // The band of the values that the curve may take has the plot's own colour: its edges make it stand
        // out.
        Fill(m_plot, m_colours.plot);
        DrawGrid();
        DrawRangeEdges();
        DrawAxes();
    }
    if (IsCurveShown()) {
        m_graphics.setRenderHint(QPainter::Antialiasing);
        DrawCurves();
        DrawKeys();
        DrawBoxes();
    }
    if (IsCurveShown() && m_look.place)
        DrawPlace();
    m_graphics.setRenderHint(QPainter::Antialiasing, false);
    if (!m_look.enabled)
        Fill(client, (m_colours.ground & 0xFFFFFFu) | DWORD{kVeil} << 24);
    if (m_look.focused)
        DrawFocus();
}

void Painter::DrawGrid()
{
    if (!m_values.IsMapped())
        return;
    const double step = TickStep(m_layout.view);
    const double distance = step / m_layout.view.Span() * m_layout.plot.Height();
    // In a low window only every n-th line has a label, the same ones while the view moves.
    const double stride = std::max(1.0, std::ceil(m_graphics.fontMetrics().height() / distance));
    for (const double tick : Ticks(m_layout.view)) {
        const double y = m_values.ToPixel({0, tick}).y;
        Fill(m_pixels.Row(m_plot.left(), m_plot.right(), y), m_colours.grid);
        if (std::fmod(std::round(tick / step), stride) == 0)
            DrawLabel(y, KvToQString(NumberText(tick, TickDigits(step))));
    }
}

void Painter::DrawLabel(double y, const QString& text)
{
    const double room = m_layout.plot.left - m_layout.client.left - kLabelGap;
    const double width = m_graphics.fontMetrics().horizontalAdvance(text);
    m_graphics.setPen(QColor::fromRgba(m_colours.label));
    m_graphics.save();
    m_graphics.translate(m_layout.client.left + room, y);
    if (width > room)
        m_graphics.scale(room / width, 1); // a long number is condensed, never cut
    const double height = m_graphics.fontMetrics().height();
    m_graphics.drawText(QRectF(-width, -height / 2, width, height),
                        Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, text);
    m_graphics.restore();
}

void Painter::DrawRangeEdges()
{
    if (!m_values.IsMapped())
        return;
    for (const double edge : {m_model.Curve().minimum, m_model.Curve().maximum}) {
        if (edge > m_layout.view.minimum && edge < m_layout.view.maximum)
            Fill(m_pixels.Row(m_plot.left(), m_plot.right(), m_values.ToPixel({0, edge}).y), m_colours.axis);
    }
}

void Painter::DrawAxes()
{
    const QRectF upright =
        m_pixels.Column(m_plot.left(), m_plot.top() - kAxisOverhang, m_plot.bottom() + m_pixels.Hairline());
    const QRectF level = m_pixels.Row(m_plot.left(), m_plot.right() + kAxisOverhang, m_plot.bottom());
    Fill(upright, m_colours.axis);
    Fill(level, m_colours.axis);
    m_graphics.setRenderHint(QPainter::Antialiasing);
    SetPen(m_colours.axis, 1);
    const QPointF top(upright.center().x(), upright.top());
    const QPointF right(level.right(), level.center().y());
    m_graphics.drawPolyline(
        std::array{top + QPointF(-kArrowAside, kArrowBack), top, top + QPointF(kArrowAside, kArrowBack)}
            .data(),
        3);
    m_graphics.drawPolyline(std::array{right + QPointF(-kArrowBack, -kArrowAside), right,
                                       right + QPointF(-kArrowBack, kArrowAside)}
                                .data(),
                            3);
    m_graphics.setRenderHint(QPainter::Antialiasing, false);
}

void Painter::DrawLines(const std::vector<EasePolyline>& lines, QRgb colour, double width)
{
    SetPen(colour, width);
    for (const EasePolyline& line : lines) {
        std::vector<QPointF> points(line.size());
        std::transform(line.begin(), line.end(), points.begin(), Point);
        m_graphics.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
}

EasePoints Painter::ToPixels(const EasePoints& points) const
{
    EasePoints pixels;
    std::transform(points.begin(), points.end(), pixels.begin(),
                   [this](const SKvCurvePoint& point) { return m_layout.ToPixel(point); });
    return pixels;
}

void Painter::DrawCurves()
{
    const EaseBox box = BoxOf(m_layout.plot, kCurveWidth);
    m_graphics.save();
    m_graphics.setClipRect(m_plot, Qt::IntersectClip);
    if (m_look.initialCurve)
        DrawLines(Flattened(ToPixels(m_model.Loaded().points), box), m_colours.initial, 1);
    if (m_look.speed)
        DrawLines(SpeedLines(m_model.Curve(), m_layout), m_colours.speed, 1);
    KvBezierPath path;
    m_model.Keys().AddToPath(path);
    for (const SKvBezierSegment& segment : path) {
        EasePoints points;
        std::transform(std::begin(segment.points), std::end(segment.points), points.begin(),
                       [this](const SKvCurvePoint& point) { return m_origin + point; });
        DrawLines(Flattened(ToPixels(points), box), m_colours.curve, kCurveWidth);
    }
    m_graphics.restore();
    DrawFrameMarks();
}

void Painter::DrawFrameMarks()
{
    SetBrush(m_colours.mark);
    for (const SKvCurvePoint& mark : FrameMarks(m_model.Curve(), m_layout, m_look.frameLength))
        m_graphics.drawEllipse(Point(mark), kMarkRadius, kMarkRadius);
}

void Painter::DrawKeys()
{
    SKvBezierKey start;
    SKvBezierKey end;
    m_model.Keys().GetKey(0, start);
    m_model.Keys().GetKey(1, end);
    const SKvCurvePoint p0 = m_origin + SKvCurvePoint{start.x, start.y};
    const SKvCurvePoint p1 = m_origin + SKvCurvePoint{end.x, end.y};
    m_handles =
        ToPixels({p0, p0 + SKvCurvePoint{start.outX, start.outY}, p1 + SKvCurvePoint{end.inX, end.inY}, p1});
    DrawTangent(m_handles[0], m_handles[1]);
    DrawTangent(m_handles[3], m_handles[2]);
    for (const EaseHandle handle : {EaseHandle::Start, EaseHandle::End, EaseHandle::In, EaseHandle::Out})
        DrawHandle(handle, m_handles[static_cast<std::size_t>(handle)]);
}

void Painter::DrawTangent(const SKvCurvePoint& key, const SKvCurvePoint& handle)
{
    constexpr double level = 1.0 / 64;
    const auto line = Clipped({key, handle}, BoxOf(m_layout.client, 1));
    if (!line)
        return;
    const auto [left, right] = std::minmax(line->from.x, line->to.x);
    const auto [top, bottom] = std::minmax(line->from.y, line->to.y);
    if (bottom - top < level) {
        Fill(m_pixels.Row(left, right, line->from.y), m_colours.key);
    } else if (right - left < level) {
        Fill(m_pixels.Column(line->from.x, top, bottom), m_colours.key);
    } else {
        SetPen(m_colours.key, 1);
        m_graphics.drawLine(Point(line->from), Point(line->to));
    }
}

void Painter::DrawHandle(EaseHandle handle, const SKvCurvePoint& at)
{
    if (!QRectF(QRect(m_layout.client)).adjusted(-8, -8, 8, 8).contains(Point(at)))
        return;
    const bool isKey = handle == EaseHandle::Start || handle == EaseHandle::End;
    const QRgb colour = isKey ? m_colours.key : m_colours.handle;
    const double radius = isKey ? kKeyRadius : kHandleRadius;
    if (m_look.editable && m_model.CanMove(handle)) {
        SetBrush(colour);
        m_graphics.drawEllipse(Point(at), radius, radius);
    } else {
        SetPen(colour, 1); // hollow: it cannot be grabbed
        m_graphics.drawEllipse(Point(at), radius - 0.5, radius - 0.5);
    }
    if (m_look.selected == handle) {
        SetPen(m_colours.focus, 1.5);
        m_graphics.drawEllipse(Point(at), kSelectedRadius, kSelectedRadius);
    }
}

// Above the place, or below it, where it hides neither the handle nor most of its line. A tabulator in the
// text is the box's inner margin.
void Painter::DrawBox(const SKvCurvePoint& at, const QString& text)
{
    constexpr double away = 9;
    constexpr double margin = 5;
    const QFontMetricsF metrics(m_graphics.font());
    const QSizeF size(metrics.horizontalAdvance(text.mid(1)) + 2 * margin, metrics.height() + 4);
    const CRect& client = m_layout.client;
    const auto within = [](double place, double length, int from, int to) {
        return std::clamp(place, double{1} + from, std::max(double{1} + from, to - 1 - length));
    };
    const double above = at.y - away - size.height();
    const QRectF box(
        QPointF(within(at.x + away, size.width(), client.left, client.right),
                within(above > client.top ? above : at.y + away, size.height(), client.top, client.bottom)),
        size);
    Fill(m_pixels.Snapped(box), m_colours.box);
    QTextOption option(Qt::AlignVCenter);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(margin);
    m_graphics.setPen(QColor::fromRgba(m_colours.label));
    m_graphics.drawText(box, text, option);
}

void Painter::DrawBoxes()
{
    const auto& drag = m_model.Drag();
    if (drag && drag->part == EasePart::Key) {
        const EaseHandle key = HandleOf(*drag).value();
        DrawBox(m_handles[static_cast<std::size_t>(key)],
                u'\t' + KvToQString(NumberText(m_model.Curve()[key].y, kValueDigits)));
    }
    if (m_look.selected && !m_look.entry.isEmpty())
        DrawBox(m_handles[static_cast<std::size_t>(*m_look.selected)], u'\t' + m_look.entry);
}

void Painter::DrawPlace()
{
    m_graphics.setPen(QColor::fromRgba(m_colours.place));
    m_graphics.drawText(QRectF(QRect(EasePlaceRect(m_layout))), Qt::AlignRight | Qt::AlignVCenter,
                        KvToQString(PlaceText(m_layout, *m_look.place)));
}

void Painter::DrawFocus()
{
    const QRectF outside = m_pixels.Snapped(QRectF(QRect(m_layout.client)));
    const double width = m_pixels.Hairline();
    const QRectF inside = outside.adjusted(width, width, -width, -width);
    Fill({outside.topLeft(), QPointF(outside.right(), inside.top())}, m_colours.focus);
    Fill({QPointF(outside.left(), inside.bottom()), outside.bottomRight()}, m_colours.focus);
    Fill({outside.topLeft(), QPointF(inside.left(), outside.bottom())}, m_colours.focus);
    Fill({QPointF(inside.right(), outside.top()), outside.bottomRight()}, m_colours.focus);
}

} // namespace

void EaseColours::Load()
{
    *this = {};
    const std::pair<const wchar_t*, DWORD*> keys[] = {
        {L"keEaseGroundColor", &ground},  {L"keEasePlotColor", &plot},       {L"keEaseGridColor", &grid},
        {L"keEaseLabelColor", &label},    {L"keEaseAxisColor", &axis},       {L"keEaseCurveColor", &curve},
        {L"keEaseKeyColor", &key},        {L"keEaseHandleColor", &handle},   {L"keEaseBoxColor", &box},
        {L"keEasePlaceColor", &place},    {L"keEaseInitialColor", &initial}, {L"keEaseSpeedColor", &speed},
        {L"keEaseFrameMarkColor", &mark},
    };
    for (const auto& [name, colour] : keys)
        KvGuiRes::LoadColor(name, *colour);
    focus = FocusColour().rgba();
}

void DrawEase(Graphics& graphics, EaseModel& model, const EaseLayout& layout, const EaseLook& look)
{
    graphics.save();
    Painter(graphics, model, layout, look).Draw();
    graphics.restore();
}

// Below the plot, clear of the circle of a key that stands on its edge.
CRect EasePlaceRect(const EaseLayout& layout)
{
    const CRect& plot = layout.plot;
    return {plot.left, plot.bottom + static_cast<int>(kKeyRadius) + 1, plot.right, layout.client.bottom - 1};
}

} // namespace kv
