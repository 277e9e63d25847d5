#include "naming/DefaultRules.h"

#include "core/RefCounted.h"

#include <array>

namespace kv {
namespace {

struct DefaultRule
{
    unsigned int ruleClass;
    const wchar_t* mainRule;
    std::array<const wchar_t*, 4> additionRules; // unused ones are null
};

constexpr std::array<DefaultRule, 5> kDefaultRules = {{
    {kKvNamingClassVideoAudio,
     L"<File><Ext>",
     {L"<File><Ext>", L"<File>A<Number><Ext>", L"<File>_A<Number><Ext>", L"<File> A<Number><Ext>"}},
    {kKvNamingClassVideoAudio, L"<File>-00-0001-00-000-VHD.MXF", {L"<File>-ZH-0001-00-000-A<Number>.MXF"}},
    {kKvNamingClassAudio, L"<File>_A<Number><Ext>", {L"<File><Ext>", L"<File>_A<Number><Ext>"}},
    {kKvNamingClassAudio, L"<File> A<Number><Ext>", {L"<File><Ext>", L"<File> A<Number><Ext>"}},
    {kKvNamingClassAudio, L"<File>A<Number><Ext>", {L"<File><Ext>", L"<File>A<Number><Ext>"}},
}};

} // namespace

bool AddDefaultRules(IKvFileNamingRuleCollection& collection)
{
    for (const DefaultRule& entry : kDefaultRules) {
        IKvFileNamingRule* created = nullptr;
        if (!CreateFileNamingRule(entry.ruleClass, &created))
            return false;
        const Reference<IKvFileNamingRule> rule(created);
        rule->SetMainRule(entry.mainRule);
        for (const wchar_t* addition : entry.additionRules)
            rule->AddAdditionRule(addition); // null adds nothing
        collection.AddRule(rule.get());
    }
    return true;
}

} // namespace kv
