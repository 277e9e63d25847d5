#include "resources/Tables.h"

namespace kv {

std::span<const DialogTemplate> BuiltInDialogs()
{
    static constexpr DialogTemplate dialogs[] = {
        {10034, 244, 64},  // find and replace
        {12016, 411, 211}, // ease dialog
        {14010, 172, 104}, // colour panel
        {20400, 0, 0},     // character map, which lays itself out
    };
    return dialogs;
}

std::span<const DialogItem> BuiltInDialogItems()
{
    using enum DialogItemKind;
    using enum DialogGrowth;
    static constexpr DialogItem items[] = {
        {10034, kNoDialogItem, 65535, Static, Keep, 7, 10, 48, 10},
        {10034, 10242, 10242, Edit, Widen, 58, 7, 110, 14},
        {10034, kNoDialogItem, 65534, Static, Keep, 7, 28, 48, 10},
        {10034, 10243, 10243, Edit, Widen, 58, 25, 110, 14},
        {10034, 10240, 10240, CheckBox, Keep, 58, 43, 110, 14},
        {10034, 10235, 10235, DefaultButton, KeepRight, 177, 7, 60, 14},
        {10034, 10244, 10244, Button, KeepRight, 177, 25, 60, 14},
        {10034, 10245, 10245, Button, KeepRight, 177, 43, 60, 14},

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

        {14010, 14023, 14023, Static, TakeRoom, 40, 4, 64, 96},
        {14010, 14024, 14024, Static, TallAtRight, 108, 4, 10, 96},
        {14010, 14025, 14025, Static, TallAtRight, 122, 4, 10, 96},
        {14010, 14035, 14035, Static, KeepRight, 136, 4, 16, 10},
        {14010, 14036, 14036, Static, KeepRight, 152, 4, 16, 10},
        {14010, 14032, 14032, Static, KeepRight, 136, 18, 10, 12},
        {14010, 14026, 14026, Static, KeepRight, 148, 18, 20, 12},
        {14010, 14033, 14033, Static, KeepRight, 136, 33, 10, 12},
        {14010, 14027, 14027, Static, KeepRight, 148, 33, 20, 12},
        {14010, 14034, 14034, Static, KeepRight, 136, 48, 10, 12},
        {14010, 14028, 14028, Static, KeepRight, 148, 48, 20, 12},
        {14010, kNoDialogItem, 65535, Static, KeepRight, 139, 65, 7, 10},
        {14010, 14029, 14029, Static, KeepRight, 148, 63, 20, 12},
        {14010, 14128, 14128, Static, TallAtRight, 136, 80, 32, 20},
        {14010, 14030, 14030, Static, TakeHeight, 4, 4, 32, 96},
    };
    return items;
}

} // namespace kv
