// User-visible texts by number, with an overlay for other languages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kv {

/// Strings, menus, dialogs and tool tips are separate tables: a number is unique within its kind only.
enum class TextKind
{
    String,
    Menu,
    Dialog,
    Tip
};

/// Adds a text to the string table, or replaces the one with that number.
void AddText(std::uint32_t number, std::wstring_view text);

/// A text of the overlay, else one that was added, else the built-in one, else empty.
/// @param group the menu's or dialog's number; 0 for strings and tips.
std::wstring LoadText(TextKind kind, std::uint32_t group, std::uint32_t number);

/// A string of the string table.
inline std::wstring LoadText(std::uint32_t number)
{
    return LoadText(TextKind::String, 0, number);
}

/// Overlays the texts of a profile file: sections "Strings" and "Tips" with keys such as 7022, "Menus" and
/// "Dialogs" with keys such as 12002.32772. In a value \n, \r, \t and \\ stand for the line feed, the
/// carriage return, the tabulator and the backslash; a key without a value counts as not translated. It
/// replaces the overlay before it; an empty path removes it. @return false, with the texts unchanged, when
/// the file cannot be read.
bool SetTextOverlay(std::wstring_view path);

/// The same from the bytes of such a file.
void SetTextOverlayBytes(std::string_view bytes);

} // namespace kv
