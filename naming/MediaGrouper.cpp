#include "naming/MediaGrouper.h"

#include "naming/MediaExtensions.h"
#include "naming/MediaSearch.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace kv {
namespace {

// Above this many candidates the files of an addition are remembered: another base with the same
// specification would look through all of them again.
constexpr std::uint32_t kManyCandidates = 64;

std::vector<MediaName> InOrderOfBases(const MediaNames& names)
{
    std::vector<MediaName> order(names.Count());
    for (MediaName i = 0; i < names.Count(); ++i)
        order[i] = i;
    std::stable_partition(order.begin(), order.end(),
                          [&names](MediaName name) { return HasVideoExtension(names[name]); });
    return order;
}

class Grouper
{
public:
    Grouper(const MediaNames& names, const std::vector<MediaRule>& rules) : m_names(names), m_rules(rules)
    {
        m_result.isInClip.assign(names.Count(), 0);
    }

    void TryBase(MediaName base, unsigned int ruleClass);
    MediaGrouping TakeResult() { return std::move(m_result); }
    bool IsInClip(MediaName name) const { return m_result.isInClip[name] != 0; }

private:
    struct Slice
    {
        std::size_t first;
        std::uint32_t count;
    };

    void FileSiblings(MediaName base, std::uint32_t rule);
    Slice FilesOfAddition(MediaName base, std::uint32_t rule, std::uint32_t addition, bool hasMain);
    Slice Collect(const NamePattern& addition, const MediaSpecification& additionFits,
                  const NamePattern& main, const MediaSpecification* mainFits);
    void Offer(MediaName name, const NamePattern& pattern, bool byMainRule);
    std::optional<std::uint32_t> RuleWithSibling(MediaName base, std::size_t firstGroup) const;
    void Commit(MediaClip clip);

    const MediaNames& m_names;
    const std::vector<MediaRule>& m_rules;
    MediaGrouping m_result;
    std::size_t m_keptFiled = 0; // so many filed files are remembered and stay

