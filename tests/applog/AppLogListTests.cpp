// The log list's lines as a host sees them: texts, kinds, trimming, colours.
#include "AppLogListFixture.h"

#include <QAccessible>
#include <QImage>

#include <climits>

namespace {

using AppLogList = LogFixture;

TEST_F(AppLogList, ColumnsAndCells)
{
    const std::wstring headers[] = {L"Type", L"Level", L"Time", L"Content"};
    const int widths[] = {40, 20, 158, 600 - 40 - 20 - 158};
    ASSERT_EQ(log.GetColumnCount(), 4);
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(log.GetHeaderText(column), headers[column]);
        EXPECT_EQ(log.GetColumnWidth(column), widths[column]);
    }
    log.AddAppLogMsg(Message(9, L"text"));
    const std::wstring cells[] = {L"9", L"05", L"2016/03/01-09:05:07.042", L"text"};
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(log.GetItemText(0, column), cells[column]);
    log.Initialize(0);
    EXPECT_EQ(log.GetColumnCount(), 4);
}

TEST_F(AppLogList, KindsOfLinesAndWhenADateComes)
{
    log.AddAppLogMsg(Message(0, L"first"));
    log.AddAppLogMsg(Message(1, L"same day"));
    log.AddAppLogMsg(Message(2, L"next", 2));
    log.AddTimeSeparateLine({2016, 3, 0, 2, 0, 0, 0, 0});
    log.AddTimeSeparateLine({2016, 3, 5, 2, 9, 9, 9, 9});
    SKvAppLogMsgData otherMonth = Message(3, L"same day of another month", 2);
    otherMonth.time.wMonth = 4;
    log.AddAppLogMsg(otherMonth);
    const std::vector<std::wstring> expected{L"0:first",
                                             L"1:same day",
                                             L"#:2016/03/02 - Wednesday",
                                             L"2:next",
                                             L"#:2016/03/02 - Wednesday",
                                             L":",
                                             L"3:same day of another month"};
    EXPECT_EQ(Lines(), expected);
    const int heights[] = {24, 24, 48, 24, 48, 12, 24};
    for (int line = 0; line < 7; ++line)
        EXPECT_EQ(log.GetItemHeight(line), heights[line]) << line;
    CString out = L"as before";
    EXPECT_EQ(log._FormatLogLine(2, out) + log._FormatLogLine(5, out) + log._FormatLogLine(9, out), 0);
    EXPECT_EQ(out, L"as before");
    EXPECT_EQ(log._FormatLogLine(3, out), 1);
    EXPECT_EQ(out, L"[2][05][2016/03/02-09:05:07.042][next]");
    EXPECT_EQ(log.GetTypeCount(1), 1);
    EXPECT_EQ(log.GetTypeCount(4) + log.GetTypeCount(10) + log.GetTypeCount(-1), 0);
}

TEST_F(AppLogList, RefusesUnknownTypes)
{
    EXPECT_EQ(log.AddAppLogMsg(Message(10, L"x", 9)), 0);
    EXPECT_EQ(log.PostAppLogMsg(Message(-1, L"x", 9)), 0);
    EXPECT_EQ(
        log.AddAppLogMsg({Message(10, L"x", 9), Message(0, L"a"), Message(-1, L"x", 8), Message(0, L"b")}),
        1);
    EXPECT_EQ(Lines(), (std::vector<std::wstring>{L"0:a", L"0:b"})) << "no date line of a refused message";
    EXPECT_EQ(log.AddAppLogMsg(CArray<SKvAppLogMsgData>{Message(10, L"x")}), 0);
    EXPECT_EQ(log._AddNewLogLine(Message(100000, L"x")) + log._AddNewLogLine(Message(-1, L"x")), 0);
    EXPECT_EQ(log.AddAppLogText(10, 0, L"x") + log.PostAppLogText(-1, 0, L"x"), 0);
    EXPECT_EQ(log.GetItemCount(), 2);
}

TEST_F(AppLogList, SelectsAndShowsWhatIsNew)
{
    EXPECT_EQ(log.AddEmptySeparateLine(0), -1);
    EXPECT_EQ(log.AddEmptySeparateLine(2), 1);
    EXPECT_EQ(Selected(), Selection{});
    Fill(20);
    EXPECT_EQ(Selected(), (Selection{21}));
    EXPECT_TRUE(log.IsEndInView());
    EXPECT_EQ(log.GetTopIndex(), 12);
    EXPECT_EQ(log.AddTimeSeparateLine({}), 1);
    EXPECT_EQ(log.AddEmptySeparateLine(-3), 22);
    EXPECT_EQ(Selected(), (Selection{21})) << "separators leave the selection";
}

