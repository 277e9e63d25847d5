// What to do with work that other runs of the program have left unsaved.
#pragma once

#include "recovery/RecoveryFile.h"

#include <QDialog>

class QListWidget;

namespace titler {

class RecoveryDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param left at least one. Accepted: the chosen one is to be restored; rejected: later. What is to be
    /// discarded is gone at once, after a question.
    RecoveryDialog(QWidget* parent, std::vector<std::unique_ptr<RecoveryFile>> left);

    /// The one to be restored; the others are for the next start.
    std::unique_ptr<RecoveryFile> TakeChosen();

private:
    void Discard();
    std::size_t Current() const;

    std::vector<std::unique_ptr<RecoveryFile>> m_left;
    QListWidget* m_list;
};

/// "fade.ktitle and fade.srt", or the one of them that is there.
QString NameOfWork(const UnsavedWork& work);
QString TimeOfWork(const UnsavedWork& work);

} // namespace titler
