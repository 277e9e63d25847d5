/// @file
/// Popup menus from the menu tables.
#pragma once

#include "KvPlatform.h"

#include <QPointer>

///@{
/// How a popup is tracked; accepted for the field's calls. A popup always returns its command.
inline constexpr UINT TPM_RIGHTBUTTON = 0x0002;
inline constexpr UINT TPM_NONOTIFY = 0x0080;
inline constexpr UINT TPM_RETURNCMD = 0x0100;
///@}

/// A popup menu. Its items' commands are numbers in `QAction::data()`.
class KV_API CKvMenu
{
public:
    /// Nothing is loaded.
    CKvMenu();
    ~CKvMenu();
    CKvMenu(const CKvMenu&) = delete;
    CKvMenu& operator=(const CKvMenu&) = delete;

    /// Loads a menu from the tables, with the texts of the current overlay. @param number of the menu.
    /// @return 1; 0 when there is none (the menu is then empty).
    int LoadMenu(UINT number);
    /// Makes a menu that the host registered with `KvGuiRes::RegisterMenu`. Call it before each opening: the
    /// factory makes the menu as it is to be now. @param name the menu's. @return 1, or 0 for no such name.
    int LoadMenu(const wchar_t* name);
    /// @return the menu itself; null while nothing is loaded. It belongs to this object.
    HMENU GetHandle() const;
    /// @param command its number. @param enable 0 disables it. @return 1; 0 when there is no such command.
    int EnableMenuItem(UINT command, BOOL enable);
    /// @param command its number. @param check 0 takes the mark away.
    /// @return 1; 0 when there is no such command.
    int CheckMenuItem(UINT command, BOOL check);
    /// Opens the popup and waits for the choice. The owner and this object may die meanwhile.
    /// @param flags TPM_…; @param screen a point in screen coordinates. @param owner gives the popup its
    /// window and style; may be null.
    /// @return the command, 0 when dismissed.
    UINT TrackPopupMenu(UINT flags, CPoint screen, CWnd* owner);

private:
    QPointer<QMenu> m_menu;
};

/// @param action may be null. @return its command; 0 for separators and sub-menus.
KV_API UINT KvGetMenuCommand(const QAction* action);
