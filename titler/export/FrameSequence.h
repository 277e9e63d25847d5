// The frames of an animation as PNG files, several at a time.
#pragma once

#include "project/Project.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace titler {

inline constexpr int kMostThreads = 256;

/// From the first frame to the last one, both included.
struct FrameRange
{
    int first = 0;
    int last = 0;

    int Count() const { return last - first + 1; }
    bool operator==(const FrameRange&) const = default;
};

/// The whole of a project.
FrameRange WholeRange(const Project& project);

/// Where frames go.
struct FrameTarget
{
    QString folder; ///< made when it is missing; what it lies in is not
    QString name;   ///< files are NAME_0000.png, NAME_0001.png …
    FrameRange range;
    int threads = 0; ///< 1 to kMostThreads; 0: as many as the machine and its memory have room for
};

/// The project's file name without its ending, or "Untitled"; with the current page's number, from 1, where
/// there are more pages, so that frames of two pages can stand in one folder.
QString FrameName(const QString& projectFile, const Project& project);
/// The frame's file with its folder. The number has as many digits as the project's last frame needs, four at
/// least, so that names sort by time whatever part is exported.
QString FrameFile(const FrameTarget& target, const Project& project, int frame);
/// How many files of the target are there already; they would be replaced.
int ExistingFrames(const FrameTarget& target, const Project& project);

/// Exports in threads of its own from construction on. Every file is written whole or not at all; the first
/// one that cannot be written ends the export, and those that are finished stay.
class FrameSequence
{
public:
    FrameSequence(Project project, FrameTarget target);
    /// Cancels and waits.
    ~FrameSequence();
    FrameSequence(const FrameSequence&) = delete;
    FrameSequence& operator=(const FrameSequence&) = delete;

    /// The frames that are being drawn are finished, no other one is begun.
    void Cancel() { m_stop = true; }
    /// Waits for the end. @return false when it has not come within that time.
    bool Wait(int milliseconds);

    const FrameTarget& Target() const { return m_target; }
    int Total() const { return m_target.range.Count(); }
    int Written() const { return m_written; }
    /// Which file cannot be written and why; empty while there is no fault.
    QString Fault() const;

private:
    void Start(int threads);
    void Run();
    void Export();
    void Fail(int frame, const QString& reason);

    const Project m_project;
    const FrameTarget m_target;
    std::atomic<bool> m_stop = false;
    std::atomic<int> m_next = 0; ///< from the range's first frame
    std::atomic<int> m_written = 0;
    mutable std::mutex m_mutex; ///< for what follows
    std::condition_variable m_ended;
    int m_running = 0;
    int m_faultyFrame = 0;
    QString m_fault;
    std::vector<std::thread> m_threads;
};

} // namespace titler
