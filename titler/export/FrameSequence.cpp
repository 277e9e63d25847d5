#include "export/FrameSequence.h"

#include "export/FrameExport.h"
#include "project/Pages.h"
#include "title/TitleRenderer.h"
#include "window/Texts.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <system_error>

namespace titler {
namespace {

constexpr int kFewestDigits = 4;
constexpr qint64 kBytesForFrames = qint64(2) << 30;
constexpr qint64 kBytesPerPixel = 9; // the frame, its coverage and the rows of the file

QString FileName(const FrameTarget& target, const Project& project, int frame)
{
    const auto digits = static_cast<int>(QString::number(project.duration - 1).size());
    return QStringLiteral("%1_%2.png")
        .arg(target.name, QStringLiteral("%1").arg(frame, std::max(kFewestDigits, digits), 10, QChar(u'0')));
}

int ThreadsFor(const FrameTarget& target, const Project& project)
{
    const qint64 frame = kBytesPerPixel * project.video.width * project.video.height;
    const int room = static_cast<int>(std::clamp<qint64>(kBytesForFrames / frame, 1, kMostThreads));
    const int most = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    const int threads = target.threads > 0 ? target.threads : std::min(most, room);
    return std::clamp(threads, 1, std::max(1, target.range.Count()));
}

} // namespace

FrameRange WholeRange(const Project& project)
{
    return {0, project.duration - 1};
}

QString FrameName(const QString& projectFile, const Project& project)
{
    const QString file = QFileInfo(projectFile).completeBaseName();
    const QString name = file.isEmpty() ? Text(kTextUntitled) : file;
    const int pages = PageCount(project);
    const auto digits = static_cast<int>(QString::number(pages).size());
    const QString page = QStringLiteral("%1").arg(project.pageIndex + 1, digits, 10, QChar(u'0'));
    return pages > 1 ? Text(kTextPagedFrames, {name, page}) : name;
}

QString FrameFile(const FrameTarget& target, const Project& project, int frame)
{
    return QDir(target.folder).filePath(FileName(target, project, frame));
}

int ExistingFrames(const FrameTarget& target, const Project& project)
{
    const QString begin = target.name + u'_';
    int count = 0;
    for (QDirIterator files(target.folder, QDir::Files | QDir::Hidden); files.hasNext();) {
        files.next();
        const QString name = files.fileName();
        if (!name.startsWith(begin))
            continue;
        bool isNumber = false;
        const int frame = name.mid(begin.size()).section(u'.', 0, 0).toInt(&isNumber);
        const bool isInRange = isNumber && frame >= target.range.first && frame <= target.range.last;
        count += isInRange && name == FileName(target, project, frame) ? 1 : 0;
    }
    return count;
}

FrameSequence::FrameSequence(Project project, FrameTarget target)
    : m_project(std::move(project))
    , m_target(std::move(target))
{
    if (!m_target.folder.isEmpty())
        QDir().mkdir(m_target.folder); // where that fails, the first frame says why
    Start(ThreadsFor(m_target, m_project));
}

FrameSequence::~FrameSequence()
{
    Cancel();
    for (std::thread& thread : m_threads)
        thread.join();
}

void FrameSequence::Start(int threads)
{
    const std::lock_guard lock(m_mutex);
    try {
        while (m_running < threads) {
            m_threads.emplace_back([this] { Run(); });
            ++m_running;
        }
    } catch (const std::system_error& error) { // fewer do it too
        if (m_threads.empty())
            m_fault = QString::fromLocal8Bit(error.what());
    }
}

void FrameSequence::Run()
{
    Export();
    const std::lock_guard lock(m_mutex);
    if (--m_running == 0)
        m_ended.notify_all();
}

void FrameSequence::Export()
{
    TitleRenderer renderer;
    while (!m_stop) {
        const int step = m_next++;
        if (step >= Total())
            return;
        const int frame = m_target.range.first + step;
        const QString reason = ExportFrame(renderer, m_project, FrameFile(m_target, m_project, frame), frame);
        if (reason.isEmpty())
            ++m_written;
        else
            Fail(frame, reason);
    }
}

// Of several faults at a time the earliest frame's is told.
void FrameSequence::Fail(int frame, const QString& reason)
{
    m_stop = true;
    const std::lock_guard lock(m_mutex);
    if (!m_fault.isEmpty() && frame > m_faultyFrame)
        return;
    m_faultyFrame = frame;
    const QString file = QDir::toNativeSeparators(FrameFile(m_target, m_project, frame));
    m_fault = Text(kTextCannotExport, {file, reason});
}

bool FrameSequence::Wait(int milliseconds)
{
    std::unique_lock lock(m_mutex);
    return m_ended.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return m_running == 0; });
}

QString FrameSequence::Fault() const
{
    const std::lock_guard lock(m_mutex);
    return m_fault;
}

} // namespace titler
