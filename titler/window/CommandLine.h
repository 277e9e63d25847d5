// What the command line asks for.
#pragma once

#include "export/FrameSequence.h"
#include "window/Skin.h"
#include "window/Workspaces.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace titler {

struct Language;

struct Options
{
    QString project;
    QString media;
    QString screenshot;
    QString exportFrame;
    QString exportFrames;            ///< a folder
    std::optional<FrameRange> range; ///< of `exportFrames`; nothing: the whole project
    int threads = 0;                 ///< of `exportFrames`; 0: as `FrameTarget` has it
    std::optional<int> frame;        ///< of `screenshot` and `exportFrame`; nothing: the middle one
    int page = 1;                    ///< of all three, from 1
    QSize windowSize{1440, 800};
    bool isSized = false; ///< `windowSize` was asked for
    QString settings;     ///< a file; empty: the user's own
    QString subtitles;    ///< a file
    QString encoding;     ///< of `subtitles`; empty: what the file tells
    QString rules;        ///< a file; empty: the user's own, the built-in ones for pictures
    std::optional<Workspace> workspace;
    std::optional<Theme> theme;         ///< nothing: the one of the settings, for pictures the dark one
    bool menuBar = false;               ///< the caption has menus instead of tabs
    bool play = false;                  ///< the window plays the title from the begin, over and over
    QString tour;                       ///< a folder: the program shows itself
    QString film;                       ///< a folder: likewise, as an animation
    bool firstFrame = false;            ///< the program tells when it has painted, and ends
    bool gallery = false;               ///< the library's controls instead of the program's window
    const Language* language = nullptr; ///< null: the one of the settings, or of the system
    bool help = false;
    bool version = false;

    /// True when the program says something of itself, and ends.
    bool OnlyTells() const { return help || version; }
    /// True when nothing is shown, so that no display is needed.
    bool OnlyPictures() const
    {
        return !screenshot.isEmpty() || !exportFrame.isEmpty() || !exportFrames.isEmpty();
    }
    /// True when the program drives itself.
    bool ShowsItself() const { return !tour.isEmpty() || !film.isEmpty(); }
    /// True when nothing is said of what to begin with.
    bool NamesNothing() const
    {
        return project.isEmpty() && media.isEmpty() && subtitles.isEmpty() && !workspace && !play;
    }
    /// The last frame that is asked for; -1 for none.
    int LastFrame() const;
};

/// @param arguments with the program's name first. @return nothing, and the reason in `fault`, when they make
/// no sense.
std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault);

/// The language that is asked for, also among arguments that make no sense; null for none.
const Language* LanguageNamedIn(const QStringList& arguments);

/// Why the project does not have the page or the frames that are asked for; empty when it has.
QString PlaceFault(const Options& options, const Project& project);

/// The text for "--help"; needs a QCoreApplication.
QString HelpText();

} // namespace titler
