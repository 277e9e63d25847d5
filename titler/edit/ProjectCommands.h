// The steps of undo and redo.
#pragma once

#include "edit/ColourSelection.h"
#include "edit/StepName.h"

namespace titler {

class Document;

/// What a step did. Consecutive steps of one kind (other than Single and SubtitleLength) become one step
/// while the user stays with that field.
enum class EditKind : int
{
    Single = -1,
    SubtitleLength = 0, ///< the project became as long as its subtitles
    Typing = 1,
    StopPosition,
    ColourStep,
    FontSize,
    GradientAngle,
    OutlineWidth,
    ShadowX,
    ShadowY,
    ShadowBlur,
    Duration,
    FirstProperty, ///< the others follow it, see `EditKindOf`
};

/// A change of that property's value.
inline EditKind EditKindOf(Property property)
{
    return static_cast<EditKind>(static_cast<int>(EditKind::FirstProperty) + static_cast<int>(property));
}

/// A project, and the page and the colour that were selected then, so that undo shows what it changed.
struct ProjectState
{
    Project project;
    ColourSelection selection = {};
};

/// Changes the project from one state to another.
class EditCommand : public NamedStep
{
public:
    /// @param session steps merge only within one session, see `Document::EndSession`.
    EditCommand(Document& document, ProjectState before, ProjectState after, EditKind kind, int session,
                StepName name);

    int id() const override { return static_cast<int>(m_kind); }
    bool mergeWith(const QUndoCommand* other) override;
    void redo() override;
    void undo() override;

private:
    Document& m_document;
    ProjectState m_before;
    ProjectState m_after;
    EditKind m_kind;
    int m_session;
};

} // namespace titler
