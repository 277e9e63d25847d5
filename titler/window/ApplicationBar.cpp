#include "window/ApplicationBar.h"

#include "KvGuiRes.h"
#include "window/Texts.h"
#include "window/ToolStrip.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <cwchar>

namespace titler {
namespace {

constexpr const wchar_t* kMenuName = L"titler";
constexpr unsigned kTitles = 1;
constexpr unsigned kMedia = 2;

struct Tab
{
    unsigned application;
    UINT nameId;
};
constexpr Tab kTabs[kWorkspaces] = {
    {kTitles, kTextTabDesign}, {kTitles, kTextTabAnimate}, {kMedia, kTextTabClips}};

const Tab& TabOf(Workspace workspace)
{
    return kTabs[static_cast<int>(workspace)];
}

std::wstring NameOf(Workspace workspace)
{
    return KvGuiRes::LoadStringW(TabOf(workspace).nameId);
}

} // namespace

int ApplicationBar::Menu::GetMenuName(wchar_t name[260])
{
    std::wcscpy(name, kMenuName);
    return 1;
}

int ApplicationBar::Menu::OnCommand(unsigned command)
{
    m_commands.Trigger(command);
    return 1;
}

ApplicationBar::ApplicationBar(QWidget& frame, Commands& commands, const Tools& tools) : m_menu(commands)
{
    KvGuiRes::RegisterMenu(kMenuName, [&commands] { return commands.MakeApplicationMenu(); });
    Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, frame.width(), 0), &frame, 1);
    AddApplication(kTitles, L"titler_titles", kTextTitles, {Workspace::Design, Workspace::Animate}, tools);
    AddApplication(kMedia, L"titler_media", kTextMedia, {Workspace::Clips}, tools);
    ActiveTitleBar(kTitles, 1);
    connect(this, &CKvRibbonTitlebar::TitleBarActivated, this, &ApplicationBar::OnActivated);
    connect(this, &CKvRibbonTitlebar::RibbonItemSelected, this,
            [this](quint32, const QString& name) { OnTab(name); });
}

ApplicationBar::~ApplicationBar()
{
    KvGuiRes::RegisterMenu(kMenuName, {});
}

void ApplicationBar::AddApplication(unsigned id, const wchar_t* pictures, UINT nameId,
                                    std::initializer_list<Workspace> workspaces, const Tools& tools)
{
    BeginAddTitleBar(pictures, KvGuiRes::LoadStringW(nameId).c_str(), nullptr, id, &m_menu);
    for (const Workspace workspace : workspaces) {
        auto* strip = new ToolStrip(*this, tools[static_cast<std::size_t>(workspace)]);
        AddRibbonItem(NameOf(workspace).c_str(), strip, strip, 0);
    }
    EndAddTitleBar();
    SetSysTitle(id, KvGuiRes::LoadStringW(kTextCaptionProduct).c_str());
}

void ApplicationBar::Select(Workspace workspace)
{
    const unsigned application = TabOf(workspace).application;
    if (application != TabOf(m_current).application)
        ActiveTitleBar(application, 1);
    ActiveRibbonItem(application, NameOf(workspace).c_str());
    SetCurrent(workspace);
}

void ApplicationBar::ShowDocument(const QString& name)
{
    for (const unsigned id : {kTitles, kMedia})
        SetDocTitle(id, name.toStdWString().c_str());
}

// Each application comes back with the tab in which it was left.
void ApplicationBar::OnActivated(unsigned id)
{
    SetCurrent(m_lastOf[id - kTitles]);
}

void ApplicationBar::OnTab(const QString& name)
{
    for (int i = 0; i < kWorkspaces; ++i) {
        if (Text(kTabs[i].nameId) == name)
            SetCurrent(static_cast<Workspace>(i));
    }
}

void ApplicationBar::SetCurrent(Workspace workspace)
{
    m_lastOf[TabOf(workspace).application - kTitles] = workspace;
    if (workspace == m_current)
        return;
    m_current = workspace;
    emit WorkspaceChanged(workspace);
}

} // namespace titler
