// Whoever follows the lines of a report list from outside of it.
#pragma once

#include <span>

namespace kv {

class ReportObserver
{
public:
    virtual ~ReportObserver() = default;

    /// Lines are about to come (1), to go (2), or all to go (3): kinds of EKvReportModify.
    /// @param lines ascending: where new ones will stand, or where those stand that go; none of kind 3.
    virtual void Changing(int kind, std::span<const int> lines) = 0;
    /// They have come or gone; or a line's texts or colours are others (4), or the order is (5: the
    /// permutation, as `SortRows` has it).
    virtual void Changed(int kind, std::span<const int> lines) = 0;
    virtual void ColumnAdding(int column) = 0;
    virtual void ColumnAdded() = 0;
    virtual void HeaderChanged(int column) = 0;
    /// The list is being destroyed.
    virtual void ListGone() = 0;
};

} // namespace kv
