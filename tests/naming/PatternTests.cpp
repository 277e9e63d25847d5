#include "naming/NamePattern.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>

namespace {

std::size_t g_allocations = 0;

}

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

// Of the pair below g++ for Windows sees one half only.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

using kv::NamePattern;
using kv::NameValues;

constexpr wchar_t kNoFit[] = L"-";

std::wstring Joined(const NameValues& values)
{
    std::wstring joined;
    for (const kv::NameValue& value : values)
        joined.append(joined.empty() ? L"" : L"|").append(value.text);
    return joined;
}

TEST(NamePattern, ReadsNames)
{
    const std::wstring rows[][4] = {
        {L"each label", L"<File>_A<Number><Ext>", L"clip_A01.wav", L"clip|01|.wav"},
        {L"no digit, go on", L"<File>_A<Number><Ext>", L"my_A_clip_A01.wav", L"my_A_clip|01|.wav"},
        {L"no digit anywhere", L"<File>_A<Number><Ext>", L"clip_A.wav", kNoFit},
        {L"no second cut is tried", L"<File>_A<Number><Ext>", L"clip_A1_A2.wav", kNoFit},
        {L"digit only before <Number>", L"<File>_A<Ext>", L"my_A.x_A.wav", L"my|.x_A.wav"},
        {L"nor behind <Number>", L"<File>_<Number>x<Ext>", L"a_1x.w", L"a|1|.w"},
        {L"house names", L"<File>-00-0001-00-000-VHD.MXF", L"clip-00-0001-00-000-VHD.MXF", L"clip"},
        {L"beyond the first plane", L"<File>_\U0001F3AC<Number><Ext>", L"\U0001F600_\U0001F3AC7.w",
         L"\U0001F600|7|.w"},
        {L"literals in exact case", L"<File>-VHD.MXF", L"clip-VHD.mxf", kNoFit},
        {L"<File> ends at the first digit", L"<File><Number>", L"take2_01", L"take|2"},
        {L"<File> ends at the first point", L"<File><Ext>", L"a.b.mxf", L"a|.b.mxf"},
        {L"nothing left for <File>", L"<File><Ext>", L".mxf", kNoFit},
        {L"an extension is more than its point", L"<File><Ext>", L"clip.", kNoFit},
        {L"no extension", L"<File><Ext>", L"clip", kNoFit},
        {L"a lone label takes all", L"<File>", L"x.mxf", L"x.mxf"},
        {L"a lone <Number>, too", L"<Number>_x", L"ab_x", L"ab"},
        {L"a lone <Ext> needs the specification", L"<File>_<Ext>", L"a_b", kNoFit},
        {L"which may pass elsewhere", L"<File>_<Ext>", L"a_b_.c", L"a|b_.c"},
        {L"labels after <Ext> read it again", L"<File><Ext><File>", L"a.b", L"a|.b|.b"},
        {L"two extensions need two points", L"<Ext><Ext>", L".b", kNoFit},
        {L"and share the text", L"<Ext><Ext>", L".b.c", L".b.c|.b.c"},
        {L"the second <File> gets nothing", L"<File><File>", L"ab", kNoFit},
        {L"two <File> apart", L"<File>_<File><Ext>", L"a_b.c", L"a|b|.c"},
        {L"before a leading literal", L"x<File>", L"axb", kNoFit},
        {L"after a last literal", L"<File>.mxf", L"a.mxf.mxf", kNoFit},
        {L"a later < replaces an open one", L"<a<File>", L"<ab", L"b"},
        {L"unknown labels are literal", L"<file><Files><File>", L"<file><Files>a", L"a"},
        {L"wildcards in the literal text", L"<File>*?", L"a*?", L"a"},
        {L"and as themselves only", L"<File>*?", L"axy", kNoFit},
        {L"empty name", L"<File>", L"", kNoFit},
        {L"no label", L"ab", L"ab", L""},
    };
    for (const auto& [row, pattern, name, expected] : rows) {
        NameValues values;
        const bool fits = NamePattern(pattern).Fit(name, values);
        EXPECT_EQ(fits ? Joined(values) : kNoFit, expected) << row;
        EXPECT_TRUE(fits || values.empty()) << row;
    }
}

