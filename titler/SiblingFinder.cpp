#include "SiblingFinder.h"

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
        if (!rules.GetRule(i, &handedOut))
            continue;
        const Ref<IKvFileNamingRule> rule(handedOut);
        wchar_t mainRule[kKvNamingTextSize];
        wchar_t addition[kKvNamingTextSize];
        if (rule->GetClass() != kClass || !rule->GetMainRule(mainRule))
            continue;
        for (unsigned int j = 0; j < rule->GetAdditionRuleCount(); ++j)
            if (rule->GetAdditionRule(j, addition) && addition[0] != 0)
                Add(mainRule, addition);
    }
}

void SiblingFinder::Add(const std::wstring& mainRule, const std::wstring& addition)
{
    const bool hasNumber = addition.find(L"<Number>") != std::wstring::npos;
    const bool beginsWithFile = addition.rfind(L"<File>", 0) == 0;
    m_additions.push_back({OneRule(mainRule, addition.c_str()), OneRule(mainRule, L"*"),
                           hasNumber ? OneRule(addition, L"*") : nullptr,
                           beginsWithFile ? OneRule(mainRule, L"<File>") : nullptr});
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

std::wstring SiblingFinder::StartOfSiblings(const Addition& addition, const std::wstring& base)
{
    if (!addition.start || base.find_first_of(L"*?<") != std::wstring::npos)
        return {};
    m_asked->Prepare(base.c_str(), kClass, addition.start.get());
    for (std::size_t length = 1; length <= base.size(); ++length)
        if (m_asked->AddFile(base.substr(0, length).c_str()) > 0)
            return base.substr(0, length);
    return {};
}

std::vector<std::size_t> SiblingFinder::Candidates(const std::wstring& start) const
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
                                                    const std::stop_token& stop)
{
    std::vector<std::wstring> files;
    if (!Fits(*addition.fits, base))
        return files;
    const std::vector<std::size_t> places = Candidates(StartOfSiblings(addition, base));
    m_matcher->Prepare(base.c_str(), kClass, addition.siblings.get());
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i % kNamesBetweenStopChecks == 0 && stop.stop_requested())
            return files;
        m_matcher->AddFile(m_names[places[i]].c_str());
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
    for (const Addition& addition : m_additions)
        for (const std::wstring& file : FiledUnder(addition, m_names[base], stop)) {
            const auto place = std::lower_bound(m_names.begin(), m_names.end(), file) - m_names.begin();
            if (taken.insert(static_cast<std::size_t>(place)).second)
                siblings.push_back(static_cast<std::size_t>(place));
        }
    return siblings;
}

} // namespace titler
