#include "chrome/MenuBarStrip.h"

#include "chrome/MenuBarEvents.h"
#include "platform/SkinColours.h"

#include <QAction>

#include <algorithm>
#include <utility>

namespace kv {
namespace {

constexpr int kButtonExtraWidth = 10;
constexpr int kButtonAbove = 4; // of the application button above the band
constexpr int kToolGap = 2;
constexpr int kFrameReach = 3; // of an open item's frame beyond the item, its pen included
constexpr double kFramePen = 1.8;

std::vector<TopLevelEntry> EntriesOf(const QMenu& menu)
{
    std::vector<TopLevelEntry> entries;
    for (const QAction* action : menu.actions()) {
        const bool isItem = action->isVisible() && !action->isSeparator();
        entries.push_back({isItem ? KvFromQString(action->text()) : std::wstring(), isItem});
    }
    return entries;
}

} // namespace

QMenu* MenuBarRecord::SubMenu(int item) const
{
    if (!menu || item < 0 || item >= static_cast<int>(items.size()))
        return nullptr;
    const QList<QAction*> actions = menu->actions();
    const int position = items[static_cast<std::size_t>(item)].position;
    return position < actions.size() ? actions[position]->menu() : nullptr;
}

MenuBarStrip::MenuBarStrip(IKvRibbonMenuBarMgr& manager)
    : CaptionStrip(kMenuBarForm)
    , m_manager(manager)
    , m_events(std::make_unique<MenuBarEvents>(*this))
{
}

MenuBarStrip::~MenuBarStrip() = default;

void MenuBarStrip::Close()
{
    ClosePopup(); // it may be the host's and outlive the bar
    m_events.reset();
    m_pressed.reset();
    std::vector<std::unique_ptr<MenuBarRecord>> records;
    m_records.Activate(-1);
    if (std::unique_ptr<MenuBarRecord> begun = m_records.TakeBegun())
        records.push_back(std::move(begun));
    while (m_records.Count() > 0)
        records.push_back(m_records.Remove(0));
    for (std::unique_ptr<MenuBarRecord>& record : records)
        Release(std::move(record));
}

void MenuBarStrip::Release(std::unique_ptr<MenuBarRecord> record)
{
    if (!record || !record->smartMenu)
        return;
    record->smartMenu->OnDetach();
    record->smartMenu->Release();
}

// --- Menu bars ---

CRect MenuBarStrip::ButtonPlace(const MenuBarRecord& record) const
{
    const CRect& text = record.titleRect;
    return {text.left, text.top - kButtonAbove, text.right + kButtonExtraWidth, text.bottom};
}

void MenuBarStrip::Measure(MenuBarRecord& record)
{
    record.titleRect = ApplicationTitleRect(Band(), TextSize(KvToQString(record.buttonText)).cx);
}

bool MenuBarStrip::Begin(const wchar_t* imageKey, const wchar_t* buttonText, std::uint32_t id, QMenu* menu,
                         IKvRibbonMenuBarSmartMenu* smartMenu)
{
    if (!menu)
        return false;
    auto record = std::make_unique<MenuBarRecord>();
    record->imageKey = CutText(imageKey, kLongestLabel);
    record->buttonText = CutText(buttonText, kLongestName);
    record->id = id;
    record->menu = menu;
    record->smartMenu = smartMenu;
    const Run run(Bar(), *record);
    MenuBarRecord& begun = *record;
    Release(m_records.Begin(std::move(record)));
    if (run.Lives() && smartMenu)
        smartMenu->OnAttach(&m_manager, id);
    if (!run.Lives() || m_records.UnderConstruction() != &begun)
        return false;
    Measure(begun);
    if (Bar().IsCreated())
        Button(kKvCaptionApplication).setGeometry(ButtonPlace(begun));
    if (begun.menu)
        begun.SetEntries(EntriesOf(*begun.menu));
    return true;
}

bool MenuBarStrip::SetButtonMenu(QMenu* menu, AppButtonCallback callback, void* context)
{
    MenuBarRecord* record = m_records.UnderConstruction();
    if (!record || !menu || !callback)
        return false;
    record->buttonMenu = menu;
    record->buttonCallback = callback;
    record->buttonContext = context;
    return true;
}

bool MenuBarStrip::End()
{
    std::unique_ptr<MenuBarRecord> record = m_records.TakeBegun();
    if (!record)
        return false;
    if (record->items.empty()) {
        Release(std::move(record));
        return false;
    }
    m_records.Add(std::move(record));
    return true;
}

bool MenuBarStrip::Activate(std::uint32_t id)
{
    const int index = m_records.Find(id);
    if (index < 0)
        return false;
    ActivateAt(index);
    return true;
}

void MenuBarStrip::ActivateAt(int index)
{
    if (index != m_records.ActiveIndex())
        ClosePopup();
    m_records.Activate(index);
    MenuBarRecord& record = m_records.At(index);
    for (SKvMenuItem& item : record.items)
        item.state = kItemNormal;
    ListenToShortcuts();
    UpdateTitleTip();
    const Run run(Bar(), record);
    Remeasure();
    if (run.Lives())
        ShowToolWindows();
}

void MenuBarStrip::ShowNone()
{
    ListenToShortcuts();
    UpdateTitleTip();
    if (Bar().IsCreated())
        ShowApplication(CaptionRecord(), CRect(Button(kKvCaptionApplication).geometry()));
    Layout();
}

void MenuBarStrip::Remeasure()
{
    MenuBarRecord* record = m_records.Active();
    if (record && Bar().IsCreated()) {
        Measure(*record);
        ShowApplication(*record, ButtonPlace(*record));
    }
    Layout();
}

bool MenuBarStrip::Remove(std::uint32_t id)
{
    const int index = m_records.Find(id);
    if (index < 0)
        return false;
    const int active = m_records.ActiveIndex();
    const bool changesActive = active >= 0 && index <= active;
    if (index == active)
        ClosePopup();
    const QPointer<CKvCaptionBar> bar(&Bar());
    std::unique_ptr<MenuBarRecord> removed = m_records.Remove(index);
    ShowToolWindows(removed.get());
    if (bar && changesActive && m_records.ActiveIndex() >= 0)
        ActivateAt(m_records.ActiveIndex());
    else if (bar && changesActive)
        ShowNone();
    Release(std::move(removed)); // last: the host may delete the bar
    return true;
}

bool MenuBarStrip::SetProductLabel(std::uint32_t id, const wchar_t* text)
{
    const int index = m_records.Find(id);
    if (index < 0)
        return false;
    m_records.At(index).productLabel = CutText(text, kLongestLabel);
    Bar().update();
    return true;
}

bool MenuBarStrip::SetDocumentLabel(std::uint32_t id, const wchar_t* text)
{
    const int index = m_records.Find(id);
    if (index < 0)
        return false;
    m_records.At(index).documentLabel = CutText(text, kLongestLabel);
    if (index == m_records.ActiveIndex())
        UpdateTitleTip();
    Bar().update();
    return true;
}

// --- Items ---

int MenuBarStrip::ItemCount() const
{
    const MenuBarRecord* record = m_records.Active();
    return record ? static_cast<int>(record->items.size()) : 0;
}

CaptionItem& MenuBarStrip::Item(int index) const
{
    return m_records.Active()->items[static_cast<std::size_t>(index)];
}

QString MenuBarStrip::ItemLabel(int index) const
{
    return KvToQString(EntryLabel(Item(index).text));
}

void MenuBarStrip::InvalidateItem(int index)
{
    if (index < 0 || index >= ItemCount())
        return;
    const CRect& rect = Item(index).rect;
    Invalidate({rect.left - kFrameReach, rect.top - kFrameReach, rect.right + kFrameReach,
                rect.bottom + kFrameReach});
}

// --- Tool windows ---

bool MenuBarStrip::SetToolWindow(const ToolWindow& tool)
{
    MenuBarRecord* record = m_records.UnderConstruction();
    if (!record || !tool.window || !tool.handle)
        return false;
    record->toolWindow = tool;
    Adopt({tool});
    return true;
}

bool MenuBarStrip::SetAdvanced(const ToolWindow& first, const ToolWindow& second)
{
    MenuBarRecord* record = m_records.UnderConstruction();
    if (!record)
        return false;
    record->advanced[0] = first;
    record->advanced[1] = second;
    Adopt({first, second});
    return true;
}

// What is told and hidden may destroy itself, the other one and the bar.
void MenuBarStrip::Adopt(const std::vector<ToolWindow>& tools)
{
    std::vector<std::pair<QPointer<QWidget>, IKvGuiWnd*>> living;
    for (const ToolWindow& tool : tools) {
        if (!tool.handle)
            continue;
        QObject::connect(tool.handle, &QObject::destroyed, m_events.get(),
                         [this](const QObject* handle) { Forget(handle); });
        living.emplace_back(tool.handle, tool.window);
    }
    const QPointer<CKvCaptionBar> bar(&Bar());
    IKvRibbonMenuBarMgr* const manager = &m_manager;
    for (const auto& [handle, window] : living) {
        if (handle)
            handle->hide(); // until its menu bar is active
        if (bar && handle && window)
            window->SetToolWndManager(manager);
    }
}

void MenuBarStrip::Forget(const QObject* handle)
{
    const auto forget = [handle](MenuBarRecord* record) {
        if (!record)
            return;
        for (ToolWindow* tool : {&record->toolWindow, &record->advanced[0], &record->advanced[1]}) {
            if (tool->handle == handle)
                *tool = {};
        }
    };
    forget(m_records.UnderConstruction());
    for (int i = 0; i < m_records.Count(); ++i)
        forget(&m_records.At(i));
    Layout();
}

void MenuBarStrip::ShowToolWindows(const MenuBarRecord* leaving)
{
    const auto handles = [](const MenuBarRecord& record) {
        std::vector<QPointer<QWidget>> list;
        for (const ToolWindow* tool : {&record.toolWindow, &record.advanced[0], &record.advanced[1]}) {
            if (tool->handle)
                list.emplace_back(tool->handle);
        }
        return list;
    };
    const MenuBarRecord* active = m_records.Active();
    std::vector<QPointer<QWidget>> shown;
    if (active)
        shown = handles(*active);
    std::vector<QPointer<QWidget>> hidden;
    if (leaving)
        hidden = handles(*leaving);
    for (int i = 0; i < m_records.Count(); ++i) {
        const std::vector<QPointer<QWidget>> list = handles(m_records.At(i));
        hidden.insert(hidden.end(), list.begin(), list.end());
    }
    // What is shown and hidden may tell the host, who may activate another menu bar.
    const QPointer<CKvCaptionBar> bar(&Bar());
    const auto isCurrent = [&] { return bar && m_records.Active() == active; };
    for (const QPointer<QWidget>& handle : hidden) {
        if (handle && isCurrent() && std::find(shown.begin(), shown.end(), handle) == shown.end())
            handle->hide();
    }
    for (const QPointer<QWidget>& handle : shown) {
        if (handle && isCurrent())
            handle->show();
    }
}

// A window that is moved may tell the host, who may do anything.
void MenuBarStrip::LayoutToolWindows()
{
    const MenuBarRecord* record = m_records.Active();
    if (!record)
        return;
    const Run run(Bar(), *record);
    CRect area = ToolArea();
    if (QWidget* tool = record->toolWindow.handle) {
        const CPoint place(Band().left, area.top);
        area.left = place.x + tool->width() + kToolGap;
        tool->move(place);
    }
    if (run.Lives())
        LayoutAdvanced(area);
}

// --- Drawing ---

void MenuBarStrip::DrawItemFrame(Graphics& graphics)
{
    if (m_open < 0 || m_open >= ItemCount())
        return;
    // Inflated by one; lines run through pixel centres.
    const CRect& rect = Item(m_open).rect;
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.setBrush(Qt::NoBrush);
    QPen pen(CaptionFrameColour(), kFramePen);
    pen.setJoinStyle(Qt::MiterJoin);
    graphics.setPen(pen);
    graphics.drawRect(QRectF(rect.left - 1 + 0.5, rect.top - 1 + 0.5, rect.Width() + 2, rect.Height() + 2));
    graphics.restore();
}

} // namespace kv
