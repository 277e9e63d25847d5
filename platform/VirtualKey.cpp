#include "platform/VirtualKey.h"

#include <QKeyEvent>

namespace kv {

UINT VirtualKey(const QKeyEvent& event)
{
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return static_cast<UINT>(key);
    switch (key) {
    case Qt::Key_Backspace:
        return VK_BACK;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return VK_RETURN;
    case Qt::Key_Shift:
        return VK_SHIFT;
    case Qt::Key_Control:
        return VK_CONTROL;
    case Qt::Key_Alt:
        return VK_MENU;
    case Qt::Key_Escape:
        return VK_ESCAPE;
    case Qt::Key_Space:
        return VK_SPACE;
    case Qt::Key_PageUp:
        return VK_PRIOR;
    case Qt::Key_PageDown:
        return VK_NEXT;
    case Qt::Key_End:
        return VK_END;
    case Qt::Key_Home:
        return VK_HOME;
    case Qt::Key_Left:
        return VK_LEFT;
    case Qt::Key_Up:
        return VK_UP;
    case Qt::Key_Right:
        return VK_RIGHT;
    case Qt::Key_Down:
        return VK_DOWN;
    case Qt::Key_Insert:
        return VK_INSERT;
    case Qt::Key_Delete:
        return VK_DELETE;
    case Qt::Key_F2:
        return VK_F2;
    default:
        return 0;
    }
}

UINT KeyCharacter(const QKeyEvent& event)
{
    const QString text = event.text();
    const UINT typed = text.size() == 1 ? text.front().unicode() : 0u;
    const int key = event.key();
    const bool controlAlone = event.modifiers().testFlag(Qt::ControlModifier) &&
                              !event.modifiers().testAnyFlags(Qt::AltModifier | Qt::MetaModifier);
    if (controlAlone && (typed == 0 || typed >= UINT{' '}) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return static_cast<UINT>(key - Qt::Key_A + 1);
    return typed;
}

} // namespace kv
