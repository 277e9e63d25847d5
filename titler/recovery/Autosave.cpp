#include "recovery/Autosave.h"

#include "edit/Document.h"
#include "subtitles/SubtitlePanel.h"
#include "window/Texts.h"

#include <QDeadlineTimer>
#include <QDir>

#include <algorithm>
#include <utility>

namespace titler {
namespace {

constexpr int kReadingTime = 3; // milliseconds of the window's thread at a time

} // namespace

Autosave::Autosave(Document& document, SubtitlePanel& subtitles, const QString& folder, AutosavePace pace)
    : m_document(document)
    , m_subtitles(subtitles)
    , m_pace(pace)
    , m_file(std::make_unique<RecoveryFile>(folder))
{
    m_writer.setMaxThreadCount(1); // one after the other
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Autosave::OnTime);
    connect(&document, &Document::ProjectChanged, this, &Autosave::OnChanged);
    connect(&document, &Document::FileChanged, this, &Autosave::OnChanged);
    connect(&subtitles, &SubtitlePanel::StepsChanged, this, &Autosave::OnChanged);
    connect(&subtitles, &SubtitlePanel::CellTyped, this, &Autosave::OnChanged);
}

Autosave::~Autosave()
{
    m_writer.clear();
    m_writer.waitForDone();
    m_file->Remove();
}

void Autosave::Adopt(std::unique_ptr<RecoveryFile> file)
{
    m_writer.clear();
    m_writer.waitForDone();
    m_file->Remove();
    m_file = std::move(file);
    m_isKept = true;
    OnChanged();
}

bool Autosave::IsUnsaved() const
{
    return m_document.IsModified() || m_document.IsInRun() || m_subtitles.IsModified() ||
           m_subtitles.HasTyped();
}

void Autosave::OnChanged()
{
    if (!IsUnsaved())
        Remove();
    else if (!m_timer.isActive())
        WaitFor(m_pace.first);
}

// From the last file it is never less than the pace.
void Autosave::WaitFor(int milliseconds)
{
    const qint64 rest = m_sinceWrite.isValid() ? m_pace.next - m_sinceWrite.elapsed() : 0;
    m_timer.start(static_cast<int>(std::max<qint64>(milliseconds, rest)));
}

void Autosave::OnTime()
{
    if (IsUnsaved())
        Write();
}

// Projects share their parts and subtitles their rows, so a copy costs little. Rows that are new are read a
// few at a time: the window goes on between. What a drag or an open dialog has done so far is in the copy,
// and nobody's drag ends by it.
void Autosave::Write()
{
    std::optional<SubtitleState> subtitles = m_subtitles.State(QDeadlineTimer(kReadingTime));
    if (!subtitles) {
        m_timer.start(0);
        return;
    }
    if (subtitles->rows.empty() && subtitles->file.isEmpty() && !subtitles->isModified)
        subtitles.reset();
    UnsavedWork work{m_document.FileName(), m_document.IsModified() || m_document.IsInRun(),
                     m_document.Current(), std::move(subtitles), QDateTime::currentDateTime()};
    m_sinceWrite.start();
    m_isKept = true;
    m_writer.start([this, file = m_file.get(), work = std::move(work)] {
        const KeepResult result = file->Write(work);
        QMetaObject::invokeMethod(
            this, [this, result] { OnWritten(result); }, Qt::QueuedConnection);
    });
}

void Autosave::OnWritten(const KeepResult& result)
{
    if (result.IsKept()) {
        m_hasFailed = false;
        emit Kept();
        return;
    }
    if (IsUnsaved() && !m_timer.isActive())
        WaitFor(m_pace.next);
    const QString fault = result.isLocked ? result.fault : Text(kTextRecoveryNoLock);
    if (!std::exchange(m_hasFailed, true))
        emit Failed(Text(kTextCannotKeepWork, {QDir::toNativeSeparators(m_file->Folder()), fault}));
}

void Autosave::Remove()
{
    m_timer.stop();
    if (std::exchange(m_isKept, false))
        m_writer.start([file = m_file.get()] { file->Remove(); });
}

} // namespace titler
