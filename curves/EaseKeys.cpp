#include "curves/EaseKeys.h"

namespace kv {

namespace {

// What Ctrl with a letter types.
enum ControlCharacter : UINT
{
    kCtrlC = 3,
    kCtrlV = 22,
    kCtrlY = 25,
    kCtrlZ = 26,
};

} // namespace

std::optional<EaseCommand> EaseCommandOf(UINT character, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = modifiers & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    if (character == kCtrlZ && held == (Qt::ControlModifier | Qt::ShiftModifier))
        return EaseCommand::Redo;
    if (held != Qt::ControlModifier)
        return std::nullopt;
    switch (character) {
    case kCtrlC:
        return EaseCommand::Copy;
    case kCtrlV:
        return EaseCommand::Paste;
    case kCtrlY:
        return EaseCommand::Redo;
    case kCtrlZ:
        return EaseCommand::Undo;
    default:
        return std::nullopt;
    }
}

} // namespace kv
