#include "window/ApplicationMenuBar.h"

#include "KvGuiRes.h"
#include "window/Texts.h"
#include "window/ToolStrip.h"

#include <QMenu>

namespace titler {
namespace {

constexpr unsigned kTitler = 1;

} // namespace

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

ApplicationMenuBar::ApplicationMenuBar(QWidget& frame, Commands& commands, const QList<QAction*>& tools)
    : m_menu(commands)
    , m_items(commands.MakeApplicationMenu())
{
    commands.GiveShortcutsAway();
    Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, frame.width(), 0), &frame, 1);
    BeginAddMenuBar(L"titler_icon", KvGuiRes::LoadStringW(kTextTitler).c_str(), kTitler, m_items.get(),
                    &m_menu);
    auto* strip = new ToolStrip(*this, tools);
    AddMenuBarToolWnd(strip, strip);
    EndAddMenuBar();
    SetSysTitle(kTitler, KvGuiRes::LoadStringW(kTextCaptionProduct).c_str());
    ActiveMenuBar(kTitler);
    strip->resize(strip->width(), height() - strip->y());
    ShowAppMenuBtn(0); // it has no menu of its own
}

ApplicationMenuBar::~ApplicationMenuBar()
{
    RemoveMenuBar(kTitler); // lets go of the menu while it is there
}

void ApplicationMenuBar::ShowDocument(const QString& name)
{
    SetDocTitle(kTitler, name.toStdWString().c_str());
}

} // namespace titler
