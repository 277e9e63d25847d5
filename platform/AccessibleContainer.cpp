#include "platform/AccessibleContainer.h"

#include "platform/AccessiblePartInterface.h"

#include <vector>

namespace kv {

AccessibleContainer::~AccessibleContainer()
{
    if (m_parts)
        std::erase(m_parts->m_containers, this);
    for (const auto& [key, id] : m_ids)
        QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* AccessibleContainer::Part(Key key) const
{
    if (QAccessibleInterface* known = KnownPart(key))
        return known;
    auto* part = new AccessiblePartInterface(*this, key); // the toolkit's cache owns it
    m_ids[key] = QAccessible::registerAccessibleInterface(part);
    return part;
}

QAccessibleInterface* AccessibleContainer::KnownPart(Key key) const
{
    const auto known = m_ids.find(key);
    return known == m_ids.end() ? nullptr : QAccessible::accessibleInterface(known->second);
}

void AccessibleContainer::DropGone()
{
    std::vector<Key> gone;
    for (const auto& [key, id] : m_ids) {
        if (!m_parts || m_parts->IndexOf(key) < 0)
            gone.push_back(key);
    }
    for (const Key key : gone) {
        auto* part = static_cast<AccessiblePartInterface*>(KnownPart(key));
        if (m_parts)
            part->Leave();
        QAccessibleEvent event(part, QAccessible::ObjectDestroyed);
        QAccessible::updateAccessibility(&event);
        QAccessible::deleteAccessibleInterface(m_ids[key]);
        m_ids.erase(key);
    }
}

QString AccessibleContainer::text(QAccessible::Text text) const
{
    const QString given = QAccessibleWidget::text(text);
    return given.isEmpty() && text == QAccessible::Name && m_parts ? m_parts->ControlName() : given;
}

QAccessibleInterface* AccessibleContainer::child(int index) const
{
    const int part = index - QAccessibleWidget::childCount();
    if (part < 0)
        return QAccessibleWidget::child(index);
    return part < PartCount() ? Part(m_parts->KeyAt(part)) : nullptr;
}

int AccessibleContainer::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* part = dynamic_cast<const AccessiblePartInterface*>(child);
    if (!part)
        return QAccessibleWidget::indexOfChild(child);
    if (!m_parts || child->parent() != this)
        return -1;
    const int index = m_parts->IndexOf(part->PartKey());
    return index < 0 ? -1 : QAccessibleWidget::childCount() + index;
}

std::optional<AccessibleContainer::Key> AccessibleContainer::FocusedPart() const
{
    if (!m_parts || !m_parts->Control().hasFocus())
        return std::nullopt;
    const std::optional<Key> key = m_parts->FocusedPart();
    return key && m_parts->IndexOf(*key) >= 0 ? key : std::nullopt;
}

QAccessible::State AccessibleContainer::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    // Only one says so, else a reader hears the container again and again.
    if (FocusedPart() || widget()->focusProxy())
        state.focused = false;
    return state;
}

void* AccessibleContainer::interface_cast(QAccessible::InterfaceType type)
{
    AccessibleTable* table = m_parts ? m_parts->Table() : nullptr;
    if (type != QAccessible::TableInterface || !table)
        return QAccessibleWidget::interface_cast(type);
    if (!m_table)
        m_table.emplace(*table, [this](Key key) { return Part(key); });
    return static_cast<QAccessibleTableInterface*>(&*m_table);
}

QAccessibleInterface* AccessibleContainer::focusChild() const
{
    const std::optional<Key> key = FocusedPart();
    return key ? Part(*key) : QAccessibleWidget::focusChild();
}

} // namespace kv
