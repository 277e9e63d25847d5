// The rows of a report list against a plain vector that does the same, and the layout in tables.
#include "platform/ReportLayout.h"
#include "platform/ReportView.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>

namespace {

struct NaiveRow
{
    std::wstring text;
    int height;
    std::uint64_t id;
    bool selected = false;
    bool shown = true;
    std::uint32_t back = 0;
};

kv::ReportRow MakeRow(const std::wstring& text, int height)
{
    const std::array<std::wstring_view, 3> texts{L"#", text, L""};
    return {texts, height};
}

class Rows : public testing::Test
{
protected:
    int Random(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    int Count() const { return static_cast<int>(naive.size()); }
    NaiveRow NewNaive()
    {
        constexpr std::array<int, 3> kHeights{12, 24, 48};
        return {std::wstring(static_cast<std::size_t>(Random(9)), L'x'),
                kHeights[static_cast<std::size_t>(Random(3))], ++lastId};
    }
    void Insert(int count)
    {
        const int at = Random(3) == 0 ? Count() : Random(Count() + 1);
        std::vector<kv::ReportRow> added;
        std::vector<NaiveRow> naiveAdded;
        for (int i = 0; i < count; ++i) {
            naiveAdded.push_back(NewNaive());
            added.push_back(MakeRow(naiveAdded.back().text, naiveAdded.back().height));
        }
        naive.insert(naive.begin() + at, naiveAdded.begin(), naiveAdded.end());
        if (count == 1 && Random(2) == 0)
            rows.Insert(at, std::move(added.front()));
        else
            rows.Insert(at, std::move(added));
    }
    void Remove()
    {
        const int at = Random(2) == 0 ? 0 : Random(Count());
        const int count = 1 + Random(Count() - at);
        goneId = naive[static_cast<std::size_t>(at)].id;
        naive.erase(naive.begin() + at, naive.begin() + at + count);
        rows.Remove(at, count);
    }
    void InsertScattered()
    {
        std::vector<int> lines;
        std::vector<kv::ReportRow> added;
        const int every = 1 + Random(300);
        for (int line = Random(Count() + 1); line <= Count(); line += 1 + Random(every)) {
            NaiveRow row = NewNaive();
            added.push_back(MakeRow(row.text, row.height));
            naive.insert(naive.begin() + line, std::move(row));
            lines.push_back(line);
        }
        rows.Insert(lines, std::move(added));
    }
    void RemoveScattered()
    {
        std::vector<int> lines;
        const int every = 1 + Random(9);
        for (int line = Random(Count()); line < Count(); line += 1 + Random(every))
            lines.push_back(line);
        goneId = naive[static_cast<std::size_t>(lines.back())].id;
        for (auto line = lines.rbegin(); line != lines.rend(); ++line)
            naive.erase(naive.begin() + *line);
        rows.Remove(lines);
    }
    void Sort()
    {
        std::vector<int> order(naive.size());
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), random);
        std::vector<NaiveRow> sorted;
        for (const int line : order)
            sorted.push_back(naive[static_cast<std::size_t>(line)]);
        naive = sorted;
        ASSERT_TRUE(rows.Sort(order));
    }
    void ChangeOne()
    {
        const int line = Random(Count());
        NaiveRow& row = naive[static_cast<std::size_t>(line)];
        row.text.assign(static_cast<std::size_t>(Random(40)), static_cast<wchar_t>(L'a' + Random(26)));
        rows.SetText(line, 1, row.text);
        row.height = 1 + Random(60);
        rows.SetHeight(line, row.height);
        row.back = static_cast<std::uint32_t>(Random(9));
        rows.SetColours(line, 1, &row.back, nullptr);
        row.shown = !row.shown;
        rows.SetShown(line, row.shown);
    }
    void Select()
    {
        if (Random(4) == 0) {
            rows.ClearSelection();
            for (NaiveRow& row : naive)
                row.selected = false;
        }
        const int first = Random(Count());
        const int last = first + Random(Count() - first);
        const bool select = Random(2) == 0;
        rows.Select(first, last, select);
        for (int line = first; line <= last; ++line)
            naive[static_cast<std::size_t>(line)].selected = select;
    }
    void Compare();

    std::mt19937 random{20};
    kv::ReportRows rows;
    std::vector<NaiveRow> naive;
    std::uint64_t lastId = 0;
    std::uint64_t goneId = 0;
};

