#include "text/PlayIndex.h"

#include <algorithm>

namespace kv {

PlayIndex::PlayIndex(const std::vector<PlaySpan>& spans)
{
    int line = 0;
    for (const PlaySpan& span : spans) {
        if (span.in != kNoTimecode)
            m_entries.push_back({span.in, 0, span.out, line});
        ++line;
    }
    const auto earlier = [](const Entry& a, const Entry& b) { return a.in < b.in; };
    if (!std::is_sorted(m_entries.begin(), m_entries.end(), earlier))
        std::stable_sort(m_entries.begin(), m_entries.end(), earlier);
    std::uint32_t next = kNoTimecode; // the first start after those of the entries that are still to be seen
    for (std::size_t end = m_entries.size(); end > 0;) {
        const std::uint32_t in = m_entries[end - 1].in;
        for (; end > 0 && m_entries[end - 1].in == in; --end) {
            if (m_entries[end - 1].end == kNoTimecode)
                m_entries[end - 1].end = next;
        }
        next = in;
    }
    Build(0, m_entries.size());
}

// The latest end of the entries first … last - 1, set in each range's middle one.
std::uint32_t PlayIndex::Build(std::size_t first, std::size_t last)
{
    if (first >= last)
        return 0;
    const std::size_t middle = first + (last - first) / 2;
    m_entries[middle].latestEnd =
        std::max({m_entries[middle].end, Build(first, middle), Build(middle + 1, last)});
    return m_entries[middle].latestEnd;
}

// The last one of the entries first … last - 1 that ends after the frame.
int PlayIndex::FindIn(std::size_t first, std::size_t last, std::uint32_t frame) const
{
    if (first >= last)
        return -1;
    const std::size_t middle = first + (last - first) / 2;
    const Entry& entry = m_entries[middle];
    if (entry.latestEnd <= frame)
        return -1;
    // Into the left part only where the right one has nothing: a row that starts too late is cut off first,
    // so that no more than one branch fails half way.
    if (entry.in > frame)
        return FindIn(first, middle, frame);
    const int right = FindIn(middle + 1, last, frame);
    if (right >= 0)
        return right;
    return entry.end > frame ? entry.line : FindIn(first, middle, frame);
}

int PlayIndex::Find(std::uint32_t frame) const
{
    return frame == kNoTimecode ? -1 : FindIn(0, m_entries.size(), frame);
}

} // namespace kv
