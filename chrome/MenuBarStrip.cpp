#include "chrome/MenuBarStrip.h"

#include "chrome/ItemFrames.h"
#include "chrome/MenuBarEvents.h"

#include <QAction>

namespace kv {
namespace {

constexpr int kToolGap = 2;

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
    const QAction* entry = Entry(item);
    return entry && entry->isEnabled() ? entry->menu() : nullptr;
}

QAction* MenuBarRecord::Entry(int item) const
{
    if (!menu || item < 0 || item >= static_cast<int>(items.size()))
        return nullptr;
    const QList<QAction*> actions = menu->actions();
    const int position = items[static_cast<std::size_t>(item)].position;
    return position < actions.size() ? actions[position] : nullptr;
}

MenuBarStrip::MenuBarStrip(IKvRibbonMenuBarMgr& manager)
    : RecordStrip(kMenuBarForm, &manager)
    , m_manager(manager)
    , m_events(std::make_unique<MenuBarEvents>(*this))
{
}

MenuBarStrip::~MenuBarStrip() = default;

void MenuBarStrip::OnClose()
{
    m_events.reset();
    m_pressed.reset();
}

void MenuBarStrip::TellAttached(CaptionRecord& record)
{
    if (IKvRibbonMenuBarSmartMenu* smartMenu = static_cast<MenuBarRecord&>(record).smartMenu)
        smartMenu->OnAttach(&m_manager, record.id);
}

bool MenuBarStrip::BeginMenu(const wchar_t* imageKey, const wchar_t* buttonText, std::uint32_t id,
                             QMenu* menu, IKvRibbonMenuBarSmartMenu* smartMenu)
{
    if (!menu)
        return false;
    auto record = std::make_unique<MenuBarRecord>();
    MenuBarRecord& begun = *record;
    begun.imageKey = CutText(imageKey, kLongestLabel);
    begun.buttonText = CutText(buttonText, kLongestName);
    begun.id = id;
    begun.menu = menu;
    begun.smartMenu = smartMenu;
    begun.Hold(smartMenu);
    if (!Begin(std::move(record)))
        return false;
    Measure(begun);
    if (HasButtons())
        Button(kKvCaptionApplication).setGeometry(ApplicationButtonRect(begun.titleRect, Form()));
    if (begun.menu)
        begun.SetEntries(EntriesOf(*begun.menu));
    return true;
}

bool MenuBarStrip::SetButtonMenu(QMenu* menu, AppButtonCallback callback, void* context)
{
    MenuBarRecord* record = Begun();
    if (!record || !menu || !callback)
        return false;
    record->buttonMenu = menu;
    record->buttonCallback = callback;
    record->buttonContext = context;
    return true;
}

// --- Items ---

void MenuBarStrip::OnActivated()
{
    ListenToMenu();
    ReadEntries();
}

void MenuBarStrip::ReadEntries()
{
    const MenuBarRecord* record = ActiveMenu();
    bool areOthers = false;
    for (int i = 0; i < ItemCount(); ++i) {
        const QAction* entry = record->Entry(i);
        const bool disabled = entry && !entry->isEnabled();
        const bool opensPopup = entry && entry->menu();
        CaptionItem& item = Item(i);
        if (item.disabled == disabled && item.opensPopup == opensPopup)
            continue;
        item.disabled = disabled;
        item.opensPopup = opensPopup;
        InvalidateItem(i);
        areOthers = true;
    }
    if (areOthers)
        PartsChanged();
}

QString MenuBarStrip::ItemLabel(int index) const
{
    return KvToQString(EntryLabel(Item(index).text));
}

QString MenuBarStrip::ItemName(int index) const
{
    return KvToQString(EntryName(Item(index).text));
}

void MenuBarStrip::InvalidateItem(int index)
{
    if (index < 0 || index >= ItemCount())
        return;
    const CRect& rect = Item(index).rect;
    Invalidate({rect.left - kOpenFrameReach, rect.top - kOpenFrameReach, rect.right + kOpenFrameReach,
                rect.bottom + kOpenFrameReach});
}

void MenuBarStrip::DrawItemFrame(Graphics& graphics)
{
    if (m_open >= 0 && m_open < ItemCount())
        DrawOpenItemFrame(graphics, Item(m_open).rect);
}

// --- Tool windows ---

bool MenuBarStrip::SetToolWindow(const ToolWindow& tool)
{
    MenuBarRecord* record = Begun();
    if (!record || !tool.window || !tool.handle)
        return false;
    record->toolWindow = tool;
    Adopt(tool);
    return true;
}

// A window that is moved may tell the host, who may do anything.
void MenuBarStrip::LayoutToolWindows()
{
    const MenuBarRecord* record = ActiveMenu();
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

} // namespace kv
