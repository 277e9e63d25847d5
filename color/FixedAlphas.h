// The alphas that a user picks without a number.
#pragma once

#include <array>

namespace kv {

/// What the alpha cells of a swatch grid stand for, 0 … 255, in their order.
inline constexpr std::array<int, 4> kFixedAlphas{0, 64, 128, 255};

} // namespace kv
