#include "chrome/TitleBarModel.h"

#include <algorithm>

namespace kv {

namespace {

template <typename Predicate>
int FirstItem(const SKvTitleBarData& bar, Predicate predicate)
{
    const auto found = std::find_if(bar.items.begin(), bar.items.end(), predicate);
    return found == bar.items.end() ? -1 : static_cast<int>(found - bar.items.begin());
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
    for (int i = 0; i < static_cast<int>(items.size()); ++i)
        items[static_cast<std::size_t>(i)].selected = i == index;
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

bool SKvTitleBarData::Forget(HWND handle)
{
    bool known = false;
    const auto forget = [&](ToolWindow& tool) {
        if (tool.handle != handle)
            return;
        tool = {};
        known = true;
    };
    for (SKvRibbonItem& item : items)
        forget(item.tool);
    for (ToolWindow& tool : advanced)
        forget(tool);
    return known;
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

std::vector<ApplicationEntry> MenuApplications(const TitleBars& bars)
{
    std::vector<ApplicationEntry> entries;
    if (bars.Count() < 2)
        return entries;
    for (int i = 0; i < std::min(bars.Count(), kMostMenuApplications); ++i) {
        const SKvTitleBarData& bar = bars.At(i);
        entries.push_back({bar.switchName, bar.imageKey + L"_n", i == bars.ActiveIndex()});
    }
    return entries;
}

} // namespace kv
