#include "naming/MediaReport.h"

#include "naming/MediaExtensions.h"
#include "naming/MediaSearch.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace kv {
namespace {

bool SaysSomething(const MediaPattern& addition)
{
    return addition.LiteralLength() > 0 || addition.Pattern().HasNumber();
}

std::wstring Folded(std::wstring_view text)
{
    std::string folded;
    AppendFolded(folded, text);
    std::wstring wide;
    AppendDecoded(wide, folded);
    return wide;
}

// A pattern that reads folded names as the given one reads names, but for the case of its literal text.
NamePattern FoldedPattern(const NamePattern& pattern)
{
    std::wstring text;
    for (const PatternToken& token : pattern.Tokens()) {
        const std::wstring_view piece = pattern.TokenText(token);
        text += token.kind == TokenKind::Literal ? Folded(piece) : std::wstring(piece);
    }
    return NamePattern(text);
}

// A rule that may tell whose sibling a file is.
class OrphanRule
{
public:
    OrphanRule(const MediaNames& names, const MediaRule& rule)
        : m_names(names)
        , m_rule(rule)
        , m_foldedMain(FoldedPattern(rule.main.Pattern()))
        , m_lastBases(rule.additions.size())
    {
    }

    /// @param missed becomes the base that a file misses, when it looks more like a sibling of that one.
    /// @return false when a base of the file is there.
    bool LookForBase(MediaName file, MediaOrphan& missed, std::optional<std::size_t>& missedLength);

private:
    // The first two names that fit the specification of a base: one may be the file that asks.
    struct Bases
    {
        std::wstring specification;
        std::vector<MediaName> names;
    };

    void FindBases(MediaName nearby, Bases& bases);

    const MediaNames& m_names;
    const MediaRule& m_rule;
    NamePattern m_foldedMain;
    std::vector<Bases> m_lastBases; // of each addition: orphans of one base stand side by side
    NameValues m_values;
    std::wstring m_specification;
    std::string m_folded;
};

bool OrphanRule::LookForBase(MediaName file, MediaOrphan& missed, std::optional<std::size_t>& missedLength)
{
    for (std::size_t i = 0; i < m_rule.additions.size(); ++i) {
        const MediaPattern& addition = m_rule.additions[i];
        if (!SaysSomething(addition) || !addition.Pattern().Fit(m_names[file], m_values) ||
            !m_rule.main.Derive(m_values, m_specification))
            continue;
        Bases& bases = m_lastBases[i];
        if (bases.specification != m_specification) {
            bases.specification = m_specification;
            FindBases(file, bases);
        }
        if (std::any_of(bases.names.begin(), bases.names.end(), [=](MediaName name) { return name != file; }))
            return false;
        if (!missedLength || addition.LiteralLength() > *missedLength) {
            missedLength = addition.LiteralLength();
            missed.rule = m_rule.index;
            missed.specification = m_specification;
        }
    }
    return true;
}

void OrphanRule::FindBases(MediaName nearby, Bases& bases)
{
    bases.names.clear();
    const MediaSpecification specification(m_names, bases.specification, nearby, m_folded);
    const MediaNames::Range range = specification.Range();
    for (std::uint32_t place = range.first; place < range.last && bases.names.size() < 2; ++place) {
        const MediaName name = m_names.At(place);
        if (specification.FitsAt(place, m_names[name]) && m_foldedMain.Fit(Folded(m_names[name]), m_values))
            bases.names.push_back(name);
    }
}

class GapFinder
{
public:
    GapFinder(const MediaNames& names, const std::vector<MediaRule>& rules, const MediaGrouping& grouping)
        : m_names(names)
        , m_rules(rules)
        , m_grouping(grouping)
    {
    }

    void AddClip(const MediaClip& clip);
    std::vector<MediaGap> TakeGaps() { return std::move(m_gaps); }

private:
    // The numbers that one pattern found.
    struct Reach
    {
        const NamePattern* pattern;
        std::int32_t first;
        std::int32_t last;
    };
    // The numbers that stand behind one text, whichever pattern found them.
    struct Numbering
    {
        std::vector<std::int32_t> numbers;
        std::vector<Reach> reaches;
    };

    void AddFile(const FiledMedia& file, const NamePattern& pattern);
    Numbering& NumberingOf(std::wstring_view name, const NamePattern& pattern);
    void TellGaps(MediaName base, Numbering& numbering);

