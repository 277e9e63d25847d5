// The built-in resources as tables: texts by number and menus by number.
#pragma once

#include <cstdint>
#include <span>

namespace kv {

struct TextEntry
{
    std::uint32_t group; ///< the menu's or dialog's number; 0 for strings and tips
    std::uint32_t number;
    const wchar_t* text;
};

/// The command of a separator.
inline constexpr std::uint32_t kMenuSeparator = 0;

/// One item of a menu's first popup.
struct MenuEntry
{
    std::uint32_t menu;
    std::uint32_t command;
};

// Each table is sorted by (group, number).
std::span<const TextEntry> BuiltInStrings();
std::span<const TextEntry> BuiltInMenuTexts();
std::span<const TextEntry> BuiltInDialogTexts();
std::span<const TextEntry> BuiltInTips();
/// In display order.
std::span<const MenuEntry> BuiltInMenus();

} // namespace kv
