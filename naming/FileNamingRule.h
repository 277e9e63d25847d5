// The library's own naming rule.
#pragma once

#include "KvFileNaming.h"
#include "core/RefCounted.h"

#include <optional>
#include <string>
#include <vector>

namespace kv {

/// What a rule stores. Texts may have any length.
struct RuleTexts
{
    unsigned int ruleClass = kKvNamingClassUnknown;
    std::wstring mainRule;
    std::vector<std::wstring> additionRules;
};

/// Reads a rule of any kind: our own with its full texts, a host's through its operations, where a main
/// pattern that is not handed out is empty.
/// @return nothing when a host's rule does not hand out one of the additions that it counts.
std::optional<RuleTexts> ReadRule(IKvFileNamingRule& rule);

class CKvFileNamingRule final : public RefCounted<IKvFileNamingRule>
{
public:
    explicit CKvFileNamingRule(unsigned int ruleClass) { m_texts.ruleClass = ruleClass; }

    IKvFileNamingRule* Clone() override;
    int CopyFrom(const IKvFileNamingRule* source) override;
    unsigned int GetClass() override;
    int SetClass(unsigned int ruleClass) override;
    bool SetMainRule(const wchar_t* text) override;
    bool GetMainRule(wchar_t* buffer) override;
    unsigned int AddAdditionRule(const wchar_t* text) override;
    bool RemoveAdditionRule(unsigned int index) override;
    bool GetAdditionRule(unsigned int index, wchar_t* buffer) override;
    bool SetAdditionRule(unsigned int index, const wchar_t* text) override;
    unsigned int GetAdditionRuleCount() override;

    void CopyFrom(const CKvFileNamingRule& source) { m_texts = source.m_texts; }

    /// Class and patterns in full, also those that the getters refuse for their length.
    const RuleTexts& Texts() const { return m_texts; }

private:
    RuleTexts m_texts;
};

} // namespace kv
