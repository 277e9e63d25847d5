// Find and replace in the lists of texts.
#include "KvTextEditListCtrl.h"

#include <gtest/gtest.h>

namespace {

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
