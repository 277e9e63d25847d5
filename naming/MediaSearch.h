// Finds the names that fit a specification.
#pragma once

#include "naming/MediaNames.h"

#include <string>
#include <string_view>

namespace kv {

/// A wildcard specification with the names that may fit it: those that begin with its fixed start.
class MediaSpecification
{
public:
    /// @param nearby a name that is likely to stand near the ones sought; it only makes finding them quick.
    MediaSpecification(const MediaNames& names, std::wstring_view text, MediaName nearby,
                       std::string& scratch);

    MediaNames::Range Range() const { return m_range; }
    /// True when the name at a place of the case-folded order fits.
    bool FitsAt(std::uint32_t place, std::wstring_view name) const;

private:
    std::wstring_view m_rest; // what follows the fixed start
    std::size_t m_fixedLength = 0;
    MediaNames::Range m_range{};
};

} // namespace kv
