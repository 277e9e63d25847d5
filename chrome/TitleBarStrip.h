// The strip of a ribbon title bar: tabs with their tool windows, and the ways from one application to
// another.
#pragma once

#include "KvRibbonTitlebar.h"
#include "chrome/RecordStrip.h"
#include "chrome/TitleBarModel.h"

class CKvAppSwitchWnd;
class QShortcut;

namespace kv {

class TitleBarStrip : public RecordStrip
{
public:
    explicit TitleBarStrip(CKvRibbonTitlebar& bar);
    ~TitleBarStrip() override;

    bool AddItem(const wchar_t* name, const ToolWindow& tool, int flag);
    bool SelectItem(std::uint32_t id, const wchar_t* name);
    bool EnableItem(std::uint32_t id, const wchar_t* name, bool enable);
    bool RenameItem(std::uint32_t id, const wchar_t* name, const wchar_t* newName);
    bool ReplaceTool(std::uint32_t id, const wchar_t* name, const ToolWindow& tool);
    void ShowButtons(EKvRibTitleBarAppBtnShowState state);
    bool OpenSwitchWindow();

    QString ItemLabel(int index) const override { return KvToQString(Item(index).text); }
    bool ShowsFlag() const override { return Active() && Records().Count() > 1; }
    void PressItem(int index) override;
    bool IsFlagOpen() const override;
    void PressFlag() override { OpenSwitchWindow(); }
    void OpenMenuButtonMenu() override;
    void PrepareApplicationMenu(CKvMenu& menu) override;
    void DoApplicationCommand(UINT command) override;
    void DrawItemFrame(Graphics& graphics) override;
    void LayoutToolWindows() override;

protected:
    void TellAttached(CaptionRecord& record) override;
    void OnAdded() override;
    void OnRemoved(int index) override;
    void OnActivated() override;
    void OnClose() override { DropSwitchWindow(); }

private:
    static SKvTitleBarData* TitleBar(CaptionRecord* record) { return static_cast<SKvTitleBarData*>(record); }
    SKvRibbonItem* FindItem(std::uint32_t id, const wchar_t* name) const;
    void LayoutIfActive(std::uint32_t id);
    /// Null for a handle that is not the host's to be placed.
    QRect ToolPlace(const ToolWindow& tool) const;

    void AddToSwitchWindow(int index);
    void ChooseApplication(int index);
    void EnsureSwitchWindow();
    void DropSwitchWindow();

    CKvRibbonTitlebar& m_titleBar;
    QPointer<CKvAppSwitchWnd> m_switch;
    std::unique_ptr<QShortcut> m_shortcut; ///< opens the switch window
    std::vector<Run> m_offered;            ///< the applications of the menu that was opened last
};

} // namespace kv
