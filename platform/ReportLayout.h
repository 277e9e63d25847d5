// Where the parts of a report list are. Pure. Cells are placed in content coordinates: x from the left edge
// of the first column, y from the top of the first row.
#pragma once

#include "KvTypes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace kv {

inline constexpr int kReportHeaderHeight = 24;
inline constexpr int kReportMinColumn = 20;
inline constexpr int kReportMost = 32767;       ///< of a column's width, a line's height and the footer's
inline constexpr int kReportMostWide = 1 << 30; ///< of all columns together

struct ReportColumn
{
    std::wstring header;
    int width;
    int natural = 0; ///< the width that grows with the letters; 0 where somebody has set one
};

struct ReportColumns
{
    std::vector<ReportColumn> columns;
    int autoColumn = -1; ///< takes what the others leave; -1 for none
    int autoMinimum = kReportMinColumn;
};

/// What the places depend on.
struct ReportExtent
{
    CSize client;
    bool header = true;
    int bar = 0;                 ///< how thick a scroll bar is
    std::int64_t rowsHeight = 0; ///< of all rows shown
    int editorRight = 0;         ///< content coordinates; an open editor may reach beyond the columns
    std::int64_t editorBottom = 0;
    int headerHeight = kReportHeaderHeight;
};

struct ReportLayout
{
    CRect header;
    CRect cells;
    CRect verticalBar; ///< empty where everything fits
    CRect horizontalBar;
    std::vector<int> edges{0}; ///< of the columns, content x: the left of the first, then each one's right
    int contentWidth = 0;
    std::int64_t contentHeight = 0;
    bool isEndFixed = false; ///< an auto-sized column would take back what the last column is given

    int MaxScrollX() const { return std::max(0, contentWidth - cells.Width()); }
    std::int64_t MaxScrollY() const { return std::max<std::int64_t>(0, contentHeight - cells.Height()); }
    int ColumnCount() const { return static_cast<int>(edges.size()) - 1; }
    int Left(int column) const { return edges[static_cast<std::size_t>(column)]; }
    int Right(int column) const { return edges[static_cast<std::size_t>(column) + 1]; }
    /// The column at a content x; -1 beyond them.
    int ColumnAt(int x) const;
    /// The column whose right edge can be taken at a content x: 4 pixels to either side; -1 for none. Of
    /// edges equally near the right one; the last one not where the columns' end is fixed.
    int EdgeAt(int x) const;
};

ReportLayout LayOutReport(const ReportExtent& extent, const ReportColumns& columns);

/// The columns once the edge behind `column` was dragged by so many pixels, as `CKvReportListCtrl` has it; no
/// column becomes narrower than kReportMinColumn.
/// @param columns, layout when the edge was taken.
ReportColumns WithEdgeMoved(ReportColumns columns, const ReportLayout& layout, int column, int pixels);

/// Gives the columns with a natural width what they need in other letters; in small ones it is that width.
/// @param digit how wide a digit is.
void ScaleColumns(ReportColumns& columns, int digit);

/// A scroll bar has 31 bits: where the way is longer, a step of the bar is several pixels.
class ReportBarScale
{
public:
    /// @param most the largest offset.
    explicit ReportBarScale(std::int64_t most);
    int Range() const { return m_range; }
    int ToBar(std::int64_t offset) const;
    /// The end of the bar gives the largest offset.
    std::int64_t ToOffset(int value) const;
    /// For a page or a line: at least 1.
    int Length(int pixels) const;

private:
    std::int64_t m_most;
    int m_range;
};

/// The offset nearest to `offset` that brings begin … end into a view `size` long; the beginning where it is
/// longer than the view.
std::int64_t OffsetToShow(std::int64_t offset, std::int64_t size, std::int64_t begin, std::int64_t end);

} // namespace kv
