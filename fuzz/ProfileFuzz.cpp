// A profile document from any bytes: it comes back as it was, and a write changes one line.
//
// The input is the document, optionally followed by a section, a key and a value, each behind a byte 1.
#include "Require.h"
#include "core/ProfileDocument.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using kv::ProfileDocument;
using Values = std::vector<std::pair<std::wstring, std::wstring>>;

struct Input
{
    std::string_view document;
    std::wstring section = L"A";
    std::wstring key = L"x";
    std::wstring value = L" 1";
};

Input Split(std::string_view bytes)
{
    constexpr char kSeparator = 1;
    const auto next = [&bytes] {
        const std::size_t end = std::min(bytes.find(kSeparator), bytes.size());
        const std::string_view part = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        return part;
    };
    Input input{next()};
    for (std::wstring* text : {&input.section, &input.key, &input.value}) {
        if (!bytes.empty())
            *text = kv::FromFileName(next());
    }
    return input;
}

bool IsUtf16(std::string_view bytes)
{
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

bool HasLineBreak(std::string_view text)
{
    return text.find_first_of("\r\n") != std::string_view::npos;
}

/// Takes away what two texts have in common at their starts and ends.
void StripCommon(std::string_view& a, std::string_view& b)
{
    const auto front = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    a.remove_prefix(static_cast<std::size_t>(front));
    b.remove_prefix(static_cast<std::size_t>(front));
    const auto back = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin();
    a.remove_suffix(static_cast<std::size_t>(back));
    b.remove_suffix(static_cast<std::size_t>(back));
}

/// @param existed the key was there before.
void CheckBytes(std::string_view before, std::string_view after, bool existed)
{
    StripCommon(before, after);
    if (existed)
        Require(!HasLineBreak(before) && !HasLineBreak(after), "a write changes its line only");
    else
        Require(before.empty(), "a new key takes nothing away");
}

void CheckValues(const ProfileDocument& document, const Input& input, const std::wstring& section,
                 Values expected)
{
    if (section == input.section) {
        const auto entry = std::find_if(expected.begin(), expected.end(),
                                        [&](const auto& pair) { return pair.first == input.key; });
        if (entry != expected.end())
            entry->second = input.value;
        else
            expected.emplace_back(input.key, input.value);
    }
    Require(document.Section(section) == expected, "other values stay");
    for (const auto& [key, value] : expected) {
        Require(document.Value(section, key) == value, "each value is found");
        document.Integer(section, key, 0);
    }
}

void CheckWrite(const Input& input)
{
    ProfileDocument document(input.document);
    const std::string before = document.Bytes();
    const std::array<std::wstring, 4> sections = {L"", L"A", L"B", input.section};
    std::array<Values, 4> values;
    std::transform(sections.begin(), sections.end(), values.begin(),
                   [&](const std::wstring& section) { return document.Section(section); });
    const bool existed = document.Value(input.section, input.key).has_value();

    if (!document.SetValue(input.section, input.key, input.value)) {
        Require(document.Bytes() == before, "a refused write changes nothing");
        return;
    }
    const std::string after = document.Bytes();
    CheckBytes(before, after, existed);
    const ProfileDocument again(after);
    Require(again.Bytes() == after, "a written document comes back");
    for (std::size_t i = 0; i < sections.size(); ++i) {
        CheckValues(document, input, sections[i], values[i]);
        CheckValues(again, input, sections[i], values[i]);
    }
    Require(document.SetValue(input.section, input.key, input.value) && document.Bytes() == after,
            "writing the same again changes nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input = Split({reinterpret_cast<const char*>(data), size});
    const std::string bytes = ProfileDocument(input.document).Bytes();
    Require(IsUtf16(input.document) || bytes == input.document, "an unwritten document comes back");
    Require(ProfileDocument(bytes).Bytes() == bytes, "what was UTF-16 comes back as UTF-8");
    CheckWrite(input);
    return 0;
}
