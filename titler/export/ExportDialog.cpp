#include "export/ExportDialog.h"

#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>

namespace titler {
namespace {

constexpr int kPace = 50;        // milliseconds between two looks at the export
constexpr int kFolderWidth = 44; // characters

QString NumberText(int number)
{
    return QString::number(number);
}

// Beside the project, in a folder of its own.
QString FolderFor(const QString& projectFile, const Project& project)
{
    if (projectFile.isEmpty())
        return {};
    const QString folder =
        QFileInfo(projectFile).absoluteDir().filePath(FrameName(projectFile, project) + "_frames");
    return QDir::toNativeSeparators(folder);
}

} // namespace

ExportDialog::ExportDialog(Project project, const QString& projectFile, QWidget* parent)
    : QDialog(parent)
    , m_project(std::move(project))
    , m_name(FrameName(projectFile, m_project))
    , m_folder(new QLineEdit(FolderFor(projectFile, m_project)))
    , m_browse(new QPushButton)
    , m_first(new QSpinBox)
    , m_last(new QSpinBox)
    , m_files(new QLabel)
    , m_progress(new QProgressBar)
    , m_state(new QLabel)
    , m_start(new QPushButton)
    , m_cancel(new QPushButton)
{
    BuildFields(projectFile);
    Connect();
    InEachLanguage(*this, [this] {
        setWindowTitle(Text(kTextExportTitle));
        m_progress->setAccessibleName(Text(kTextExportProgress));
        ShowFiles();
    });
    ShowRunning(false);
}

ExportDialog::~ExportDialog() = default;

void ExportDialog::BuildFields(const QString& projectFile)
{
    NameField(*m_folder, kTextExportFolder);
    NameButton(*m_browse, kTextExportBrowse);
    NameField(*m_first, kTextExportFirst);
    NameField(*m_last, kTextExportLast);
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * kFolderWidth);
    m_files->setProperty("role", "hint");
    for (QSpinBox* number : {m_first, m_last})
        number->setRange(0, m_project.duration - 1);
    m_last->setValue(m_project.duration - 1);

    auto* grid = new QGridLayout(this);
    grid->addWidget(FieldLabel(kTextExportFolder, *m_folder), 0, 0);
    grid->addWidget(m_folder, 0, 1, 1, 3);
    grid->addWidget(m_browse, 0, 4);
    grid->addWidget(FieldLabel(kTextExportFirst, *m_first), 1, 0);
    grid->addWidget(m_first, 1, 1);
    grid->addWidget(FieldLabel(kTextExportLast, *m_last), 1, 2, Qt::AlignRight);
    grid->addWidget(m_last, 1, 3);
    grid->addWidget(m_files, 2, 1, 1, 4);
    grid->addWidget(m_progress, 3, 0, 1, 5);
    grid->addWidget(m_state, 4, 0, 1, 5);
    grid->addWidget(BuildButtons(), 5, 0, 1, 5);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    if (projectFile.isEmpty())
        m_folder->setFocus();
    else
        m_start->setFocus();
}

QDialogButtonBox* ExportDialog::BuildButtons()
{
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_start, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);
    NameButton(*m_start, kTextExportStart);
    NameButton(*m_cancel, kTextExportCancel);
    m_start->setObjectName(QStringLiteral("export"));
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_start->setDefault(true);
    m_browse->setAutoDefault(false);
    return buttons;
}

void ExportDialog::Connect()
{
    connect(m_folder, &QLineEdit::textChanged, this, &ExportDialog::ShowFiles);
    connect(m_browse, &QPushButton::clicked, this, &ExportDialog::ChooseFolder);
    connect(m_first, &QSpinBox::valueChanged, this, [this] { KeepInOrder(*m_first, *m_last, true); });
    connect(m_last, &QSpinBox::valueChanged, this, [this] { KeepInOrder(*m_last, *m_first, false); });
    connect(m_start, &QPushButton::clicked, this, &ExportDialog::Start);
    connect(m_cancel, &QPushButton::clicked, this, &ExportDialog::reject);
    connect(&m_pace, &QTimer::timeout, this, &ExportDialog::Look);
}

