#include "media/RulesPanel.h"

#include "media/RuleTrialBox.h"
#include "time/TransportBar.h"
#include "window/Commands.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/OwnDirection.h"
#include "window/Texts.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBlock>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace titler {
namespace {

constexpr UINT kClassNames = 7023; // of the library's classes, from kKvNamingClassUnknown on
constexpr unsigned kClasses = 3;
constexpr int kColumns = 3;

QString ClassName(unsigned ruleClass)
{
    return ruleClass < kClasses ? Text(kClassNames + ruleClass)
                                : Text(kTextRuleOtherClass, {QString::number(ruleClass)});
}

// Empty for a pattern that a rule may have.
QString FaultOf(const QString& pattern)
{
    const std::wstring text = pattern.toStdWString();
    std::wstring fault;
    if (!KvCheckRule(text.c_str(), fault))
        return QString::fromStdWString(fault).simplified();
    return text.size() < kKvNamingTextSize ? QString() : Text(kTextRuleTooLong);
}

QStringList LinesOf(const QPlainTextEdit& edit)
{
    return edit.toPlainText().split(u'\n');
}

QLabel* Note()
{
    auto* label = new QLabel;
    label->setWordWrap(true);
    label->setProperty("role", "hint");
    return label;
}

} // namespace

RulesPanel::RulesPanel(NamingRules& rules, QWidget* parent)
    : QWidget(parent)
    , m_rules(rules)
    , m_list(new QTreeWidget)
    , m_hint(Note())
    , m_fields(new QWidget)
    , m_class(new QComboBox)
    , m_main(new QLineEdit)
    , m_additions(new QPlainTextEdit)
    , m_fault(Note())
    , m_note(Note())
{
    BuildCommands();
    auto* parts = new QSplitter(this);
    parts->setChildrenCollapsible(false);
    parts->addWidget(BuildList());
    parts->addWidget(BuildFields());
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(parts);
    FocusFirst(*this, *m_list);
    Connect();
    InEachLanguage(*this, [this] {
        m_list->setHeaderLabels(
            {Text(kTextRuleColumns), Text(kTextRuleColumns + 1), Text(kTextRuleColumns + 2)});
        m_hint->setText(Text(kTextRuleNone));
        ShowRules();
    });
}

void RulesPanel::BuildCommands()
{
    m_add = AddCommand(kTextRuleAdd, L"titler_tool_rule_add",
                       {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N)}, &RulesPanel::AddRule);
    m_remove = AddCommand(kTextRuleRemove, L"titler_tool_rule_remove",
                          {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete)}, &RulesPanel::RemoveRule);
    m_commands << nullptr;
    m_up = AddCommand(kTextRuleUp, L"titler_tool_rule_up", {QKeySequence(Qt::ALT | Qt::Key_Up)},
                      &RulesPanel::MoveUp);
    m_down = AddCommand(kTextRuleDown, L"titler_tool_rule_down", {QKeySequence(Qt::ALT | Qt::Key_Down)},
                        &RulesPanel::MoveDown);
    m_commands << nullptr;
    m_reset = AddCommand(kTextRulesReset, nullptr, {}, &RulesPanel::Reset);
}

QAction* RulesPanel::AddCommand(UINT nameId, const wchar_t* icon, const QList<QKeySequence>& keys,
                                void (RulesPanel::*run)())
{
    auto* command = new QAction(this);
    NameCommand(*command, nameId);
    command->setShortcuts(keys);
    if (icon != nullptr)
        command->setIcon(SkinIcon(icon));
    connect(command, &QAction::triggered, this, run);
    m_commands << command;
    return command;
}

QWidget* RulesPanel::BuildList()
{
    m_list->setObjectName(QStringLiteral("rules"));
    NameField(*m_list, kTextRuleList);
    m_list->setColumnCount(kColumns);
    m_list->setItemDelegate(new OwnDirection(m_list));
    m_list->setMinimumWidth(60);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->header()->setStretchLastSection(true);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->resizeSection(1, 220);
    auto* remove = new QAction(m_list); // in the list alone: in a field the key deletes text
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    m_list->addAction(remove);
    connect(remove, &QAction::triggered, this, [this] { m_remove->trigger(); });

    auto* reset = new QPushButton;
    reset->setAutoDefault(false);
    NameButton(*reset, kTextRulesReset);
    connect(reset, &QPushButton::clicked, m_reset, &QAction::trigger);
    auto* top = new QHBoxLayout;
    top->addWidget(Heading(kTextRules));
    top->addStretch();
    top->addWidget(reset);
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_list);
    column->addWidget(m_hint);
    return side;
}