void Rows::Compare()
{
    ASSERT_EQ(rows.Count(), Count());
    const std::int64_t place = Random(static_cast<int>(std::max<std::int64_t>(1, rows.Height() - 499)));
    int within = 0;
    std::int64_t top = 0;
    int shown = 0;
    std::vector<int> selected;
    int selectedShown = 0;
    std::vector<int> shownLines;
    for (int line = 0; line < Count(); ++line) {
        const NaiveRow& expected = naive[static_cast<std::size_t>(line)];
        const kv::ReportRow& row = rows.Row(line);
        ASSERT_EQ(row.id, expected.id) << line;
        ASSERT_EQ(row.Text(1), expected.text) << line;
        ASSERT_EQ(row.Text(0), L"#");
        ASSERT_EQ(row.Colours(1).back, expected.back) << line;
        ASSERT_EQ(row.selected, expected.selected) << line;
        ASSERT_EQ(rows.TopOf(line), top) << line;
        ASSERT_EQ(rows.ShownBefore(line), shown) << line;
        ASSERT_EQ(rows.Find(expected.id), line);
        if (expected.selected)
            selected.push_back(line);
        if (!expected.shown)
            continue;
        selectedShown += expected.selected ? 1 : 0;
        shownLines.push_back(line);
        within += top >= place && top + expected.height <= place + 500 ? 1 : 0;
        ASSERT_EQ(rows.ShownLine(shown), line);
        ASSERT_EQ(rows.LineAt(top), line);
        ASSERT_EQ(rows.LineAt(top + expected.height - 1), line);
        top += expected.height;
        ++shown;
    }
    ASSERT_EQ(rows.Find(goneId), -1);
    ASSERT_EQ(rows.CountWithin(place, 500), within);
    ASSERT_EQ(rows.Height(), top);
    std::vector<int> visited;
    rows.VisitShown(0, [&](int line, const kv::ReportRow&) { return visited.push_back(line), true; });
    ASSERT_EQ(visited, shownLines);
    ASSERT_EQ(rows.ShownCount(), shown);
    std::vector<int> lines;
    rows.SelectedLines(lines);
    ASSERT_EQ(lines, selected);
    ASSERT_EQ(rows.SelectedCount(), static_cast<int>(selected.size()));
    ASSERT_EQ(rows.SelectedShownCount(), selectedShown);
    ASSERT_EQ(rows.LastSelected(), selected.empty() ? -1 : selected.back());
}

TEST_F(Rows, StayInStepWithAPlainList)
{
    for (int step = 0; step < 150; ++step) {
        SCOPED_TRACE(step);
        const int kind = Count() == 0 ? 0 : Random(10);
        if (kind < 3)
            Insert(kind == 2 ? 2 + Random(600) : 1);
        else if (kind == 3 && Random(2) == 0)
            Remove();
        else if (kind == 3)
            RemoveScattered();
        else if (kind == 8)
            InsertScattered();
        else if (kind == 4)
            Sort();
        else if (kind < 8)
            ChangeOne();
        else
            Select();
        Compare();
        if (HasFatalFailure())
            return;
    }
}

TEST_F(Rows, SortRefusesWhatIsNoPermutation)
{
    Insert(3);
    for (const std::vector<int>& order : {std::vector{0, 1}, {0, 0, 1}, {0, 1, 3}, {-1, 0, 1}})
        EXPECT_FALSE(rows.Sort(order));
    Compare();
}

TEST(ReportLayout, BarsTakeRoomFromOneAnother)
{
    struct Case
    {
        const char* name;
        std::int64_t rowsHeight;
        int width;
        bool vertical, horizontal;
    };
    // 100 x 124 with a header of 24: 100 high for rows; bars of 10.
    for (const Case& c : {Case{"empty", 0, 50, false, false}, Case{"just fits", 100, 100, false, false},
                          Case{"too high", 101, 50, true, false}, Case{"too wide", 90, 101, false, true},
                          Case{"the upright bar makes it too wide", 101, 91, true, true},
                          Case{"the level bar makes it too high", 91, 101, true, true}}) {
        SCOPED_TRACE(c.name);
        kv::ReportColumns columns;
        columns.columns = {{L"a", 20}, {L"b", c.width - 20}};
        const kv::ReportLayout layout = kv::LayOutReport({{100, 124}, true, 10, c.rowsHeight}, columns);
        EXPECT_EQ(layout.verticalBar.IsRectEmpty(), !c.vertical);
        EXPECT_EQ(layout.horizontalBar.IsRectEmpty(), !c.horizontal);
        EXPECT_EQ(layout.cells, CRect(0, 24, c.vertical ? 90 : 100, c.horizontal ? 114 : 124));
    }
}

