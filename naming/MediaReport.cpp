#include "naming/MediaReport.h"

#include "naming/MediaSearch.h"

#include <algorithm>
#include <optional>

namespace kv {
namespace {

bool SaysSomething(const MediaPattern& addition)
{
    return addition.LiteralLength() > 0 || addition.Pattern().HasNumber();
}

class OrphanFinder
{
public:
    explicit OrphanFinder(const MediaNames& names) : m_names(names) {}

    /// Looks for the base that a file misses by a rule: nothing when it looks like no sibling or its base is
    /// there. @return the literal length of the pattern that fits the file.
    std::optional<std::size_t> MissesBase(MediaName file, const MediaRule& rule);
    /// The specification of the base that was missed last.
    const std::wstring& Specification() const { return m_specification; }

private:
    const MediaPattern* ReadAsSibling(std::wstring_view name, const MediaRule& rule);
    bool IsThere(const std::wstring& specification, MediaName nearby);

    const MediaNames& m_names;
    NameValues m_values;
    NameValues m_tried;
    std::wstring m_specification;
    std::string m_folded;
    std::wstring m_lastSpecification; // orphans of one base stand side by side
    bool m_lastIsThere = false;
};

const MediaPattern* OrphanFinder::ReadAsSibling(std::wstring_view name, const MediaRule& rule)
{
    const MediaPattern* best = nullptr;
    for (const MediaPattern& addition : rule.additions) {
        const bool saysMore = !best || addition.LiteralLength() > best->LiteralLength();
        if (!saysMore || !SaysSomething(addition) || !addition.Pattern().Fit(name, m_tried))
            continue;
        best = &addition;
        m_values = m_tried;
    }
    return best;
}

bool OrphanFinder::IsThere(const std::wstring& specification, MediaName nearby)
{
    if (specification == m_lastSpecification)
        return m_lastIsThere;
    m_lastSpecification = specification;
    m_lastIsThere = false;
    const MediaSpecification base(m_names, specification, nearby, m_folded);
    for (std::uint32_t place = base.Range().first; place < base.Range().last && !m_lastIsThere; ++place)
        m_lastIsThere = base.FitsAt(place, m_names[m_names.At(place)]);
    return m_lastIsThere;
}

std::optional<std::size_t> OrphanFinder::MissesBase(MediaName file, const MediaRule& rule)
{
    const MediaPattern* const sibling = ReadAsSibling(m_names[file], rule);
    if (!sibling || !rule.main.Derive(m_values, m_specification) || IsThere(m_specification, file))
        return std::nullopt;
    return sibling->LiteralLength();
}

class GapFinder
{
public:
    GapFinder(const std::vector<MediaRule>& rules, const MediaGrouping& grouping)
        : m_rules(rules)
        , m_grouping(grouping)
    {
    }

    void AddClip(const MediaClip& clip);
    std::vector<MediaGap> TakeGaps() { return std::move(m_gaps); }

private:
    bool IsTold(std::span<const MediaGroup> groups, const MediaGroup& group) const;
    void AddGroup(MediaName base, const MediaGroup& group, bool byMainRule, const NamePattern& pattern);

