// The workspace in which a title is made: canvas and inspector side by side, time below the canvas,
// pages at the bottom.
#pragma once

#include <QList>
#include <QWidget>

class QScrollArea;
class QSplitter;

namespace titler {

class AnimationInspector;
class CanvasView;
class ColourInspector;
class Document;
class PageCommands;
class PageStrip;
class TextInspector;
class Transport;
class TransportBar;

/// What the workspace shows beside the canvas.
enum class TitleTask
{
    Design,  ///< text and colours
    Animate, ///< values with their keys, time and playback
};

class TitleWorkspace : public QWidget
{
    Q_OBJECT

public:
    /// @param hsb the mode in which the colour panel begins.
    TitleWorkspace(Document& document, Transport& transport, bool hsb, QWidget* parent = nullptr);

    AnimationInspector& Animation() { return *m_animation; }
    CanvasView& Canvas() { return *m_canvas; }
    TextInspector& Texts() { return *m_text; }
    void Show(TitleTask task);

    TransportBar& Playback() { return *m_playback; }
    PageStrip& Pages() { return *m_pages; }
    PageCommands& CommandsOfPages() { return *m_pageCommands; }
    void ShowPages(bool show);
    /// The colour panel's mode.
    bool IsHsb() const;

private:
    QWidget* BuildTime(QSplitter& parent, Document& document, Transport& transport);
    QWidget* BuildPages(Document& document);
    QScrollArea* BuildInspector(QSplitter& parent, Document& document, Transport& transport, bool hsb);

    CanvasView* m_canvas;
    TextInspector* m_text = nullptr;
    ColourInspector* m_colour = nullptr;
    AnimationInspector* m_animation = nullptr;
    QList<QWidget*> m_design;  ///< only there while a title is designed
    QList<QWidget*> m_animate; ///< and while it is animated
    TransportBar* m_playback;
    PageCommands* m_pageCommands;
    PageStrip* m_pages = nullptr;
    QWidget* m_pagePanel = nullptr; ///< the strip and its tools
};

} // namespace titler
