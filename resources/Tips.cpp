#include "resources/Tables.h"

namespace kv {

std::span<const TextEntry> BuiltInTips()
{
    static constexpr TextEntry tips[] = {
        // The find and replace dialog.
        {0, 10235, L"Go to the next place (Enter or F3)"},
        {0, 10242, L"Earlier texts: Up and Down"},
        {0, 10243, L"Earlier texts: Up and Down"},
        {0, 10244, L"Replace the place that was found"},
        {0, 10245, L"Replace every place"},
        // The buttons of the ease dialog.
        {0, 12077, L"Undo the last change (Ctrl+Z)"},
        {0, 12078, L"Back to the curve as it was at first"},
        {0, 12079, L"Redo what was undone (Ctrl+Y)"},
        {0, 12090, L"The same speed all the way"},
        {0, 12091, L"Begin slowly, end fast"},
        {0, 12092, L"Begin fast, end slowly"},
        {0, 12093, L"Previous key"},
        {0, 12094, L"Next key"},
        {0, 12095, L"Begin and end slowly"},
        // The keyframe strip's.
        {0, 15000, L"Toggle Animation"},
        {0, 15001, L"Add/Remove KeyFrame"},
        {0, 15002, L"Go To Prev/Head KeyFrame"},
        {0, 15003, L"Go To Next/Tail KeyFrame"},
        // The character map's.
        {0, 20240, L"Send the selected character to the text (Enter)"},
        {0, 20241, L"Keep the selected character at hand (Ctrl+D)"},
        {0, 20242, L"Add the selected character to the line (Space)"},
        {0, 20243, L"Copy the line, or the selected character while it is empty"},
        {0, 20244, L"A character, a code such as U+E9, or words of a name; F3 goes on"},
    };
    return tips;
}

} // namespace kv
