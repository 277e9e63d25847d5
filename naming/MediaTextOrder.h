// The order of many texts.
#pragma once

#include "naming/MediaTexts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kv {

/// The indexes of the texts in ascending byte order; equal texts stand together in no defined order.
std::vector<std::uint32_t> SortedOrder(const MediaTexts& texts);

/// Visits texts in an order. They stand all over the buffer, so a batch of them is looked at before the first
/// is visited: the memory then answers for all of them at once.
template <typename Visit>
void ForEachInOrder(const MediaTexts& texts, std::span<const std::uint32_t> order, Visit visit)
{
    std::array<std::string_view, 32> batch;
    for (std::size_t first = 0; first < order.size(); first += batch.size()) {
        const std::size_t count = std::min(batch.size(), order.size() - first);
        for (std::size_t i = 0; i < count; ++i)
            batch[i] = texts[order[first + i]];
        [[maybe_unused]] volatile char touched = 0;
        for (std::size_t i = 0; i < count; ++i)
            touched = batch[i].empty() ? '\0' : batch[i].back();
        std::for_each_n(batch.begin(), count, visit);
    }
}

} // namespace kv
