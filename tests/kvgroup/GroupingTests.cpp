#include "KvFileNaming.h"
#include "core/CodePoints.h"
#include "core/RefCounted.h"
#include "core/Text.h"
#include "core/Wildcard.h"
#include "naming/MediaExtensions.h"
#include "naming/MediaGrouper.h"
#include "naming/MediaReport.h"
#include "naming/MediaTextOrder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace kv {
namespace {

using Names = std::vector<std::wstring>;
using Rules = Reference<IKvFileNamingRuleCollection>;

struct RuleText
{
    unsigned int ruleClass;
    std::wstring main;
    Names additions;
};

Rules MakeRules(const std::vector<RuleText>& texts)
{
    IKvFileNamingRuleCollection* rules = nullptr;
    CreateFileNamingRuleCollection(&rules);
    for (const RuleText& text : texts) {
        IKvFileNamingRule* rule = nullptr;
        CreateFileNamingRule(text.ruleClass, &rule);
        rule->SetMainRule(text.main.c_str());
        for (const std::wstring& addition : text.additions)
            rule->AddAdditionRule(addition.c_str());
        rules->AddRule(rule);
        rule->Release();
    }
    return Rules(rules);
}

const std::vector<RuleText> kUsualRules = {
    {1, L"<File><Ext>", {L"<File><Ext>", L"<File>A<Number><Ext>", L"<File>_A<Number><Ext>"}},
    {2, L"<File>_A<Number><Ext>", {L"<File><Ext>", L"<File>_A<Number><Ext>"}},
    {2, L"<File>A<Number><Ext>", {L"<File><Ext>", L"<File>A<Number><Ext>"}},
};

// Patterns without a fixed start, without any wildcard, with wildcards and label texts in their literals.
const std::vector<RuleText> kOddRules = {
    {1,
     L"<File><Ext>",
     {L"<Number>_<File><Ext>", L"<File>", L"<<File>>", L"", L"a<File>*", L"<File>?<Number>"}},
    {1, L"<File>_<Number><Ext>", {L"<File>_A<Number><Ext>", L"<File><File><Ext>"}},
    {2, L"<Number>", {L"<Number>.a", L"<File>A"}},
    {2, L"<File>A<Number>", {L"<File>_<Number>", L"a<Number><Ext>"}},
    {1, L"a", {L"<File>", L"a<Ext>"}},
};

// A clip in one comparable line: class, base, then each group.
std::wstring ClipLine(unsigned int ruleClass, const std::wstring& base, const std::vector<Names>& groups)
{
    std::wstring line = std::to_wstring(ruleClass) + L" " + base;
    for (const Names& group : groups) {
        line += L" |";
        for (const std::wstring& name : group)
            line += L" " + name;
    }
    return line;
}

Names Grouped(const Names& given, const std::vector<RuleText>& texts)
{
    MediaNames names;
    for (const std::wstring& name : given)
        names.Add(name);
    names.Sort();
    constexpr unsigned int kClasses[] = {1, 2};
    const MediaGrouping grouping = GroupMedia(names, ReadMediaRules(*MakeRules(texts)), kClasses);
    Names lines;
    for (const MediaClip& clip : grouping.clips) {
        std::vector<Names> groups;
        for (const MediaGroup& group : grouping.GroupsOf(clip)) {
            groups.emplace_back();
            for (const FiledMedia& file : grouping.FilesOf(group))
                groups.back().emplace_back(names[file.name]);
        }
        lines.push_back(ClipLine(clip.ruleClass, std::wstring(names[clip.base]), groups));
    }
    return lines;
}

// Units of UTF-16 have another order than the characters.
struct ByCodePoint
{
    static std::u32string Points(std::wstring_view text)
    {
        std::u32string points;
        for (std::size_t at = 0; at < text.size(); at += NextCodePoint(text, at).length)
            points += NextCodePoint(text, at).value;
        return points;
    }
    bool operator()(const std::wstring& a, const std::wstring& b) const { return Points(a) < Points(b); }
};
using NameSet = std::set<std::wstring, ByCodePoint>;

// The plain way, with the public matcher: one rule with one addition at a time, every file offered.
Names PlainGroup(const std::wstring& base, const RuleText& rule, const std::wstring& addition,
                 const NameSet& names)
{
    IKvFileNamingMatcher* created = nullptr;
    KvCreateFileNamingMatcher(&created);
    const Reference<IKvFileNamingMatcher> matcher(created);
    matcher->Prepare(base.c_str(), rule.ruleClass,
                     MakeRules({{rule.ruleClass, rule.main, {addition}}}).get());
    for (const std::wstring& name : names)
        matcher->AddFile(name.c_str());
    unsigned int count = 0;
    matcher->BuildGroups(&count);
    wchar_t groupName[kKvNamingGroupNameSize];
    Names files;
    matcher->GetGroup(0, groupName, &files);

    NameValues values;
    NamePattern(rule.main).Fit(base, values);
    const auto specification = DeriveSpecification(addition, {values.data(), values.size()});
    const auto isUnread = [&](const std::wstring& name) {
        const bool byAddition = FitsWildcard(name, specification.value_or(L""));
        const NamePattern chosen(byAddition ? addition : rule.main);
        return chosen.HasNumber() && !chosen.ReadNumber(name);
    };
    files.erase(std::remove_if(files.begin(), files.end(), isUnread), files.end());
    return files;
}

Names GroupedPlainly(const Names& given, const std::vector<RuleText>& rules)
{
    const NameSet names(given.begin(), given.end());
    Names order(names.begin(), names.end());
    std::stable_partition(order.begin(), order.end(), HasVideoExtension);
    std::set<std::wstring> claimed;
    Names lines;
    for (const unsigned int ruleClass : {1u, 2u}) {
        for (const std::wstring& base : order) {
            if (claimed.count(base) > 0)
                continue;
            std::vector<Names> groups;
            std::set<std::wstring> files = {base};
            for (const RuleText& rule : rules) {
                for (const std::wstring& addition : rule.additions) {
                    Names group =
                        rule.ruleClass == ruleClass ? PlainGroup(base, rule, addition, names) : Names();
                    files.insert(group.begin(), group.end());
                    if (!group.empty())
                        groups.push_back(std::move(group));
                }
            }
            if (files.size() < 2)
                continue;
            claimed.insert(files.begin(), files.end());
            lines.push_back(ClipLine(ruleClass, base, groups));
        }
    }
    return lines;
}

std::string Text(const Names& lines)
{
    std::string text;
    for (const std::wstring& line : lines)
        text += ToFileName(line) + "\n";
    return text;
}

// Few pieces, so that names have much to do with each other.
Names RandomNames(std::mt19937& random)
{
    const Names stems = {L"a",      L"A",      L"b",          L"_",      L"1", L"02", L".",      L" ",
                         L"\u00E9", L"\u00C9", L"\U00010428", L"\xDCFF", L"*", L"?",  L"<File>", L"<Number>"};
    const Names ends = {L".mov", L".wav", L"_A1.wav",        L"_A02.wav", L"_a3.wav", L"A7", L"_5.mov",
                        L".a",   L"_A-5", L"_A9999999999.a", L"A1A2.mov", L"-5",      L""};
    const auto pick = [&](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    const std::size_t variety = 2 + pick(stems.size() - 1);
    const bool many = pick(8) == 0; // enough candidates for an addition to be remembered
    Names names(many ? 100 : 1 + pick(30));
    for (std::wstring& name : names) {
        name = many ? L"a_" : L"";
        for (std::size_t i = pick(many ? 5 : 3); i > 0; --i)
            name += stems[pick(variety)];
        name += stems[pick(variety)] + ends[pick(ends.size())];
    }
    return names;
}

TEST(Grouping, EqualsThePlainWayInAnyOrder)
{
    std::size_t clips = 0;
    for (unsigned int seed = 1; seed <= 120; ++seed) {
        std::mt19937 random(seed);
        Names names = RandomNames(random);
        const std::vector<RuleText>& rules = seed % 2 == 0 ? kUsualRules : kOddRules;
        const Names expected = GroupedPlainly(names, rules);
        ASSERT_EQ(Text(Grouped(names, rules)), Text(expected)) << "seed " << seed << "\n" << Text(names);
        names.push_back(names.front());
        std::shuffle(names.begin(), names.end(), random);
        ASSERT_EQ(Text(Grouped(names, rules)), Text(expected)) << "shuffled, seed " << seed << "\n"
                                                               << Text(names);
        clips += expected.size();
    }
    EXPECT_GT(clips, 250u);
}

TEST(Grouping, EqualsThePlainWayInRareCases)
{
    struct Row
    {
        const char* name;
        RuleText rule;
        Names names;
        const wchar_t* many; // stands in 70 more names with ".mov": enough for an addition to be remembered
        const char* holds;   // one of the lines
    };
    const Row rows[] = {
        {"a label made of a literal and a value",
         {1, L"<File><Ext>", {L"<<File>>"}},
         {L"Number.mov", L"z"},
         L"Number",
         "1 Number.mov | "},
        {"one specification, two main specifications",
         {2, L"<File>_A<Number><Ext>", {L"x<Number><Ext>"}},
         {L"b_A1.wav", L"b_A2.wav", L"c_A1.wav", L"c_A2.wav"},
         L"x",
         "2 b_A1.wav | "},
        {"files of a base that is alone, found again",
         {1, L"<File>_<Number><Ext>", {L"<File>_<Number>.mov"}},
         {L"a_1.mov", L"a_2.wav", L"q_1.mov", L"q_2.mov"},
         L"a_x",
         "1 a_2.wav | a_1.mov\n"},
    };
    for (const Row& row : rows) {
        Names names = row.names;
        for (int i = 0; i < 70; ++i)
            names.push_back(row.many + std::to_wstring(i) + L".mov");
        const std::string grouped = Text(Grouped(names, {row.rule}));
        EXPECT_EQ(grouped, Text(GroupedPlainly(names, {row.rule}))) << row.name;
        EXPECT_NE(grouped.find(row.holds), std::string::npos) << row.name << ": " << grouped;
    }
}

TEST(Grouping, TextsSortByCodePoint)
{
    const Names expected = {
        L"",        L"a",       L"aaaaaaaa", L"aaaaaaaaA",   L"aaaaaaaab", L"aaaaaaaabbbbbbbbb",
        L"a\u00E9", L"a\xDC80", L"a\uFB00",  L"a\U00010400", L"b"};
    MediaTexts texts;
    for (std::size_t i = 0; i < expected.size(); ++i)
        texts.Add(expected[(i * 7) % expected.size()]);
    Names sorted;
    for (const std::uint32_t index : SortedOrder(texts))
        AppendDecoded(sorted.emplace_back(), texts[index]);
    EXPECT_EQ(Text(sorted), Text(expected));
}

TEST(Grouping, NamesThatShareALongStartDoNotPileUp)
{
    // Each of these bases looks through all of the others in vain.
    Names names;
    for (unsigned int i = 0; i < 20000; ++i) {
        std::wstring start = L"showshowshow"; // spelled in 4096 ways
        for (std::size_t at = 0; at < start.size(); ++at)
            start[at] = static_cast<wchar_t>(start[at] - ((i >> at) % 2 == 0 ? 0 : L'a' - L'A'));
        names.push_back(start + L"_" + std::to_wstring(i) + L".mov");
        names.push_back(L"showshowshow_Ax" + std::to_wstring(i));
    }
    EXPECT_TRUE(Grouped(names, {{1, L"<File>_<Number><Ext>", {L"<File>_A<Number>"}}}).empty());
}

TEST(VideoExtension, Table)
{
    for (const wchar_t* name : {L"a.mxf", L"a.MOV", L".a.ts", L"a.wav.R3d"})
        EXPECT_TRUE(HasVideoExtension(name)) << ToFileName(name);
    for (const wchar_t* name :
         {L"", L"mov", L".mov", L"a.", L"a.mo", L"a.mxff", L"a.mov ", L"a.m\u00F6v", L"a.wav"})
        EXPECT_FALSE(HasVideoExtension(name)) << ToFileName(name);
}

std::string Gaps(const Names& given, const std::vector<RuleText>& texts)
{
    MediaNames names;
    for (const std::wstring& name : given)
        names.Add(name);
    names.Sort();
    constexpr unsigned int kClasses[] = {1, 2};
    const std::vector<MediaRule> rules = ReadMediaRules(*MakeRules(texts));
    const MediaGrouping grouping = GroupMedia(names, rules, kClasses);
    std::ostringstream out;
    for (const MediaGap& gap : FindGaps(names, rules, grouping))
        out << ToFileName(names[gap.base]) << ' ' << ToFileName(gap.pattern) << ' ' << gap.first << '-'
            << gap.last << '\n';
    for (const MediaOrphan& orphan : FindOrphans(names, rules, kClasses, grouping))
        out << ToFileName(names[orphan.file]) << ' ' << orphan.rule << ' ' << ToFileName(orphan.specification)
            << '\n';
    return out.str();
}

TEST(Report, GapsAndOrphans)
{
    struct Row
    {
        const char* name;
        std::vector<RuleText> rules;
        Names names;
        const char* expected;
    };
    const std::vector<RuleText> audio = {{2, L"<File>_A<Number><Ext>", {L"<File><Ext>"}}};
    const std::vector<RuleText> twice = {
        {1, L"<File><Ext>", {L"<File>_<Number><Ext>", L"<File>_<Number><Ext>"}}};
    const Row rows[] = {
        {"nothing is missed before the first", kUsualRules, {L"c.mov", L"c_A5.wav", L"c_A6.wav"}, ""},
        {"huge numbers",
         kUsualRules,
         {L"c.mov", L"c_A0.wav", L"c_A99999999999.wav"},
         "c.mov <File>_A<Number><Ext> 1-2147483646\n"},
        {"several files of one number",
         kUsualRules,
         {L"c.mov", L"c_A1.wav", L"c_A01.aif", L"c_A3.wav"},
         "c.mov <File>_A<Number><Ext> 2-2\n"},
        {"audio channels by the main rule",
         audio,
         {L"c_A1.wav", L"c_A4.wav"},
         "c_A1.wav <File>_A<Number><Ext> 2-3\n"},
        {"audio channels are told once",
         kUsualRules,
         {L"c_A1.wav", L"c_A4.wav"},
         "c_A1.wav <File>_A<Number><Ext> 2-3\n"},
        {"an addition twice in a rule",
         twice,
         {L"c.mov", L"c_1.wav", L"c_3.wav"},
         "c.mov <File>_<Number><Ext> 2-2\n"},
        {"the pattern with most literal text", kUsualRules, {L"c_A1.wav", L"note.txt"}, "c_A1.wav 0 c.*\n"},
        {"a base that no rule fits is there",
         {{1, L"<File>.mxf", {L"<File>_A<Number><Ext>"}}},
         {L"c.MXF", L"c_A1.wav"},
         ""},
        {"the pattern with most literal text has its base",
         {{1, L"<File><Ext>", {L"<File>A<Number><Ext>"}}, {1, L"<File>-VHD.MXF", {L"<File>-A<Number>.wav"}}},
         {L"x-VHD.mxf", L"x-A1.wav"},
         ""},
        {"a sibling is no base",
         {{1, L"<File>_<Number><Ext>", {L"<File>_ch<Number><Ext>"}}},
         {L"lost_ch1.wav", L"lost_ch2.wav"},
         "lost_ch1.wav 0 lost_*.*\nlost_ch2.wav 0 lost_*.*\n"},
        {"a file is not its own base",
         {{1, L"<File>_<Number><Ext>", {L"<File>_<Number>.wav"}}},
         {L"lost_1.wav"},
         "lost_1.wav 0 lost_*.*\n"},
        {"video has lost nobody", kUsualRules, {L"c_A1.mov"}, ""},
        {"a number that another pattern found",
         {{2, L"<File>_A<Number><Ext>", {L"<File>_A<Number><Ext>", L"<File>_A<Number>.wav"}},
          {2, L"<File>_A<Number>.aif", {L"<File>_A<Number>.wav"}}},
         {L"c_A1.aif", L"c_A2.wav", L"c_A3.aif", L"c_A6.aif"},
         "c_A1.aif <File>_A<Number><Ext> 4-5\n"},
        {"a number that the addition found among the main pattern's",
         {{2, L"<File>_A<Number><Ext>", {L"<File>_A<Number>.wav"}}},
         {L"c_A1.aif", L"c_A2.wav", L"c_A3.aif"},
         ""},
        {"the numbers of two patterns are not one run",
         {{1, L"<File><Ext>", {L"<File>_<Number>.png", L"<File>_<Number>.wav"}}},
         {L"c.mov", L"c_100.png", L"c_101.png", L"c_1.wav"},
         ""},
        {"one gap under two main patterns",
         {{2, L"<File>_A<Number><Ext>", {L"<File><Ext>"}}, {2, L"<File>A<Number><Ext>", {L"<File><Ext>"}}},
         {L"c_A1.wav", L"c_A4.wav"},
         "c_A1.wav <File>_A<Number><Ext> 2-3\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Gaps(row.names, row.rules), row.expected) << row.name;
}

} // namespace
} // namespace kv
