// The window's way to export an animation: which frames, where to, and how far it is.
#pragma once

#include "export/FrameSequence.h"

#include <QDialog>
#include <QTimer>

#include <memory>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace titler {

/// Asks for folder and frames and exports them, with progress and Cancel; the window stays responsive. Closes
/// when all frames are written, else it stays open and says why.
class ExportDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param projectFile names the pictures; may be empty.
    ExportDialog(Project project, const QString& projectFile, QWidget* parent = nullptr);
    ~ExportDialog() override;

    /// A line for the status bar once all is written.
    QString Report() const;

protected:
    /// Escape and Cancel end a running export first; finished pictures stay.
    void reject() override;

private:
    void BuildFields(const QString& projectFile);
    QDialogButtonBox* BuildButtons();
    void Connect();
    FrameTarget Target() const;
    void ShowFiles();
    void ChooseFolder();
    void KeepInOrder(QSpinBox& changed, QSpinBox& other, bool otherIsLater);
    void Start();
    bool MayReplace();
    void ShowRunning(bool running);
    void Look();
    void Finish();

    const Project m_project;
    const QString m_name;
    std::unique_ptr<FrameSequence> m_sequence; ///< while it runs
    QTimer m_pace;
    QLineEdit* m_folder;
    QPushButton* m_browse;
    QSpinBox* m_first;
    QSpinBox* m_last;
    QLabel* m_files;
    QProgressBar* m_progress;
    QLabel* m_state;
    QPushButton* m_start;
    QPushButton* m_cancel;
};

/// Shows the dialog. @return a line for the status bar; empty when not all frames were exported.
QString ExportFrames(QWidget& parent, const Project& project, const QString& projectFile);

} // namespace titler
