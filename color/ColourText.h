// Colours as text, for the clipboard and for drops.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

struct TypedColour
{
    std::uint32_t colour; ///< 0xAARRGGBB, opaque where the text names no alpha
    bool hasAlpha;

    friend bool operator==(const TypedColour&, const TypedColour&) = default;
};

/// Reads "#rgb", "#rrggbb", "#aarrggbb" and "rgb(r, g, b)" with whole numbers 0 … 255, in either case, with
/// blanks around it. @return nothing for any other text.
std::optional<TypedColour> ParseColourText(std::wstring_view text);

/// "#aarrggbb", which reads back as it is.
std::wstring ColourText(std::uint32_t colour);

} // namespace kv
