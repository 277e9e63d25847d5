// The popups and shortcuts of a menu bar. Every call of the host may remove the menu bar or delete the bar.
#include "chrome/MenuBarEvents.h"
#include "chrome/MenuBarStrip.h"
#include "platform/FrameState.h"

#include <QAction>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace kv {
namespace {

/// The popup stands on the bar's window, although its parent is the host's.
void StandOn(QMenu& popup, const QWidget& bar)
{
    QWindow* frame = bar.window()->windowHandle();
    if (!frame)
        return;
    popup.winId(); // makes the window
    if (QWindow* window = popup.windowHandle(); window && window != frame)
        window->setTransientParent(frame);
}

/// Opens a popup and waits. @return the command, 0 when dismissed; also of a popup that its own entry's
/// action destroyed.
UINT Track(QMenu& menu, const QWidget& bar, const QPoint& screen)
{
    const QPointer<QMenu> popup(&menu);
    const QAction* heard = nullptr; // compared only: it may be gone
    UINT command = 0;
    QObject listener;
    QObject::connect(popup, &QMenu::triggered, &listener, [&](const QAction* action) {
        heard = action;
        command = KvGetMenuCommand(action);
    });
    StandOn(*popup, bar);
    const QAction* chosen = popup->exec(screen);
    if (!popup || chosen == heard)
        return command;
    return KvGetMenuCommand(chosen);
}

} // namespace

void MenuBarStrip::PopupMenu(int index)
{
    if (m_open >= 0) {
        GoTo(index == m_open ? -1 : index);
        return;
    }
    const QPointer<CKvCaptionBar> bar(&Bar());
    m_step = 0;
    m_passed = 0;
    for (int next = index; bar && next >= 0 && m_passed <= ItemCount();)
        next = RunPopup(next);
}

int MenuBarStrip::RunPopup(int index)
{
    MenuBarRecord* record = ActiveMenu();
    QPointer<QMenu> popup = record ? record->SubMenu(index) : nullptr;
    if (!popup || !Bar().IsCreated())
        return -1;
    const Run run(Bar(), *record);
    IKvRibbonMenuBarSmartMenu* smartMenu = record->smartMenu;
    m_next = -1;
    MarkOpen(index);
    if (smartMenu)
        smartMenu->OnBeforePopup(popup);
    UINT command = 0;
    if (run.Lives()) {
        const QAction* entry = record->Entry(index);
        popup = entry ? entry->menu() : nullptr; // the host may have given it another one
        const CRect rect = record->items[static_cast<std::size_t>(index)].rect;
        std::vector<const QMenu*> path;
        const bool lives = !popup || !smartMenu || UpdateMenuState(run, *smartMenu, *popup, path);
        // The host may have activated another menu bar meanwhile, or a user have led to another item.
        if (lives && Active() == record && m_next < 0)
            command = TrackPopup(run, popup, {rect.left, rect.bottom + 1});
    }
    if (!run.bar)
        return -1;
    const int next = m_next;
    MarkOpen(-1);
    if (!run.Lives())
        return -1;
    if (smartMenu)
        smartMenu->OnPopupClosed(popup);
    if (run.Lives() && smartMenu && command != 0)
        smartMenu->OnCommand(popup, command);
    return run.Lives() && Active() == record ? next : -1;
}

UINT MenuBarStrip::TrackPopup(const Run& run, const QPointer<QMenu>& popup, CPoint point)
{
    if (!popup || popup->isEmpty()) {
        ++m_passed;
        if (m_step != 0)
            m_next = NextOpening(OpeningItems(), m_open, m_step);
        return 0;
    }
    m_passed = 0;
    m_popup = popup;
    m_events->NotePointer();
    const UINT command = Track(*popup, Bar(), Bar().mapToGlobal(QPoint(point)));
    if (popup)
        popup->setAttribute(Qt::WA_NoMouseReplay, false);
    if (run.bar)
        m_popup = nullptr;
    return command;
}

// @return false when the menu bar is gone.
bool MenuBarStrip::UpdateMenuState(const Run& run, IKvRibbonMenuBarSmartMenu& smartMenu, QMenu& menu,
                                   std::vector<const QMenu*>& path)
{
    if (std::find(path.begin(), path.end(), &menu) != path.end())
        return true; // a menu within itself
    path.push_back(&menu);
    const QPointer<QMenu> holder(&menu);
    const QList<QAction*> actions = menu.actions();
    const std::vector<QPointer<QAction>> entries(actions.begin(), actions.end());
    for (const QPointer<QAction>& entry : entries) {
        if (!holder || !run.Lives())
            break;
        if (!entry || entry->isSeparator())
            continue;
        if (QMenu* inner = entry->menu())
            UpdateMenuState(run, smartMenu, *inner, path);
        else
            smartMenu.OnUpdateCommand(holder, KvGetMenuCommand(entry));
    }
    path.pop_back();
    return run.Lives();
}

void MenuBarStrip::GoTo(int index, int step)
{
    m_next = index;
    m_step = step;
    if (m_popup)
        m_popup->close();
}

void MenuBarStrip::ClosePopups()
{
    const QPointer<CKvCaptionBar> bar(&Bar());
    if (m_buttonPopup)
        m_buttonPopup->close(); // the host hears of it
    if (bar)
        GoTo(-1);
    if (bar)
        MarkOpen(-1);
}

void MenuBarStrip::MarkOpen(int index)
{
    InvalidateItem(m_open);
    m_open = index;
    InvalidateItem(m_open);
    for (int i = 0; i < ItemCount(); ++i)
        Item(i).open = i == index;
}

