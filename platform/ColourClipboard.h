// One colour on the clipboard, in the private format "DWCOLOR": 4 bytes, ARGB, little-endian.
#pragma once

#include <cstdint>
#include <optional>

namespace kv {

/// Empties the clipboard and places the colour (0xAARRGGBB). @return false when there is no clipboard.
bool CopyColour(std::uint32_t argb);
/// The colour on the clipboard; none when the format is missing or its block is not 4 bytes long.
std::optional<std::uint32_t> ClipboardColour();
/// True when the clipboard offers the format.
bool ClipboardHasColour();

} // namespace kv
