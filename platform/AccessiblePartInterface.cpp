#include "platform/AccessiblePartInterface.h"

#include <QVariant>
#include <QWindow>

#include <algorithm>

namespace kv {

QString AccessiblePartInterface::text(QAccessible::Text text) const
{
    switch (text) {
    case QAccessible::Name:
        return Describe().name;
    case QAccessible::Description:
        return Describe().description;
    case QAccessible::Accelerator:
        return Shortcut();
    default:
        return {};
    }
}

QRect AccessiblePartInterface::rect() const
{
    if (!IsThere())
        return {};
    const QWidget& control = m_container.Parts()->Control();
    const QRect visible = Describe().rect & control.rect();
    return {control.mapToGlobal(visible.topLeft()), visible.size()};
}

QAccessible::State AccessiblePartInterface::state() const
{
    QAccessible::State state;
    if (!IsThere()) {
        state.invalid = true;
        return state;
    }
    const AccessibleParts& parts = *m_container.Parts();
    const QWidget& control = parts.Control();
    const AccessiblePart part = Describe();
    state.invisible = !control.isVisible();
    state.offscreen = !part.rect.intersects(control.rect());
    state.disabled = !control.isEnabled() || part.disabled;
    state.hasPopup = part.opensPopup;
    state.expandable = part.opensPopup;
    state.expanded = part.expanded;
    state.focusable = !state.disabled && part.actions.contains(setFocusAction());
    state.focused = control.hasFocus() && parts.FocusedPart() == m_key;
    state.selectable = part.selectable;
    state.selected = part.selected;
    state.editable = part.editable;
    state.checkable = part.checkable;
    state.checked = part.checked;
    return state;
}

void* AccessiblePartInterface::interface_cast(QAccessible::InterfaceType type)
{
    const AccessiblePart part = Describe();
    if (type == QAccessible::ValueInterface && part.value)
        return static_cast<QAccessibleValueInterface*>(this);
    if (type == QAccessible::ActionInterface && !part.actions.isEmpty())
        return static_cast<QAccessibleActionInterface*>(this);
    AccessibleTable* table = IsThere() ? m_container.Parts()->Table() : nullptr;
    if (type != QAccessible::TableCellInterface || !table)
        return nullptr;
    if (!m_cell) {
        const auto partOf = [this](Key key) { return m_container.Part(key); };
        m_cell.emplace(*table, m_key, partOf, *parent());
    }
    return static_cast<QAccessibleTableCellInterface*>(&*m_cell);
}

void AccessiblePartInterface::setCurrentValue(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const std::optional<AccessibleValue> range = Describe().value;
    if (!CanAct() || !range || !isNumber || qIsNaN(number))
        return;
    m_container.Parts()->SetValue(m_key, std::clamp(number, range->minimum, range->maximum));
}

QStringList AccessiblePartInterface::actionNames() const
{
    return CanAct() ? Describe().actions : QStringList();
}

QStringList AccessiblePartInterface::keyBindingsForAction(const QString& action) const
{
    const QString shortcut = Shortcut();
    return action == pressAction() && !shortcut.isEmpty() ? QStringList(shortcut) : QStringList();
}

void AccessiblePartInterface::doAction(const QString& action)
{
    if (actionNames().contains(action))
        m_container.Parts()->DoAction(m_key, action);
}

} // namespace kv
