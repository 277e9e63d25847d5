// The canvas: the title at the current time over the project's background, or a checkerboard where that is
// none or translucent, with safe-area lines, fitted to the window or zoomed.
#pragma once

#include "subtitles/SubtitleStyle.h"
#include "title/TitleRenderer.h"
#include "window/Skin.h"

#include <QAbstractScrollArea>
#include <QBrush>

namespace titler {

class Document;
class Transport;

class CanvasView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    CanvasView(const Document& document, const Transport& transport);

    bool ShowsSafeAreas() const { return m_safeAreas; }
    void ShowSafeAreas(bool show);
    /// The zoom follows the window's size.
    void FitToWindow();
    bool IsFitted() const { return m_fitted; }
    /// Screen pixels for a pixel of the frame, at the display's own pixels; 0.05 to 8.
    double Zoom() const;
    void SetZoom(double zoom);
    void ZoomIn();
    void ZoomOut();

    /// What stands over the title; an empty text is none.
    void ShowSubtitle(const Subtitle& subtitle);

    /// Where the frame stands, in coordinates of the viewport.
    QRectF FrameRect() const;

signals:
    void ZoomChanged();

protected:
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Paint();
    void DrawFrame(QPainter& painter, const QRectF& frame);
    void DrawTitle(QPainter& painter, const QRectF& frame, QSize size);
    void DrawBackground(QPainter& painter, const QRectF& frame);
    void DrawSubtitle(QPainter& painter, const QRectF& frame, QSize size);
    void DrawSafeAreas(QPainter& painter, const QRectF& frame, const Skin& skin) const;
    void OnProjectChanged();
    void OnFrameChanged();
    void UpdateScrollBars();
    void ZoomAround(double zoom, QPointF anchor);
    QSizeF FrameSize() const;

    /// What of the background is seen, at the display's own pixels.
    struct Background
    {
        titler::Paint paint;
        QRect frame; ///< in pixels of the viewport
        QRect shown; ///< likewise
        QImage picture;
    };

    /// The title, as much of it as is seen.
    struct Picture
    {
        QSize size; ///< of the whole frame at which it is drawn
        QRect part; ///< of the frame
        QImage image;
    };

    const Document& m_document;
    const Transport& m_transport;
    QBrush m_checkerboard;
    Background m_background;
    TitleRenderer m_renderer;
    Project m_drawn; ///< what the pictures show
    Picture m_picture;
    Subtitle m_subtitle;
    QImage m_subtitleImage;                     ///< likewise
    std::array<double, kProperties> m_values{}; ///< by Property, of that picture
    QSizeF m_displaySize;
    double m_zoom = 1.0;
    bool m_fitted = true;
    bool m_safeAreas = true;
};

} // namespace titler
