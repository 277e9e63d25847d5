#include "resources/Tables.h"

namespace kv {

std::span<const TextEntry> BuiltInMenuTexts()
{
    static constexpr TextEntry texts[] = {
        // 12002: gradient control
        {12002, 32772, L"&Copy"},
        {12002, 32774, L"&Paste"},
        {12002, 32775, L"C&ut"},
        {12002, 32776, L"&Delete"},
        {12002, 32778, L"Re&verse"},
        {12002, 32780, L"Reflec&t"},
        {12002, 32784, L"Sa&me Space"},
        {12002, 32785, L"Exchange &Before"},
        {12002, 32787, L"Exchange A&fter"},
        {12002, 32789, L"&Reset"},
    };
    return texts;
}

std::span<const MenuEntry> BuiltInMenus()
{
    static constexpr MenuEntry menus[] = {
        {12002, 32772},          {12002, 32774}, {12002, 32775},          {12002, 32776},
        {12002, kMenuSeparator}, {12002, 32789}, {12002, kMenuSeparator}, {12002, 32778},
        {12002, 32780},          {12002, 32785}, {12002, 32787},          {12002, 32784},
    };
    return menus;
}

} // namespace kv
