#include "window/StartPage.h"

#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"
#include "window/VideoFormats.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace titler {
namespace {

constexpr int kFileRole = Qt::UserRole;
constexpr int kWidestPart = 420;

QPushButton* Button(UINT nameId)
{
    auto* button = new QPushButton;
    NameButton(*button, nameId);
    button->setAutoDefault(true); // Enter presses the one with the focus
    return button;
}

bool IsThere(const QListWidgetItem& item)
{
    return QFileInfo::exists(item.data(kFileRole).toString());
}

} // namespace

StartPage::StartPage(QWidget* parent)
    : QScrollArea(parent)
    , m_formats(new QComboBox)
    , m_projects(new QListWidget)
    , m_noProjects(new QLabel)
    , m_remove(Button(kTextStartRemove))
{
    auto* hint = new QLabel;
    hint->setProperty("role", "hint");
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    auto* parts = new QHBoxLayout;
    parts->setSpacing(48);
    parts->addStretch(1);
    parts->addWidget(BuildBegin(), 4);
    parts->addWidget(BuildRecent(), 4);
    parts->addStretch(1);
    auto* content = new QWidget;
    content->setProperty("role", "panel");
    auto* column = new QVBoxLayout(content);
    column->addStretch(1);
    column->addLayout(parts, 6);
    column->addWidget(hint);
    column->addStretch(1);
    for (QWidget* field : content->findChildren<QWidget*>())
        if (field->focusPolicy() != Qt::NoFocus)
            field->installEventFilter(this);
    setProperty("role", "panel");
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true); // what a small window cuts is scrolled
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    setFocusProxy(m_sample);
    InEachLanguage(*this, [this, hint] {
        hint->setText(Text(kTextStartHint));
        m_noProjects->setText(Text(kTextStartNoRecent));
        const int format = m_formats->currentIndex();
        m_formats->clear();
        for (const SKvVideoResolution& one : VideoFormats())
            m_formats->addItem(FormatText(one));
        m_formats->setCurrentIndex(std::max(format, 0));
        ShowProjects(Projects());
    });
}

QPushButton* StartPage::AddButton(QVBoxLayout& column, UINT nameId, void (StartPage::*wanted)())
{
    QPushButton* button = Button(nameId);
    connect(button, &QPushButton::clicked, this, wanted);
    column.addWidget(button);
    return button;
}

QWidget* StartPage::BuildBegin()
{
    NameField(*m_formats, kTextStartFormat);
    m_formats->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QPushButton* create = Button(kTextStartNew);
    connect(create, &QPushButton::clicked, this, [this] {
        emit NewWanted(VideoFormats()[static_cast<std::size_t>(std::max(m_formats->currentIndex(), 0))]);
    });
    auto* part = new QWidget;
    part->setMaximumWidth(kWidestPart);
    auto* column = new QVBoxLayout(part);
    column->addWidget(Heading(kTextStartBegin));
    m_sample = AddButton(*column, kTextStartSample, &StartPage::SampleWanted);
    AddButton(*column, kTextStartOpen, &StartPage::OpenWanted);
    column->addSpacing(16);
    column->addWidget(FieldLabel(kTextStartFormat, *m_formats));
    column->addWidget(m_formats);
    column->addWidget(create);
    column->addStretch();
    return part;
}

QWidget* StartPage::BuildRecent()
{
    NameField(*m_projects, kTextStartRecent);
    m_projects->setMinimumWidth(60);
    m_projects->setTextElideMode(Qt::ElideMiddle);
    m_projects->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_noProjects->setProperty("role", "hint");
    m_noProjects->setWordWrap(true);
    connect(m_projects, &QListWidget::itemActivated, this, &StartPage::OpenCurrent);
    connect(m_projects, &QListWidget::currentRowChanged, this, &StartPage::ShowButtons);
    connect(m_remove, &QPushButton::clicked, this, &StartPage::RemoveCurrent);
    auto* part = new QWidget;
    part->setMaximumWidth(kWidestPart);
    auto* column = new QVBoxLayout(part);
    QLabel* heading = FieldLabel(kTextStartRecent, *m_projects);
    heading->setProperty("role", "heading");
    column->addWidget(heading);
    column->addWidget(m_projects, 1);
    column->addWidget(m_noProjects);
    column->addWidget(m_remove, 0, Qt::AlignLeft);
    column->addStretch();
    return part;
}

void StartPage::ShowProjects(const QStringList& files)
{
    const int row = std::max(m_projects->currentRow(), 0);
    m_projects->clear();
    for (const QString& file : files) {
        const QFileInfo info(file);
        const QString folder = QDir::toNativeSeparators(info.path());
        const bool isThere = info.exists();
        const QString name = isThere ? info.fileName() : Text(kTextStartMissing, {info.fileName()});
        auto* item = new QListWidgetItem(Text(kTextStartRow, {name, folder}), m_projects);
        item->setData(kFileRole, file);
        item->setToolTip(PlainTip(QDir::toNativeSeparators(file)));
        if (!isThere)
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
    }
    m_projects->setCurrentRow(std::min(row, m_projects->count() - 1));
    const bool isEmpty = files.isEmpty();
    if (isEmpty && (m_projects->hasFocus() || m_remove->hasFocus()))
        m_sample->setFocus();
    m_projects->setVisible(!isEmpty);
    m_remove->setVisible(!isEmpty);
    m_noProjects->setVisible(isEmpty);
    ShowButtons();
}

QStringList StartPage::Projects() const
{
    QStringList files;
    for (int i = 0; i < m_projects->count(); ++i)
        files << m_projects->item(i)->data(kFileRole).toString();
    return files;
}

void StartPage::ShowButtons()
{
    m_remove->setEnabled(m_projects->currentItem() != nullptr);
}

void StartPage::OpenCurrent()
{
    const QListWidgetItem* item = m_projects->currentItem();
    if (item == nullptr)
        return;
    const QString file = item->data(kFileRole).toString(); // the list may go
    if (IsThere(*item))
        emit ProjectWanted(file);
    else
        ShowProjects(Projects());
}

void StartPage::RemoveCurrent()
{
    if (const QListWidgetItem* item = m_projects->currentItem())
        emit RemoveWanted(QString(item->data(kFileRole).toString()));
}

bool StartPage::IsTyped(const QKeyEvent& key) const
{
    const bool isPlain = (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    return isPlain && !key.text().isEmpty() && key.text().at(0).isPrint() && key.key() != Qt::Key_Space;
}

// Before lists and boxes look for what begins with the letter.
bool StartPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (IsTyped(key)) {
            emit Typed(key.text());
            return true;
        }
        if (watched == m_projects && key.key() == Qt::Key_Delete) {
            RemoveCurrent();
            return true;
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

void StartPage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit Left();
    else
        QScrollArea::keyPressEvent(event);
}

} // namespace titler
