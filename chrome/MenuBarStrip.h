// The strip of a ribbon menu bar: menu bars, their items and tool windows, the popups and their keys.
#pragma once

#include "KvRibbonMenuBar.h"
#include "chrome/CaptionStrip.h"
#include "chrome/MenuBarModel.h"

#include <QMenu>
#include <QPointer>

#include <memory>
#include <vector>

class QKeyEvent;

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
    /// Expires with the record, for whoever called the host meanwhile.
    std::shared_ptr<const int> life = std::make_shared<const int>(0);

    /// The sub-menu of an item as the menu has it now; null when there is none.
    QMenu* SubMenu(int item) const;
};

class MenuBarStrip : public CaptionStrip
{
public:
    explicit MenuBarStrip(IKvRibbonMenuBarMgr& manager);
    ~MenuBarStrip() override;

    /// Lets go of everything that the host gave; from the bar's destructor.
    void Close();

    bool Begin(const wchar_t* imageKey, const wchar_t* buttonText, std::uint32_t id, QMenu* menu,
               IKvRibbonMenuBarSmartMenu* smartMenu);
    bool SetToolWindow(const ToolWindow& tool);
    bool SetAdvanced(const ToolWindow& first, const ToolWindow& second);
    bool SetButtonMenu(QMenu* menu, AppButtonCallback callback, void* context);
    bool End();
    bool Activate(std::uint32_t id);
    bool Remove(std::uint32_t id);
    bool SetProductLabel(std::uint32_t id, const wchar_t* text);
    bool SetDocumentLabel(std::uint32_t id, const wchar_t* text);

    CaptionRecord* Active() const override { return m_records.Active(); }
    int ItemCount() const override;
    CaptionItem& Item(int index) const override;
    QString ItemLabel(int index) const override;
    void PressItem(int index) override { PopupMenu(index); }
    void OpenMenuButtonMenu() override;
    void PrepareApplicationMenu(CKvMenu& menu) override;
    void DoApplicationCommand(UINT /*command*/) override {}
    void DrawItemFrame(Graphics& graphics) override;
    void LayoutToolWindows() override;
    void Remeasure() override;

private:
    friend class MenuBarEvents;

    /// Notices whether the bar and the menu bar outlived a call of the host.
    struct Run
    {
        Run(CKvCaptionBar& owner, const MenuBarRecord& record) : bar(&owner), life(record.life) {}
        bool Lives() const { return bar && !life.expired(); }

        QPointer<CKvCaptionBar> bar;
        std::weak_ptr<const int> life;
    };

    // Menu bars.
    CRect ButtonPlace(const MenuBarRecord& record) const;
    void Measure(MenuBarRecord& record);
    void ActivateAt(int index);
    void ShowNone();
    void ListenToShortcuts();
    static void Release(std::unique_ptr<MenuBarRecord> record);

    // Tool windows.
    void Adopt(const std::vector<ToolWindow>& tools);
    void Forget(const QObject* handle);
    void ShowToolWindows(const MenuBarRecord* leaving = nullptr);

    // Popups: while one is open, `PopupMenu` and `GoTo` make its loop go on to another item.
    void PopupMenu(int index);
    int RunPopup(int index); ///< @return the item to go on to; -1 for none
    UINT TrackPopup(const Run& run, const QPointer<QMenu>& popup, CPoint screen);
    bool UpdateMenuState(const Run& run, IKvRibbonMenuBarSmartMenu& smartMenu, QMenu& menu,
                         std::vector<const QMenu*>& path);
    void GoTo(int index);
    /// Also that of button 10004.
    void ClosePopup();
    void MarkOpen(int index);
    void InvalidateItem(int index);
    std::vector<bool> OpeningItems() const;

    // Shortcuts.
    struct Entry
    {
        QPointer<QMenu> popup; ///< of the top level
        QPointer<QMenu> menu;  ///< that holds the entry
        QPointer<QAction> action;
    };
    template <typename Predicate>
    std::vector<Entry> FindEntries(Predicate matches) const;
    void UpdateShortcuts(int key, Qt::KeyboardModifiers modifiers);
    void HearShortcut(QAction& action);

    IKvRibbonMenuBarMgr& m_manager;
    CaptionRecords<MenuBarRecord> m_records;
    std::unique_ptr<MenuBarEvents> m_events;
    QPointer<QMenu> m_listened;         ///< whose shortcuts work
    std::unique_ptr<QObject> m_pressed; ///< while a shortcut triggers its entry
    int m_open = -1;                    ///< the item whose popup is open
    int m_next = -1;                    ///< the item to go on to
    QPointer<QMenu> m_popup;            ///< of the open item, while it is being tracked
    QPointer<QMenu> m_buttonPopup;      ///< likewise of button 10004
};

} // namespace kv
