#include "chrome/MenuBarModel.h"

#include "core/CodePoints.h"

#include <algorithm>

namespace kv {
namespace {

// Wide characters hold UTF-16 or whole code points by the platform; the first unit is the same everywhere.
std::uint32_t FirstUnit(wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    return code > 0xFFFF ? 0xD7C0 + (code >> 10) : code;
}

} // namespace

bool FindMnemonic(std::wstring_view text, char& mnemonic)
{
    const std::size_t marker = text.find(L'&');
    if (marker == std::wstring_view::npos || marker + 1 == text.size())
        return false;
    mnemonic = static_cast<char>(static_cast<unsigned char>(FirstUnit(text[marker + 1]) & 0xFF));
    return true;
}

std::wstring EntryLabel(std::wstring_view text)
{
    std::wstring label;
    label.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && ++i == text.size())
            break;
        label += text[i];
    }
    return label;
}

std::wstring EntryName(std::wstring_view text)
{
    std::wstring named;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::wstring_view letter = text.substr(i, 4);
        if (letter.size() == 4 && letter.starts_with(L"(&") && letter[2] != L'&' && letter[3] == L')') {
            if (named.ends_with(L' '))
                named.pop_back();
            i += 3;
        } else {
            named += text[i];
        }
    }
    return EntryLabel(named);
}

int NextOpening(const std::vector<bool>& opens, int from, int step)
{
    const int count = static_cast<int>(opens.size());
    for (int distance = 1; distance < count; ++distance) {
        const int place = (from + step * distance + count) % count;
        if (opens[static_cast<std::size_t>(place)])
            return place;
    }
    return -1;
}

SKvMenuBarData::SKvMenuBarData()
{
    productLabel = L"Mirabo-";
    documentLabel = L"Untitled";
}

std::vector<ToolWindow*> SKvMenuBarData::Tools()
{
    return {&toolWindow, &advanced[0], &advanced[1]};
}

std::vector<HWND> SKvMenuBarData::Seen() const
{
    return {toolWindow.handle, advanced[0].handle, advanced[1].handle};
}

void SKvMenuBarData::SetEntries(const std::vector<TopLevelEntry>& entries)
{
    items.clear();
    for (std::size_t position = 0; position < entries.size(); ++position) {
        if (!entries[position].isItem)
            continue;
        SKvMenuItem& item = items.emplace_back();
        const std::wstring& text = entries[position].text;
        item.text = text.substr(0, CutLength(text, kLongestEntry));
        item.position = static_cast<int>(position);
    }
    GetMenuAccelerate();
}

void SKvMenuBarData::GetMenuAccelerate()
{
    mnemonics.clear();
    mnemonicItems.clear();
    for (std::size_t i = 0; i < items.size(); ++i) {
        char mnemonic = 0;
        if (!FindMnemonic(items[i].text, mnemonic))
            continue;
        mnemonics.push_back(mnemonic);
        mnemonicItems.push_back(static_cast<int>(i));
    }
}

int SKvMenuBarData::FindAccelerateIndex(char key) const
{
    const auto found = std::find(mnemonics.begin(), mnemonics.end(), key);
    return found == mnemonics.end() ? -1 : mnemonicItems[static_cast<std::size_t>(found - mnemonics.begin())];
}

} // namespace kv
