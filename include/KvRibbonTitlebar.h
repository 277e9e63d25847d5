/// @file
/// The ribbon title bar: a main window's caption with tabs, for one or several applications in one window.
#pragma once

#include "KvCaptionBar.h"

namespace kv {
class TitleBarStrip;
}

class IKvRibbonTitleBarMgr;

/// The window buttons that `ShowAppBtn` shows; any other value shows all of them.
enum EKvRibTitleBarAppBtnShowState : int
{
    kKvAppBtnAll = 0,       ///< all four
    kKvAppBtnNone = 1,      ///< none
    kKvAppBtnCloseOnly = 2, ///< the one that closes
};

KV_INTERFACES_BEGIN

/// What an application answers for its menu. Never deleted through this interface: it has no virtual
/// destructor. Results are not looked at unless stated otherwise.
class IKvRibbonTitleBarSmartMenu
{
public:
    /// The bar that held it lets go of it; once, as the last call. @return not looked at.
    virtual int Release() { return 0; }
    /// From `BeginAddTitleBar`, with the identifier of the title bar under construction.
    /// @param manager the bar. @param id the title bar. @return not looked at.
    virtual int OnAttach(IKvRibbonTitleBarMgr* /*manager*/, unsigned /*id*/) { return 0; }
    /// Just before `Release`. @return not looked at.
    virtual int OnDetach() { return 0; }
    /// Names the popup menu to open (see `KvGuiRes::RegisterMenu`). @param name receives it, with the
    /// terminator.
    /// @return 1; 0 when there is none.
    virtual int GetMenuName(wchar_t /*name*/[260]) { return 0; }
    /// @param command the chosen one, 0 when the menu was dismissed. @return not looked at.
    virtual int OnCommand(unsigned /*command*/) { return 0; }
};

/// Drives a ribbon title bar. Title bars, one for each application, are found by their identifier, tabs by
/// name within a title bar; the first one wins. Operations return 1, or 0 when the title bar or tab does not
/// exist, and then change nothing. Names hold 63 characters, image keys and labels 259; longer ones are cut.
/// Never deleted through this interface: it has no virtual destructor.
///
/// Order: `BeginAddTitleBar`, any number of `AddRibbonItem`, at most one `RegisterAdvToolWnd`,
/// `EndAddTitleBar`, once for each application; then `ActiveTitleBar`.
class IKvRibbonTitleBarMgr
{
public:
    /// @return under which tool windows are created: the bar itself.
    virtual HWND GetToolWndParent() { return nullptr; }
    /// Activates a title bar and selects a tab: the first enabled one whose flag is set, without one the tab
    /// selected before, else the first enabled one. @param id the title bar. @param redraw not looked at: it
    /// always repaints. @return 1; 0 for none such.
    virtual int ActiveTitleBar(unsigned /*id*/, int /*redraw*/) { return 0; }
    /// Removes a title bar with its tabs; its smart menu is released. When it stood at or before the active
    /// one, the one before the previously active position becomes active.
    /// @param id the title bar. @return 1; 0 for none such.
    virtual int RemoveTitleBar(unsigned /*id*/) { return 0; }
    /// Begins a title bar; one that was begun and not ended is dropped.
    /// @param imageKey base name of its pictures: `<key>` on the application button, `<key>_s` in the switch
    ///        window, `<key>_n` in menus.
    /// @param buttonText the application's name, on the button. @param id the new title bar's.
    /// @param switchName its entry in the switch window; null for the button text.
    /// @param menu may be null. @return 1.
    virtual int BeginAddTitleBar(const wchar_t* /*imageKey*/, const wchar_t* /*buttonText*/,
                                 const wchar_t* /*switchName*/, unsigned /*id*/,
                                 IKvRibbonTitleBarSmartMenu* /*menu*/)
    {
        return 0;
    }
    /// Adds a tab to the title bar under construction. @param name its text, up to 63 characters.
    /// @param toolWindow may be null; told its manager when both it and `handle` are given, and then placed:
    ///        its width stays, its top-left corner and bottom are those of the tool-window area.
    /// @param handle its window, a child of the bar; may be null. Shown while the tab is selected.
    /// @param flag not 0 marks the tab that activation selects. @return 1; 0 when none is under construction.
    virtual int AddRibbonItem(const wchar_t* /*name*/, IKvGuiWnd* /*toolWindow*/, HWND /*handle*/,
                              int /*flag*/)
    {
        return 0;
    }
    /// Gives the title bar under construction the windows at the right end of the tool-window area, shown
    /// with the title bar, whatever its tab. @param first, second, firstHandle, secondHandle null leaves one
    /// out.
    /// @return 1; 0 when none is under construction.
    virtual int RegisterAdvToolWnd(IKvGuiWnd* /*first*/, HWND /*firstHandle*/, IKvGuiWnd* /*second*/,
                                   HWND /*secondHandle*/)
    {
        return 0;
    }
    /// @return 1; 0 for a title bar without tabs, which is dropped, and when none is under construction.
    virtual int EndAddTitleBar() { return 0; }
    /// Renames a tab. @param id, name which one. @param newName its new text. @return 1; 0 for none such.
    virtual int SetRibbonItemName(unsigned /*id*/, const wchar_t* /*name*/, const wchar_t* /*newName*/)
    {
        return 0;
    }
    /// Replaces a tab's tool window; the old one is hidden. @param id, name which one.
    /// @param toolWindow, handle as in `AddRibbonItem`. @return 1; 0 for none such.
    virtual int SetRibbonItemToolWnd(unsigned /*id*/, const wchar_t* /*name*/, IKvGuiWnd* /*toolWindow*/,
                                     HWND /*handle*/)
    {
        return 0;
    }
    /// Selects a tab, of an inactive title bar for its next activation. @param id, name which one.
    /// @return 1; 0 for none such, and for a disabled tab.
    virtual int ActiveRibbonItem(unsigned /*id*/, const wchar_t* /*name*/) { return 0; }
    /// The product label, the first half of the static title ("Kolva" at first).
    /// @param id the title bar. @param title up to 259 characters. @return 1; 0 for none such.
    virtual int SetSysTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// The document label, the second half ("Untitled" at first). Only this one renews the title's tool tip.
    /// @param id the title bar. @param title up to 259 characters. @return 1; 0 for none such.
    virtual int SetDocTitle(unsigned /*id*/, const wchar_t* /*title*/) { return 0; }
    /// Lays out and repaints. @return 1.
    virtual int UpdateTitleBarWindow() { return 0; }
    /// Shows some of the window buttons. @param state which. @return 1.
    virtual int ShowAppBtn(EKvRibTitleBarAppBtnShowState /*state*/) { return 0; }
    /// Opens the list of applications over the frame. @return 1; 0 below two applications.
    virtual int ShowAppSwitchWindow() { return 0; }
};

