#include "ProjectCommands.h"

#include "Document.h"
#include "TimeCode.h"

#include <algorithm>
#include <cmath>

namespace titler {

void SetVideoFormat(Project& project, const SKvVideoResolution& format)
{
    const bool isSameRate = format.frameRate == project.video.frameRate;
    const double factor =
        FrameRateOf(format.frameRate).PerSecond() / FrameRateOf(project.video.frameRate).PerSecond();
    project.video = format;
    if (isSameRate)
        return;
    project.duration =
        std::clamp(static_cast<int>(std::lround(project.duration * factor)), 1, kLongestDuration);
    for (Animated& animated : project.title.properties)
        Retime(animated, factor);
}

EditCommand::EditCommand(Document& document, ProjectState before, ProjectState after, EditKind kind,
                         int session, const QString& name)
    : QUndoCommand(name)
    , m_document(document)
    , m_before(std::move(before))
    , m_after(std::move(after))
    , m_kind(kind)
    , m_session(session)
{
}

bool EditCommand::mergeWith(const QUndoCommand* other)
{
    const auto& later = static_cast<const EditCommand&>(*other);
    if (later.m_session != m_session)
        return false;
    m_after = later.m_after;
    setObsolete(m_after.project == m_before.project);
    return true;
}

void EditCommand::redo()
{
    m_document.Restore(m_after);
}

void EditCommand::undo()
{
    m_document.Restore(m_before);
}

} // namespace titler
