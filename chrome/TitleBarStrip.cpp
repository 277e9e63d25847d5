#include "chrome/TitleBarStrip.h"

#include "chrome/ItemFrames.h"
#include "chrome/KvAppSwitchWnd.h"

#include <QShortcut>

#include <utility>

namespace kv {

TitleBarStrip::TitleBarStrip(CKvRibbonTitlebar& bar)
    : RecordStrip(kTitleBarForm, static_cast<IKvRibbonTitleBarMgr*>(&bar))
    , m_titleBar(bar)
{
}

TitleBarStrip::~TitleBarStrip() = default;

void TitleBarStrip::TellAttached(CaptionRecord& record)
{
    if (IKvRibbonTitleBarSmartMenu* menu = TitleBar(&record)->menu)
        menu->OnAttach(&m_titleBar, record.id);
}

void TitleBarStrip::OnActivated()
{
    if (SKvTitleBarData* record = TitleBar(Active()))
        record->SelectItem(record->ItemToActivate());
}

// --- Tabs ---

SKvRibbonItem* TitleBarStrip::FindItem(std::uint32_t id, const wchar_t* name) const
{
    SKvTitleBarData* record = TitleBar(Records().Find(id));
    const int index = record ? record->FindItem(name) : -1;
    return index < 0 ? nullptr : &record->ItemAt(index);
}

void TitleBarStrip::LayoutIfActive(std::uint32_t id)
{
    if (Records().Find(id) == Active())
        Layout();
}

bool TitleBarStrip::AddItem(const wchar_t* name, const ToolWindow& tool, int flag)
{
    SKvTitleBarData* record = TitleBar(Records().UnderConstruction());
    if (!record)
        return false;
    SKvRibbonItem& item = record->items.emplace_back();
    item.text = CutText(name, kLongestName);
    item.tool = tool;
    item.flag = flag;
    Adopt(tool, ToolPlace(tool));
    return true;
}

bool TitleBarStrip::SelectItem(std::uint32_t id, const wchar_t* name)
{
    SKvTitleBarData* record = TitleBar(Records().Find(id));
    const int index = record ? record->FindItem(name) : -1;
    if (index < 0 || record->ItemAt(index).disabled)
        return false;
    record->SelectItem(index);
    if (record == Active()) {
        const QPointer<QWidget> bar(&m_titleBar);
        Layout();
        if (bar)
            ShowToolWindows();
    }
    return true;
}

bool TitleBarStrip::EnableItem(std::uint32_t id, const wchar_t* name, bool enable)
{
    SKvRibbonItem* item = FindItem(id, name);
    if (!item)
        return false;
    item->disabled = !enable;
    LayoutIfActive(id);
    return true;
}

bool TitleBarStrip::RenameItem(std::uint32_t id, const wchar_t* name, const wchar_t* newName)
{
    SKvRibbonItem* item = FindItem(id, name);
    if (!item)
        return false;
    item->text = CutText(newName, kLongestName);
    LayoutIfActive(id);
    return true;
}

bool TitleBarStrip::ReplaceTool(std::uint32_t id, const wchar_t* name, const ToolWindow& tool)
{
    SKvRibbonItem* item = FindItem(id, name);
    if (!item)
        return false;
    Leave(std::exchange(item->tool, tool).handle);
    const QPointer<QWidget> bar(&m_titleBar);
    Adopt(tool, ToolPlace(tool));
    if (bar)
        ShowToolWindows();
    return true;
}

QRect TitleBarStrip::ToolPlace(const ToolWindow& tool) const
{
    if (!tool.window || !tool.handle)
        return {};
    const CRect area = ToolArea();
    return {area.left, area.top, tool.handle->width(), area.Height()};
}

void TitleBarStrip::LayoutToolWindows()
{
    SKvTitleBarData* record = TitleBar(Active());
    if (!record)
        return;
    std::vector<std::pair<QPointer<QWidget>, QRect>> places; // a resize event may change the record
    for (const SKvRibbonItem& item : record->items) {
        if (const QRect place = ToolPlace(item.tool); !place.isNull())
            places.emplace_back(item.tool.handle, place);
    }
    const QPointer<QWidget> bar(&m_titleBar);
    for (const auto& [window, place] : places) {
        if (window)
            window->setGeometry(place);
    }
    if (bar)
        LayoutAdvanced(ToolArea());
}

void TitleBarStrip::DrawItemFrame(Graphics& graphics)
{
    SKvTitleBarData* record = TitleBar(Active());
    const int selected = record ? record->SelectedItem() : -1;
    if (selected >= 0)
        DrawTabFrame(graphics, record->ItemAt(selected).rect);
}

// --- Window buttons ---

void TitleBarStrip::ShowButtons(EKvRibTitleBarAppBtnShowState state)
{
    for (const EKvCaptionButton button : kWindowButtons) {
        const bool withClose = button == kKvCaptionClose || state != kKvAppBtnCloseOnly;
        ShowButton(button, state != kKvAppBtnNone && withClose);
    }
}

// --- What the user does ---

void TitleBarStrip::PressItem(int index)
{
    SKvTitleBarData* record = TitleBar(Active());
    if (!record || index < 0 || index >= ItemCount() || Item(index).selected || Item(index).disabled)
        return;
    record->SelectItem(index);
    Item(index).state = kItemPressed;
    const std::uint32_t id = record->id;
    const QString name = ItemLabel(index);
    const QPointer<QWidget> bar(&m_titleBar);
    Layout();
    if (bar)
        ShowToolWindows();
    if (bar)
        emit m_titleBar.RibbonItemSelected(id, name);
}

void TitleBarStrip::OpenMenuButtonMenu()
{
    const SKvTitleBarData* record = TitleBar(Active());
    IKvRibbonTitleBarSmartMenu* const smartMenu = record ? record->menu : nullptr;
    if (!smartMenu)
        return;
    const Run run(Bar(), *record);
    wchar_t name[kLongestLabel + 1] = {};
    const int named = smartMenu->GetMenuName(name);
    name[kLongestLabel] = 0;
    CKvMenu menu;
    if (!run.Lives() || named == 0 || name[0] == 0 || !menu.LoadMenu(name) || !run.Lives())
        return;
    const QWidget& button = Button(kKvCaptionMenu);
    const CPoint place = button.mapToGlobal(QPoint(0, button.height() + 1));
    const UINT command = menu.TrackPopupMenu(TPM_NONOTIFY | TPM_RETURNCMD, place, &m_titleBar);
    if (run.Lives())
        smartMenu->OnCommand(command);
}

} // namespace kv
