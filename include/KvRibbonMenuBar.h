// The ribbon menu bar: a main window's caption with the top-level entries of a menu as its items.
#pragma once

#include "KvCaptionBar.h"

class IKvRibbonMenuBarMgr;

/// Keeps the states of a menu bar's entries and receives the chosen commands. Never deleted through this
/// interface: it has no virtual destructor. Results are not looked at.
class IKvRibbonMenuBarSmartMenu
{
public:
    /// The bar that held it lets go of it; once, as the last call.
    virtual int Release() { return 0; }
    /// From `BeginAddMenuBar`, with the identifier of the menu bar under construction.
    virtual int OnAttach(IKvRibbonMenuBarMgr* /*manager*/, unsigned /*id*/) { return 0; }
    /// Just before `Release`.
    virtual int OnDetach() { return 0; }
    /// Brings one entry up to date (enabled, checked, text). @param popup the menu that holds it.
    virtual int OnUpdateCommand(HMENU /*popup*/, unsigned /*command*/) { return 0; }
    /// @param popup the top-level entry's sub-menu, the bar's menu for a top-level entry that has a command
    ///        of its own; null when it was destroyed meanwhile.
    /// @param command the chosen one, never 0.
    virtual int OnCommand(HMENU /*popup*/, unsigned /*command*/) { return 0; }
    /// After the popup closed, before `OnCommand`. @param popup null when it was destroyed meanwhile.
    virtual int OnPopupClosed(HMENU /*popup*/) { return 0; }
    /// Before a popup is updated and opened.
    virtual int OnBeforePopup(HMENU /*popup*/) { return 0; }
};

/// Drives a ribbon menu bar. Menu bars, one for each application, are found by their identifier; the first
/// one wins. Operations return 1, or 0 when the menu bar does not exist, and then change nothing. Button
/// texts hold 63 characters, image keys and labels 259; longer ones are cut. Never deleted through this
/// interface: it has no virtual destructor.
///
/// Order: `BeginAddMenuBar`, then `AddMenuBarToolWnd`, `RegisterAdvToolWnd` and `SetAppBtnMenu` as wanted,
/// `EndAddMenuBar`, once for each application; then `ActiveMenuBar`.
class IKvRibbonMenuBarMgr
{
public:
    /// Under which tool windows are created: the bar itself.
    virtual HWND GetToolWndParent() { return nullptr; }
    /// Begins a menu bar; one that was begun and not ended is dropped.
    /// @param menu its top-level entries are the items, as they are now; their popups are those that it has
    ///        when they open. It stays the host's; once it is destroyed the items open nothing.
    /// @param smartMenu may be null. @return 0 without a menu.
    virtual int BeginAddMenuBar(const wchar_t* /*imageKey*/, const wchar_t* /*buttonText*/, unsigned /*id*/,
                                HMENU /*menu*/, IKvRibbonMenuBarSmartMenu* /*smartMenu*/)
    {
        return 0;
    }
    /// Gives the menu bar under construction the tool window below the strip; both are required.
    virtual int AddMenuBarToolWnd(IKvGuiWnd* /*toolWindow*/, HWND /*handle*/) { return 0; }
    /// As that of the title bar.
    virtual int RegisterAdvToolWnd(IKvGuiWnd* /*first*/, HWND /*firstHandle*/, IKvGuiWnd* /*second*/,
                                   HWND /*secondHandle*/)
    {
        return 0;
    }
    /// The menu of button 10004. The callback gets the chosen command, never 0, and the context.
    /// @return 0 without a menu bar under construction, a menu or a callback.
    virtual int SetAppBtnMenu(HMENU /*menu*/, void (* /*callback*/)(unsigned, void*), void* /*context*/)
    {
        return 0;
    }
    /// @return 0 for a menu bar without items, which is dropped, and when none is under construction.
    virtual int EndAddMenuBar() { return 0; }
    virtual int ActiveMenuBar(unsigned /*id*/) { return 0; }
    /// As `IKvRibbonTitleBarMgr::RemoveTitleBar`.
    virtual int RemoveMenuBar(unsigned /*id*/) { return 0; }
    /// The product label, the first half of the static title ("Mirabo-" at first).
    virtual int SetSysTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// The document label, the second half ("Untitled" at first). Only this one renews the title's tool tip.
    virtual int SetDocTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// Lays out and repaints. @return 1.
    virtual int UpdateMenuBarWindow() { return 0; }
    /// Shows or hides button 10004. @return 1.
    virtual int ShowAppMenuBtn(int /*show*/) { return 0; }
    /// Shows or hides the four window buttons. @return 1.
    virtual int ShowAllAppBtn(int /*show*/) { return 0; }
    /// Tells button 10002 of the frame's state. @param sizeType that of WM_SIZE: SIZE_MAXIMIZED or
    /// SIZE_RESTORED; others change nothing. @return 1 when the button was told.
    virtual int UpdateRestoreMaxStatus(unsigned /*sizeType*/) { return 0; }
};

/// The bar. Alt with an item's upper-case mnemonic letter opens its popup; an item whose mnemonic is a
/// lower-case letter is not reached by it. The shortcuts of the active menu bar's entries work: an entry is
/// brought up to date first and then told of if it is enabled.
class KV_API CKvRibbonMenuBar : public CKvCaptionBar, public IKvRibbonMenuBarMgr
{
    Q_OBJECT

public:
    CKvRibbonMenuBar();
    ~CKvRibbonMenuBar() override;

    HWND GetToolWndParent() override;
    int BeginAddMenuBar(const wchar_t* imageKey, const wchar_t* buttonText, unsigned id, HMENU menu,
                        IKvRibbonMenuBarSmartMenu* smartMenu) override;
    int AddMenuBarToolWnd(IKvGuiWnd* toolWindow, HWND handle) override;
    int RegisterAdvToolWnd(IKvGuiWnd* first, HWND firstHandle, IKvGuiWnd* second, HWND secondHandle) override;
    int SetAppBtnMenu(HMENU menu, void (*callback)(unsigned, void*), void* context) override;
    int EndAddMenuBar() override;
    int ActiveMenuBar(unsigned id) override;
    int RemoveMenuBar(unsigned id) override;
    int SetSysTitle(unsigned id, const wchar_t* title) override;
    int SetDocTitle(unsigned id, const wchar_t* title) override;
    int UpdateMenuBarWindow() override;
    int ShowAppMenuBtn(int show) override;
    int ShowAllAppBtn(int show) override;
    int UpdateRestoreMaxStatus(unsigned sizeType) override;
};
