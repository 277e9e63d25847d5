// Files of translated texts: what there is to translate, and what a file gets wrong.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// A built-in text, and where a file has its translation.
struct TextItem
{
    std::wstring section; ///< "Strings", "Menus", "Dialogs" or "Tips"
    std::wstring key;     ///< "7022", "12002.32772"
    std::wstring text;
};

/// The library's own texts, by section and number.
std::vector<TextItem> LibraryTexts();

/// The bytes of a file with these texts, sections together: what a translation begins with.
std::string MakeTextFile(const std::vector<TextItem>& items);

/// What is wrong with a file of translations: a text that is missing, a key that is unknown or stands twice,
/// and a translation that has not what the program needs of it: placeholders, patterns of files, names of
/// options, line breaks, a letter for Alt that its script has, and in a menu another one for each entry. Also
/// an ordinary blank where a no-break one belongs.
/// @return lines for the one who translates; a missing text's is the line to copy, behind "missing: ".
std::vector<std::string> CheckTextFile(const std::vector<TextItem>& items, std::string_view bytes);

} // namespace kv