TEST(NamePattern, LongTextsAreNoPatterns)
{
    NameValues values;
    EXPECT_TRUE(NamePattern(std::wstring(121, L'x') + L"<File>").Read(std::wstring(130, L'x'), values));
    EXPECT_FALSE(NamePattern(std::wstring(122, L'x') + L"<File>").Read(std::wstring(130, L'x'), values));
    std::wstring many;
    for (std::size_t i = 0; i < NameValues::kCapacity; ++i)
        many += L"<Ext>";
    EXPECT_TRUE(NamePattern(many).Read(L".x", values));
    EXPECT_EQ(values.size(), NameValues::kCapacity);
}

TEST(NamePattern, DerivesSpecifications)
{
    const std::wstring long121(121, L'x');
    const std::wstring rows[][5] = {
        {L"siblings", L"<File><Ext>", L"clip.mxf", L"<File>_A<Number><Ext>", L"clip_A*.*"},
        {L"every <File>", L"<File><Ext>", L"clip.mxf", L"<File>-<File>", L"clip-clip"},
        {L"the first of two values", L"<File>_<File>", L"a_b", L"<File><File>", L"aa"},
        {L"no value", L"<Number>x", L"1x", L"<File>x", L"*x"},
        {L"wildcards of a value act", L"<File><Ext>", L"a*b?.mxf", L"<File>.x", L"a*b?.x"},
        {L"so do its labels", L"<File>.mxf", L"<Ext>.mxf", L"<File>x", L".*x"},
        {L"also those that it completes", L"<File>.mxf", L"umbe.mxf", L"<N<File>r>x", L"*x"},
        {L"127 characters", L"<File>", long121, L"<File>_A<Ext>??", long121 + L"_A.*??"},
        {L"128 characters", L"<File>", long121, L"<File>_A<Ext>???", L"refused"},
        {L"empty", L"<File>", L"a", L"", L"refused"},
    };
    for (const auto& [row, mainRule, name, addition, expected] : rows) {
        NameValues values;
        ASSERT_TRUE(NamePattern(mainRule).Fit(name, values)) << row;
        const auto derived = kv::DeriveSpecification(addition, {values.begin(), values.end()});
        EXPECT_EQ(derived.value_or(L"refused"), expected) << row;
    }
    // Values that hold labels would grow without end.
    std::vector<kv::NameValue> hostile(20, {kv::TokenKind::File, L"<File><File><File><File><File>"});
    EXPECT_FALSE(kv::DeriveSpecification(L"<File><File>", hostile));
}

TEST(NamePattern, ReadsNumbers)
{
    const NamePattern pattern(L"<File>_A<Number><Ext>");
    EXPECT_EQ(pattern.ReadNumber(L"clip_A007.wav"), 7);
    EXPECT_EQ(pattern.ReadNumber(L"clip_a7.wav"), std::nullopt);
    EXPECT_EQ(NamePattern(L"<File>_<Number>-<Number><Ext>").ReadNumber(L"a_3-7.w"), 3);
    EXPECT_EQ(NamePattern(L"<File>").ReadNumber(L"clip"), std::nullopt);
    EXPECT_EQ(NamePattern(L"<Number>").ReadNumber(L"-5"), 0);
    EXPECT_EQ(kv::LeadingNumber(L"12a3"), 12);
    EXPECT_EQ(kv::LeadingNumber(L" 1"), 0);
    EXPECT_EQ(kv::LeadingNumber(L"2147483647"), 2147483647);
    EXPECT_EQ(kv::LeadingNumber(L"99999999999999999999999"), 2147483647);
}

TEST(NamePattern, NoAllocationWithoutFit)
{
    const NamePattern pattern(L"<File>_A<Number><Ext>");
    NameValues values;
    const std::size_t before = g_allocations;
    for (const wchar_t* name : {L"a_rather_long_name_of_a_clip_A.wav", L"clip_A1_A2.wav", L"clip", L""})
        EXPECT_FALSE(pattern.Fit(name, values));
    EXPECT_EQ(g_allocations, before);
}

} // namespace
