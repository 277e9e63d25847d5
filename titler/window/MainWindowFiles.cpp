// The project's file in the main window: begun, opened, saved, exported, and remembered among the recent
// ones.
#include "export/ExportDialog.h"
#include "export/FrameExport.h"
#include "export/FrameSequence.h"
#include "project/ProjectText.h"
#include "subtitles/SubtitlePanel.h"
#include "title/TitleWorkspace.h"
#include "window/Fields.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace titler {
namespace {

QString FileNameOf(const QString& path)
{
    return QFileInfo(path).fileName();
}

// A name to write to; the dialog itself adds the ending and asks before it lets a file be replaced.
QString AskForTarget(QWidget& parent, UINT titleId, UINT filterId, const QString& ending,
                     const QString& proposal)
{
    QFileDialog dialog(&parent, WithoutMnemonic(Text(titleId)), proposal, Text(filterId));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

// A project that was never saved and has nothing but the length of its subtitles is no work to lose.
bool MainWindow::HasLengthAlone()
{
    const QUndoStack& steps = m_document.Steps();
    bool isLength = m_document.FileName().isEmpty() && steps.cleanIndex() == 0;
    for (int i = 0; i < steps.index(); ++i)
        isLength = isLength && steps.command(i)->id() == static_cast<int>(EditKind::SubtitleLength);
    return isLength;
}

bool MainWindow::MayLeave()
{
    Settle();
    if (!m_document.IsModified() || HasLengthAlone())
        return true;
    const QString& file = m_document.FileName();
    const QString name = file.isEmpty() ? Text(kTextUntitled) : FileNameOf(file);
    switch (
        KvMessageBox(this, Text(kTextSaveChanges, {name}).toStdWString(), MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        return SaveProject();
    case IDNO:
        return true;
    default:
        return false;
    }
}

void MainWindow::New()
{
    if (!MayLeave())
        return;
    m_document.New();
    Say(Text(kTextNewProject));
}

bool MainWindow::OpenProject(const QString& file)
{
    ProjectError error;
    if (!m_document.Open(file, error)) {
        ShowError(ErrorText(file, error));
        KeepProject(file, QFileInfo::exists(file));
        return false;
    }
    m_transport.Seek(MiddleFrame(m_document.Current()));
    Say(Text(kTextOpened, {FileNameOf(file)}));
    KeepProject(file, true); // what goes wrong there is said last
    return true;
}

// A file that is broken stays in the list, so that it can be opened again when it is mended.
void MainWindow::KeepProject(const QString& file, bool isThere)
{
    if (m_settings == nullptr)
        return;
    const QString name = QFileInfo(file).absoluteFilePath();
    if (isThere)
        m_settings->AddProject(name);
    else
        m_settings->DropProject(name);
    ShowRecent();
    if (const QString fault = m_settings->Save(); !fault.isEmpty())
        Say(fault, LogType::Warning);
}

void MainWindow::ShowRecent()
{
    const QStringList projects = m_settings != nullptr ? m_settings->projects : QStringList();
    for (qsizetype i = 0; i < m_recent.size(); ++i) {
        QAction& entry = *m_recent[i];
        entry.setVisible(i < projects.size());
        const QString name = FileNameOf(projects.value(i)).replace(u'&', QLatin1String("&&"));
        entry.setText(Text(kTextRecent, {QString::number(i + 1), name}));
        entry.setToolTip(PlainTip(Text(kTextRecent + 1, {QDir::toNativeSeparators(projects.value(i))})));
        entry.setStatusTip(entry.toolTip());
    }
    m_noRecent->setVisible(projects.isEmpty());
}

void MainWindow::OpenRecent(int index)
{
    const QString file = m_settings != nullptr ? m_settings->projects.value(index) : QString();
    if (!file.isEmpty() && MayLeave())
        OpenProject(file);
}

void MainWindow::ChooseProject()
{
    if (!MayLeave())
        return;
    const QString file = QFileDialog::getOpenFileName(this, WithoutMnemonic(Text(kTextOpen)),
                                                      m_document.FileName(), Text(kTextProjectFiles));
    if (!file.isEmpty())
        OpenProject(file);
}

// Also while the log is shown in their application.
bool MainWindow::AreSubtitles() const
{
    return m_application == kSubtitles;
}

void MainWindow::Save()
{
    if (AreSubtitles())
        m_subtitles->Save();
    else
        SaveProject();
}

void MainWindow::SaveAs()
{
    if (AreSubtitles())
        m_subtitles->ChooseExport();
    else
        SaveProjectAs();
}

bool MainWindow::SaveProject()
{
    Settle();
    const QString file = m_document.FileName();
    return file.isEmpty() ? SaveProjectAs() : SaveTo(file);
}

bool MainWindow::SaveProjectAs()
{
    Settle();
    const QString file =
        AskForTarget(*this, kTextSaveAs, kTextProjectFiles, QStringLiteral("ktitle"), m_document.FileName());
    return !file.isEmpty() && SaveTo(file);
}

bool MainWindow::SaveTo(const QString& file)
{
    const QString fault = m_document.SaveAs(file);
    if (fault.isEmpty()) {
        Say(Text(kTextSaved, {FileNameOf(file)}));
        KeepProject(file, true);
        return true;
    }
    ShowError(Text(kTextCannotSave, {QDir::toNativeSeparators(file), fault}));
    return false;
}

void MainWindow::ChooseExport()
{
    Settle();
    m_transport.Pause();
    const QFileInfo project(m_document.FileName());
    const QString proposal =
        project.fileName().isEmpty()
            ? QString()
            : project.dir().filePath(FrameName(project.fileName(), m_document.Current()) + ".png");
    const QString file =
        AskForTarget(*this, kTextExportFrame, kTextPngFiles, QStringLiteral("png"), proposal);
    if (file.isEmpty())
        return;
    const QString fault = ExportFrame(m_document.Current(), file, m_transport.Frame());
    if (fault.isEmpty())
        Say(Text(kTextExported, {QDir::toNativeSeparators(file)}));
    else
        ShowError(Text(kTextCannotExport, {QDir::toNativeSeparators(file), fault}));
}

void MainWindow::ChooseAnimationExport()
{
    Settle();
    m_transport.Pause();
    const QString report = ExportFrames(*this, m_document.Current(), m_document.FileName());
    if (!report.isEmpty())
        Say(report);
}

} // namespace titler
