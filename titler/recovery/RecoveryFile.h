// Work that is not saved yet, beside the user's own files: it outlives a program that ends in its midst.
#pragma once

#include "project/Project.h"
#include "subtitles/SubtitleState.h"

#include <QDateTime>
#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QDir;

namespace titler {

struct UnsavedWork
{
    QString projectFile; ///< where the project stands; empty: it was never saved
    bool isProjectModified = false;
    Project project;
    std::optional<SubtitleState> subtitles; ///< nothing: there are none
    QDateTime time;                         ///< when it was kept
};

/// What became of keeping it.
struct KeepResult
{
    bool isLocked; ///< false: another program has the file, or none can be there
    QString fault; ///< the system's reason; empty when there is none

    bool IsKept() const { return isLocked && fault.isEmpty(); }
};

/// The file of one running program. A program's lock beside it tells the others that it still runs; it needs
/// no tidying up when the program dies.
class RecoveryFile
{
public:
    /// The user's own folder for it; empty where there is none.
    static QString DefaultFolder();

    /// A file of our own; nothing is on the disk yet.
    explicit RecoveryFile(const QString& folder);
    /// What programs have left that run no more, the latest first. Each file is ours from now on: nobody else
    /// is offered it as long as the object lives. What cannot be read is passed over and stays.
    static std::vector<std::unique_ptr<RecoveryFile>> FindLeft(const QString& folder);

    /// Whole or not at all; what was kept before stays when it fails. From any thread.
    KeepResult Write(const UnsavedWork& work);
    /// Nothing is left of it.
    void Remove();
    /// What `FindLeft` has found in the file; empty for a new one.
    const UnsavedWork& Work() const { return m_work; }
    QString Folder() const;

private:
    RecoveryFile(const QDir& folder, const QString& name);
    /// Whether the file is ours, or just became it.
    bool Take();
    bool Read();

    QString m_name;
    QLockFile m_lock;
    UnsavedWork m_work;
};

} // namespace titler