TEST_F(AppLogList, EveryLineCountsAndOnlyMessagesTrim)
{
    EXPECT_EQ(log.SetMaxLogLineCounts(8, 0), 500);
    log.AddEmptySeparateLine(20);
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    EXPECT_EQ(log.GetItemCount(), 21);
    log.AddAppLogMsg(Message(0, L"x"));
    EXPECT_EQ(Lines(), (std::vector<std::wstring>{L"#:2016/03/01 - Tuesday", L"0:x"}));
    Fill(5);
    EXPECT_EQ(log.GetTypeCount(0), 6);
    log.SetSelItem(0);
    log.SetMaxLogLineCounts(5, 0);
    EXPECT_EQ(log.GetItemCount(), 7);
    EXPECT_EQ(Selected(), (Selection{0}));
    EXPECT_EQ(log.SetMaxLogLineCounts(5, 1), 5);
    EXPECT_EQ(log.GetItemCount(), 1);
    EXPECT_EQ(Selected(), (Selection{0}));
    log.SetSelItem(-1);
    log.SetMaxLogLineCounts(100, 1);
    EXPECT_EQ(Selected(), Selection{}) << "nothing went, nothing is selected";
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(log.AddEmptySeparateLine(INT_MAX), 65534) << "no more than the largest maximum";
    log.AddAppLogMsg(Message(0, L"x"));
    EXPECT_EQ(log.GetItemCount(), 25);
}

TEST_F(AppLogList, CountsFollowWhatADerivedListDoes)
{
    log.AddAppLogMsg({Message(1, L"a"), Message(2, L"b"), Message(1, L"c")});
    log.RemoveRows(0);
    EXPECT_EQ(log.GetTypeCount(1), 1);
    log.SetItemText(0, 0, L"7");
    EXPECT_EQ(log.GetTypeCount(2), 0);
    EXPECT_EQ(log.GetTypeCount(7), 1);
    EXPECT_EQ(log._AddNewLogLine(Message(7, L"d")), 2);
    EXPECT_EQ(log.GetTypeCount(7), 2);
}

TEST_F(AppLogList, LongTextsBecomeSeveralMessages)
{
    std::vector<std::size_t> lengths;
    for (const std::size_t length : {0u, 512u, 1025u}) {
        EXPECT_EQ(log.PostAppLogText(2, 3, std::wstring(length, L'x')), 1);
        EXPECT_EQ(log.AddAppLogText(2, 3, std::wstring(length, L'x')), 1);
    }
    for (int line = 0; line < log.GetItemCount(); ++line)
        lengths.push_back(log.GetItemText(line, 3).size());
    EXPECT_EQ(lengths, (std::vector<std::size_t>{0, 0, 512, 512, 512, 512, 1, 512, 512, 1}));
}

TEST_F(AppLogList, WhatAScreenReaderCallsTheLines)
{
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    log.AddAppLogMsg({Message(2, L"disk nearly full"), Message(7, L"x")});
    log.AddEmptySeparateLine(1);
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&log)->tableInterface();
    const struct
    {
        int line, column;
        const char* name;
    } rows[] = {{0, 0, "Date"},    {0, 3, "2016/03/01 - Tuesday"},
                {1, 0, "Warning"}, {1, 3, "disk nearly full"},
                {2, 0, "7"},       {3, 0, "Spacer"}};
    for (const auto& row : rows)
        EXPECT_EQ(table->cellAt(row.line, row.column)->text(QAccessible::Name), row.name);
    EXPECT_TRUE(table->cellAt(1, 0)->text(QAccessible::Description).contains("Content: disk nearly full"));
}

TEST_F(AppLogList, ToolTipsOfWhatIsCut)
{
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    log.AddAppLogMsg(
        {Message(2, L"short", 1, 5), Message(2, L"x", 1, 65535), Message(2, std::wstring(300, L'y'))});
    const auto tip = [this](CPoint point) {
        CRect area;
        return log.ToolTipAt(point, area);
    };
    const auto at = [&](int line, int column) {
        const CRect cell = log.GetCellRect(line, column);
        return tip({cell.left + 5, cell.top + 5});
    };
    EXPECT_TRUE(tip({50, 5}).contains("Level")) << "its column is narrow";
    EXPECT_EQ(tip({5, 5}), "");
    for (const auto& [line, column] : {std::pair(0, 3), std::pair(1, 1), std::pair(1, 0), std::pair(1, 3)})
        EXPECT_EQ(at(line, column), "") << line << ", " << column;
    EXPECT_EQ(at(2, 1), "65535");
    EXPECT_TRUE(at(3, 3).contains("yyyy"));
    EXPECT_EQ(tip({599, 20}), "") << "no column there";
    log.SetColumnWidth(3, 60);
    EXPECT_EQ(at(0, 3), "2016/03/01 - Tuesday");
}

