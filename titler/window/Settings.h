// What titler remembers from one start to the next.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace titler {

inline constexpr int kMostRecentProjects = 9;

/// One file, JSON, written whole. Fields that we do not know survive.
class Settings
{
public:
    /// @param fileName empty: nothing is read or written.
    explicit Settings(QString fileName) : m_file(std::move(fileName)) {}

    /// The user's own file.
    static QString DefaultFile();
    /// Where the settings stand, and the user's swatches beside them; empty for settings without a file.
    QString Folder() const;

    /// A missing file is no fault. A broken one gets ".bak" behind its name, here or when it is saved;
    /// where even that fails nothing is written any more.
    /// @return an empty text, or a sentence for the user.
    QString Load();
    /// Projects that another titler has added meanwhile stay, behind ours.
    /// @return an empty text, or a sentence for the user; the file is then as it was.
    QString Save();

    /// Puts a project first in the list, which holds kMostRecentProjects.
    void AddProject(const QString& name);
    void DropProject(const QString& name);

    QByteArray geometry;      ///< the window's, with its state, as QWidget gives it; may be empty
    QString workspace;        ///< its name on the command line; may be empty
    QString language;         ///< its code; empty while none was chosen: the system's
    bool hsb = false;         ///< the colour panel edits hue, saturation and brightness
    bool pages = true;        ///< the strip of pages is shown
    QString theme;            ///< its name; may be empty
    QString recentCharacters; ///< of the character map, the latest first
    QString favouriteCharacters;
    QStringList projects; ///< absolute paths, the latest first

private:
    QString SetAside();
    void AddTheirs(const QJsonObject& source);

    QString m_file;
    QJsonObject m_source;
    QStringList m_dropped; ///< they do not come back from the file
};

/// Keeps the colour panel's swatches in that folder, from the factory's where there are none. Before the
/// first panel. @return an empty text, or a sentence for the user.
QString KeepSwatches(const QString& folder);

} // namespace titler
