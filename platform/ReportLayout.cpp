#include "platform/ReportLayout.h"

#include <cmath>
#include <cstdlib>

namespace kv {

namespace {

constexpr int kEdgeReach = 4;
constexpr std::int64_t kLongestBar = 1 << 30; // room for a page behind the end

// Where the columns end when the cells have that width.
std::vector<int> Edges(const ReportColumns& columns, int width)
{
    std::int64_t others = 0;
    const int count = static_cast<int>(columns.columns.size());
    for (int i = 0; i < count; ++i)
        others += i == columns.autoColumn ? 0 : columns.columns[static_cast<std::size_t>(i)].width;
    std::vector<int> edges{0};
    for (int i = 0; i < count; ++i) {
        const std::int64_t own = i == columns.autoColumn
                                     ? std::max<std::int64_t>(columns.autoMinimum, width - others)
                                     : columns.columns[static_cast<std::size_t>(i)].width;
        edges.push_back(static_cast<int>(std::min<std::int64_t>(edges.back() + own, kReportMostWide)));
    }
    return edges;
}

} // namespace

ReportLayout LayOutReport(const ReportExtent& extent, const ReportColumns& columns)
{
    ReportLayout layout;
    const int top = extent.header ? std::min(extent.headerHeight, extent.client.cy) : 0;
    const int room = extent.client.cy - top;
    layout.contentHeight = std::max(extent.rowsHeight, extent.editorBottom);
    bool vertical = layout.contentHeight > room;
    bool horizontal = false;
    int width = 0;
    // A bar takes room from the other axis, which may need its own then; it never gives room back.
    for (int pass = 0; pass < 3; ++pass) {
        width = std::max(0, extent.client.cx - (vertical ? extent.bar : 0));
        layout.edges = Edges(columns, width);
        layout.contentWidth = std::max(layout.edges.back(), extent.editorRight);
        horizontal = horizontal || layout.contentWidth > width;
        vertical = vertical || layout.contentHeight > room - (horizontal ? extent.bar : 0);
    }
    const int last = static_cast<int>(columns.columns.size()) - 1;
    layout.isEndFixed =
        columns.autoColumn >= 0 && columns.autoColumn < last &&
        layout.Right(columns.autoColumn) - layout.Left(columns.autoColumn) > columns.autoMinimum;
    const int height = std::max(0, room - (horizontal ? extent.bar : 0));
    layout.header = {0, 0, width, top};
    layout.cells = {0, top, width, top + height};
    if (vertical)
        layout.verticalBar = {width, 0, extent.client.cx, top + height};
    if (horizontal)
        layout.horizontalBar = {0, top + height, width, extent.client.cy};
    return layout;
}

ReportColumns WithEdgeMoved(ReportColumns columns, const ReportLayout& layout, int column, int pixels)
{
    const auto at = static_cast<std::size_t>(column);
    ReportColumn& left = columns.columns[at];
    const int width = layout.Right(column) - layout.Left(column);
    if (columns.autoColumn == column)
        columns.autoColumn = -1;
    // What the left column takes an auto-sized one before it would give, and the edge would stay.
    const bool isBehindAuto = columns.autoColumn >= 0 && columns.autoColumn < column;
    if (isBehindAuto && at + 1 < columns.columns.size()) {
        ReportColumn& right = columns.columns[at + 1];
        pixels = std::min(pixels, right.width - kReportMinColumn);
        pixels = std::max(pixels, kReportMinColumn - width);
        right.width -= pixels;
        right.natural = 0;
    }
    left.width = std::clamp(width + pixels, kReportMinColumn, kReportMost);
    left.natural = 0;
    return columns;
}

void ScaleColumns(ReportColumns& columns, int digit)
{
    constexpr int kUsualDigit = 8;
    for (ReportColumn& column : columns.columns) {
        if (column.natural == 0)
            continue;
        const std::int64_t width = std::int64_t{column.natural} * std::max(digit, kUsualDigit) / kUsualDigit;
        column.width = static_cast<int>(std::clamp<std::int64_t>(width, kReportMinColumn, kReportMost));
    }
}

int ReportLayout::ColumnAt(int x) const
{
    if (x < 0 || x >= edges.back())
        return -1;
    return static_cast<int>(std::upper_bound(edges.begin(), edges.end(), x) - edges.begin()) - 1;
}

int ReportLayout::EdgeAt(int x) const
{
    int best = -1;
    for (int column = 0; column < ColumnCount() - (isEndFixed ? 1 : 0); ++column) {
        const int distance = std::abs(Right(column) - x);
        if (distance <= kEdgeReach && (best < 0 || distance <= std::abs(Right(best) - x)))
            best = column;
    }
    return best;
}

ReportBarScale::ReportBarScale(std::int64_t most)
    : m_most(most)
    , m_range(static_cast<int>(std::min(most, kLongestBar)))
{
}

int ReportBarScale::ToBar(std::int64_t offset) const
{
    if (m_most == m_range)
        return static_cast<int>(offset);
    return static_cast<int>(
        std::llround(static_cast<double>(offset) / static_cast<double>(m_most) * m_range));
}

std::int64_t ReportBarScale::ToOffset(int value) const
{
    if (m_most == m_range)
        return value;
    if (value == m_range)
        return m_most;
    return std::llround(static_cast<double>(m_most) / m_range * value);
}

int ReportBarScale::Length(int pixels) const
{
    return std::max(1, ToBar(pixels));
}

std::int64_t OffsetToShow(std::int64_t offset, std::int64_t size, std::int64_t begin, std::int64_t end)
{
    if (end > offset + size)
        offset = end - size;
    return std::min(offset, begin);
}

} // namespace kv
