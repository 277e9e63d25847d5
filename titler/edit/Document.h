// The open project: the one place that holds it. Every view reads it here and edits it through here.
#pragma once

#include "edit/ProjectCommands.h"

#include <QObject>
#include <QUndoStack>

#include <functional>

namespace titler {

/// A new project with the text that stands for one's own.
Project FirstProject();

class Document : public QObject
{
    Q_OBJECT

public:
    Document();

    const Project& Current() const { return m_now.project; }
    const ColourSelection& Selection() const { return m_now.selection; }
    /// Empty for a project that was never saved.
    const QString& FileName() const { return m_fileName; }
    QUndoStack& Steps() { return m_steps; }
    bool IsModified() const;
    /// An empty project as `New` makes it, in which nothing has been done.
    bool IsUntouched() const;

    void New();
    /// Another project, under that name, which may be empty. @param isModified it is not what its file holds.
    void Begin(Project project, const QString& file, bool isModified);
    /// @return false and the reason; the open project then stays.
    bool Open(const QString& file, ProjectError& error);
    /// @return an empty text, or the system's reason; the project then stays modified.
    QString SaveAs(const QString& file);

    /// One step of undo: `change` edits a copy of the project. Nothing happens when it changes nothing.
    using Change = std::function<void(Project&)>;
    void Edit(EditKind kind, const StepName& name, const Change& change);
    /// The same, with another colour selected afterwards.
    void Edit(EditKind kind, const StepName& name, const Change& change, const ColourSelection& selection);
    /// The next step starts anew instead of joining the last one.
    void EndSession() { ++m_session; }

    /// Edits that belong to one gesture: whatever comes between begin and end becomes one step.
    /// A run that is open already goes on.
    /// @return the run's number, for `IsInRun`.
    int BeginRun(const StepName& name);
    void UpdateRun(const Change& change) { UpdateRun(change, Selection()); }
    void UpdateRun(const Change& change, const ColourSelection& selection);
    /// @param kind as for `Edit`: runs of one kind become one step.
    void EndRun(EditKind kind = EditKind::Single);
    /// Ends the run with the project as it was before it.
    void CancelRun();
    bool IsInRun() const { return m_inRun; }
    QString RunName() const { return m_runName.Text(); }
    /// False as soon as somebody else has ended that run.
    bool IsInRun(int run) const { return m_inRun && m_run == run; }

    /// Selecting is no step of undo. A run that is open ends: it was about what was selected before.
    void Select(const ColourSelection& selection);
    /// Likewise of the page that every view is about; an index that is none changes nothing.
    void ChoosePage(int index);

    void Undo();
    void Redo();

signals:
    /// The open project goes, and with it what is typed for it and was not taken.
    void ProjectClosing();
    /// Another project: a new or an opened one. Before `ProjectChanged`.
    void ProjectOpened();
    void ProjectChanged();
    void SelectionChanged();
    /// A new, an opened or a saved project, or another modified state.
    void FileChanged();

private:
    friend class EditCommand;
    void Restore(const ProjectState& state);
    void Start(Project project, const QString& file);
    void Push(ProjectState before, EditKind kind, const StepName& name);

    ProjectState m_now;
    ProjectState m_beforeRun;
    QString m_fileName;
    QUndoStack m_steps;
    StepName m_runName;
    int m_session = 0;
    int m_run = 0;
    bool m_inRun = false;
};

} // namespace titler
