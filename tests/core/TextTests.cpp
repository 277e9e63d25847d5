#include "core/CodePoints.h"
#include "core/MessageBox.h"
#include "core/Text.h"
#include "core/Wildcard.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace kv {
namespace {

TEST(Text, BytesThatAreNoUtf8BecomeReplacementCharacters)
{
    const struct
    {
        const char* name;
        std::string_view bytes;
        std::wstring_view wide;
    } rows[] = {
        {"every length", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xAC", L"a\u00E4\u20AC\U0001F3AC"},
        {"first and last of each length",
         "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
         L"\x7F\x80\u07FF\u0800\uFFFF\U00010000\U0010FFFF"},
        {"overlong slash", "\xC0\xAF", L"\uFFFD\uFFFD"},
        {"overlong in three", "\xE0\x9F\xBF", L"\uFFFD\uFFFD\uFFFD"},
        {"surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
        {"above the last character", "\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"cut at the end", "a\xF0\x9F\x8E", L"a\uFFFD"},
        {"cut by a letter", "\xE2\x82z", L"\uFFFDz"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FromUtf8(row.bytes), row.wide) << row.name;
        EXPECT_EQ(FromUtf8(ToUtf8(row.wide)), row.wide) << row.name;
        EXPECT_EQ(ToFileName(FromFileName(row.bytes)), row.bytes) << row.name;
    }
}

TEST(Text, WideTextThatIsNoCharacterBecomesReplacementCharacters)
{
    const std::wstring wide = {L'a', wchar_t(0xD800), L'b', wchar_t(0xDC80)};
    EXPECT_EQ(ToUtf8(wide), "a\xEF\xBF\xBD"
                            "b\xEF\xBF\xBD");
    EXPECT_EQ(ToFileName(wide), "a\xEF\xBF\xBD"
                                "b\x80");
}

TEST(Text, ACutSparesSurrogatePairs)
{
    const std::wstring_view text = L"ab\U0001F3ACc";
    const std::size_t afterB = sizeof(wchar_t) == 2 ? 2 : 3;
    for (const auto& [most, length] :
         {std::pair<std::size_t, std::size_t>(0, 0), {2, 2}, {3, afterB}, {9, text.size()}})
        EXPECT_EQ(CutLength(text, most), length) << most;
}

TEST(Text, FillsItsOwnPlaceholdersOnly)
{
    const struct
    {
        const char* name;
        std::wstring_view text;
        std::wstring_view filled;
    } rows[] = {
        {"each kind", L"%d of %s, %.1f", L"1 of 2, 3"},
        {"percent sign", L"100%% %s%%", L"100% 1%"},
        {"unknown forms stand", L"%n %x %.2f %5d %s", L"%n %x %.2f %5d 1"},
        {"more than there are", L"%s%s%s%s%d", L"123%s%d"},
        {"fewer than there are", L"only %s", L"only 1"},
        {"cut short", L"%s %.1", L"1 %.1"},
        {"lone percent", L"%", L"%"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FillText(row.text, {L"1", L"2", L"3"}), row.filled) << row.name;
    EXPECT_EQ(FillText(L"%3$s, %1$.1f %4$d %0$s %2$x %s", {L"1", L"2", L"3"}), L"3, 1 %4$d %0$s %2$x 1");
    EXPECT_EQ(FillText(L"%s-%s", {L"%s", L"%d"}), L"%s-%d") << "arguments are not filled in turn";
}

TEST(Text, NumbersReadAsPrintfWritesThem)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 2000; ++i) {
        const double value = static_cast<double>(random() % 4'000'001) / 2000.0 - 1000.0;
        const int decimals = i % 4;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
        ASSERT_EQ(ToUtf8(NumberText(value, decimals)), expected);
    }
    EXPECT_EQ(NumberText(1e308, 3).size(), 309u + 4u);
    EXPECT_EQ(NumberText(INT64_MIN), L"-9223372036854775808");
}

TEST(MessageBox, WithoutAnybodyToAnswerItSpeaksOnStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(KvMessageBox(nullptr, L"Sch\u00F6n?", MB_YESNO | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Sch\xC3\xB6n?\n");
}

/// The plain way: what of the specification can be reached after each character of the name.
bool FitsSlowly(std::wstring_view name, std::wstring_view specification)
{
    std::vector<bool> reached(specification.size() + 1);
    const auto passStars = [&] {
        for (std::size_t s = 0; s < specification.size(); ++s) {
            if (reached[s] && specification[s] == L'*')
                reached[s + 1] = true;
        }
    };
    reached[0] = true;
    passStars();
    for (const wchar_t character : name) {
        std::vector<bool> next(reached.size());
        for (std::size_t s = 0; s < specification.size(); ++s) {
            if (reached[s] && specification[s] == L'*')
                next[s] = true;
            else if (reached[s] && (specification[s] == L'?' || specification[s] == character))
                next[s + 1] = true;
        }
        reached = std::move(next);
        passStars();
    }
    return reached.back();
}

TEST(Wildcard, FitsAsThePlainWayDoes)
{
    constexpr std::wstring_view letters = L"ab*?";
    std::mt19937 random(7);
    const auto text = [&](std::size_t longest, std::size_t kinds) {
        std::wstring out(random() % (longest + 1), L' ');
        std::generate(out.begin(), out.end(), [&] { return letters[random() % kinds]; });
        return out;
    };
    for (int i = 0; i < 50000; ++i) {
        const std::wstring name = text(10, 2);
        const std::wstring specification = text(8, 4);
        ASSERT_EQ(FitsWildcard(name, specification), FitsSlowly(name, specification))
            << ToUtf8(name) << " / " << ToUtf8(specification);
    }
}

TEST(Wildcard, ManyStarsTakeNoExponentialTime)
{
    EXPECT_FALSE(FitsWildcard(std::wstring(100, L'a'), L"*a*a*a*a*b"));
    std::wstring stars;
    for (int i = 0; i < 1000; ++i)
        stars += L"*a";
    EXPECT_FALSE(FitsWildcard(std::wstring(5000, L'a'), stars + L"b"));
    EXPECT_TRUE(FitsWildcard(std::wstring(5000, L'a'), stars + L"?"));
}

TEST(Wildcard, IgnoresCaseBySimpleFolding)
{
    const struct
    {
        const char* name;
        std::wstring_view a;
        std::wstring_view b;
        bool same;
    } rows[] = {
        {"ASCII", L"CLIP_[Z]", L"clip_[z]", true},
        {"no letters beside the alphabet", L"@[`{", L"`{@[", false},
        {"Latin", L"\u00C4\u00D8\u0178", L"\u00E4\u00F8\u00FF", true},
        {"not the division signs", L"\u00D7", L"\u00F7", false},
        {"Kelvin and long s", L"\u212A\u017F", L"ks", true},
        {"three sigmas", L"\u03A3\u03C3\u03C2", L"\u03C2\u03A3\u03C3", true},
        {"Cyrillic and Armenian", L"\u0416\u0531", L"\u0436\u0561", true},
        {"capital sharp s", L"\u1E9E", L"\u00DF", true},
        {"sharp s is no ss", L"\u00DF", L"ss", false},
        {"dotted I is Turkish only", L"\u0130", L"i", false},
        {"Cherokee folds upwards", L"\uAB70\u13F8", L"\u13A0\u13F0", true},
        {"beyond the first plane", L"\U00010400\U0001E921", L"\U00010428\U0001E943", true},
        {"one character", L"\U0001F3AC", L"?", true},
        {"and no two", L"\U0001F3AC", L"??", false},
        {"each for one", L"\U0001F3AC\U0001F600", L"??", true},
        {"found behind any", L"a\U0001F3ACb\U0001F3AC", L"*\U0001F3AC", true},
        {"half of one is another", L"\U0001F3AC", L"*\xDFAC", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FitsWildcard(row.a, row.b), row.same) << row.name;
    EXPECT_EQ(FoldCase(0x10FFFF), char32_t{0x10FFFF});
    EXPECT_EQ(FoldCase(0xFFFFFFFF), char32_t{0xFFFFFFFF});
}

} // namespace
} // namespace kv
