// Which subtitle plays at a frame, found in logarithmic time. Pure.
#pragma once

#include "text/TimecodeEdit.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kv {

/// When a row plays, in frames.
struct PlaySpan
{
    std::uint32_t in = kNoTimecode;  ///< none: never
    std::uint32_t out = kNoTimecode; ///< exclusive; none: to the next in time of any row
};

class PlayIndex
{
public:
    PlayIndex() = default;
    /// @param spans one a row, in the rows' order.
    explicit PlayIndex(const std::vector<PlaySpan>& spans);

    /// Of the rows that play at that frame the one that starts latest; of several that start together the
    /// last one. @return -1 when none plays.
    int Find(std::uint32_t frame) const;

private:
    struct Entry
    {
        std::uint32_t in;
        std::uint32_t latestEnd; ///< of the entries below this one's node in the tree, see Build
        std::uint32_t end;
        int line;
    };
    std::uint32_t Build(std::size_t first, std::size_t last);
    int FindIn(std::size_t first, std::size_t last, std::uint32_t frame) const;

    // By start. They are at the same time a balanced tree: the middle one of a range is its root.
    std::vector<Entry> m_entries;
};

} // namespace kv
