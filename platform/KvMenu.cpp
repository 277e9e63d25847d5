#include "KvMenu.h"

#include "KvGuiRes.h"
#include "resources/Tables.h"

#include <QAction>
#include <QMenu>

#include <utility>

namespace {

std::unique_ptr<QMenu> MenuFromTable(UINT number)
{
    std::unique_ptr<QMenu> menu;
    for (const kv::MenuEntry& entry : kv::BuiltInMenus()) {
        if (entry.menu != number)
            continue;
        if (!menu)
            menu = std::make_unique<QMenu>();
        if (entry.command == kv::kMenuSeparator) {
            menu->addSeparator();
            continue;
        }
        QAction* action = menu->addAction(KvToQString(KvGuiRes::LoadMenuText(number, entry.command)));
        action->setData(entry.command);
    }
    return menu;
}

QAction* FindCommand(const QMenu* menu, UINT command)
{
    if (!menu || command == 0)
        return nullptr;
    for (QAction* action : menu->actions()) {
        if (KvGetMenuCommand(action) == command)
            return action;
        if (QAction* inner = FindCommand(action->menu(), command))
            return inner;
    }
    return nullptr;
}

} // namespace

UINT KvGetMenuCommand(const QAction* action)
{
    return action && !action->isSeparator() && !action->menu() ? action->data().toUInt() : 0;
}

CKvMenu::CKvMenu() = default;

CKvMenu::~CKvMenu()
{
    delete m_menu;
}

int CKvMenu::LoadMenu(UINT number)
{
    delete m_menu;
    m_menu = MenuFromTable(number).release();
    return m_menu ? 1 : 0;
}

int CKvMenu::LoadMenu(const wchar_t* name)
{
    delete m_menu;
    m_menu = KvGuiRes::CreateMenuByName(name).release();
    return m_menu ? 1 : 0;
}

HMENU CKvMenu::GetHandle() const
{
    return m_menu;
}

int CKvMenu::EnableMenuItem(UINT command, BOOL enable)
{
    QAction* action = FindCommand(m_menu, command);
    if (!action)
        return 0;
    action->setEnabled(enable != 0);
    return 1;
}

int CKvMenu::CheckMenuItem(UINT command, BOOL check)
{
    QAction* action = FindCommand(m_menu, command);
    if (!action)
        return 0;
    action->setCheckable(true);
    action->setChecked(check != 0);
    return 1;
}

UINT CKvMenu::TrackPopupMenu(UINT /*flags*/, CPoint screen, CWnd* owner)
{
    if (!m_menu)
        return 0;
    // A child of its owner while it is open, so that it stands on the owner's window and wears its style;
    // it dies with the owner, and the pointers then know.
    const QPointer<QMenu> menu(m_menu); // this object, too, may die meanwhile
    if (owner)
        menu->setParent(owner, menu->windowFlags());
    const UINT command = KvGetMenuCommand(menu->exec(screen));
    if (menu && owner)
        menu->setParent(nullptr, menu->windowFlags());
    return command;
}