TEST(ReportLayout, OneColumnTakesWhatTheOthersLeave)
{
    kv::ReportColumns columns;
    columns.columns = {{L"text", 20}, {L"in", 100}, {L"out", 100}};
    columns.autoColumn = 0;
    columns.autoMinimum = 40;
    for (const auto& [client, bars, expected] : {std::tuple(480, 0, 280), std::tuple(480, 1000, 270),
                                                 std::tuple(100, 0, 40), std::tuple(0, 0, 40)}) {
        const kv::ReportLayout layout = kv::LayOutReport({{client, 100}, true, 10, bars}, columns);
        EXPECT_EQ(layout.Right(0), expected) << client << " " << bars;
    }
}

TEST(ReportLayout, ColumnsOfAnyWidthEndSomewhere)
{
    kv::ReportColumns columns;
    columns.columns.assign(4, {L"wide", std::numeric_limits<int>::max()});
    columns.autoColumn = 3;
    const kv::ReportLayout layout = kv::LayOutReport({{100, 100}, true, 10, 0, 50}, columns);
    EXPECT_EQ(layout.edges, (std::vector<int>{0, kv::kReportMostWide, kv::kReportMostWide,
                                              kv::kReportMostWide, kv::kReportMostWide}));
    EXPECT_EQ(layout.MaxScrollX(), kv::kReportMostWide - 100);
}

TEST(ReportLayout, EdgesAndColumnsUnderAPoint)
{
    kv::ReportLayout layout;
    layout.edges = {0, 20, 120};
    for (const auto& [x, column, edge] :
         {std::tuple(-1, -1, -1), std::tuple(0, 0, -1), std::tuple(16, 0, 0), std::tuple(19, 0, 0),
          std::tuple(20, 1, 0), std::tuple(24, 1, 0), std::tuple(25, 1, -1), std::tuple(119, 1, 1),
          std::tuple(124, -1, 1)}) {
        EXPECT_EQ(layout.ColumnAt(x), column) << x;
        EXPECT_EQ(layout.EdgeAt(x), edge) << x;
    }
}

TEST(ReportLayout, ADraggedEdgeFollowsThePointer)
{
    struct Case
    {
        const char* name;
        int autoColumn, edge, pixels;
        int edgeAfter; ///< content x; the columns' edges are 0, 100, 200, 300
    };
    for (const Case& c : {Case{"no auto-sized column", -1, 1, 30, 230}, Case{"narrower", -1, 1, -30, 170},
                          Case{"behind it", 0, 1, 30, 230}, Case{"behind it, to the left", 0, 1, -30, 170},
                          Case{"the right one as narrow as it gets", 0, 1, 99, 280},
                          Case{"the left one as narrow as it gets", 0, 1, -99, 120},
                          Case{"its own", 1, 1, 30, 230}, Case{"before it", 2, 1, 30, 230}}) {
        SCOPED_TRACE(c.name);
        kv::ReportColumns columns;
        columns.columns = {{L"a", 100}, {L"b", 100}, {L"c", 100}};
        columns.autoColumn = c.autoColumn;
        const kv::ReportExtent extent{{300, 100}};
        const kv::ReportLayout before = kv::LayOutReport(extent, columns);
        EXPECT_EQ(before.EdgeAt(299), c.autoColumn == 0 || c.autoColumn == 1 ? -1 : 2);
        const kv::ReportLayout after =
            kv::LayOutReport(extent, kv::WithEdgeMoved(columns, before, c.edge, c.pixels));
        EXPECT_EQ(after.Right(c.edge), c.edgeAfter);
        EXPECT_EQ(after.Right(0), 100) << "what is left of the two stays";
    }
}

TEST(ReportLayout, ScrollsByTheLeast)
{
    EXPECT_EQ(kv::OffsetToShow(100, 50, 110, 130), 100);
    EXPECT_EQ(kv::OffsetToShow(100, 50, 90, 110), 90);
    EXPECT_EQ(kv::OffsetToShow(100, 50, 140, 164), 114);
    EXPECT_EQ(kv::OffsetToShow(0, 50, 100, 200), 100) << "higher than the view: its beginning";
}

TEST(TrackedLine, FollowsItsRow)
{
    EXPECT_EQ(kv::LineAfterInsert(5, 5, 2), 7);
    EXPECT_EQ(kv::LineAfterInsert(5, 6, 2), 5);
    EXPECT_EQ(kv::LineAfterInsert(-1, 0, 2), -1);
    const int places[] = {0, 3, 4}; // before the lines 0, 2 and 2
    for (const auto& [before, after] : {std::pair(0, 1), std::pair(1, 2), std::pair(2, 5), std::pair(9, 12)})
        EXPECT_EQ(kv::LineAfterInsert(before, places), after);
    EXPECT_EQ(kv::LineAfterRemove(5, 3, 2), 3);
    EXPECT_EQ(kv::LineAfterRemove(5, 4, 2), -1);
    EXPECT_EQ(kv::LineAfterRemove(5, 6, 2), 5);
}

} // namespace
