// The workspace of subtitles: the list, what is wrong with it, find and replace, and the canvas beside it.
#pragma once

#include "KvVideoFormat.h"
#include "edit/StepName.h"
#include "log/LogPanel.h"
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitleMatches.h"
#include "subtitles/SubtitleSource.h"
#include "subtitles/SubtitleState.h"
#include "subtitles/SubtitleStyle.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QList>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QAction;
class QLabel;
class QMenu;
class QUndoStack;

namespace titler {

class CanvasView;
class Document;
class SubtitleFindBar;
class SubtitleList;
class Transport;

class SubtitlePanel : public QWidget
{
    Q_OBJECT

public:
    /// @param document, transport must outlive the panel.
    SubtitlePanel(Document& document, Transport& transport, QWidget* parent = nullptr);
    ~SubtitlePanel() override;

    /// Import, export and what is done to rows; null is a separator. They work while the panel is shown.
    const QList<QAction*>& Commands() const { return m_commands; }
    QUndoStack& Steps() const;
    SubtitleList& List() { return *m_list; }

    /// Replaces all rows by those of a file. What it has beside texts and times is kept for export.
    /// @param encoding as converters call it; empty: what the file tells, else what the user says, while the
    ///        panel is shown. @return false when it cannot be read; `Reported` has said why.
    bool Import(const QString& file, const QString& encoding = {});
    /// Writes all rows; the format goes by the file's ending, and is kept in the rows' own file. Asks before
    /// something is lost. Rows of which something was lost stay modified, and a file of another format than
    /// their own, or without what was lost, is a copy: it does not become their file.
    /// @return false when nothing was written.
    bool Export(const QString& file);
    /// Where the rows came from, or were first exported to; empty before.
    CanvasView& Canvas() { return *m_canvas; }
    const QString& FileName() const { return m_file; }
    bool IsModified() const;
    /// Whether a text is open that differs from its row's; no step yet.
    bool HasTyped() const;
    /// The rows' frame rate: the project's when they were imported or begun, whatever the project's is now.
    EKvFrameRate Rate() const { return m_rate; }
    /// All of it, without the steps of undo, with what is typed in an open text. A row is read once, and
    /// again when it has changed.
    /// @return nothing when the time has passed with rows still to be read: the next call goes on.
    std::optional<SubtitleState> State(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;
    void Restore(const SubtitleState& state);
    /// Asks when there are unsaved changes. @return false when the user wants to stay.
    bool MayLeave();
    /// Exports to where the rows came from, or asks for a file. @return false when nothing was written.
    bool Save();
    /// Asks for a file to export to. @return false when nothing was written.
    bool ChooseExport();
    /// Takes what is typed in the open cell. @return false when it is refused; `Reported` has said why.
    bool Settle();

    /// Gives rows other texts, as one step of undo. @param texts rows, ascending, at least one.
    void SetTexts(const StepName& step, const std::vector<std::pair<int, QString>>& texts);
    /// Goes to a row and marks a part of its text.
    void ShowMatch(int row, const TextRange& range);

signals:
    /// What stands over the canvas; an empty text is nothing.
    void SubtitleShown(const titler::Subtitle& subtitle);
    /// Something was done or went wrong; errors want a message box.
    void Reported(titler::LogType type, const QString& text);
    void StepsChanged();
    /// What is typed in an open cell, or the cell is closed.
    void CellTyped();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildCommands();
    QAction* MakeCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                         std::function<void()> run);
    QAction* AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key, std::function<void()> run);
    QWidget* BuildRows();
    void Connect();

    void ChooseImport();
    void TakeCues(const SubtitleFile& file);
    void ReportImport(const QString& name, const SubtitleFile& read, const QString& readAs);
    std::vector<SubtitleRow> Rows() const;
    std::int64_t MillisecondsOf(DWORD frame, std::int64_t original) const;
    /// @param more what else is not as in the file before; may be empty.
    bool MayLose(const std::vector<SubtitleLoss>& losses, const QString& more);
    /// Shows the times of rows that come at that rate.
    void SetRate(EKvFrameRate rate);
    /// The project becomes as long as the subtitles, and shows where each begins.
    void LengthenProject();
    void UseProjectRate();
    void AddRow();
    void RemoveRows();
    void SplitRow();
    void MergeRows();
    void SetTimeHere(bool in);
    void ShiftRows();
    QMenu* BuildTemplates();
    void UseTemplate(const QString& name);
    /// The submenu has the templates that are in use beside the program's own.
    void NameTemplates();
    void ShowTemplates();
    /// The current row's is checked in it.
    void CheckTemplate();
    void AskForRow();
    void GoToTime();
    void GoToFault(int step);
    void Follow();
    /// A row as it was copied or picked up, with what the list does not show of it.
    struct CopiedRow
    {
        std::vector<CString> cells;
        SubtitleSource::Row source;
    };
    void NameStep();
    void NameStepsAnew();
    CopiedRow CopyOf(int row) const; ///< without the latter
    void OnClipboardChanged();
    void RememberCopied();
    void GiveCopiedSources();
    /// One step of undo.
    void Edit(const StepName& step, const std::function<void()>& change);

    void OnRowsChanged();
    void OnSelectionChanged();
    void OnProjectChanged();
    void ShowCommands();
    void FillMenu(QMenu& menu);
    void ShowPlaying();
    void Check();
    void ShowFaults();
    /// The row with the keyboard's focus; -1 for none.
    int Current() const;
    /// The rows' frame that is shown at the play head.
    DWORD PlayHead() const;
    std::vector<int> SelectedRows() const;
    QString RowText(int row) const;
    SubtitleState::Row ReadRow(int line) const;

    Document& m_document;
    Transport& m_transport;
    SubtitleList* m_list;
    SubtitleFindBar* m_find;
    CanvasView* m_canvas;
    QLabel* m_summary;
    QLabel* m_faultText;
    QList<QAction*> m_commands;
    QList<QAction*> m_onRows;    ///< those that need a selected row
    QList<QAction*> m_listMenu;  ///< those that the list's own menu has, too; null is a separator
    QList<QAction*> m_templates; ///< first the program's own, then those in use, then none at all
    QAction* m_follow = nullptr;
    QAction* m_useRate = nullptr;
    QString m_file;
    SubtitleSource m_source;
    EKvFrameRate m_rate;
    std::vector<CopiedRow> m_copied;
    SubtitleFormat m_copiedFormat = SubtitleFormat::SubRip;
    QHash<QString, StepName> m_stepNames; ///< of the steps that say to which rows, by what they say now
    bool m_isOpened = false;              ///< another project is, of which nothing was told yet
    std::vector<SubtitleFaults> m_faults; ///< by row
    QTimer m_check;
};

/// "subtitle 12", "subtitles 3–7", "4 subtitles from 3 to 9". @param rows ascending, at least one.
QString NamedRows(const std::vector<int>& rows);
/// The name of a step with these rows as %1. @param value stands for %2
StepName StepOfRows(UINT textId, const std::vector<int>& rows, const QString& value = {});
/// What a step did, and with which rows.
StepName StepOfRows(const StepName& step, const std::vector<int>& rows);

/// Why a file cannot be imported without asking: its encoding is uncertain, or is none.
/// @param encoding empty: what the file tells. @return empty when it can, and for a file that cannot be read.
QString SubtitleEncodingFault(const QString& file, const QString& encoding);

} // namespace titler
