// Which files of a folder belong to a clip: the library's file naming, as a host uses it.
#pragma once

#include "KvFileNaming.h"
#include "media/Ref.h"

#include <stop_token>
#include <string>
#include <vector>

namespace titler {

/// Finds siblings by the rules of class kKvNamingClassVideoAudio. One caller at a time.
///
/// It asks matchers as any host can, through the public headers, and offers each base only the files that
/// begin as its siblings do: every file offered to every base would take quadratic time.
class SiblingFinder
{
public:
    /// @param names the folder's files.
    SiblingFinder(IKvFileNamingRuleCollection& rules, std::vector<std::wstring> names);

    const std::vector<std::wstring>& Names() const { return m_names; }

    /// The siblings of a file, as places in `Names`: rule by rule, addition by addition, each in the order of
    /// the numbers; not the file itself and none twice. Cut short when `stop` asks for it.
    std::vector<std::size_t> SiblingsOf(std::size_t base, const std::stop_token& stop);

private:
    struct Addition
    {
        Ref<IKvFileNamingRuleCollection> siblings;
        // A matcher files a name whose number it cannot read ("clip_Alt.mov" for "<File>_A<Number><Ext>")
        // under 0. With the addition as main rule it tells. Null: there is no number to read.
        Ref<IKvFileNamingRuleCollection> readable;
        bool beginsWithFile; ///< with the base's "<File>" value
    };

    // What a second matcher is asked about a rule.
    struct Rule
    {
        Ref<IKvFileNamingRuleCollection> fits;  ///< whether a base fits the rule at all
        Ref<IKvFileNamingRuleCollection> start; ///< whether a name begins with the base's "<File>" value
        std::vector<Addition> additions;
    };

    void Add(IKvFileNamingRule& rule);
    bool Fits(IKvFileNamingRuleCollection& question, const std::wstring& name);
    bool CanRead(const Addition& addition, const std::wstring& name);
    std::wstring FileValue(const Rule& rule, const std::wstring& base);
    std::vector<std::size_t> NamesThatBegin(const std::wstring& start) const;
    std::vector<std::wstring> FiledUnder(const Addition& addition, const std::wstring& base,
                                         const std::vector<std::size_t>& candidates,
                                         const std::stop_token& stop);

    std::vector<std::wstring> m_names;   ///< sorted
    std::vector<std::wstring> m_folded;  ///< the names without case
    std::vector<std::size_t> m_byFolded; ///< places in m_names, in the order of m_folded
    std::vector<Rule> m_rules;
    Ref<IKvFileNamingMatcher> m_matcher;
    Ref<IKvFileNamingMatcher> m_asked;
};

} // namespace titler