    // Reused from base to base.
    NameValues m_baseValues;
    NameValues m_fileValues;
    std::wstring m_specification;
    std::wstring m_mainSpecification;
    std::string m_folded;
    std::vector<std::uint64_t> m_found; // number, name and byMainRule in one sortable value
    std::unordered_map<std::string, Slice> m_remembered;
};

void Grouper::TryBase(MediaName base, unsigned int ruleClass)
{
    const std::size_t firstGroup = m_result.groups.size();
    const std::size_t firstFiled = m_result.filed.size();
    for (std::uint32_t rule = 0; rule < m_rules.size(); ++rule) {
        if (m_rules[rule].ruleClass == ruleClass &&
            m_rules[rule].main.Pattern().Fit(m_names[base], m_baseValues))
            FileSiblings(base, rule);
    }
    if (const std::optional<std::uint32_t> rule = RuleWithSibling(base, firstGroup)) {
        const std::size_t count = m_result.groups.size() - firstGroup;
        Commit({base, ruleClass, *rule, static_cast<std::uint32_t>(count), firstGroup});
        return;
    }
    m_result.groups.resize(firstGroup);
    m_result.filed.resize(std::max(firstFiled, m_keptFiled));
}

void Grouper::FileSiblings(MediaName base, std::uint32_t rule)
{
    const MediaRule& r = m_rules[rule];
    const bool hasMain =
        r.ruleClass == kKvNamingClassAudio && r.main.Derive(m_baseValues, m_mainSpecification);
    for (std::uint32_t addition = 0; addition < r.additions.size(); ++addition) {
        if (!r.additions[addition].Derive(m_baseValues, m_specification))
            continue;
        const Slice files = FilesOfAddition(base, rule, addition, hasMain);
        if (files.count > 0)
            m_result.groups.push_back({rule, addition, files.count, files.first});
    }
}

Grouper::Slice Grouper::FilesOfAddition(MediaName base, std::uint32_t rule, std::uint32_t addition,
                                        bool hasMain)
{
    const MediaRule& r = m_rules[rule];
    const NamePattern& pattern = r.additions[addition].Pattern();
    const MediaSpecification fits(m_names, m_specification, base, m_folded);
    std::optional<MediaSpecification> mainFits;
    if (hasMain)
        mainFits.emplace(m_names, m_mainSpecification, base, m_folded);

    const std::uint32_t candidates = fits.Range().Size() + (mainFits ? mainFits->Range().Size() : 0);
    const MediaSpecification* const second = mainFits ? &*mainFits : nullptr;
    if (candidates < kManyCandidates)
        return Collect(pattern, fits, r.main.Pattern(), second);

    // Folded: specifications that differ in case only fit the same names.
    std::string key = std::to_string(rule) + ' ' + std::to_string(addition) + ' ';
    AppendFolded(key, m_specification);
    if (hasMain) {
        key += '\0';
        AppendFolded(key, m_mainSpecification);
    }
    const auto [remembered, isNew] = m_remembered.try_emplace(std::move(key));
    if (isNew) {
        remembered->second = Collect(pattern, fits, r.main.Pattern(), second);
        m_keptFiled = m_result.filed.size();
    }
    return remembered->second;
}

// The addition's pattern comes first: a name that fits both is filed by it.
Grouper::Slice Grouper::Collect(const NamePattern& addition, const MediaSpecification& additionFits,
                                const NamePattern& main, const MediaSpecification* mainFits)
{
    m_found.clear();
    const MediaNames::Range own = additionFits.Range();
    for (std::uint32_t place = own.first; place < own.last; ++place) {
        const MediaName name = m_names.At(place);
        if (additionFits.FitsAt(place, m_names[name]))
            Offer(name, addition, false);
        else if (mainFits && mainFits->FitsAt(place, m_names[name]))
            Offer(name, main, true);
    }
    const MediaNames::Range others = mainFits ? mainFits->Range() : MediaNames::Range{0, 0};
    for (std::uint32_t place = others.first; place < others.last; ++place) {
        const MediaName name = m_names.At(place);
        if (!own.Holds(place) && mainFits->FitsAt(place, m_names[name]))
            Offer(name, main, true);
    }

    if (!std::is_sorted(m_found.begin(), m_found.end()))
        std::sort(m_found.begin(), m_found.end());
    const std::size_t first = m_result.filed.size();
    for (const std::uint64_t found : m_found) {
        m_result.filed.push_back({static_cast<MediaName>((found >> 1) & 0x7FFFFFFF),
                                  static_cast<std::int32_t>(found >> 32), (found & 1) != 0});
    }
    return {first, static_cast<std::uint32_t>(m_found.size())};
}

void Grouper::Offer(MediaName name, const NamePattern& pattern, bool byMainRule)
{
    std::int32_t number = 0;
    if (pattern.HasNumber()) {
        if (!pattern.Read(m_names[name], m_fileValues))
            return;
        number = LeadingNumber(m_fileValues.First(TokenKind::Number).value_or(std::wstring_view()));
    }
    m_found.push_back((static_cast<std::uint64_t>(number) << 32) | (std::uint64_t{name} << 1) |
                      (byMainRule ? 1u : 0u));
}

std::optional<std::uint32_t> Grouper::RuleWithSibling(MediaName base, std::size_t firstGroup) const
{
    for (std::size_t i = firstGroup; i < m_result.groups.size(); ++i) {
        const MediaGroup& group = m_result.groups[i];
        if (group.count > 1 || m_result.filed[group.first].name != base)
            return group.rule;
    }
    return std::nullopt;
}

void Grouper::Commit(MediaClip clip)
{
    m_result.clips.push_back(clip);
    m_result.isInClip[clip.base] = 1;
    for (const MediaGroup& group : m_result.GroupsOf(clip)) {
        for (const FiledMedia& file : m_result.FilesOf(group))
            m_result.isInClip[file.name] = 1;
    }
}

} // namespace

MediaGrouping GroupMedia(const MediaNames& names, const std::vector<MediaRule>& rules,
                         std::span<const unsigned int> classes)
{
    Grouper grouper(names, rules);
    const std::vector<MediaName> order = InOrderOfBases(names);
    for (const unsigned int ruleClass : classes) {
        for (const MediaName name : order) {
            if (!grouper.IsInClip(name))
                grouper.TryBase(name, ruleClass);
        }
    }
    return grouper.TakeResult();
}

std::vector<MediaClip> MediaAlone(const MediaNames& names, const std::vector<MediaRule>& rules,
                                  std::span<const unsigned int> classes, const MediaGrouping& grouping)
{
    std::vector<MediaClip> alone;
    NameValues values;
    const auto fittingClass = [&](std::wstring_view name) {
        for (const unsigned int ruleClass : classes) {
            for (const MediaRule& rule : rules) {
                if (rule.ruleClass == ruleClass && rule.main.Pattern().Fit(name, values))
                    return ruleClass;
            }
        }
        return +kKvNamingClassUnknown;
    };
    for (const MediaName name : InOrderOfBases(names)) {
        if (!grouping.isInClip[name])
            alone.push_back({name, fittingClass(names[name]), kNoMediaRule, 0, 0});
    }
    return alone;
}

} // namespace kv
