// Keeps what is unsaved, in the background, as long as something is.
#pragma once

#include "recovery/RecoveryFile.h"

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <memory>

namespace titler {

class Document;
class SubtitlePanel;

/// How long autosave waits, in milliseconds: after the first change, since the one that follows is seldom
/// far, and between two files. Both and the time to write stay below ten seconds.
struct AutosavePace
{
    int first = 500;
    int next = 8000;
};

class Autosave : public QObject
{
    Q_OBJECT

public:
    /// @param document, subtitles must outlive it.
    Autosave(Document& document, SubtitlePanel& subtitles, const QString& folder, AutosavePace pace = {});
    /// The work was saved or given up: nothing is left behind.
    ~Autosave() override;

    /// Goes on in a file whose work has just been restored. What was kept before is the user's no more.
    void Adopt(std::unique_ptr<RecoveryFile> file);

signals:
    /// A sentence for the user, once until it works again; what was kept before is still there.
    void Failed(const QString& fault);
    /// What is unsaved is in the file.
    void Kept();

private:
    bool IsUnsaved() const;
    void OnChanged();
    void OnTime();
    void Write();
    void OnWritten(const KeepResult& result);
    void Remove();
    void WaitFor(int milliseconds);

    Document& m_document;
    SubtitlePanel& m_subtitles;
    AutosavePace m_pace;
    std::unique_ptr<RecoveryFile> m_file; ///< the thread's, while it works
    QTimer m_timer;
    QElapsedTimer m_sinceWrite;
    QThreadPool m_writer;
    bool m_isKept = false;    ///< or about to be
    bool m_hasFailed = false; ///< the last time
};

} // namespace titler
