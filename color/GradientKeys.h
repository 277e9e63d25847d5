// What the keys of the gradient control mean.
#pragma once

#include "KvPlatform.h"

#include <optional>

namespace kv {

struct GradientKeyCommand
{
    enum Kind
    {
        Delete,
        Insert,
        SelectFirst,
        SelectLast,
        SelectStep,    ///< `amount` stops on
        MoveStop,      ///< `amount` pixels
        MoveMidBefore, ///< the mid point before the selected stop, `amount` hundredths
        MoveMidAfter,
    };

    Kind kind;
    int amount;
};

std::optional<GradientKeyCommand> GradientKeyCommandOf(UINT key, Qt::KeyboardModifiers modifiers);

} // namespace kv
