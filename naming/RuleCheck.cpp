#include "naming/RuleCheck.h"

#include "KvFileNaming.h"
#include "core/CodePoints.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <cstddef>
#include <unordered_set>

namespace kv {
namespace {

constexpr std::size_t kMaxLabel = 63;

constexpr std::uint32_t kEmptyRuleText = 7016;
constexpr std::uint32_t kRefusedCharactersText = 7018;
constexpr std::uint32_t kInvalidLabelText = 7021;
constexpr std::uint32_t kDuplicateLabelText = 7022;

bool IsKnownLabel(std::wstring_view label)
{
    // A label has one "<", so what holds these two begins with them; what follows them is not looked at.
    return label == L"<File>" || label == L"<Number>" || label == L"<Ext>" ||
           label.starts_with(L"<AnyChar") || label.starts_with(L"<FixedChar");
}

std::wstring RefusedCharacterList()
{
    std::wstring list;
    for (const wchar_t character : kRefusedRuleCharacters) {
        if (!list.empty())
            list += L' ';
        list += character;
    }
    return list;
}

} // namespace

std::optional<std::wstring> LabelFault(std::wstring_view pattern)
{
    std::unordered_set<std::wstring_view> seen;
    std::size_t open = std::wstring_view::npos;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == L'<')
            open = i;
        if (pattern[i] != L'>' || open == std::wstring_view::npos)
            continue;
        std::wstring_view label = pattern.substr(open, i + 1 - open);
        label = label.substr(0, CutLength(label, kMaxLabel));
        if (seen.count(label) != 0)
            return FillText(LoadText(kDuplicateLabelText), {label});
        if (!IsKnownLabel(label))
            return FillText(LoadText(kInvalidLabelText), {label});
        seen.insert(label);
        open = std::wstring_view::npos;
    }
    return std::nullopt;
}

std::optional<std::wstring> RuleFault(std::wstring_view pattern)
{
    if (pattern.empty())
        return LoadText(kEmptyRuleText);
    const std::wstring_view refused(kRefusedRuleCharacters.data(), kRefusedRuleCharacters.size());
    if (pattern.find_first_of(refused) != std::wstring_view::npos)
        return FillText(LoadText(kRefusedCharactersText), {RefusedCharacterList()});
    return LabelFault(pattern);
}

} // namespace kv

bool KvCheckRule(const wchar_t* pattern, std::wstring& fault)
{
    fault = kv::RuleFault(pattern ? pattern : L"").value_or(std::wstring());
    return fault.empty();
}

bool CheckRuleLabels(const wchar_t* pattern)
{
    const std::optional<std::wstring> fault = kv::LabelFault(pattern ? pattern : L"");
    if (fault)
        KvMessageBox(nullptr, *fault);
    return !fault;
}
