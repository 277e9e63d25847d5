// A pattern, one character a byte. The label check must find the fault that a plain search finds.
#include "KvFileNaming.h"
#include "Require.h"
#include "naming/RuleCheck.h"

#include <string>
#include <vector>

namespace {

/// The message that a pattern deserves; empty when it is sound.
std::wstring PlainCheck(const std::wstring& pattern)
{
    std::vector<std::wstring> seen;
    for (std::size_t close = pattern.find(L'>'); close != std::wstring::npos;
         close = pattern.find(L'>', close + 1)) {
        const std::size_t bracket = close == 0 ? std::wstring::npos : pattern.find_last_of(L"<>", close - 1);
        if (bracket == std::wstring::npos || pattern[bracket] == L'>')
            continue;
        const std::wstring label = pattern.substr(bracket, close + 1 - bracket).substr(0, 63);
        for (const std::wstring& other : seen) {
            if (other == label)
                return L"The rule contains duplicate labels " + label;
        }
        if (label != L"<File>" && label != L"<Number>" && label != L"<Ext>" &&
            label.find(L"<AnyChar") == std::wstring::npos && label.find(L"<FixedChar") == std::wstring::npos)
            return L"The rule contains invalid label " + label;
        seen.push_back(label);
    }
    return {};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::wstring pattern;
    for (std::size_t i = 0; i < size; ++i)
        pattern += static_cast<wchar_t>(data[i] == 0 ? 0x1F600 : data[i]);
    std::wstring shown;
    KvSetMessageBoxHandler([&shown](HWND, const std::wstring& text, UINT) {
        shown += text;
        return IDOK;
    });
    const std::wstring expected = PlainCheck(pattern);
    Require(CheckRuleLabels(pattern.c_str()) == expected.empty());
    Require(shown == expected);
    Require(kv::RuleFault(pattern).has_value() || (expected.empty() && !pattern.empty()));
    KvSetMessageBoxHandler({});
    return 0;
}
