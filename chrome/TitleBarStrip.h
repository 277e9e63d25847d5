// The strip of a ribbon title bar: applications, tabs and their tool windows, the switch window.
#pragma once

#include "KvRibbonTitlebar.h"
#include "chrome/CaptionStrip.h"
#include "chrome/TitleBarModel.h"

#include <QPointer>

#include <memory>
#include <unordered_set>
#include <vector>

class CKvAppSwitchWnd;
class QShortcut;

namespace kv {

class TitleBarStrip : public CaptionStrip
{
public:
    explicit TitleBarStrip(CKvRibbonTitlebar& bar);
    ~TitleBarStrip() override;

    /// Lets go of everything that the host gave; from the bar's destructor.
    void Close();

    bool Begin(std::unique_ptr<SKvTitleBarData> bar);
    bool AddItem(const wchar_t* name, const ToolWindow& tool, int flag);
    bool SetAdvanced(const ToolWindow& first, const ToolWindow& second);
    bool End();
    bool Remove(std::uint32_t id);
    bool Activate(std::uint32_t id);
    bool SelectItem(std::uint32_t id, const wchar_t* name);
    bool EnableItem(std::uint32_t id, const wchar_t* name, bool enable);
    bool RenameItem(std::uint32_t id, const wchar_t* name, const wchar_t* newName);
    bool ReplaceTool(std::uint32_t id, const wchar_t* name, const ToolWindow& tool);
    bool SetProductLabel(std::uint32_t id, const wchar_t* text);
    bool SetDocumentLabel(std::uint32_t id, const wchar_t* text);
    void ShowButtons(EKvRibTitleBarAppBtnShowState state);
    bool OpenSwitchWindow();

    CaptionRecord* Active() const override { return m_bars.Active(); }
    int ItemCount() const override;
    CaptionItem& Item(int index) const override;
    QString ItemLabel(int index) const override;
    bool ShowsFlag() const override { return m_bars.Active() && m_bars.Count() > 1; }
    void PressItem(int index) override;
    void PressFlag() override { OpenSwitchWindow(); }
    void OpenMenuButtonMenu() override;
    void PrepareApplicationMenu(CKvMenu& menu) override;
    void DoApplicationCommand(UINT command) override;
    void DrawItemFrame(Graphics& graphics) override;
    void LayoutToolWindows() override;
    void Remeasure() override;

private:
    // Title bars. Whatever calls the host may find the bar gone afterwards.
    SKvTitleBarData* Find(std::uint32_t id) const;
    void Measure(SKvTitleBarData& bar) const;
    void ActivateAt(int index);
    void ShowApplicationButton();
    void LayoutIfCreated();
    static void Release(std::unique_ptr<SKvTitleBarData> bar);
    bool Holds(const IKvRibbonTitleBarSmartMenu& menu) const;

    // Applications.
    void ChooseApplication(int index);
    void EnsureSwitchWindow();
    void DropSwitchWindow();

    // Tool windows.
    /// Places a tool window, hides it unless it is to be seen, and tells it its manager, as the last thing.
    void Adopt(const ToolWindow& tool, bool place);
    QRect ToolPlace(const QWidget& window) const;
    void Leave(const SKvTitleBarData& bar);
    void Forget(HWND handle);
    /// The windows of the selected tab and of the active title bar; some may be null.
    std::vector<HWND> Seen() const;
    bool IsSeen(HWND handle) const;
    void ShowToolWindows(); ///< these, and hides all the others
    void ShowWindowButtons();
    template <typename Visit>
    void ForEachHandle(Visit visit) const;

    CKvRibbonTitlebar& m_titleBar;
    TitleBars m_bars;
    EKvRibTitleBarAppBtnShowState m_buttons = kKvAppBtnAll;
    QPointer<CKvAppSwitchWnd> m_switch;
    std::unique_ptr<QShortcut> m_shortcut; ///< opens the switch window
    std::unique_ptr<QObject> m_watcher;    ///< hears of tool windows that are destroyed
    std::unordered_set<HWND> m_watched;
    std::vector<QPointer<QWidget>> m_leaving; ///< to be hidden; no title bar knows them any more
    unsigned m_showing = 0;                   ///< the run of ShowToolWindows
    bool m_buttonsShown = false;              ///< since they were created
    bool m_closing = false;
};

} // namespace kv