FrameTarget ExportDialog::Target() const
{
    return {
        QDir::fromNativeSeparators(m_folder->text().trimmed()), m_name, {m_first->value(), m_last->value()}};
}

// The other end goes along, so that there is always a frame to export.
void ExportDialog::KeepInOrder(QSpinBox& changed, QSpinBox& other, bool otherIsLater)
{
    if (otherIsLater ? other.value() < changed.value() : other.value() > changed.value())
        other.setValue(changed.value());
    ShowFiles();
}

void ExportDialog::ShowFiles()
{
    const FrameTarget target = Target();
    const auto name = [&](int frame) { return QFileInfo(FrameFile(target, m_project, frame)).fileName(); };
    const QString first = name(target.range.first);
    m_start->setEnabled(!target.folder.isEmpty() && !m_sequence);
    if (target.folder.isEmpty())
        m_files->setText(Text(kTextExportNoFolder));
    else if (target.range.Count() == 1)
        m_files->setText(Text(kTextExportFile, {first}));
    else
        m_files->setText(
            Text(kTextExportFiles, {NumberText(target.range.Count()), first, name(target.range.last)}));
}

void ExportDialog::ChooseFolder()
{
    const QString folder =
        QFileDialog::getExistingDirectory(this, Text(kTextExportBrowseTip), Target().folder);
    if (!folder.isEmpty())
        m_folder->setText(QDir::toNativeSeparators(folder));
}

bool ExportDialog::MayReplace()
{
    const int existing = ExistingFrames(Target(), m_project);
    return existing == 0 ||
           KvMessageBox(this, Text(kTextExportReplace, {NumberText(existing)}).toStdWString(),
                        MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void ExportDialog::Start()
{
    if (m_sequence || !MayReplace())
        return;
    m_sequence = std::make_unique<FrameSequence>(m_project, Target());
    m_progress->setRange(0, m_sequence->Total());
    ShowRunning(true);
    Look();
}

void ExportDialog::ShowRunning(bool running)
{
    for (QWidget* field : std::initializer_list<QWidget*>{m_folder, m_browse, m_first, m_last, m_start})
        field->setEnabled(!running);
    m_progress->setEnabled(running);
    if (running) {
        m_cancel->setFocus();
        m_pace.start(kPace);
    } else {
        m_pace.stop();
        m_progress->reset();
        m_cancel->setEnabled(true);
    }
}

void ExportDialog::Look()
{
    const bool ended = m_sequence->Wait(0);
    m_progress->setValue(m_sequence->Written());
    m_state->setText(
        Text(kTextFramesDone, {NumberText(m_sequence->Written()), NumberText(m_sequence->Total())}));
    if (ended)
        Finish();
}

void ExportDialog::Finish()
{
    const std::unique_ptr<FrameSequence> ended = std::move(m_sequence);
    const QString written = NumberText(ended->Written());
    const QString total = NumberText(ended->Total());
    const QString fault = ended->Fault();
    ShowRunning(false);
    m_start->setFocus();
    if (ended->Written() == ended->Total()) {
        accept();
    } else if (fault.isEmpty()) {
        m_state->setText(Text(kTextExportCancelled, {written, total}));
    } else {
        m_state->clear();
        KvMessageBox(this, Text(kTextExportStopped, {fault, written, total}).toStdWString(),
                     MB_OK | MB_ICONERROR);
    }
}

void ExportDialog::reject()
{
    if (!m_sequence) {
        QDialog::reject();
        return;
    }
    m_sequence->Cancel();
    m_cancel->setEnabled(false); // until the frames that are being drawn are finished
}

QString ExportDialog::Report() const
{
    const FrameTarget target = Target();
    return Text(kTextFramesExported,
                {NumberText(target.range.Count()), QDir::toNativeSeparators(target.folder)});
}

QString ExportFrames(QWidget& parent, const Project& project, const QString& projectFile)
{
    ExportDialog dialog(project, projectFile, &parent);
    return dialog.exec() == QDialog::Accepted ? dialog.Report() : QString();
}

} // namespace titler
