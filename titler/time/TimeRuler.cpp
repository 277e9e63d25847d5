#include "time/TimeRuler.h"

#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "time/TimeRulerPainter.h"
#include "time/Transport.h"
#include "window/Language.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimerEvent>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace titler {
namespace {

constexpr double kZoomStep = 1.25;
constexpr double kNotch = 120;
constexpr double kScrollStep = 0.1;  // of what is seen
constexpr int kScrollPace = 40;      // milliseconds between two steps of a drag beyond an edge
constexpr double kSlowScroll = 0.02; // of what is seen, in one such step; kScrollStep is the fastest
constexpr double kFastFrom = 30;     // pixels beyond the edge
constexpr int kPlayheadReach = 7;    // of its head, with the edges' smoothing

} // namespace

TimeRuler::TimeRuler(Document& document, Transport& transport)
    : m_document(document)
    , m_transport(transport)
    , m_shown(transport.Frame())
{
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFont(TimeRulerFont(font()));
    InEachLanguage(*this, [this] {
        setAccessibleName(Text(kTextTimeRuler));
        m_namesWidth = TimeRulerNamesWidth(font());
        update();
    });
    connect(&document, &Document::ProjectChanged, this, &TimeRuler::OnProjectChanged);
    connect(&transport, &Transport::FrameChanged, this, &TimeRuler::OnFrameChanged);
    connect(&transport, &Transport::PlayingChanged, this, &TimeRuler::TellTime);
    connect(this, &QAbstractSlider::valueChanged, &transport, &Transport::Seek);
    connect(this, &QAbstractSlider::actionTriggered, &transport, &Transport::Pause); // a key
    OnProjectChanged();
    TellTime();
}

QSize TimeRuler::sizeHint() const
{
    return {600, TimeLayout::kRuler + static_cast<int>(kProperties * (TimeLayout::kHighestLane - 2)) + 6};
}

QSize TimeRuler::minimumSizeHint() const
{
    return {80, TimeLayout::kRuler + static_cast<int>(TimeLayout::kHighestLane)};
}

std::vector<Property> TimeRuler::Lanes() const
{
    std::vector<Property> lanes;
    for (int i = 0; i < kProperties; ++i)
        if (m_document.Current().title[static_cast<Property>(i)].IsAnimated())
            lanes.push_back(static_cast<Property>(i));
    return lanes;
}

TimeLayout TimeRuler::Layout() const
{
    return {size(), m_view, static_cast<int>(Lanes().size()), m_namesWidth};
}

void TimeRuler::OnProjectChanged()
{
    setRange(0, m_transport.LastFrame());
    setPageStep(m_transport.Rate().nominal);
    SetView(m_isWhole ? TimeView{0, std::max(1.0, double(m_transport.LastFrame()))} : m_view);
    if (m_gesture == Gesture::Key && !m_document.IsInRun(m_run))
        EndGesture(); // an undo from the keyboard has ended its run
    if (m_gesture != Gesture::Key)
        SetHovered({});
    update();
}

void TimeRuler::SetView(const TimeView& view)
{
    const int last = m_transport.LastFrame();
    m_view = view.Moved(0, last);
    m_isWhole = m_view.span >= std::max(1, last);
    update();
}

void TimeRuler::Zoom(double factor, double around)
{
    SetView(m_view.Zoomed(factor, around, m_transport.LastFrame()));
}

// While it plays, a view that the playhead leaves is turned like a page; else it follows.
void TimeRuler::OnFrameChanged(int frame)
{
    UpdatePlayhead(std::exchange(m_shown, frame));
    UpdatePlayhead(frame);
    setRange(0, m_transport.LastFrame()); // with another duration the frame comes first
    setValue(frame);
    const TimeView shown = m_view.Showing(frame, m_transport.LastFrame());
    if (shown.first != m_view.first)
        SetView(m_transport.IsPlaying() ? m_view.Moved(frame - m_view.first, m_transport.LastFrame())
                                        : shown);
    TellTime();
}

// The column of the playhead, and the markers that stand in it.
void TimeRuler::UpdatePlayhead(int frame)
{
    const int x = static_cast<int>(std::floor(Layout().ToX(frame)));
    update(x - kPlayheadReach, 0, 2 * kPlayheadReach + 1, height());
}

// A reader would speak without end while it plays.
void TimeRuler::TellTime()
{
    if (!m_transport.IsPlaying())
        setAccessibleDescription(TimeCode(m_transport.Frame(), m_transport.Rate()));
}

