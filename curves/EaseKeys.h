// What the keys of the ease curve window and of its dialog mean.
#pragma once

#include "KvPlatform.h"

#include <optional>

namespace kv {

/// What keys do beside walking and moving the handles.
enum class EaseCommand
{
    Undo,
    Redo,
    Copy,
    Paste,
};

/// @param character as `OnChar` gets it.
std::optional<EaseCommand> EaseCommandOf(UINT character, Qt::KeyboardModifiers modifiers);

} // namespace kv
