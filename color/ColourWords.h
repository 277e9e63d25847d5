// Colours in words, for those who hear them.
#pragma once

#include <cstdint>
#include <string>

namespace kv {

/// The everyday word for a colour's hue and lightness, from the string table; opacity does not count.
std::wstring ColourWord(std::uint32_t colour);

/// The word, with the opacity where the colour is translucent.
std::wstring ColourWords(std::uint32_t colour);

} // namespace kv
