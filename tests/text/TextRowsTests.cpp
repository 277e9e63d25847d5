// The rules of the lists of texts that need no list.
#include "text/PlayIndex.h"
#include "text/RowOrder.h"
#include "text/TextLines.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using kv::kNoTimecode;
using kv::PlaySpan;
using Texts = std::vector<std::wstring>;

TEST(TextLines, BreaksEndLines)
{
    const struct
    {
        const wchar_t* text;
        Texts lines;
        const wchar_t* first;
    } cases[] = {{L"", {}, L""},
                 {L"a", {L"a"}, L"a"},
                 {L"a\r\nb", {L"a", L"b"}, L"a"},
                 {L"a\rb\nc", {L"a", L"b", L"c"}, L"a"},
                 {L"a\n", {L"a"}, L"a"},
                 {L"\n\r\n", {L"", L""}, L""},
                 {L"a\n\nb", {L"a", L"", L"b"}, L"a"},
                 {L"\x2028z", {L"\x2028z"}, L"\x2028z"}};
    for (const auto& one : cases) {
        EXPECT_EQ(kv::SplitLines(one.text), one.lines) << one.text;
        EXPECT_EQ(kv::FirstLine(one.text), one.first) << one.text;
    }
    EXPECT_EQ(kv::JoinLines({L"a", L"", L"c"}), L"a\n\nc");
}

TEST(RowOrder, PlacesRowsAndKeepsTheRest)
{
    const struct
    {
        std::vector<kv::RowPlacing> placings;
        std::vector<int> order;
        const char* name;
    } cases[] = {{{{0, 5}}, {1, 2, 3, 4, 0}, "to the end"},
                 {{{4, 0}}, {4, 0, 1, 2, 3}, "to the top"},
                 {{{1, 4}, {3, 4}}, {0, 2, 1, 3, 4}, "apart, together afterwards"},
                 {{{1, 0}, {3, 5}}, {1, 0, 2, 4, 3}, "to two places"},
                 {{{1, 2}, {2, 2}}, {0, 1, 2, 3, 4}, "before one of them"},
                 {{{3, 1}, {1, 1}}, {0, 3, 1, 2, 4}, "in the given order"}};
    for (const auto& one : cases)
        EXPECT_EQ(kv::ArrangedOrder(5, one.placings), one.order) << one.name;
    const int values[] = {2, 1, 2, 1};
    const auto isLess = [&](int a, int b) { return values[a] < values[b]; };
    EXPECT_EQ(kv::SortedOrder(4, true, isLess), (std::vector<int>{1, 3, 0, 2}));
    EXPECT_EQ(kv::SortedOrder(4, false, isLess), (std::vector<int>{0, 2, 1, 3}));
}

TEST(PlayIndex, KnowsWhoPlays)
{
    const PlaySpan none;
    const struct
    {
        std::vector<PlaySpan> spans;
        std::uint32_t frame;
        int line;
        const char* name;
    } cases[] = {{{}, 0, -1, "no rows"},
                 {{{10, 20}}, 9, -1, "before"},
                 {{{10, 20}}, 10, 0, "in is inclusive"},
                 {{{10, 20}}, 20, -1, "out is exclusive"},
                 {{{10, 50}, {20, 30}}, 25, 1, "the one that starts latest"},
                 {{{10, 50}, {20, 30}}, 30, 0, "the earlier one again"},
                 {{{20, 30}, {10, 50}}, 25, 0, "in any order"},
                 {{{10, 20}, {10, 30}}, 15, 1, "of those together the last"},
                 {{{10, kNoTimecode}, none, {40, 50}}, 39, 0, "without an out to the next in"},
                 {{{10, kNoTimecode}, {40, 50}}, 50, -1, "and no further"},
                 {{{10, kNoTimecode}}, 0xFFFFFFFE, 0, "the last one without an out to the end"},
                 {{{10, kNoTimecode}}, kNoTimecode, -1, "at no frame"},
                 {{{kNoTimecode, 20}}, 5, -1, "without an in never"},
                 {{{20, 10}}, 15, -1, "out before in"}};
    for (const auto& one : cases)
        EXPECT_EQ(kv::PlayIndex(one.spans).Find(one.frame), one.line) << one.name;
}

TEST(PlayIndex, AgreesWithLookingAtEveryRow)
{
    std::mt19937 engine(7);
    const auto random = [&](std::uint32_t end) { return static_cast<std::uint32_t>(engine() % end); };
    for (int round = 0; round < 200; ++round) {
        std::vector<PlaySpan> spans(random(40));
        for (PlaySpan& span : spans) {
            span.in = random(8) == 0 ? kNoTimecode : random(60);
            span.out = random(4) == 0 ? kNoTimecode : random(70);
        }
        const kv::PlayIndex index(spans);
        for (std::uint32_t frame = 0; frame < 72; ++frame) {
            int expected = -1;
            for (std::size_t i = 0; i < spans.size(); ++i) {
                std::uint32_t end = spans[i].out;
                for (const PlaySpan& other : spans) {
                    if (spans[i].out == kNoTimecode && other.in > spans[i].in)
                        end = std::min(end, other.in);
                }
                const bool plays = spans[i].in <= frame && frame < end;
                if (plays && (expected < 0 || spans[i].in >= spans[static_cast<std::size_t>(expected)].in))
                    expected = static_cast<int>(i);
            }
            ASSERT_EQ(index.Find(frame), expected) << "round " << round << ", frame " << frame;
        }
    }
}

} // namespace
