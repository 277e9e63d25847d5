#include "naming/MediaSearch.h"

#include "core/Wildcard.h"

#include <algorithm>

namespace kv {

MediaSpecification::MediaSpecification(const MediaNames& names, std::wstring_view text, MediaName nearby,
                                       std::string& scratch)
{
    const auto wildcard =
        std::find_if(text.begin(), text.end(), [](wchar_t c) { return c == L'*' || c == L'?'; });
    m_fixedLength = static_cast<std::size_t>(wildcard - text.begin());
    m_rest = text.substr(m_fixedLength);
    scratch.clear();
    AppendFolded(scratch, text.substr(0, m_fixedLength));
    m_range = m_rest.empty() ? names.EqualTo(scratch, nearby) : names.StartingWith(scratch, nearby);
}

bool MediaSpecification::FitsAt(std::uint32_t place, std::wstring_view name) const
{
    return m_range.Holds(place) && FitsWildcard(name.substr(m_fixedLength), m_rest);
}

} // namespace kv
