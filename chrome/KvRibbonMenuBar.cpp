#include "KvRibbonMenuBar.h"

#include "chrome/MenuBarStrip.h"

namespace {

kv::MenuBarStrip& MenuBars(kv::CaptionStrip& strip)
{
    return static_cast<kv::MenuBarStrip&>(strip);
}

} // namespace

CKvRibbonMenuBar::CKvRibbonMenuBar()
    : CKvCaptionBar(std::make_unique<kv::MenuBarStrip>(static_cast<IKvRibbonMenuBarMgr&>(*this)))
{
}

CKvRibbonMenuBar::CKvRibbonMenuBar(QWidget* parent) : CKvRibbonMenuBar()
{
    CreateWhenShown(parent);
}

CKvRibbonMenuBar::~CKvRibbonMenuBar()
{
    MenuBars(Strip()).Close();
}

HWND CKvRibbonMenuBar::GetToolWndParent()
{
    return this;
}

int CKvRibbonMenuBar::BeginAddMenuBar(const wchar_t* imageKey, const wchar_t* buttonText, unsigned id,
                                      HMENU menu, IKvRibbonMenuBarSmartMenu* smartMenu)
{
    return MenuBars(Strip()).BeginMenu(imageKey, buttonText, id, menu, smartMenu) ? 1 : 0;
}

int CKvRibbonMenuBar::AddMenuBarToolWnd(IKvGuiWnd* toolWindow, HWND handle)
{
    return MenuBars(Strip()).SetToolWindow({toolWindow, handle}) ? 1 : 0;
}

int CKvRibbonMenuBar::RegisterAdvToolWnd(IKvGuiWnd* first, HWND firstHandle, IKvGuiWnd* second,
                                         HWND secondHandle)
{
    return MenuBars(Strip()).SetAdvanced({first, firstHandle}, {second, secondHandle}) ? 1 : 0;
}

int CKvRibbonMenuBar::SetAppBtnMenu(HMENU menu, void (*callback)(unsigned, void*), void* context)
{
    return MenuBars(Strip()).SetButtonMenu(menu, callback, context) ? 1 : 0;
}

int CKvRibbonMenuBar::EndAddMenuBar()
{
    return MenuBars(Strip()).End() ? 1 : 0;
}

int CKvRibbonMenuBar::ActiveMenuBar(unsigned id)
{
    return MenuBars(Strip()).Activate(id) ? 1 : 0;
}

int CKvRibbonMenuBar::RemoveMenuBar(unsigned id)
{
    return MenuBars(Strip()).Remove(id) ? 1 : 0;
}

int CKvRibbonMenuBar::SetSysTitle(unsigned id, const wchar_t* title)
{
    return MenuBars(Strip()).SetProductLabel(id, title) ? 1 : 0;
}

int CKvRibbonMenuBar::SetDocTitle(unsigned id, const wchar_t* title)
{
    return MenuBars(Strip()).SetDocumentLabel(id, title) ? 1 : 0;
}

int CKvRibbonMenuBar::UpdateMenuBarWindow()
{
    Strip().Remeasure();
    return 1;
}

int CKvRibbonMenuBar::ShowAppMenuBtn(int show)
{
    Strip().ShowButton(kKvCaptionMenu, show != 0);
    return 1;
}

int CKvRibbonMenuBar::ShowAllAppBtn(int show)
{
    for (const EKvCaptionButton button : kv::kWindowButtons)
        Strip().ShowButton(button, show != 0);
    return 1;
}

int CKvRibbonMenuBar::UpdateRestoreMaxStatus(unsigned sizeType)
{
    if (!IsCreated() || (sizeType != SIZE_RESTORED && sizeType != SIZE_MAXIMIZED))
        return 0;
    Strip().ShowMaximised(sizeType == SIZE_MAXIMIZED);
    return 1;
}

bool CKvRibbonMenuBar::AreWindowButtonsShown() const
{
    return Strip().ShowsButton(kKvCaptionClose);
}

bool CKvRibbonMenuBar::IsMenuButtonShown() const
{
    return Strip().ShowsButton(kKvCaptionMenu);
}
