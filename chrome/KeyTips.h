// The letters and digits that press the parts of a caption strip together with Alt. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// What a part may have as its key.
enum class KeyTipKind
{
    Mnemonic, ///< a menu's entry: the letter that its text marks, nothing else
    Tab,      ///< a digit by its place among the tabs; from the tenth on a free letter of its name
    Button    ///< a letter of its name, or any free one
};

struct KeyTipPart
{
    KeyTipKind kind = KeyTipKind::Button;
    std::wstring label;   ///< as it is shown
    wchar_t mnemonic = 0; ///< of a menu's entry; 0 for none
};

/// The key of each part, "A" to "Z" or "1" to "9"; 0 for a part that has none. No key twice: of two entries
/// with the same mnemonic the first has it. What is added at the end takes no key from a tab or an entry.
/// @param held keys that tabs and buttons do not get; an entry's mnemonic comes before them.
std::vector<wchar_t> AssignKeyTips(const std::vector<KeyTipPart>& parts, std::wstring_view held = {});

} // namespace kv
