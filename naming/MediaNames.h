// The names of a folder's files, in code-point order and searchable by how they begin.
#pragma once

#include "naming/MediaTexts.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The number of a name: its place in code-point order.
using MediaName = std::uint32_t;

/// A set of file names. Fill it with `Add`, call `Sort` once, then search it. At most 2^31 names.
class MediaNames
{
public:
    /// Takes a name without its folder; an empty one is left out. It ends before its first NUL, as a file
    /// name does.
    void Add(std::wstring_view name);
    /// Puts the names in code-point order, each once. The numbers of names are valid from here on.
    void Sort();

    MediaName Count() const { return static_cast<MediaName>(m_ends.size()); }
    std::wstring_view operator[](MediaName name) const
    {
        const std::size_t begin = name == 0 ? 0 : m_ends[name - 1];
        return std::wstring_view(m_text).substr(begin, m_ends[name] - begin);
    }

    /// Places in the order of the case-folded names, first to last − 1.
    struct Range
    {
        std::uint32_t first;
        std::uint32_t last;
        std::uint32_t Size() const { return last - first; }
        bool Holds(std::uint32_t place) const { return place >= first && place < last; }
    };

    /// The names that begin with a text, in any case. Quick when they are not far from the name `near`.
    /// @param folded the text as AppendFolded gives it.
    Range StartingWith(std::string_view folded, MediaName near) const;
    /// The names that are equal to a text but for the case.
    Range EqualTo(std::string_view folded, MediaName near) const;
    /// The name at a place of the case-folded order.
    MediaName At(std::uint32_t place) const { return m_foldedOrder[place]; }

private:
    void IndexFolded(const MediaTexts& folded);
    std::uint32_t FirstNotBelow(std::string_view folded, std::uint32_t near) const;
    std::uint32_t FirstNotStarting(std::string_view folded, std::uint32_t from) const;

    MediaTexts m_added; // until they are sorted
    std::wstring m_text;
    std::vector<std::size_t> m_ends;
    MediaTexts m_folded;                      // in case-folded order
    std::vector<MediaName> m_foldedOrder;     // place → name
    std::vector<std::uint32_t> m_foldedPlace; // name → place
};

} // namespace kv
