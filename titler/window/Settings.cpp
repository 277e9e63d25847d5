#include "window/Settings.h"

#include "KvSolidColorTemplate.h"
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

constexpr const char* kRgb = "rgb";
constexpr const char* kHsb = "hsb";
constexpr const char* kRecentCharacters = "recentCharacters";
constexpr const char* kFavouriteCharacters = "favouriteCharacters";

QJsonDocument Parse(QFile& file)
{
    return QJsonDocument::fromJson(file.isOpen() ? file.read(kLargestFile) : QByteArray());
}

} // namespace

QString Settings::DefaultFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("settings.json"));
}

QString Settings::Folder() const
{
    return m_file.isEmpty() ? QString() : QFileInfo(m_file).absolutePath();
}

QString Settings::Load()
{
    QFile file(m_file);
    if (m_file.isEmpty() || !file.exists())
        return {};
    file.open(QIODevice::ReadOnly);
    const QJsonDocument document = Parse(file);
    if (!document.isObject())
        return SetAside();
    m_source = document.object();
    geometry = QByteArray::fromBase64(m_source.value(QLatin1String("geometry")).toString().toLatin1());
    workspace = m_source.value(QLatin1String("workspace")).toString();
    language = m_source.value(QLatin1String("language")).toString();
    hsb = m_source.value(QLatin1String("colours")).toString() == QLatin1String(kHsb);
    pages = m_source.value(QLatin1String("pages")).toBool(true);
    theme = m_source.value(QLatin1String("theme")).toString();
    recentCharacters = m_source.value(QLatin1String(kRecentCharacters)).toString();
    favouriteCharacters = m_source.value(QLatin1String(kFavouriteCharacters)).toString();
    AddTheirs(m_source);
    return {};
}

// What cannot be read is kept beside the file that takes its place.
QString Settings::SetAside()
{
    const QString copy = m_file + QStringLiteral(".bak");
    const QString name = QDir::toNativeSeparators(m_file);
    if (QFileInfo(m_file).isFile() && (!QFile::exists(copy) || QFile::remove(copy)) &&
        QFile::rename(m_file, copy))
        return Text(kTextBadSettings, {name, QFileInfo(copy).fileName()});
    m_file.clear(); // a save would lose what is there
    return Text(kTextLostSettings, {name});
}

void Settings::AddTheirs(const QJsonObject& source)
{
    for (const QJsonValue project : source.value(QLatin1String("projects")).toArray()) {
        const QString name = project.toString();
        if (!name.isEmpty() && !projects.contains(name) && !m_dropped.contains(name) &&
            projects.size() < kMostRecentProjects)
            projects << name;
    }
}

QString Settings::Save()
{
    if (m_file.isEmpty())
        return {};
    QFile file(m_file);
    file.open(QIODevice::ReadOnly);
    const QJsonDocument now = Parse(file);
    if (now.isObject()) {
        m_source = now.object();
        AddTheirs(m_source);
    }
    file.close();
    const QString aside = file.exists() && !now.isObject() ? SetAside() : QString();
    if (m_file.isEmpty())
        return aside;
    m_source.insert(QLatin1String("geometry"), QString::fromLatin1(geometry.toBase64()));
    m_source.insert(QLatin1String("workspace"), workspace);
    if (!language.isEmpty())
        m_source.insert(QLatin1String("language"), language);
    m_source.insert(QLatin1String("colours"), QLatin1String(hsb ? kHsb : kRgb));
    m_source.insert(QLatin1String("pages"), pages);
    m_source.insert(QLatin1String("theme"), theme);
    m_source.insert(QLatin1String(kRecentCharacters), recentCharacters);
    m_source.insert(QLatin1String(kFavouriteCharacters), favouriteCharacters);
    m_source.insert(QLatin1String("projects"), QJsonArray::fromStringList(projects));
    if (now.isObject() && now.object() == m_source)
        return {}; // a project that is opened again does not wait for the disk
    QDir().mkpath(QFileInfo(m_file).path());
    const QString fault = WriteWhole(m_file, QJsonDocument(m_source).toJson());
    return fault.isEmpty() ? aside : Text(kTextCannotSave, {QDir::toNativeSeparators(m_file), fault});
}

void Settings::AddProject(const QString& name)
{
    projects.removeAll(name);
    m_dropped.removeAll(name);
    projects.prepend(name);
    if (projects.size() > kMostRecentProjects)
        projects.removeLast();
}

void Settings::DropProject(const QString& name)
{
    projects.removeAll(name);
    if (!m_dropped.contains(name))
        m_dropped << name;
}

QString KeepSwatches(const QString& folder)
{
    CKvSolidColorTemplate::SetSystemFolder(folder.toStdWString());
    return CKvSolidColorTemplate::InstallFactoryTemplate() != 0
               ? QString()
               : Text(kTextCannotKeepSwatches, {QDir::toNativeSeparators(folder)});
}

} // namespace titler
