// The current frame, and playback: the frame shown follows a clock.
#pragma once

#include "project/TimeCode.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace titler {

class Document;

/// Where the time of the open project stands. Undo never moves it.
class Transport : public QObject
{
    Q_OBJECT

public:
    /// Nanoseconds that never run backwards.
    using Clock = std::function<qint64()>;

    /// @param clock empty takes the system's monotonic one.
    explicit Transport(const Document& document, Clock clock = {});

    /// From 0 to the project's last frame. Another frame rate leaves the time where it was.
    int Frame() const { return m_frame; }
    int LastFrame() const;
    FrameRate Rate() const;
    /// Goes to a frame; one beyond the ends is the first or the last. Playback goes on from there.
    void Seek(int frame);

    bool IsPlaying() const { return m_isPlaying; }
    /// From the current frame on; at the end of a project that is not looped from the first.
    void Play();
    /// Stays on the frame that is shown.
    void Pause();
    void Toggle() { m_isPlaying ? Pause() : Play(); }
    bool Loops() const { return m_loops; }
    /// Playback begins anew at the end instead of stopping there.
    void SetLoop(bool loop);

    /// Shows the frame at which the clock stands; what is late is left out. A timer calls this in time.
    void Tick();

signals:
    void FrameChanged(int frame);
    void PlayingChanged(bool playing);
    void LoopChanged(bool loop);

private:
    void OnProjectChanged();
    void OnProjectOpened();
    void Show(int frame);
    void StartClockAt(int frame);
    void WaitForNextFrame(qint64 played);

    const Document& m_document;
    Clock m_clock;
    QTimer m_timer;
    EKvFrameRate m_rate;
    int m_duration;
    double m_seconds = 0; ///< of the frame that was gone to, whatever the rate
    int m_frame = 0;
    int m_startFrame = 0; ///< of playback, at m_startTime
    qint64 m_startTime = 0;
    bool m_isPlaying = false;
    bool m_loops = false;
};

} // namespace titler
