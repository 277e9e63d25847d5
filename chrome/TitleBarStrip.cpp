#include "chrome/TitleBarStrip.h"

#include "chrome/KvAppSwitchWnd.h"

#include <QShortcut>

#include <utility>

namespace kv {
namespace {

constexpr int kButtonExtraWidth = 20;
constexpr int kButtonAbove = 2; // of the application button above the band
constexpr int kEmptyButtonWidth = 120;

} // namespace

TitleBarStrip::TitleBarStrip(CKvRibbonTitlebar& bar)
    : CaptionStrip(kTitleBarForm)
    , m_titleBar(bar)
    , m_watcher(std::make_unique<QObject>())
{
}

TitleBarStrip::~TitleBarStrip() = default;

void TitleBarStrip::Close()
{
    m_closing = true;
    m_watcher.reset();
    DropSwitchWindow();
    std::vector<std::unique_ptr<SKvTitleBarData>> bars;
    m_bars.Activate(-1);
    if (std::unique_ptr<SKvTitleBarData> begun = m_bars.TakeBegun())
        bars.push_back(std::move(begun));
    while (m_bars.Count() > 0)
        bars.push_back(m_bars.Remove(0));
    for (std::unique_ptr<SKvTitleBarData>& bar : bars)
        Release(std::move(bar));
}

void TitleBarStrip::Release(std::unique_ptr<SKvTitleBarData> bar)
{
    if (!bar || !bar->menu)
        return;
    bar->menu->OnDetach();
    bar->menu->Release();
}

bool TitleBarStrip::Holds(const IKvRibbonTitleBarSmartMenu& menu) const
{
    for (int i = 0; i < m_bars.Count(); ++i) {
        if (m_bars.At(i).menu == &menu)
            return true;
    }
    return false;
}

SKvTitleBarData* TitleBarStrip::Find(std::uint32_t id) const
{
    const int index = m_bars.Find(id);
    return index < 0 ? nullptr : &const_cast<SKvTitleBarData&>(m_bars.At(index));
}

void TitleBarStrip::Measure(SKvTitleBarData& bar) const
{
    bar.titleRect = ApplicationTitleRect(Band(), TextSize(KvToQString(bar.buttonText)).cx);
}

void TitleBarStrip::LayoutIfCreated()
{
    if (m_titleBar.IsCreated())
        Layout();
}

// --- Adding and removing ---

bool TitleBarStrip::Begin(std::unique_ptr<SKvTitleBarData> bar)
{
    if (m_closing)
        return false;
    const SKvTitleBarData* const begun = bar.get();
    const std::uint32_t id = bar->id;
    IKvRibbonTitleBarSmartMenu* const menu = bar->menu;
    const QPointer<QWidget> self(&m_titleBar);
    Release(m_bars.Begin(std::move(bar)));
    if (!self || m_bars.UnderConstruction() != begun)
        return false;
    if (menu)
        menu->OnAttach(&m_titleBar, id);
    return true;
}

bool TitleBarStrip::AddItem(const wchar_t* name, const ToolWindow& tool, int flag)
{
    SKvTitleBarData* bar = m_bars.UnderConstruction();
    if (!bar)
        return false;
    SKvRibbonItem& item = bar->items.emplace_back();
    item.text = CutText(name, kLongestName);
    item.tool = tool;
    item.flag = flag;
    Adopt(tool, true);
    return true;
}

bool TitleBarStrip::SetAdvanced(const ToolWindow& first, const ToolWindow& second)
{
    SKvTitleBarData* bar = m_bars.UnderConstruction();
    if (!bar)
        return false;
    bar->advanced[0] = first;
    bar->advanced[1] = second;
    const QPointer<QWidget> self(&m_titleBar);
    const QPointer<QWidget> secondHandle(second.handle); // the first one's host may destroy it
    Adopt(first, false);
    if (self && (secondHandle || !second.handle))
        Adopt(second, false);
    return true;
}

bool TitleBarStrip::End()
{
    std::unique_ptr<SKvTitleBarData> bar = m_bars.TakeBegun();
    if (!bar)
        return false;
    if (bar->items.empty()) {
        Release(std::move(bar));
        return false;
    }
    Measure(*bar);
    const SKvTitleBarData& added = m_bars.Add(std::move(bar));
    if (m_switch)
        m_switch->AddApplication(added.imageKey + L"_s", added.switchName);
    else
        EnsureSwitchWindow();
    LayoutIfCreated(); // the flag may be new
    return true;
}

bool TitleBarStrip::Remove(std::uint32_t id)
{
    const int index = m_bars.Find(id);
    if (index < 0)
        return false;
    const bool wasActive = index == m_bars.ActiveIndex();
    std::unique_ptr<SKvTitleBarData> removed = m_bars.Remove(index);
    Leave(*removed);
    if (m_bars.Count() < 2)
        DropSwitchWindow();
    else if (m_switch)
        m_switch->RemoveApplication(index);
    const QPointer<QWidget> self(&m_titleBar);
    if (wasActive)
        ActivateAt(m_bars.ActiveIndex());
    else
        ShowToolWindows();
    if (self)
        LayoutIfCreated(); // the flag may be gone
    Release(std::move(removed));
    return true;
}

// --- Activation and selection ---

bool TitleBarStrip::Activate(std::uint32_t id)
{
    const int index = m_bars.Find(id);
    if (index < 0)
        return false;
    ActivateAt(index);
    return true;
}

// @param index -1 leaves none active.
void TitleBarStrip::ActivateAt(int index)
{
    m_bars.Activate(index);
    if (SKvTitleBarData* bar = m_bars.Active()) {
        for (SKvRibbonItem& item : bar->items)
            item.state = kItemNormal;
        bar->SelectItem(bar->ItemToActivate());
    }
    if (m_titleBar.IsCreated())
        UpdateTitleTip();
    const QPointer<QWidget> self(&m_titleBar);
    Remeasure();
    if (self)
        ShowToolWindows();
}

void TitleBarStrip::ShowApplicationButton()
{
    const CRect band = Band();
    const SKvTitleBarData* bar = m_bars.Active();
    if (!bar) {
        ShowApplication({}, {band.left, band.top, band.left + kEmptyButtonWidth, band.bottom});
        return;
    }
    const CRect& text = bar->titleRect;
    ShowApplication(*bar, {text.left, text.top - kButtonAbove, text.right + kButtonExtraWidth,
                           text.bottom - kButtonAbove});
}

void TitleBarStrip::Remeasure()
{
    if (SKvTitleBarData* bar = m_bars.Active())
        Measure(*bar);
    if (!m_titleBar.IsCreated())
        return;
    ShowApplicationButton();
    Layout();
}

bool TitleBarStrip::SelectItem(std::uint32_t id, const wchar_t* name)
{
    SKvTitleBarData* bar = Find(id);
    const int index = bar ? bar->FindItem(name) : -1;
    if (index < 0 || bar->items[static_cast<std::size_t>(index)].disabled)
        return false;
    bar->SelectItem(index);
    if (bar == m_bars.Active()) {
        const QPointer<QWidget> self(&m_titleBar);
        LayoutIfCreated();
        if (self)
            ShowToolWindows();
    }
    return true;
}

bool TitleBarStrip::EnableItem(std::uint32_t id, const wchar_t* name, bool enable)
{
    SKvTitleBarData* bar = Find(id);
    const int index = bar ? bar->FindItem(name) : -1;
    if (index < 0)
        return false;
    bar->items[static_cast<std::size_t>(index)].disabled = !enable;
    if (bar == m_bars.Active())
        LayoutIfCreated();
    return true;
}

bool TitleBarStrip::RenameItem(std::uint32_t id, const wchar_t* name, const wchar_t* newName)
{
    SKvTitleBarData* bar = Find(id);
    const int index = bar ? bar->FindItem(name) : -1;
    if (index < 0)
        return false;
    bar->items[static_cast<std::size_t>(index)].text = CutText(newName, kLongestName);
    if (bar == m_bars.Active())
        LayoutIfCreated();
    return true;
}

bool TitleBarStrip::ReplaceTool(std::uint32_t id, const wchar_t* name, const ToolWindow& tool)
{
    SKvTitleBarData* bar = Find(id);
    const int index = bar ? bar->FindItem(name) : -1;
    if (index < 0)
        return false;
    ToolWindow& place = bar->items[static_cast<std::size_t>(index)].tool;
    m_leaving.emplace_back(std::exchange(place, tool).handle);
    const QPointer<QWidget> self(&m_titleBar);
    Adopt(tool, true);
    if (self)
        ShowToolWindows();
    return true;
}

bool TitleBarStrip::SetProductLabel(std::uint32_t id, const wchar_t* text)
{
    SKvTitleBarData* bar = Find(id);
    if (!bar)
        return false;
    bar->productLabel = CutText(text, kLongestLabel);
    if (bar == m_bars.Active() && m_titleBar.IsCreated())
        Invalidate(StaticTitle());
    return true;
}

bool TitleBarStrip::SetDocumentLabel(std::uint32_t id, const wchar_t* text)
{
    SKvTitleBarData* bar = Find(id);
    if (!bar)
        return false;
    bar->documentLabel = CutText(text, kLongestLabel);
    if (bar == m_bars.Active() && m_titleBar.IsCreated()) {
        UpdateTitleTip();
        Invalidate(StaticTitle());
    }
    return true;
}

void TitleBarStrip::ShowButtons(EKvRibTitleBarAppBtnShowState state)
{
    m_buttons = state;
    m_buttonsShown = false;
    LayoutIfCreated();
}

int TitleBarStrip::ItemCount() const
{
    const SKvTitleBarData* bar = m_bars.Active();
    return bar ? static_cast<int>(bar->items.size()) : 0;
}

CaptionItem& TitleBarStrip::Item(int index) const
{
    return m_bars.Active()->items[static_cast<std::size_t>(index)];
}

QString TitleBarStrip::ItemLabel(int index) const
{
    return KvToQString(Item(index).text);
}

// --- What the user does ---

void TitleBarStrip::PressItem(int index)
{
    SKvTitleBarData* bar = m_bars.Active();
    if (!bar || index < 0 || index >= ItemCount() || Item(index).selected || Item(index).disabled)
        return;
    bar->SelectItem(index);
    Item(index).state = kItemPressed;
    const std::uint32_t id = bar->id;
    const QString name = ItemLabel(index);
    const QPointer<QWidget> self(&m_titleBar);
    Layout();
    if (self)
        ShowToolWindows();
    if (self)
        emit m_titleBar.RibbonItemSelected(id, name);
}

void TitleBarStrip::OpenMenuButtonMenu()
{
    IKvRibbonTitleBarSmartMenu* const smartMenu = m_bars.Active() ? m_bars.Active()->menu : nullptr;
    if (!smartMenu)
        return;
    const QPointer<QWidget> self(&m_titleBar);
    wchar_t name[kLongestLabel + 1] = {};
    const int named = smartMenu->GetMenuName(name);
    name[kLongestLabel] = 0;
    CKvMenu menu;
    if (!self || named == 0 || name[0] == 0 || !menu.LoadMenu(name) || !self || !Holds(*smartMenu))
        return;
    const QWidget& button = Button(kKvCaptionMenu);
    const CPoint place = button.mapToGlobal(QPoint(0, button.height() + 1));
    const UINT command = menu.TrackPopupMenu(TPM_NONOTIFY | TPM_RETURNCMD, place, &m_titleBar);
    if (self && Holds(*smartMenu))
        smartMenu->OnCommand(command);
}

} // namespace kv
