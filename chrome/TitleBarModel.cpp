#include "chrome/TitleBarModel.h"

#include <algorithm>

namespace kv {

namespace {

template <typename Predicate>
int FirstItem(const SKvTitleBarData& record, Predicate predicate)
{
    const auto found = std::find_if(record.items.begin(), record.items.end(), predicate);
    return found == record.items.end() ? -1 : static_cast<int>(found - record.items.begin());
}

} // namespace

SKvTitleBarData::SKvTitleBarData(const wchar_t* key, const wchar_t* text, const wchar_t* name,
                                 std::uint32_t number, IKvRibbonTitleBarSmartMenu* smartMenu,
                                 bool shortLabels)
    : menu(smartMenu)
{
    imageKey = CutText(key, kLongestLabel);
    // Made short before it is cut, so that more of a long name is kept.
    buttonText = CutText(shortLabels && text ? ShortLabel(text).c_str() : text, kLongestName);
    switchName = name ? CutText(name, kLongestName) : buttonText;
    productLabel = L"Kolva";
    documentLabel = L"Untitled";
    id = number;
}

int SKvTitleBarData::FindItem(const wchar_t* name) const
{
    const std::wstring wanted = CutText(name, kLongestName);
    return FirstItem(*this, [&](const SKvRibbonItem& item) { return item.text == wanted; });
}

int SKvTitleBarData::SelectedItem() const
{
    return FirstItem(*this, [](const SKvRibbonItem& item) { return item.selected; });
}

void SKvTitleBarData::SelectItem(int index)
{
    for (int i = 0; i < ItemCount(); ++i) {
        SKvRibbonItem& item = ItemAt(i);
        item.selected = i == index;
        if (!item.selected && item.state == kItemPressed)
            item.state = kItemNormal;
    }
}

int SKvTitleBarData::ItemToActivate() const
{
    const int flagged =
        FirstItem(*this, [](const SKvRibbonItem& item) { return item.flag != 0 && !item.disabled; });
    if (flagged >= 0)
        return flagged;
    const int selected = SelectedItem();
    if (selected >= 0 && !items[static_cast<std::size_t>(selected)].disabled)
        return selected;
    const int enabled = FirstItem(*this, [](const SKvRibbonItem& item) { return !item.disabled; });
    return enabled >= 0 ? enabled : selected;
}

std::vector<ToolWindow*> SKvTitleBarData::Tools()
{
    std::vector<ToolWindow*> tools = CaptionRecord::Tools();
    for (SKvRibbonItem& item : items)
        tools.push_back(&item.tool);
    return tools;
}

std::vector<HWND> SKvTitleBarData::Seen() const
{
    std::vector<HWND> seen = CaptionRecord::Seen();
    if (const int selected = SelectedItem(); selected >= 0)
        seen.push_back(items[static_cast<std::size_t>(selected)].tool.handle);
    return seen;
}

std::wstring ShortLabel(std::wstring_view text)
{
    constexpr std::wstring_view longForm = L"NovCG";
    std::wstring result;
    while (true) {
        const std::size_t found = text.find(longForm);
        result += text.substr(0, found);
        if (found == std::wstring_view::npos)
            return result;
        result += L"CG ";
        text.remove_prefix(found + longForm.size());
    }
}

SKvTitleBarData& TitleBarAt(const CaptionRecords& records, int index)
{
    return static_cast<SKvTitleBarData&>(records.At(index));
}

std::vector<ApplicationEntry> MenuApplications(const CaptionRecords& records)
{
    std::vector<ApplicationEntry> entries;
    if (records.Count() < 2)
        return entries;
    for (int i = 0; i < std::min(records.Count(), kMostMenuApplications); ++i) {
        const SKvTitleBarData& record = TitleBarAt(records, i);
        entries.push_back({record.switchName, record.imageKey + L"_n", i == records.ActiveIndex()});
    }
    return entries;
}

} // namespace kv
