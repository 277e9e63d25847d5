#include "edit/ProjectCommands.h"

#include "edit/Document.h"

#include <utility>

namespace titler {

EditCommand::EditCommand(Document& document, ProjectState before, ProjectState after, EditKind kind,
                         int session, StepName name)
    : NamedStep(std::move(name))
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
    if (later.m_session != m_session || m_kind == EditKind::SubtitleLength)
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
