#include "chrome/CaptionAccess.h"

#include "chrome/CaptionKeys.h"

#include <algorithm>
#include <utility>

namespace kv {

namespace {

using Key = AccessibleParts::Key;

constexpr Key kFlagKey = 1;
constexpr Key kTitleKey = 2;
constexpr unsigned kGenerationShift = 32;

QStringList Actions()
{
    return {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()};
}

} // namespace

CaptionAccess::CaptionAccess(CaptionStrip& strip, CaptionKeys& keys)
    : AccessibleParts(strip.Bar(),
                      strip.Form().itemsArePopups ? QAccessible::MenuBar : QAccessible::PageTabList)
    , m_strip(strip)
    , m_keys(keys)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    QObject::connect(&m_later, &QTimer::timeout, &m_later, [this] { Update(); });
}

void CaptionAccess::UpdateLater()
{
    if (QAccessible::isActive())
        m_later.start();
}

void CaptionAccess::Update()
{
    const CaptionRecord* record = m_strip.Active();
    const int count = m_strip.ItemCount();
    const bool areOthers = m_record != record || m_count != count;
    m_record = record;
    m_count = count;
    if (areOthers)
        ++m_generation;
    if (areOthers || !QAccessible::isActive())
        PartsChanged();
    // While nobody listens, too: the first change that somebody hears is compared with what was before.
    const std::vector<Seen> before = std::exchange(m_seen, Look());
    const QString oldTitle = std::exchange(m_title, m_strip.Title());
    if (!QAccessible::isActive())
        return;
    if (!areOthers)
        TellDifferences(before);
    if (oldTitle != m_title)
        NameChanged(kTitleKey);
    UpdateFocus();
}

std::vector<CaptionAccess::Seen> CaptionAccess::Look() const
{
    std::vector<Seen> seen;
    for (int i = 0; i < m_strip.ItemCount(); ++i) {
        const CaptionItem& item = m_strip.Item(i);
        seen.push_back({m_strip.ItemName(i), item.selected, item.open, item.disabled});
    }
    return seen;
}

void CaptionAccess::TellDifferences(const std::vector<Seen>& before)
{
    const std::size_t count = std::min(before.size(), m_seen.size());
    for (std::size_t i = 0; i < count; ++i) {
        const Key key = ItemKey(static_cast<int>(i));
        if (before[i].name != m_seen[i].name)
            NameChanged(key);
        if (before[i].selected != m_seen[i].selected || before[i].open != m_seen[i].open)
            StateChanged(key);
        if (before[i].disabled != m_seen[i].disabled)
            EnabledChanged(key);
    }
}

void CaptionAccess::TextsChanged()
{
    for (int i = 0; i < Count(); ++i)
        NameChanged(KeyAt(i));
}

QString CaptionAccess::ControlName() const
{
    const CaptionRecord* record = m_strip.Active();
    return record ? KvToQString(record->buttonText) : QString();
}

bool CaptionAccess::HasTitle() const
{
    return !m_strip.Title().isEmpty() && !m_strip.StaticTitle().IsRectEmpty();
}

// Items, flag, title.
int CaptionAccess::Count() const
{
    return m_strip.ItemCount() + (m_strip.ShowsFlag() ? 1 : 0) + (HasTitle() ? 1 : 0);
}

Key CaptionAccess::ItemKey(int index) const
{
    return (Key{m_generation} << kGenerationShift) | static_cast<Key>(index);
}

Key CaptionAccess::KeyAt(int index) const
{
    const int items = m_strip.ItemCount();
    if (index < items)
        return ItemKey(index);
    return index == items && m_strip.ShowsFlag() ? kFlagKey : kTitleKey;
}

int CaptionAccess::IndexOf(Key key) const
{
    const int items = m_strip.ItemCount();
    if (key == kFlagKey)
        return m_strip.ShowsFlag() ? items : -1;
    if (key == kTitleKey)
        return HasTitle() ? Count() - 1 : -1;
    const Key first = ItemKey(0);
    return key >= first && key - first < static_cast<Key>(items) ? static_cast<int>(key - first) : -1;
}

CaptionHit CaptionAccess::PartOf(Key key) const
{
    if (key == kFlagKey)
        return {CaptionPart::Flag, -1};
    return {CaptionPart::Item, IndexOf(key)};
}

AccessiblePart CaptionAccess::DescribeItem(int index) const
{
    const CaptionItem& item = m_strip.Item(index);
    AccessiblePart part;
    part.name = m_strip.ItemName(index);
    part.rect = item.rect;
    const bool isEntry = m_strip.Form().itemsArePopups;
    part.role = isEntry ? QAccessible::MenuItem : QAccessible::PageTab;
    part.opensPopup = item.opensPopup;
    part.expanded = item.open;
    part.selectable = !isEntry;
    part.selected = part.selectable && item.selected;
    part.disabled = item.disabled;
    if (!isEntry || item.opensPopup)
        part.actions = Actions();
    return part;
}

AccessiblePart CaptionAccess::Describe(Key key) const
{
    AccessiblePart part;
    if (key == kTitleKey) {
        part.role = QAccessible::StaticText;
        part.name = m_strip.Title();
        part.rect = m_strip.StaticTitle();
        return part;
    }
    if (key == kFlagKey) {
        part.name = KvToQString(SwitchText());
        part.rect = m_strip.FlagRect();
        part.opensPopup = true;
        part.actions = Actions();
    } else {
        part = DescribeItem(IndexOf(key));
    }
    return part;
}

QString CaptionAccess::ShortcutOf(const CaptionHit& part) const
{
    const wchar_t tip = m_keys.KeyOf(part);
    return tip == 0 ? QString() : QStringLiteral("Alt+") + QChar(static_cast<char16_t>(tip));
}

QString CaptionAccess::Shortcut(Key key) const
{
    return key == kTitleKey ? QString() : ShortcutOf(PartOf(key));
}

AccessibleButton CaptionAccess::DescribeButton(const QWidget& button) const
{
    const std::optional<CaptionHit> part = m_keys.ButtonPart(&button);
    return part ? AccessibleButton{m_keys.OpensPopup(*part), true, ShortcutOf(*part)} : AccessibleButton();
}

std::optional<Key> CaptionAccess::FocusedPart() const
{
    const std::optional<CaptionHit>& focus = m_keys.Focused();
    if (!focus || focus->part == CaptionPart::Button)
        return std::nullopt;
    return focus->part == CaptionPart::Flag ? kFlagKey : ItemKey(focus->index);
}

void CaptionAccess::DoAction(Key key, const QString& action)
{
    if (action != QAccessibleActionInterface::pressAction()) {
        m_keys.Focus(PartOf(key));
        return;
    }
    // Later: a popup waits for the user, and the screen reader for the end of this call.
    const auto press = [this, key] {
        if (IndexOf(key) >= 0)
            m_keys.Press(PartOf(key));
    };
    QMetaObject::invokeMethod(&m_later, press, Qt::QueuedConnection);
}

} // namespace kv
