// The profile that swatches are kept in: head counts, and for each line of swatches a section with the
// factory's colours and one with the user's.
#pragma once

#include "core/ProfileDocument.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Head counts that ask for more are wrong.
inline constexpr int kMostSwatches = 65536;

enum class SwatchSet
{
    Altered, ///< the user's
    Factory,
};

/// A value "R,G,B,A" in decimal as 0xAARRGGBB, of which the first 31 characters count. A number counts only
/// with a comma behind it, what stands behind the third comma is alpha, and what is missing is 255. A number
/// is its leading digits, 0 without any; one outside 0 … 255 makes the whole value opaque white.
std::uint32_t ParseSwatch(std::wstring_view value);
/// " R,G,B,A", with the leading blank.
std::wstring SwatchValue(std::uint32_t colour);

/// The swatches line by line; malformed and missing ones are opaque white. Blanks and one pair of quotes
/// around a value do not count.
/// @return nothing when a head count is below 1 or there are too many swatches.
std::optional<std::vector<std::uint32_t>> ReadSwatches(const ProfileDocument& profile, SwatchSet set);

/// Writes the user's colours. @return false, perhaps with some of them written, when their number is not what
/// the head says or the document takes no values.
bool WriteSwatches(ProfileDocument& profile, std::span<const std::uint32_t> colours);

/// A whole profile: eight lines of four colours, the user's being the factory's.
std::string FactorySwatchProfile();

} // namespace kv
