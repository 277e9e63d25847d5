#include "edit/Document.h"

#include "project/Pages.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <algorithm>
#include <utility>

namespace titler {

Project FirstProject()
{
    Project project = NewProject();
    project.title.text = Text(kTextNewTitle);
    return project;
}

Document::Document()
{
    m_steps.setUndoLimit(1000);
    m_now.project = FirstProject();
    connect(&m_steps, &QUndoStack::cleanChanged, this, &Document::FileChanged);
    InEachLanguage(*this, [this] { NameAnew(m_steps); });
}

bool Document::IsModified() const
{
    return !m_steps.isClean();
}

bool Document::IsUntouched() const
{
    return m_fileName.isEmpty() && m_now.project == FirstProject();
}

void Document::Start(Project project, const QString& file)
{
    emit ProjectClosing();
    m_inRun = false;
    m_now = {std::move(project), {}};
    m_fileName = file;
    EndSession();
    m_steps.clear();
    emit ProjectOpened();
    emit ProjectChanged();
    emit SelectionChanged();
    emit FileChanged();
}

void Document::New()
{
    Start(FirstProject(), {});
}

void Document::Begin(Project project, const QString& file, bool isModified)
{
    Start(std::move(project), file);
    if (isModified)
        m_steps.resetClean();
}

bool Document::Open(const QString& file, ProjectError& error)
{
    std::optional<Project> project = LoadProject(file, error);
    if (!project)
        return false;
    Start(std::move(*project), file);
    return true;
}

QString Document::SaveAs(const QString& file)
{
    EndSession();
    QString fault = SaveProject(file, m_now.project);
    if (!fault.isEmpty())
        return fault;
    m_fileName = file;
    m_steps.setClean();
    emit FileChanged();
    return {};
}

void Document::Edit(EditKind kind, const StepName& name, const Change& change)
{
    Edit(kind, name, change, m_now.selection);
}

void Document::Edit(EditKind kind, const StepName& name, const Change& change,
                    const ColourSelection& selection)
{
    EndRun();
    ProjectState before = m_now;
    change(m_now.project);
    m_now.selection = selection;
    Push(std::move(before), kind, name);
}

void Document::Push(ProjectState before, EditKind kind, const StepName& name)
{
    if (m_now.project == before.project) {
        // Nothing to undo; but a page that changed places with its like is shown there now.
        if (m_now.project.pageIndex != before.project.pageIndex)
            emit ProjectChanged();
        return;
    }
    // The push tells everybody, through the command's first `redo`.
    m_steps.push(new EditCommand(*this, std::move(before), m_now, kind, m_session, name));
}

int Document::BeginRun(const StepName& name)
{
    if (m_inRun)
        return m_run;
    m_inRun = true;
    m_runName = name;
    m_beforeRun = m_now;
    return ++m_run;
}

void Document::UpdateRun(const Change& change, const ColourSelection& selection)
{
    if (!m_inRun)
        return;
    change(m_now.project);
    const bool isOther = std::exchange(m_now.selection, selection) != selection;
    emit ProjectChanged();
    if (isOther)
        emit SelectionChanged();
}

void Document::EndRun(EditKind kind)
{
    if (!std::exchange(m_inRun, false))
        return;
    if (kind == EditKind::Single)
        EndSession();
    Push(std::exchange(m_beforeRun, {}), kind, m_runName);
    emit ProjectChanged();
}

void Document::CancelRun()
{
    if (std::exchange(m_inRun, false))
        Restore(std::exchange(m_beforeRun, {}));
}

void Document::Select(const ColourSelection& selection)
{
    if (m_now.selection == selection)
        return;
    EndRun();
    m_now.selection = selection;
    EndSession();
    emit SelectionChanged();
}

void Document::ChoosePage(int index)
{
    EndRun();
    EndSession();
    const int before = m_now.project.pageIndex;
    titler::ChoosePage(m_now.project, index);
    if (m_now.project.pageIndex == before)
        return;
    m_now.selection = m_now.selection.AtBegin();
    emit ProjectChanged();
    emit SelectionChanged();
}

void Document::Undo()
{
    EndRun();
    EndSession();
    m_steps.undo();
}

void Document::Redo()
{
    EndRun();
    EndSession();
    m_steps.redo();
}

// The page stays where none changes, in an undo of the duration for example, and what is selected stays where
// no colour changes.
void Document::Restore(const ProjectState& state)
{
    Project next = state.project;
    if (HaveSamePages(m_now.project, next))
        titler::ChoosePage(next, m_now.project.pageIndex);
    if (!HasSameColours(m_now.project, next))
        m_now.selection = state.selection;
    m_now.project = std::move(next);
    emit ProjectChanged();
    emit SelectionChanged();
}

} // namespace titler
