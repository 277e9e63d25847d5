// The workspace in which a title is designed: media, canvas and inspector side by side.
#pragma once

#include <QWidget>

class QScrollArea;

namespace titler {

class CanvasView;
class Document;
class MediaPanel;

class TitleWorkspace : public QWidget
{
    Q_OBJECT

public:
    explicit TitleWorkspace(Document& document);

    CanvasView& Canvas() { return *m_canvas; }
    MediaPanel& Media() { return *m_media; }

private:
    QScrollArea* BuildInspector(Document& document);

    CanvasView* m_canvas;
    MediaPanel* m_media;
};

} // namespace titler
