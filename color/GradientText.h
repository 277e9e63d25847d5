// A gradient's stops as a line of text, as forms keep them.
#pragma once

#include "KvTypes.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// "position #aarrggbb" of each stop, in this order, with "; " between them; the mid point behind the colour
/// unless it is 0.5. Reads back as it is.
std::wstring GradientText(std::span<const SKvCGGradientKey> keys);

/// @return the stops in the text's order, none for an empty text; nothing where the text is no such line or a
/// position or mid point is outside of 0 … 1.
std::optional<std::vector<SKvCGGradientKey>> ParseGradientText(std::wstring_view text);

} // namespace kv
