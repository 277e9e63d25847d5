#include "media/MediaScanner.h"

#include "KvFileNaming.h"
#include "media/SiblingFinder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>

namespace titler {
namespace {

constexpr int kLookEvery = 40; // milliseconds

// Nothing when the folder cannot be read.
std::optional<std::vector<std::wstring>> FilesOf(const QString& folder, const std::stop_token& stop)
{
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isReadable())
        return std::nullopt;
    std::vector<std::wstring> names;
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext() && !stop.stop_requested()) {
        files.next();
        names.push_back(files.fileName().toStdWString());
    }
    return names;
}

// The places of the names in the order in which they may become bases: a clip is listed under its video.
std::vector<std::size_t> BaseOrder(const std::vector<std::wstring>& names)
{
    std::vector<std::size_t> order(names.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_partition(order.begin(), order.end(),
                          [&](std::size_t i) { return KvHasVideoExtension(names[i].c_str()); });
    return order;
}

/// What a thread has found and its owner has not taken yet.
struct Box
{
    QVector<MediaClip> clips;
    int done = 0;
    int total = 0;
    bool readable = true;
    bool finished = false;
};

} // namespace

struct MediaScanner::Job
{
    Job(const QString& folder, Ref<IKvFileNamingRuleCollection> rules)
        : m_thread([this, folder, owned = std::move(rules)](const std::stop_token& stop) {
            Run(stop, folder, *owned);
        })
    {
    }

    void Stop() { m_thread.request_stop(); }
    Box Take()
    {
        const std::lock_guard lock(m_mutex);
        Box taken = m_box;
        m_box.clips.clear();
        return taken;
    }

private:
    void Run(const std::stop_token& stop, const QString& folder, IKvFileNamingRuleCollection& rules);
    void Group(const std::stop_token& stop, std::vector<std::wstring> files,
               IKvFileNamingRuleCollection& rules);

    std::mutex m_mutex; ///< guards m_box
    Box m_box;
    std::jthread m_thread; ///< last: it must end before what it uses
};

void MediaScanner::Job::Run(const std::stop_token& stop, const QString& folder,
                            IKvFileNamingRuleCollection& rules)
{
    std::optional<std::vector<std::wstring>> names = FilesOf(folder, stop);
    const bool readable = names.has_value();
    if (readable)
        Group(stop, std::move(*names), rules);
    const std::lock_guard lock(m_mutex);
    m_box.readable = readable;
    m_box.finished = true;
}

void MediaScanner::Job::Group(const std::stop_token& stop, std::vector<std::wstring> files,
                              IKvFileNamingRuleCollection& rules)
{
    SiblingFinder finder(rules, std::move(files));
    const std::vector<std::wstring>& names = finder.Names();
    std::vector<bool> claimed(names.size());
    int done = 0;
    for (const std::size_t base : BaseOrder(names)) {
        if (stop.stop_requested())
            return;
        ++done;
        if (claimed[base])
            continue;
        MediaClip clip{QString::fromStdWString(names[base]), {}};
        for (const std::size_t sibling : finder.SiblingsOf(base, stop)) {
            claimed[sibling] = true;
            clip.siblings << QString::fromStdWString(names[sibling]);
        }
        const std::lock_guard lock(m_mutex);
        m_box.clips << std::move(clip);
        m_box.done = done;
        m_box.total = static_cast<int>(names.size());
    }
}

MediaScanner::MediaScanner()
{
    m_look.setInterval(kLookEvery);
    connect(&m_look, &QTimer::timeout, this, &MediaScanner::Look);
}

MediaScanner::~MediaScanner()
{
    if (m_job != nullptr)
        m_job->Stop(); // all at once, then each is waited for
}

void MediaScanner::Scan(const QString& folder, Ref<IKvFileNamingRuleCollection> rules)
{
    if (m_job != nullptr) {
        m_job->Stop();
        m_given.push_back(std::move(m_job));
    }
    m_job = std::make_unique<Job>(folder, std::move(rules));
    m_look.start();
}

void MediaScanner::Look()
{
    std::erase_if(m_given, [](const auto& job) { return job->Take().finished; });
    const Job* looked = m_job.get();
    const Box box = m_job->Take();
    if (!box.clips.isEmpty())
        emit ClipsFound(box.clips, box.done, box.total);
    if (!box.finished || m_job.get() != looked) // a handler may have begun anew
        return;
    m_look.stop();
    emit Finished(box.readable);
}

} // namespace titler