TEST_F(AppLogList, ColoursByType)
{
    const auto colours = [](const TestLog& list, int line) {
        DWORD back = 1;
        DWORD text = 2;
        list.GetCellColors(line, 3, &back, &text);
        return std::pair(back, text);
    };
    const std::pair<DWORD, DWORD> none(1, 2);
    DWORD theme[4] = {};
    const wchar_t* keys[] = {L"keApplogErrorBKColor", L"keApplogErrorTextColor", L"keApplogWarningBKColor",
                             L"keApplogMessageBKColor"};
    for (int i = 0; i < 4; ++i)
        ASSERT_EQ(KvGuiRes::LoadColor(keys[i], theme[i]), 1);
    TestLog other;
    other.Initialize(1);
    for (const int type : {3, 0, 7}) {
        log.AddAppLogMsg(Message(type, L"x"));
        other.AddAppLogMsg(Message(type, L"x"));
    }
    EXPECT_EQ(colours(log, 0), std::pair(theme[0], theme[1]));
    EXPECT_EQ(colours(log, 1), none) << "type 0 has the list's own colours";
    EXPECT_EQ(colours(log, 2).first, theme[3]) << "types from 4 on share those of type 0";
    EXPECT_EQ(log.GetCellColors(0, 2, &theme[0], nullptr), 0) << "the content alone is coloured";

    DWORD back[10];
    DWORD text[10];
    for (DWORD i = 0; i < 10; ++i) {
        back[i] = 0xFF000000u + i;
        text[i] = 0xFF111100u + i;
    }
    log.SetColor(back, text);
    EXPECT_EQ(colours(log, 0), std::pair(back[3], text[3]));
    EXPECT_EQ(colours(log, 1), none);
    EXPECT_EQ(colours(log, 2), std::pair(back[9], text[9]));
    EXPECT_EQ(colours(other, 2).first, theme[3]) << "other lists' lines keep theirs";
    DWORD read[10];
    DWORD readText[10];
    other.GetColor(read, readText);
    for (int type = 0; type < 10; ++type) {
        const int held = type == 0 || type > 3 ? 9 : type;
        EXPECT_EQ(read[type], back[held]);
        EXPECT_EQ(readText[type], text[held]);
    }
    const TestLog later;
    later.GetColor(read, nullptr);
    EXPECT_EQ(read[1], back[1]) << "a list made later does not bring the theme's back";
    log.SetColor(nullptr, nullptr);
    EXPECT_EQ(colours(log, 0), std::pair(back[3], text[3]));
}

TEST_F(AppLogList, AChangedSkinColoursTheLinesAnew)
{
    DWORD before[10];
    log.GetColor(before, nullptr);
    DWORD theme = 0;
    KvGuiRes::LoadColor(L"keApplogWarningBKColor", theme);
    if (before[2] != theme)
        GTEST_SKIP() << "another test of this process has set the colours for good";
    log.AddAppLogMsg(Message(2, L"x"));
    const int own = log.InsertColumn(L"Source", 80);
    SetSkin("keApplogWarningBKColor=1,2,3,255\n");
    DWORD back = 0;
    log.GetCellColors(0, 3, &back, nullptr);
    EXPECT_EQ(back, 0xFF010203u);
    EXPECT_EQ(log.GetHeaderText(own), L"Source") << "a derived list's column keeps its name";
    KvGuiRes::SetSkinFolder(nullptr);
}

TEST_F(AppLogList, DrawsPicturesDatesAndGrounds)
{
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    for (const int type : {0, 3, 3})
        log.AddAppLogMsg(Message(type, L""));
    log.SetSelItem(-1);
    const auto differs = [this](int line, int column) {
        const QRect cell = QRect(log.GetCellRect(line, column)).adjusted(3, 3, -3, -3);
        const QImage image = log.grab(cell).toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != image.pixel(0, 0))
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(differs(0, 3)) << "the date";
    EXPECT_FALSE(differs(0, 0)) << "the mark of a date line is not drawn";
    EXPECT_FALSE(differs(1, 0)) << "type 0 has no picture";
    EXPECT_TRUE(differs(2, 0));
    EXPECT_TRUE(differs(2, 1)) << "both digits fit the narrow column";
    DWORD back = 0;
    log.GetCellColors(2, 3, &back, nullptr);
    const QPoint inside = QRect(log.GetCellRect(2, 3)).center();
    EXPECT_EQ(log.grab().toImage().pixelColor(inside), QColor::fromRgba(back));
}

} // namespace
