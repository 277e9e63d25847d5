#include "text/CharMapModel.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace kv {

void CharMapModel::SetTable(CodeTable table)
{
    m_table = std::move(table);
    m_first = 0;
    m_selected = -1;
    m_wheel = {};
}

bool CharMapModel::SetFirst(int first)
{
    first = std::clamp(first, 0, LastFirstChar(Count()));
    first -= first % kCharColumns;
    return std::exchange(m_first, first) != first;
}

bool CharMapModel::ScrollRows(int rows)
{
    constexpr int kMost = 0x10000 / kCharColumns + 1; // rows of the largest table
    return SetFirst(m_first + std::clamp(rows, -kMost, kMost) * kCharColumns);
}

bool CharMapModel::Wheel(int delta)
{
    return ScrollRows(-m_wheel.Turn(delta));
}

bool CharMapModel::Select(int index)
{
    const int selected = index >= 0 && index < Count() ? index : -1;
    if (selected >= 0) {
        const int row = selected / kCharColumns;
        const int top = m_first / kCharColumns;
        SetFirst(std::clamp(top, row - (kCharRows - 1), row) * kCharColumns);
    }
    return std::exchange(m_selected, selected) != selected;
}

int CharMapModel::Stepped(CharStep step) const
{
    const int last = Count() - 1;
    if (step == CharStep::First)
        return std::min(0, last);
    if (step == CharStep::Last)
        return last;
    if (m_selected < 0)
        return std::min(m_first, last);
    const auto up = [this](int rows) {
        return m_selected - std::min(rows, m_selected / kCharColumns) * kCharColumns;
    };
    // Into a last row that does not reach so far: its end.
    const auto down = [this, last](int rows) {
        const int below = std::min(rows, last / kCharColumns - m_selected / kCharColumns);
        return std::min(m_selected + below * kCharColumns, last);
    };
    switch (step) {
    case CharStep::Left:
        return std::max(m_selected - 1, 0);
    case CharStep::Right:
        return std::min(m_selected + 1, last);
    case CharStep::Up:
        return up(1);
    case CharStep::Down:
        return down(1);
    case CharStep::PageUp:
        return up(kCharRows);
    default:
        return down(kCharRows);
    }
}

int CharMapModel::IndexAt(int cell) const
{
    return cell >= 0 && cell < kCharCells && cell < Count() - m_first ? m_first + cell : -1;
}

int CharMapModel::CellOf(int index) const
{
    const int cell = index - m_first;
    return index >= 0 && cell >= 0 && cell < kCharCells ? cell : -1;
}

} // namespace kv