std::vector<bool> MenuBarStrip::OpeningItems() const
{
    std::vector<bool> opens;
    const MenuBarRecord* record = ActiveMenu();
    for (int i = 0; i < ItemCount(); ++i)
        opens.push_back(record->SubMenu(i) != nullptr);
    return opens;
}

void MenuBarStrip::OpenMenuButtonMenu()
{
    const MenuBarRecord* record = ActiveMenu();
    if (!record || !record->buttonMenu)
        return;
    const AppButtonCallback callback = record->buttonCallback;
    void* const context = record->buttonContext;
    const Run run(Bar(), *record);
    const QWidget& button = Button(kKvCaptionMenu);
    m_buttonPopup = record->buttonMenu;
    const UINT command =
        Track(*record->buttonMenu, Bar(), button.mapToGlobal(QPoint(0, button.height() + 1)));
    if (run.bar)
        m_buttonPopup = nullptr;
    if (command != 0 && run.Lives())
        callback(command, context);
}

void MenuBarStrip::PrepareApplicationMenu(CKvMenu& menu)
{
    QMenu* handle = menu.GetHandle();
    if (!handle)
        return;
    constexpr int separatorPlace = 4;
    const QList<QAction*> actions = handle->actions();
    if (actions.size() > separatorPlace && actions[separatorPlace]->isSeparator())
        delete actions[separatorPlace];
    for (QAction* action : handle->actions()) {
        if (IsApplicationCommand(KvGetMenuCommand(action)))
            delete action;
    }
    EnableFrameEntries(menu, *Frame());
}

// --- Shortcuts ---

// The toolkit finds the shortcuts of a menu's entries where the menu's own action belongs to a widget.
void MenuBarStrip::ListenToMenu()
{
    const MenuBarRecord* record = ActiveMenu();
    QMenu* menu = record ? record->menu.data() : nullptr;
    if (m_listened == menu)
        return;
    if (auto* before = qobject_cast<QMenu*>(m_listened.data())) {
        Bar().removeAction(before->menuAction());
        before->disconnect(m_events.get());
    }
    m_listened = menu;
    if (!menu)
        return;
    Bar().addAction(menu->menuAction());
    // Queued: a widget says so before pointers to it are cleared.
    QObject::connect(
        menu, &QObject::destroyed, m_events.get(), [this] { ReadEntries(); }, Qt::QueuedConnection);
}

template <typename Predicate>
std::vector<MenuBarStrip::Entry> MenuBarStrip::FindEntries(Predicate matches) const
{
    std::vector<Entry> found;
    std::vector<const QMenu*> path;
    const auto search = [&](QMenu& popup, QMenu& menu, const auto& self) -> void {
        if (std::find(path.begin(), path.end(), &menu) != path.end())
            return;
        path.push_back(&menu);
        for (QAction* action : menu.actions()) {
            if (QMenu* inner = action->menu())
                self(popup, *inner, self);
            else if (KvGetMenuCommand(action) != 0 && matches(*action))
                found.push_back({&popup, &menu, action});
        }
        path.pop_back();
    };
    const MenuBarRecord* record = ActiveMenu();
    for (int i = 0; i < ItemCount(); ++i) {
        QAction* item = record->Entry(i);
        if (!item)
            continue;
        if (QMenu* popup = item->menu())
            search(*popup, *popup, search);
        else if (KvGetMenuCommand(item) != 0 && matches(*item))
            found.push_back({record->menu, record->menu, item});
    }
    return found;
}

// Before the toolkit looks for the key: what the last update disabled is found only if this one enables it.
void MenuBarStrip::UpdateShortcuts(int key, Qt::KeyboardModifiers modifiers)
{
    const MenuBarRecord* record = ActiveMenu();
    if (!record || !record->smartMenu)
        return;
    const auto withKey = [key, modifiers](Qt::KeyboardModifiers heeded) {
        return [key, wanted = modifiers & heeded, heeded](const QAction& action) {
            for (const QKeySequence& sequence : action.shortcuts()) {
                for (int i = 0; i < sequence.count(); ++i) {
                    const QKeyCombination stroke = sequence[static_cast<uint>(i)];
                    if (stroke.key() == key && (stroke.keyboardModifiers() & heeded) == wanted)
                        return true;
                }
            }
            return false;
        };
    };
    std::vector<Entry> entries = FindEntries(withKey(~Qt::KeyboardModifiers()));
    if (entries.empty()) // Shift may be what types the key, "+" for one
        entries = FindEntries(withKey(~Qt::KeyboardModifiers(Qt::ShiftModifier)));
    const Run run(Bar(), *record);
    IKvRibbonMenuBarSmartMenu* smartMenu = record->smartMenu;
    for (const Entry& entry : entries) {
        if (run.Lives() && entry.menu && entry.action)
            smartMenu->OnUpdateCommand(entry.menu, KvGetMenuCommand(entry.action));
    }
}

// A shortcut is about to trigger an entry; other ways to trigger it are no business of the menu bar.
void MenuBarStrip::HearShortcut(QAction& action)
{
    m_pressed.reset();
    const MenuBarRecord* record = ActiveMenu();
    if (m_open >= 0 || !record || !record->smartMenu)
        return;
    const std::vector<Entry> entries =
        FindEntries([&action](const QAction& other) { return &other == &action; });
    if (entries.empty())
        return;
    m_pressed = std::make_unique<QObject>();
    const auto tell = [this, record, run = Run(Bar(), *record), popup = entries.front().popup,
                       command = KvGetMenuCommand(&action)] {
        if (!run.Lives())
            return;
        m_pressed.reset(); // once; the caller keeps what is captured here
        record->smartMenu->OnCommand(popup, command);
    };
    QObject::connect(&action, &QAction::triggered, m_pressed.get(), tell);
}

} // namespace kv
