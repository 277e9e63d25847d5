// Orders of rows, as permutations: the row that is to come to place i stands at order[i] now. Pure.
#pragma once

#include <algorithm>
#include <numeric>
#include <span>
#include <vector>

namespace kv {

/// The stable order by `isLess`, also when it descends: rows that are equal stay as they stand.
/// @param isLess of two rows by their lines.
template <typename Less>
std::vector<int> SortedOrder(int count, bool ascending, Less isLess)
{
    std::vector<int> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return ascending ? isLess(a, b) : isLess(b, a); });
    return order;
}

/// A row that is to stand before another one.
struct RowPlacing
{
    int line;
    int before; ///< a line, or the count for the end
};

/// The order in which each placed row stands before its row; those before the same one stand as listed.
/// Before a row that is placed itself stands before the next one that is not.
std::vector<int> ArrangedOrder(int count, std::span<const RowPlacing> placings);

} // namespace kv
