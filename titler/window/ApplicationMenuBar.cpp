#include "window/ApplicationMenuBar.h"

#include "KvGuiRes.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QMenu>
#include <QStackedWidget>

namespace titler {
namespace {

constexpr unsigned kTitler = 1;

} // namespace

/// One window for the bar, whatever workspace is shown.
class ApplicationMenuBar::Tools : public QStackedWidget, public IKvGuiWnd
{
public:
    Tools(QWidget& bar, const WorkspaceTools& tools) : QStackedWidget(&bar)
    {
        for (const QList<QAction*>& strip : tools)
            addWidget(new ToolStrip(*this, strip));
        resize(sizeHint());
    }
};

int ApplicationMenuBar::Menu::OnUpdateCommand(HMENU menu, unsigned command)
{
    for (QAction* entry : menu->actions()) {
        if (!entry->isSeparator() && entry->data().toUInt() == command)
            m_commands.Show(*entry);
    }
    return 1;
}

int ApplicationMenuBar::Menu::OnCommand(HMENU, unsigned command)
{
    m_commands.Trigger(command);
    return 1;
}

ApplicationMenuBar::ApplicationMenuBar(QWidget& frame, Commands& commands, const WorkspaceTools& tools)
    : m_menu(commands)
    , m_tools(new Tools(*this, tools))
{
    commands.GiveShortcutsAway();
    Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, frame.width(), 0), &frame, 1);
    InEachLanguage(*this, [this, &commands] { Build(commands); });
    ShowAppMenuBtn(0); // it has no menu of its own
}

// Menus are measured when they are added.
void ApplicationMenuBar::Build(const Commands& commands)
{
    RemoveMenuBar(kTitler);
    m_items = commands.MakeApplicationMenu();
    BeginAddMenuBar(L"titler_icon", WideText(kTextTitler).c_str(), kTitler, m_items.get(), &m_menu);
    AddMenuBarToolWnd(m_tools, m_tools);
    EndAddMenuBar();
    SetSysTitle(kTitler, WideText(kTextCaptionProduct).c_str());
    ActiveMenuBar(kTitler);
    m_tools->resize(m_tools->width(), height() - m_tools->y());
}

ApplicationMenuBar::~ApplicationMenuBar()
{
    RemoveMenuBar(kTitler); // lets go of the menu while it is there
}

void ApplicationMenuBar::ShowTools(Workspace workspace)
{
    m_tools->setCurrentIndex(static_cast<int>(workspace));
}

void ApplicationMenuBar::ShowDocument(const QString& name)
{
    SetDocTitle(kTitler, name.toStdWString().c_str());
}

} // namespace titler
