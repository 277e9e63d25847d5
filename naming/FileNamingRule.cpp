#include "naming/FileNamingRule.h"

#include <cstddef>
#include <utility>

namespace kv {
namespace {

const wchar_t* OrEmpty(const wchar_t* text)
{
    return text ? text : L"";
}

// The own rule that was last asked for its class in this thread.
thread_local const CKvFileNamingRule* t_asked = nullptr;

// The rule as one of our own, null for a host's. No dynamic_cast: a host may be compiled without type
// information. A host's rule that passes the question on to one of ours is told by its address.
const CKvFileNamingRule* OwnRule(IKvFileNamingRule& rule)
{
    t_asked = nullptr;
    rule.GetClass();
    return t_asked == &rule ? t_asked : nullptr;
}

// Refuses a text that does not fit a caller's buffer instead of cutting it: half a pattern is another
// pattern.
bool CopyToBuffer(const std::wstring& text, wchar_t* buffer)
{
    if (!buffer || text.size() >= kKvNamingTextSize)
        return false;
    buffer[text.copy(buffer, text.size())] = L'\0';
    return true;
}

} // namespace

std::optional<RuleTexts> ReadRule(IKvFileNamingRule& rule)
{
    if (const CKvFileNamingRule* own = OwnRule(rule))
        return own->Texts();
    RuleTexts texts;
    texts.ruleClass = rule.GetClass();
    wchar_t buffer[kKvNamingTextSize] = {};
    if (rule.GetMainRule(buffer))
        texts.mainRule = buffer;
    const unsigned int count = rule.GetAdditionRuleCount();
    for (unsigned int i = 0; i < count; ++i) {
        if (!rule.GetAdditionRule(i, buffer))
            return std::nullopt;
        texts.additionRules.emplace_back(buffer);
    }
    return texts;
}

IKvFileNamingRule* CKvFileNamingRule::Clone()
{
    try {
        Reference<CKvFileNamingRule> clone(new CKvFileNamingRule(m_texts.ruleClass));
        clone->CopyFrom(*this);
        return clone.release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int CKvFileNamingRule::CopyFrom(const IKvFileNamingRule* source)
{
    if (!source)
        return 0;
    // The interface has no const operations, reading included. A rule of our own is read in full.
    std::optional<RuleTexts> texts = ReadRule(const_cast<IKvFileNamingRule&>(*source));
    if (!texts)
        return 0;
    m_texts = std::move(*texts);
    return 1;
}

unsigned int CKvFileNamingRule::GetClass()
{
    t_asked = this;
    return m_texts.ruleClass;
}

int CKvFileNamingRule::SetClass(unsigned int ruleClass)
{
    m_texts.ruleClass = ruleClass;
    return 1;
}

bool CKvFileNamingRule::SetMainRule(const wchar_t* text)
{
    m_texts.mainRule = OrEmpty(text);
    return !m_texts.mainRule.empty();
}

bool CKvFileNamingRule::GetMainRule(wchar_t* buffer)
{
    return !m_texts.mainRule.empty() && CopyToBuffer(m_texts.mainRule, buffer);
}

unsigned int CKvFileNamingRule::AddAdditionRule(const wchar_t* text)
{
    if (!text)
        return kKvNamingNoIndex;
    m_texts.additionRules.emplace_back(text);
    return GetAdditionRuleCount() - 1;
}

bool CKvFileNamingRule::RemoveAdditionRule(unsigned int index)
{
    if (index >= m_texts.additionRules.size())
        return false;
    m_texts.additionRules.erase(m_texts.additionRules.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

bool CKvFileNamingRule::GetAdditionRule(unsigned int index, wchar_t* buffer)
{
    return index < m_texts.additionRules.size() && CopyToBuffer(m_texts.additionRules[index], buffer);
}

bool CKvFileNamingRule::SetAdditionRule(unsigned int index, const wchar_t* text)
{
    if (index >= m_texts.additionRules.size())
        return false;
    m_texts.additionRules[index] = OrEmpty(text);
    return true;
}

unsigned int CKvFileNamingRule::GetAdditionRuleCount()
{
    return static_cast<unsigned int>(m_texts.additionRules.size());
}

} // namespace kv

bool CreateFileNamingRule(unsigned int ruleClass, IKvFileNamingRule** out)
{
    return kv::CreateObject<kv::CKvFileNamingRule>(out, ruleClass);
}
