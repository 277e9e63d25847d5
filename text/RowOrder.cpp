#include "text/RowOrder.h"

namespace kv {

std::vector<int> ArrangedOrder(int count, std::span<const RowPlacing> placings)
{
    const auto size = static_cast<std::size_t>(count);
    std::vector<bool> isPlaced(size + 1);
    for (const RowPlacing& placing : placings)
        isPlaced[static_cast<std::size_t>(placing.line)] = true;
    std::vector<std::vector<int>> groups(size + 1);
    for (const RowPlacing& placing : placings) {
        auto before = static_cast<std::size_t>(placing.before);
        while (isPlaced[before])
            ++before;
        groups[before].push_back(placing.line);
    }
    std::vector<int> order;
    order.reserve(size);
    for (std::size_t line = 0; line <= size; ++line) {
        order.insert(order.end(), groups[line].begin(), groups[line].end());
        if (line < size && !isPlaced[line])
            order.push_back(static_cast<int>(line));
    }
    return order;
}

} // namespace kv
