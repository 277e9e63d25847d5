// The records of a ribbon menu bar: items from the top-level entries of a menu, their labels and mnemonics.
// Pure.
#pragma once

#include "chrome/CaptionRecord.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

inline constexpr std::size_t kLongestEntry = 1024; ///< characters of an entry's text

/// A top-level entry as the menu holds it.
struct TopLevelEntry
{
    std::wstring text;
    bool isItem = true; ///< false for separators and hidden entries
};

struct SKvMenuItem : CaptionItem
{
    int position = 0; ///< of its entry in the menu, counting those that are no items
};

struct SKvMenuBarData : CaptionRecord
{
    SKvMenuBarData();

    int ItemCount() const override { return static_cast<int>(items.size()); }
    SKvMenuItem& ItemAt(int index) override { return items[static_cast<std::size_t>(index)]; }
    std::vector<ToolWindow*> Tools() override;
    std::vector<HWND> Seen() const override;

    std::vector<SKvMenuItem> items;
    ToolWindow toolWindow;
    std::vector<char> mnemonics;
    std::vector<int> mnemonicItems; ///< the item of each mnemonic

    /// Makes the items, and collects their mnemonics.
    void SetEntries(const std::vector<TopLevelEntry>& entries);
    /// The item of the first mnemonic equal to that one, case counting; -1 when there is none.
    int FindAccelerateIndex(char key) const;

private:
    void GetMenuAccelerate();
};

/// The character behind the first "&" that is not the text's last character, of its UTF-16 form the low
/// byte.
/// @return false when the text has none.
bool FindMnemonic(std::wstring_view text, char& mnemonic);

/// The text as it is drawn: without markers, "&&" as "&".
std::wstring EntryLabel(std::wstring_view text);
/// The text as it is told: also without a letter that stands in brackets for its marker's sake, as East Asian
/// languages have it: "ファイル(&F)".
std::wstring EntryName(std::wstring_view text);

/// The nearest place before (step -1) or after (1) `from` at which `opens` holds, round the ends; -1 when
/// there is none but `from`.
int NextOpening(const std::vector<bool>& opens, int from, int step);

} // namespace kv
