// The workspaces: what each is called, to which application it belongs and how it is reached.
#pragma once

#include "KvTypes.h"

#include <QString>
#include <Qt>

#include <array>
#include <optional>

namespace titler {

/// What the middle of the window is for.
enum class Workspace
{
    Design,  ///< text and gradient
    Animate, ///< keys and playback
    Clips,   ///< the media of a folder
    Rules,   ///< what makes media belong together
    Subtitles,
    Log, ///< what the program has done
};
inline constexpr std::array kWorkspaces{Workspace::Design, Workspace::Animate,   Workspace::Clips,
                                        Workspace::Rules,  Workspace::Subtitles, Workspace::Log};

/// Each has its tabs in the title bar, under this number.
enum Application : unsigned
{
    kEvery = 0, ///< has its tab in each of them
    kTitles = 1,
    kMedia = 2,
    kSubtitles = 3,
};
inline constexpr std::array kApplications{kTitles, kSubtitles, kMedia};

struct WorkspaceTraits
{
    const char* name; ///< on the command line and in the settings
    Application application;
    UINT textId; ///< of its tab and its menu entry
    Qt::Key key; ///< its shortcut
};
const WorkspaceTraits& TraitsOf(Workspace workspace);

/// Nothing for a name that is none.
std::optional<Workspace> WorkspaceOf(const QString& name);

} // namespace titler
