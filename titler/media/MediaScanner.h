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

#include <memory>
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
    struct Job;

    void Look();

    QTimer m_look; ///< runs while a scan is under way
    std::unique_ptr<Job> m_job;
    std::vector<std::unique_ptr<Job>> m_given; ///< asked to stop: a slow folder may hold them for long
};

} // namespace titler
