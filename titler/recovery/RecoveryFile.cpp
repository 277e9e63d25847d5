#include "recovery/RecoveryFile.h"

#include "project/Pages.h"
#include "project/WholeFile.h"
#include "window/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

namespace titler {
namespace {

constexpr int kVersion = 1;
constexpr const char* kEnding = ".unsaved";

QByteArray ToJson(const UnsavedWork& work)
{
    QJsonObject json{{"version", kVersion},
                     {"time", work.time.toUTC().toString(Qt::ISODateWithMs)},
                     {"file", work.projectFile},
                     {"modified", work.isProjectModified},
                     {"page", work.project.pageIndex},
                     {"project", QJsonDocument::fromJson(SerialiseProject(work.project)).object()}};
    if (work.subtitles)
        json.insert("subtitles", SubtitlesToJson(*work.subtitles));
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

} // namespace

QString RecoveryFile::DefaultFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return data.isEmpty() ? QString() : QDir(data).filePath(QStringLiteral("recovery"));
}

RecoveryFile::RecoveryFile(const QString& folder)
    : RecoveryFile(QDir(folder), QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

RecoveryFile::RecoveryFile(const QDir& folder, const QString& name)
    : m_name(folder.absoluteFilePath(name))
    , m_lock(m_name + QStringLiteral(".lock"))
{
    m_lock.setStaleLockTime(0); // a program may run for weeks: only its end counts
}

QString RecoveryFile::Folder() const
{
    return QFileInfo(m_name).path();
}

bool RecoveryFile::Take()
{
    return m_lock.isLocked() || m_lock.tryLock(0);
}

std::vector<std::unique_ptr<RecoveryFile>> RecoveryFile::FindLeft(const QString& folder)
{
    std::vector<std::unique_ptr<RecoveryFile>> left;
    const QDir place(folder);
    for (const QString& name : place.entryList({QLatin1Char('*') + QLatin1String(kEnding)}, QDir::Files)) {
        std::unique_ptr<RecoveryFile> file(new RecoveryFile(place, QFileInfo(name).completeBaseName()));
        if (file->Take() && file->Read())
            left.push_back(std::move(file));
    }
    std::stable_sort(left.begin(), left.end(),
                     [](const auto& a, const auto& b) { return a->Work().time > b->Work().time; });
    return left;
}

KeepResult RecoveryFile::Write(const UnsavedWork& work)
{
    QDir().mkpath(Folder());
    if (!Take())
        return {false, {}};
    return {true, WriteWhole(m_name + QLatin1String(kEnding), ToJson(work))};
}

bool RecoveryFile::Read()
{
    QFile file(m_name + QLatin1String(kEnding));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    ProjectError error;
    std::optional<Project> project =
        ParseProject(QJsonDocument(json.value("project").toObject()).toJson(), error);
    if (json.value("version").toInt() != kVersion || !project)
        return false;
    ChoosePage(*project, json.value("page").toInt());
    m_work = {json.value("file").toString(),
              json.value("modified").toBool(),
              std::move(*project),
              {},
              QDateTime::fromString(json.value("time").toString(), Qt::ISODateWithMs)};
    if (json.contains("subtitles"))
        m_work.subtitles = SubtitlesFromJson(json.value("subtitles").toObject());
    return true;
}

void RecoveryFile::Remove()
{
    if (!m_lock.isLocked())
        return;
    // Before the lock, so that nobody finds the file alone; also parts of one that was never finished.
    QDir folder(Folder());
    for (const QString& name :
         folder.entryList({QFileInfo(m_name).fileName() + QLatin1String(kEnding) + u'*'}, QDir::Files))
        folder.remove(name);
    m_lock.unlock();
}

} // namespace titler