QWidget* RulesPanel::BuildFields()
{
    NameField(*m_class, kTextRuleClass);
    NameField(*m_main, kTextRuleMain);
    NameField(*m_additions, kTextRuleAdditions);
    m_main->setObjectName(QStringLiteral("ruleMain"));
    m_additions->setObjectName(QStringLiteral("ruleAdditions"));
    m_additions->setUndoRedoEnabled(false); // undo is the rules'
    m_additions->setTabChangesFocus(true);
    m_additions->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_additions->setLayoutDirection(Qt::LeftToRight); // as patterns are read
    for (QWidget* field :
         {static_cast<QWidget*>(m_class), static_cast<QWidget*>(m_main), static_cast<QWidget*>(m_additions)})
        JoinProject(*field);
    m_fault->setProperty("role", "fault");
    m_fault->setObjectName(QStringLiteral("ruleFault"));

    auto* rows = new QGridLayout(m_fields);
    rows->setContentsMargins({});
    rows->addWidget(RowLabel(kTextRuleClass, *m_class), 0, 0);
    rows->addWidget(m_class, 0, 1);
    rows->addWidget(RowLabel(kTextRuleMain, *m_main), 1, 0);
    rows->addWidget(m_main, 1, 1);
    rows->addWidget(FieldLabel(kTextRuleAdditions, *m_additions), 2, 0, 1, 2);
    rows->addWidget(m_additions, 3, 0, 1, 2);
    rows->addWidget(m_fault, 4, 0, 1, 2);
    rows->addWidget(m_note, 5, 0, 1, 2);
    rows->setColumnStretch(1, 1);

    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->addWidget(m_fields, 1);
    column->addWidget(Heading(kTextRuleTry));
    column->addWidget(new RuleTrialBox(m_rules));
    auto* area = new QScrollArea; // in a small window
    area->setWidget(side);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setProperty("role", "panel");
    side->setProperty("role", "panel");
    return area;
}

void RulesPanel::Connect()
{
    connect(&m_rules, &NamingRules::Changed, this, &RulesPanel::ShowRules);
    connect(&m_rules, &NamingRules::RuleSelected, this, &RulesPanel::ShowRule);
    connect(m_list, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* item) { m_rules.Select(m_list->indexOfTopLevelItem(item)); });
    connect(m_class, &QComboBox::activated, this, &RulesPanel::OnClass);
    connect(m_main, &QLineEdit::textEdited, this, &RulesPanel::OnMain);
    connect(m_main, &QLineEdit::editingFinished, this, [this] { m_rules.EndSession(); });
    connect(m_additions, &QPlainTextEdit::textChanged, this, &RulesPanel::OnAdditions);
}

void RulesPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    ShowCommands();
}

void RulesPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_rules.EndSession();
    ShowCommands();
}

const NamingRule* RulesPanel::Rule() const
{
    return m_rules.Selected() < 0 ? nullptr : &m_rules.All()[m_rules.Selected()];
}

// Rows stay where they are: a step changes few of them.
void RulesPanel::ShowRules()
{
    const QVector<NamingRule>& rules = m_rules.All();
    const QSignalBlocker blocker(m_list);
    while (m_list->topLevelItemCount() > rules.size())
        delete m_list->takeTopLevelItem(m_list->topLevelItemCount() - 1);
    while (m_list->topLevelItemCount() < rules.size())
        m_list->addTopLevelItem(new QTreeWidgetItem);
    for (int i = 0; i < rules.size(); ++i) {
        QTreeWidgetItem& row = *m_list->topLevelItem(i);
        const QString additions = rules[i].additions.join(QStringLiteral("   "));
        const QString texts[] = {ClassName(rules[i].ruleClass), rules[i].main, additions};
        for (int column = 0; column < kColumns; ++column)
            if (row.text(column) != texts[column])
                row.setText(column, texts[column]);
        row.setToolTip(2, PlainTip(rules[i].additions.join(u'\n')));
    }
    m_hint->setVisible(rules.isEmpty());
    ShowRule();
}

void RulesPanel::ShowRule()
{
    const NamingRule* rule = Rule();
    const QSignalBlocker list(m_list);
    m_list->setCurrentItem(m_list->topLevelItem(m_rules.Selected()));
    m_fields->setEnabled(rule != nullptr);
    const NamingRule shown = rule != nullptr ? *rule : NamingRule{kKvNamingClassUnknown, {}, {}, {}};
    if (m_shown != m_rules.Selected()) {
        m_mainFault.clear();
        m_additionsFault.clear();
    }
    m_shown = m_rules.Selected();
    ShowClass(shown.ruleClass);
    if (m_mainFault.isEmpty())
        ShowMain(shown.main);
    if (m_additionsFault.isEmpty())
        ShowAdditions(shown.additions);
    m_note->setText(shown.source != nullptr ? Text(kTextRuleNotShown) : Text(kTextRuleLabels));
    ShowFaults();
    ShowCommands();
}

