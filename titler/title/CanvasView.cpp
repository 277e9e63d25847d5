#include "title/CanvasView.h"

#include "edit/Document.h"
#include "subtitles/SubtitlePicture.h"
#include "time/Transport.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

constexpr double kLeastZoom = 0.05;
constexpr double kMostZoom = 8.0;
constexpr double kZoomStep = 1.25;
constexpr int kMargin = 24;
constexpr int kCheck = 8;
// The parts of the frame that stay visible on every screen, and where text may stand.
constexpr double kActionSafe = 0.93;
constexpr double kTitleSafe = 0.90;

bool IsSameFrame(const SKvVideoResolution& a, const SKvVideoResolution& b)
{
    return a.width == b.width && a.height == b.height && a.aspectRatio == b.aspectRatio;
}

QRectF Shrunk(const QRectF& frame, double part)
{
    const double dx = frame.width() * (1 - part) / 2;
    const double dy = frame.height() * (1 - part) / 2;
    return frame.adjusted(dx, dy, -dx, -dy);
}

QBrush Checkerboard(const QColor& light, const QColor& dark)
{
    QPixmap tile(2 * kCheck, 2 * kCheck);
    tile.fill(dark);
    QPainter painter(&tile);
    painter.fillRect(0, 0, kCheck, kCheck, light);
    painter.fillRect(kCheck, kCheck, kCheck, kCheck, light);
    return tile;
}

} // namespace

CanvasView::CanvasView(const Document& document, const Transport& transport)
    : m_document(document)
    , m_transport(transport)
    , m_checkerboard(Checkerboard(LoadSkin().checkLight, LoadSkin().checkDark))
    , m_displaySize(DisplaySize(document.Current().video))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 120);
    InEachLanguage(*this, [this] {
        setAccessibleName(Text(kTextCanvas));
        setAccessibleDescription(Text(kTextCanvasTip));
        viewport()->setAccessibleName(Text(kTextCanvas));
    });
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&document, &Document::ProjectChanged, this, &CanvasView::OnProjectChanged);
    connect(&transport, &Transport::FrameChanged, this, &CanvasView::OnFrameChanged);
}

void CanvasView::OnProjectChanged()
{
    // While the background is dragged the pictures over it stay.
    const Project& project = m_document.Current();
    if (!IsSameFrame(m_drawn.video, project.video) || !LooksSame(m_drawn.title, project.title)) {
        m_drawn = project;
        m_picture = {};
        m_subtitleImage = {};
    }
    const QSizeF size = DisplaySize(project.video);
    if (size != m_displaySize) {
        m_displaySize = size;
        UpdateScrollBars();
        emit ZoomChanged();
    }
    viewport()->update();
}

// Where nothing moves, the picture stays.
void CanvasView::OnFrameChanged()
{
    if (ValuesAt(m_document.Current().title.properties, m_transport.Frame()) == m_values)
        return;
    m_picture = {};
    viewport()->update();
}

void CanvasView::ShowSubtitle(const Subtitle& subtitle)
{
    if (subtitle == m_subtitle)
        return;
    m_subtitle = subtitle;
    m_subtitleImage = {};
    viewport()->update();
}

void CanvasView::ShowSafeAreas(bool show)
{
    m_safeAreas = show;
    viewport()->update();
}

void CanvasView::FitToWindow()
{
    m_fitted = true;
    UpdateScrollBars();
    viewport()->update();
    emit ZoomChanged();
}

double CanvasView::Zoom() const
{
    if (!m_fitted)
        return m_zoom;
    const QSizeF room(std::max(1, width() - 2 * kMargin), std::max(1, height() - 2 * kMargin));
    const double fit = std::min(room.width() / m_displaySize.width(), room.height() / m_displaySize.height());
    return std::clamp(fit * devicePixelRatioF(), kLeastZoom, kMostZoom);
}

void CanvasView::SetZoom(double zoom)
{
    ZoomAround(zoom, QRectF(viewport()->rect()).center());
}

void CanvasView::ZoomIn()
{
    SetZoom(Zoom() * kZoomStep);
}

void CanvasView::ZoomOut()
{
    SetZoom(Zoom() / kZoomStep);
}

void CanvasView::ZoomAround(double zoom, QPointF anchor)
{
    const QRectF before = FrameRect();
    const QPointF part((anchor.x() - before.left()) / before.width(),
                       (anchor.y() - before.top()) / before.height());
    m_zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
    m_fitted = false;
    UpdateScrollBars();
    const QRectF after = FrameRect();
    const QPointF shift(after.left() + part.x() * after.width() - anchor.x(),
                        after.top() + part.y() * after.height() - anchor.y());
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    static_cast<int>(std::lround(shift.x())));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(std::lround(shift.y())));
    viewport()->update();
    emit ZoomChanged();
}

QSizeF CanvasView::FrameSize() const
{
    return m_displaySize * (Zoom() / devicePixelRatioF());
}

QRectF CanvasView::FrameRect() const
{
    const double ratio = devicePixelRatioF();
    const QSizeF size = FrameSize();
    const auto start = [&](int room, double length, const QScrollBar* bar) {
        const double at =
            length + 2 * kMargin > room && !m_fitted ? kMargin - bar->value() : (room - length) / 2;
        return std::round(at * ratio) / ratio; // whole pixels of the display keep the edges sharp
    };
    return {start(viewport()->width(), size.width(), horizontalScrollBar()),
            start(viewport()->height(), size.height(), verticalScrollBar()),
            std::max(1.0, std::round(size.width() * ratio)) / ratio,
            std::max(1.0, std::round(size.height() * ratio)) / ratio};
}

