#include "NamingTools.h"
#include "core/Text.h"
#include "core/WholeFile.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <tuple>

namespace {

class RuleFile : public testing::Test
{
protected:
    RuleFile() { std::filesystem::create_directory(m_folder); }
    ~RuleFile() override { std::filesystem::remove_all(m_folder); }

    void Write(const std::string& bytes) { ASSERT_TRUE(kv::WriteWholeFile(m_path, bytes)); }
    std::string Bytes() { return kv::ReadWholeFile(m_path).value_or("unread"); }
    CollectionPtr Load()
    {
        IKvFileNamingRuleCollection* collection = nullptr;
        EXPECT_EQ(KvLoadFileNamingCollection(m_path.c_str(), &collection, nullptr), 1);
        return CollectionPtr(collection);
    }
    int Save(const CollectionPtr& rules)
    {
        return KvSaveFileNamingCollection(m_path.c_str(), rules.get(), nullptr);
    }

    const std::string m_folder =
        testing::TempDir() + "rule_file_" + testing::UnitTest::GetInstance()->current_test_info()->name();
    std::wstring m_path = kv::FromUtf8(m_folder + "/rules.ini");
};

TEST_F(RuleFile, BuiltInRulesWithoutFile)
{
    const Texts expected = {
        L"1|<File><Ext>|<File><Ext>|<File>A<Number><Ext>|<File>_A<Number><Ext>|<File> A<Number><Ext>",
        L"1|<File>-00-0001-00-000-VHD.MXF|<File>-ZH-0001-00-000-A<Number>.MXF",
        L"2|<File>_A<Number><Ext>|<File><Ext>|<File>_A<Number><Ext>",
        L"2|<File> A<Number><Ext>|<File><Ext>|<File> A<Number><Ext>",
        L"2|<File>A<Number><Ext>|<File><Ext>|<File>A<Number><Ext>",
    };
    EXPECT_EQ(TextsOf(*Load()), expected);
    EXPECT_EQ(Save(Load()), 1);
    EXPECT_EQ(TextsOf(*Load()), expected);
}

TEST_F(RuleFile, Loads)
{
    const std::string head = "[FileNamingRuleHead]\nFileNamingRuleCnt=";
    const std::string one = head + "1\n[FileNamingRule0]\n";
    const std::tuple<const char*, std::string, Texts> rows[] = {
        {"empty file", "", {}},
        {"no rules", head + "0\n[FileNamingRule0]\n", {}},
        {"negative", head + "-3\n[FileNamingRule0]\n", {}},
        {"missing keys", one + "Class=-1\nMainRule= x \n", {L"4294967295| x "}},
        {"missing section", head + "1\n", {L"0|!"}},
        {"missing additions", one + "AdditionRuleCount=3\nAdditionRule0=a\n", {L"0|!|a||"}},
        {"counts govern", one + "AdditionRuleCount=-1\nAdditionRule0=a\n", {L"0|!"}},
    };
    for (const auto& [row, bytes, rules] : rows) {
        Write(bytes);
        EXPECT_EQ(TextsOf(*Load()), rules) << row;
    }
    const CollectionPtr owner = Load();
    IKvFileNamingRuleCollection* out = owner.get();
    EXPECT_EQ(KvLoadFileNamingCollection(m_path.c_str(), nullptr, nullptr), 0);
    EXPECT_EQ(KvLoadFileNamingCollection(nullptr, &out, nullptr), 0);
    EXPECT_EQ(out, nullptr);
}

TEST_F(RuleFile, HostileCountsStayBounded)
{
    Write("[FileNamingRuleHead]\nFileNamingRuleCnt=99999999999\n[FileNamingRule0]\nAdditionRuleCount=60000\n"
          "[FileNamingRule1]\nAdditionRuleCount=60000\n[FileNamingRule2]\nAdditionRuleCount=1\n");
    const CollectionPtr rules = Load();
    EXPECT_EQ(rules->GetRuleCount(), 65536u);
    for (const auto& [index, additions] : {std::pair(0u, 60000u), {1u, 5536u}, {2u, 0u}}) {
        IKvFileNamingRule* rule = nullptr;
        ASSERT_TRUE(rules->GetRule(index, &rule));
        EXPECT_EQ(RulePtr(rule)->GetAdditionRuleCount(), additions);
    }
}

TEST_F(RuleFile, SavesInOrderAndKeepsTheRest)
{
    EXPECT_EQ(Save(MakeCollection({L"2|<File>| a|", L"0|"})), 1);
    EXPECT_EQ(Bytes(), "[ProfileVersion]\nVersion=1\n\n[FileNamingRuleHead]\nFileNamingRuleCnt=2\n\n"
                       "[FileNamingRule0]\nClass=2\nMainRule=<File>\nAdditionRuleCount=2\nAdditionRule0= a\n"
                       "AdditionRule1=\n\n[FileNamingRule1]\nClass=0\nMainRule=\nAdditionRuleCount=0\n");
    Write(Bytes() + "; a comment\n");
    EXPECT_EQ(Save(MakeCollection({L"1|new|c"})), 1);
    EXPECT_EQ(Bytes(), "[ProfileVersion]\nVersion=1\n\n[FileNamingRuleHead]\nFileNamingRuleCnt=1\n\n"
                       "[FileNamingRule0]\nClass=1\nMainRule=new\nAdditionRuleCount=1\nAdditionRule0=c\n"
                       "AdditionRule1=\n\n[FileNamingRule1]\nClass=0\nMainRule=\nAdditionRuleCount=0\n"
                       "; a comment\n");
    EXPECT_EQ(TextsOf(*Load()), Texts({L"1|new|c"}));

    const kv::Reference<HostCollection> hosts(new HostCollection({L"1|a", L"1|b", L"1|c"}));
    EXPECT_EQ(KvSaveFileNamingCollection(m_path.c_str(), hosts.get(), nullptr), 1);
    EXPECT_EQ(TextsOf(*Load()), Texts({L"1|a", L"0|!", L"1|c"})) << "one is not handed out";
}

TEST_F(RuleFile, LongPatternsSurvive)
{
    const std::string x(259, 'x');
    const std::string start = "[FileNamingRuleHead]\nFileNamingRuleCnt=1\n[FileNamingRule0]\nClass=0\n";
    const std::string keys =
        start + "MainRule=\xE9" + x.substr(1) + "\nAdditionRuleCount=1\nAdditionRule0=" + x;
    Write(keys + "cut\n");
    EXPECT_EQ(TextsOf(*Load()), Texts({L"0|!|!"}));
    EXPECT_EQ(Save(Load()), 1);
    EXPECT_TRUE(Bytes().starts_with(keys + "\n")) << "a pattern that is not UTF-8 stands as it was";
}

TEST_F(RuleFile, RefusedSavesChangeNothing)
{
    Write("old");
    const CollectionPtr good = MakeCollection({L"1|x"});
    EXPECT_EQ(KvSaveFileNamingCollection(nullptr, good.get(), nullptr), 0);
    EXPECT_EQ(KvSaveFileNamingCollection(m_path.c_str(), nullptr, nullptr), 0);
    EXPECT_EQ(Save(MakeCollection({L"1|x", L"1|a\nb"})), 0);
    const kv::Reference<HostRule> host(new HostRule);
    const CollectionPtr hosts = MakeCollection({});
    hosts->AddRule(host.get());
    EXPECT_EQ(Save(hosts), 0) << "an addition is missing";
    const RulePtr many = MakeRule(L"1|x");
    for (int i = 0; i < 65536; ++i)
        many->AddAdditionRule(L"a");
    const CollectionPtr tooMany = MakeCollection({L"1|x|one more"});
    tooMany->AddRule(many.get());
    EXPECT_EQ(Save(tooMany), 0) << "additions that would not be loaded";
    tooMany->RemoveAllRules();
    const RulePtr one = MakeRule(L"1|x");
    while (tooMany->GetRuleCount() < 65537)
        tooMany->AddRule(one.get());
    EXPECT_EQ(Save(tooMany), 0) << "rules that would not be loaded";
    EXPECT_EQ(Bytes(), "old");
    host->additions = 3;
    host->givesMainRule = false;
    EXPECT_EQ(Save(hosts), 1);
    EXPECT_EQ(TextsOf(*Load()), Texts({L"7|!|add|add|add"}));

    constexpr std::uintmax_t tooLarge = (64u << 20) + 1;
    std::filesystem::resize_file(m_folder + "/rules.ini", tooLarge);
    EXPECT_EQ(Load()->GetRuleCount(), 0u) << "a file that cannot be read is not a missing one";
    EXPECT_EQ(Save(good), 0);
    EXPECT_EQ(std::filesystem::file_size(m_folder + "/rules.ini"), tooLarge);
}

} // namespace
