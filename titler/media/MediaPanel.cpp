#include "media/MediaPanel.h"

#include "media/NamingRules.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/OwnDirection.h"
#include "window/Texts.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace titler {

MediaPanel::MediaPanel(NamingRules& rules, QWidget* parent)
    : QWidget(parent)
    , m_rules(rules)
    , m_filter(new QLineEdit)
    , m_pages(new QStackedWidget)
    , m_list(new QTreeView)
    , m_hint(new QLabel)
    , m_summary(new QLabel)
{
    BuildPanel();
    connect(&m_scanner, &MediaScanner::ClipsFound, this, &MediaPanel::OnClips);
    connect(&m_scanner, &MediaScanner::Finished, this, &MediaPanel::OnFinished);
    connect(&rules, &NamingRules::Changed, this, [this] { m_isStale = true; });
    FocusFirst(*this, *m_filter);
    connect(m_filter, &QLineEdit::textChanged, this, &MediaPanel::OnFilter);
    InEachLanguage(*this, [this] {
        m_filter->setPlaceholderText(Text(kTextMediaFilter));
        m_list->setAccessibleName(Text(kTextMediaList));
        ShowState();
    });
}

void MediaPanel::BuildPanel()
{
    m_filtered.setSourceModel(&m_model);
    m_filtered.setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filtered.setRecursiveFilteringEnabled(true);
    m_filtered.setAutoAcceptChildRows(true);

    auto* open = new QPushButton;
    open->setAutoDefault(false);
    NameButton(*open, kTextMediaOpen);
    connect(open, &QPushButton::clicked, this, &MediaPanel::FolderWanted);

    NameField(*m_filter, kTextMediaFilter);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setClearButtonEnabled(true);

    m_list->setModel(&m_filtered);
    m_list->setItemDelegate(new OwnDirection(m_list));
    m_list->setObjectName(QStringLiteral("media"));
    m_list->setHeaderHidden(true);
    m_list->setUniformRowHeights(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setMinimumSectionSize(40);
    m_list->header()->setSectionResizeMode(MediaModel::NameColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(MediaModel::CountColumn, QHeaderView::ResizeToContents);
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setProperty("role", "hint");
    m_hint->setMargin(16);
    m_summary->setProperty("role", "hint");
    m_summary->setWordWrap(true);
    m_pages->addWidget(m_hint);
    m_pages->addWidget(m_list);

    auto* top = new QHBoxLayout;
    top->addWidget(Heading(kTextMedia));
    top->addStretch();
    top->addWidget(open);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(m_filter);
    column->addWidget(m_pages);
    column->addWidget(m_summary);
}

void MediaPanel::OpenFolder(const QString& folder)
{
    m_folder = folder;
    m_total = 0;
    m_filter->clear();
    m_model.Start(folder);
    m_percent = 0;
    m_isUnreadable = false;
    ShowSummary();
    m_isStale = false;
    m_scanner.Scan(folder, m_rules.MakeCollection());
}

void MediaPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        ScanAgain();
}

void MediaPanel::ScanAgain()
{
    if (!m_folder.isEmpty())
        OpenFolder(QString(m_folder));
}

void MediaPanel::OnClips(const QVector<MediaClip>& clips, int done, int total)
{
    m_total = total;
    m_model.Append(clips);
    ShowList();
    m_percent = total == 0 ? 100 : static_cast<int>(qint64(done) * 100 / total);
    ShowSummary();
}

void MediaPanel::OnFinished(bool readable)
{
    m_summary->setToolTip(PlainTip(QDir::toNativeSeparators(m_folder)));
    m_percent.reset();
    m_isUnreadable = !readable;
    ShowState();
    emit Ready();
}

void MediaPanel::ShowState()
{
    ShowSummary();
    if (m_folder.isEmpty())
        ShowHint(Text(kTextMediaNoFolder));
    else if (m_isUnreadable)
        ShowHint(Text(kTextMediaUnreadable, {QDir::toNativeSeparators(m_folder)}));
    else if (!m_percent || m_model.ClipCount() > 0)
        ShowList();
}

void MediaPanel::ShowSummary()
{
    const QString name = QDir(m_folder).dirName();
    if (m_folder.isEmpty() || m_isUnreadable)
        m_summary->clear();
    else if (m_percent)
        m_summary->setText(Text(kTextMediaScanning, {name, QString::number(*m_percent)}));
    else
        m_summary->setText(Text(kTextMediaSummary, {name, QString::number(m_model.ClipsWithSiblings()),
                                                    QString::number(m_total)}));
}

void MediaPanel::OnFilter(const QString& text)
{
    m_filtered.setFilterFixedString(text);
    ShowList();
}

QString MediaPanel::Summary() const
{
    return m_summary->text().isEmpty() ? m_hint->text() : m_summary->text();
}

void MediaPanel::ShowHint(const QString& text)
{
    m_hint->setText(text);
    m_pages->setCurrentWidget(m_hint);
}

void MediaPanel::ShowList()
{
    if (m_filtered.rowCount() > 0)
        m_pages->setCurrentWidget(m_list);
    else if (m_model.ClipCount() > 0)
        ShowHint(Text(kTextMediaNoMatch, {m_filter->text()}));
    else if (!m_folder.isEmpty())
        ShowHint(Text(kTextMediaEmptyFolder, {QDir(m_folder).dirName()}));
}

} // namespace titler
