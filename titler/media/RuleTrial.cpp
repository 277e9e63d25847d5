#include "media/RuleTrial.h"

#include <algorithm>

namespace titler {
namespace {

QString NameOf(const QString& path)
{
    return path.mid(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
}

// Asks a matcher about a rule of its own: it tells that a name was filed, but not by which pattern.
class Question
{
public:
    Question(unsigned ruleClass, const QString& main, const QString& addition) : m_ruleClass(ruleClass)
    {
        IKvFileNamingMatcher* matcher = nullptr;
        KvCreateFileNamingMatcher(&matcher);
        m_matcher.reset(matcher);
        IKvFileNamingRuleCollection* rules = nullptr;
        CreateFileNamingRuleCollection(&rules);
        m_rules.reset(rules);
        IKvFileNamingRule* made = nullptr;
        CreateFileNamingRule(ruleClass, &made);
        const Ref<IKvFileNamingRule> rule(made);
        rule->SetMainRule(main.toStdWString().c_str());
        rule->AddAdditionRule(addition.toStdWString().c_str());
        m_rules->AddRule(rule.get());
    }
    bool Files(const QString& main, const QString& other)
    {
        m_matcher->Prepare(main.toStdWString().c_str(), m_ruleClass, m_rules.get());
        return m_matcher->AddFile(other.toStdWString().c_str()) > 0;
    }

private:
    unsigned m_ruleClass;
    Ref<IKvFileNamingMatcher> m_matcher;
    Ref<IKvFileNamingRuleCollection> m_rules;
};

// A name whose number cannot be read is filed, too, but is no sibling: the addition as main pattern tells.
bool CanRead(unsigned ruleClass, const QString& addition, const QString& name)
{
    return Question(ruleClass, addition, addition).Files(name, name);
}

} // namespace

TrialResult TryRules(const QVector<NamingRule>& rules, const QString& main, const QString& other)
{
    const QString base = NameOf(main);
    TrialResult result;
    for (int i = 0; i < rules.size(); ++i) {
        const NamingRule& rule = rules[i];
        // A main pattern that fits files the name itself, when it is the addition, too.
        if (!Question(rule.ruleClass, rule.main, rule.main).Files(base, base))
            continue;
        result.trial = Trial::NotTogether;
        for (const QString& addition : rule.additions)
            if (Question(rule.ruleClass, rule.main, addition).Files(base, other) &&
                CanRead(rule.ruleClass, addition, NameOf(other)))
                return {Trial::Together, i, addition};
    }
    return result;
}

} // namespace titler
