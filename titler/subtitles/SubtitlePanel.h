// The workspace of subtitles: the list, what is wrong with it, find and replace, and the canvas beside it.
#pragma once

#include "log/LogPanel.h"
#include "subtitles/SubtitleStyle.h"

#include <QList>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class CKvSubTitleTxtListEditor;
class QAction;
class QLabel;
class QMenu;
class QUndoStack;

namespace titler {

class CanvasView;
class Document;
class SubtitleFindBar;
struct SubtitleFile;
struct SubtitleRow;
class Transport;

class SubtitlePanel : public QWidget
{
    Q_OBJECT

public:
    /// @param document, transport must outlive the panel.
    SubtitlePanel(Document& document, Transport& transport);
    ~SubtitlePanel() override;

    /// Import, export and what is done to rows; null is a separator. They work while the panel is shown.
    const QList<QAction*>& Commands() const { return m_commands; }
    QUndoStack& Steps() const;
    CKvSubTitleTxtListEditor& List() { return *m_list; }

    /// Replaces all rows by those of a file. @return false when it cannot be read; `Reported` has said why.
    bool Import(const QString& file);
    /// Writes all rows; the format goes by the file's ending. Asks before something is lost.
    /// @return false when nothing was written.
    bool Export(const QString& file);
    /// Empty before the first import and export.
    const QString& FileName() const { return m_file; }
    bool IsModified() const;
    /// Asks when there are unsaved changes. @return false when the user wants to stay.
    bool MayLeave();

signals:
    /// What stands over the canvas; an empty text is nothing.
    void SubtitleShown(const titler::Subtitle& subtitle);
    /// Something was done or went wrong; errors want a message box.
    void Reported(titler::LogType type, const QString& text);
    void StepsChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildCommands();
    QAction* AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key, std::function<void()> run);
    QWidget* BuildRows();
    void Connect();

    void ChooseImport();
    bool ChooseExport();
    /// Exports to where the rows came from, or asks for a file. @return false when nothing was written.
    bool Save();
    void TakeCues(const SubtitleFile& file);
    std::vector<SubtitleRow> Rows() const;
    void AddRow();
    void RemoveRows();
    void SplitRow();
    void MergeRows();
    void SetTimeHere(bool in);
    void ShiftAll();
    void UseTemplate(const QString& name);
    /// One step of undo.
    void Edit(UINT stepId, const std::function<void()>& change);

    void OnRowsChanged();
    void OnFormat();
    void ShowCommands();
    void ShowPlaying();
    void Check();
    void ShowFaults();
    int Current() const;
    std::vector<int> SelectedRows() const;
    QString RowText(int row) const;

    Document& m_document;
    Transport& m_transport;
    CKvSubTitleTxtListEditor* m_list;
    SubtitleFindBar* m_find;
    CanvasView* m_canvas;
    QLabel* m_summary;
    QLabel* m_faultText;
    QList<QAction*> m_commands;
    QList<QAction*> m_onRows; ///< those that need a selected row
    QString m_file;
    EKvFrameRate m_rate;
    std::vector<unsigned> m_faults; ///< by row, as `SubtitleFault`
    QTimer m_check;
    DWORD m_plain = 0; ///< the background of a row that nothing is wrong with
};

} // namespace titler
