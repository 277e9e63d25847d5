#include "window/Workspaces.h"

#include "window/Texts.h"

#include <algorithm>

namespace titler {
namespace {

constexpr WorkspaceTraits kTraits[kWorkspaces.size()] = {
    {"design", kTitles, kTextTabDesign, Qt::Key_F6},
    {"animate", kTitles, kTextTabAnimate, Qt::Key_F7},
    {"clips", kMedia, kTextTabClips, Qt::Key_F8},
    {"rules", kMedia, kTextTabRules, Qt::Key_F9},
    {"subtitles", kSubtitles, kTextTabSubtitles, Qt::Key_F4},
    {"log", kEvery, kTextTabLog, Qt::Key_F12},
};

} // namespace

const WorkspaceTraits& TraitsOf(Workspace workspace)
{
    return kTraits[static_cast<int>(workspace)];
}

std::optional<Workspace> WorkspaceOf(const QString& name)
{
    const auto found = std::find_if(kWorkspaces.begin(), kWorkspaces.end(), [&](Workspace workspace) {
        return name == QLatin1String(TraitsOf(workspace).name);
    });
    return found == kWorkspaces.end() ? std::nullopt : std::optional(*found);
}

} // namespace titler
