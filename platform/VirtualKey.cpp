#include "platform/VirtualKey.h"

#include <QKeyEvent>

#include <string_view>

namespace kv {

namespace {

constexpr bool IsDigit(UINT key)
{
    return key >= '0' && key <= '9';
}

constexpr bool IsLetterOrDigit(UINT key)
{
    return (key >= 'A' && key <= 'Z') || IsDigit(key);
}

// As an English keyboard has it there; 0 for other keys.
UINT KeyAtPlace([[maybe_unused]] const QKeyEvent& event)
{
#if defined(Q_OS_WIN)
    const UINT key = event.nativeVirtualKey();
    return IsLetterOrDigit(key) ? key : 0;
#elif defined(Q_OS_MACOS)
    return 0; // Alt types characters
#else
    struct Row
    {
        UINT first; // key code of X11 and Wayland
        std::string_view keys;
    };
    constexpr Row rows[] = {{10, "1234567890"}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    const UINT code = event.nativeScanCode();
    for (const Row& row : rows) {
        if (code >= row.first && code - row.first < row.keys.size())
            return static_cast<unsigned char>(row.keys[code - row.first]);
    }
    return 0;
#endif
}

} // namespace

UINT VirtualKey(const QKeyEvent& event)
{
    const int key = event.key();
    if (IsLetterOrDigit(static_cast<UINT>(key)))
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

UINT MnemonicKey(const QKeyEvent& event)
{
    constexpr UINT lastLatin = 0xFF;
    const auto key = static_cast<UINT>(event.key());
    if (event.modifiers().testFlag(Qt::KeypadModifier))
        return 0;
    if (IsLetterOrDigit(key))
        return key;
    const UINT place = KeyAtPlace(event);
    const bool isForeignLetter = key > lastLatin && key < Qt::Key_Escape;
    return isForeignLetter || IsDigit(place) ? place : 0;
}

UINT KeyCharacter(const QKeyEvent& event)
{
    const QString text = event.text();
    const UINT typed = text.size() == 1 ? text.front().unicode() : 0u;
    const int key = event.key();
    if (!event.modifiers().testFlag(Qt::ControlModifier))
        return typed;
    // Ctrl with another modifier is some other command, unless it types something, as AltGr does.
    if (event.modifiers().testAnyFlags(Qt::AltModifier | Qt::MetaModifier))
        return typed < UINT{' '} ? 0 : typed;
    if ((typed == 0 || typed >= UINT{' '}) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return static_cast<UINT>(key - Qt::Key_A + 1);
    return typed;
}

} // namespace kv
