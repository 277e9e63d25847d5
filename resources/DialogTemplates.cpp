#include "resources/Tables.h"

namespace kv {

std::span<const DialogTemplate> BuiltInDialogs()
{
    static constexpr DialogTemplate dialogs[] = {
        {12016, 411, 211}, // ease dialog
    };
    return dialogs;
}

std::span<const DialogItem> BuiltInDialogItems()
{
    using enum DialogItemKind;
    using enum DialogGrowth;
    static constexpr DialogItem items[] = {
        {12016, 12088, 12088, Static, TakeRoom, 7, 7, 341, 180},
        {12016, 12077, 12077, Button, KeepRight, 354, 7, 50, 14},
        {12016, 12079, 12079, Button, KeepRight, 354, 23, 50, 14},
        {12016, 12078, 12078, Button, KeepRight, 354, 42, 50, 14},
        {12016, 12090, 12090, Button, KeepRight, 354, 61, 50, 14},
        {12016, 12091, 12091, Button, KeepRight, 354, 76, 50, 14},
        {12016, 12092, 12092, Button, KeepRight, 354, 91, 50, 14},
        {12016, 12095, 12095, Button, KeepRight, 354, 106, 50, 14},
        {12016, 12093, 12093, Button, KeepRight, 354, 125, 23, 14},
        {12016, 12094, 12094, Button, KeepRight, 380, 125, 23, 14},
        {12016, 1, 1, DefaultButton, KeepRight, 354, 153, 50, 14},
        {12016, 2, 2, Button, KeepRight, 354, 172, 50, 14},
        {12016, kNoDialogItem, 65535, Static, WidenAtBottom, 7, 192, 397, 12},
    };
    return items;
}

} // namespace kv
