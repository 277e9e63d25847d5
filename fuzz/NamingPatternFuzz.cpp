// Four lines: a pattern, a name, an addition pattern, a candidate's name. The bytes 1, 2 and 3 stand for the
// labels, so that a mutation of one byte makes another pattern. The engine must agree with a reader that is
// written for plainness, and the matcher must keep count.
#include "KvFileNaming.h"
#include "Require.h"
#include "core/RefCounted.h"
#include "core/Wildcard.h"
#include "naming/NamePattern.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr wchar_t kDigits[] = L"0123456789";

std::array<std::wstring, 4> Lines(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array<const wchar_t*, 3> kLabels = {L"<File>", L"<Number>", L"<Ext>"};
    std::array<std::wstring, 4> lines;
    std::size_t line = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n' && line + 1 < lines.size())
            ++line;
        else if (data[i] >= 1 && data[i] <= kLabels.size())
            lines[line] += kLabels[data[i] - 1u];
        else if (data[i] != 0)
            lines[line] += static_cast<wchar_t>(data[i]);
    }
    return lines;
}

class PlainReader
{
public:
    explicit PlainReader(const std::wstring& pattern)
    {
        for (std::size_t i = 0; i < pattern.size();) {
            std::wstring label;
            for (const std::wstring known : {L"<File>", L"<Number>", L"<Ext>"})
                label = pattern.compare(i, known.size(), known) == 0 ? known : label;
            if (!label.empty())
                m_pieces.push_back(label);
            else if (m_pieces.empty() || IsLabel(m_pieces.size() - 1))
                m_pieces.push_back(pattern.substr(i, 1));
            else
                m_pieces.back() += pattern[i];
            m_specification += label.empty() ? pattern.substr(i, 1) : label == L"<Ext>" ? L".*" : L"*";
            i += std::max<std::size_t>(label.size(), 1);
        }
    }

    const std::wstring& Specification() const { return m_specification; }

    /// The values of the labels from piece `first` on.
    std::optional<std::vector<std::wstring>> Read(const std::wstring& name, std::size_t first = 0) const
    {
        std::size_t literal = first;
        while (literal < m_pieces.size() && IsLabel(literal))
            ++literal;
        if (literal == m_pieces.size())
            return ReadPart(name, first, literal);
        const bool digit = literal + 1 < m_pieces.size() && m_pieces[literal + 1] == L"<Number>";
        const std::size_t length = m_pieces[literal].size();
        std::size_t at = name.find(m_pieces[literal]);
        while (digit && at != std::wstring::npos && name.find_first_of(kDigits, at + length) != at + length)
            at = name.find(m_pieces[literal], at + 1);
        if (at == std::wstring::npos)
            return std::nullopt;
        auto values = ReadPart(name.substr(0, at), first, literal);
        const auto others = Read(name.substr(at + length), literal + 1);
        if (!values || !others)
            return std::nullopt;
        values->insert(values->end(), others->begin(), others->end());
        return values;
    }

private:
    bool IsLabel(std::size_t piece) const
    {
        return m_pieces[piece] == L"<File>" || m_pieces[piece] == L"<Number>" || m_pieces[piece] == L"<Ext>";
    }

    std::optional<std::vector<std::wstring>> ReadPart(std::wstring part, std::size_t first,
                                                      std::size_t last) const
    {
        std::vector<std::wstring> values;
        if (first == last)
            return part.empty() ? std::optional(values) : std::nullopt;
        if (last - first == 1)
            return part.empty() ? std::nullopt : std::optional(std::vector{part});
        for (std::size_t i = first; i < last; ++i) {
            const std::wstring next = i + 1 < last ? m_pieces[i + 1] : L"";
            std::size_t length = part.find_first_of(next == L"<Number>" ? kDigits
                                                    : next == L"<Ext>"  ? L"."
                                                                        : L"");
            if (m_pieces[i] == L"<Number>")
                length = part.find_first_not_of(kDigits);
            if (m_pieces[i] == L"<Ext>")
                length = part.size() > 1 && part[0] == L'.' ? part.size() : 0;
            values.push_back(part.substr(0, length));
            if (values.back().empty())
                return std::nullopt;
            if (m_pieces[i] != L"<Ext>")
                part.erase(0, length);
        }
        return values;
    }

    std::vector<std::wstring> m_pieces;
    std::wstring m_specification;
};

void CheckEngine(const std::wstring& text, const std::wstring& name, const std::wstring& addition)
{
    const kv::NamePattern pattern(text);
    const PlainReader plain(text);
    Require(pattern.Specification() == plain.Specification());
    auto expected = text.size() < kKvNamingTextSize ? plain.Read(name) : std::nullopt;
    kv::NameValues values;
    Require(pattern.Read(name, values) == expected.has_value());
    Require(!pattern.HasNumber() || pattern.ReadNumber(name).has_value() == expected.has_value());
    if (!kv::FitsWildcard(name, plain.Specification()))
        expected.reset();
    Require(pattern.Fit(name, values) == expected.has_value());
    Require(values.size() == (expected ? expected->size() : 0));
    for (std::size_t i = 0; i < values.size(); ++i)
        Require(values[i].text == (*expected)[i]);
    const auto derived = kv::DeriveSpecification(addition, {values.begin(), values.end()});
    Require(!derived || (!derived->empty() && derived->size() < kKvNamingTextSize));
}

void CheckMatcher(const std::array<std::wstring, 4>& lines)
{
    IKvFileNamingRule* rule = nullptr;
    IKvFileNamingRuleCollection* rules = nullptr;
    IKvFileNamingMatcher* matcher = nullptr;
    Require(CreateFileNamingRule(kKvNamingClassAudio, &rule) && CreateFileNamingRuleCollection(&rules) &&
            KvCreateFileNamingMatcher(&matcher));
    const kv::Reference<IKvUnknown> owners[] = {kv::Reference<IKvUnknown>(rule),
                                                kv::Reference<IKvUnknown>(rules),
                                                kv::Reference<IKvUnknown>(matcher)};
    rule->SetMainRule(lines[0].c_str());
    rule->AddAdditionRule(lines[2].c_str());
    rules->AddRule(rule);
    Require(matcher->Prepare(lines[1].c_str(), kKvNamingClassAudio, rules) == 1);
    const int filed = matcher->AddFile(lines[3].c_str());
    unsigned int groups = 0;
    Require(matcher->BuildGroups(&groups) == 1 && groups == static_cast<unsigned int>(filed));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::array<std::wstring, 4> lines = Lines(data, size);
    CheckEngine(lines[0], lines[1], lines[2]);
    CheckMatcher(lines);
    return 0;
}
