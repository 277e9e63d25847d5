// Find and replace in the lists of texts.
#include "TextListFixture.h"

#include <utility>

namespace {

using namespace kv::test;

TEST_F(TextList, FindsFromTheMatchThatFollowsItsRow)
{
    list.AddString({L"Cat and cat", L"dog", L"CAT", L"concatenate"});
    const auto find = [&](int start, int mode, const wchar_t* what) {
        const int result = list.FindReplace(start, mode, what, L"", 0);
        return std::pair(result, list.GetLastSelItem());
    };
    EXPECT_EQ(find(0, 0, L""), std::pair(2, -1));
    EXPECT_EQ(find(0, 5, L"cat"), std::pair(2, -1)) << "no such mode";
    EXPECT_EQ(find(-1, 0, L"cat"), std::pair(0, 0));
    EXPECT_EQ(find(0, 0, L"cat"), std::pair(0, 0)) << "the second one in the row";
    EXPECT_EQ(find(0, 0, L"cat"), std::pair(0, 2));
    list.InsertString(0, L"above");
    EXPECT_EQ(find(3, 0, L"cat"), std::pair(0, 4));
    EXPECT_EQ(find(4, 0, L"cat"), std::pair(1, 1)) << "round the end";
    list.SetFindOptions(kKvFindWholeWords);
    EXPECT_EQ(list.CountMatches(L"cat", 0), 3);
    EXPECT_EQ(list.CountMatches(L"cat", 1), 1);
    list.SetFindOptions(kKvFindSelectedRows);
    list.SetSelItem(Lines{3, 4});
    EXPECT_EQ(list.CountMatches(L"cat", 0), 2);
    EXPECT_EQ(list.FindReplace(0, 0, L"CAT", L"", 1), 0);
    EXPECT_EQ(Selected(), (Lines{3, 4})) << "the searched selection stays";
    EXPECT_EQ(list.GetCurrentItem(), 3);
}

TEST_F(TextList, ReplacementsAreOneStep)
{
    list.AddString({L"cat and cat", L"dog", L"cat"});
    EXPECT_EQ(list.FindReplace(0, 2, L"cat", L"catcat", 0), 0);
    EXPECT_EQ(Texts(), (CStringArray{L"catcat and catcat", L"dog", L"catcat"}));
    EXPECT_TRUE(list.IsModified());
    EXPECT_EQ(list.GetUndoStack()->count(), 1);
    Undo();
    EXPECT_EQ(Texts(), (CStringArray{L"cat and cat", L"dog", L"cat"}));
}

TEST_F(TextList, SaysWhatIsWrongWithAPattern)
{
    const std::wstring as(20, L'a');
    const struct
    {
        const char* name;
        CStringArray texts;
        const wchar_t* pattern;
    } cases[] = {{"bad", {L"("}, L"("},
                 {"costly in one row", {as + as + L"b"}, L"^(a+)+$"},
                 {"costly in all together", CStringArray(2000, as + L"!"), L"(a|a)+[bc]"}};
    list.SetFindOptions(kKvFindRegularExpression);
    for (const auto& one : cases) {
        list.ResetContent(1);
        list.AddString(one.texts);
        EXPECT_EQ(list.FindReplace(0, 0, one.pattern, L"", 1), 2) << one.name;
        EXPECT_NE(list.GetFindError(), L"") << one.name;
    }
    EXPECT_EQ(list.FindReplace(0, 0, L"a!", L"", 1), 0);
    EXPECT_EQ(list.GetFindError(), L"");
}

TEST(ListFind, ReplacesByPattern)
{
    const struct
    {
        const char* name;
        const wchar_t* text;
        const wchar_t* pattern;
        const wchar_t* replace;
        const wchar_t* one; ///< once the first match is replaced
        const wchar_t* all;
    } cases[] = {
        {"groups", L"ab ab", L"(a)(b)", L"\\2\\1\\0", L"baab ab", L"baab baab"},
        {"a group before what is replaced", L"ab ab", L"(a)\\Kb", L"<\\1>", L"a<a> ab", L"a<a> a<a>"},
        {"the same where it may be missing", L"ab b", L"(a)?\\Kb", L"<\\1>", L"a<a> b", L"a<a> <>"},
        {"a group that took no part", L"b", L"(a)|b", L"<\\1>", L"<>", L"<>"},
        {"a group ahead of it", L"ab", L"a(?=(b))", L"\\1", L"bb", L"bb"},
        {"the context before a match", L"aaa", L"(?<=a)a", L"-", L"a-a", L"a--"},
        {"characters of two units", L"\U0001F600x\U0001F601y\U0001F602x", L"([xy])(.)?", L"\\2\\1|",
         L"\U0001F600\U0001F601x|y\U0001F602x", L"\U0001F600\U0001F601x|\U0001F602y|x|"},
        {"half a character", L"\xD800x\xDC00x", L"(.)x", L"\\1-", L"\xD800-\xDC00x", L"\xD800-\xDC00-"},
        {"line breaks and backslashes", L"a\nb", L"^.", L"\\n\\\\", L"\n\\\nb", L"\n\\\n\n\\"},
        {"matches of no length", L"ab", L"x*", L"-", L"ab", L"ab"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        CKvTextEditListCtrl list;
        list.AddString({one.text, one.text});
        list.SetFindOptions(kKvFindRegularExpression);
        list.FindReplace(0, 0, one.pattern, one.replace, 1);
        list.FindReplace(0, 1, one.pattern, one.replace, 1);
        EXPECT_EQ(list.GetItemText(0, 0), one.one);
        list.FindReplace(0, 2, one.pattern, one.replace, 1);
        EXPECT_EQ(list.GetItemText(1, 0), one.all);
        EXPECT_EQ(list.GetFindError(), L"");
    }
}

} // namespace
