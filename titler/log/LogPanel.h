// The log: what the program does, and every warning.
#pragma once

#include "KvTypes.h"

#include <QKeySequence>
#include <QList>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class CKvAppLogListCtrl;
class KvQtMessageLog;
class QAction;
class QLineEdit;

namespace titler {

/// As the list colours them.
enum class LogType : int
{
    Message = 0,
    Important = 1,
    Warning = 2,
    Error = 3,
};

class LogPanel : public QWidget
{
    Q_OBJECT

public:
    explicit LogPanel(QWidget* parent = nullptr);
    ~LogPanel() override;

    void Add(LogType type, const QString& text);
    CKvAppLogListCtrl& List() { return *m_list; }

    /// From now on the toolkit's own warnings go to the panel, too, from whatever thread they come.
    void TakeToolkitWarnings();

    /// What can be done with the log; null is a separator. They work while the panel is shown.
    const QList<QAction*>& Commands() const { return m_commands; }

signals:
    /// Something was done or went wrong; errors want a message box.
    void Reported(titler::LogType type, const QString& text);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QAction* AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key, std::function<void()> run);
    void BuildCommands();
    QWidget* BuildFilters();
    void EnableCommands(bool enable);
    void Save();
    void Clear();
    void Filter();
    void ShowCounts();

    CKvAppLogListCtrl* m_list;
    QList<QAction*> m_commands;
    QList<QAction*> m_types; ///< by LogType: whether its messages are shown
    QAction* m_follow = nullptr;
    QWidget* m_none = nullptr; ///< stands in an empty log
    QLineEdit* m_filter;
    QTimer m_counts;
    std::unique_ptr<KvQtMessageLog> m_toolkit; ///< null until it is wanted
};

} // namespace titler
