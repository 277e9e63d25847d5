#include "KvRibbonTitlebar.h"

#include "chrome/TitleBarStrip.h"

namespace {

bool g_shortLabels = false;

} // namespace

CKvRibbonTitlebar::CKvRibbonTitlebar() : CKvCaptionBar(std::make_unique<kv::TitleBarStrip>(*this)) {}

CKvRibbonTitlebar::CKvRibbonTitlebar(QWidget* parent) : CKvRibbonTitlebar()
{
    CreateWhenShown(parent);
}

CKvRibbonTitlebar::~CKvRibbonTitlebar()
{
    Bars().Close();
}

kv::TitleBarStrip& CKvRibbonTitlebar::Bars() const
{
    return static_cast<kv::TitleBarStrip&>(Strip());
}

HWND CKvRibbonTitlebar::GetToolWndParent()
{
    return this;
}

int CKvRibbonTitlebar::ActiveTitleBar(unsigned id, int /*redraw*/)
{
    return Bars().Activate(id) ? 1 : 0; // the toolkit repaints when the events are done, and only once
}

int CKvRibbonTitlebar::RemoveTitleBar(unsigned id)
{
    return Bars().Remove(id) ? 1 : 0;
}

int CKvRibbonTitlebar::BeginAddTitleBar(const wchar_t* imageKey, const wchar_t* buttonText,
                                        const wchar_t* switchName, unsigned id,
                                        IKvRibbonTitleBarSmartMenu* menu)
{
    auto record =
        std::make_unique<kv::SKvTitleBarData>(imageKey, buttonText, switchName, id, menu, g_shortLabels);
    record->Hold(menu);
    return Bars().Begin(std::move(record)) ? 1 : 0;
}

int CKvRibbonTitlebar::AddRibbonItem(const wchar_t* name, IKvGuiWnd* toolWindow, HWND handle, int flag)
{
    return Bars().AddItem(name, {toolWindow, handle}, flag) ? 1 : 0;
}

int CKvRibbonTitlebar::RegisterAdvToolWnd(IKvGuiWnd* first, HWND firstHandle, IKvGuiWnd* second,
                                          HWND secondHandle)
{
    return Bars().SetAdvanced({first, firstHandle}, {second, secondHandle}) ? 1 : 0;
}

int CKvRibbonTitlebar::EndAddTitleBar()
{
    return Bars().End() ? 1 : 0;
}

int CKvRibbonTitlebar::SetRibbonItemName(unsigned id, const wchar_t* name, const wchar_t* newName)
{
    return Bars().RenameItem(id, name, newName) ? 1 : 0;
}

int CKvRibbonTitlebar::SetRibbonItemToolWnd(unsigned id, const wchar_t* name, IKvGuiWnd* toolWindow,
                                            HWND handle)
{
    return Bars().ReplaceTool(id, name, {toolWindow, handle}) ? 1 : 0;
}

int CKvRibbonTitlebar::ActiveRibbonItem(unsigned id, const wchar_t* name)
{
    return Bars().SelectItem(id, name) ? 1 : 0;
}

int CKvRibbonTitlebar::SetSysTitle(unsigned id, const wchar_t* title)
{
    return Bars().SetProductLabel(id, title) ? 1 : 0;
}

int CKvRibbonTitlebar::SetDocTitle(unsigned id, const wchar_t* title)
{
    return Bars().SetDocumentLabel(id, title) ? 1 : 0;
}

int CKvRibbonTitlebar::UpdateTitleBarWindow()
{
    Bars().Remeasure();
    return 1;
}

int CKvRibbonTitlebar::ShowAppBtn(EKvRibTitleBarAppBtnShowState state)
{
    Bars().ShowButtons(state);
    return 1;
}

int CKvRibbonTitlebar::ShowAppSwitchWindow()
{
    return Bars().OpenSwitchWindow() ? 1 : 0;
}

int CKvRibbonTitlebar::EnableRibbonItem(unsigned id, const wchar_t* name, BOOL enable)
{
    return Bars().EnableItem(id, name, enable != 0) ? 1 : 0;
}

void CKvRibbonTitlebar::SetShortLabels(BOOL on)
{
    g_shortLabels = on != 0;
}

CKvRibbonTitlebar::WindowButtons CKvRibbonTitlebar::ShownButtons() const
{
    if (!Strip().ShowsButton(kKvCaptionClose))
        return NoButtons;
    return Strip().ShowsButton(kKvCaptionMaximise) ? AllButtons : CloseButton;
}

void CKvRibbonTitlebar::ShowButtons(WindowButtons buttons)
{
    ShowAppBtn(static_cast<EKvRibTitleBarAppBtnShowState>(buttons));
}
