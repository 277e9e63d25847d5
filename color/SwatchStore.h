// The swatches that all grids of a process show, and the file that they come from.
#pragma once

#include "color/FixedAlphas.h"
#include "color/SwatchProfile.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kv {

/// The greys of the four alpha cells; they need no file.
inline constexpr std::array<std::uint32_t, 4> kFixedAlphaColours{0xFF000000u, 0xFF555555u, 0xFFAAAAAAu,
                                                                 0xFFFFFFFFu};

class SwatchStore
{
public:
    /// 0xAARRGGBB, row by row.
    const std::vector<std::uint32_t>& Colours() const { return m_colours; }
    int Count() const { return static_cast<int>(m_colours.size()); }

    /// @return false, nothing changed, unless 0 ≤ index < Count().
    bool SetColour(int index, std::uint32_t colour);

    /// Takes the swatches of a file. @return false, nothing changed, when there is none to read, a head count
    /// is below 1 or there are more than kMostSwatches.
    bool Read(std::wstring_view path, SwatchSet set);
    /// Writes all swatches as the user's into a file whose head has their number, as one replacement of the
    /// whole file; everything else in it survives. @return false with the old file whole.
    bool Write(std::wstring_view path) const;

    /// Loads the user's swatches, once: every further call without `reset` is false, also when the first one
    /// failed. A reset takes the factory's at any time and makes them the user's in the file.
    bool Initialise(std::wstring_view path, bool reset);

private:
    std::vector<std::uint32_t> m_colours;
    bool m_firstLoad = true;
};

/// Writes the factory's profile where there is no file. @return true when there is one that can be read
/// afterwards.
bool InstallFactorySwatches(std::wstring_view path);

} // namespace kv
