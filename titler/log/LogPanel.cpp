#include "log/LogPanel.h"

#include "KvAppLogListCtrl.h"
#include "KvDialog.h"
#include "KvQt.h"
#include "time/TransportBar.h"
#include "window/Commands.h"
#include "window/EmptyHint.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace titler {
namespace {

constexpr DWORD kListId = 1001;
constexpr unsigned short kMostLines = 10000;

constexpr int kCountAfter = 100;     // milliseconds
constexpr DWORD kOtherTypes = 0x3F0; // which titler does not use

struct TypeCommand
{
    LogType type;
    UINT nameId;
    const wchar_t* icon;
    Qt::Key key; ///< with Alt
};
constexpr TypeCommand kTypes[] = {
    {LogType::Message, kTextLogMessages, L"titler_tool_messages", Qt::Key_1},
    {LogType::Important, kTextLogImportant, L"Applogtype_1", Qt::Key_2},
    {LogType::Warning, kTextLogWarnings, L"Applogtype_2", Qt::Key_3},
    {LogType::Error, kTextLogErrors, L"Applogtype_3", Qt::Key_4},
};

} // namespace

LogPanel::LogPanel(QWidget* parent) : QWidget(parent), m_list(new CKvAppLogListCtrl), m_filter(new QLineEdit)
{
    m_list->Create(CRect(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kListId);
    m_list->Initialize(1);
    m_list->SetMaxLogLineCounts(kMostLines, 0);
    m_list->SetFollowMode(kKvAppLogFollowAtEnd);
    m_list->setObjectName(QStringLiteral("log"));
    m_none = new EmptyHint(*m_list, kTextLogNone);
    BuildCommands();
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildFilters());
    column->addWidget(m_list, 1);
    FocusFirst(*this, *m_list);
    m_counts.setSingleShot(true);
    m_counts.setInterval(kCountAfter);
    connect(&m_counts, &QTimer::timeout, this, &LogPanel::ShowCounts);
    // Also of what comes from other threads.
    connect(new KvReportListModel(*m_list, this), &KvReportListModel::rowsInserted, this, [this] {
        if (!m_counts.isActive())
            m_counts.start();
    });
    connect(m_list, &CKvAppLogListCtrl::LogCleared, this, &LogPanel::ShowCounts);
    InEachLanguage(*this, [this] {
        m_list->setAccessibleName(Text(kTextTabLog));
        m_filter->setPlaceholderText(m_filter->accessibleName());
        ShowCounts();
    });
    EnableCommands(false);
}

LogPanel::~LogPanel() = default;

QAction* LogPanel::AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                              std::function<void()> run)
{
    auto* command = new QAction(this);
    NameCommand(*command, nameId);
    command->setShortcut(key);
    command->setIcon(SkinIcon(icon));
    command->setIconVisibleInMenu(false);
    connect(command, &QAction::triggered, this, std::move(run));
    m_commands << command;
    return command;
}

void LogPanel::BuildCommands()
{
    AddCommand(kTextLogSave, L"titler_tool_save", Qt::CTRL | Qt::ALT | Qt::Key_S, [this] { Save(); });
    AddCommand(kTextLogCopy, L"titler_tool_copy", Qt::CTRL | Qt::ALT | Qt::Key_C,
               [this] { m_list->SaveAppLogToSysClipboard(0); });
    AddCommand(kTextLogFind, L"titler_tool_find", QKeySequence::Find, [this] { m_list->ShowFindBar(1); });
    m_commands << nullptr;
    for (const TypeCommand& type : kTypes) {
        m_types << AddCommand(type.nameId, type.icon, Qt::ALT | type.key, [this] { Filter(); });
        m_types.back()->setCheckable(true);
        m_types.back()->setChecked(true);
    }
    QAction* filter = AddCommand(kTextLogFilter, L"titler_tool_find", Qt::CTRL | Qt::ALT | Qt::Key_F,
                                 [this] { m_filter->setFocus(); });
    filter->setIcon({}); // its field stands above the messages
    m_commands << nullptr;
    m_follow = AddCommand(kTextLogFollow, L"titler_tool_follow", Qt::CTRL | Qt::ALT | Qt::Key_L, [this] {
        m_list->SetFollowMode(m_follow->isChecked() ? kKvAppLogFollowAlways : kKvAppLogFollowAtEnd);
    });
    m_follow->setCheckable(true);
    AddCommand(kTextLogClear, L"titler_tool_clear", Qt::CTRL | Qt::SHIFT | Qt::Key_Delete,
               [this] { Clear(); });
}

QWidget* LogPanel::BuildFilters()
{
    auto* filters = new QWidget;
    auto* row = new QHBoxLayout(filters);
    row->setContentsMargins({});
    for (QAction* type : m_types) {
        auto* button = new QToolButton;
        button->setDefaultAction(type);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setMinimumWidth(1); // cut in a small window
        row->addWidget(button);
    }
    NameField(*m_filter, kTextLogFilter);
    m_filter->setClearButtonEnabled(true);
    m_filter->setMinimumWidth(40);
    connect(m_filter, &QLineEdit::textChanged, this, &LogPanel::Filter);
    row->addWidget(m_filter, 1);
    return filters;
}

void LogPanel::EnableCommands(bool enable)
{
    for (QAction* command : m_commands)
        if (command != nullptr)
            command->setEnabled(enable);
}

void LogPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    ShowCounts();
    EnableCommands(true);
}

void LogPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    EnableCommands(false);
}

void LogPanel::Save()
{
    QFileDialog dialog(this, WithoutMnemonic(Text(kTextLogSave)), {}, Text(kTextLogFiles));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("log"));
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString name = QDir::toNativeSeparators(dialog.selectedFiles().value(0));
    if (m_list->SaveAppLogToFile(name.toStdWString().c_str(), 0) != 0)
        emit Reported(LogType::Message, Text(kTextSaved, {name}));
    else
        emit Reported(LogType::Error, Text(kTextLogNotSaved, {name}));
}

void LogPanel::Clear()
{
    if (KvMessageBox(this, Text(kTextLogClearAll).toStdWString(), MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    m_list->ClearLog();
    ShowCounts();
}

void LogPanel::Filter()
{
    DWORD shown = kOtherTypes;
    for (qsizetype type = 0; type < m_types.size(); ++type)
        shown |= m_types[type]->isChecked() ? DWORD{1} << type : 0;
    m_list->SetTypeFilter(shown);
    m_list->SetTextFilter(m_filter->text().toStdWString().c_str(), 0);
}

void LogPanel::ShowCounts()
{
    int total = 0;
    for (const TypeCommand& type : kTypes) {
        const int index = static_cast<int>(type.type);
        const int count = m_list->GetTypeCount(index);
        const QString text = Text(type.nameId, {QString::number(count)});
        m_types[index]->setText(text);
        m_types[index]->setIconText(WithoutMnemonic(text)); // what the button shows
        total += count;
    }
    m_none->setVisible(total == 0);
}

void LogPanel::Add(LogType type, const QString& text)
{
    m_list->AddAppLogText(static_cast<int>(type), 0, text.toStdWString());
}

void LogPanel::TakeToolkitWarnings()
{
    m_toolkit = std::make_unique<KvQtMessageLog>(*m_list);
    m_toolkit->SetLeast(QtWarningMsg);
}

} // namespace titler
