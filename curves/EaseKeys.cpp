#include "curves/EaseKeys.h"

#include "platform/VirtualKey.h"

namespace kv {

std::optional<EaseCommand> EaseCommandOf(UINT character, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = HeldModifiers(modifiers);
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
