#include "text/FindReplace.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <vector>

namespace kv {
namespace {

using Texts = std::vector<std::wstring>;

struct TextList final : IFindTexts
{
    TextList(Texts rows, std::set<int> selectedRows = {})
        : texts(std::move(rows))
        , selected(std::move(selectedRows))
    {
    }
    int Count() override { return static_cast<int>(texts.size()); }
    std::wstring_view Text(int row) override { return texts.at(static_cast<std::size_t>(row)); }
    void SetText(int row, std::wstring text) override
    {
        setRows.push_back(row);
        texts.at(static_cast<std::size_t>(row)) = std::move(text);
    }
    bool IsSelected(int row) override { return selected.count(row) > 0; }

    Texts texts;
    std::set<int> selected;
    std::vector<int> setRows;
};

/// Digits, one or more; replaced by their number and the text to replace with. Fails at a text with "!".
struct DigitMatcher final : ITextMatcher
{
    void Begin(std::wstring_view begun) override { text = begun; }
    std::optional<TextSpan> Find(std::size_t from) override
    {
        failed = failed || text.find(L'!') != text.npos;
        const std::size_t start = text.find_first_of(L"0123456789", from);
        if (failed || start == text.npos)
            return std::nullopt;
        length = std::min(text.find_first_not_of(L"0123456789", start), text.size()) - start;
        return TextSpan{start, length};
    }
    std::wstring Replacement(std::wstring_view replace) override
    {
        return std::to_wstring(length) + std::wstring(replace);
    }
    bool HasFailed() override { return failed; }

