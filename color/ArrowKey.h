// The arrow keys, for what walks over cells.
#pragma once

namespace kv {

enum class ArrowKey
{
    Left,
    Up,
    Right,
    Down,
};

} // namespace kv
