// What steps of undo are called, in the language that is chosen.
#pragma once

#include "KvTypes.h"

#include <QString>
#include <QUndoCommand>

#include <concepts>
#include <functional>
#include <utility>

class QUndoStack;

namespace titler {

/// What a step did: it is said anew in each language.
class StepName
{
public:
    StepName() = default; ///< of no step
    StepName(UINT textId);
    /// What comes from somewhere else, and stays.
    template <std::convertible_to<QString> Fixed>
    StepName(const Fixed& text) : m_say([fixed = QString(text)] { return fixed; })
    {
    }
    template <std::invocable Say>
    StepName(Say say) : m_say(std::move(say))
    {
    }

    QString Text() const { return m_say ? m_say() : QString(); }

private:
    std::function<QString()> m_say;
};

/// A step that follows the language, see `NameAnew`.
class NamedStep : public QUndoCommand
{
public:
    explicit NamedStep(StepName name);

    void NameAnew() { setText(m_name.Text()); }

private:
    StepName m_name;
};

/// Says in the language that is chosen what each `NamedStep` of a stack did. Of texts the stack itself tells
/// nobody: whoever shows one reads it again.
void NameAnew(const QUndoStack& steps);

/// Gives a step of a stack another text; what it does is not touched.
void SetStepText(const QUndoStack& steps, int index, const QString& text);

} // namespace titler