    const std::vector<MediaRule>& m_rules;
    const MediaGrouping& m_grouping;
    std::vector<MediaGap> m_gaps;
};

bool HasAddition(const MediaRule& rule, const std::wstring& text)
{
    return std::any_of(rule.additions.begin(), rule.additions.end(),
                       [&](const MediaPattern& addition) { return addition.Pattern().Text() == text; });
}

// True when an earlier group of the clip holds the same files with the same numbers: "c_A1.wav" is read by
// "<File>A<Number><Ext>", too, and its gaps are to be told once.
bool GapFinder::IsTold(std::span<const MediaGroup> groups, const MediaGroup& group) const
{
    const auto files = m_grouping.FilesOf(group);
    return std::any_of(groups.data(), &group, [&](const MediaGroup& earlier) {
        const auto others = m_grouping.FilesOf(earlier);
        return m_rules[earlier.rule].additions[earlier.addition].Pattern().HasNumber() &&
               std::equal(files.begin(), files.end(), others.begin(), others.end(),
                          [](const FiledMedia& a, const FiledMedia& b) {
                              return a.name == b.name && a.number == b.number;
                          });
    });
}

void GapFinder::AddClip(const MediaClip& clip)
{
    std::uint32_t mainDone = kNoMediaRule; // the last rule whose main pattern's siblings were looked at
    const auto groups = m_grouping.GroupsOf(clip);
    for (const MediaGroup& group : groups) {
        const MediaRule& rule = m_rules[group.rule];
        const NamePattern& addition = rule.additions[group.addition].Pattern();
        if (addition.HasNumber() && !IsTold(groups, group))
            AddGroup(clip.base, group, false, addition);
        const NamePattern& main = rule.main.Pattern();
        const auto files = m_grouping.FilesOf(group);
        const bool hasByMain =
            std::any_of(files.begin(), files.end(), [](const FiledMedia& file) { return file.byMainRule; });
        if (hasByMain && main.HasNumber() && mainDone != group.rule && !HasAddition(rule, main.Text())) {
            mainDone = group.rule;
            AddGroup(clip.base, group, true, main);
        }
    }
}

void GapFinder::AddGroup(MediaName base, const MediaGroup& group, bool byMainRule, const NamePattern& pattern)
{
    std::optional<std::int32_t> previous;
    for (const FiledMedia& file : m_grouping.FilesOf(group)) {
        if (file.byMainRule != byMainRule)
            continue;
        // Numbers are not negative, so the difference cannot overflow.
        if (previous && file.number - *previous > 1)
            m_gaps.push_back({base, pattern.Text(), *previous + 1, file.number - 1});
        previous = file.number;
    }
}

} // namespace

MediaReason ReasonOf(const std::vector<MediaRule>& rules, const MediaClip& clip, std::wstring_view name,
                     const MediaGroup* group, const FiledMedia* filed)
{
    MediaReason reason;
    const std::uint32_t index = group ? group->rule : clip.rule;
    if (index == kNoMediaRule)
        return reason;
    reason.rule = &rules[index];
    const bool byMain = !group || filed->byMainRule;
    const NamePattern& pattern =
        byMain ? reason.rule->main.Pattern() : reason.rule->additions[group->addition].Pattern();
    NameValues values;
    pattern.Fit(name, values);
    reason.pattern = pattern.Text();
    reason.file = values.First(TokenKind::File).value_or(std::wstring_view());
    reason.number = values.First(TokenKind::Number).value_or(std::wstring_view());
    reason.extension = values.First(TokenKind::Ext).value_or(std::wstring_view());
    return reason;
}

std::vector<MediaOrphan> FindOrphans(const MediaNames& names, const std::vector<MediaRule>& rules,
                                     std::span<const unsigned int> classes, const MediaGrouping& grouping)
{
    std::vector<const MediaRule*> asked;
    for (const MediaRule& rule : rules) {
        if (std::find(classes.begin(), classes.end(), rule.ruleClass) != classes.end())
            asked.push_back(&rule);
    }
    std::vector<MediaOrphan> orphans;
    OrphanFinder finder(names);
    for (MediaName name = 0; name < names.Count(); ++name) {
        if (grouping.isInClip[name])
            continue;
        std::optional<std::size_t> best;
        MediaOrphan orphan = {name, 0, {}};
        for (const MediaRule* rule : asked) {
            const std::optional<std::size_t> length = finder.MissesBase(name, *rule);
            if (!length || (best && *length <= *best))
                continue;
            best = length;
            orphan.rule = rule->index;
            orphan.specification = finder.Specification();
        }
        if (best)
            orphans.push_back(std::move(orphan));
    }
    return orphans;
}

std::vector<MediaGap> FindGaps(const std::vector<MediaRule>& rules, const MediaGrouping& grouping)
{
    GapFinder finder(rules, grouping);
    for (const MediaClip& clip : grouping.clips)
        finder.AddClip(clip);
    return finder.TakeGaps();
}

} // namespace kv
