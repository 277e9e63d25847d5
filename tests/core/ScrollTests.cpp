#include "KvScrollHelpers.h"
#include "core/RefCounted.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

kv::Reference<IKvScrollLineHelper> MakeLine(std::int64_t view, std::int64_t content, std::int64_t position)
{
    IKvScrollLineHelper* line = nullptr;
    EXPECT_EQ(KvCreateScrollLineHelper(&line), 1);
    line->SetViewLength(view);
    line->SetVirtualLength(content);
    line->SetPosition(position);
    return kv::Reference<IKvScrollLineHelper>(line);
}

TEST(ScrollLine, ThePositionStaysWithinTheRange)
{
    const struct
    {
        const char* name;
        std::int64_t view, content, position;
        std::int64_t range, stands;
    } rows[] = {
        {"within", 100, 250, 40, 150, 40},
        {"beyond the end", 100, 250, 151, 150, 150},
        {"before the beginning", 100, 250, -1, 150, 0},
        {"content shorter than the view", 100, 99, 5, 0, 0},
        {"no view", 0, 7, 9, 7, 7},
        {"negative lengths", -5, -6, 1, 0, 0},
        {"as long as numbers go", 100, kMost, kMost, kMost - 100, kMost - 100},
    };
    for (const auto& row : rows) {
        const auto line = MakeLine(row.view, row.content, row.position);
        EXPECT_EQ(line->GetRange(), row.range) << row.name;
        EXPECT_EQ(line->GetPosition(), row.stands) << row.name;
        EXPECT_EQ(line->GetVirtualLength() - line->GetViewLength(), row.range) << row.name;
        EXPECT_EQ(line->SetPosition(row.stands), 0) << row.name;
        EXPECT_EQ(line->MoveBy(kMost), row.stands < row.range ? 1 : 0) << row.name;
        EXPECT_EQ(line->GetPosition(), row.range) << row.name;
    }
    const auto line = MakeLine(100, 250, 150);
    line->SetVirtualLength(120);
    EXPECT_EQ(line->GetPosition(), 20);
    line->SetViewLength(110);
    EXPECT_EQ(line->GetPosition(), 10);
    EXPECT_EQ(line->MoveBy(-11), 1);
    EXPECT_EQ(line->GetPosition(), 0);
}

TEST(ScrollLine, ShowsByTheLeastDistance)
{
    const struct
    {
        const char* name;
        std::int64_t begin, end, position;
    } rows[] = {
        {"in view", 100, 200, 100},
        {"cut at the end", 150, 201, 101},
        {"cut at the beginning", 99, 150, 99},
        {"longer than the view", 120, 500, 120},
        {"at the very end", 990, 1000, 900},
        {"before it all", -50, -40, 0},
    };
    const auto line = MakeLine(100, 1000, 100);
    for (const auto& row : rows)
        EXPECT_EQ(line->PositionToShow(row.begin, row.end), row.position) << row.name;
}

TEST(ScrollRect, MapsThereAndBack)
{
    const auto across = MakeLine(0, 0, 0);
    const auto down = MakeLine(0, 0, 0);
    IKvScrollRectHelper* made = nullptr;
    ASSERT_EQ(KvCreateScrollRectHelper(across.get(), down.get(), &made), 1);
    const kv::Reference<IKvScrollRectHelper> rect(made);
    rect->SetView({4, 2, 104, 52});
    rect->SetVirtualSize(kMost, 60);
    EXPECT_EQ(across->GetViewLength(), 100);
    EXPECT_EQ(down->GetRange(), 10);
    across->SetPosition(std::int64_t{1} << 40);
    down->SetPosition(7);
    std::int64_t x = 0;
    std::int64_t y = 0;
    rect->ToContent({24, 12}, x, y);
    EXPECT_EQ(x, (std::int64_t{1} << 40) + 20);
    EXPECT_EQ(y, 17);
    EXPECT_EQ(rect->ToClient({x, y, x + 30, y + 5}), CRect(24, 12, 54, 17));
    const CRect far = rect->ToClient({0, 0, kMost, 1});
    EXPECT_EQ(far, CRect(-1073741823, -5, 1073741823, -4));
    EXPECT_GT(far.Width(), 0);
}

TEST(ScrollRect, HoldsItsLines)
{
    const auto across = MakeLine(0, 0, 0);
    IKvScrollRectHelper* rect = nullptr;
    EXPECT_EQ(KvCreateScrollRectHelper(across.get(), nullptr, &rect), 0);
    EXPECT_EQ(rect, nullptr);
    EXPECT_EQ(KvCreateScrollRectHelper(across.get(), across.get(), nullptr), 0);
    EXPECT_EQ(KvCreateScrollLineHelper(nullptr), 0);
    ASSERT_EQ(KvCreateScrollRectHelper(across.get(), across.get(), &rect), 1);
    IKvScrollLineHelper* line = nullptr;
    EXPECT_EQ(rect->GetVertical(&line), 1);
    EXPECT_EQ(line, across.get());
    EXPECT_EQ(line->Release(), 3); // ours and two of the rectangle's
    EXPECT_EQ(rect->GetHorizontal(nullptr), 0);
    EXPECT_EQ(rect->Release(), 0);
    EXPECT_EQ(across->AddRef(), 2);
    across->Release();
}

} // namespace
