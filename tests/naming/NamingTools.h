// Rules and collections as texts, for the tests of the file naming objects.
#pragma once

#include "KvFileNaming.h"
#include "core/RefCounted.h"

#include <string>
#include <vector>

using RulePtr = kv::Reference<IKvFileNamingRule>;
using CollectionPtr = kv::Reference<IKvFileNamingRuleCollection>;
using Texts = std::vector<std::wstring>;

inline Texts Split(const std::wstring& text, wchar_t separator)
{
    Texts parts(1);
    for (const wchar_t character : text) {
        if (character == separator)
            parts.emplace_back();
        else
            parts.back() += character;
    }
    return parts;
}

/// "class|main rule|addition|addition…"
inline RulePtr MakeRule(const std::wstring& text)
{
    const Texts parts = Split(text, L'|');
    IKvFileNamingRule* rule = nullptr;
    CreateFileNamingRule(static_cast<unsigned int>(std::stoul(parts[0])), &rule);
    rule->SetMainRule(parts[1].c_str());
    for (std::size_t i = 2; i < parts.size(); ++i)
        rule->AddAdditionRule(parts[i].c_str());
    return RulePtr(rule);
}

/// What the getters hand out, in the same form; a text that they refuse is "!".
inline std::wstring TextOf(IKvFileNamingRule& rule)
{
    wchar_t text[kKvNamingTextSize] = {};
    std::wstring all = std::to_wstring(rule.GetClass()) + L'|' + (rule.GetMainRule(text) ? text : L"!");
    for (unsigned int i = 0; i < rule.GetAdditionRuleCount(); ++i)
        all.append(L"|").append(rule.GetAdditionRule(i, text) ? text : L"!");
    return all;
}

inline CollectionPtr MakeCollection(const Texts& rules)
{
    IKvFileNamingRuleCollection* collection = nullptr;
    CreateFileNamingRuleCollection(&collection);
    for (const std::wstring& rule : rules)
        collection->AddRule(MakeRule(rule).get());
    return CollectionPtr(collection);
}

inline Texts TextsOf(IKvFileNamingRuleCollection& collection)
{
    Texts rules;
    IKvFileNamingRule* rule = nullptr;
    while (collection.GetRule(static_cast<unsigned int>(rules.size()), &rule))
        rules.push_back(TextOf(*RulePtr(rule)));
    return rules;
}

/// A host's own rule, which need not hand out what it counts.
struct HostRule final : kv::RefCounted<IKvFileNamingRule>
{
    bool givesMainRule = true;
    unsigned int additions = 2;
    std::vector<const void*>* died = nullptr; // receives the rule when it dies

    ~HostRule() override
    {
        if (died)
            died->push_back(this);
    }
    static bool Give(const std::wstring& text, wchar_t* buffer) { return text.copy(buffer, 127) > 0; }

    IKvFileNamingRule* Clone() override { return nullptr; }
    int CopyFrom(const IKvFileNamingRule*) override { return 0; }
    unsigned int GetClass() override { return 7; }
    int SetClass(unsigned int) override { return 0; }
    bool SetMainRule(const wchar_t*) override { return false; }
    bool GetMainRule(wchar_t* buffer) override { return givesMainRule && Give({L"main\0", 5}, buffer); }
    unsigned int AddAdditionRule(const wchar_t*) override { return kKvNamingNoIndex; }
    bool RemoveAdditionRule(unsigned int) override { return false; }
    bool GetAdditionRule(unsigned int i, wchar_t* buffer) override
    {
        return i < additions && Give({L"add\0", 4}, buffer);
    }
    bool SetAdditionRule(unsigned int, const wchar_t*) override { return false; }
    unsigned int GetAdditionRuleCount() override { return 3; }
};

/// A host's own collection, which does not hand out its second rule.
struct HostCollection final : kv::RefCounted<IKvFileNamingRuleCollection>
{
    explicit HostCollection(const Texts& rules) : inner(MakeCollection(rules)) {}
    const CollectionPtr inner;

    unsigned int AddRule(IKvFileNamingRule* rule) override { return inner->AddRule(rule); }
    bool RemoveRule(unsigned int index) override { return inner->RemoveRule(index); }
    bool GetRule(unsigned int i, IKvFileNamingRule** out) override
    {
        return i != 1 && inner->GetRule(i, out);
    }
    unsigned int GetRuleCount() override { return inner->GetRuleCount(); }
    int RemoveAllRules() override { return inner->RemoveAllRules(); }
};
