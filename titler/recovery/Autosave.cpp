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
    return m_document.IsModified() || m_document.IsInRun() || m_subtitles.IsModified();
}

void Autosave::OnChanged()
{
    if (!IsUnsaved())
        Remove();
    else if (m_isDue && !m_document.IsInRun())
        WaitFor(0);
    else if (!m_isDue && !m_timer.isActive())
        WaitFor(m_pace.first);
}

// From the last file it is never less than the pace.
void Autosave::WaitFor(int milliseconds)
{
    m_isDue = false;
    const qint64 rest = m_sinceWrite.isValid() ? m_pace.next - m_sinceWrite.elapsed() : 0;
    m_timer.start(static_cast<int>(std::max<qint64>(milliseconds, rest)));
}

void Autosave::OnTime()
{
    if (!IsUnsaved())
        return;
    m_isDue = m_document.IsInRun();
    if (!m_isDue)
        Write();
}

// Projects share their parts and subtitles their rows, so a copy costs little. Rows that are new are read a
// few at a time: the window goes on between.
void Autosave::Write()
{
    std::optional<SubtitleState> subtitles = m_subtitles.State(QDeadlineTimer(kReadingTime));
    if (!subtitles) {
        m_timer.start(0);
        return;
    }
    if (subtitles->rows.empty() && subtitles->file.isEmpty() && !subtitles->isModified)
        subtitles.reset();
    UnsavedWork work{m_document.FileName(), m_document.IsModified(), m_document.Current(),
                     std::move(subtitles), QDateTime::currentDateTime()};
    m_sinceWrite.start();
    m_isKept = true;
    m_writer.start([this, file = m_file.get(), work = std::move(work)] {
        const QString fault = file->Write(work);
        QMetaObject::invokeMethod(
            this, [this, fault] { OnWritten(fault); }, Qt::QueuedConnection);
    });
}

void Autosave::OnWritten(const QString& fault)
{
    if (fault.isEmpty()) {
        m_hasFailed = false;
        emit Kept();
        return;
    }
    if (IsUnsaved() && !m_timer.isActive())
        WaitFor(m_pace.next);
    if (!std::exchange(m_hasFailed, true))
        emit Failed(Text(kTextCannotKeepWork, {QDir::toNativeSeparators(m_file->Folder()), fault}));
}

void Autosave::Remove()
{
    m_timer.stop();
    m_isDue = false;
    if (std::exchange(m_isKept, false))
        m_writer.start([file = m_file.get()] { file->Remove(); });
}

} // namespace titler
