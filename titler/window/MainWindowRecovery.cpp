// What a crash would lose, and what one has left.
#include "recovery/Autosave.h"
#include "recovery/RecoveryDialog.h"
#include "subtitles/SubtitlePanel.h"
#include "window/MainWindow.h"
#include "window/Texts.h"

namespace titler {

void MainWindow::KeepWork(const QString& folder)
{
    if (folder.isEmpty())
        return;
    m_recoveryFolder = folder;
    m_autosave = std::make_unique<Autosave>(m_document, *m_subtitles, folder);
    connect(m_autosave.get(), &Autosave::Failed, this,
            [this](const QString& fault) { Say(fault, LogType::Warning); });
}

bool MainWindow::OfferWork()
{
    if (m_autosave == nullptr)
        return false;
    std::vector<std::unique_ptr<RecoveryFile>> left = RecoveryFile::FindLeft(m_recoveryFolder);
    if (left.empty())
        return false;
    RecoveryDialog dialog(this, std::move(left));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    std::unique_ptr<RecoveryFile> chosen = dialog.TakeChosen();
    const UnsavedWork work = chosen->Work();
    m_document.Begin(work.project, work.projectFile, work.isProjectModified);
    m_transport.Seek(MiddleFrame(work.project));
    if (work.subtitles)
        m_subtitles->Restore(*work.subtitles);
    m_autosave->Adopt(std::move(chosen));
    Say(Text(kTextRestored, {NameOfWork(work), TimeOfWork(work)}));
    return true;
}

} // namespace titler
