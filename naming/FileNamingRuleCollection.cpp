#include "KvFileNaming.h"
#include "core/RefCounted.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace kv {
namespace {

class CKvFileNamingRuleCollection final : public RefCounted<IKvFileNamingRuleCollection>
{
public:
    ~CKvFileNamingRuleCollection() override { ReleaseAll(); }

    unsigned int AddRule(IKvFileNamingRule* rule) override
    {
        if (!rule)
            return kKvNamingNoIndex;
        m_rules.push_back(rule);
        rule->AddRef();
        return GetRuleCount() - 1;
    }

    bool RemoveRule(unsigned int index) override
    {
        if (index >= m_rules.size())
            return false;
        // Not released: hosts take the rule with `GetRule` and release it twice.
        m_rules.erase(m_rules.begin() + static_cast<std::ptrdiff_t>(index));
        return true;
    }

    bool GetRule(unsigned int index, IKvFileNamingRule** out) override
    {
        if (!out || index >= m_rules.size())
            return false;
        *out = m_rules[index];
        (*out)->AddRef();
        return true;
    }

    unsigned int GetRuleCount() override { return static_cast<unsigned int>(m_rules.size()); }

    int RemoveAllRules() override
    {
        ReleaseAll();
        return 1;
    }

private:
    void ReleaseAll()
    {
        // Out of the member first: a host's rule may look at the collection while it dies.
        const std::vector<IKvFileNamingRule*> rules = std::exchange(m_rules, {});
        for (IKvFileNamingRule* rule : rules)
            rule->Release();
    }

    std::vector<IKvFileNamingRule*> m_rules;
};

} // namespace
} // namespace kv

bool CreateFileNamingRuleCollection(IKvFileNamingRuleCollection** out)
{
    return kv::CreateObject<kv::CKvFileNamingRuleCollection>(out);
}
