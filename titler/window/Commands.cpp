#include "window/Commands.h"

#include "window/Language.h"
#include "window/Texts.h"

#include <QAction>
#include <QMenu>

namespace titler {
namespace {

constexpr const char* kShortcuts = "shortcutsElsewhere";

} // namespace

void NameCommand(QAction& command, UINT nameId)
{
    InEachLanguage(command, [&command, nameId] {
        command.setText(Text(nameId));
        command.setToolTip(Text(nameId + 1));
        command.setStatusTip(command.toolTip());
    });
}

void GiveShortcutAway(QAction& command)
{
    command.setProperty(kShortcuts, QVariant::fromValue(ShortcutsOf(command)));
    command.setShortcuts(QList<QKeySequence>());
}

QList<QKeySequence> ShortcutsOf(const QAction& command)
{
    const QList<QKeySequence> own = command.shortcuts();
    return own.isEmpty() ? command.property(kShortcuts).value<QList<QKeySequence>>() : own;
}

void AddToMenu(QMenu& menu, const QList<QAction*>& commands)
{
    for (QAction* command : commands) {
        if (command != nullptr)
            menu.addAction(command);
        else
            menu.addSeparator();
    }
}

Commands::Commands(QWidget& window) : m_window(window) {}

Commands::~Commands() = default;

QMenu& Commands::AddMenu(UINT nameId)
{
    QMenu& menu = *m_menus.emplace_back(std::make_unique<QMenu>());
    InEachLanguage(menu, [&menu, nameId] { menu.setTitle(Text(nameId)); });
    return menu;
}

void Commands::Number(const QMenu& menu)
{
    for (QAction* command : menu.actions()) {
        if (command->isSeparator())
            continue;
        if (command->menu() != nullptr) {
            Number(*command->menu());
            continue;
        }
        m_commands << command;
        m_window.addAction(command);
    }
}

std::unique_ptr<QMenu> Commands::MakeApplicationMenu() const
{
    auto whole = std::make_unique<QMenu>();
    for (const std::unique_ptr<QMenu>& menu : m_menus)
        Copy(*whole, *menu);
    return whole;
}

void Commands::Copy(QMenu& to, const QMenu& menu) const
{
    QMenu& part = *to.addMenu(menu.title());
    part.setToolTipsVisible(true);
    for (const QAction* command : menu.actions()) {
        if (const QMenu* inner = command->menu())
            Copy(part, *inner);
        else
            Copy(part, *command);
    }
}

// The window's own command answers the shortcut: a copy only shows it.
void Commands::Copy(QMenu& to, const QAction& command) const
{
    if (command.isSeparator()) {
        to.addSeparator();
        return;
    }
    QAction* entry = to.addAction(command.text());
    entry->setData(static_cast<UINT>(m_commands.indexOf(&command) + 1));
    entry->setShortcuts(ShortcutsOf(command));
    entry->setCheckable(command.isCheckable());
    entry->setAutoRepeat(command.autoRepeat());
    Show(*entry);
}

void Commands::Show(QAction& entry) const
{
    const UINT number = entry.data().toUInt();
    if (number == 0 || number > static_cast<UINT>(m_commands.size()))
        return;
    const QAction& command = *m_commands[static_cast<qsizetype>(number) - 1];
    entry.setText(command.text());
    entry.setToolTip(command.toolTip());
    entry.setChecked(command.isChecked());
    entry.setEnabled(command.isEnabled());
    entry.setVisible(command.isVisible());
}

// Tool buttons have the commands, too: it is not enough that the window lets go of them.
void Commands::GiveShortcutsAway()
{
    for (QAction* command : m_commands)
        GiveShortcutAway(*command);
}

void Commands::Trigger(UINT number)
{
    if (number > 0 && number <= static_cast<UINT>(m_commands.size()))
        m_commands[static_cast<qsizetype>(number) - 1]->trigger();
}

} // namespace titler
