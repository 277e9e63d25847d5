#include "NamingTools.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using MatcherPtr = kv::Reference<IKvFileNamingMatcher>;

MatcherPtr MakeMatcher()
{
    IKvFileNamingMatcher* matcher = nullptr;
    KvCreateFileNamingMatcher(&matcher);
    return MatcherPtr(matcher);
}

/// The groups' files, each followed by a blank and each group by a "/".
std::wstring Groups(IKvFileNamingMatcher& matcher, const std::wstring& base)
{
    unsigned int count = 0;
    EXPECT_EQ(matcher.BuildGroups(&count), 1);
    std::wstring text;
    for (unsigned int i = 0; i < count; ++i) {
        wchar_t name[kKvNamingGroupNameSize];
        CStringArray files;
        EXPECT_EQ(matcher.GetGroup(i, name, &files), 1);
        EXPECT_EQ(name, base);
        for (const std::wstring& file : files)
            text += file + L' ';
        text += L'/';
    }
    return text;
}

TEST(FileNamingMatcher, GroupsSiblings)
{
    const std::wstring video = L"1|<File><Ext>|<File>_A<Number><Ext>";
    const std::wstring channel = L"|<File>_A<Number><Ext>|<File><Ext>";
    const std::wstring ordered =
        L"1|<File>.m|<File>y|<File>x||<File>w;1|<File>.a|<File>x;1|<File><Ext>|<File>x";
    std::wstring many; // enough that an unstable sort would mix them
    for (wchar_t ending = L'Z'; ending >= L'A'; --ending)
        many.append(L"c_A1.").append(1, ending).append(L" ");
    const std::wstring b(100, L'b');
    const std::wstring q(27, L'?');
    const std::wstring rows[][5] = {
        {L"numbers", video, L"c.m", L"c_A10.w c_A2.w c_A1.w d_A1.w c.m", L"c_A1.w c_A2.w c_A10.w /"},
        {L"as offered", video, L"c.m", L"D:\\x/y\\c_A1.w /m/c_A01.w c_A1.a", L"c_A1.w c_A01.w c_A1.a /"},
        {L"all equal", video, L"c.m", many + L"c_A1", many + L"/"},
        {L"unreadable is 0", video, L"c.m", L"c_A1.w C_a2.W c_A.w", L"C_a2.W c_A.w c_A1.w /"},
        {L"records, entries, no empty groups", ordered, L"c.m", L"cx cw cx", L"cx cx /cw /cx cx /"},
        {L"other class", L"0|x|x;2|<File>|<File>", L"c", L"c", L""},
        {L"no main rule", L"1||<File>", L"", L"c", L""},
        {L"no additions", L"2|<File>|", L"c", L"c", L""},
        {L"audio: its main rule, too", L"2" + channel, L"c_A2.w", L"c_A3.w c_A1.w c.m",
         L"c.m c_A1.w c_A3.w /"},
        {L"video: not", L"1" + channel, L"c_A2.w", L"c_A1.w c.m", L"c.m /"},
        {L"class 3: not", L"3" + channel, L"c_A2.w", L"c_A1.w c.m", L"c.m /"},
        {L"the base keeps its folder", video, L"d/c.m", L"c_A1.w", L""},
        {L"addition first", L"2|<File>_A<Number><Ext>|<File>*", L"c_A1.w", L"c_A9.w c", L"c_A9.w c /"},
        {L"main derives 128 characters", L"2|<File>_<Number>" + q + L"|<File>x", b + L"_1" + q,
         b + L"x  " + b + L"_2" + q, b + L"x /"},
        {L"addition derives 128 characters", L"1|<File>.m|<File>" + q + L"?|<File>x", b + L".m",
         b + q + L"? " + b + L"x", b + L"x /"},
    };
    for (const auto& [row, rules, base, offered, groups] : rows) {
        SCOPED_TRACE(testing::PrintToString(row));
        const MatcherPtr matcher = MakeMatcher();
        const CollectionPtr collection = MakeCollection(Split(rules, L';'));
        ASSERT_EQ(
            matcher->Prepare(base.c_str(), static_cast<unsigned int>(rules[0] - L'0'), collection.get()), 1);
        std::ptrdiff_t filed = 0;
        for (const std::wstring& file : Split(offered, L' '))
            filed += matcher->AddFile(file.c_str());
        EXPECT_EQ(Groups(*matcher, base), groups);
        EXPECT_EQ(filed, std::count(groups.begin(), groups.end(), L' '));
    }
}

TEST(FileNamingMatcher, StartsOverAndRefuses)
{
    const MatcherPtr matcher = MakeMatcher();
    const CollectionPtr rules = MakeCollection({L"1|<File><Ext>|<File>_A<Number><Ext>"});
    wchar_t name[kKvNamingGroupNameSize] = L"untouched";
    CStringArray files = {L"kept"};
    const auto prepare = [&](const std::wstring& base) {
        ASSERT_EQ(matcher->Prepare(base.c_str(), 1, rules.get()), 1);
        EXPECT_EQ(matcher->AddFile(L"c_A1.w"), 1);
        unsigned int count = 0;
        EXPECT_EQ(matcher->BuildGroups(&count), 1);
        EXPECT_EQ(count, 1u);
    };
    prepare(L"c.m");
    EXPECT_EQ(matcher->Prepare(nullptr, 1, rules.get()), 0);
    EXPECT_EQ(matcher->GetGroup(0, name, &files), 0) << "discarded all the same";
    EXPECT_EQ(matcher->AddFile(L"c_A1.w"), 0);
    EXPECT_EQ(matcher->Prepare(L"c.m", 1, nullptr) + matcher->Prepare(L"c.m", 1, MakeCollection({}).get()),
              0);
    prepare(L"c." + std::wstring(258, L'x'));
    EXPECT_EQ(matcher->GetGroup(0, name, &files), 0) << "260 characters do not fit";
    prepare(L"c." + std::wstring(257, L'x'));
    EXPECT_EQ(Groups(*matcher, L"c." + std::wstring(257, L'x')), L"c_A1.w /");

    prepare(L"c.m");
    matcher->AddFile(L"c_A0.w");
    EXPECT_EQ(Groups(*matcher, L"c.m"), L"c_A0.w c_A1.w /") << "made anew";
    EXPECT_EQ(matcher->GetGroup(1, name, &files) + matcher->GetGroup(0, nullptr, &files), 0);
    EXPECT_EQ(matcher->GetGroup(0, name, nullptr), 0);
    EXPECT_STREQ(name, L"untouched");
    EXPECT_EQ(matcher->GetGroup(0, name, &files), 1);
    EXPECT_EQ(files, CStringArray({L"kept", L"c_A0.w", L"c_A1.w"}));
    EXPECT_EQ(matcher->AddFile(nullptr) + matcher->BuildGroups(nullptr), 0);
}

TEST(FileNamingMatcher, SkipsARuleThatIsNotHandedOut)
{
    const MatcherPtr matcher = MakeMatcher();
    const kv::Reference<HostCollection> rules(
        new HostCollection({L"1|<File>|a", L"1|<File>|b", L"1|<File>|c"}));
    ASSERT_EQ(matcher->Prepare(L"x", 1, rules.get()), 1);
    for (const wchar_t* file : {L"a", L"b", L"c"})
        matcher->AddFile(file);
    EXPECT_EQ(Groups(*matcher, L"x"), L"a /c /");
}

} // namespace
