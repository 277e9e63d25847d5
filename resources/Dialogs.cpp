#include "resources/Tables.h"

namespace kv {

// The number 0 is the title; texts of items that have no number of their own count down from 65535.
std::span<const TextEntry> BuiltInDialogTexts()
{
    static constexpr TextEntry texts[] = {
        // 10034: find and replace
        {10034, kDialogTitle, L"Find and Replace"},
        {10034, 10235, L"Find Next"},
        {10034, 10240, L"Match case"},
        {10034, 10244, L"Replace"},
        {10034, 10245, L"Replace All"},
        {10034, 65534, L"Replace with:"},
        {10034, 65535, L"Find what:"},
        // 12016: ease dialog
        {12016, kDialogTitle, L"Parameter Curve Setup"},
        {12016, 1, L"OK"},
        {12016, 2, L"Cancel"},
        {12016, 12077, L"Undo"},
        {12016, 12078, L"Reset"},
        {12016, 12079, L"Redo"},
        {12016, 12088, L"Static"},
        {12016, 12090, L"Linear"},
        {12016, 12091, L"Speed Up"},
        {12016, 12092, L"Speed Down"},
        {12016, 12093, L"|<"},
        {12016, 12094, L">|"},
        {12016, 12095, L"Ease in out"},
        {12016, 65535,
         L"middle button/wheel--zoom view vertically; right button--pan view vertically; "
         L"double click--reset view"},
        // 14010: colour panel
        {14010, kDialogTitle, L"Color"},
        {14010, 65535, L"A"},
        // 20400: character map
        {20400, kDialogTitle, L"Character Map"},
    };
    return texts;
}

} // namespace kv
