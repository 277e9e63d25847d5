// Which characters a grid shows, where its cells stand, and what stays at hand.
#include "text/CharMapModel.h"
#include "text/CharShelf.h"

#include <gtest/gtest.h>

namespace {

kv::CodeTable Table(int count)
{
    kv::CodeTable table;
    for (int i = 0; i < count; ++i)
        table.push_back({static_cast<char16_t>(100 + i), 1});
    return table;
}

kv::CharMapModel Model(int count)
{
    kv::CharMapModel model;
    model.SetTable(Table(count));
    return model;
}

TEST(CharMapLayout, CellsAndHits)
{
    EXPECT_EQ(kv::CharCellRect(0), CRect(12, 12, 36, 36));
    EXPECT_EQ(kv::CharCellRect(199), CRect(468, 228, 492, 252));
    for (int cell = 0; cell < kv::kCharCells; ++cell) {
        const CRect rect = kv::CharCellRect(cell);
        EXPECT_EQ(kv::CharCellAt(rect.TopLeft()), cell);
        EXPECT_EQ(kv::CharCellAt({rect.right - 1, rect.bottom - 1}), cell);
    }
    for (const CPoint outside :
         {CPoint(11, 12), CPoint(12, 11), CPoint(492, 100), CPoint(100, 252), CPoint(-5, -5)})
        EXPECT_FALSE(kv::CharCellAt(outside)) << outside.x << ' ' << outside.y;
}

TEST(CharMapLayout, ThePreviewStandsBesideTheCellWithinTheWindow)
{
    const CSize window(504, 264);
    EXPECT_EQ(kv::CharPreviewRect(105, window), CRect(157, 108, 229, 180));
    EXPECT_EQ(kv::CharPreviewRect(0, window), CRect(37, 0, 109, 72));
    EXPECT_EQ(kv::CharPreviewRect(199, window), CRect(396, 192, 468, 264)); // to the left
    EXPECT_EQ(kv::CharPreviewRect(199, CSize(40, 40)), CRect(0, 0, 72, 72));
    for (int cell = 0; cell < kv::kCharCells; ++cell) {
        const CRect rect = kv::CharPreviewRect(cell, window);
        const CRect own = kv::CharCellRect(cell);
        EXPECT_TRUE(rect.left >= 0 && rect.top >= 0 && rect.right <= 504 && rect.bottom <= 264) << cell;
        EXPECT_TRUE(rect.left >= own.right || rect.right <= own.left) << cell;
    }
}

TEST(CharMapModel, TheFirstIndexIsAFullRowAndTheLastPageFull)
{
    const std::pair<int, int> last[] = {{0, 0},    {1, 0},    {200, 0},      {201, 20},
                                        {220, 20}, {221, 40}, {57000, 56800}};
    for (const auto& [count, first] : last) {
        kv::CharMapModel model = Model(count);
        model.SetFirst(count);
        EXPECT_EQ(model.First(), first) << count;
        EXPECT_EQ(model.ScrollRows(1), false);
        model.SetFirst(-7);
        EXPECT_EQ(model.First(), 0);
    }
    kv::CharMapModel model = Model(1000);
    EXPECT_TRUE(model.SetFirst(59));
    EXPECT_EQ(model.First(), 40);
    EXPECT_EQ(model.IndexAt(0), 40);
    EXPECT_EQ(model.CellOf(239), 199);
    EXPECT_EQ(model.CellOf(240), -1);
    EXPECT_EQ(Model(30).IndexAt(30), -1);
}

TEST(CharMapModel, PartsOfANotchAddUpUntilTheDirectionTurns)
{
    kv::CharMapModel model = Model(1000);
    const std::pair<int, int> turns[] = {{-120, 20}, {-60, 20},  {-60, 40},  {-60, 40}, {60, 40},
                                         {60, 20},   {-360, 80}, {-119, 80}, {-1, 100}, {40, 100}};
    for (const auto& [delta, first] : turns) {
        model.Wheel(delta);
        EXPECT_EQ(model.First(), first) << delta;
    }
}

TEST(CharMapModel, StepsOfTheKeyboard)
{
    using enum kv::CharStep;
    struct Case
    {
        int count;
        int from;
        kv::CharStep step;
        int to;
    };
    const Case cases[] = {
        {450, -1, Down, 0},   {450, 0, Left, 0},      {450, 0, Up, 0},          {450, 25, Up, 5},
        {450, 25, Right, 26}, {450, 449, Right, 449}, {450, 449, Down, 449},    {450, 435, Down, 449},
        {450, 25, PageUp, 5}, {450, 225, PageUp, 25}, {450, 25, PageDown, 225}, {450, 415, PageDown, 449},
        {450, 25, First, 0},  {450, 25, Last, 449},   {0, -1, Right, -1},       {0, -1, First, -1},
    };
    for (const Case& one : cases) {
        kv::CharMapModel model = Model(one.count);
        model.Select(one.from);
        EXPECT_EQ(model.Stepped(one.step), one.to) << one.from << " step " << static_cast<int>(one.step);
    }
    kv::CharMapModel model = Model(1000);
    model.SetFirst(60);
    EXPECT_EQ(model.Stepped(Down), 60); // nothing is selected: the first in view
    EXPECT_TRUE(model.Select(300));
    EXPECT_EQ(model.First(), 120); // the least that brings it into view
    EXPECT_FALSE(model.Select(300));
    model.Select(50);
    EXPECT_EQ(model.First(), 40);
    EXPECT_TRUE(model.Select(1000));
    EXPECT_EQ(model.Selected(), -1);
    EXPECT_EQ(model.First(), 40);
}

TEST(CharShelf, KeepsEachCharacterOnceInARow)
{
    kv::CharShelf shelf;
    for (char16_t code = u'a'; code < u'a' + 22; ++code)
        shelf.PutFirst(code);
    EXPECT_EQ(shelf.Text(), L"vutsrqponmlkjihgfedc");
    shelf.PutFirst(u'd');
    EXPECT_EQ(shelf.Text(), L"dvutsrqponmlkjihgfec");
    EXPECT_FALSE(shelf.Append(u'!'));
    EXPECT_TRUE(shelf.Remove(u'c'));
    EXPECT_FALSE(shelf.Append(u'd'));
    EXPECT_TRUE(shelf.Append(u'!'));
    shelf.Set(L"a\U0001F600b\xD800"
              L"a\xFFFF\x20AC");
    EXPECT_EQ(shelf.Text(), L"ab\x20AC");
}

} // namespace