std::optional<TimeRuler::Marker> TimeRuler::MarkerAt(QPointF point) const
{
    const TimeLayout layout = Layout();
    const std::vector<Property> lanes = Lanes();
    std::optional<Marker> nearest;
    double reach = TimeLayout::kReach;
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        const KeyList& keys = m_document.Current().title[lanes[lane]].keys;
        for (int i = 0; i < keys.size(); ++i) {
            const QPointF away = layout.Marker(static_cast<int>(lane), keys[i].frame) - point;
            const double distance = std::max(std::abs(away.x()), std::abs(away.y()));
            if (distance >= reach)
                continue;
            reach = distance;
            nearest = Marker{lanes[lane], i, keys[i].frame};
        }
    }
    return nearest;
}

void TimeRuler::SetHovered(const std::optional<Marker>& marker)
{
    if (std::exchange(m_hovered, marker) != marker)
        update();
}

bool TimeRuler::ShowToolTip(QPoint point, QPoint global)
{
    const std::optional<Marker> marker = MarkerAt(point);
    if (!marker) {
        const QString names = LaneNames(point);
        QToolTip::showText(global, names.isEmpty() ? Text(kTextTimeRulerTip) : names, this);
        return true;
    }
    const Key& key = m_document.Current().title[marker->property].keys[marker->key];
    const QString text =
        Text(kTextKeyTip, {PropertyName(marker->property), ValueText(marker->property, key.value),
                           TimeCode(key.frame, m_transport.Rate())});
    QToolTip::showText(global, text, this, QRect(point, QSize(1, 1)).adjusted(-3, -3, 3, 3));
    return true;
}

// Of the lane at that point where there is no room to write it: of all that share it.
QString TimeRuler::LaneNames(QPoint point) const
{
    const TimeLayout layout = Layout();
    const std::vector<Property> lanes = Lanes();
    const bool areWritten = layout.names > 0 && layout.laneCount == static_cast<int>(lanes.size());
    QStringList names;
    for (std::size_t i = 0; i < lanes.size() && !areWritten; ++i) {
        const QRectF lane = layout.Lane(static_cast<int>(i));
        if (point.y() >= lane.top() && point.y() < lane.bottom())
            names << PropertyName(lanes[i]);
    }
    return names.join(QStringLiteral(", "));
}

bool TimeRuler::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        return ShowToolTip(help.pos(), help.globalPos());
    }
    // In a gesture Escape is ours, whatever shortcut has it.
    if (event->type() == QEvent::ShortcutOverride && m_gesture != Gesture::None &&
        static_cast<const QKeyEvent&>(*event).key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::UngrabMouse || event->type() == QEvent::Hide ||
        event->type() == QEvent::WindowDeactivate)
        EndGesture();
    return QAbstractSlider::event(event);
}

void TimeRuler::SeekTo(QPointF point)
{
    m_transport.Pause();
    m_transport.Seek(Layout().NearestFrame(point.x()));
}

void TimeRuler::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_gesture != Gesture::None)
        return;
    m_run = 0;
    m_document.EndRun();
    SetHovered(MarkerAt(event->position()));
    if (m_hovered) {
        m_gesture = Gesture::Key;
        m_startFrame = m_hovered->frame;
        m_grab = event->position().x() - Layout().ToX(m_startFrame);
        return;
    }
    m_gesture = Gesture::Seek;
    m_startFrame = m_transport.Frame();
    SeekTo(event->position());
}

void TimeRuler::mouseMoveEvent(QMouseEvent* event)
{
    if (m_gesture != Gesture::None)
        DragTo(event->position());
    else if (event->buttons() == Qt::NoButton)
        SetHovered(MarkerAt(event->position()));
}

void TimeRuler::DragTo(QPointF point)
{
    m_dragged = point;
    if (m_gesture == Gesture::Seek)
        SeekTo(point);
    else if (m_gesture == Gesture::Key)
        DragKey(point);
    if (m_gesture == Gesture::None || ScrolledView() == m_view)
        m_scroll.stop();
    else if (!m_scroll.isActive())
        m_scroll.start(kScrollPace, this);
}

// A step on from the edge that the pointer is beyond; the farther, the faster. A key takes the view no
// farther than it can go itself.
TimeView TimeRuler::ScrolledView() const
{
    const TimeLayout layout = Layout();
    const double beyond = m_dragged.x() - std::clamp(m_dragged.x(), layout.left, layout.right);
    if (beyond == 0)
        return m_view;
    const int last = m_transport.LastFrame();
    const double step = std::clamp(std::abs(beyond) / kFastFrom * kScrollStep, kSlowScroll, kScrollStep);
    const TimeView view = m_view.Moved(std::copysign(step * m_view.span, beyond), last);
    if (m_gesture != Gesture::Key)
        return view;
    const auto [least, most] = KeyLimits();
    const TimeView farthest = m_view.Showing(beyond < 0 ? least : most, last);
    const bool isTooFar = beyond < 0 ? view.first < farthest.first : view.first > farthest.first;
    return isTooFar ? farthest : view;
}

void TimeRuler::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scroll.timerId()) {
        QAbstractSlider::timerEvent(event);
        return;
    }
    SetView(ScrolledView());
    DragTo(m_dragged);
}

