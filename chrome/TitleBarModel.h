// The records of a ribbon title bar: one for each application, with its tabs. Pure.
#pragma once

#include "chrome/CaptionRecord.h"

#include <string>
#include <string_view>
#include <vector>

class IKvRibbonTitleBarSmartMenu;

namespace kv {

struct SKvRibbonItem : CaptionItem
{
    ToolWindow tool;
    int flag = 0; ///< not 0: activation selects it
};

struct SKvTitleBarData : CaptionRecord
{
    /// Texts are cut to what they hold; null is empty, a null switch name the button text.
    /// @param shortLabels see `ShortLabel`.
    SKvTitleBarData(const wchar_t* key, const wchar_t* text, const wchar_t* name, std::uint32_t number,
                    IKvRibbonTitleBarSmartMenu* smartMenu, bool shortLabels);

    int ItemCount() const override { return static_cast<int>(items.size()); }
    SKvRibbonItem& ItemAt(int index) override { return items[static_cast<std::size_t>(index)]; }
    std::vector<ToolWindow*> Tools() override;
    std::vector<HWND> Seen() const override; ///< the selected tab's, too

    std::wstring switchName;
    std::vector<SKvRibbonItem> items;
    IKvRibbonTitleBarSmartMenu* menu; ///< may be null; not owned here

    /// The first tab of that name, which is cut before; -1 when there is none.
    int FindItem(const wchar_t* name) const;
    int SelectedItem() const; ///< -1 while none is
    /// No other tab stays pressed.
    void SelectItem(int index);
    /// The tab that activation selects: the first flagged one that is enabled, else the selected one, else
    /// the first enabled one. A disabled tab is only taken when it is selected and no other one is enabled.
    /// @return -1 when there is none to select.
    int ItemToActivate() const;
};

/// The text with every "NovCG" replaced by "CG ".
std::wstring ShortLabel(std::wstring_view text);

/// An entry of the application menu.
struct ApplicationEntry
{
    std::wstring name;
    std::wstring picture;
    bool active = false;
};
/// The title bar at an index; of a list that holds no others.
SKvTitleBarData& TitleBarAt(const CaptionRecords& records, int index);
inline constexpr int kMostMenuApplications = 4;
/// The first four applications; none below two.
std::vector<ApplicationEntry> MenuApplications(const CaptionRecords& records);

} // namespace kv
