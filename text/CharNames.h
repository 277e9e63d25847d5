// The Unicode names of characters.
#pragma once

#include "text/CharSearch.h"

#include <QString>

namespace kv {

/// The name, or the kind and code of a character that has none, such as "<control-0009>".
std::string CharName(char16_t code);
/// "U+00E9".
QString CharCode(char16_t code);
/// Both: "U+00E9 LATIN SMALL LETTER E WITH ACUTE".
QString CharCodeAndName(char16_t code);

/// The names of all characters of a grid; made at the first call.
const CharNameIndex& CharNames();

} // namespace kv
