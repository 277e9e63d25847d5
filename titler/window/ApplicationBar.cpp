#include "window/ApplicationBar.h"

#include "KvGuiRes.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QMenu>

#include <cwchar>
#include <utility>

namespace titler {
namespace {

std::wstring NameOf(Workspace workspace)
{
    return WideText(TraitsOf(workspace).textId);
}

} // namespace

// Each window has commands, and so a menu, of its own.
ApplicationBar::Menu::Menu(Commands& commands) : m_commands(commands)
{
    static int bars = 0;
    m_name = L"titler" + std::to_wstring(++bars);
}

int ApplicationBar::Menu::GetMenuName(wchar_t name[260])
{
    std::wcscpy(name, m_name.c_str());
    return 1;
}

int ApplicationBar::Menu::OnCommand(unsigned command)
{
    m_commands.Trigger(command);
    return 1;
}

ApplicationBar::ApplicationBar(QWidget& frame, Commands& commands, const WorkspaceTools& tools)
    : m_menu(commands)
{
    KvGuiRes::RegisterMenu(MenuName().c_str(), [&commands] { return commands.MakeApplicationMenu(); });
    Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, frame.width(), 0), &frame, 1);
    InEachLanguage(*this, [this, &tools] { Build(tools); });
    // Each application comes back with the tab in which it was left.
    connect(this, &CKvRibbonTitlebar::TitleBarActivated, this, [this](quint32 application) {
        m_active = application;
        emit WorkspaceChosen(LastOf(application));
    });
    connect(this, &CKvRibbonTitlebar::RibbonItemSelected, this, &ApplicationBar::OnTab);
}

// The title bars release their menu when they go: before the menu itself does.
ApplicationBar::~ApplicationBar()
{
    for (const Application application : kApplications)
        RemoveTitleBar(application);
    KvGuiRes::RegisterMenu(MenuName().c_str(), {});
}

// Tabs and applications are found by their names, and measured when they are added: in another language all
// of them come anew.
void ApplicationBar::Build(const WorkspaceTools& tools)
{
    for (const Application application : kApplications)
        RemoveTitleBar(application);
    qDeleteAll(std::exchange(m_strips, {}));
    AddApplication(kTitles, L"titler_titles", kTextTitles, tools);
    AddApplication(kSubtitles, L"titler_subtitles", kTextTabSubtitles, tools);
    AddApplication(kMedia, L"titler_media", kTextMedia, tools);
    for (const Application application : kApplications)
        ActiveRibbonItem(application, NameOf(LastOf(application)).c_str());
    ActiveTitleBar(m_active, 1);
}

void ApplicationBar::AddApplication(Application application, const wchar_t* pictures, UINT nameId,
                                    const WorkspaceTools& tools)
{
    BeginAddTitleBar(pictures, WideText(nameId).c_str(), nullptr, application, &m_menu);
    for (const Workspace workspace : kWorkspaces) {
        if (!Has(application, workspace))
            continue;
        auto* strip = new ToolStrip(*this, tools[static_cast<std::size_t>(workspace)]);
        m_strips << strip;
        AddRibbonItem(NameOf(workspace).c_str(), strip, strip, 0);
    }
    EndAddTitleBar();
    SetSysTitle(application, WideText(kTextCaptionProduct).c_str());
}

bool ApplicationBar::Has(Application application, Workspace workspace)
{
    const Application owner = TraitsOf(workspace).application;
    return owner == application || owner == kEvery;
}

// The tab first: an application that becomes active then shows it at once.
void ApplicationBar::Select(Workspace workspace)
{
    const Application owner = TraitsOf(workspace).application;
    const unsigned application = owner == kEvery ? m_active : owner;
    m_active = application;
    LastOf(application) = workspace;
    ActiveRibbonItem(application, NameOf(workspace).c_str());
    ActiveTitleBar(application, 1);
}

void ApplicationBar::ShowDocument(const QString& name)
{
    for (const Application application : kApplications)
        SetDocTitle(application, name.toStdWString().c_str());
}

void ApplicationBar::OnTab(unsigned application, const QString& name)
{
    for (const Workspace workspace : kWorkspaces) {
        if (QString::fromStdWString(NameOf(workspace)) != name)
            continue;
        LastOf(application) = workspace;
        emit WorkspaceChosen(workspace);
        return;
    }
}

} // namespace titler
