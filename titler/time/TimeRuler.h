// The time ruler: time codes, the playhead, and a lane of keys for each animated property.
#pragma once

#include "project/Animation.h"
#include "time/TimeLayout.h"

#include <QAbstractSlider>
#include <QBasicTimer>

#include <optional>
#include <utility>
#include <vector>

namespace titler {

class Document;
class Transport;

/// A slider over the project's frames. A click or a drag goes to a frame and pauses playback; a key's marker
/// is dragged to another frame, between its neighbours, as one step of undo; beyond an edge a drag scrolls.
/// Escape takes either back.
///
/// Ctrl and the wheel or + and − zoom, the wheel alone scrolls; arrows go by a frame, PageUp and PageDown by
/// a second, Home and End to the ends; Alt and the arrows take the keys of the current frame along.
class TimeRuler : public QAbstractSlider
{
    Q_OBJECT

public:
    TimeRuler(Document& document, Transport& transport);

    const TimeView& View() const { return m_view; }
    /// As it is painted and hit now.
    TimeLayout Layout() const;
    /// The lanes from the top.
    std::vector<Property> Lanes() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    struct Marker
    {
        Property property;
        int key; ///< its index
        int frame;

        bool operator==(const Marker&) const = default;
    };
    enum class Gesture
    {
        None,
        Seek,
        Key
    };

    void OnProjectChanged();
    void OnFrameChanged(int frame);
    void SetView(const TimeView& view);
    void Zoom(double factor, double around);
    std::optional<Marker> MarkerAt(QPointF point) const;
    void SetHovered(const std::optional<Marker>& marker);
    bool ShowToolTip(QPoint point, QPoint global);
    QString LaneNames(QPoint point) const;
    void SeekTo(QPointF point);
    void DragTo(QPointF point);
    TimeView ScrolledView() const;
    std::pair<int, int> KeyLimits() const;
    void DragKey(QPointF point);
    void EndGesture();
    void CancelGesture();
    void MoveKeys(int by);
    void UpdatePlayhead(int frame);
    void TellTime();

    Document& m_document;
    Transport& m_transport;
    TimeView m_view;
    bool m_isWhole = true; ///< the view is that of the whole project
    int m_shown;           ///< frame of the playhead
    int m_namesWidth = 0;  ///< what the lanes' names need in the present language
    Gesture m_gesture = Gesture::None;
    int m_startFrame = 0;            ///< of the playhead, or of the key that is dragged
    double m_grab = 0;               ///< from the marker's centre
    QPointF m_dragged;               ///< where the pointer is
    QBasicTimer m_scroll;            ///< while it is beyond an edge
    int m_run = 0;                   ///< the document's, once the key has moved
    std::optional<Marker> m_hovered; ///< or dragged
};

} // namespace titler
