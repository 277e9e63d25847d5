// Where a report list's view stays while its rows change, and what has to be painted, in tables.
#include "platform/ReportLayout.h"
#include "platform/ReportScreen.h"
#include "platform/ReportView.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace {

kv::ReportRow Row(const std::wstring& text)
{
    const std::array<std::wstring_view, 1> texts{text};
    return {texts, 10};
}

// Ten rows of 10, their texts 0 … 9.
kv::ReportView TenRows()
{
    kv::ReportView view;
    for (int i = 0; i < 10; ++i)
        view.InsertRow(i, Row(std::to_wstring(i)));
    return view;
}

bool IsEven(const kv::ReportRow& row)
{
    return (row.Text(0).back() - L'0') % 2 == 0;
}

TEST(ReportView, WhatIsInViewStays)
{
    using View = kv::ReportView;
    struct Case
    {
        const char* name;
        std::int64_t before;
        std::function<void(View&)> change;
        std::int64_t after;
        const wchar_t* top;
    };
    const auto remove = [](std::vector<int> lines) {
        return [lines](View& view) { view.RemoveRows(lines); };
    };
    for (const Case& c : {
             Case{"inserted above", 34, [](View& v) { v.InsertRow(1, Row(L"n")); }, 44, L"3"},
             Case{"inserted at the top line", 34, [](View& v) { v.InsertRow(3, Row(L"n")); }, 44, L"3"},
             Case{"inserted below", 34, [](View& v) { v.InsertRow(4, Row(L"n")); }, 34, L"3"},
             Case{"inserted at the very top", 0, [](View& v) { v.InsertRow(0, Row(L"n")); }, 0, L"n"},
             Case{"appended", 34, [](View& v) { v.InsertRow(10, Row(L"n")); }, 34, L"3"},
             Case{"several above", 34, [](View& v) { v.InsertRows(0, std::vector<kv::ReportRow>(3)); }, 34,
                  L"3"},
             Case{"a run above removed", 34, [](View& v) { v.RemoveRows(0, 2); }, 14, L"3"},
             Case{"a run with the top line removed", 34, [](View& v) { v.RemoveRows(2, 3); }, 20, L"5"},
             Case{"the end with the top line removed", 34, [](View& v) { v.RemoveRows(3, 7); }, 30, L"2"},
             Case{"a run below removed", 34, [](View& v) { v.RemoveRows(4, 3); }, 34, L"3"},
             Case{"scattered removed", 34, remove({0, 2, 5, 9}), 14, L"3"},
             Case{"scattered with the top line removed", 34, remove({0, 3, 4, 9}), 20, L"5"},
             Case{"all removed", 34, remove({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), 0, L""},
             Case{"a line above grows", 34, [](View& v) { v.SetHeight(1, 25); }, 49, L"3"},
             Case{"the top line shrinks", 38, [](View& v) { v.SetHeight(3, 4); }, 33, L"3"},
             Case{"a line at the very top grows", 0, [](View& v) { v.SetHeight(0, 25); }, 0, L"0"},
             Case{"filtered, the top line shown", 45, [](View& v) { v.SetFilter(IsEven); }, 25, L"4"},
             Case{"filtered, the top line hidden", 34, [](View& v) { v.SetFilter(IsEven); }, 20, L"4"},
         }) {
        SCOPED_TRACE(c.name);
        View view = TenRows();
        view.scrollY = c.before;
        c.change(view);
        EXPECT_EQ(view.scrollY, c.after);
        const int top = view.TopLine();
        EXPECT_EQ(top < 0 ? L"" : view.rows.Row(top).Text(0), c.top);
    }
}

TEST(ReportView, HiddenLinesMoveNothing)
{
    kv::ReportView view = TenRows();
    view.SetFilter(IsEven); // 0, 2, 4, 6, 8
    view.scrollY = 20;      // 4
    const auto expect = [&](const char* what, std::int64_t offset, const wchar_t* top) {
        EXPECT_EQ(view.scrollY, offset) << what;
        EXPECT_EQ(view.rows.Row(view.TopLine()).Text(0), top) << what;
    };
    view.RemoveRows(std::vector<int>{1, 3, 5});
    expect("hidden lines removed", 20, L"4");
    view.InsertRow(0, Row(L"1"));
    expect("a hidden line inserted above", 20, L"4");
    view.SetText(1, 0, L"7");
    expect("a line above becomes hidden", 10, L"4");
    view.SetText(1, 0, L"6");
    expect("and comes back", 20, L"4");
    view.SetText(3, 0, L"5");
    expect("the top line becomes hidden", 20, L"6");
    view.RemoveRows(3, 1);
    expect("and goes", 20, L"6");
    view.SetFilter({});
    expect("all are shown", 30, L"6");
    view.scrollY = 0;
    view.SetFilter([](const kv::ReportRow& row) { return row.Text(0) == L"8"; });
    expect("one is left", 0, L"8");
    view.SetFilter({});
    expect("it stays at the top", 50, L"8");
}

TEST(ReportView, KeepsItsLinesInMind)
{
    kv::ReportView view = TenRows();
    view.current = 5;
    view.anchor = 2;
    view.editLine = 9;
    view.dragLine = 0;
    const auto expect = [&](const char* what, int current, int anchor, int editLine, int dragLine) {
        EXPECT_EQ(view.current, current) << what;
        EXPECT_EQ(view.anchor, anchor) << what;
        EXPECT_EQ(view.editLine, editLine) << what;
        EXPECT_EQ(view.dragLine, dragLine) << what;
    };
    view.InsertRow(5, Row(L"n"));
    expect("inserted", 6, 2, 10, 0);
    view.InsertRow(11, Row(L"n"));
    expect("appended", 6, 2, 10, 0);
    view.InsertRows(1, std::vector<kv::ReportRow>(2));
    expect("several", 8, 4, 12, 0);
    view.InsertRows(std::vector<int>{0, 6}, std::vector<kv::ReportRow>(2));
    expect("scattered", 10, 5, 14, 1);
    view.RemoveRows(std::vector<int>{0, 6});
    view.RemoveRows(1, 2);
    expect("removed again", 6, 2, 10, 0);
    view.RemoveRows(std::vector<int>{0, 3, 7});
    expect("the first one is gone", 4, 1, 7, -1);
    EXPECT_TRUE(view.SortRows(std::vector<int>{8, 7, 6, 5, 4, 3, 2, 1, 0}));
    expect("turned over", 4, 7, 1, -1);
    view.RemoveRows(std::vector<int>{4, 5});
    expect("the current one is gone", -1, 5, 1, -1);
    view.RemoveRows(0, 6);
    expect("all are", -1, -1, -1, -1);
}

using Band = kv::ReportScreenStep::Band;

// A view from 24 to 124; lines of 20.
std::vector<kv::ReportScreenLine> Lines(std::uint64_t first, int top, int count)
{
    std::vector<kv::ReportScreenLine> lines;
    for (int i = 0; i < count; ++i)
        lines.push_back(
            {first + static_cast<std::uint64_t>(i), static_cast<int>(first) + i, top + 20 * i, 20});
    return lines;
}

TEST(ReportScreen, PaintsWhatDiffers)
{
    struct Case
    {
        const char* name;
        std::vector<kv::ReportScreenLine> lines;
        int unit;
        int shift;
        std::vector<Band> bands;
    };
    std::vector<kv::ReportScreenLine> selected = Lines(1, 24, 5);
    selected[2].look = 1;
    std::vector<kv::ReportScreenLine> taller = Lines(1, 24, 4);
    taller[3].height = 40;
    std::vector<kv::ReportScreenLine> renumbered = Lines(1, 24, 5);
    renumbered[4].line = 77;
    for (const Case& c : {
             Case{"nothing", Lines(1, 24, 5), 1, 0, {}},
             Case{"one line's look", selected, 1, 0, {{64, 84}}},
             Case{"one line's height", taller, 1, 0, {{84, 124}}},
             Case{"one line's index", renumbered, 1, 0, {{104, 124}}},
             Case{"a line's end bares the ground", Lines(1, 24, 3), 1, 0, {{84, 124}}},
             Case{"scrolled by a line", Lines(2, 24, 5), 1, -20, {{104, 124}}},
             Case{"scrolled by a part of one", Lines(1, 14, 6), 1, -10, {{114, 124}}},
             Case{"scrolled by what is no whole device pixel",
                  Lines(1, 19, 6),
                  2,
                  0,
                  {{24, 39}, {39, 59}, {59, 79}, {79, 99}, {99, 119}, {119, 124}}},
             Case{"nothing stays", Lines(9, 24, 1), 1, 0, {{24, 44}, {44, 124}}},
             Case{"no lines", {}, 1, 0, {{24, 124}}},
         }) {
        SCOPED_TRACE(c.name);
        kv::ReportScreen screen;
        screen.Show(Lines(1, 24, 5), 24, 124, 1);
        const kv::ReportScreenStep step = screen.Show(c.lines, 24, 124, c.unit);
        EXPECT_EQ(step.shift, c.shift);
        EXPECT_EQ(step.bands, c.bands);
        EXPECT_TRUE(screen.Show(c.lines, 24, 124, c.unit).bands.empty()) << "and then nothing";
    }
}

TEST(ReportScreen, TouchedAndForgotten)
{
    kv::ReportScreen screen;
    const std::vector<Band> all{{24, 124}};
    EXPECT_EQ(screen.Show(Lines(1, 24, 5), 24, 124, 1).bands, all) << "at first";
    screen.Touch(2);
    screen.Touch(99);
    EXPECT_EQ(screen.Show(Lines(1, 24, 5), 24, 124, 1).bands, (std::vector<Band>{{44, 64}}));
    screen.Forget();
    EXPECT_EQ(screen.Show(Lines(1, 24, 5), 24, 124, 1).bands, all);
}

TEST(ReportBarScale, ReachesBothEndsOfAnyWay)
{
    const std::int64_t kHuge = std::int64_t{48} * 2'000'000'000;
    for (const std::int64_t most : {std::int64_t{0}, std::int64_t{1000}, std::int64_t{1} << 30, kHuge}) {
        const kv::ReportBarScale scale(most);
        SCOPED_TRACE(most);
        EXPECT_LE(scale.Range(), std::numeric_limits<int>::max() / 2 + 1);
        EXPECT_EQ(scale.ToBar(most), scale.Range());
        EXPECT_EQ(scale.ToOffset(scale.Range()), most);
        EXPECT_EQ(scale.ToOffset(0), 0);
        const std::int64_t pixelsAStep = most / std::max(1, scale.Range()) + 1;
        for (const std::int64_t offset : {most / 3, most / 2, most - most / 7}) {
            EXPECT_NEAR(static_cast<double>(scale.ToOffset(scale.ToBar(offset))), static_cast<double>(offset),
                        static_cast<double>(pixelsAStep));
        }
        EXPECT_GE(scale.Length(1), 1);
    }
}

} // namespace
