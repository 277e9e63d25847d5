// The window's commands, each in one place: menus and tool windows are made of them.
#pragma once

#include "KvTypes.h"

#include <QKeySequence>
#include <QList>

#include <memory>
#include <vector>

class QAction;
class QMenu;
class QWidget;

namespace titler {

/// Gives a command its text, tool tip and status tip; the tip's number is the text's plus 1.
void NameCommand(QAction& command, UINT nameId);
/// Takes a command's shortcuts away: another one answers them. `ShortcutsOf` remembers them.
void GiveShortcutAway(QAction& command);
/// The shortcuts under which a command is reached.
QList<QKeySequence> ShortcutsOf(const QAction& command);

/// Adds commands to a menu; null is a separator.
void AddToMenu(QMenu& menu, const QList<QAction*>& commands);

/// Commands under menus, in the order in which they were added. A command's number is its place, from 1.
class Commands
{
public:
    explicit Commands(QWidget& window);
    ~Commands();
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;

    /// A further menu; it only holds its commands, nobody opens it.
    QMenu& AddMenu(UINT nameId);
    /// Gives a menu's entries, also those of menus in it, their numbers and the window their shortcuts; call
    /// it once a menu is complete.
    void Number(const QMenu& menu);
    /// The application menu as it is now, each entry with its number.
    std::unique_ptr<QMenu> MakeApplicationMenu() const;
    /// Makes an entry of that menu look like its command: text, state and whether it is there.
    void Show(QAction& entry) const;
    /// The commands lose their shortcuts: whoever has the application menu answers them.
    void GiveShortcutsAway();
    /// Does what a command does, unless it is disabled. Numbers that are none do nothing.
    void Trigger(UINT number);
    const std::vector<std::unique_ptr<QMenu>>& Menus() const { return m_menus; }

private:
    void Copy(QMenu& to, const QMenu& menu) const;
    void Copy(QMenu& to, const QAction& command) const;

    QWidget& m_window;
    std::vector<std::unique_ptr<QMenu>> m_menus;
    QList<QAction*> m_commands;
};

} // namespace titler
