// The workspace in which a title is designed: media, canvas and inspector side by side, time below the
// canvas.
#pragma once

#include <QWidget>

class QScrollArea;

namespace titler {

class AnimationInspector;
class CanvasView;
class Document;
class MediaPanel;
class Transport;
class TransportBar;

class TitleWorkspace : public QWidget
{
    Q_OBJECT

public:
    TitleWorkspace(Document& document, Transport& transport);

    AnimationInspector& Animation() { return *m_animation; }
    CanvasView& Canvas() { return *m_canvas; }
    MediaPanel& Media() { return *m_media; }
    TransportBar& Playback() { return *m_playback; }

private:
    QWidget* BuildTime(Document& document, Transport& transport);
    QScrollArea* BuildInspector(Document& document, Transport& transport);

    CanvasView* m_canvas;
    AnimationInspector* m_animation = nullptr;
    MediaPanel* m_media;
    TransportBar* m_playback;
};

} // namespace titler
