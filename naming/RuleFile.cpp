#include "KvFileNaming.h"
#include "core/CodePoints.h"
#include "core/KvFileUtils.h"
#include "core/ProfileDocument.h"
#include "core/RefCounted.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "naming/DefaultRules.h"
#include "naming/FileNamingRule.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace kv {
namespace {

constexpr int kVersion = 1;
constexpr std::wstring_view kHeadSection = L"FileNamingRuleHead";
constexpr std::wstring_view kRuleCountKey = L"FileNamingRuleCnt";
constexpr std::wstring_view kClassKey = L"Class";
constexpr std::wstring_view kMainRuleKey = L"MainRule";
constexpr std::wstring_view kAdditionCountKey = L"AdditionRuleCount";

// What a broken or hostile file cannot exceed; no user comes near it.
constexpr int kMaxRules = 65536;
constexpr int kMaxAdditionsInAll = 65536;
constexpr std::size_t kMaxFileBytes = ProfileDocument::kMostBytes;
constexpr std::size_t kMaxLoadedText = 259;

std::wstring RuleSection(unsigned int index)
{
    return L"FileNamingRule" + NumberText(std::int64_t{index});
}

std::wstring AdditionKey(std::size_t index)
{
    return L"AdditionRule" + NumberText(static_cast<std::int64_t>(index));
}

std::wstring LoadPattern(const ProfileDocument& document, std::wstring_view section, std::wstring_view key)
{
    std::wstring text = document.Value(section, key).value_or(std::wstring());
    text.resize(CutLength(text, kMaxLoadedText));
    return text;
}

// @param additionsLeft how many more additions this file may bring.
bool LoadRule(const ProfileDocument& document, unsigned int index, int& additionsLeft,
              IKvFileNamingRuleCollection& collection)
{
    const std::wstring section = RuleSection(index);
    IKvFileNamingRule* created = nullptr;
    if (!CreateFileNamingRule(kKvNamingClassUnknown, &created))
        return false;
    const Reference<IKvFileNamingRule> rule(created);
    collection.AddRule(rule.get());
    if (!document.HasSection(section))
        return true; // Counted and not there: an empty rule. A hostile count makes many of them.
    rule->SetClass(static_cast<unsigned int>(document.Integer(section, kClassKey, 0)));
    rule->SetMainRule(LoadPattern(document, section, kMainRuleKey).c_str());
    const int additions = std::clamp(document.Integer(section, kAdditionCountKey, 0), 0, additionsLeft);
    for (int i = 0; i < additions; ++i) {
        const std::wstring key = AdditionKey(static_cast<std::size_t>(i));
        rule->AddAdditionRule(LoadPattern(document, section, key).c_str());
    }
    additionsLeft -= additions;
    return true;
}

bool LoadRules(const wchar_t* file, IKvFileNamingRuleCollection& collection)
{
    if (!KvFileUtils::DoesFileExist(file))
        return AddDefaultRules(collection);
    const std::optional<std::string> bytes = ReadWholeFile(file, nullptr, kMaxFileBytes);
    if (!bytes)
        return true; // Not the built-in rules: the user has rules of their own, out of reach for now.
    const ProfileDocument document(*bytes);
    const int rules = std::min(document.Integer(kHeadSection, kRuleCountKey, 0), kMaxRules);
    int additionsLeft = kMaxAdditionsInAll;
    for (int i = 0; i < rules; ++i) {
        if (!LoadRule(document, static_cast<unsigned int>(i), additionsLeft, collection))
            return false;
    }
    return true;
}

// @return false when a text cannot be stored.
bool WriteRule(const RuleTexts& texts, std::wstring_view section, ProfileDocument& document)
{
    const std::size_t additions = texts.additionRules.size();
    if (!document.SetInteger(section, kClassKey, static_cast<int>(texts.ruleClass)) ||
        !document.SetValue(section, kMainRuleKey, texts.mainRule) ||
        !document.SetInteger(section, kAdditionCountKey, static_cast<int>(additions)))
        return false;
    for (std::size_t i = 0; i < additions; ++i) {
        if (!document.SetValue(section, AdditionKey(i), texts.additionRules[i]))
            return false;
    }
    return true;
}

bool WriteRules(IKvFileNamingRuleCollection& collection, ProfileDocument& document)
{
    const unsigned int count = collection.GetRuleCount();
    std::size_t additionsLeft = kMaxAdditionsInAll;
    if (count > kMaxRules || !document.SetInteger(kProfileVersionSection, kProfileVersionKey, kVersion) ||
        !document.SetInteger(kHeadSection, kRuleCountKey, static_cast<int>(count)))
        return false;
    for (unsigned int i = 0; i < count; ++i) {
        IKvFileNamingRule* taken = nullptr;
        if (!collection.GetRule(i, &taken) || !taken)
            continue;
        const Reference<IKvFileNamingRule> rule(taken);
        const std::optional<RuleTexts> texts = ReadRule(*rule);
        if (!texts || texts->additionRules.size() > additionsLeft ||
            !WriteRule(*texts, RuleSection(i), document))
            return false;
        additionsLeft -= texts->additionRules.size();
    }
    return true;
}

bool SaveRules(const wchar_t* file, IKvFileNamingRuleCollection& collection)
{
    std::optional<std::string> old = ReadWholeFile(file, nullptr, kMaxFileBytes);
    if (!old && KvFileUtils::DoesFileExist(file))
        return false; // Unread, its comments and its other sections would be lost.
    ProfileDocument document(old.value_or(std::string()));
    if (!WriteRules(collection, document))
        return false;
    const std::string bytes = document.Bytes();
    return bytes.size() <= kMaxFileBytes && WriteWholeFile(file, bytes); // never what could not be loaded
}

} // namespace
} // namespace kv

int KvLoadFileNamingCollection(const wchar_t* file, IKvFileNamingRuleCollection** out, unsigned int*)
{
    if (!out)
        return 0;
    *out = nullptr;
    IKvFileNamingRuleCollection* created = nullptr;
    if (!file || !CreateFileNamingRuleCollection(&created))
        return 0;
    kv::Reference<IKvFileNamingRuleCollection> collection(created);
    try {
        if (!kv::LoadRules(file, *collection))
            return 0;
    } catch (const std::bad_alloc&) {
        return 0;
    }
    *out = collection.release();
    return 1;
}

int KvSaveFileNamingCollection(const wchar_t* file, IKvFileNamingRuleCollection* collection, unsigned int*)
{
    if (!file || !collection)
        return 0;
    try {
        return kv::SaveRules(file, *collection) ? 1 : 0;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}
