#include "naming/MediaTextOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>

namespace kv {
namespace {

constexpr std::size_t kKeyBytes = 8;

// A text's place in the order as far as eight of its bytes tell; shorter ones end in zeros.
struct SortItem
{
    std::uint64_t key;
    std::uint32_t index;
};

// Items that are equal up to `depth` bytes and still to be sorted.
struct SortRun
{
    std::size_t begin;
    std::size_t end;
    std::size_t depth;
};

// The eight bytes at `depth` as a number that compares as they do.
std::uint64_t KeyAt(std::string_view text, std::size_t depth)
{
    const std::size_t left = text.size() - std::min(depth, text.size());
    std::array<unsigned char, kKeyBytes> bytes{};
    if (left >= kKeyBytes)
        std::memcpy(bytes.data(), text.data() + depth, kKeyBytes);
    else
        std::copy_n(text.end() - static_cast<std::ptrdiff_t>(left), left, bytes.begin());
    std::uint64_t key = 0;
    for (const unsigned char byte : bytes)
        key = (key << 8) | byte;
    return key;
}

// No text holds a NUL, so a zero in the last place says that all of them have ended.
bool HasEnded(std::uint64_t key)
{
    return (key & 0xFF) == 0;
}

struct ByKey
{
    bool operator()(const SortItem& a, const SortItem& b) const { return a.key < b.key; }
};

// Loads the keys of a run, behind the bytes that all of its texts have in common.
void LoadKeys(const MediaTexts& texts, std::vector<SortItem>& items, SortRun& run)
{
    const std::span<SortItem> part = std::span(items).subspan(run.begin, run.end - run.begin);
    const auto load = [&] {
        std::uint64_t different = 0;
        for (SortItem& item : part) {
            item.key = KeyAt(texts[item.index], run.depth);
            different |= item.key ^ part.front().key;
        }
        return static_cast<std::size_t>(std::countl_zero(different)) / 8;
    };
    const std::size_t common = load();
    if (common > 0 && common < kKeyBytes) {
        run.depth += common;
        load();
    }
}

void PushEqualRuns(const std::vector<SortItem>& items, const SortRun& run, std::vector<SortRun>& runs)
{
    for (std::size_t first = run.begin; first < run.end;) {
        std::size_t last = first + 1;
        while (last < run.end && items[last].key == items[first].key)
            ++last;
        if (last - first > 1 && !HasEnded(items[first].key))
            runs.push_back({first, last, run.depth + kKeyBytes});
        first = last;
    }
}

} // namespace

std::vector<std::uint32_t> SortedOrder(const MediaTexts& texts)
{
    std::vector<SortItem> items(texts.Count());
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i].index = static_cast<std::uint32_t>(i);

    std::vector<SortRun> runs;
    if (items.size() > 1)
        runs.push_back({0, items.size(), 0});
    while (!runs.empty()) {
        SortRun run = runs.back();
        runs.pop_back();
        const auto begin = items.begin() + static_cast<std::ptrdiff_t>(run.begin);
        const auto end = items.begin() + static_cast<std::ptrdiff_t>(run.end);
        LoadKeys(texts, items, run);
        if (!std::is_sorted(begin, end, ByKey()))
            std::sort(begin, end, ByKey());
        PushEqualRuns(items, run, runs);
    }

    std::vector<std::uint32_t> order(items.size());
    std::transform(items.begin(), items.end(), order.begin(),
                   [](const SortItem& item) { return item.index; });
    return order;
}

} // namespace kv
