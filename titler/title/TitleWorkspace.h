// The workspace in which a title is made: canvas and inspector side by side, time below the canvas.
#pragma once

#include <QList>
#include <QWidget>

class QScrollArea;

namespace titler {

class AnimationInspector;
class CanvasView;
class Document;
class Transport;
class TransportBar;

/// What the workspace shows beside the canvas.
enum class TitleTask
{
    Design,  ///< gradient and text
    Animate, ///< values with their keys, time and playback
};

class TitleWorkspace : public QWidget
{
    Q_OBJECT

public:
    TitleWorkspace(Document& document, Transport& transport);

    AnimationInspector& Animation() { return *m_animation; }
    CanvasView& Canvas() { return *m_canvas; }
    void Show(TitleTask task);

    TransportBar& Playback() { return *m_playback; }

private:
    QWidget* BuildTime(Document& document, Transport& transport);
    QScrollArea* BuildInspector(Document& document, Transport& transport);

    CanvasView* m_canvas;
    AnimationInspector* m_animation = nullptr;
    QList<QWidget*> m_design;  ///< only there while a title is designed
    QList<QWidget*> m_animate; ///< and while it is animated
    TransportBar* m_playback;
};

} // namespace titler
