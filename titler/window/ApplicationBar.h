// titler's caption: its two applications, a tab for every workspace, and the tool windows under the tabs.
#pragma once

#include "KvRibbonTitlebar.h"
#include "window/Commands.h"
#include "window/ToolStrip.h"

#include <array>

namespace titler {

class ApplicationBar : public CKvRibbonTitlebar
{
    Q_OBJECT

public:
    /// @param commands and the tools must outlive the bar.
    ApplicationBar(QWidget& frame, Commands& commands, const WorkspaceTools& tools);
    ~ApplicationBar() override;

    /// Silent.
    void Select(Workspace workspace);
    /// The application whose tabs are shown.
    unsigned Active() const { return m_active; }
    /// The name under which the application menu can be made.
    const std::wstring& MenuName() const { return m_menu.Name(); }
    /// The name of what is open, as the caption shows it.
    void ShowDocument(const QString& name);

signals:
    /// The user went to an application or a tab.
    void WorkspaceChosen(titler::Workspace workspace);

private:
    class Menu : public IKvRibbonTitleBarSmartMenu
    {
    public:
        explicit Menu(Commands& commands);
        const std::wstring& Name() const { return m_name; }
        int GetMenuName(wchar_t name[260]) override;
        int OnCommand(unsigned command) override;

    private:
        Commands& m_commands;
        std::wstring m_name; ///< in this process
    };

    void Build(const WorkspaceTools& tools);
    void AddApplication(Application application, const wchar_t* pictures, UINT nameId,
                        const WorkspaceTools& tools);
    void OnTab(unsigned application, const QString& name);
    Workspace& LastOf(unsigned application) { return m_lastOf[application - kTitles]; }
    static bool Has(Application application, Workspace workspace);

    Menu m_menu;
    QList<ToolStrip*> m_strips;
    /// By application.
    std::array<Workspace, kApplications.size()> m_lastOf{Workspace::Design, Workspace::Clips,
                                                         Workspace::Subtitles};
    unsigned m_active = kTitles;
};

} // namespace titler
