// Playback: its commands, the current time and the duration, below the canvas.
#pragma once

#include "KvTypes.h"

#include <QIcon>
#include <QList>
#include <QWidget>

class QAction;
class QKeySequence;
class QLabel;

namespace titler {

class Document;
class TimeCodeBox;
class Transport;

/// A picture of the skin as an icon, sharp at any pixel ratio; pale where it is disabled.
QIcon SkinIcon(const wchar_t* name);

class TransportBar : public QWidget
{
    Q_OBJECT

public:
    TransportBar(Document& document, Transport& transport);

    /// For a menu; null stands for a separator.
    const QList<QAction*>& Commands() const { return m_commands; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QAction* AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key, std::function<void()> run);
    void BuildCommands();
    void BuildFields();
    void ShowProject();
    void ShowFrame();
    void ShowPlaying();
    void GoToKey(bool next);

    Document& m_document;
    Transport& m_transport;
    QList<QAction*> m_commands;
    QList<QWidget*> m_buttons;
    QAction* m_play = nullptr;
    QAction* m_loop = nullptr;
    TimeCodeBox* m_time;
    TimeCodeBox* m_duration;
    QLabel* m_durationLabel;
};

} // namespace titler