    const MediaNames& m_names;
    const std::vector<MediaRule>& m_rules;
    const MediaGrouping& m_grouping;
    std::vector<MediaGap> m_gaps;

    // Of the clip at hand.
    std::vector<Numbering> m_numberings;
    std::unordered_map<std::string, std::size_t> m_numberingAt;
    NameValues m_values;
};

void GapFinder::AddClip(const MediaClip& clip)
{
    m_numberings.clear();
    m_numberingAt.clear();
    for (const MediaGroup& group : m_grouping.GroupsOf(clip)) {
        const MediaRule& rule = m_rules[group.rule];
        for (const FiledMedia& file : m_grouping.FilesOf(group)) {
            const MediaPattern& pattern = file.byMainRule ? rule.main : rule.additions[group.addition];
            if (pattern.Pattern().HasNumber())
                AddFile(file, pattern.Pattern());
        }
    }
    for (Numbering& numbering : m_numberings)
        TellGaps(clip.base, numbering);
}

void GapFinder::AddFile(const FiledMedia& file, const NamePattern& pattern)
{
    Numbering& numbering = NumberingOf(m_names[file.name], pattern);
    numbering.numbers.push_back(file.number);
    const auto reach = std::find_if(numbering.reaches.begin(), numbering.reaches.end(),
                                    [&](const Reach& r) { return r.pattern->Text() == pattern.Text(); });
    if (reach == numbering.reaches.end()) {
        numbering.reaches.push_back({&pattern, file.number, file.number});
        return;
    }
    reach->first = std::min(reach->first, file.number);
    reach->last = std::max(reach->last, file.number);
}

// "<File>A<Number>" and "<File>_A<Number>" may both count c_A1, c_A2: what tells a numbering is the text
// before its numbers. A name that begins with its number has none, so there the pattern tells it.
GapFinder::Numbering& GapFinder::NumberingOf(std::wstring_view name, const NamePattern& pattern)
{
    pattern.Read(name, m_values);
    const std::wstring_view number = m_values.First(TokenKind::Number).value_or(std::wstring_view());
    const bool hasStart = !number.empty() && number.data() != name.data();
    std::string key(hasStart ? "" : "<");
    AppendFolded(key, hasStart ? name.substr(0, static_cast<std::size_t>(number.data() - name.data()))
                               : std::wstring_view(pattern.Text()));
    const auto [at, isNew] = m_numberingAt.try_emplace(std::move(key), m_numberings.size());
    return isNew ? m_numberings.emplace_back() : m_numberings[at->second];
}

void GapFinder::TellGaps(MediaName base, Numbering& numbering)
{
    std::vector<std::int32_t>& numbers = numbering.numbers;
    std::sort(numbers.begin(), numbers.end());
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        const std::int32_t before = numbers[i - 1];
        const std::int32_t behind = numbers[i];
        if (behind - before <= 1) // numbers are not negative, so this cannot overflow
            continue;
        const auto reach =
            std::find_if(numbering.reaches.begin(), numbering.reaches.end(),
                         [=](const Reach& r) { return r.first <= before && r.last >= behind; });
        if (reach != numbering.reaches.end())
            m_gaps.push_back({base, reach->pattern->Text(), before + 1, behind - 1});
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
    std::vector<OrphanRule> asked;
    for (const MediaRule& rule : rules) {
        if (std::find(classes.begin(), classes.end(), rule.ruleClass) != classes.end())
            asked.emplace_back(names, rule);
    }
    std::vector<MediaOrphan> orphans;
    for (MediaName name = 0; name < names.Count(); ++name) {
        if (grouping.isInClip[name] || HasVideoExtension(names[name]))
            continue;
        MediaOrphan orphan = {name, 0, {}};
        std::optional<std::size_t> length;
        const bool misses = std::all_of(asked.begin(), asked.end(), [&](OrphanRule& rule) {
            return rule.LookForBase(name, orphan, length);
        });
        if (misses && length)
            orphans.push_back(std::move(orphan));
    }
    return orphans;
}

std::vector<MediaGap> FindGaps(const MediaNames& names, const std::vector<MediaRule>& rules,
                               const MediaGrouping& grouping)
{
    GapFinder finder(names, rules, grouping);
    for (const MediaClip& clip : grouping.clips)
        finder.AddClip(clip);
    return finder.TakeGaps();
}

} // namespace kv