    std::wstring_view text;
    std::size_t length = 0;
    bool failed = false;
};

constexpr auto Next = FindMode::Next;
constexpr auto ReplaceAndNext = FindMode::ReplaceAndNext;
constexpr auto ReplaceAll = FindMode::ReplaceAll;
constexpr int kNowhere = -1;

/// What one call gives: the result, where it stands, and how often it replaced.
struct Step
{
    FindMode mode;
    int startRow;
    int result;
    int row; ///< kNowhere: no match
    std::size_t start = 0;
    int replaced = 0;
};

struct Walk
{
    const char* name;
    Texts texts;
    FindQuery query;
    std::vector<Step> steps;
    Texts after;
};

FindQuery Query(const wchar_t* find, const wchar_t* replace = L"")
{
    FindQuery query;
    query.find = find;
    query.replace = replace;
    return query;
}

FindQuery Backwards(FindQuery query)
{
    query.backwards = true;
    return query;
}

void Follow(const Walk& walk, FindReplace& engine, TextList& list)
{
    for (std::size_t i = 0; i < walk.steps.size(); ++i) {
        const Step& step = walk.steps[i];
        EXPECT_EQ(static_cast<int>(engine.Run(step.startRow, step.mode, walk.query)), step.result)
            << walk.name << i;
        EXPECT_EQ(engine.ReplacedCount(), step.replaced) << walk.name << i;
        ASSERT_EQ(engine.Match().has_value(), step.row != kNowhere) << walk.name << i;
        if (engine.Match()) {
            EXPECT_EQ(engine.Match()->row, step.row) << walk.name << i;
            EXPECT_EQ(engine.Match()->span.start, step.start) << walk.name << i;
        }
    }
    EXPECT_EQ(list.texts, walk.after) << walk.name;
}

TEST(FindReplace, GoesFromMatchToMatch)
{
    const Texts three = {L"a cat", L"none", L"cat, cat"};
    const Walk walks[] = {
        {"round the list ",
         three,
         Query(L"cat"),
         {{Next, 0, 0, 0, 2}, {Next, 0, 0, 2, 0}, {Next, 2, 0, 2, 5}, {Next, 2, 1, 0, 2}},
         three},
        {"the only one again ",
         {L"x", L"cat"},
         Query(L"cat"),
         {{Next, 0, 0, 1, 0}, {Next, 1, 1, 1, 0}},
         {L"x", L"cat"}},
        {"wraps at once ", {L"cat", L"x"}, Query(L"cat"), {{Next, 1, 1, 0, 0}}, {L"cat", L"x"}},
        {"-1 starts at row 0 ", three, Query(L"cat"), {{Next, -1, 0, 0, 2}}, three},
        {"a row out of range starts at row 0 ", three, Query(L"cat"), {{Next, 3, 0, 0, 2}}, three},
        {"another row starts at its begin ",
         three,
         Query(L"cat"),
         {{Next, 2, 0, 2, 0}, {Next, 1, 0, 2, 0}},
         three},
        {"earlier in the row, wrapped ",
         {L"cat cat", L"x"},
         Query(L"cat"),
         {{Next, 0, 0, 0, 0}, {Next, 0, 0, 0, 4}, {Next, 0, 1, 0, 0}},
         {L"cat cat", L"x"}},
        {"no match ", three, Query(L"dog"), {{Next, 0, 2, kNowhere}}, three},
        {"empty find text ",
         three,
         Query(L""),
         {{Next, 0, 2, kNowhere}, {ReplaceAll, 0, 2, kNowhere}},
         three},
        {"no rows ", {}, Query(L"cat"), {{Next, 0, 2, kNowhere}, {ReplaceAndNext, -1, 2, kNowhere}}, {}},
        {"empty texts ", {L"", L""}, Query(L"cat"), {{Next, 1, 2, kNowhere}}, {L"", L""}},
        {"matches do not overlap ",
         {L"aaaa"},
         Query(L"aa"),
         {{Next, 0, 0, 0, 0}, {Next, 0, 0, 0, 2}, {Next, 0, 1, 0, 0}},
         {L"aaaa"}},
        {"backwards ",
         three,
         Backwards(Query(L"cat")),
         {{Next, 2, 0, 2, 5}, {Next, 2, 0, 2, 0}, {Next, 2, 0, 0, 2}, {Next, 0, 1, 2, 5}},
         three},
        {"backwards, the only one again ",
         {L"cat"},
         Backwards(Query(L"cat")),
         {{Next, 0, 0, 0, 0}, {Next, 0, 1, 0, 0}},
         {L"cat"}},
        {"backwards, later in the row ",
         {L"cat cat"},
         Backwards(Query(L"cat")),
         {{Next, 0, 0, 0, 4}, {Next, 0, 0, 0, 0}, {Next, 0, 1, 0, 4}},
         {L"cat cat"}},
        {"no such mode ", three, Query(L"cat", L"x"), {{static_cast<FindMode>(3), 0, 2, kNowhere}}, three},
    };
    for (const Walk& walk : walks) {
        TextList list(walk.texts);
        FindReplace engine(list);
        Follow(walk, engine, list);
    }
}

TEST(FindReplace, Replaces)
{
    const Walk walks[] = {
        {"without a match as find ",
         {L"cat"},
         Query(L"cat", L"dog"),
         {{ReplaceAndNext, 0, 0, 0, 0}},
         {L"cat"}},
        {"one by one ",
         {L"cat cat", L"cat"},
         Query(L"cat", L"dog"),
         {{Next, 0, 0, 0, 0},
          {ReplaceAndNext, 0, 0, 0, 4, 1},
          {ReplaceAndNext, 0, 0, 1, 0, 1},
          {ReplaceAndNext, 1, 0, kNowhere, 0, 1},
          {ReplaceAndNext, 1, 2, kNowhere}},
         {L"dog dog", L"dog"}},
        {"wherever the match stands ",
         {L"x", L"cat", L"cat"},
         Query(L"cat", L"dog"),
         {{Next, -1, 0, 1, 0}, {ReplaceAndNext, -1, 0, 2, 0, 1}},
         {L"x", L"dog", L"cat"}},
        {"wraps ",
         {L"cat", L"cat"},
         Query(L"cat", L"dog"),
         {{Next, 1, 0, 1, 0}, {ReplaceAndNext, 1, 1, 0, 0, 1}},
         {L"cat", L"dog"}},
        {"not in its own replacement ",
         {L"a"},
         Query(L"a", L"aa"),
         {{Next, 0, 0, 0, 0}, {ReplaceAndNext, 0, 0, kNowhere, 0, 1}},
         {L"aa"}},
        {"behind its own replacement ",
         {L"a a"},
         Query(L"a", L"a a"),
         {{Next, 0, 0, 0, 0}, {ReplaceAndNext, 0, 0, 0, 4, 1}},
         {L"a a a"}},
        {"backwards ",
         {L"cat", L"cat cat"},
         Backwards(Query(L"cat", L"a cat")),
         {{Next, 1, 0, 1, 4},
          {ReplaceAndNext, 1, 0, 1, 0, 1},
          {ReplaceAndNext, 1, 0, 0, 0, 1},
          {ReplaceAndNext, 0, 1, 1, 8, 1}},
         {L"a cat", L"a cat a cat"}},
        {"all ",
         {L"cat cat", L"x", L"Cat"},
         Query(L"cat", L"dog"),
         {{ReplaceAll, 2, 0, kNowhere, 0, 3}, {ReplaceAll, 0, 2, kNowhere}},
         {L"dog dog", L"x", L"dog"}},
        {"all ends ",
         {L"aaa", L"a"},
         Query(L"a", L"aa"),
         {{ReplaceAll, -1, 0, kNowhere, 0, 4}},
         {L"aaaaaa", L"aa"}},
        {"all by nothing ", {L"aba"}, Query(L"a"), {{ReplaceAll, 0, 0, kNowhere, 0, 2}}, {L"b"}},
    };
    for (const Walk& walk : walks) {
        TextList list(walk.texts);
        FindReplace engine(list);
        Follow(walk, engine, list);
    }
}

TEST(FindReplace, AMatchThatWasEditedIsNotReplaced)
{
    TextList list({L"the cat", L"a cat"});
    FindReplace engine(list);
    engine.Run(0, Next, Query(L"cat"));
    list.texts[0] = L"cat";
    EXPECT_EQ(engine.Run(0, ReplaceAndNext, Query(L"cat", L"dog")), FindResult::Done);
    EXPECT_EQ(list.texts, (Texts{L"cat", L"a cat"}));
    EXPECT_EQ(engine.Match(), (TextMatch{1, {2, 3}}));
    engine.SetMatch(TextMatch{7, {100, 3}});
    EXPECT_EQ(engine.Run(0, ReplaceAndNext, Query(L"cat", L"dog")), FindResult::Done);
    EXPECT_EQ(engine.Match(), (TextMatch{0, {0, 3}}));
    EXPECT_TRUE(list.setRows.empty());
}

TEST(FindReplace, FoldsCaseAndKnowsWords)
{
    const struct
    {
        const char* name;
        const wchar_t* text;
        const wchar_t* find;
        bool matchCase;
        bool wholeWords;
        int count;
    } rows[] = {
        {"folded", L"Cat CAT cat", L"cAt", false, false, 3},
        {"case matters", L"Cat CAT cat", L"cat", true, false, 1},
        {"Greek, final sigma", L"ΟΔΟΣ οδος", L"ΟΔΟΣ", false, false, 2},
        {"Cyrillic", L"Привет ПРИВЕТ", L"привет", false, false, 2},
        {"one to one only", L"straße STRASSE", L"strasse", false, false, 1},
        {"beyond the first plane", L"\U00010400\U00010428", L"\U00010428", false, false, 2},
        {"Kelvin sign", L"300 \u212A", L"k", false, false, 1},
        {"dotted capital keeps its dot", L"\u0130i", L"i", false, false, 1},
        {"part of a word", L"cats cat", L"cat", false, true, 1},
        {"first and last word", L"cat on cat", L"cat", false, true, 2},
        {"between punctuation", L"“cat”… (cat)", L"cat", false, true, 2},
        {"underscore and digits belong to words", L"cat_ 1cat cat2", L"cat", false, true, 0},
        {"a combining mark belongs to its letter", L"cafe\u0301 cafe", L"cafe", false, true, 1},
        {"Arabic", L"كتاب، كتابي", L"كتاب", false, true, 1},
        {"Chinese full stop", L"你好。你好吗", L"你好", false, true, 1},
        {"emoji part words", L"\U0001F600cat\U0001F600", L"cat", false, true, 1},
        {"a find text that is no word", L"a -- b--c", L"--", false, true, 2},
        {"later, when the first is part of a word", L"catcat cat", L"cat", false, true, 1},
    };
    for (const auto& row : rows) {
        TextList list({row.text});
        FindQuery query = Query(row.find);
        query.matchCase = row.matchCase;
        query.wholeWords = row.wholeWords;
        EXPECT_EQ(FindReplace(list).Count(query), row.count) << row.name;
    }
}

TEST(FindReplace, TakesSelectedRowsOnly)
{
    FindQuery query = Query(L"cat", L"dog");
    query.selectedOnly = true;
    TextList list({L"cat", L"cat", L"x", L"cat"}, {1, 3});
    FindReplace engine(list);
    EXPECT_EQ(engine.Count(query), 2);
    EXPECT_EQ(engine.Run(0, Next, query), FindResult::Done);
    EXPECT_EQ(engine.Match(), (TextMatch{1, {0, 3}}));
    list.selected = {3}; // the match's row is no longer one of them
    EXPECT_EQ(engine.Run(1, ReplaceAndNext, query), FindResult::Done);
    EXPECT_EQ(engine.Match(), (TextMatch{3, {0, 3}}));
    EXPECT_EQ(engine.Run(0, ReplaceAll, query), FindResult::Done);
    EXPECT_EQ(list.texts, (Texts{L"cat", L"cat", L"x", L"dog"}));
    list.selected.clear();
    EXPECT_EQ(engine.Run(0, ReplaceAll, query), FindResult::NotFound);
}

TEST(FindReplace, TakesAMatcher)
{
    DigitMatcher digits;
    FindQuery query = Query(L"[0-9]+", L"#");
    query.matcher = &digits;
    TextList list({L"a12b345", L"7x 8"});
    FindReplace engine(list);
    EXPECT_EQ(engine.Count(query), 4);
    EXPECT_EQ(engine.Run(0, Next, query), FindResult::Done);
    EXPECT_EQ(engine.Run(0, ReplaceAndNext, query), FindResult::Done);
    EXPECT_EQ(list.texts[0], L"a2#b345");
    query.wholeWords = true;
    EXPECT_EQ(engine.Run(0, ReplaceAll, query), FindResult::Done);
    EXPECT_EQ(list.texts, (Texts{L"a2#b345", L"7x 1#"}));
    query.find.clear();
    EXPECT_EQ(engine.Run(0, Next, query), FindResult::NotFound);
}

TEST(FindReplace, AFailingMatcherChangesNothing)
{
    for (const FindMode mode : {Next, ReplaceAndNext, ReplaceAll}) {
        DigitMatcher digits;
        FindQuery query = Query(L"[0-9]+", L"#");
        query.matcher = &digits;
        const Texts texts = {mode == ReplaceAll ? L"1" : L"one", L"!", L"2"};
        TextList list(texts);
        FindReplace engine(list);
        EXPECT_EQ(engine.Run(0, mode, query), FindResult::NotFound);
        EXPECT_EQ(list.texts, texts);
        EXPECT_FALSE(engine.Match());
    }
}

TEST(FindReplace, ForgivesAMatcherThatPointsOutside)
{
    struct Liar final : ITextMatcher
    {
        void Begin(std::wstring_view) override {}
        std::optional<TextSpan> Find(std::size_t) override { return span; }
        TextSpan span;
    } liar;
    FindQuery query = Query(L"x", L"y");
    query.matcher = &liar;
    for (const TextSpan span :
         {TextSpan{0, 0}, TextSpan{5, 1}, TextSpan{0, 99}, TextSpan{3, std::size_t(-1)}}) {
        liar.span = span;
        TextList list({L"abc", L""});
        EXPECT_EQ(FindReplace(list).Run(0, ReplaceAll, query), FindResult::NotFound);
        EXPECT_EQ(FindReplace(list).Run(0, Next, Backwards(query)), FindResult::NotFound);
    }
}

/// Steps through random texts come by every match once, both ways, before they come round.
TEST(FindReplace, VisitsEveryMatch)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        TextList list({});
        for (auto row = random() % 6; row > 0; --row) {
            list.texts.emplace_back();
            for (auto length = random() % 8; length > 0; --length)
                list.texts.back() += random() % 2 ? L'a' : L'b';
        }
        FindQuery query = Query(random() % 2 ? L"a" : L"ab");
        query.backwards = random() % 2 != 0;
        FindReplace engine(list);
        const int count = engine.Count(query);
        std::set<std::pair<int, std::size_t>> seen;
        int row = static_cast<int>(random() % 6);
        for (int i = 0; i < count; ++i) {
            ASSERT_NE(engine.Run(row, Next, query), FindResult::NotFound) << round;
            row = engine.Match()->row;
            seen.emplace(row, engine.Match()->span.start);
        }
        EXPECT_EQ(static_cast<int>(seen.size()), count) << round;
    }
}

} // namespace
} // namespace kv
