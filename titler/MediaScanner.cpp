#include "MediaScanner.h"

#include "SiblingFinder.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <optional>

namespace titler {
namespace {

constexpr qint64 kPostEvery = 100; // milliseconds

// A clip is listed under its video file, where it has one.
constexpr std::array kVideoEndings{"avi",  "dv",  "gxf", "lxf", "m2t", "m2ts", "m4v", "mkv",  "mov", "mp4",
                                   "mpeg", "mpg", "mts", "mxf", "ogv", "ts",   "vob", "webm", "wmv"};

bool IsVideo(const std::wstring& name)
{
    const auto dot = name.rfind(L'.');
    if (dot == std::wstring::npos)
        return false;
    const QString ending = QString::fromStdWString(name.substr(dot + 1)).toLower();
    return std::any_of(kVideoEndings.begin(), kVideoEndings.end(),
                       [&](const char* known) { return ending == QLatin1String(known); });
}

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

Ref<IKvFileNamingRuleCollection> BuiltInRules()
{
    IKvFileNamingRuleCollection* rules = nullptr;
    KvLoadFileNamingCollection(L"", &rules, nullptr); // no file: the built-in ones
    return Ref<IKvFileNamingRuleCollection>(rules);
}

// The places of the names in the order in which they may become bases: videos first.
std::vector<std::size_t> BaseOrder(const std::vector<std::wstring>& names)
{
    std::vector<std::size_t> order(names.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_partition(order.begin(), order.end(), [&](std::size_t i) { return IsVideo(names[i]); });
    return order;
}

} // namespace

MediaScanner::~MediaScanner() = default;

void MediaScanner::Scan(const QString& folder)
{
    m_thread = {}; // asks the old scan to stop, and waits
    ++m_generation;
    m_scanning = true;
    m_thread = std::jthread([this, folder, generation = m_generation](const std::stop_token& stop) {
        Run(stop, folder, generation);
    });
}

template <typename Tell>
void MediaScanner::Post(int generation, Tell tell)
{
    QMetaObject::invokeMethod(
        this,
        [this, generation, tell = std::move(tell)] {
            if (generation == m_generation)
                tell();
        },
        Qt::QueuedConnection);
}

void MediaScanner::Run(const std::stop_token& stop, const QString& folder, int generation)
{
    std::optional<std::vector<std::wstring>> names = FilesOf(folder, stop);
    const bool readable = names.has_value();
    if (readable)
        Group(stop, std::move(*names), generation);
    Post(generation, [this, readable] {
        m_scanning = false;
        emit Finished(readable);
    });
}

void MediaScanner::Group(const std::stop_token& stop, std::vector<std::wstring> files, int generation)
{
    SiblingFinder finder(*BuiltInRules(), std::move(files));
    const std::vector<std::wstring>& names = finder.Names();
    const int total = static_cast<int>(names.size());
    int done = 0;
    QVector<MediaClip> found;
    QElapsedTimer sincePost;
    const auto post = [&] {
        Post(generation, [this, found, done, total] { emit ClipsFound(found, done, total); });
        found.clear();
        sincePost.start();
    };
    sincePost.start();
    std::vector<bool> claimed(names.size());
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
        found << std::move(clip);
        if (sincePost.elapsed() >= kPostEvery)
            post();
    }
    post();
}

} // namespace titler
