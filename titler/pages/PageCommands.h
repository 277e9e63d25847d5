// What the user does to pages, as commands.
#pragma once

#include "KvTypes.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <functional>

class QAction;
class QWidget;

namespace titler {

class Document;

class PageCommands : public QObject
{
    Q_OBJECT

public:
    /// @param owner in whose window fields may hold what is typed; it counts before a command does.
    PageCommands(Document& document, QWidget& owner);

    /// For a menu; null stands for a separator.
    const QList<QAction*>& Commands() const { return m_commands; }
    /// Those that have a picture.
    QList<QAction*> Tools() const;
    /// Elsewhere their keys are other commands'.
    void SetActive(bool active);

signals:
    /// A page that has the text of a new one.
    void Added();

private:
    QAction* Add(UINT nameId, const QKeySequence& key, std::function<void()> run,
                 const wchar_t* icon = nullptr);
    void Show();
    void Show(QAction& command, bool isPossible, UINT nameId, const QString& reason) const;

    Document& m_document;
    QWidget& m_owner;
    QList<QAction*> m_commands;
    QAction* m_add;
    QAction* m_duplicate;
    QAction* m_delete;
    QAction* m_earlier;
    QAction* m_later;
    QAction* m_previous;
    QAction* m_next;
    bool m_isActive = true;
};

} // namespace titler
