// The editor of the naming rules: the list and the selected rule, and a place to try them.
#pragma once

#include "media/NamingRules.h"

#include <QWidget>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeWidget;

namespace titler {

class RulesPanel : public QWidget
{
    Q_OBJECT

public:
    /// @param rules must outlive the panel.
    explicit RulesPanel(NamingRules& rules, QWidget* parent = nullptr);

    /// Add, remove, up, down, built-in rules; null is a separator. They work while the panel is shown.
    const QList<QAction*>& Commands() const { return m_commands; }
    /// Drops what is typed and was refused; else the last step.
    void Undo();
    bool CanUndo() const { return HasRefused() || m_rules.Steps().canUndo(); }

signals:
    void UndoChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildCommands();
    QAction* AddCommand(UINT nameId, const wchar_t* icon, const QList<QKeySequence>& keys,
                        void (RulesPanel::*run)());
    QWidget* BuildList();
    QWidget* BuildFields();
    void Connect();

    void ShowRules();
    void ShowRule();
    void ShowClass(unsigned ruleClass);
    void ShowCommands();
    void ShowMain(const QString& main);
    void ShowAdditions(const QStringList& additions);
    void ShowFaults();

    void OnClass();
    void OnMain();
    void OnAdditions();
    void AddRule();
    void RemoveRule();
    void MoveUp() { MoveRule(-1); }
    void MoveDown() { MoveRule(1); }
    void MoveRule(int by);
    void Reset();
    bool HasRefused() const { return !m_mainFault.isEmpty() || !m_additionsFault.isEmpty(); }
    void EditRule(RuleEdit kind, UINT stepId, const std::function<void(NamingRule&)>& change);
    const NamingRule* Rule() const;

    NamingRules& m_rules;
    QList<QAction*> m_commands;
    QAction* m_add;
    QAction* m_remove;
    QAction* m_up;
    QAction* m_down;
    QAction* m_reset;
    QTreeWidget* m_list;
    QLabel* m_hint;
    QWidget* m_fields;
    QComboBox* m_class;
    QLineEdit* m_main;
    QPlainTextEdit* m_additions;
    QLabel* m_fault;
    QLabel* m_note;
    int m_shown = -1;    ///< the rule in the fields
    QString m_mainFault; ///< why a field holds what the rule does not
    QString m_additionsFault;
};

} // namespace titler
