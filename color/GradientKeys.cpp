#include "color/GradientKeys.h"

#include "platform/VirtualKey.h"

namespace kv {

namespace {

using Command = GradientKeyCommand;

std::optional<Command> HorizontalArrow(int direction, Qt::KeyboardModifiers held)
{
    if (held == Qt::NoModifier)
        return Command{Command::MoveStop, direction};
    if (held == Qt::ShiftModifier)
        return Command{Command::MoveStop, 10 * direction};
    if (held == Qt::AltModifier)
        return Command{Command::MoveMidBefore, direction};
    if (held == (Qt::AltModifier | Qt::ShiftModifier))
        return Command{Command::MoveMidAfter, direction};
    return std::nullopt;
}

} // namespace

std::optional<GradientKeyCommand> GradientKeyCommandOf(UINT key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = HeldModifiers(modifiers);
    if (key == VK_LEFT || key == VK_RIGHT)
        return HorizontalArrow(key == VK_LEFT ? -1 : 1, held);
    if (key == VK_DELETE && !held.testFlag(Qt::AltModifier))
        return Command{Command::Delete, 0};
    if (held != Qt::NoModifier)
        return std::nullopt;
    switch (key) {
    case VK_INSERT:
        return Command{Command::Insert, 0};
    case VK_HOME:
        return Command{Command::SelectFirst, 0};
    case VK_END:
        return Command{Command::SelectLast, 0};
    case VK_UP:
        return Command{Command::SelectStep, -1};
    case VK_DOWN:
        return Command{Command::SelectStep, 1};
    default:
        return std::nullopt;
    }
}

} // namespace kv
