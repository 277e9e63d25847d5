// Which files of a folder belong to a clip: the library's file naming, as a host uses it.
#pragma once

#include "KvFileNaming.h"

#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace titler {

struct Releaser
{
    void operator()(IKvUnknown* object) const { object->Release(); }
};
/// Owns one reference.
template <typename T>
using Ref = std::unique_ptr<T, Releaser>;

/// Finds siblings by the rules of class kKvNamingClassVideoAudio. One caller at a time.
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
    // One addition of one rule, and what a second matcher is asked about it.
    struct Addition
    {
        Ref<IKvFileNamingRuleCollection> siblings;
        Ref<IKvFileNamingRuleCollection> fits; ///< whether a base fits the rule at all
        // A matcher files a name whose number it cannot read ("clip_Alt.mov" for "<File>_A<Number><Ext>")
        // under 0. With the addition as main rule it tells. Null: there is no number to read.
        Ref<IKvFileNamingRuleCollection> readable;
        // Fits the base's "<File>" value and nothing else: every sibling begins with that value, so that only
        // few names have to be offered. Null: siblings may begin with anything.
        Ref<IKvFileNamingRuleCollection> start;
    };

    void Add(const std::wstring& mainRule, const std::wstring& addition);
    bool Fits(IKvFileNamingRuleCollection& question, const std::wstring& name);
    bool CanRead(const Addition& addition, const std::wstring& name);
    std::wstring StartOfSiblings(const Addition& addition, const std::wstring& base);
    std::vector<std::size_t> Candidates(const std::wstring& start) const;
    std::vector<std::wstring> FiledUnder(const Addition& addition, const std::wstring& base,
                                         const std::stop_token& stop);

    std::vector<std::wstring> m_names;   ///< sorted
    std::vector<std::wstring> m_folded;  ///< the names without case
    std::vector<std::size_t> m_byFolded; ///< places in m_names, in the order of m_folded
    std::vector<Addition> m_additions;
    Ref<IKvFileNamingMatcher> m_matcher;
    Ref<IKvFileNamingMatcher> m_asked;
};

} // namespace titler
