#include "window/Settings.h"

#include "project/WholeFile.h"
#include "window/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

namespace titler {
namespace {

constexpr qint64 kLargestFile = 1 << 20; // bytes; ours has a few hundred

} // namespace

QString Settings::DefaultFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("settings.json"));
}

QString Settings::Load()
{
    QFile file(m_file);
    if (m_file.isEmpty() || !file.exists())
        return {};
    const bool isRead = file.open(QIODevice::ReadOnly);
    const QJsonDocument document = QJsonDocument::fromJson(isRead ? file.read(kLargestFile) : QByteArray());
    if (!document.isObject()) {
        const QString copy = m_file + QStringLiteral(".bak");
        QFile::remove(copy);
        const QString name = QDir::toNativeSeparators(m_file);
        if (isRead && QFile::copy(m_file, copy))
            return Text(kTextBadSettings, {name, QFileInfo(copy).fileName()});
        m_file.clear(); // a save would lose what is there
        return Text(kTextLostSettings, {name});
    }
    m_source = document.object();
    geometry = QByteArray::fromBase64(m_source.value(QLatin1String("geometry")).toString().toLatin1());
    workspace = m_source.value(QLatin1String("workspace")).toString();
    for (const QJsonValue project : m_source.value(QLatin1String("projects")).toArray()) {
        const QString name = project.toString();
        if (!name.isEmpty() && !projects.contains(name) && projects.size() < kMostRecentProjects)
            projects << name;
    }
    return {};
}

QString Settings::Save()
{
    if (m_file.isEmpty())
        return {};
    m_source.insert(QLatin1String("geometry"), QString::fromLatin1(geometry.toBase64()));
    m_source.insert(QLatin1String("workspace"), workspace);
    m_source.insert(QLatin1String("projects"), QJsonArray::fromStringList(projects));
    QDir().mkpath(QFileInfo(m_file).path());
    const QString fault = WriteWhole(m_file, QJsonDocument(m_source).toJson());
    return fault.isEmpty() ? QString() : Text(kTextCannotSave, {QDir::toNativeSeparators(m_file), fault});
}

void Settings::AddProject(const QString& name)
{
    DropProject(name);
    projects.prepend(name);
    if (projects.size() > kMostRecentProjects)
        projects.removeLast();
}

void Settings::DropProject(const QString& name)
{
    projects.removeAll(name);
}

} // namespace titler
