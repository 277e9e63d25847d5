#include "chrome/MenuBarEvents.h"

#include "chrome/MenuBarStrip.h"
#include "platform/VirtualKey.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcutEvent>

#include <utility>

namespace kv {

namespace {

// A floating tool window leaves shortcuts to the window that it belongs to.
const QWidget* ShortcutWindow(const QWidget* window)
{
    const bool isTool = window && window->windowType() == Qt::Tool && window->parentWidget();
    return isTool ? window->parentWidget()->window() : window;
}

} // namespace

MenuBarEvents::MenuBarEvents(MenuBarStrip& strip) : m_strip(strip)
{
    // Of the application: a key may go to any widget of the window, and the frame may be another one soon.
    if (QCoreApplication* application = QCoreApplication::instance())
        application->installEventFilter(this);
}

void MenuBarEvents::NotePointer()
{
    m_pointer = QCursor::pos();
}

bool MenuBarEvents::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (auto* menu = qobject_cast<QMenu*>(watched))
            return event->type() == QEvent::KeyPress && IsOfPopup(*menu) && HearPopupKey(*menu, key);
        if (!watched->isWidgetType())
            return false;
        const QPointer<QObject> receiver(watched);
        HearKey(static_cast<QWidget&>(*watched), key); // this object may be gone then
        return !receiver;
    }
    case QEvent::Shortcut:
        if (auto* action = qobject_cast<QAction*>(watched)) {
            // Other windows' bars may show the same menu.
            const bool isOurs = ShortcutWindow(QApplication::activeWindow()) == m_strip.Bar().window();
            if (isOurs && !static_cast<QShortcutEvent*>(event)->isAmbiguous())
                m_strip.HearShortcut(*action);
        }
        return false;
    case QEvent::ActionAdded:
    case QEvent::ActionChanged:
    case QEvent::ActionRemoved:
        if (watched == m_strip.m_listened && qobject_cast<QMenu*>(watched)) // it may be going
            m_strip.ReadEntries();
        return false;
    case QEvent::MouseMove:
        if (auto* menu = qobject_cast<QMenu*>(watched))
            return IsOfPopup(*menu) && HearPopupMove(static_cast<QMouseEvent&>(*event));
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (auto* menu = qobject_cast<QMenu*>(watched)) {
            if (IsOfPopup(*menu))
                HearPopupPress(*menu, static_cast<QMouseEvent&>(*event));
        }
        return false;
    default:
        return false;
    }
}

// A key that a widget leaves alone goes on to its parent, as the same event.
bool MenuBarEvents::IsPassedOn(QWidget& receiver, const QKeyEvent& event)
{
    const bool passedOn =
        m_event == &event && m_time == event.timestamp() && m_receiver && receiver.isAncestorOf(m_receiver);
    m_event = &event;
    m_time = event.timestamp();
    m_receiver = &receiver;
    return passedOn;
}

void MenuBarEvents::HearKey(QWidget& receiver, const QKeyEvent& event)
{
    const CKvCaptionBar& bar = m_strip.Bar();
    if (ShortcutWindow(receiver.window()) != bar.window() || m_strip.m_open >= 0 || !bar.IsCreated() ||
        !bar.isVisible() || !bar.isEnabled() || IsPassedOn(receiver, event))
        return;
    const bool isOverride = event.type() == QEvent::ShortcutOverride;
    const int key = event.key();
    const Qt::KeyboardModifiers held = HeldModifiers(event.modifiers());
    if (std::exchange(m_answeredKey, 0) == key && !isOverride)
        return;
    const QPointer<MenuBarEvents> self(this);
    const QPointer<QWidget> first(&receiver);
    // Ctrl+Alt types characters on many keyboards.
    const bool isMnemonic = held.testFlag(Qt::AltModifier) && !held.testFlag(Qt::ControlModifier);
    if (isMnemonic && receiver.window() == bar.window())
        PressMnemonic(MnemonicKey(event));
    if (!self || !isOverride)
        return;
    m_answeredKey = key;
    m_event = &event; // not the one that came last while the host ran an event loop
    m_receiver = first;
    m_strip.UpdateShortcuts(key, held);
}

void MenuBarEvents::PressMnemonic(UINT key)
{
    const MenuBarRecord* record = m_strip.ActiveMenu();
    if (record && key != 0)
        m_strip.PopupMenu(record->FindAccelerateIndex(static_cast<char>(key)));
}

bool MenuBarEvents::IsOfPopup(const QMenu& menu) const
{
    for (const QMenu* open = m_strip.m_popup; open && open->isVisible();) {
        if (open == &menu)
            return true;
        const QAction* action = open->activeAction();
        open = action ? action->menu() : nullptr;
    }
    return false;
}

// At its ends a popup gives way to the next one.
bool MenuBarEvents::HearPopupKey(const QMenu& menu, const QKeyEvent& event)
{
    const int key = event.key();
    if ((key != Qt::Key_Left && key != Qt::Key_Right) || HeldModifiers(event.modifiers()) != Qt::NoModifier)
        return false;
    const bool isInwards = (key == Qt::Key_Left) == menu.isRightToLeft();
    const QAction* action = menu.activeAction();
    if (isInwards ? action && action->isEnabled() && action->menu() : &menu != m_strip.m_popup)
        return false;
    const int step = key == Qt::Key_Left ? -1 : 1;
    const int next = NextOpening(m_strip.OpeningItems(), m_strip.m_open, step);
    if (next < 0)
        return false;
    m_strip.GoTo(next, step);
    return true;
}

int MenuBarEvents::ItemAt(const QPoint& screen) const
{
    const CPoint point = m_strip.Bar().mapFromGlobal(screen);
    for (int i = 0; i < m_strip.ItemCount(); ++i) {
        if (m_strip.Item(i).rect.PtInRect(point))
            return i;
    }
    return -1;
}

bool MenuBarEvents::HearPopupMove(const QMouseEvent& event)
{
    const QPoint screen = event.globalPosition().toPoint();
    if (screen == m_pointer) // an opened popup is told where the pointer rests
        return false;
    m_pointer = screen;
    m_strip.HoverAt(screen);
    if (QApplication::activePopupWidget() && QApplication::activePopupWidget()->geometry().contains(screen))
        return false;
    const int item = ItemAt(screen);
    const MenuBarRecord* record = m_strip.ActiveMenu();
    if (item < 0 || item == m_strip.m_open || !record->SubMenu(item))
        return false;
    m_strip.GoTo(item);
    return true;
}

// A press on the item of the open popup closes it; passed on to the bar, it would open it again.
void MenuBarEvents::HearPopupPress(const QMenu& menu, const QMouseEvent& event)
{
    const QPoint screen = event.globalPosition().toPoint();
    m_strip.m_popup->setAttribute(Qt::WA_NoMouseReplay,
                                  !menu.geometry().contains(screen) && ItemAt(screen) == m_strip.m_open);
}

} // namespace kv
