#include "recovery/RecoveryDialog.h"

#include "KvDialog.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace titler {
namespace {

QString NameOf(const QString& file)
{
    return file.isEmpty() ? Text(kTextUntitled) : QFileInfo(file).fileName();
}

QString FolderOf(const QString& file)
{
    return file.isEmpty() ? Text(kTextRecoveryNeverSaved) : QDir::toNativeSeparators(QFileInfo(file).path());
}

} // namespace

QString NameOfWork(const UnsavedWork& work)
{
    const QString project = NameOf(work.projectFile);
    if (!work.subtitles)
        return project;
    const QString& file = work.subtitles->file;
    return Text(kTextRecoveryWithSubtitles,
                {project, file.isEmpty() ? Text(kTextTabSubtitles) : NameOf(file)});
}

QString TimeOfWork(const UnsavedWork& work)
{
    return QLocale().toString(work.time.toLocalTime(), QLocale::ShortFormat);
}

RecoveryDialog::RecoveryDialog(QWidget* parent, std::vector<std::unique_ptr<RecoveryFile>> left)
    : QDialog(parent)
    , m_left(std::move(left))
    , m_list(new QListWidget)
{
    auto* question = new QLabel;
    InEachLanguage(*this, [this, question] {
        setWindowTitle(Text(kTextRecoveryTitle));
        question->setText(Text(kTextRecoveryQuestion));
    });
    question->setWordWrap(true);
    for (const std::unique_ptr<RecoveryFile>& file : m_left) {
        const UnsavedWork& work = file->Work();
        const QString folder = FolderOf(work.projectFile);
        auto* item =
            new QListWidgetItem(Text(kTextRecoveryRow, {NameOfWork(work), TimeOfWork(work), folder}), m_list);
        item->setToolTip(folder);
    }
    m_list->setCurrentRow(0);
    NameField(*m_list, kTextRecoveryList);
    auto* buttons = new QDialogButtonBox;
    const auto add = [&](UINT nameId, QDialogButtonBox::ButtonRole role) {
        QPushButton* button = buttons->addButton(QString(), role);
        NameButton(*button, nameId);
        button->setAutoDefault(false);
        return button;
    };
    QPushButton* restore = add(kTextRecoveryRestore, QDialogButtonBox::AcceptRole);
    restore->setDefault(true);
    connect(add(kTextRecoveryDiscard, QDialogButtonBox::DestructiveRole), &QPushButton::clicked, this,
            &RecoveryDialog::Discard);
    add(kTextRecoveryLater, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    auto* column = new QVBoxLayout(this);
    column->addWidget(question);
    column->addWidget(m_list, 1);
    column->addWidget(buttons);
    resize(520, 260);
    m_list->setFocus();
}

std::size_t RecoveryDialog::Current() const
{
    return static_cast<std::size_t>(std::max(m_list->currentRow(), 0));
}

void RecoveryDialog::Discard()
{
    const std::size_t chosen = Current();
    const QString name = NameOfWork(m_left[chosen]->Work());
    if (KvMessageBox(this, Text(kTextRecoveryDiscardSure, {name}).toStdWString(),
                     MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES)
        return;
    m_left[chosen]->Remove();
    m_left.erase(m_left.begin() + static_cast<std::ptrdiff_t>(chosen));
    delete m_list->takeItem(static_cast<int>(chosen));
    if (m_left.empty())
        reject();
}

std::unique_ptr<RecoveryFile> RecoveryDialog::TakeChosen()
{
    return std::move(m_left[Current()]);
}

} // namespace titler
