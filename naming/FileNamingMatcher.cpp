#include "KvFileNaming.h"
#include "core/KvFileUtils.h"
#include "core/RefCounted.h"
#include "naming/NamePattern.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kv {
namespace {

struct FiledFile
{
    std::wstring name;
    std::int32_t number;
};

/// A pattern and the specification that it gives for the siblings of the base file.
struct Candidate
{
    NamePattern pattern;
    std::wstring specification;

    bool Fits(const std::wstring& name) const
    {
        return KvFileUtils::DoesFileMatchSpecEx(name.c_str(), specification.c_str()) != 0;
    }
};

struct AdditionEntry
{
    Candidate addition;
    std::vector<FiledFile> files;
};

/// A rule whose main pattern fits the base file.
struct MatchRecord
{
    std::vector<AdditionEntry> entries;
    /// The main rule of an audio rule, unless its derived specification is too long: the base is one channel,
    /// and the other channels have names like its own.
    std::optional<Candidate> otherChannels;

    /// The pattern that claims a file for an entry; null when none does.
    const NamePattern* Choose(const AdditionEntry& entry, const std::wstring& name) const
    {
        if (entry.addition.Fits(name))
            return &entry.addition.pattern;
        return otherChannels && otherChannels->Fits(name) ? &otherChannels->pattern : nullptr;
    }
};

/// @return nothing when the rule does not fit the base name or names no siblings of it.
std::optional<MatchRecord> MatchRule(IKvFileNamingRule& rule, unsigned int ruleClass,
                                     std::wstring_view baseName)
{
    wchar_t text[kKvNamingTextSize] = {};
    if (!rule.GetMainRule(text))
        return std::nullopt;
    NamePattern mainRule(text);
    NameValues values;
    if (mainRule.Text().empty() || !mainRule.Fit(baseName, values))
        return std::nullopt;

    MatchRecord record;
    const unsigned int count = rule.GetAdditionRuleCount();
    for (unsigned int i = 0; i < count; ++i) {
        if (!rule.GetAdditionRule(i, text))
            continue;
        // An empty addition derives nothing.
        if (std::optional<std::wstring> specification = DeriveSpecification(text, values))
            record.entries.push_back({{NamePattern(text), std::move(*specification)}, {}});
    }
    if (record.entries.empty())
        return std::nullopt;
    if (ruleClass == kKvNamingClassAudio) {
        if (std::optional<std::wstring> specification = DeriveSpecification(mainRule.Text(), values))
            record.otherChannels = Candidate{std::move(mainRule), std::move(*specification)};
    }
    return record;
}

class CKvFileNamingMatcher final : public RefCounted<IKvFileNamingMatcher>
{
public:
    int SetMode(unsigned int mode) override
    {
        m_mode = mode;
        return 1;
    }
    int Prepare(const wchar_t* fileName, unsigned int ruleClass, IKvFileNamingRuleCollection* rules) override;
    int AddFile(const wchar_t* path) override;
    int BuildGroups(unsigned int* groupCount) override;
    int GetGroup(unsigned int index, wchar_t* name, CStringArray* files) override;

private:
    unsigned int m_mode = 0;
    std::wstring m_baseName; // also every group's name
    std::vector<MatchRecord> m_records;
    std::vector<std::vector<std::wstring>> m_groups;
};

int CKvFileNamingMatcher::Prepare(const wchar_t* fileName, unsigned int ruleClass,
                                  IKvFileNamingRuleCollection* rules)
{
    m_groups.clear();
    m_records.clear();
    if (!fileName || !rules || rules->GetRuleCount() == 0)
        return 0;
    m_baseName = fileName;
    const unsigned int count = rules->GetRuleCount();
    for (unsigned int i = 0; i < count; ++i) {
        IKvFileNamingRule* taken = nullptr;
        if (!rules->GetRule(i, &taken) || !taken)
            continue;
        const Reference<IKvFileNamingRule> rule(taken);
        if (rule->GetClass() != ruleClass)
            continue;
        if (std::optional<MatchRecord> record = MatchRule(*rule, ruleClass, m_baseName))
            m_records.push_back(std::move(*record));
    }
    return 1;
}

int CKvFileNamingMatcher::AddFile(const wchar_t* path)
{
    if (!path)
        return 0;
    std::wstring name(path);
    name.erase(0, name.find_last_of(L"\\/") + 1); // no folder: npos + 1 is 0
    int filed = 0;
    for (MatchRecord& record : m_records) {
        for (AdditionEntry& entry : record.entries) {
            const NamePattern* chosen = record.Choose(entry, name);
            if (!chosen)
                continue;
            entry.files.push_back({name, chosen->ReadNumber(name).value_or(0)});
            ++filed;
        }
    }
    return filed;
}

int CKvFileNamingMatcher::BuildGroups(unsigned int* groupCount)
{
    if (!groupCount)
        return 0;
    m_groups.clear();
    for (MatchRecord& record : m_records) {
        for (AdditionEntry& entry : record.entries) {
            if (entry.files.empty())
                continue;
            std::stable_sort(entry.files.begin(), entry.files.end(),
                             [](const FiledFile& a, const FiledFile& b) { return a.number < b.number; });
            std::vector<std::wstring>& group = m_groups.emplace_back();
            group.reserve(entry.files.size());
            for (const FiledFile& file : entry.files)
                group.push_back(file.name);
        }
    }
    *groupCount = static_cast<unsigned int>(m_groups.size());
    return 1;
}

int CKvFileNamingMatcher::GetGroup(unsigned int index, wchar_t* name, CStringArray* files)
{
    if (index >= m_groups.size() || !name || !files || m_baseName.size() >= kKvNamingGroupNameSize)
        return 0;
    const std::vector<std::wstring>& group = m_groups[index];
    files->insert(files->end(), group.begin(), group.end());
    name[m_baseName.copy(name, m_baseName.size())] = L'\0';
    return 1;
}

} // namespace
} // namespace kv

int KvCreateFileNamingMatcher(IKvFileNamingMatcher** out)
{
    return kv::CreateObject<kv::CKvFileNamingMatcher>(out) ? 1 : 0;
}
