/// @file
/// The ribbon menu bar: a main window's caption with the top-level entries of a menu as its items.
#pragma once

#include "KvCaptionBar.h"

class IKvRibbonMenuBarMgr;

KV_INTERFACES_BEGIN

/// Keeps the states of a menu bar's entries and receives the chosen commands. Never deleted through this
/// interface: it has no virtual destructor. Results are not looked at.
class IKvRibbonMenuBarSmartMenu
{
public:
    /// The bar that held it lets go of it; once, as the last call. @return not looked at.
    virtual int Release() { return 0; }
    /// From `BeginAddMenuBar`, with the identifier of the menu bar under construction.
    /// @param manager the bar. @param id the menu bar. @return not looked at.
    virtual int OnAttach(IKvRibbonMenuBarMgr* /*manager*/, unsigned /*id*/) { return 0; }
    /// Just before `Release`. @return not looked at.
    virtual int OnDetach() { return 0; }
    /// Brings one entry up to date (enabled, checked, text). @param popup the menu that holds it.
    /// @param command its number. @return not looked at.
    virtual int OnUpdateCommand(HMENU /*popup*/, unsigned /*command*/) { return 0; }
    /// @param popup the top-level entry's sub-menu, the bar's menu for a top-level entry that has a command
    ///        of its own; null when it was destroyed meanwhile.
    /// @param command the chosen one, never 0. @return not looked at.
    virtual int OnCommand(HMENU /*popup*/, unsigned /*command*/) { return 0; }
    /// After the popup closed, before `OnCommand`. @param popup null when it was destroyed meanwhile.
    /// @return not looked at.
    virtual int OnPopupClosed(HMENU /*popup*/) { return 0; }
    /// @param popup about to be updated and opened. @return not looked at.
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
    /// @return under which tool windows are created: the bar itself.
    virtual HWND GetToolWndParent() { return nullptr; }
    /// Begins a menu bar; one that was begun and not ended is dropped.
    /// @param imageKey base name of the pictures on the application button. @param buttonText the
    ///        application's name, on the button. @param id the new menu bar's.
    /// @param menu its top-level entries are the items, as they are now; their popups are those that it has
    ///        when they open. It stays the host's; once it is destroyed the items open nothing.
    /// @param smartMenu may be null. @return 1; 0 without a menu.
    virtual int BeginAddMenuBar(const wchar_t* /*imageKey*/, const wchar_t* /*buttonText*/, unsigned /*id*/,
                                HMENU /*menu*/, IKvRibbonMenuBarSmartMenu* /*smartMenu*/)
    {
        return 0;
    }
    /// Gives the menu bar under construction the tool window below the strip.
    /// @param toolWindow, handle both are required.
    /// @return 1; 0 without one of them, or when none is under construction.
    virtual int AddMenuBarToolWnd(IKvGuiWnd* /*toolWindow*/, HWND /*handle*/) { return 0; }
    /// As that of the title bar. @param first, second, firstHandle, secondHandle null leaves one out.
    /// @return 1; 0 when none is under construction.
    virtual int RegisterAdvToolWnd(IKvGuiWnd* /*first*/, HWND /*firstHandle*/, IKvGuiWnd* /*second*/,
                                   HWND /*secondHandle*/)
    {
        return 0;
    }
    /// The menu of button 10004. @param menu stays the host's. @param callback gets the chosen command, never
    ///        0, and the context. @param context any.
    /// @return 1; 0 without a menu bar under construction, a menu or a callback.
    virtual int SetAppBtnMenu(HMENU /*menu*/, void (* /*callback*/)(unsigned, void*), void* /*context*/)
    {
        return 0;
    }
    /// @return 1; 0 for a menu bar without items, which is dropped, and when none is under construction.
    virtual int EndAddMenuBar() { return 0; }
    /// Shows a menu bar. @param id which one. @return 1; 0 for none such.
    virtual int ActiveMenuBar(unsigned /*id*/) { return 0; }
    /// As `IKvRibbonTitleBarMgr::RemoveTitleBar`. @param id the menu bar. @return 1; 0 for none such.
    virtual int RemoveMenuBar(unsigned /*id*/) { return 0; }
    /// The product label, the first half of the static title ("Mirabo-" at first).
    /// @param id the menu bar. @param title up to 259 characters. @return 1; 0 for none such.
    virtual int SetSysTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// The document label, the second half ("Untitled" at first). Only this one renews the title's tool tip.
    /// @param id the menu bar. @param title up to 259 characters. @return 1; 0 for none such.
    virtual int SetDocTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// Lays out and repaints. @return 1.
    virtual int UpdateMenuBarWindow() { return 0; }
    /// Button 10004. @param show 0 hides it. @return 1.
    virtual int ShowAppMenuBtn(int /*show*/) { return 0; }
    /// The four window buttons. @param show 0 hides them. @return 1.
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
    /// The four window buttons; see `ShowAllAppBtn`.
    Q_PROPERTY(bool windowButtonsShown READ AreWindowButtonsShown WRITE ShowAllAppBtn)
    /// Button 10004; see `ShowAppMenuBtn`.
    Q_PROPERTY(bool menuButtonShown READ IsMenuButtonShown WRITE ShowAppMenuBtn)

public:
    /// A bar without menu bars that is not created yet.
    CKvRibbonMenuBar();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvRibbonMenuBar(QWidget* parent);
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

private:
    bool AreWindowButtonsShown() const;
    bool IsMenuButtonShown() const;
};

KV_INTERFACES_END
