#include "media/SiblingFinder.h"

#include <QChar>

#include <algorithm>
#include <new>
#include <numeric>
#include <set>
#include <string_view>

namespace titler {
namespace {

constexpr unsigned int kClass = kKvNamingClassVideoAudio;
constexpr std::size_t kNamesBetweenStopChecks = 1024;

template <typename T, typename Create>
Ref<T> Created(Create create)
{
    T* object = nullptr;
    if (!create(&object))
        throw std::bad_alloc();
    return Ref<T>(object);
}

Ref<IKvFileNamingMatcher> NewMatcher()
{
    return Created<IKvFileNamingMatcher>(KvCreateFileNamingMatcher);
}

Ref<IKvFileNamingRuleCollection> OneRule(const std::wstring& mainRule, const wchar_t* addition)
{
    auto rule = Created<IKvFileNamingRule>([](auto** out) { return CreateFileNamingRule(kClass, out); });
    rule->SetMainRule(mainRule.c_str());
    rule->AddAdditionRule(addition);
    auto collection = Created<IKvFileNamingRuleCollection>(CreateFileNamingRuleCollection);
    collection->AddRule(rule.get());
    return collection;
}

std::wstring Folded(std::wstring text)
{
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(QChar::toCaseFolded(static_cast<char32_t>(c)));
    return text;
}

} // namespace

SiblingFinder::SiblingFinder(IKvFileNamingRuleCollection& rules, std::vector<std::wstring> names)
    : m_names(std::move(names))
    , m_byFolded(m_names.size())
    , m_matcher(NewMatcher())
    , m_asked(NewMatcher())
{
    std::sort(m_names.begin(), m_names.end());
    m_folded.reserve(m_names.size());
    for (const std::wstring& name : m_names)
        m_folded.push_back(Folded(name));
    std::iota(m_byFolded.begin(), m_byFolded.end(), std::size_t{0});
    std::sort(m_byFolded.begin(), m_byFolded.end(),
              [&](std::size_t a, std::size_t b) { return m_folded[a] < m_folded[b]; });

    for (unsigned int i = 0; i < rules.GetRuleCount(); ++i) {
        IKvFileNamingRule* handedOut = nullptr;
        if (rules.GetRule(i, &handedOut))
            Add(*Ref<IKvFileNamingRule>(handedOut));
    }
}

void SiblingFinder::Add(IKvFileNamingRule& rule)
{
    wchar_t mainRule[kKvNamingTextSize];
    wchar_t text[kKvNamingTextSize];
    if (rule.GetClass() != kClass || !rule.GetMainRule(mainRule))
        return;
    Rule& added = m_rules.emplace_back(Rule{OneRule(mainRule, L"*"), OneRule(mainRule, L"<File>*"), {}});
    for (unsigned int i = 0; i < rule.GetAdditionRuleCount(); ++i) {
        if (!rule.GetAdditionRule(i, text) || text[0] == 0)
            continue;
        const std::wstring addition = text;
        const bool hasNumber = addition.find(L"<Number>") != std::wstring::npos;
        added.additions.push_back({OneRule(mainRule, text), hasNumber ? OneRule(addition, L"*") : nullptr,
                                   addition.rfind(L"<File>", 0) == 0});
    }
}

// A question is a rule with the addition "*", under which every file goes once a name fits the main rule.
bool SiblingFinder::Fits(IKvFileNamingRuleCollection& question, const std::wstring& name)
{
    m_asked->Prepare(name.c_str(), kClass, &question);
    return m_asked->AddFile(L"any") > 0;
}

bool SiblingFinder::CanRead(const Addition& addition, const std::wstring& name)
{
    return !addition.readable || Fits(*addition.readable, name);
}

// The shortest beginning of the base that begins with the value is the value. Empty where it is not known.
std::wstring SiblingFinder::FileValue(const Rule& rule, const std::wstring& base)
{
    if (base.find_first_of(L"*?<") != std::wstring::npos)
        return {};
    m_asked->Prepare(base.c_str(), kClass, rule.start.get());
    std::size_t tooShort = 0; // all up to here, if any
    std::size_t length = base.size() + 1;
    while (tooShort < length) {
        const std::size_t middle = tooShort + (length - tooShort) / 2;
        if (middle <= base.size() && m_asked->AddFile(base.substr(0, middle).c_str()) == 0)
            tooShort = middle + 1;
        else
            length = middle;
    }
    return length <= base.size() ? base.substr(0, length) : std::wstring();
}

std::vector<std::size_t> SiblingFinder::NamesThatBegin(const std::wstring& start) const
{
    const std::wstring folded = Folded(start);
    const auto before = [&](std::size_t place, const std::wstring& text) { return m_folded[place] < text; };
    const auto first = std::lower_bound(m_byFolded.begin(), m_byFolded.end(), folded, before);
    auto last = first;
    while (last != m_byFolded.end() && m_folded[*last].compare(0, folded.size(), folded) == 0)
        ++last;
    std::vector<std::size_t> places(first, last);
    std::sort(places.begin(), places.end()); // files with equal numbers stand in the order of their names
    return places;
}

std::vector<std::wstring> SiblingFinder::FiledUnder(const Addition& addition, const std::wstring& base,
                                                    const std::vector<std::size_t>& candidates,
                                                    const std::stop_token& stop)
{
    std::vector<std::wstring> files;
    m_matcher->Prepare(base.c_str(), kClass, addition.siblings.get());
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (i % kNamesBetweenStopChecks == 0 && stop.stop_requested())
            return files;
        m_matcher->AddFile(m_names[candidates[i]].c_str());
    }
    unsigned int groups = 0;
    m_matcher->BuildGroups(&groups);
    wchar_t name[kKvNamingGroupNameSize];
    for (unsigned int i = 0; i < groups; ++i)
        m_matcher->GetGroup(i, name, &files);
    std::erase_if(files, [&](const std::wstring& file) { return !CanRead(addition, file); });
    return files;
}

std::vector<std::size_t> SiblingFinder::SiblingsOf(std::size_t base, const std::stop_token& stop)
{
    std::vector<std::size_t> siblings;
    std::set<std::size_t> taken{base};
    const std::wstring& name = m_names[base];
    for (const Rule& rule : m_rules) {
        if (!Fits(*rule.fits, name))
            continue;
        const std::vector<std::size_t> likely = NamesThatBegin(FileValue(rule, name));
        for (const Addition& addition : rule.additions)
            for (const std::wstring& file :
                 FiledUnder(addition, name, addition.beginsWithFile ? likely : NamesThatBegin({}), stop)) {
                const auto place = std::lower_bound(m_names.begin(), m_names.end(), file) - m_names.begin();
                if (taken.insert(static_cast<std::size_t>(place)).second)
                    siblings.push_back(static_cast<std::size_t>(place));
            }
    }
    return siblings;
}

} // namespace titler
