// One colour on the clipboard or in a drag, in the private format "DWCOLOR": 4 bytes, ARGB, little-endian.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

class QMimeData;

namespace kv {

/// The colour (0xAARRGGBB) in the format.
std::unique_ptr<QMimeData> ColourData(std::uint32_t argb);
/// The colour in the data; none when the format is missing or its block is not 4 bytes long.
std::optional<std::uint32_t> ColourOf(const QMimeData& data);

/// Empties the clipboard and places the colour (0xAARRGGBB). @return false when there is no clipboard.
bool CopyColour(std::uint32_t argb);
/// The clipboard's, likewise.
std::optional<std::uint32_t> ClipboardColour();
/// True when the clipboard offers the format.
bool ClipboardHasColour();

} // namespace kv
