#include "core/TextTables.h"

#include "core/ProfileDocument.h"
#include "core/WholeFile.h"
#include "resources/Tables.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace kv {
namespace {

using TextKey = std::tuple<TextKind, std::uint32_t, std::uint32_t>;
using Overlay = std::map<TextKey, std::wstring>;

Overlay& CurrentOverlay()
{
    static Overlay overlay;
    return overlay;
}

std::map<std::uint32_t, std::wstring>& AddedStrings()
{
    static std::map<std::uint32_t, std::wstring> strings;
    return strings;
}

std::span<const TextEntry> BuiltInTexts(TextKind kind)
{
    switch (kind) {
    case TextKind::String:
        return BuiltInStrings();
    case TextKind::Menu:
        return BuiltInMenuTexts();
    case TextKind::Dialog:
        return BuiltInDialogTexts();
    case TextKind::Tip:
        return BuiltInTips();
    }
    return {};
}

/// A number that is nothing but decimal digits.
std::optional<std::uint32_t> ParseNumber(std::wstring_view digits)
{
    constexpr std::size_t kMostDigits = 9;
    if (digits.empty() || digits.size() > kMostDigits)
        return std::nullopt;
    std::uint32_t number = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9')
            return std::nullopt;
        number = number * 10 + static_cast<std::uint32_t>(digit - L'0');
    }
    return number;
}

/// The key "7022", or "12002.32772" for a text in a group.
std::optional<TextKey> ParseKey(TextKind kind, std::wstring_view key)
{
    std::optional<std::uint32_t> group = 0;
    if (kind == TextKind::Menu || kind == TextKind::Dialog) {
        const std::size_t dot = key.find(L'.');
        if (dot == std::wstring_view::npos)
            return std::nullopt;
        group = ParseNumber(key.substr(0, dot));
        key.remove_prefix(dot + 1);
    }
    const auto number = ParseNumber(key);
    if (!group || !number)
        return std::nullopt;
    return TextKey(kind, *group, *number);
}

/// A text as a profile's line spells it: \n, \r, \t and \\ stand for what a line cannot hold.
std::wstring Unescape(std::wstring_view line)
{
    constexpr std::wstring_view kLetters = L"nrt\\";
    constexpr std::wstring_view kMeanings = L"\n\r\t\\";
    std::wstring text;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const std::size_t letter =
            line[at] == L'\\' && at + 1 < line.size() ? kLetters.find(line[at + 1]) : std::wstring_view::npos;
        if (letter == std::wstring_view::npos) {
            text += line[at];
        } else {
            text += kMeanings[letter];
            ++at;
        }
    }
    return text;
}

Overlay ReadOverlay(const ProfileDocument& document)
{
    constexpr std::pair<TextKind, std::wstring_view> kSections[] = {{TextKind::String, L"Strings"},
                                                                    {TextKind::Menu, L"Menus"},
                                                                    {TextKind::Dialog, L"Dialogs"},
                                                                    {TextKind::Tip, L"Tips"}};
    Overlay overlay;
    for (const auto& [kind, section] : kSections) {
        for (const auto& [key, value] : document.Section(section)) {
            const auto number = ParseKey(kind, key);
            if (number && !value.empty())
                overlay.emplace(*number, Unescape(value));
        }
    }
    return overlay;
}

} // namespace

void AddText(std::uint32_t number, std::wstring_view text)
{
    AddedStrings()[number] = text;
}

std::wstring LoadText(TextKind kind, std::uint32_t group, std::uint32_t number)
{
    const Overlay& overlay = CurrentOverlay();
    const auto found = overlay.find(TextKey(kind, group, number));
    if (found != overlay.end())
        return found->second;
    if (kind == TextKind::String) {
        const auto added = AddedStrings().find(number);
        if (added != AddedStrings().end())
            return added->second;
    }

    const std::span<const TextEntry> texts = BuiltInTexts(kind);
    const auto entry = std::lower_bound(texts.begin(), texts.end(), std::pair(group, number),
                                        [](const TextEntry& text, const auto& wanted) {
                                            return std::pair(text.group, text.number) < wanted;
                                        });
    if (entry == texts.end() || entry->group != group || entry->number != number)
        return {};
    return entry->text;
}

bool SetTextOverlay(std::wstring_view path)
{
    if (path.empty()) {
        CurrentOverlay().clear();
        return true;
    }
    const auto bytes = ReadWholeFile(path, nullptr, ProfileDocument::kMostBytes);
    if (!bytes)
        return false;
    SetTextOverlayBytes(*bytes);
    return true;
}

void SetTextOverlayBytes(std::string_view bytes)
{
    CurrentOverlay() = ReadOverlay(ProfileDocument(bytes));
}

} // namespace kv
