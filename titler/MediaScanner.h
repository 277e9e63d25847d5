// Reads a folder and groups its files into clips, on a thread of its own: a large or a slow folder never
// holds the window up.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

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
    MediaScanner() = default;
    ~MediaScanner() override;

    /// Starts anew with a folder; what is under way ends without a further signal.
    void Scan(const QString& folder);
    bool IsScanning() const { return m_scanning; }

signals:
    /// The next clips, in the order of the list. `done` of `total` files have been looked at.
    void ClipsFound(const QVector<titler::MediaClip>& clips, int done, int total);
    /// After the last clips. @param readable false when the folder cannot be read.
    void Finished(bool readable);

private:
    void Run(const std::stop_token& stop, const QString& folder, int generation);
    void Group(const std::stop_token& stop, std::vector<std::wstring> files, int generation);
    // From the thread to the owner's thread; what an older scan still says is dropped there.
    template <typename Tell>
    void Post(int generation, Tell tell);

    bool m_scanning = false;
    int m_generation = 0;
    std::jthread m_thread; ///< last: it must end before what it uses
};

} // namespace titler
