// The built-in resources as tables: texts, menus and dialog templates by number.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace kv {

struct TextEntry
{
    std::uint32_t group; ///< the menu's or dialog's number; 0 for strings and tips
    std::uint32_t number;
    const wchar_t* text;
};

/// True when a table of texts is as a look-up needs it: in order, and no number twice.
constexpr bool AreSorted(std::span<const TextEntry> texts)
{
    return std::adjacent_find(texts.begin(), texts.end(), [](const TextEntry& a, const TextEntry& b) {
               return a.group != b.group ? a.group > b.group : a.number >= b.number;
           }) == texts.end();
}

/// The command of a separator.
inline constexpr std::uint32_t kMenuSeparator = 0;

/// One item of a menu's first popup.
struct MenuEntry
{
    std::uint32_t menu;
    std::uint32_t command;
};

/// The text number of a dialog's title.
inline constexpr std::uint32_t kDialogTitle = 0;
/// The item number of a text that nobody asks for.
inline constexpr std::uint32_t kNoDialogItem = 0xFFFFFFFF;

enum class DialogItemKind : std::uint8_t
{
    Static,
    Button,
    DefaultButton,
    CheckBox,
    Edit ///< one line; its text is the user's
};

/// What an item does with the room of a dialog that is larger than its template.
enum class DialogGrowth : std::uint8_t
{
    Keep,          ///< keeps its place
    Widen,         ///< takes the width
    KeepRight,     ///< keeps its distance to the right edge
    WidenAtBottom, ///< keeps its distance to the bottom and takes the width
    TakeRoom,      ///< takes width and height
    TakeHeight,    ///< keeps its distance to the left edge and takes the height
    TallAtRight,   ///< keeps its distance to the right edge and takes the height
};

/// One item of a dialog, in dialog units.
struct DialogItem
{
    std::uint32_t dialog;
    std::uint32_t id;
    std::uint32_t text; ///< its text's number within the dialog
    DialogItemKind kind;
    DialogGrowth growth;
    std::int16_t x, y, width, height;
};

/// A dialog: the size of its client area in dialog units.
struct DialogTemplate
{
    std::uint32_t number;
    std::int16_t width, height;
};

// Each table of texts is sorted by (group, number).
std::span<const TextEntry> BuiltInStrings();
std::span<const TextEntry> BuiltInMenuTexts();
std::span<const TextEntry> BuiltInDialogTexts();
std::span<const TextEntry> BuiltInTips();
/// In display order.
std::span<const MenuEntry> BuiltInMenus();
std::span<const DialogTemplate> BuiltInDialogs();
/// In the order of the Tab key.
std::span<const DialogItem> BuiltInDialogItems();

} // namespace kv
