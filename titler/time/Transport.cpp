#include "time/Transport.h"

#include "edit/Document.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

constexpr qint64 kMillisecond = 1000000; // nanoseconds

Transport::Clock MonotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.nsecsElapsed(); };
}

} // namespace

Transport::Transport(const Document& document, Clock clock)
    : m_document(document)
    , m_clock(clock ? std::move(clock) : MonotonicClock())
    , m_rate(document.Current().video.frameRate)
    , m_duration(document.Current().duration)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Transport::Tick);
    connect(&document, &Document::ProjectOpened, this, &Transport::OnProjectOpened);
    connect(&document, &Document::ProjectChanged, this, &Transport::OnProjectChanged);
}

int Transport::LastFrame() const
{
    return std::max(1, m_duration) - 1;
}

FrameRate Transport::Rate() const
{
    return FrameRateOf(m_rate);
}

void Transport::Seek(int frame)
{
    const int target = std::clamp(frame, 0, LastFrame());
    if (target == m_frame)
        return; // a view that echoes the frame must not set the clock back to the frame's begin
    m_seconds = target / Rate().PerSecond();
    if (m_isPlaying)
        StartClockAt(target);
    Show(target);
}

void Transport::Play()
{
    if (m_isPlaying)
        return;
    m_isPlaying = true;
    if (m_frame == LastFrame() && !m_loops)
        Seek(0);
    StartClockAt(m_frame);
    emit PlayingChanged(true);
}

void Transport::Pause()
{
    if (!m_isPlaying)
        return;
    m_isPlaying = false;
    m_timer.stop();
    m_seconds = m_frame / Rate().PerSecond();
    emit PlayingChanged(false);
}

void Transport::SetLoop(bool loop)
{
    if (m_loops == loop)
        return;
    m_loops = loop;
    if (m_isPlaying)
        StartClockAt(m_frame); // rounds that were played do not count as time beyond the end
    emit LoopChanged(loop);
}

void Transport::StartClockAt(int frame)
{
    m_startFrame = frame;
    m_startTime = m_clock();
    WaitForNextFrame(0);
}

void Transport::Tick()
{
    if (!m_isPlaying)
        return;
    const qint64 played = FrameAtTime(m_clock() - m_startTime, Rate());
    const qint64 frame = m_startFrame + played;
    if (!m_loops && frame > LastFrame()) {
        Show(LastFrame());
        Pause();
        return;
    }
    WaitForNextFrame(played);
    Show(static_cast<int>(frame % (LastFrame() + 1)));
}

// From the start of playback, so that no rounding adds up.
void Transport::WaitForNextFrame(qint64 played)
{
    const qint64 wait = m_startTime + TimeOfFrame(played + 1, Rate()) - m_clock();
    m_timer.start(static_cast<int>(std::clamp<qint64>((wait + kMillisecond - 1) / kMillisecond, 0, 1000)));
}

void Transport::Show(int frame)
{
    if (frame == m_frame)
        return;
    m_frame = frame;
    emit FrameChanged(frame);
}

// The time is kept, not the frame: to another rate and back is where it was, also across a shorter project.
void Transport::OnProjectChanged()
{
    const EKvFrameRate rate = m_document.Current().video.frameRate;
    const int duration = m_document.Current().duration;
    if (rate == m_rate && duration == m_duration)
        return;
    if (m_isPlaying)
        m_seconds = m_frame / Rate().PerSecond();
    m_rate = rate;
    m_duration = duration;
    const double wanted = std::clamp<double>(m_seconds * Rate().PerSecond(), 0, LastFrame());
    const int frame = static_cast<int>(std::lround(wanted));
    if (m_isPlaying)
        StartClockAt(frame);
    Show(frame);
}

void Transport::OnProjectOpened()
{
    Pause();
    Seek(0);
    m_seconds = 0;
}

} // namespace titler