// Between its neighbours: a key that passed another would change both their eases.
std::pair<int, int> TimeRuler::KeyLimits() const
{
    const KeyList& keys = m_document.Current().title[m_hovered->property].keys;
    const int index = m_hovered->key;
    const int last = m_transport.LastFrame();
    const int least = index > 0 ? keys[index - 1].frame + 1 : 0;
    const int most = index + 1 < keys.size() ? keys[index + 1].frame - 1 : last;
    return {least, std::min(most, std::max(last, m_startFrame))};
}

void TimeRuler::DragKey(QPointF point)
{
    const Property property = m_hovered->property;
    const int index = m_hovered->key;
    const auto [least, most] = KeyLimits();
    const int wanted = Layout().NearestFrame(point.x() - m_grab);
    const int frame = std::max(least, std::min(wanted, most));
    if (frame == m_document.Current().title[property].keys[index].frame)
        return;
    if (m_run == 0) {
        m_transport.Pause();
        m_run = m_document.BeginRun(PropertyStep(kStepMoveKey, property));
    }
    m_hovered->frame = frame;
    m_document.UpdateRun([&](Project& project) { project.title[property].keys[index].frame = frame; });
}

void TimeRuler::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const bool isClick = m_gesture == Gesture::Key && m_run == 0;
    EndGesture();
    if (isClick) {
        m_transport.Pause();
        m_transport.Seek(m_startFrame);
    }
    SetHovered(MarkerAt(event->position()));
}

void TimeRuler::EndGesture()
{
    m_scroll.stop();
    if (std::exchange(m_gesture, Gesture::None) == Gesture::Key && m_document.IsInRun(m_run))
        m_document.EndRun();
}

void TimeRuler::CancelGesture()
{
    m_scroll.stop();
    const Gesture gesture = std::exchange(m_gesture, Gesture::None);
    if (gesture == Gesture::Seek)
        m_transport.Seek(m_startFrame);
    else if (gesture == Gesture::Key && m_document.IsInRun(m_run))
        m_document.CancelRun();
}

void TimeRuler::leaveEvent(QEvent* event)
{
    if (m_gesture == Gesture::None)
        SetHovered({});
    QAbstractSlider::leaveEvent(event);
}

void TimeRuler::resizeEvent(QResizeEvent*)
{
    update();
}

void TimeRuler::wheelEvent(QWheelEvent* event)
{
    const QPoint delta = event->angleDelta();
    const double notches = (std::abs(delta.y()) >= std::abs(delta.x()) ? delta.y() : delta.x()) / kNotch;
    if (event->modifiers() & Qt::ControlModifier)
        Zoom(std::pow(kZoomStep, -notches), Layout().ToFrame(event->position().x()));
    else
        SetView(m_view.Moved(-notches * m_view.span * kScrollStep, m_transport.LastFrame()));
    event->accept();
}

void TimeRuler::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Escape && m_gesture != Gesture::None)
        CancelGesture();
    else if (key == Qt::Key_Plus || key == Qt::Key_Minus)
        Zoom(key == Qt::Key_Plus ? 1 / kZoomStep : kZoomStep, m_transport.Frame());
    else if ((key == Qt::Key_Left || key == Qt::Key_Right) && event->modifiers() & Qt::AltModifier)
        MoveKeys(key == Qt::Key_Left ? -1 : 1);
    else
        QAbstractSlider::keyPressEvent(event);
}

// Keys that have no room stay behind, and so do all when none has.
void TimeRuler::MoveKeys(int by)
{
    const int from = m_transport.Frame();
    const int to = from + by;
    if (to < 0 || to > m_transport.LastFrame() || m_gesture != Gesture::None)
        return;
    const auto movable = [&](const Animated& animated) {
        return KeyAt(animated, from) >= 0 && KeyAt(animated, to) < 0;
    };
    const Properties& properties = m_document.Current().title.properties;
    const auto first = std::find_if(properties.begin(), properties.end(), movable);
    if (first == properties.end())
        return;
    const auto property = static_cast<Property>(first - properties.begin());
    m_document.Edit(EditKind::Single, PropertyStep(kStepMoveKey, property), [&](Project& project) {
        for (Animated& animated : project.title.properties)
            if (movable(animated))
                animated.keys[KeyAt(animated, from)].frame = to;
    });
    m_transport.Seek(to);
}

void TimeRuler::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const std::optional<std::pair<Property, int>> hovered =
        m_hovered ? std::optional(std::pair(m_hovered->property, m_hovered->key)) : std::nullopt;
    DrawTimeRuler(painter, rect(), Layout(),
                  {m_document.Current().title.properties, Lanes(), m_transport.Rate(), m_shown,
                   m_transport.LastFrame(), hovered, hasFocus()},
                  LoadSkin());
}

} // namespace titler
