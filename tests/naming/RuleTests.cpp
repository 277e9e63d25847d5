#include "NamingTools.h"
#include "naming/FileNamingRule.h"
#include "naming/RuleCheck.h"

#include <array>
#include <bit>
#include <gtest/gtest.h>

namespace {

TEST(FileNamingRule, KeepsItsTexts)
{
    const RulePtr rule = MakeRule(L"3|");
    wchar_t text[kKvNamingTextSize] = L"untouched";
    EXPECT_FALSE(rule->SetMainRule(nullptr));
    EXPECT_FALSE(rule->GetMainRule(text));
    EXPECT_TRUE(rule->SetMainRule(std::wstring(128, L'x').c_str()));
    EXPECT_FALSE(rule->GetMainRule(text)) << "one too long";
    EXPECT_STREQ(text, L"untouched");
    EXPECT_TRUE(rule->SetMainRule(std::wstring(127, L'x').c_str()));
    EXPECT_FALSE(rule->GetMainRule(nullptr));

    EXPECT_EQ(rule->AddAdditionRule(nullptr), kKvNamingNoIndex);
    for (const unsigned int index : {0u, 1u, 2u})
        EXPECT_EQ(rule->AddAdditionRule(index == 1 ? L"" : L"same"), index);
    EXPECT_TRUE(rule->SetAdditionRule(2, std::wstring(128, L'x').c_str()));
    EXPECT_FALSE(rule->GetAdditionRule(2, text));
    EXPECT_TRUE(rule->SetAdditionRule(2, nullptr));
    EXPECT_TRUE(rule->RemoveAdditionRule(0));
    EXPECT_FALSE(rule->RemoveAdditionRule(2) || rule->SetAdditionRule(2, L"x") ||
                 rule->GetAdditionRule(2, text));
    EXPECT_EQ(TextOf(*rule), L"3|" + std::wstring(127, L'x') + L"||");
}

TEST(FileNamingRule, Copies)
{
    const RulePtr rule = MakeRule(L"1|<File>|a|");
    rule->SetClass(2);
    EXPECT_EQ(TextOf(*RulePtr(rule->Clone())), L"2|<File>|a|");
    const std::wstring x(200, L'x');
    const RulePtr copy = MakeRule(L"0|");
    copy->CopyFrom(MakeRule(L"0|" + x + L"|" + x).get());
    const auto texts = kv::ReadRule(*RulePtr(copy->Clone()));
    EXPECT_EQ(texts->mainRule + texts->additionRules.at(0), x + x) << "also what the getters refuse";
    EXPECT_EQ(rule->CopyFrom(rule.get()), 1);
    EXPECT_EQ(rule->CopyFrom(nullptr), 0);
    const kv::Reference<HostRule> host(new HostRule);
    EXPECT_EQ(rule->CopyFrom(host.get()), 0) << "an addition is missing";
    EXPECT_EQ(TextOf(*rule), L"2|<File>|a|");
    host->additions = 3;
    EXPECT_EQ(rule->CopyFrom(host.get()), 1);
    EXPECT_EQ(TextOf(*rule), L"7|main|add|add|add");
    host->givesMainRule = false;
    EXPECT_EQ(rule->CopyFrom(host.get()), 1);
    EXPECT_EQ(TextOf(*rule), L"7|!|add|add|add");
}

TEST(FileNamingRuleCollection, CountsReferences)
{
    CollectionPtr collection = MakeCollection({});
    IKvFileNamingRule* rule = MakeRule(L"0|").release();
    EXPECT_EQ(collection->AddRule(nullptr), kKvNamingNoIndex);
    EXPECT_EQ(collection->AddRule(rule), 0u);
    EXPECT_EQ(collection->AddRule(rule), 1u);
    EXPECT_EQ(rule->AddRef(), 4);
    EXPECT_FALSE(collection->RemoveRule(2));
    EXPECT_TRUE(collection->RemoveRule(0));
    EXPECT_EQ(rule->Release(), 3) << "the removed entry's reference was dropped without a release";

    IKvFileNamingRule* taken = nullptr;
    EXPECT_FALSE(collection->GetRule(0, nullptr));
    EXPECT_FALSE(collection->GetRule(1, &taken));
    ASSERT_TRUE(collection->GetRule(0, &taken));
    EXPECT_EQ(taken->Release(), 3);
    EXPECT_EQ(taken->Release(), 2) << "released twice after it was taken";
    EXPECT_EQ(collection->RemoveAllRules(), 1);
    EXPECT_EQ(collection->GetRuleCount(), 0u);
    collection->AddRule(rule);
    collection.reset();
    EXPECT_EQ(rule->Release(), 0);
    EXPECT_FALSE(CreateFileNamingRuleCollection(nullptr) || CreateFileNamingRule(0, nullptr));
}

TEST(FileNamingRuleCollection, KeepsTheOrder)
{
    const CollectionPtr collection = MakeCollection({L"1|a", L"1|b", L"1|c"});
    IKvFileNamingRule* first = nullptr;
    collection->GetRule(0, &first);
    EXPECT_TRUE(collection->RemoveRule(0));
    first->Release();
    first->Release();
    EXPECT_EQ(TextsOf(*collection), Texts({L"1|b", L"1|c"}));

    std::vector<const void*> added, died;
    collection->RemoveAllRules();
    for (int i = 0; i < 3; ++i) {
        const kv::Reference<HostRule> host(new HostRule);
        host->died = &died;
        collection->AddRule(host.get());
        added.push_back(host.get());
    }
    collection->RemoveAllRules();
    EXPECT_EQ(died, added);
}

/// The places of operations in the table of virtual functions, as the platform's member pointers hold them.
template <typename... Members>
std::vector<std::size_t> Slots(Members... members)
{
    return {(std::bit_cast<std::array<std::size_t, 2>>(members)[0] / sizeof(void*))...};
}

TEST(FileNaming, SlotsKeepTheirOrder)
{
    using Rule = IKvFileNamingRule;
    using Rules = IKvFileNamingRuleCollection;
    using Matcher = IKvFileNamingMatcher;
    const std::vector<std::size_t> afterUnknown = {4, 5, 6, 7, 8};
    EXPECT_EQ(Slots(&IKvUnknown::AddRef, &IKvUnknown::Release), std::vector<std::size_t>({2, 3}));
    EXPECT_EQ(Slots(&Rule::Clone, &Rule::CopyFrom, &Rule::GetClass, &Rule::SetClass, &Rule::SetMainRule),
              afterUnknown);
    EXPECT_EQ(Slots(&Rule::GetMainRule, &Rule::AddAdditionRule, &Rule::RemoveAdditionRule,
                    &Rule::GetAdditionRule, &Rule::SetAdditionRule, &Rule::GetAdditionRuleCount),
              std::vector<std::size_t>({9, 10, 11, 12, 13, 14}));
    EXPECT_EQ(Slots(&Rules::AddRule, &Rules::RemoveRule, &Rules::GetRule, &Rules::GetRuleCount,
                    &Rules::RemoveAllRules),
              afterUnknown);
    EXPECT_EQ(Slots(&Matcher::SetMode, &Matcher::Prepare, &Matcher::AddFile, &Matcher::BuildGroups,
                    &Matcher::GetGroup),
              afterUnknown);
}

TEST(RuleCheck, Labels)
{
    std::wstring messages;
    KvSetMessageBoxHandler([&messages](HWND, const std::wstring& text, UINT) {
        messages += text;
        return IDOK;
    });
    const std::wstring duplicate = L"The rule contains duplicate labels ";
    const std::wstring invalid = L"The rule contains invalid label ";
    const std::wstring any63 = L"<AnyChar" + std::wstring(55, L'x');
    const std::wstring rows[][3] = {
        {L"empty", L"", L""},
        {L"all labels", L"a<File>_<Number><AnyCharX><FixedChar>b<Ext>", L""},
        {L"twice <File>", L"<File>_<File><Ext>", duplicate + L"<File>"},
        {L"twice an accepted one", L"<AnyChar3>-<AnyChar3>", duplicate + L"<AnyChar3>"},
        {L"accepted ones that differ", L"<AnyChar3><AnyChar4>", L""},
        {L"lower case", L"<anychar3>", invalid + L"<anychar3>"},
        {L"other label", L"<File><Files>", invalid + L"<Files>"},
        {L"empty label", L"<>", invalid + L"<>"},
        {L"the first fault counts", L"<Bad><File><File>", invalid + L"<Bad>"},
        {L"> without <", L"a>b<File>>", L""},
        {L"a later < hides the earlier one", L"<<File><Bad<Ext>", L""},
        {L"never closed", L"<File><Fil", L""},
        {L"63 characters are kept", any63 + L"1>" + any63 + L"2>", duplicate + any63},
        {L"62 differ", any63.substr(0, 62) + L">" + any63 + L">", L""},
        {L"a long fault", L"<" + std::wstring(70, L'x') + L">", invalid + L"<" + std::wstring(62, L'x')},
        {L"%s in a label", L"<%s>", invalid + L"<%s>"},
    };
    for (const auto& [row, pattern, message] : rows) {
        messages.clear();
        EXPECT_EQ(CheckRuleLabels(pattern.c_str()), message.empty()) << row;
        EXPECT_EQ(messages, message) << row;
    }
    EXPECT_TRUE(CheckRuleLabels(nullptr));
    KvSetMessageBoxHandler({});
}

TEST(RuleCheck, EditorTexts)
{
    EXPECT_EQ(kv::RuleFault(L""), L"Rule don't allow set empty.");
    for (const wchar_t refused : std::wstring(L"/\\*?\"|"))
        EXPECT_EQ(kv::RuleFault(std::wstring(L"<Bad>") + refused),
                  L"The following characters are not allowed : \r\n/ \\ * ? \" | ?");
    EXPECT_EQ(kv::RuleFault(L"<Bad>"), L"The rule contains invalid label <Bad>");
    EXPECT_EQ(kv::RuleFault(L"<File><Ext>"), std::nullopt);
}

} // namespace