/// The bar. Alt+F1 opens the list of applications.
class KV_API CKvRibbonTitlebar : public CKvCaptionBar, public IKvRibbonTitleBarMgr
{
    Q_OBJECT
    /// Which window buttons it shows; see `ShowAppBtn`.
    Q_PROPERTY(WindowButtons windowButtons READ ShownButtons WRITE ShowButtons)

public:
    /// EKvRibTitleBarAppBtnShowState by names for forms.
    enum WindowButtons
    {
        AllButtons = kKvAppBtnAll,        ///< all four
        NoButtons = kKvAppBtnNone,        ///< none
        CloseButton = kKvAppBtnCloseOnly, ///< the one that closes
    };
    Q_ENUM(WindowButtons)

    /// A bar without title bars that is not created yet.
    CKvRibbonTitlebar();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvRibbonTitlebar(QWidget* parent);
    ~CKvRibbonTitlebar() override;

    HWND GetToolWndParent() override;
    int ActiveTitleBar(unsigned id, int redraw) override;
    int RemoveTitleBar(unsigned id) override;
    int BeginAddTitleBar(const wchar_t* imageKey, const wchar_t* buttonText, const wchar_t* switchName,
                         unsigned id, IKvRibbonTitleBarSmartMenu* menu) override;
    int AddRibbonItem(const wchar_t* name, IKvGuiWnd* toolWindow, HWND handle, int flag) override;
    int RegisterAdvToolWnd(IKvGuiWnd* first, HWND firstHandle, IKvGuiWnd* second, HWND secondHandle) override;
    int EndAddTitleBar() override;
    int SetRibbonItemName(unsigned id, const wchar_t* name, const wchar_t* newName) override;
    int SetRibbonItemToolWnd(unsigned id, const wchar_t* name, IKvGuiWnd* toolWindow, HWND handle) override;
    int ActiveRibbonItem(unsigned id, const wchar_t* name) override;
    int SetSysTitle(unsigned id, const wchar_t* title) override;
    int SetDocTitle(unsigned id, const wchar_t* title) override;
    int UpdateTitleBarWindow() override;
    int ShowAppBtn(EKvRibTitleBarAppBtnShowState state) override;
    int ShowAppSwitchWindow() override;

    /// Enables or disables a tab; a selected tab that is disabled stays selected. @param id, name which one.
    /// @param enable 0 disables it. @return 1; 0 for none such.
    int EnableRibbonItem(unsigned id, const wchar_t* name, BOOL enable);
    /// @param on while it is (off at first), "NovCG" in the button texts of title bars that are begun becomes
    /// "CG ".
    static void SetShortLabels(BOOL on);

Q_SIGNALS:
    /// The user chose another application, whose title bar is active now. @param id its title bar.
    void TitleBarActivated(quint32 id);
    /// The user selected another tab, whose tool window is shown now. @param id its title bar.
    /// @param name its text.
    void RibbonItemSelected(quint32 id, const QString& name);

private:
    WindowButtons ShownButtons() const;
    void ShowButtons(WindowButtons buttons);
    kv::TitleBarStrip& Bars() const;
};

KV_INTERFACES_END
