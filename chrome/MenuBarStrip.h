// The strip of a ribbon menu bar: items, the tool window, the popups and their keys.
#pragma once

#include "KvRibbonMenuBar.h"
#include "chrome/MenuBarModel.h"
#include "chrome/RecordStrip.h"

#include <QMenu>

namespace kv {

class MenuBarEvents;

using AppButtonCallback = void (*)(unsigned, void*);

/// A menu bar with what the host gave it.
struct MenuBarRecord : SKvMenuBarData
{
    QPointer<QMenu> menu;
    IKvRibbonMenuBarSmartMenu* smartMenu = nullptr; ///< may be null
    QPointer<QMenu> buttonMenu;
    AppButtonCallback buttonCallback = nullptr;
    void* buttonContext = nullptr;

    /// The entry of an item as the menu has it now; null when it is gone.
    QAction* Entry(int item) const;
    /// The sub-menu that the item opens; null when there is none, or its entry is disabled.
    QMenu* SubMenu(int item) const;
};

class MenuBarStrip : public RecordStrip
{
public:
    explicit MenuBarStrip(IKvRibbonMenuBarMgr& manager);
    ~MenuBarStrip() override;

    bool BeginMenu(const wchar_t* imageKey, const wchar_t* buttonText, std::uint32_t id, QMenu* menu,
                   IKvRibbonMenuBarSmartMenu* smartMenu);
    bool SetToolWindow(const ToolWindow& tool);
    bool SetButtonMenu(QMenu* menu, AppButtonCallback callback, void* context);

    QString ItemLabel(int index) const override;
    QString ItemName(int index) const override;
    void PressItem(int index) override { PopupMenu(index); }
    void OpenMenuButtonMenu() override;
    void PrepareApplicationMenu(CKvMenu& menu) override;
    void DoApplicationCommand(UINT /*command*/) override {}
    void DrawItemFrame(Graphics& graphics) override;
    void LayoutToolWindows() override;

protected:
    void TellAttached(CaptionRecord& record) override;
    void ClosePopups() override;
    void OnActivated() override;
    void OnClose() override;

private:
    friend class MenuBarEvents;

    MenuBarRecord* ActiveMenu() const { return static_cast<MenuBarRecord*>(Active()); }
    MenuBarRecord* Begun() { return static_cast<MenuBarRecord*>(Records().UnderConstruction()); }
    void ListenToMenu();
    /// The active menu's entries may have been enabled, disabled or given other sub-menus.
    void ReadEntries();

    // Popups: while one is open, `PopupMenu` and `GoTo` make its loop go on to another item.
    void PopupMenu(int index);
    int RunPopup(int index); ///< @return the item to go on to; -1 for none
    /// @param point client coordinates.
    UINT TrackPopup(const Run& run, const QPointer<QMenu>& popup, CPoint point);
    bool UpdateMenuState(const Run& run, IKvRibbonMenuBarSmartMenu& smartMenu, QMenu& menu,
                         std::vector<const QMenu*>& path);
    /// @param step the way on, -1 or 1, from an item that has nothing to show; 0 for none.
    void GoTo(int index, int step = 0);
    void MarkOpen(int index);
    void InvalidateItem(int index);
    std::vector<bool> OpeningItems() const;

    // Shortcuts.
    struct Entry
    {
        QPointer<QMenu> popup; ///< of the top level; the menu itself for an entry of the top level
        QPointer<QMenu> menu;  ///< that holds the entry
        QPointer<QAction> action;
    };
    template <typename Predicate>
    std::vector<Entry> FindEntries(Predicate matches) const;
    void UpdateShortcuts(int key, Qt::KeyboardModifiers modifiers);
    void HearShortcut(QAction& action);

    IKvRibbonMenuBarMgr& m_manager;
    std::unique_ptr<MenuBarEvents> m_events;
    QPointer<QObject> m_listened;       ///< the menu whose shortcuts work and whose entries are watched
    std::unique_ptr<QObject> m_pressed; ///< while a shortcut triggers its entry
    int m_open = -1;                    ///< the item whose popup is open
    int m_next = -1;                    ///< the item to go on to
    int m_step = 0;                     ///< the way on behind it
    int m_passed = 0;                   ///< items in a row that had nothing to show
    QPointer<QMenu> m_popup;            ///< of the open item, while it is being tracked
    QPointer<QMenu> m_buttonPopup;      ///< likewise of button 10004
};

} // namespace kv
