#include "edit/StepName.h"

#include "window/Texts.h"

#include <QUndoStack>

#include <utility>

namespace titler {
namespace {

// Read-only in the stack so that nobody changes what a step does; its text is no part of that.
QUndoCommand& StepAt(const QUndoStack& steps, int index)
{
    return const_cast<QUndoCommand&>(*steps.command(index));
}

} // namespace

StepName::StepName(UINT textId) : m_say([textId] { return titler::Text(textId); }) {}

NamedStep::NamedStep(StepName name) : QUndoCommand(name.Text()), m_name(std::move(name)) {}

void NameAnew(const QUndoStack& steps)
{
    for (int i = 0; i < steps.count(); ++i)
        if (auto* step = dynamic_cast<NamedStep*>(&StepAt(steps, i)))
            step->NameAnew();
}

void SetStepText(const QUndoStack& steps, int index, const QString& text)
{
    StepAt(steps, index).setText(text);
}

} // namespace titler
