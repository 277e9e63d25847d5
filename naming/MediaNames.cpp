#include "naming/MediaNames.h"

#include "naming/MediaTextOrder.h"

#include <algorithm>
#include <utility>

namespace kv {

void MediaNames::Add(std::wstring_view name)
{
    name = name.substr(0, name.find(L'\0'));
    if (name.empty())
        return;
    m_added.Add(name);
}

void MediaNames::Sort()
{
    const std::vector<std::uint32_t> order = SortedOrder(m_added);
    m_text.reserve(m_added.Bytes());
    m_ends.reserve(order.size());
    MediaTexts folded;
    folded.Reserve(order.size(), m_added.Bytes());
    std::string_view previous;
    const auto take = [&](std::string_view name) {
        if (name == previous)
            return;
        previous = name;
        AppendDecoded(m_text, name);
        m_ends.push_back(m_text.size());
        folded.AddFolded(name);
    };
    ForEachInOrder(m_added, order, take);
    m_added = MediaTexts();
    IndexFolded(folded);
}

void MediaNames::IndexFolded(const MediaTexts& folded)
{
    m_foldedOrder = SortedOrder(folded);
    m_folded.Reserve(folded.Count(), folded.Bytes());
    ForEachInOrder(folded, m_foldedOrder, [this](std::string_view name) { m_folded.AddBytes(name); });
    m_foldedPlace.resize(m_foldedOrder.size());
    for (std::uint32_t place = 0; place < m_foldedOrder.size(); ++place)
        m_foldedPlace[m_foldedOrder[place]] = place;
}

namespace {

// The first place in [0, count) at which `isBeyond` holds (count when there is none), given that it holds at
// every later place as well. Looks around `near` in growing steps first, so a near answer costs little.
template <typename Predicate>
std::uint32_t FirstPlace(std::uint32_t count, std::uint32_t near, Predicate isBeyond)
{
    std::uint32_t low = 0;      // not beyond, or 0, below this
    std::uint32_t high = count; // beyond, or the end, from this on
    near = std::min(near, count);
    std::uint32_t step = 1;
    if (near < count && !isBeyond(near)) {
        low = near + 1;
        while (step < high - low && !isBeyond(low + step)) {
            low += step + 1;
            step *= 2;
        }
        high = std::min(high - low, step) + low;
    } else {
        high = near;
        while (step < high && isBeyond(high - step)) {
            high -= step;
            step *= 2;
        }
        low = high - std::min(high, step);
    }
    while (low < high) {
        const std::uint32_t middle = low + (high - low) / 2;
        if (isBeyond(middle))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

} // namespace

std::uint32_t MediaNames::FirstNotBelow(std::string_view folded, std::uint32_t near) const
{
    return FirstPlace(Count(), near, [&](std::uint32_t place) { return m_folded[place] >= folded; });
}

std::uint32_t MediaNames::FirstNotStarting(std::string_view folded, std::uint32_t from) const
{
    return FirstPlace(Count(), from, [&](std::uint32_t place) {
        return m_folded[place].compare(0, folded.size(), folded) > 0;
    });
}

MediaNames::Range MediaNames::StartingWith(std::string_view folded, MediaName near) const
{
    const std::uint32_t first = FirstNotBelow(folded, m_foldedPlace[near]);
    return {first, FirstNotStarting(folded, first)};
}

MediaNames::Range MediaNames::EqualTo(std::string_view folded, MediaName near) const
{
    const std::uint32_t first = FirstNotBelow(folded, m_foldedPlace[near]);
    std::uint32_t last = first;
    while (last < Count() && m_folded[last] == folded)
        ++last;
    return {first, last};
}

} // namespace kv
