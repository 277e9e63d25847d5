// A titler project: a plain value, and its file.
//
// The file is JSON, "*.ktitle"; README.md beside this header lists the fields. Fields that we do not know
// survive a load, an edit and a save.
#pragma once

#include "KvVideoFormat.h"
#include "project/Animation.h"
#include "project/Paint.h"

#include <QJsonObject>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace titler {

inline constexpr int kProjectVersion = 1;
inline constexpr int kMostPages = 1000;
inline constexpr int kLongestText = 4000;
inline constexpr int kSmallestFrame = 16;
inline constexpr int kLargestFrame = 8192;
inline constexpr double kSmallestFont = 1.0;
inline constexpr double kLargestFont = 100.0;
inline constexpr qint64 kLargestMegabytes = 64;
inline constexpr qint64 kLargestFile = kLargestMegabytes << 20; ///< bytes

enum class TextAlign
{
    Left,
    Centre,
    Right
};

/// A text, how it looks and how it moves.
struct Title
{
    QString text;
    QString fontFamily;   ///< empty: the first good one that is installed
    double fontSize = 14; ///< percent of the frame's height
    bool bold = true;
    bool italic = false;
    TextAlign align = TextAlign::Centre;
    Paint fill; ///< of a kind other than None; Property::GradientOffset moves its gradient
    TextOutline outline;
    TextShadow shadow;
    Properties properties = StillProperties();
    Animated& operator[](Property property) { return properties[static_cast<std::size_t>(property)]; }
    const Animated& operator[](Property property) const
    {
        return properties[static_cast<std::size_t>(property)];
    }
};

/// What the canvas shows.
struct Page
{
    Title title;
    Paint background{PaintKind::None}; ///< fills the frame; None is over nothing
    /// The fields of its place in the file as they were loaded, without keys, for those that we do not know.
    QJsonObject pageSource = {};
};

/// A project is its current page with all that belongs to every page, and the other pages: so whatever draws
/// or edits a project draws or edits that page. Pages.h has the operations on pages.
struct Project : Page
{
    SKvVideoResolution video{kKvAspect16x9, kKvFrameRate29_97, kKvScanUpperFirst, 1920, 1080};
    SKvWaveFormatInfo audio{2, 48000, 16};
    int duration = 150; ///< frames, 1 to kLongestDuration
    int pageIndex = 0;  ///< of the current page among all, from 0
    /// In their order, without the current one. Copies of the project share them: the steps of undo hold
    /// many.
    QList<std::shared_ptr<const Page>> otherPages = {};
    QJsonObject source = {}; ///< the file's content as it was loaded, without pages, likewise
};

/// True when both are drawn alike: the fields that we do not know do not count.
bool LooksSame(const Title& a, const Title& b);

/// A page with a first gradient and no text yet.
Page NewPage();

/// A project of one such page.
Project NewProject();

/// A frame at which a title is to be seen: by the middle it has come in and has not gone yet; else, as in a
/// project that goes on long after it, by the middle of its fade's keys.
int MiddleFrame(const Title& title, int duration);
/// The frame at which an opened project stands: that of its current page.
int MiddleFrame(const Project& project);

/// The frame in square pixels: its height, and the width that its aspect ratio asks for.
QSizeF DisplaySize(const SKvVideoResolution& video);

/// Gives the project another video format; duration and keys keep their times at another frame rate. A
/// project that would get too long runs faster instead, and so do keys behind the end that would get too far
/// away.
void SetVideoFormat(Project& project, const SKvVideoResolution& format);

enum class ProjectFault
{
    NoFile,       ///< a folder, a pipe or a device
    Empty,        ///< nothing but blanks
    CannotRead,   ///< `detail` is the system's reason
    TooLarge,     ///< larger than kLargestFile
    BadJson,      ///< at `line` and `column`; `detail` is the parser's reason
    NewerVersion, ///< `detail` is the file's version
    BadField,     ///< `path` holds `detail` where `expected` should stand
};

enum class Expected
{
    Object,
    List,
    Text,
    Colour,
    Flag,
    Number,
    WholeNumber,
    Name
};

/// Why a project could not be loaded.
struct ProjectError
{
    ProjectFault fault = ProjectFault::CannotRead;
    int line = 0;   ///< from 1
    int column = 0; ///< from 1, in characters
    QString path;   ///< for example "title.gradient.stops[2].position"
    Expected expected = Expected::Object;
    double least = 0; ///< for numbers; for lists and texts the smallest and largest length
    double most = 0;
    qsizetype length = -1; ///< of the list or text that was found, where the length is the fault
    QStringList names;     ///< for Expected::Name: what is known
    QString detail;
};

/// @return the project, or nothing and the reason in `error`. Fields that are missing get their defaults.
std::optional<Project> ParseProject(const QByteArray& json, ProjectError& error);
/// @return UTF-8 text with the fields of `source` that we do not know in their places.
QByteArray SerialiseProject(const Project& project);

std::optional<Project> LoadProject(const QString& file, ProjectError& error);
/// Writes a project whole, or leaves the old file as it is, also when the project is too large to be loaded
/// again. @return an empty text, or the system's reason.
QString SaveProject(const QString& file, const Project& project);

/// True when both would be saved as the same text.
bool operator==(const Page& a, const Page& b);
/// Likewise; which page is the current one is not saved.
bool operator==(const Project& a, const Project& b);

/// "#AARRGGBB".
QString ColourText(DWORD colour);
/// Reads "#AARRGGBB", or "#RRGGBB" as opaque.
std::optional<DWORD> ParseColour(const QString& text);

} // namespace titler
