// Reads a folder and groups its files into clips, on a thread of its own: a large or a slow folder never
// holds the window up.
#pragma once

#include "KvFileNaming.h"
#include "media/Ref.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace titler {

/// A file with the files that belong to it.
struct MediaClip
{
    QString name;
    QStringList siblings;
};

class MediaScanner : public QObject
{
    Q_OBJECT

public:
    MediaScanner();
    ~MediaScanner() override;

    /// Starts anew with a folder; what is under way ends without a further signal.
    /// @param rules nobody else's.
    void Scan(const QString& folder, Ref<IKvFileNamingRuleCollection> rules);
    bool IsScanning() const { return m_look.isActive(); }

signals:
    /// The next clips, in the order of the list. `done` of `total` files have been looked at.
    void ClipsFound(const QVector<titler::MediaClip>& clips, int done, int total);
    /// After the last clips. @param readable false when the folder cannot be read.
    void Finished(bool readable);

private:
    /// What the thread has found and its owner has not taken yet.
    struct Box
    {
        QVector<MediaClip> clips;
        int done = 0;
        int total = 0;
        bool readable = true;
        bool finished = false;
    };

    void Look();
    void Run(const std::stop_token& stop, const QString& folder, IKvFileNamingRuleCollection& rules);
    void Group(const std::stop_token& stop, std::vector<std::wstring> files,
               IKvFileNamingRuleCollection& rules);

    QTimer m_look;      ///< runs while a scan is under way
    std::mutex m_mutex; ///< guards m_box
    Box m_box;
    std::jthread m_thread; ///< last: it must end before what it uses
};

} // namespace titler
