// Popup menus from the menu tables.
#pragma once

#include "KvPlatform.h"

#include <QPointer>

// How a popup is tracked; accepted for the field's calls. A popup always returns its command.
inline constexpr UINT TPM_RIGHTBUTTON = 0x0002;
inline constexpr UINT TPM_NONOTIFY = 0x0080;
inline constexpr UINT TPM_RETURNCMD = 0x0100;

/// A popup menu. Its items' commands are numbers in `QAction::data()`.
class KV_API CKvMenu
{
public:
    CKvMenu();
    ~CKvMenu();
    CKvMenu(const CKvMenu&) = delete;
    CKvMenu& operator=(const CKvMenu&) = delete;

    /// Loads the menu of a number from the tables, with the texts of the current overlay.
    /// @return 1; 0 when there is none (the menu is then empty).
    int LoadMenu(UINT number);
    /// Makes a menu that the host registered with `KvGuiRes::RegisterMenu`. Call it before each opening: the
    /// factory makes the menu as it is to be now. @return 1, or 0 for no such name.
    int LoadMenu(const wchar_t* name);
    /// The menu itself; null while nothing is loaded. It belongs to this object.
    HMENU GetHandle() const;
    /// Enables or disables an item. @return 1; 0 when there is no such command.
    int EnableMenuItem(UINT command, BOOL enable);
    int CheckMenuItem(UINT command, BOOL check);
    /// Opens the popup at a screen point and waits for the choice. The owner and this object may die
    /// meanwhile.
    /// @param flags TPM_…; @param owner gives the popup its window and style; may be null.
    /// @return the command, 0 when dismissed.
    UINT TrackPopupMenu(UINT flags, CPoint screen, CWnd* owner);

private:
    QPointer<QMenu> m_menu;
};

/// The command of a menu item; 0 for separators and sub-menus.
KV_API UINT KvGetMenuCommand(const QAction* action);
