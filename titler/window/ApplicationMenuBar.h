// titler's caption in its second form: menus instead of tabs.
#pragma once

#include "KvRibbonMenuBar.h"
#include "window/Commands.h"
#include "window/ToolStrip.h"

#include <memory>

namespace titler {

class ApplicationMenuBar : public CKvRibbonMenuBar
{
public:
    /// @param commands must outlive the bar; their shortcuts are the bar's from now on.
    /// @param tools what stands below the menus.
    ApplicationMenuBar(QWidget& frame, Commands& commands, const WorkspaceTools& tools);
    ~ApplicationMenuBar() override;

    void ShowTools(Workspace workspace);
    /// The name of what is open, as the caption shows it.
    void ShowDocument(const QString& name);

private:
    class Menu : public IKvRibbonMenuBarSmartMenu
    {
    public:
        explicit Menu(Commands& commands) : m_commands(commands) {}
        int OnUpdateCommand(HMENU menu, unsigned command) override;
        int OnCommand(HMENU menu, unsigned command) override;

    private:
        Commands& m_commands;
    };

    class Tools;

    void Build(const Commands& commands);

    Menu m_menu;
    std::unique_ptr<QMenu> m_items;
    Tools* m_tools; ///< a strip for each workspace
};

} // namespace titler