// Written anew the field has nothing of its own to undo: typing becomes steps of the rules.
void RulesPanel::ShowMain(const QString& main)
{
    const int cursor = m_main->cursorPosition();
    m_main->setText(main);
    m_main->setCursorPosition(cursor);
}

// Blank lines are the user's: they are none of the rule's patterns.
void RulesPanel::ShowAdditions(const QStringList& additions)
{
    const QStringList lines = LinesOf(*m_additions);
    QStringList patterns = lines;
    patterns.removeAll(QString());
    if (lines == additions || patterns == additions)
        return;
    const QSignalBlocker blocker(m_additions);
    m_additions->setPlainText(additions.join(u'\n'));
}

void RulesPanel::ShowClass(unsigned ruleClass)
{
    m_class->clear();
    for (unsigned known = 0; known < kClasses; ++known)
        m_class->addItem(ClassName(known), known);
    if (ruleClass >= kClasses)
        m_class->addItem(ClassName(ruleClass), ruleClass);
    m_class->setCurrentIndex(m_class->findData(ruleClass));
}

void RulesPanel::ShowCommands()
{
    const bool isShown = isVisible();
    const int selected = m_rules.Selected();
    m_add->setEnabled(isShown);
    m_remove->setEnabled(isShown && selected >= 0);
    m_up->setEnabled(isShown && selected > 0);
    m_down->setEnabled(isShown && selected >= 0 && selected + 1 < m_rules.All().size());
    m_reset->setEnabled(isShown);
    emit UndoChanged();
}

void RulesPanel::ShowFaults()
{
    m_fault->setText(m_mainFault.isEmpty() ? m_additionsFault : m_mainFault);
    m_fault->setVisible(HasRefused());
    m_main->setAccessibleDescription(m_mainFault);
    m_additions->setAccessibleDescription(m_additionsFault);
    emit UndoChanged();
}

void RulesPanel::EditRule(RuleEdit kind, UINT stepId, const std::function<void(NamingRule&)>& change)
{
    if (Rule() != nullptr)
        m_rules.Edit(kind, stepId, [&](RuleList& list) { change(list.rules[list.selected]); });
}

void RulesPanel::OnClass()
{
    const unsigned ruleClass = m_class->currentData().toUInt();
    EditRule(RuleEdit::Single, kStepRuleClass, [&](NamingRule& rule) { rule.ruleClass = ruleClass; });
}

// What is wrong stays in its field with the reason below it; the rule keeps its last sound pattern.
void RulesPanel::OnMain()
{
    const QString main = m_main->text();
    m_mainFault = FaultOf(main);
    ShowFaults();
    if (m_mainFault.isEmpty())
        EditRule(RuleEdit::Main, kStepRuleMain, [&](NamingRule& rule) { rule.main = main; });
}

void RulesPanel::OnAdditions()
{
    QStringList additions;
    m_additionsFault.clear();
    const QStringList lines = LinesOf(*m_additions);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty())
            continue;
        additions << lines[i];
        if (const QString fault = FaultOf(lines[i]); m_additionsFault.isEmpty() && !fault.isEmpty())
            m_additionsFault = Text(kTextRuleLine, {QString::number(i + 1), fault});
    }
    ShowFaults();
    if (m_additionsFault.isEmpty())
        EditRule(RuleEdit::Additions, kStepRuleAdditions,
                 [&](NamingRule& rule) { rule.additions = additions; });
}

void RulesPanel::AddRule()
{
    m_rules.EndSession();
    m_rules.Edit(RuleEdit::Single, kStepRuleAdd, [](RuleList& list) {
        const NamingRule rule{kKvNamingClassVideoAudio,
                              QStringLiteral("<File><Ext>"),
                              {QStringLiteral("<File>_<Number><Ext>")},
                              {}};
        list.rules.insert(++list.selected, rule);
    });
    m_main->setFocus();
    m_main->selectAll();
}

void RulesPanel::RemoveRule()
{
    m_rules.Edit(RuleEdit::Single, kStepRuleRemove,
                 [](RuleList& list) { list.rules.removeAt(list.selected); });
}

void RulesPanel::MoveRule(int by)
{
    m_rules.Edit(RuleEdit::Single, kStepRuleMove, [by](RuleList& list) {
        list.rules.move(list.selected, list.selected + by);
        list.selected += by;
    });
}

void RulesPanel::Reset()
{
    m_rules.Reset(kStepRulesReset);
}

void RulesPanel::Undo()
{
    if (!HasRefused()) {
        m_rules.EndSession();
        m_rules.Steps().undo();
        return;
    }
    m_mainFault.clear();
    m_additionsFault.clear();
    ShowRule();
}

} // namespace titler
