// titler's caption: its two applications, a tab for every workspace, and the tool windows under the tabs.
#pragma once

#include "KvRibbonTitlebar.h"
#include "window/Commands.h"

#include <QList>

#include <array>

class QAction;

namespace titler {

/// What the middle of the window is for.
enum class Workspace
{
    Design,  ///< of "Titles": text and gradient
    Animate, ///< of "Titles": keys and playback
    Clips,   ///< of "Media"
};
inline constexpr int kWorkspaces = 3;

class ApplicationBar : public CKvRibbonTitlebar
{
    Q_OBJECT

public:
    using Tools = std::array<QList<QAction*>, kWorkspaces>; ///< by Workspace; null stands for a separator

    /// @param commands and the tools must outlive the bar.
    ApplicationBar(QWidget& frame, Commands& commands, const Tools& tools);
    ~ApplicationBar() override;

    Workspace Current() const { return m_current; }
    void Select(Workspace workspace);
    /// The name of what is open, as the caption shows it.
    void ShowDocument(const QString& name);

signals:
    void WorkspaceChanged(titler::Workspace workspace);

private:
    class Menu : public IKvRibbonTitleBarSmartMenu
    {
    public:
        explicit Menu(Commands& commands) : m_commands(commands) {}
        int GetMenuName(wchar_t name[260]) override;
        int OnCommand(unsigned command) override;

    private:
        Commands& m_commands;
    };

    void AddApplication(unsigned id, const wchar_t* pictures, UINT nameId,
                        std::initializer_list<Workspace> workspaces, const Tools& tools);
    void OnActivated(unsigned id);
    void OnTab(const QString& name);
    void SetCurrent(Workspace workspace);

    Menu m_menu;
    Workspace m_current = Workspace::Design;
    std::array<Workspace, 2> m_lastOf{Workspace::Design, Workspace::Clips}; ///< by application
};

} // namespace titler
