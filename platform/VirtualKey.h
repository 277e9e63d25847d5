// The toolkit's key events in the field's numbers.
#pragma once

#include "KvTypes.h"

#include <Qt>

class QKeyEvent;

namespace kv {

/// What Ctrl with a letter types.
enum ControlCharacter : UINT
{
    kCtrlC = 3,
    kCtrlF = 6,
    kCtrlV = 22,
    kCtrlX = 24,
    kCtrlY = 25,
    kCtrlZ = 26,
};

constexpr bool IsArrow(UINT key)
{
    return key == VK_LEFT || key == VK_RIGHT || key == VK_UP || key == VK_DOWN;
}

/// Without what tells where a key stands on the keyboard.
constexpr Qt::KeyboardModifiers HeldModifiers(Qt::KeyboardModifiers modifiers)
{
    return modifiers & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
}

/// True when a key with these modifiers is a command, no text.
constexpr bool IsCommand(Qt::KeyboardModifiers modifiers)
{
    return modifiers.testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

/// The virtual key (VK_…, or the character code of a letter or digit key); 0 for a key that has none here.
UINT VirtualKey(const QKeyEvent& event);

/// The letter or digit of a key ("A" to "Z", "0" to "9") as Alt with it means it: that of the layout, else
/// that of the key's place, so that layouts without Latin letters reach them and digits need no Shift.
/// @return 0 for other keys and for the keypad, which composes characters on some systems.
UINT MnemonicKey(const QKeyEvent& event);

/// The UTF-16 unit that the key types; Ctrl+A to Ctrl+Z are 1 to 26; 0 when it types nothing (or more than
/// one unit at once).
UINT KeyCharacter(const QKeyEvent& event);

} // namespace kv