void CanvasView::UpdateScrollBars()
{
    const QSizeF size = FrameSize();
    const auto update = [&](QScrollBar* bar, double length, int room) {
        const int beyond = static_cast<int>(std::ceil(length)) + 2 * kMargin - room;
        bar->setRange(0, m_fitted ? 0 : std::max(0, beyond));
        bar->setPageStep(room);
        bar->setSingleStep(20);
    };
    update(horizontalScrollBar(), size.width(), viewport()->width());
    update(verticalScrollBar(), size.height(), viewport()->height());
}

bool CanvasView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        Paint();
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CanvasView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    UpdateScrollBars();
    if (m_fitted)
        emit ZoomChanged();
}

void CanvasView::scrollContentsBy(int, int)
{
    viewport()->update();
}

void CanvasView::wheelEvent(QWheelEvent* event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    ZoomAround(Zoom() * std::pow(kZoomStep, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

void CanvasView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Plus)
        ZoomIn();
    else if (event->key() == Qt::Key_Minus)
        ZoomOut();
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void CanvasView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void CanvasView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void CanvasView::Paint()
{
    QPainter painter(viewport());
    const Skin skin = LoadSkin();
    painter.fillRect(viewport()->rect(), skin.canvas);
    const QRectF frame = FrameRect();
    DrawFrame(painter, frame);
    if (m_safeAreas)
        DrawSafeAreas(painter, frame, skin);
    if (hasFocus()) {
        painter.setPen(skin.accent);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
    }
}

void CanvasView::DrawFrame(QPainter& painter, const QRectF& frame)
{
    painter.save();
    painter.setClipRect(frame);
    DrawBackground(painter, frame);

    // Beyond its own size the frame's pixels are shown as they are exported.
    const SKvVideoResolution& video = m_document.Current().video;
    const QSize shown = (frame.size() * devicePixelRatioF()).toSize();
    const QSize size = Zoom() > 1 ? QSize(video.width, video.height) : shown;
    DrawTitle(painter, frame, size);
    if (!m_subtitle.text.isEmpty())
        DrawSubtitle(painter, frame, size);
    painter.restore();
}

void CanvasView::DrawTitle(QPainter& painter, const QRectF& frame, QSize size)
{
    const QSizeF pixel(frame.width() / size.width(), frame.height() / size.height());
    const QRectF seen = frame.intersected(viewport()->rect()).translated(-frame.topLeft());
    const QRect part = QRectF(seen.left() / pixel.width(), seen.top() / pixel.height(),
                              seen.width() / pixel.width(), seen.height() / pixel.height())
                           .toAlignedRect() &
                       QRect({}, size);
    if (part.isEmpty())
        return;
    if (m_picture.image.isNull() || m_picture.size != size || m_picture.part != part) {
        m_values = ValuesAt(m_document.Current().title.properties, m_transport.Frame());
        m_picture = {size, part, m_renderer.Render(m_document.Current(), m_transport.Frame(), size, part)};
    }
    painter.drawImage(QRectF(frame.left() + part.left() * pixel.width(),
                             frame.top() + part.top() * pixel.height(), part.width() * pixel.width(),
                             part.height() * pixel.height()),
                      m_picture.image);
}

void CanvasView::DrawBackground(QPainter& painter, const QRectF& frame)
{
    const Project& project = m_document.Current();
    if (!IsOpaque(project.background)) {
        painter.setBrushOrigin(frame.topLeft());
        painter.fillRect(frame.intersected(viewport()->rect()), m_checkerboard);
    }
    if (project.background.kind == PaintKind::None)
        return;
    const double ratio = devicePixelRatioF();
    const QRect whole((frame.topLeft() * ratio).toPoint(), (frame.size() * ratio).toSize());
    const QRect shown = whole & QRect({}, (QSizeF(viewport()->size()) * ratio).toSize());
    if (m_background.frame != whole || m_background.shown != shown ||
        !LooksSame(m_background.paint, project.background)) {
        m_background = {project.background, whole, shown,
                        PaintedImage(project.background, shown.size(), whole.translated(-shown.topLeft()),
                                     DisplaySize(project.video))};
        m_background.picture.setDevicePixelRatio(ratio);
    }
    painter.drawImage(QPointF(shown.topLeft()) / ratio, m_background.picture);
}

void CanvasView::DrawSubtitle(QPainter& painter, const QRectF& frame, QSize size)
{
    if (m_subtitleImage.size() != size)
        m_subtitleImage = SubtitlePicture(m_document.Current(), m_subtitle, size);
    painter.drawImage(frame, m_subtitleImage);
}

void CanvasView::DrawSafeAreas(QPainter& painter, const QRectF& frame, const Skin& skin) const
{
    painter.save();
    const double pixel = 1 / devicePixelRatioF();
    const auto outline = [&](double part, const QColor& colour, Qt::PenStyle style) {
        QPen pen(colour, pixel, style);
        painter.setPen(pen);
        const QRectF area = Shrunk(frame, part);
        const auto onPixel = [&](double at) { return (std::floor(at / pixel) + 0.5) * pixel; };
        painter.drawRect(QRectF(QPointF(onPixel(area.left()), onPixel(area.top())),
                                QPointF(onPixel(area.right()), onPixel(area.bottom()))));
    };
    outline(kActionSafe, skin.actionSafe, Qt::SolidLine);
    outline(kTitleSafe, skin.titleSafe, Qt::DashLine);
    painter.restore();
}

} // namespace titler
